// The cluster module's result storage and the JSON texts of its operation
// results.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace ZOLVA_Cluster {

// Stores a result text in the module's result storage; the pointer stays
// valid until the module's next call that writes it.
const char* Publish(std::string text);

// An operation's result, failed or not, in its own shape:
// {"success":<bool>,"<count>":N,...} with "error" last when there is one.
std::string OperationJson(bool success, const std::string& error,
                          std::initializer_list<std::pair<const char*, int32_t>> counts);

// ["<escaped>","<escaped>",...]
std::string JsonStringArray(const std::vector<std::string>& texts);

}  // namespace ZOLVA_Cluster

// Loads the built extension into the simulated host and calls its script
// functions the way ReaScript does from Lua: through the "APIvararg_" entry,
// with arguments marshalled from the "APIdef_" text.
#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "sim_host.h"

namespace e2e {

// A Lua value: nil, boolean, integer, number or string.
using Value = std::variant<std::monostate, bool, int, double, std::string>;
using Values = std::vector<Value>;

struct Definition {
  std::string returnType;
  std::vector<std::string> types;
  std::vector<std::string> names;
  std::string help;
};

// dlopen + ReaperPluginEntry(record) on construction; the unload call and
// dlclose on destruction (or earlier, with Unload()).
class LoadedExtension {
 public:
  explicit LoadedExtension(sim::Host& host);
  ~LoadedExtension();
  int loadResult() const { return loadResult_; }
  int Unload();

 private:
  void* handle_ = nullptr;
  int (*entry_)(void*, reaper_plugin_info_t*) = nullptr;
  int loadResult_ = 0;
  bool unloaded_ = false;
};

Definition ParseDefinition(const std::string& text);
Definition DefinitionOf(sim::Host& host, const std::string& name);

// Calls a registered function as Lua would: `args` are the Lua arguments
// (hidden size arguments and outputs are not passed); the result holds the
// return value (unless void) followed by every output, in declaration order.
Values Call(sim::Host& host, const std::string& name, const Values& args = {});

// A public name and its definition's four fields written "ret|types|names|help".
using Signature = std::pair<std::string, std::string>;

// Loads the module and expects `functions` registered consecutively in this
// order, each as its API_ / APIvararg_ / APIdef_ triple with exactly that
// definition text; after the unload, none of them is still callable.
void ExpectRegistersInOrder(const std::vector<Signature>& functions);

}  // namespace e2e

#include "cluster/result_text.h"

#include <mutex>

#include "json/json_text.h"

namespace ZOLVA_Cluster {
namespace {

std::mutex g_resultMutex;
std::string g_resultBuffer;

}  // namespace

const char* Publish(std::string text) {
  std::lock_guard<std::mutex> lock(g_resultMutex);
  g_resultBuffer = std::move(text);
  return g_resultBuffer.c_str();
}

std::string OperationJson(bool success, const std::string& error,
                          std::initializer_list<std::pair<const char*, int32_t>> counts) {
  std::string json = success ? "{\"success\":true" : "{\"success\":false";
  for (const auto& [key, count] : counts) json += ",\"" + std::string(key) + "\":" + std::to_string(count);
  if (!error.empty()) {
    json += ",\"error\":";
    ZOLVA::Json::AppendString(json, error);
  }
  return json + '}';
}

std::string JsonStringArray(const std::vector<std::string>& texts) {
  std::string json = "[";
  for (const std::string& text : texts) {
    if (json.size() > 1) json += ',';
    ZOLVA::Json::AppendString(json, text);
  }
  return json + ']';
}

}  // namespace ZOLVA_Cluster

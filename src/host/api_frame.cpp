#include "host/api_frame.h"

#include "host/reaper_api.h"

namespace ZOLVA {
namespace detail {

ApiFunction MakeApiFunction(const std::string& publicName, const char* returnWord,
                            const std::string& types, const char* argNames, const char* help,
                            void* typed, void* vararg) {
  ApiFunction f;
  f.apiKey = "API_" + publicName;
  f.varargKey = "APIvararg_" + publicName;
  f.defKey = "APIdef_" + publicName;
  f.definition.append(returnWord).push_back('\0');
  f.definition.append(types).push_back('\0');
  f.definition.append(argNames).push_back('\0');
  f.definition.append(help).push_back('\0');
  f.typed = typed;
  f.vararg = vararg;
  return f;
}

}  // namespace detail

void RegisterApiTable(const std::vector<ApiFunction>& table) {
  if (!plugin_register) return;
  for (const ApiFunction& f : table) {
    plugin_register(f.apiKey.c_str(), f.typed);
    plugin_register(f.varargKey.c_str(), f.vararg);
    plugin_register(f.defKey.c_str(), const_cast<char*>(f.definition.data()));
  }
}

void UnregisterApiTable(const std::vector<ApiFunction>& table) {
  if (!plugin_register) return;
  for (const ApiFunction& f : table) {
    const std::string key = "-" + f.apiKey;
    plugin_register(key.c_str(), f.typed);
  }
}

}  // namespace ZOLVA

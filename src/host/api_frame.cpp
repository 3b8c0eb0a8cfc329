#include "host/api_frame.h"

#include <map>
#include <vector>

#include "host/reaper_api.h"

namespace ZOLVA {
namespace {

// The registration form of one function. The host keeps pointers to the key
// strings (REAPER up to 6.66 reads them again at exit) and the definition
// text, so they live until the library itself is unloaded.
struct Published {
  std::string apiKey;      // "API_" + public name
  std::string varargKey;   // "APIvararg_" + public name
  std::string defKey;      // "APIdef_" + public name
  std::string definition;  // four NUL-terminated fields: return, types, names, help
  void* typed;
  void* vararg;
};

Published Publish(const ApiSpec& entry) {
  Published p;
  p.apiKey = std::string("API_") + entry.publicName;
  p.varargKey = std::string("APIvararg_") + entry.publicName;
  p.defKey = std::string("APIdef_") + entry.publicName;
  for (const std::string& field : {std::string(entry.returnWord), entry.argTypes(), std::string(entry.argNames),
                                   std::string(entry.help)}) {
    p.definition.append(field).push_back('\0');
  }
  p.typed = entry.typedAddress();
  p.vararg = reinterpret_cast<void*>(entry.vararg);
  return p;
}

const std::vector<Published>& PublishedForm(const Module& module) {
  static std::map<const ApiSpec*, std::vector<Published>> store;
  std::vector<Published>& list = store[module.api];
  if (list.empty()) {
    for (size_t i = 0; i < module.apiCount; ++i) list.push_back(Publish(module.api[i]));
  }
  return list;
}

}  // namespace

void RegisterModuleApi(const Module& module) {
  if (!plugin_register) return;
  for (const Published& f : PublishedForm(module)) {
    plugin_register(f.apiKey.c_str(), f.typed);
    plugin_register(f.varargKey.c_str(), f.vararg);
    plugin_register(f.defKey.c_str(), const_cast<char*>(f.definition.data()));
  }
}

void UnregisterModuleApi(const Module& module) {
  if (!plugin_register) return;
  for (const Published& f : PublishedForm(module)) {
    const std::string key = "-" + f.apiKey;
    plugin_register(key.c_str(), f.typed);
  }
}

}  // namespace ZOLVA

// Loads the built extension into the simulated host and calls its script
// functions as ReaScript does from Lua: through the "APIvararg_" entry, with
// the arguments laid out as the "APIdef_" text declares them.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "sim_host.h"

namespace e2e {

// A Lua value: nil, boolean, integer, number or string.
using Value = std::variant<std::monostate, bool, int, double, std::string>;
using Values = std::vector<Value>;
inline const Value nil;

// Opens the module and, with `load`, makes REAPER's load call with the host's record.
// Unload() makes the unload call; the destructor makes it unless that was done, then closes the module.
class Extension {
 public:
  explicit Extension(sim::Host& host, bool load = true);
  ~Extension();
  int Unload();
  int loadResult = 0;

 private:
  void* module_;
  int (*entry_)(void*, reaper_plugin_info_t*);
  bool unloaded_ = false;
};

// Calls a registered function as Lua does: `args` are the Lua arguments (no sizes, no outputs); returns
// the function's result, unless it is void, followed by every output in declaration order.
Values Call(sim::Host& host, const std::string& name, const Values& args = {});

}  // namespace e2e

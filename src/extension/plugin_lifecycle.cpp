#include "extension/plugin_lifecycle.h"

#include <iterator>

#include "extension/module_list.h"
#include "host/api_frame.h"
#include "host/extensions_menu.h"
#include "host/run_action.h"

// Each module defines its descriptor in its own namespace.
#define ZOLVA_DECLARE_MODULE(folder, ns) \
  namespace ns {                         \
  extern const ZOLVA::Module kModule;    \
  }
ZOLVA_MODULES(ZOLVA_DECLARE_MODULE)
#undef ZOLVA_DECLARE_MODULE

namespace ZOLVA {
namespace {

#define ZOLVA_MODULE_ENTRY(folder, ns) &ns::kModule,
const Module* const kModules[] = {ZOLVA_MODULES(ZOLVA_MODULE_ENTRY)};
#undef ZOLVA_MODULE_ENTRY
#define ZOLVA_MODULE_NAME(folder, ns) #folder,
const char* const kModuleNames[] = {ZOLVA_MODULES(ZOLVA_MODULE_NAME)};
#undef ZOLVA_MODULE_NAME

void* hInstance = nullptr;
reaper_plugin_info_t* g_rec = nullptr;
int command_id = 0;
custom_action_register_t action = {0, "ZOLVA_OPEN_COMMAND", "ZOLVA: Run", nullptr};

// The command hook, guarded like every registered function. Only running the
// script can throw, and that happens only for the action's own command, which
// counts as handled whatever happened.
void* HookPointer() { return reinterpret_cast<void*>(Guarded<&OnAction, true>); }

void Register() {
  if (plugin_register) {
    command_id = plugin_register("custom_action", &action);
    SetRunActionCommandId(command_id);
    plugin_register("hookcommand2", HookPointer());
    if (command_id != 0) InstallExtensionsMenu({{"ZOLVA: Run", command_id}});
  }
  for (const Module* module : kModules) {
    module->start();
    RegisterModuleApi(*module);
  }
}

void Unregister() {
  for (auto it = std::rbegin(kModules); it != std::rend(kModules); ++it) {
    UnregisterModuleApi(**it);
    (*it)->stop();
  }
  if (plugin_register) {
    RemoveExtensionsMenu();
    plugin_register("-custom_action", &action);
    plugin_register("-hookcommand2", HookPointer());
  }
}

}  // namespace

std::vector<NamedModule> ModulesInRegistrationOrder() {
  std::vector<NamedModule> modules;
  for (size_t i = 0; i < std::size(kModules); ++i) modules.push_back({kModuleNames[i], kModules[i]});
  return modules;
}

int PluginEntry(void* instance, reaper_plugin_info_t* rec) noexcept {
  hInstance = instance;
  try {
    if (!rec) {
      if (g_rec) Unregister();
      return 0;
    }
    ResolveHostApi(rec->GetFunc);
    g_rec = rec;
    Register();
  } catch (...) {
    // Whatever a module's start-up throws, the library stays loaded: the
    // functions registered so far must keep their code.
  }
  return rec ? 1 : 0;
}

}  // namespace ZOLVA

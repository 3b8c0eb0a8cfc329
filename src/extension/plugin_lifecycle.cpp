#include "extension/plugin_lifecycle.h"

#include <iterator>

#include "actions/action_list.h"
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

// "ZOLVA: Run" first, then the native actions; any other command is left alone.
bool OnCommand(KbdSectionInfo* section, int command, int val, int valhw, int relmode, HWND hwnd) {
  return OnAction(section, command, val, valhw, relmode, hwnd) || ZOLVA_Actions::RunAction(command);
}

// The command hook, guarded like every registered function. Only running an
// action can throw, and that happens only for one of our own commands, which
// counts as handled whatever happened.
void* HookPointer() { return reinterpret_cast<void*>(Guarded<&OnCommand, true>); }

// The Extensions > ZOLVA menu: the actions in their list order, then, apart,
// "ZOLVA: Run"; an action the host gave no id is left out.
std::vector<MenuEntry> MenuEntries() {
  std::vector<MenuEntry> entries;
  for (const ZOLVA_Actions::RegisteredAction& a : ZOLVA_Actions::RegisteredActions()) {
    if (a.commandId != 0) entries.push_back({a.name, a.commandId});
  }
  if (command_id != 0) {
    if (!entries.empty()) entries.push_back({std::string(), 0});
    entries.push_back({"ZOLVA: Run", command_id});
  }
  return entries;
}

void Register() {
  // The native actions come first, so that the ids after "ZOLVA: Run"'s own
  // are not ours.
  ZOLVA_Actions::RegisterActions();
  if (plugin_register) {
    command_id = plugin_register("custom_action", &action);
    SetRunActionCommandId(command_id);
    plugin_register("hookcommand2", HookPointer());
    InstallExtensionsMenu(MenuEntries());
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
  ZOLVA_Actions::UnregisterActions();
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

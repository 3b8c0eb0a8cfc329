// Loading and unloading the extension: what ReaperPluginEntry does.
#pragma once

#include <vector>

#include "host/reaper_api.h"

namespace ZOLVA {

struct Module;

// One module as loading registers it: its folder name and its descriptor.
struct NamedModule {
  const char* name;
  const Module* module;
};

// Every module, in the order loading starts and registers them.
std::vector<NamedModule> ModulesInRegistrationOrder();

// Load (non-null record): resolves the host API, registers the action, the
// hook, the action's Extensions menu item and every module's script
// functions, and returns 1. Unload (null record): withdraws them again if a
// load happened before, and returns 0.
int PluginEntry(void* hInstance, reaper_plugin_info_t* rec) noexcept;

}  // namespace ZOLVA

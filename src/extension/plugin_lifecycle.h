// Loading and unloading the extension: what ReaperPluginEntry does.
#pragma once

#include "host/reaper_api.h"

namespace ZOLVA {

// Load (non-null record): resolves the host API, registers the action, the
// hook and every module's script functions, and returns 1. Unload (null
// record): withdraws them again if a load happened before, and returns 0.
int PluginEntry(void* hInstance, reaper_plugin_info_t* rec) noexcept;

}  // namespace ZOLVA

// The one symbol the module exports.
#include "extension/plugin_lifecycle.h"

extern "C" __attribute__((visibility("default"))) int ReaperPluginEntry(
    void* hInstance, reaper_plugin_info_t* rec) {
  return ZOLVA::PluginEntry(hInstance, rec);
}

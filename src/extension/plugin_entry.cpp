// The one symbol the module exports.
#include "extension/plugin_lifecycle.h"

#if defined(_WIN32)
#define ZOLVA_EXPORT __declspec(dllexport)
#elif defined(__GNUC__)
#define ZOLVA_EXPORT __attribute__((visibility("default")))
#else
#define ZOLVA_EXPORT
#endif

extern "C" ZOLVA_EXPORT int ReaperPluginEntry(void* hInstance, reaper_plugin_info_t* rec) {
  return ZOLVA::PluginEntry(hInstance, rec);
}

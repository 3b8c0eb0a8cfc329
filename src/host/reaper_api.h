// The slice of REAPER's C API that the extension uses: the plug-in ABI records
// and one function pointer per host function, filled by name at load time.
#pragma once

#include <cstdint>

struct ReaProject;
struct MediaItem;
struct MediaItem_Take;
struct MediaTrack;
struct PCM_source;
struct KbdSectionInfo;
struct HWND__;
typedef HWND__* HWND;
struct HMENU__;
typedef HMENU__* HMENU;

// REAPER's GUID record (Windows' GUID layout); only passed by pointer between
// genGuid and guidToString.
struct HostGuid {
  unsigned char bytes[16];
};

struct reaper_plugin_info_t {
  int caller_version;
  HWND hwnd_main;
  int (*Register)(const char* name, void* infostruct);
  void* (*GetFunc)(const char* name);
};

struct custom_action_register_t {
  int uniqueSectionId;
  const char* idStr;
  const char* name;
  void* extra;
};

// X-macro of every host function the extension resolves, in REAPER's
// alphabetical API order: X(return type, name, parameter list).
#define ZOLVA_HOST_FUNCTIONS(X)                                                                   \
  X(bool, AddExtensionsMainMenu, ())                                                              \
  X(int, AddProjectMarker2, (ReaProject*, bool, double, double, const char*, int, int))          \
  X(int, AddRemoveReaScript, (bool, int, const char*, bool))                                      \
  X(int, CountMediaItems, (ReaProject*))                                                          \
  X(int, CountProjectMarkers, (ReaProject*, int*, int*))                                          \
  X(int, CountSelectedMediaItems, (ReaProject*))                                                  \
  X(int, CountTracks, (ReaProject*))                                                              \
  X(bool, DeleteProjectMarkerByIndex, (ReaProject*, int))                                         \
  X(int, EnumProjectMarkers2, (ReaProject*, int, bool*, double*, double*, const char**, int*))   \
  X(int, EnumProjectMarkers3,                                                                     \
    (ReaProject*, int, bool*, double*, double*, const char**, int*, int*))                        \
  X(ReaProject*, EnumProjects, (int, char*, int))                                                 \
  X(MediaTrack*, EnumRegionRenderMatrix, (ReaProject*, int, int))                                \
  X(void, genGuid, (HostGuid*))                                                                  \
  X(MediaItem_Take*, GetActiveTake, (MediaItem*))                                                 \
  X(double, GetCursorPositionEx, (ReaProject*))                                                  \
  X(const char*, GetExtState, (const char*, const char*))                                         \
  X(MediaTrack*, GetMasterTrack, (ReaProject*))                                                   \
  X(MediaItem*, GetMediaItem, (ReaProject*, int))                                                 \
  X(double, GetMediaItemInfo_Value, (MediaItem*, const char*))                                    \
  X(int, GetMediaItemNumTakes, (MediaItem*))                                                      \
  X(PCM_source*, GetMediaItemTake_Source, (MediaItem_Take*))                                      \
  X(MediaTrack*, GetMediaItemTrack, (MediaItem*))                                                 \
  X(PCM_source*, GetMediaSourceParent, (PCM_source*))                                             \
  X(void, GetMediaSourceType, (PCM_source*, char*, int))                                          \
  X(double, GetMediaTrackInfo_Value, (MediaTrack*, const char*))                                  \
  X(double, GetPlayPosition, ())                                                                  \
  X(int, GetProjExtState, (ReaProject*, const char*, const char*, char*, int))                   \
  X(const char*, GetResourcePath, ())                                                             \
  X(MediaItem*, GetSelectedMediaItem, (ReaProject*, int))                                         \
  X(void, GetSet_LoopTimeRange2, (ReaProject*, bool, bool, double*, double*, bool))              \
  X(bool, GetSetMediaItemInfo_String, (MediaItem*, const char*, char*, bool))                    \
  X(bool, GetSetMediaItemTakeInfo_String, (MediaItem_Take*, const char*, char*, bool))           \
  X(bool, GetSetMediaTrackInfo_String, (MediaTrack*, const char*, char*, bool))                  \
  X(double, GetSetProjectInfo, (ReaProject*, const char*, double, bool))                         \
  X(bool, GetSetProjectInfo_String, (ReaProject*, const char*, char*, bool))                     \
  X(MediaItem_Take*, GetTake, (MediaItem*, int))                                                  \
  X(MediaTrack*, GetTrack, (ReaProject*, int))                                                    \
  X(bool, GetUserFileNameForRead, (char*, const char*, const char*))                              \
  X(bool, GetUserInputs, (const char*, int, const char*, char*, int))                             \
  X(void, guidToString, (const HostGuid*, char*))                                                 \
  X(bool, IsMediaItemSelected, (MediaItem*))                                                      \
  X(void, Main_OnCommand, (int, int))                                                             \
  X(void, MarkProjectDirty, (ReaProject*))                                                        \
  X(int, NamedCommandLookup, (const char*))                                                       \
  X(void, PreventUIRefresh, (int))                                                                \
  X(void, RefreshToolbar2, (int, int))                                                            \
  X(void, SetExtState, (const char*, const char*, const char*, bool))                             \
  X(bool, SetMediaItemInfo_Value, (MediaItem*, const char*, double))                              \
  X(bool, SetMediaTrackInfo_Value, (MediaTrack*, const char*, double))                            \
  X(bool, SetProjectMarkerByIndex2,                                                               \
    (ReaProject*, int, bool, double, double, int, const char*, int, int))                         \
  X(int, SetProjExtState, (ReaProject*, const char*, const char*, const char*))                  \
  X(void, SetRegionRenderMatrix, (ReaProject*, int, MediaTrack*, int))                           \
  X(void, ShowConsoleMsg, (const char*))                                                          \
  X(int, ShowMessageBox, (const char*, const char*, int))                                         \
  X(void, Undo_BeginBlock2, (ReaProject*))                                                        \
  X(void, Undo_EndBlock2, (ReaProject*, const char*, int))                                        \
  X(void, UpdateArrange, ())                                                                      \
  X(int, plugin_register, (const char*, void*))

#define ZOLVA_DECLARE_HOST_POINTER(ret, name, params) extern ret(*name) params;
ZOLVA_HOST_FUNCTIONS(ZOLVA_DECLARE_HOST_POINTER)
#undef ZOLVA_DECLARE_HOST_POINTER

namespace ZOLVA {

// Stores GetFunc(name) in every host function slot; an unknown name leaves
// the slot null, silently.
void ResolveHostApi(void* (*getFunc)(const char* name));

}  // namespace ZOLVA

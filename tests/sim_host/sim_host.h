// A simulated REAPER: a project model behind the same host functions, handed
// out through GetFunc exactly as the real host hands out its own. One Host is
// current at a time; constructing one makes it current.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/reaper_api.h"

using ExtValues = std::map<std::string, std::string>;

struct PCM_source {
  std::string type;
  PCM_source* parent = nullptr;
};

struct MediaItem_Take {
  std::string guid;
  std::string name;
  ExtValues ext;
  PCM_source* source = nullptr;
};

struct MediaTrack {
  std::string guid;
  std::string name;
  bool master = false;
  int freeMode = 0;              // 2 = fixed item lanes
  std::vector<int> lanePlays;    // per fixed lane: 0 silent, 1 exclusive, 2 with others
  bool selected = false;
  ExtValues ext;
};

struct MediaItem {
  std::string guid;
  MediaTrack* track = nullptr;
  double position = 0.0;
  double length = 1.0;
  bool mute = false;
  int muteSolo = 0;      // C_MUTE_SOLO
  int lanePlays = 1;     // C_LANEPLAYS
  int fixedLane = 0;
  bool selected = false;
  int curTake = 0;
  std::vector<MediaItem_Take*> takes;
  ExtValues ext;
  std::string notes;
};

namespace sim {

struct Marker {
  bool isRegion = false;
  double position = 0.0;
  double end = 0.0;
  std::string name;
  int number = 0;  // displayed number
  int color = 0;
  std::string guid;
};

struct MatrixCall {  // one SetRegionRenderMatrix call, as made
  int region;
  MediaTrack* track;
  int flag;
};

struct Registration {
  const char* key;  // the caller's pointer, kept like REAPER <= 6.66 keeps it
  std::string name; // a copy, to check the pointer still reads the same
  void* value;
  std::string definition;  // copy of an "APIdef_" text
};

struct MessageBoxCall {
  std::string message, title;
  int type;
};

struct ScriptRegistration {
  bool add;
  int section;
  std::string path;
  bool commit;
};

class Host {
 public:
  Host();
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // Building the project.
  MediaTrack* AddTrack();
  MediaItem* AddItem(MediaTrack* track, double position, double length);
  MediaItem_Take* AddTake(MediaItem* item, PCM_source* source);
  PCM_source* AddSource(const std::string& type, PCM_source* parent = nullptr);
  std::string NewGuid();

  // The host record to hand to ReaperPluginEntry, and GetFunc itself.
  reaper_plugin_info_t* Record() { return &record_; }
  static void* GetFunc(const char* name);
  // Runs an action the way REAPER does: every hook in turn until one handles it.
  bool RunCommand(int command);
  // True while every live registration key and definition text still reads as
  // it did when registered.
  bool RegistrationsIntact() const;
  bool IsRegistered(const std::string& name) const { return registered.count(name) != 0; }
  int CommandIdOf(const std::string& idStr) const;

  // Items in REAPER's enumeration order (track order, then position).
  const std::vector<MediaItem*>& ItemOrder();
  void ItemsMoved() { orderValid_ = false; }
  void SortMarkers();

  std::vector<std::unique_ptr<MediaTrack>> tracks;
  MediaTrack masterTrack;
  std::vector<std::unique_ptr<MediaItem>> items;
  std::vector<std::unique_ptr<MediaItem_Take>> takes;
  std::vector<std::unique_ptr<PCM_source>> sources;
  std::vector<Marker> markers;  // enumeration order
  std::map<int, std::vector<MediaTrack*>> renderMatrix;  // keyed by displayed region number
  std::vector<MatrixCall> matrixCalls;
  std::map<std::string, ExtValues> projExtState;
  std::map<std::pair<std::string, std::string>, std::pair<std::string, bool>> extState;  // value, persist
  double playPosition = 0.0;
  bool swsPresent = true;
  bool markerIndexFromGuid = true;  // false poses as a REAPER 6 build without that key
  std::set<std::string> missingFunctions;  // GetFunc answers null for these
  std::string resourcePath;  // a fresh temporary folder
  bool resourcePathNull = false;
  int nextScriptCommandId = 70000;
  int nextCommandId = 60000;  // next custom action id  // next AddRemoveReaScript result; 0 or less is returned as is

  // Logs and counters.
  std::vector<Registration> registerLog;  // every plugin_register call, in order
  std::map<std::string, Registration> registered;
  std::vector<void*> hooks;
  std::map<std::string, int> customActions;  // idStr -> command id
  std::vector<std::pair<int, int>> commands;  // Main_OnCommand(command, flag)
  std::vector<MessageBoxCall> messageBoxes;
  std::vector<ScriptRegistration> scriptRegistrations;
  int uiRefreshDepth = 0;
  int uiRefreshCalls = 0;
  int dirtyMarks = 0;
  int arrangeUpdates = 0;
  uint64_t hostCalls = 0;

  static constexpr int kSwsNotesOffCommand = 53000;
  static constexpr int kSwsUnselectAllCommand = 53001;

 private:
  reaper_plugin_info_t record_;
  std::vector<MediaItem*> order_;
  bool orderValid_ = false;
  uint64_t guidCounter_ = 0;
};

// The current host; the host functions act on it.
Host& Current();

}  // namespace sim

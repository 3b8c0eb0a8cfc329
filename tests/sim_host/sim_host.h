// A simulated REAPER: a small project model behind the host functions that the extension
// calls, handed out by name through GetFunc as the real host does (names it does not
// implement resolve to null). Constructing a Host makes it the one the functions act on.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <string>
#include <vector>

#include "host/reaper_api.h"

using NumericValues = std::unordered_map<std::string, double>;  // value name ("D_POSITION") -> value
using ExtValues = std::map<std::string, std::string>;  // key -> text

// IP_TRACKNUMBER is set on creation: 1-based, -1 for the master.
struct MediaTrack { std::string guid; NumericValues values; };

// A source's type ("WAVE", "VIDEO", "SECTION", ...) and, for a section, the source it cuts from.
struct PCM_source { std::string type; PCM_source* parent; };
struct MediaItem_Take { std::string guid; PCM_source* source; };

// D_POSITION, D_LENGTH and I_CURTAKE are set on creation; `ext` holds the "P_EXT:<name>" values by
// <name>. B_UISEL selects it; writing B_MUTE clears C_MUTE_SOLO, as in REAPER.
struct MediaItem {
  std::string guid;
  MediaTrack* track;
  NumericValues values;
  ExtValues ext;
  std::vector<std::unique_ptr<MediaItem_Take>> takes;
};

namespace sim {

// The path a UTF-8 string names, on Windows too (not read in the ANSI code page).
inline std::filesystem::path Utf8Path(const std::string& utf8) { return std::filesystem::u8path(utf8); }

// Makes a fresh folder "<prefix>XXXXXX" in the system's temporary folder and
// returns its UTF-8 path; empty when none could be made.
std::string MakeTempFolder(const std::string& prefix);

// `number` is the displayed number (markers and regions are numbered apart); a marker's `end` is 0.
struct Marker { bool isRegion; double position, end; std::string name; int number, color; std::string guid; };

// One plugin_register call: the caller's key pointer (REAPER <= 6.66 keeps it while registered),
// a copy of the key, the value, and for "APIdef_" a copy of the text's four NUL-terminated fields.
struct Registration { const char* key; std::string name; void* value; std::string definition; };

struct MatrixCall { int region; MediaTrack* track; int flag; };  // one SetRegionRenderMatrix call
struct MessageBoxCall { std::string message, title; int type; };
struct ScriptRegistration { bool add; int section; std::string path; bool commit; };

class Host {
 public:
  Host();
  ~Host();

  // Building the project: items enumerate in the order added, markers in position order.
  MediaTrack* AddTrack();
  MediaItem* AddItem(MediaTrack* track, double position, double length);
  std::string AddMarker(Marker marker);  // returns its GUID, made up when it has none
  // A take whose source has `type`; with `parentType`, a section of a source of that type.
  MediaItem_Take* AddTake(MediaItem* item, const std::string& type, const std::string& parentType = "");
  static std::string NewGuid();

  static void* GetFunc(const char* name);
  bool RunCommand(int command);  // as REAPER runs an action: each hook until one handles it
  int NamedCommand(const std::string& name);  // what NamedCommandLookup answers
  int ToggleState(int command);  // as REAPER asks for a check mark: the "toggleaction" callback, -1 without one
  void SwitchTab(int tab);       // another project tab becomes current, with its own extension state
  // As REAPER builds the menu `id`: a new menu to every "hookcustommenu" callback, with flag 0, then 1.
  size_t ShowMenu(const char* id);  // the menu's index in `menus`

  reaper_plugin_info_t record;  // for ReaperPluginEntry

  std::vector<std::unique_ptr<MediaTrack>> tracks;
  MediaTrack masterTrack{NewGuid(), {{"IP_TRACKNUMBER", -1.0}}};
  std::vector<std::unique_ptr<MediaItem>> items;
  std::vector<Marker> markers;
  std::map<int, std::vector<MediaTrack*>> renderMatrix;  // by displayed region number
  std::map<std::string, ExtValues> projExtState;         // by extname
  std::map<std::pair<std::string, std::string>, std::pair<std::string, bool>> extState;  // (value, persist)
  std::string resourcePath;  // a fresh temporary folder, removed with the host
  bool resourcePathNull = false;
  int nextCommandId = 60000;        // the next custom action's id
  int nextScriptCommandId = 70000;  // the next AddRemoveReaScript result; 0 or less is returned as is

  std::vector<Registration> registerLog;           // every plugin_register call
  std::map<std::string, Registration> registered;  // live registrations by key
  std::map<std::string, int> customActions;        // idStr -> command id
  std::vector<void*> hooks;                        // hookcommand2 callbacks
  std::vector<void*> menuHooks;                    // hookcustommenu callbacks
  // SWELL's menus (HMENU n is menus[n - 1]), items as "text=command", "text>submenu index" or "-". Outside
  // Windows, SWELLAPI_GetFunc serves them to a test program that exports it, unless !swellPresent.
  std::vector<std::vector<std::string>> menus;
  bool swellPresent = true;
  int extensionsMenuRequests = 0;   // AddExtensionsMainMenu calls
  std::vector<std::pair<int, int>> commands;       // Main_OnCommand(command, flag)
  std::vector<MatrixCall> matrixCalls;
  std::vector<MessageBoxCall> messageBoxes;
  std::vector<ScriptRegistration> scriptRegistrations;
  std::vector<std::unique_ptr<PCM_source>> sources;
  std::vector<MediaItem*> selection;  // the selected items as CountSelectedMediaItems last saw them
  double playPosition = 0.0;
  bool swsPresent = true;  // NamedCommandLookup knows the SWS commands (as kSws...)
  static constexpr int kSwsNotesOffSelectedTracks = 53000, kSwsUnselectAll = 53001;

  // What the native actions ask of the user and of the project.
  std::string projectPath;  // EnumProjects' file name: empty while the project was never saved
  int projectTab = 0;       // EnumProjects answers one project per tab
  std::map<int, std::map<std::string, ExtValues>> otherTabs;  // the extension state of the tabs not shown
  double cursor = 0.0;                      // GetCursorPositionEx
  double loopStart = 0.0, loopEnd = 0.0;    // GetSet_LoopTimeRange2's time selection
  std::deque<std::optional<std::string>> inputAnswers;  // GetUserInputs: the text typed, or nothing for Cancel
  std::deque<std::optional<std::string>> fileAnswers;   // GetUserFileNameForRead likewise
  std::deque<int> boxAnswers;               // ShowMessageBox's answers; 1 (OK) once none is left
  std::vector<std::string> prompts;         // each GetUserInputs call as "title|captions|initial text"
  std::string console;                      // everything ShowConsoleMsg printed
  std::vector<std::string> undoPoints;      // Undo_EndBlock2's names, each with "/<flags>"
  int undoOpen = 0;                         // undo blocks begun and not ended
  std::set<std::string> missing;            // names GetFunc does not know, as in an older REAPER
  std::map<std::string, double> projectInfo;            // GetSetProjectInfo: RENDER_SETTINGS, ...
  std::map<std::string, std::string> projectInfoText;   // GetSetProjectInfo_String: RENDER_FILE, RENDER_PATTERN
  std::vector<std::string> renders;         // RENDER_TARGETS at each render command (42230)
  std::vector<int> toolbarRefreshes;        // RefreshToolbar2's command ids
  int guidsMade = 0;                        // genGuid's count: "{C0000001-0000-4000-8000-000000000000}", ...
  int extWrites = 0;                        // SetProjExtState calls

  int dirtyMarks = 0;
  int arrangeUpdates = 0;
  int refreshHold = 0;     // PreventUIRefresh's counter
  int refreshCalls = 0;
  int valueWrites = 0;     // Set*Info_Value calls
  uint64_t hostCalls = 0;  // calls of any host function
};

}  // namespace sim

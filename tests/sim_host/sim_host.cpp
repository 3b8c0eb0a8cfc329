#include "sim_host.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>

namespace sim {
namespace {

Host* g_current = nullptr;

// Every simulated host function starts here, so that tests can count host calls.
Host& H() { return ++g_current->hostCalls, *g_current; }

bool StartsWith(const char* text, const char* prefix) { return std::strncmp(text, prefix, std::strlen(prefix)) == 0; }

template <typename Map, typename Key>
auto Find(Map& map, const Key& key) -> decltype(&map.begin()->second) {
  auto it = map.find(key);
  return it == map.end() ? nullptr : &it->second;
}

template <typename List>
auto At(List& list, long idx) -> decltype(&list[0]) {
  return idx >= 0 && idx < static_cast<long>(list.size()) ? &list[idx] : nullptr;
}

double ValueOf(NumericValues& values, const char* name) {  // unknown names read as 0
  const double* value = name ? Find(values, name) : nullptr;
  return value ? *value : 0.0;
}

// The *_String getters take no size: the caller's buffer must hold the whole value.
bool CopyWhole(char* buf, const std::string* value) {
  if (buf) std::strcpy(buf, value ? value->c_str() : "");
  return buf && value;
}

bool ByPosition(const Marker& a, const Marker& b) { return a.position < b.position; }

bool NumberTaken(const Host& h, bool isRegion, int number, const Marker* except = nullptr) {
  return std::any_of(h.markers.begin(), h.markers.end(),
                     [&](const Marker& m) { return &m != except && m.isRegion == isRegion && m.number == number; });
}

int CountMediaItems(ReaProject*) { return static_cast<int>(H().items.size()); }
MediaItem* GetMediaItem(ReaProject*, int idx) { auto* i = At(H().items, idx); return i ? i->get() : nullptr; }
double GetMediaItemInfo_Value(MediaItem* item, const char* parm) { return H(), item ? ValueOf(item->values, parm) : 0; }

// Reads "GUID" and "P_EXT:<name>" (a value never set gives "" and false); writing is not simulated.
bool GetSetMediaItemInfo_String(MediaItem* item, const char* parm, char* buf, bool set) {
  H();
  if (!item || !parm || set) return false;
  if (StartsWith(parm, "P_EXT:")) return CopyWhole(buf, Find(item->ext, std::string(parm + 6)));
  return CopyWhole(buf, std::strcmp(parm, "GUID") == 0 ? &item->guid : nullptr);
}

MediaTrack* GetMasterTrack(ReaProject*) { return &H().masterTrack; }
MediaTrack* GetTrack(ReaProject*, int idx) { auto* t = At(H().tracks, idx); return t ? t->get() : nullptr; }
double GetMediaTrackInfo_Value(MediaTrack* t, const char* parm) { return H(), t ? ValueOf(t->values, parm) : 0; }

// Markers and regions: the enumeration index is the place in `markers`.
// The extension asks only for the total, so the two counts are not written.
int CountProjectMarkers(ReaProject*, int*, int*) { return static_cast<int>(H().markers.size()); }

// idx + 1 for an entry, 0 past the end.
int EnumProjectMarkers3(ReaProject*, int idx, bool* isrgn, double* pos, double* rgnend, const char** name, int* number,
                        int* color) {
  const Marker* m = At(H().markers, idx);
  auto put = [](auto* out, auto value) { if (out) *out = value; };
  if (m) put(isrgn, m->isRegion), put(pos, m->position), put(rgnend, m->end), put(name, m->name.c_str());
  if (m) put(number, m->number), put(color, m->color);
  return m ? idx + 1 : 0;
}

int EnumProjectMarkers2(ReaProject* p, int idx, bool* isrgn, double* pos, double* rgnend, const char** name, int* num) {
  --g_current->hostCalls;  // counted once, by the call below
  return EnumProjectMarkers3(p, idx, isrgn, pos, rgnend, name, num, nullptr);
}

// Returns the displayed number: wantidx when free, else one past the highest of its kind.
int AddProjectMarker2(ReaProject*, bool isrgn, double pos, double rgnend, const char* name, int wantidx, int color) {
  Host& h = H();
  int next = 1;
  for (const Marker& m : h.markers) next = m.isRegion == isrgn ? std::max(next, m.number + 1) : next;
  const int number = wantidx < 0 || NumberTaken(h, isrgn, wantidx) ? next : wantidx;
  h.AddMarker({isrgn, pos, isrgn ? rgnend : 0.0, name ? name : "", number, color, ""});
  return number;
}

// Later entries move down one index; a deleted region's render matrix row goes with it.
bool DeleteProjectMarkerByIndex(ReaProject*, int idx) {
  Host& h = H();
  const Marker* m = At(h.markers, idx);
  if (m && m->isRegion) h.renderMatrix.erase(m->number);
  return m && (h.markers.erase(h.markers.begin() + idx), true);
}

// IDnumber < 0, an empty name and colour 0 keep the current value; flags & 1 clears the name; a
// number that another region has fails. The list is re-sorted (deferring that with flags & 2 is not simulated).
bool SetProjectMarkerByIndex2(ReaProject*, int idx, bool isrgn, double pos, double rgnend, int number,
                              const char* name, int color, int flags) {
  Host& h = H();
  Marker* m = At(h.markers, idx);
  if (!m || (number >= 0 && isrgn && NumberTaken(h, true, number, m))) return false;
  *m = {isrgn, pos, isrgn ? rgnend : 0.0, (flags & 1) ? "" : (name && *name ? name : m->name),
        number >= 0 ? number : m->number, color ? color : m->color, m->guid};
  std::stable_sort(h.markers.begin(), h.markers.end(), ByPosition);
  return true;
}

std::string RenderTargets(Host& h);

// Read-only keys "MARKER_GUID:<enumeration index>", "MARKER_INDEX_FROM_GUID:<guid>" and "RENDER_TARGETS";
// "RENDER_FILE" and "RENDER_PATTERN" are read and written.
bool GetSetProjectInfo_String(ReaProject*, const char* desc, char* buf, bool isSet) {
  Host& h = H();
  char* end = nullptr;
  if (desc && (std::strcmp(desc, "RENDER_FILE") == 0 || std::strcmp(desc, "RENDER_PATTERN") == 0)) {
    return isSet ? (h.projectInfoText[desc] = buf ? buf : "", true) : CopyWhole(buf, &h.projectInfoText[desc]);
  }
  if (desc && !isSet && std::strcmp(desc, "RENDER_TARGETS") == 0) {
    const std::string targets = RenderTargets(h);
    return CopyWhole(buf, &targets);
  }
  if (!desc || isSet) return false;
  if (StartsWith(desc, "MARKER_GUID:")) {  // out-of-range numbers saturate, and At refuses them
    const Marker* m = At(h.markers, std::strtol(desc + 12, &end, 10));
    return CopyWhole(buf, m && end != desc + 12 && *end == '\0' ? &m->guid : nullptr);
  }
  if (!StartsWith(desc, "MARKER_INDEX_FROM_GUID:")) return false;
  auto m = std::find_if(h.markers.begin(), h.markers.end(), [&](const Marker& x) { return x.guid == desc + 23; });
  const std::string index = std::to_string(m - h.markers.begin());
  return CopyWhole(buf, m != h.markers.end() ? &index : nullptr);
}

MediaTrack* EnumRegionRenderMatrix(ReaProject*, int region, int n) {
  auto* row = Find(H().renderMatrix, region);
  MediaTrack** track = row ? At(*row, n) : nullptr;
  return track ? *track : nullptr;
}

// flag > 0 adds, < 0 removes; a region number that does not exist changes nothing.
void SetRegionRenderMatrix(ReaProject*, int region, MediaTrack* track, int flag) {
  Host& h = H();
  h.matrixCalls.push_back({region, track, flag});
  if (!track || !NumberTaken(h, true, region)) return;
  auto& row = h.renderMatrix[region];
  auto it = std::find(row.begin(), row.end(), track);
  if (flag > 0 && it == row.end()) row.push_back(track);
  if (flag < 0 && it != row.end()) row.erase(it);
  if (row.empty()) h.renderMatrix.erase(region);
}

const char* GetExtState(const char* section, const char* key) {
  auto* value = Find(H().extState, std::make_pair(std::string(section ? section : ""), std::string(key ? key : "")));
  return value ? value->first.c_str() : "";
}

void SetExtState(const char* section, const char* key, const char* value, bool persist) {
  H().extState[{section ? section : "", key ? key : ""}] = {value ? value : "", persist};
}

// Copies as lstrcpyn does; non-zero exactly when the key exists.
int GetProjExtState(ReaProject*, const char* extname, const char* key, char* buf, int size) {
  ExtValues* section = Find(H().projExtState, std::string(extname ? extname : ""));
  const std::string* value = section ? Find(*section, std::string(key ? key : "")) : nullptr;
  if (buf && size > 0) buf[(value ? *value : std::string()).copy(buf, size - 1)] = '\0';
  return value ? 1 : 0;
}

// An empty value deletes the key; returns the size of the extname's state.
int SetProjExtState(ReaProject*, const char* extname, const char* key, const char* value) {
  ++H().extWrites;
  ExtValues& section = g_current->projExtState[extname ? extname : ""];
  value && *value ? void(section[key] = value) : void(section.erase(key));
  size_t size = 0;
  for (const auto& kv : section) size += kv.first.size() + kv.second.size();
  return static_cast<int>(size);
}

void MarkProjectDirty(ReaProject*) { ++H().dirtyMarks; }

// Answers from boxAnswers, then "OK" (1).
int ShowMessageBox(const char* msg, const char* title, int type) {
  Host& h = H();
  h.messageBoxes.push_back({msg ? msg : "", title ? title : "", type});
  const int answer = h.boxAnswers.empty() ? 1 : h.boxAnswers.front();
  if (!h.boxAnswers.empty()) h.boxAnswers.pop_front();
  return answer;
}

// The next queued answer copied into the caller's buffer, cut to its size;
// false (Cancel) for a queued nothing or when none is left.
bool Answer(std::deque<std::optional<std::string>>& answers, char* buf, int size) {
  const std::optional<std::string> answer = answers.empty() ? std::nullopt : answers.front();
  if (!answers.empty()) answers.pop_front();
  if (answer && buf && size > 0) buf[answer->copy(buf, size - 1)] = '\0';
  return answer.has_value();
}

bool GetUserInputs(const char* title, int, const char* captions, char* values, int size) {
  Host& h = H();
  h.prompts.push_back(std::string(title ? title : "") + '|' + (captions ? captions : "") + '|' + (values ? values : ""));
  return Answer(h.inputAnswers, values, size);
}

// The buffer holds 4096 bytes, as the function's name (filenameNeed4096) asks.
bool GetUserFileNameForRead(char* path, const char* title, const char* extension) {
  Host& h = H();
  h.prompts.push_back(std::string(title ? title : "") + '|' + (extension ? extension : "") + '|' + (path ? path : ""));
  return Answer(h.fileAnswers, path, 4096);
}

void ShowConsoleMsg(const char* text) { H().console += text ? text : ""; }
void Undo_BeginBlock2(ReaProject*) { ++H().undoOpen; }
void Undo_EndBlock2(ReaProject*, const char* name, int flags) {
  Host& h = H();
  --h.undoOpen;
  h.undoPoints.push_back(std::string(name ? name : "") + '/' + std::to_string(flags));
}
double GetCursorPositionEx(ReaProject*) { return H().cursor; }
void RefreshToolbar2(int, int command) { H().toolbarRefreshes.push_back(command); }

// The time selection (isLoop asks for the loop points, which are not simulated apart).
void GetSet_LoopTimeRange2(ReaProject*, bool isSet, bool, double* start, double* end, bool) {
  Host& h = H();
  if (isSet && start && end) h.loopStart = *start, h.loopEnd = *end;
  if (!isSet && start) *start = h.loopStart;
  if (!isSet && end) *end = h.loopEnd;
}

// One project per tab; its file name, empty while unsaved.
ReaProject* EnumProjects(int idx, char* path, int size) {
  static char tabs[16];
  Host& h = H();
  if (idx != -1 && idx != 0) return nullptr;
  if (path && size > 0) path[h.projectPath.copy(path, size - 1)] = '\0';
  return reinterpret_cast<ReaProject*>(&tabs[h.projectTab % 16]);
}

double GetSetProjectInfo(ReaProject*, const char* desc, double value, bool isSet) {
  Host& h = H();
  if (!desc) return 0;
  if (isSet) h.projectInfo[desc] = value;
  return h.projectInfo[desc];
}

// The files a render of the project's regions through the render matrix
// makes (RENDER_BOUNDSFLAG 3, RENDER_SETTINGS & 8): one per region that has
// a matrix row, "$region" in the pattern standing for its name, ".wav"
// added; nothing is simulated for other settings.
std::string RenderTargets(Host& h) {
  if (h.projectInfo["RENDER_BOUNDSFLAG"] != 3 || !(int64_t(h.projectInfo["RENDER_SETTINGS"]) & 8)) return "";
  const std::string folderSetting = h.projectInfoText["RENDER_FILE"];
  const std::string projectFolder = h.projectPath.substr(0, h.projectPath.find_last_of('/'));
  const std::string folder = folderSetting.empty() ? projectFolder
                             : folderSetting[0] == '/' ? folderSetting : projectFolder + "/" + folderSetting;
  std::string targets;
  for (const Marker& m : h.markers) {
    if (!m.isRegion || !h.renderMatrix.count(m.number)) continue;
    std::string name = h.projectInfoText["RENDER_PATTERN"];
    for (size_t at; (at = name.find("$region")) != std::string::npos;) name.replace(at, 7, m.name);
    targets += (targets.empty() ? "" : ";") + folder + "/" + name + ".wav";
  }
  return targets;
}

void genGuid(HostGuid* guid) {
  const uint32_t n = 0xC0000000u + static_cast<uint32_t>(++H().guidsMade);
  *guid = HostGuid{{uint8_t(n), uint8_t(n >> 8), uint8_t(n >> 16), uint8_t(n >> 24), 0, 0, 0, 0x40, 0x80}};
}

// Windows' GUID layout: three little-endian numbers, then eight bytes in order.
void guidToString(const HostGuid* guid, char* text) {
  const unsigned char* b = guid->bytes;
  std::snprintf(text, 64, "{%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X}", b[3], b[2], b[1],
                b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15]);
  H();
}

int AddRemoveReaScript(bool add, int section, const char* path, bool commit) {
  Host& h = H();
  h.scriptRegistrations.push_back({add, section, path ? path : "", commit});
  return !add ? 1 : h.nextScriptCommandId > 0 ? h.nextScriptCommandId++ : h.nextScriptCommandId;
}

// Unselecting all tracks (40297), all items (40289) or, with SWS, everything;
// rendering with the last settings (42230) writes an empty file per target.
void Main_OnCommand(int command, int flag) {
  Host& h = H();
  h.commands.emplace_back(command, flag);
  if (command == 42230) {
    const std::string targets = RenderTargets(h);
    h.renders.push_back(targets);
    for (size_t at = 0, end; at < targets.size(); at = end + 1) {
      end = std::min(targets.find(';', at), targets.size());
      const std::filesystem::path file = Utf8Path(targets.substr(at, end - at));
      std::filesystem::create_directories(file.parent_path());
      std::ofstream(file, std::ios::binary);
    }
  }
  const bool all = command == Host::kSwsUnselectAll;
  for (auto& t : h.tracks) t->values["I_SELECTED"] *= !(all || command == 40297);
  for (auto& i : h.items) i->values["B_UISEL"] *= !(all || command == 40289);
}

int CountSelectedMediaItems(ReaProject*) {
  Host& h = H();
  h.selection.clear();
  for (auto& i : h.items) {
    if (i->values["B_UISEL"] != 0) h.selection.push_back(i.get());
  }
  return static_cast<int>(h.selection.size());
}

// Answers from the selection the last count saw, so a walk over it stays linear.
MediaItem* GetSelectedMediaItem(ReaProject*, int i) { auto* m = At(H().selection, i); return m ? *m : nullptr; }
bool IsMediaItemSelected(MediaItem* item) { return H(), item && item->values["B_UISEL"] != 0; }

bool SetMediaItemInfo_Value(MediaItem* item, const char* parm, double v) {
  Host& h = H();
  if (!item || !parm) return false;
  ++h.valueWrites;
  if (std::strcmp(parm, "B_MUTE") == 0) item->values["C_MUTE_SOLO"] = 0;
  return item->values[parm] = v, true;
}

bool SetMediaTrackInfo_Value(MediaTrack* track, const char* parm, double v) {
  return H(), track && parm && (++g_current->valueWrites, track->values[parm] = v, true);
}

int GetMediaItemNumTakes(MediaItem* item) { return H(), item ? static_cast<int>(item->takes.size()) : 0; }
MediaItem_Take* GetTake(MediaItem* item, int idx) {
  auto* take = (H(), item) ? At(item->takes, idx) : nullptr;
  return take ? take->get() : nullptr;
}
MediaItem_Take* GetActiveTake(MediaItem* item) { return item ? GetTake(item, int(item->values["I_CURTAKE"])) : nullptr; }
PCM_source* GetMediaItemTake_Source(MediaItem_Take* take) { return H(), take ? take->source : nullptr; }
PCM_source* GetMediaSourceParent(PCM_source* source) { return H(), source ? source->parent : nullptr; }
MediaTrack* GetMediaItemTrack(MediaItem* item) { return H(), item ? item->track : nullptr; }
int CountTracks(ReaProject*) { return static_cast<int>(H().tracks.size()); }

void GetMediaSourceType(PCM_source* source, char* buf, int size) {
  if (H(), buf && size > 0) buf[(source ? source->type : std::string()).copy(buf, size - 1)] = '\0';
}

// Takes and tracks: their "GUID" only.
template <typename T>
bool GuidString(T* object, const char* parm, char* buf, bool set) {
  return H(), object && parm && !set && std::strcmp(parm, "GUID") == 0 && CopyWhole(buf, &object->guid);
}

void UpdateArrange() { ++H().arrangeUpdates; }
void PreventUIRefresh(int count) { H().refreshHold += count, ++g_current->refreshCalls; }
double GetPlayPosition() { return H().playPosition; }

// A registered custom action as "_" + its id; SWS's commands when it is present; 0 for any other name.
int NamedCommandLookup(const char* name) {
  const int* custom = name && name[0] == '_' ? Find(H().customActions, std::string(name + 1)) : nullptr;
  const std::string n = name && g_current->swsPresent ? name : "";
  return custom ? *custom : n == "_S&M_CC123_SEL_TRACKS" ? Host::kSwsNotesOffSelectedTracks : n == "_SWS_UNSELALL" ? Host::kSwsUnselectAll : 0;
}
const char* GetResourcePath() { return H().resourcePathNull ? nullptr : g_current->resourcePath.c_str(); }

bool AddExtensionsMainMenu() { return ++H().extensionsMenuRequests, true; }

// SWELL's MENUITEMINFO, with its flags: MIIM_ID 1, MIIM_TYPE 4, MIIM_SUBMENU 8; MFT_SEPARATOR 0x800.
struct SwellItemInfo { unsigned cbSize, fMask, fType, fState, wID; HMENU sub; void *checked, *unchecked;
                       uintptr_t data; char* text; int cch; void* bitmap; };
long MenuIndex(HMENU menu) { return static_cast<long>(reinterpret_cast<intptr_t>(menu)) - 1; }
HMENU CreatePopupMenu() { return H().menus.emplace_back(), reinterpret_cast<HMENU>(g_current->menus.size()); }
int GetMenuItemCount(HMENU menu) { auto* m = At(H().menus, MenuIndex(menu)); return m ? int(m->size()) : -1; }

// By position (past the end appends), as the extension inserts.
void InsertMenuItem(HMENU menu, int pos, signed char byPosition, SwellItemInfo* mi) {
  std::vector<std::string>* items = At(H().menus, MenuIndex(menu));
  if (!items || !byPosition || !(mi->fMask & 4)) return;
  const std::string item = mi->fType & 0x800 ? "-" : mi->text + (mi->fMask & 8 ? ">" + std::to_string(MenuIndex(mi->sub))
                                                  : mi->fMask & 1 ? "=" + std::to_string(mi->wID) : "");
  items->insert(pos < 0 || pos > int(items->size()) ? items->end() : items->begin() + pos, item);
}

// Registrations by key, as REAPER keeps them; "-" + key withdraws one.
int plugin_register(const char* name, void* value) {
  Host& h = H();
  const bool remove = name[0] == '-';
  const std::string key = name + (remove ? 1 : 0);
  Registration reg{name, name, value, std::string()};
  for (int field = 0; field < 4 && !remove && StartsWith(name, "APIdef_"); ++field) {
    const char* text = static_cast<const char*>(value) + reg.definition.size();
    reg.definition.append(text, std::strlen(text) + 1);
  }
  h.registerLog.push_back(reg);
  if (key == "custom_action") {  // matched by idStr; an id already registered fails
    const char* id = static_cast<custom_action_register_t*>(value)->idStr;
    if (remove) return static_cast<int>(h.customActions.erase(id));
    return h.customActions.count(id) ? 0 : (h.customActions[id] = h.nextCommandId++);
  }
  if (key == "hookcommand2" || key == "hookcustommenu") {
    std::vector<void*>& hooks = key == "hookcommand2" ? h.hooks : h.menuHooks;
    if (remove) hooks.erase(std::remove(hooks.begin(), hooks.end(), value), hooks.end());
    if (!remove) hooks.push_back(value);
    return 1;
  }
  if (remove) return static_cast<int>(h.registered.erase(key));
  h.registered[key] = reg;
  return 1;
}

// What this host implements. Each entry must have exactly the type the
// extension declares for that name, or the build fails here.
#define SIM(name) {#name, reinterpret_cast<void*>(static_cast<decltype(::name)>(&name))}
const std::map<std::string, void*> kFunctions = {
    SIM(AddProjectMarker2), SIM(AddRemoveReaScript), SIM(CountMediaItems), SIM(CountProjectMarkers),
    SIM(DeleteProjectMarkerByIndex), SIM(EnumProjectMarkers2), SIM(EnumProjectMarkers3), SIM(EnumRegionRenderMatrix),
    SIM(GetExtState), SIM(GetMasterTrack), SIM(GetMediaItem), SIM(GetMediaItemInfo_Value), SIM(GetMediaTrackInfo_Value),
    SIM(GetProjExtState), SIM(GetResourcePath), SIM(GetSetMediaItemInfo_String), SIM(GetSetProjectInfo_String),
    SIM(GetTrack), SIM(Main_OnCommand), SIM(MarkProjectDirty), SIM(SetExtState), SIM(SetProjExtState),
    SIM(SetProjectMarkerByIndex2), SIM(SetRegionRenderMatrix), SIM(ShowMessageBox), SIM(plugin_register),
    SIM(CountSelectedMediaItems), SIM(GetSelectedMediaItem), SIM(IsMediaItemSelected), SIM(SetMediaItemInfo_Value),
    SIM(SetMediaTrackInfo_Value), SIM(GetMediaItemNumTakes), SIM(GetTake), SIM(GetActiveTake),
    SIM(GetMediaItemTake_Source), SIM(GetMediaSourceParent), SIM(GetMediaItemTrack), SIM(CountTracks),
    SIM(GetMediaSourceType), {"GetSetMediaItemTakeInfo_String", reinterpret_cast<void*>(&GuidString<MediaItem_Take>)},
    {"GetSetMediaTrackInfo_String", reinterpret_cast<void*>(&GuidString<MediaTrack>)},
    SIM(UpdateArrange), SIM(PreventUIRefresh), SIM(GetPlayPosition), SIM(NamedCommandLookup),
    SIM(GetUserInputs), SIM(GetUserFileNameForRead), SIM(ShowConsoleMsg), SIM(Undo_BeginBlock2), SIM(Undo_EndBlock2),
    SIM(GetCursorPositionEx), SIM(RefreshToolbar2), SIM(GetSet_LoopTimeRange2), SIM(EnumProjects),
    SIM(GetSetProjectInfo), SIM(genGuid), SIM(guidToString),
    SIM(AddExtensionsMainMenu),
};
const std::map<std::string, void*> kSwellFunctions = {{"CreatePopupMenu", reinterpret_cast<void*>(&CreatePopupMenu)},
    {"GetMenuItemCount", reinterpret_cast<void*>(&GetMenuItemCount)},
    {"InsertMenuItem", reinterpret_cast<void*>(&InsertMenuItem)}};
#undef SIM

}  // namespace

std::string MakeTempFolder(const std::string& prefix) {
  std::error_code ec;
  const std::filesystem::path base = std::filesystem::temp_directory_path(ec);
  if (ec) return std::string();
  static std::mt19937_64 random{std::random_device{}()};
  static constexpr char kDigits[] = "0123456789abcdefghijklmnopqrstuvwxyz";
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::string name = prefix;
    for (int i = 0; i < 6; ++i) name += kDigits[random() % 36];
    const std::filesystem::path folder = base / Utf8Path(name);
    // create_directory is false for a folder that already exists: another try.
    if (std::filesystem::create_directory(folder, ec)) return folder.u8string();
    if (ec) return std::string();
  }
  return std::string();
}

Host::Host() {
  record = {0x20E, nullptr, &plugin_register, &Host::GetFunc};
  // With "/" only, also on Windows (which takes both), so that the call
  // scripts can put the path into JSON and Lua strings without escaping it.
  resourcePath = Utf8Path(MakeTempFolder("zolva-sim-")).generic_u8string();
  g_current = this;
}

Host::~Host() {
  std::error_code ignored;
  if (!resourcePath.empty()) std::filesystem::remove_all(Utf8Path(resourcePath), ignored);
  if (g_current == this) g_current = nullptr;
}

void* Host::GetFunc(const char* name) {
  void* const* fn = name && !g_current->missing.count(name) ? Find(kFunctions, name) : nullptr;
  // Functions that extensions publish with "API_" are found by their plain name too.
  Registration* api = name && !fn ? Find(g_current->registered, std::string("API_") + name) : nullptr;
  return fn ? *fn : api ? api->value : nullptr;
}

size_t Host::ShowMenu(const char* id) {
  HMENU menu = CreatePopupMenu();
  for (int flag : {0, 1}) {
    for (void* hook : menuHooks) reinterpret_cast<void (*)(const char*, HMENU, int)>(hook)(id, menu, flag);
  }
  return MenuIndex(menu);
}

std::string Host::NewGuid() {
  static unsigned long long count = 0;  // unique across hosts too
  const unsigned long long n = ++count;
  char text[40];
  std::snprintf(text, sizeof text, "{%08llX-%04llX-4000-8000-%012llX}", (n * 2654435761u) & 0xFFFFFFFF, n & 0xFFFF, n);
  return text;
}

MediaTrack* Host::AddTrack() {
  return tracks.emplace_back(new MediaTrack{NewGuid(), {{"IP_TRACKNUMBER", tracks.size() + 1.0}}}).get();
}

MediaItem* Host::AddItem(MediaTrack* track, double position, double length) {
  NumericValues values{{"D_POSITION", position}, {"D_LENGTH", length}, {"I_CURTAKE", 0.0}};
  return items.emplace_back(new MediaItem{NewGuid(), track, std::move(values), {}, {}}).get();
}

MediaItem_Take* Host::AddTake(MediaItem* item, const std::string& type, const std::string& parentType) {
  PCM_source* parent = parentType.empty() ? nullptr : sources.emplace_back(new PCM_source{parentType, nullptr}).get();
  PCM_source* source = sources.emplace_back(new PCM_source{type, parent}).get();
  return item->takes.emplace_back(new MediaItem_Take{NewGuid(), source}).get();
}

std::string Host::AddMarker(Marker marker) {
  if (marker.guid.empty()) marker.guid = NewGuid();
  const auto at = std::upper_bound(markers.begin(), markers.end(), marker, ByPosition);
  return markers.insert(at, std::move(marker))->guid;
}

int Host::ToggleState(int command) {
  const Registration* toggle = Find(registered, std::string("toggleaction"));
  return toggle ? reinterpret_cast<int (*)(int)>(toggle->value)(command) : -1;
}

void Host::SwitchTab(int tab) {
  otherTabs[projectTab] = std::move(projExtState);
  projExtState = std::move(otherTabs[tab]);
  projectTab = tab;
}

int Host::NamedCommand(const std::string& name) { return NamedCommandLookup(name.c_str()); }

bool Host::RunCommand(int command) {
  int mainSection = 0;  // a KbdSectionInfo begins with its section id
  using Hook = bool (*)(KbdSectionInfo*, int, int, int, int, HWND);
  return std::any_of(hooks.begin(), hooks.end(), [&](void* hook) {
    return reinterpret_cast<Hook>(hook)(reinterpret_cast<KbdSectionInfo*>(&mainSection), command, 0, -1, 0, nullptr);
  });
}

}  // namespace sim

#ifndef _WIN32
extern "C" __attribute__((visibility("default"))) void* SWELLAPI_GetFunc(const char* name) {  // null: SWELL's version
  void* const* fn = name ? sim::Find(sim::kSwellFunctions, name) : nullptr;
  if (!sim::g_current || !sim::g_current->swellPresent) return nullptr;
  return name ? (fn ? *fn : nullptr) : reinterpret_cast<void*>(0x100);
}
#endif

#include "sim_host.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <unordered_map>

namespace sim {
namespace {

Host* g_current = nullptr;

Host& H() {
  ++g_current->hostCalls;
  return *g_current;
}

// Copies like lstrcpyn: at most size - 1 bytes and a NUL.
void CopyOut(char* buf, int size, const std::string& value) {
  if (!buf || size <= 0) return;
  const size_t n = std::min(value.size(), static_cast<size_t>(size - 1));
  std::memcpy(buf, value.data(), n);
  buf[n] = '\0';
}

// REAPER's *_String functions take no size: the caller's buffer must hold it all.
void CopyUnbounded(char* buf, const std::string& value) {
  std::memcpy(buf, value.c_str(), value.size() + 1);
}

bool StartsWith(const char* text, const char* prefix) {
  return std::strncmp(text, prefix, std::strlen(prefix)) == 0;
}

// "GUID", "P_EXT:<name>" and one plain string field, shared by items, takes and tracks.
bool GetSetString(std::string& guid, ExtValues& ext, std::string* plain, const char* plainName,
                  const char* parm, char* buf, bool set) {
  if (!parm || !buf) return false;
  std::string* field = nullptr;
  if (std::strcmp(parm, "GUID") == 0) {
    field = &guid;
  } else if (plain && std::strcmp(parm, plainName) == 0) {
    field = plain;
  } else if (StartsWith(parm, "P_EXT:")) {
    const std::string key = parm + 6;
    if (set) {
      ext[key] = buf;
      return true;
    }
    auto it = ext.find(key);
    CopyUnbounded(buf, it == ext.end() ? std::string() : it->second);
    return it != ext.end();
  } else {
    return false;
  }
  if (set) {
    *field = buf;
  } else {
    CopyUnbounded(buf, *field);
  }
  return true;
}

int TrackNumber(MediaTrack* track) {
  Host& h = *g_current;
  if (track == &h.masterTrack) return -1;
  for (size_t i = 0; i < h.tracks.size(); ++i) {
    if (h.tracks[i].get() == track) return static_cast<int>(i) + 1;
  }
  return 0;
}

Marker* MarkerAt(int idx) {
  Host& h = *g_current;
  if (idx < 0 || idx >= static_cast<int>(h.markers.size())) return nullptr;
  return &h.markers[idx];
}

bool RegionNumberExists(int number) {
  for (const Marker& m : g_current->markers) {
    if (m.isRegion && m.number == number) return true;
  }
  return false;
}

// ---- items, takes, sources ----

int CountMediaItems(ReaProject*) { return static_cast<int>(H().items.size()); }

MediaItem* GetMediaItem(ReaProject*, int idx) {
  const auto& order = H().ItemOrder();
  return idx >= 0 && idx < static_cast<int>(order.size()) ? order[idx] : nullptr;
}

int CountSelectedMediaItems(ReaProject*) {
  const auto& order = H().ItemOrder();
  return static_cast<int>(std::count_if(order.begin(), order.end(),
                                        [](MediaItem* i) { return i->selected; }));
}

MediaItem* GetSelectedMediaItem(ReaProject*, int n) {
  for (MediaItem* item : H().ItemOrder()) {
    if (item->selected && n-- == 0) return item;
  }
  return nullptr;
}

bool IsMediaItemSelected(MediaItem* item) { return H(), item && item->selected; }

double GetMediaItemInfo_Value(MediaItem* item, const char* parm) {
  H();
  if (!item || !parm) return 0.0;
  const std::string p = parm;
  if (p == "B_MUTE" || p == "B_MUTE_ACTUAL") return item->mute ? 1.0 : 0.0;
  if (p == "C_MUTE_SOLO") return item->muteSolo;
  if (p == "C_LANEPLAYS") return item->lanePlays;
  if (p == "I_FIXEDLANE") return item->fixedLane;
  if (p == "I_CURTAKE") return item->curTake;
  if (p == "D_POSITION") return item->position;
  if (p == "D_LENGTH") return item->length;
  if (p == "B_UISEL") return item->selected ? 1.0 : 0.0;
  return 0.0;
}

bool SetMediaItemInfo_Value(MediaItem* item, const char* parm, double v) {
  Host& h = H();
  if (!item || !parm) return false;
  const std::string p = parm;
  if (p == "B_MUTE") {
    item->mute = v != 0.0;
    item->muteSolo = 0;  // writing B_MUTE clears any solo override
  } else if (p == "B_MUTE_ACTUAL") {
    item->mute = v != 0.0;
  } else if (p == "C_MUTE_SOLO") {
    item->muteSolo = static_cast<int>(v);
  } else if (p == "C_LANEPLAYS") {
    if (v < 0 || v > 2) return false;
    item->lanePlays = static_cast<int>(v);
  } else if (p == "I_FIXEDLANE") {
    item->fixedLane = static_cast<int>(v);
  } else if (p == "I_CURTAKE") {
    if (v < 0 || v >= static_cast<double>(item->takes.size())) return false;
    item->curTake = static_cast<int>(v);
  } else if (p == "D_POSITION") {
    item->position = v;
    h.ItemsMoved();
  } else if (p == "D_LENGTH") {
    item->length = v;
  } else if (p == "B_UISEL") {
    item->selected = v != 0.0;
  } else {
    return false;
  }
  return true;
}

bool GetSetMediaItemInfo_String(MediaItem* item, const char* parm, char* buf, bool set) {
  H();
  return item && GetSetString(item->guid, item->ext, &item->notes, "P_NOTES", parm, buf, set);
}

int GetMediaItemNumTakes(MediaItem* item) { return H(), item ? static_cast<int>(item->takes.size()) : 0; }

MediaItem_Take* GetActiveTake(MediaItem* item) {
  H();
  if (!item || item->takes.empty()) return nullptr;
  return item->takes[std::min<size_t>(item->curTake, item->takes.size() - 1)];
}

MediaItem_Take* GetTake(MediaItem* item, int idx) {
  H();
  if (!item || idx < 0 || idx >= static_cast<int>(item->takes.size())) return nullptr;
  return item->takes[idx];
}

PCM_source* GetMediaItemTake_Source(MediaItem_Take* take) { return H(), take ? take->source : nullptr; }

bool GetSetMediaItemTakeInfo_String(MediaItem_Take* take, const char* parm, char* buf, bool set) {
  H();
  return take && GetSetString(take->guid, take->ext, &take->name, "P_NAME", parm, buf, set);
}

PCM_source* GetMediaSourceParent(PCM_source* src) { return H(), src ? src->parent : nullptr; }

void GetMediaSourceType(PCM_source* src, char* buf, int size) {
  H();
  CopyOut(buf, size, src ? src->type : std::string());
}

MediaTrack* GetMediaItemTrack(MediaItem* item) { return H(), item ? item->track : nullptr; }

// ---- tracks ----

int CountTracks(ReaProject*) { return static_cast<int>(H().tracks.size()); }

MediaTrack* GetTrack(ReaProject*, int idx) {
  Host& h = H();
  return idx >= 0 && idx < static_cast<int>(h.tracks.size()) ? h.tracks[idx].get() : nullptr;
}

MediaTrack* GetMasterTrack(ReaProject*) { return &H().masterTrack; }

double GetMediaTrackInfo_Value(MediaTrack* track, const char* parm) {
  H();
  if (!track || !parm) return 0.0;
  const std::string p = parm;
  if (p == "IP_TRACKNUMBER") return TrackNumber(track);
  if (p == "I_FREEMODE") return track->freeMode;
  if (p == "I_SELECTED") return track->selected ? 1.0 : 0.0;
  if (p == "I_NUMFIXEDLANES") return static_cast<double>(track->lanePlays.size());
  if (p == "C_ALLLANESPLAY") {
    const auto playing = std::count_if(track->lanePlays.begin(), track->lanePlays.end(),
                                       [](int v) { return v != 0; });
    if (playing == 0) return 0.0;
    return playing == static_cast<long>(track->lanePlays.size()) ? 1.0 : 2.0;
  }
  if (StartsWith(parm, "C_LANEPLAYS:")) {
    const int lane = std::atoi(parm + 12);
    if (lane < 0 || lane >= static_cast<int>(track->lanePlays.size())) return 0.0;
    return track->lanePlays[lane];
  }
  return 0.0;
}

bool SetMediaTrackInfo_Value(MediaTrack* track, const char* parm, double v) {
  H();
  if (!track || !parm) return false;
  const std::string p = parm;
  if (p == "I_FREEMODE") {
    track->freeMode = static_cast<int>(v);
  } else if (p == "I_SELECTED") {
    track->selected = v != 0.0;
  } else if (p == "I_NUMFIXEDLANES") {
    track->lanePlays.resize(static_cast<size_t>(std::max(0.0, v)), 0);
  } else if (p == "C_ALLLANESPLAY") {
    if (v != 0.0 && v != 1.0) return false;  // documented as settable to 0 or 1 only
    const int each = v == 0.0 ? 0 : (track->lanePlays.size() > 1 ? 2 : 1);
    std::fill(track->lanePlays.begin(), track->lanePlays.end(), each);
  } else if (StartsWith(parm, "C_LANEPLAYS:")) {
    const int lane = std::atoi(parm + 12);
    if (lane < 0 || lane >= static_cast<int>(track->lanePlays.size()) || v < 0 || v > 2) return false;
    if (v == 1.0) std::fill(track->lanePlays.begin(), track->lanePlays.end(), 0);
    track->lanePlays[lane] = static_cast<int>(v);
  } else {
    return false;
  }
  return true;
}

bool GetSetMediaTrackInfo_String(MediaTrack* track, const char* parm, char* buf, bool set) {
  H();
  if (!track) return false;
  return GetSetString(track->guid, track->ext, track->master ? nullptr : &track->name, "P_NAME",
                      parm, buf, set);
}

// ---- markers and regions ----

int CountProjectMarkers(ReaProject*, int* numMarkers, int* numRegions) {
  Host& h = H();
  const int regions = static_cast<int>(std::count_if(h.markers.begin(), h.markers.end(),
                                                     [](const Marker& m) { return m.isRegion; }));
  if (numMarkers) *numMarkers = static_cast<int>(h.markers.size()) - regions;
  if (numRegions) *numRegions = regions;
  return static_cast<int>(h.markers.size());
}

int EnumProjectMarkers3(ReaProject*, int idx, bool* isrgn, double* pos, double* rgnend,
                        const char** name, int* number, int* color) {
  H();
  const Marker* m = MarkerAt(idx);
  if (!m) return 0;
  if (isrgn) *isrgn = m->isRegion;
  if (pos) *pos = m->position;
  if (rgnend) *rgnend = m->isRegion ? m->end : 0.0;
  if (name) *name = m->name.c_str();
  if (number) *number = m->number;
  if (color) *color = m->color;
  return idx + 1;
}

int EnumProjectMarkers2(ReaProject* p, int idx, bool* isrgn, double* pos, double* rgnend,
                        const char** name, int* number) {
  --g_current->hostCalls;  // counted once, by the call below
  return EnumProjectMarkers3(p, idx, isrgn, pos, rgnend, name, number, nullptr);
}

int AddProjectMarker2(ReaProject*, bool isrgn, double pos, double rgnend, const char* name,
                      int wantidx, int color) {
  Host& h = H();
  const std::string label = name ? name : "";
  if (!isrgn) {  // an identical marker is reused, not duplicated
    for (const Marker& m : h.markers) {
      if (!m.isRegion && m.position == pos && m.name == label) return m.number;
    }
  }
  auto taken = [&](int n) {
    return std::any_of(h.markers.begin(), h.markers.end(),
                       [&](const Marker& m) { return m.isRegion == isrgn && m.number == n; });
  };
  int number = wantidx;
  if (number < 0 || taken(number)) {
    number = 1;
    for (const Marker& m : h.markers) {
      if (m.isRegion == isrgn) number = std::max(number, m.number + 1);
    }
  }
  Marker m;
  m.isRegion = isrgn;
  m.position = pos;
  m.end = isrgn ? rgnend : pos;
  m.name = label;
  m.number = number;
  m.color = color;
  m.guid = h.NewGuid();
  h.markers.push_back(m);
  h.SortMarkers();
  return number;
}

bool DeleteProjectMarkerByIndex(ReaProject*, int idx) {
  Host& h = H();
  const Marker* m = MarkerAt(idx);
  if (!m) return false;
  if (m->isRegion) h.renderMatrix.erase(m->number);
  h.markers.erase(h.markers.begin() + idx);
  return true;
}

bool SetProjectMarkerByIndex2(ReaProject*, int idx, bool isrgn, double pos, double rgnend,
                              int number, const char* name, int color, int flags) {
  Host& h = H();
  if (idx == -1 && (flags & 2)) {
    h.SortMarkers();
    return true;
  }
  Marker* m = MarkerAt(idx);
  if (!m) return false;
  if (number >= 0 && isrgn && number != m->number) {
    for (const Marker& other : h.markers) {
      if (&other != m && other.isRegion && other.number == number) return false;
    }
  }
  if (number >= 0 && m->isRegion && number != m->number && h.renderMatrix.count(m->number)) {
    h.renderMatrix[number] = h.renderMatrix[m->number];
    h.renderMatrix.erase(m->number);
  }
  m->isRegion = isrgn;
  m->position = pos;
  m->end = isrgn ? rgnend : pos;
  if (number >= 0) m->number = number;
  if (flags & 1) {
    m->name.clear();
  } else if (name && *name) {
    m->name = name;
  }
  if (color != 0) m->color = color;
  if (!(flags & 2)) h.SortMarkers();
  return true;
}

bool GetSetProjectInfo_String(ReaProject*, const char* desc, char* buf, bool isSet) {
  Host& h = H();
  if (!desc || !buf || isSet) return false;
  if (StartsWith(desc, "MARKER_GUID:")) {
    const Marker* m = MarkerAt(std::atoi(desc + 12));
    CopyUnbounded(buf, m ? m->guid : std::string());
    return m != nullptr;
  }
  if (h.markerIndexFromGuid && StartsWith(desc, "MARKER_INDEX_FROM_GUID:")) {
    const std::string guid = desc + 23;
    for (size_t i = 0; i < h.markers.size(); ++i) {
      if (h.markers[i].guid == guid) {
        CopyUnbounded(buf, std::to_string(i));
        return true;
      }
    }
    CopyUnbounded(buf, std::string());
    return false;
  }
  return false;
}

MediaTrack* EnumRegionRenderMatrix(ReaProject*, int region, int n) {
  Host& h = H();
  auto it = h.renderMatrix.find(region);
  if (it == h.renderMatrix.end() || n < 0 || n >= static_cast<int>(it->second.size())) return nullptr;
  return it->second[n];
}

void SetRegionRenderMatrix(ReaProject*, int region, MediaTrack* track, int flag) {
  Host& h = H();
  h.matrixCalls.push_back({region, track, flag});
  if (!track || !RegionNumberExists(region)) return;
  auto& row = h.renderMatrix[region];
  auto it = std::find(row.begin(), row.end(), track);
  if (flag > 0 && it == row.end()) row.push_back(track);
  if (flag < 0 && it != row.end()) row.erase(it);
  if (row.empty()) h.renderMatrix.erase(region);
}

// ---- extended state ----

const char* GetExtState(const char* section, const char* key) {
  Host& h = H();
  auto it = h.extState.find({section ? section : "", key ? key : ""});
  return it == h.extState.end() ? "" : it->second.first.c_str();
}

void SetExtState(const char* section, const char* key, const char* value, bool persist) {
  H().extState[{section ? section : "", key ? key : ""}] = {value ? value : "", persist};
}

int GetProjExtState(ReaProject*, const char* extname, const char* key, char* buf, int size) {
  Host& h = H();
  CopyOut(buf, size, std::string());
  auto section = h.projExtState.find(extname ? extname : "");
  if (section == h.projExtState.end()) return 0;
  auto it = section->second.find(key ? key : "");
  if (it == section->second.end()) return 0;
  CopyOut(buf, size, it->second);
  return 1;  // non-zero for a present key; callers must not read a length into it
}

int SetProjExtState(ReaProject*, const char* extname, const char* key, const char* value) {
  Host& h = H();
  ExtValues& section = h.projExtState[extname ? extname : ""];
  if (!key || !*key) {
    section.clear();
  } else if (!value || !*value) {
    section.erase(key);
  } else {
    section[key] = value;
  }
  int size = 0;
  for (const auto& kv : section) size += static_cast<int>(kv.first.size() + kv.second.size());
  return size;
}

void MarkProjectDirty(ReaProject*) { ++H().dirtyMarks; }

// ---- user interface and commands ----

int ShowMessageBox(const char* msg, const char* title, int type) {
  H().messageBoxes.push_back({msg ? msg : "", title ? title : "", type});
  return 1;
}

void UpdateArrange() { ++H().arrangeUpdates; }

void PreventUIRefresh(int count) {
  Host& h = H();
  h.uiRefreshDepth += count;
  ++h.uiRefreshCalls;
}

int NamedCommandLookup(const char* name) {
  Host& h = H();
  if (!name) return 0;
  const std::string n = name;
  if (h.swsPresent && n == "_S&M_CC123_SEL_TRACKS") return Host::kSwsNotesOffCommand;
  if (h.swsPresent && n == "_SWS_UNSELALL") return Host::kSwsUnselectAllCommand;
  if (n.size() > 1 && n[0] == '_') return h.CommandIdOf(n.substr(1));
  return 0;
}

void Main_OnCommand(int command, int flag) {
  Host& h = H();
  h.commands.emplace_back(command, flag);
  const bool unselectTracks = command == 40297 || command == Host::kSwsUnselectAllCommand;
  const bool unselectItems = command == 40289 || command == Host::kSwsUnselectAllCommand;
  if (unselectTracks) {
    for (auto& t : h.tracks) t->selected = false;
  }
  if (unselectItems) {
    for (auto& i : h.items) i->selected = false;
  }
}

int AddRemoveReaScript(bool add, int section, const char* path, bool commit) {
  Host& h = H();
  h.scriptRegistrations.push_back({add, section, path ? path : "", commit});
  if (!add) return 1;
  const int id = h.nextScriptCommandId;
  if (id > 0) ++h.nextScriptCommandId;
  return id;
}

const char* GetResourcePath() {
  Host& h = H();
  return h.resourcePathNull ? nullptr : h.resourcePath.c_str();
}

double GetPlayPosition() { return H().playPosition; }

// plugin_register: registrations by key, as REAPER keeps them.
int plugin_register(const char* name, void* value) {
  Host& h = H();
  if (!name) return 0;
  Registration reg{name, name, value, std::string()};
  std::string key = name;
  const bool remove = !key.empty() && key[0] == '-';
  if (remove) key.erase(0, 1);
  if (!remove && StartsWith(key.c_str(), "APIdef_") && value) {
    const char* p = static_cast<const char*>(value);
    for (int field = 0; field < 4; ++field) {
      const size_t len = std::strlen(p);
      reg.definition.append(p, len + 1);
      p += len + 1;
    }
  }
  h.registerLog.push_back(reg);
  if (key == "custom_action") {
    auto* action = static_cast<custom_action_register_t*>(value);
    if (!action || !action->idStr) return 0;
    if (remove) {
      h.customActions.erase(action->idStr);
      return 1;
    }
    if (h.customActions.count(action->idStr)) return 0;
    const int id = h.nextCommandId++;
    h.customActions[action->idStr] = id;
    return id;
  }
  if (key == "hookcommand2") {
    auto it = std::find(h.hooks.begin(), h.hooks.end(), value);
    if (remove && it != h.hooks.end()) h.hooks.erase(it);
    if (!remove) h.hooks.push_back(value);
    return 1;
  }
  if (remove) {
    h.registered.erase(key);
  } else {
    h.registered[key] = reg;
  }
  return 1;
}


const std::unordered_map<std::string, void*>& HostFunctionTable() {
  static const auto* table = new std::unordered_map<std::string, void*>{
#define SIM_ENTRY(ret, name, params) {#name, reinterpret_cast<void*>(static_cast<ret(*) params>(&name))},
      ZOLVA_HOST_FUNCTIONS(SIM_ENTRY)
#undef SIM_ENTRY
  };
  return *table;
}

}  // namespace

Host::Host() {
  record_.caller_version = 0x20E;
  record_.hwnd_main = nullptr;
  record_.Register = &plugin_register;
  record_.GetFunc = &Host::GetFunc;
  masterTrack.master = true;
  masterTrack.guid = NewGuid();
  char pattern[] = "/tmp/zolva-sim-XXXXXX";
  const char* dir = ::mkdtemp(pattern);
  resourcePath = dir ? dir : "/tmp";
  g_current = this;
}

Host::~Host() {
  std::error_code ignored;
  if (resourcePath != "/tmp") std::filesystem::remove_all(resourcePath, ignored);
  if (g_current == this) g_current = nullptr;
}

Host& Current() { return *g_current; }

void* Host::GetFunc(const char* name) {
  Host& h = *g_current;
  if (!name || h.missingFunctions.count(name)) return nullptr;
  const auto& table = HostFunctionTable();
  auto it = table.find(name);
  if (it != table.end()) return it->second;
  // Functions other extensions published with "API_" are found by their plain name.
  auto api = h.registered.find(std::string("API_") + name);
  return api == h.registered.end() ? nullptr : api->second.value;
}

std::string Host::NewGuid() {
  char text[40];
  const uint64_t n = ++guidCounter_;
  std::snprintf(text, sizeof text, "{%08X-%04X-4%03X-8%03X-%012llX}",
                static_cast<unsigned>(n * 2654435761u), static_cast<unsigned>(n & 0xFFFF),
                static_cast<unsigned>((n >> 4) & 0xFFF), static_cast<unsigned>((n >> 8) & 0xFFF),
                static_cast<unsigned long long>(n));
  return text;
}

MediaTrack* Host::AddTrack() {
  tracks.push_back(std::make_unique<MediaTrack>());
  tracks.back()->guid = NewGuid();
  orderValid_ = false;
  return tracks.back().get();
}

MediaItem* Host::AddItem(MediaTrack* track, double position, double length) {
  items.push_back(std::make_unique<MediaItem>());
  MediaItem* item = items.back().get();
  item->guid = NewGuid();
  item->track = track;
  item->position = position;
  item->length = length;
  orderValid_ = false;
  return item;
}

MediaItem_Take* Host::AddTake(MediaItem* item, PCM_source* source) {
  takes.push_back(std::make_unique<MediaItem_Take>());
  MediaItem_Take* take = takes.back().get();
  take->guid = NewGuid();
  take->source = source;
  item->takes.push_back(take);
  return take;
}

PCM_source* Host::AddSource(const std::string& type, PCM_source* parent) {
  sources.push_back(std::make_unique<PCM_source>());
  sources.back()->type = type;
  sources.back()->parent = parent;
  return sources.back().get();
}

const std::vector<MediaItem*>& Host::ItemOrder() {
  if (orderValid_) return order_;
  std::unordered_map<const MediaTrack*, size_t> trackIndex;
  for (size_t i = 0; i < tracks.size(); ++i) trackIndex[tracks[i].get()] = i;
  order_.clear();
  for (auto& item : items) order_.push_back(item.get());
  std::stable_sort(order_.begin(), order_.end(), [&](const MediaItem* a, const MediaItem* b) {
    const size_t ta = trackIndex[a->track], tb = trackIndex[b->track];
    return ta != tb ? ta < tb : a->position < b->position;
  });
  orderValid_ = true;
  return order_;
}

void Host::SortMarkers() {
  std::stable_sort(markers.begin(), markers.end(),
                   [](const Marker& a, const Marker& b) { return a.position < b.position; });
}

bool Host::RunCommand(int command) {
  for (void* hook : std::vector<void*>(hooks)) {
    auto fn = reinterpret_cast<bool (*)(KbdSectionInfo*, int, int, int, int, HWND)>(hook);
    if (fn(nullptr, command, 0, -1, 0, nullptr)) return true;
  }
  return false;
}

bool Host::RegistrationsIntact() const {
  for (const auto& kv : registered) {
    const Registration& r = kv.second;
    if (r.key != r.name) return false;
    if (!r.definition.empty() &&
        std::memcmp(r.value, r.definition.data(), r.definition.size()) != 0) {
      return false;
    }
  }
  return true;
}

int Host::CommandIdOf(const std::string& idStr) const {
  auto it = customActions.find(idStr);
  return it == customActions.end() ? 0 : it->second;
}

}  // namespace sim

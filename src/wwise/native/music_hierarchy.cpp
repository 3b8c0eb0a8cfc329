#include "wwise/native/music_hierarchy.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>
#include <vector>

#include "host/files.h"
#include "wwise/native/names.h"

namespace ZOLVA_Wwise::Native {
namespace {

constexpr size_t kNone = std::numeric_limits<size_t>::max();

enum class Kind { Playlist, Switch, Layers, Folder };

// Playlist item play modes and loop counts.
constexpr int kSequenceContinuous = 0;
constexpr int kRandomStep = 3;
constexpr int kLoopForever = 0;

struct Child {
  bool isSegment;
  size_t index;  // into the model's segments or containers
};

struct Plan {
  Kind kind = Kind::Folder;
  int playMode = kSequenceContinuous;
  size_t parent = kNone;  // the container whose object holds this one's object
  size_t host = kNone;    // the playlist this one is a group of items in
  size_t top = kNone;     // the container whose object this one is or is part of
  bool single = false;    // layers no container holds: a segment in a playlist container of its own
  std::vector<Child> children;
};

// Where a transition or stinger of a container goes.
struct Moves {
  std::vector<std::vector<const WwiseTransition*>> transitions;
  std::vector<std::vector<const WwiseStinger*>> stingers;
};

// How each transition type of the score is written, the same in schema 119
// and 123 (their transition values are the same). Only the values Wwise-saved
// projects carry are written: ExitSourceAt 0 (at once), 2 (next bar) or 3
// (next beat). DestinationJumpPositionPreset is never written: the destination
// starts at its entry cue, Wwise's default. A timing Wwise projects do not use
// is written as the nearest one, with a warning.
struct Timing {
  TransitionType type;
  const char* name;  // as the score spells it
  int exitSourceAt;
  const char* warning;  // what the written transition does instead, when it differs
};
constexpr int kExitAtOnce = 0, kExitNextBar = 2, kExitNextBeat = 3;
constexpr char kAsNextBar[] = "is written as nextBar, the nearest timing Wwise projects use";
constexpr char kNoEqual[] = "has no Wwise equal: the source exits at once and the destination starts at its entry cue";
constexpr Timing kTimings[] = {
    {Immediate, "immediate", kExitAtOnce, nullptr},
    {NextGrid, "nextGrid", kExitNextBar, kAsNextBar},
    {NextBar, "nextBar", kExitNextBar, nullptr},
    {NextBeat, "nextBeat", kExitNextBeat, nullptr},
    {NextCue, "nextCue", kExitNextBar, kAsNextBar},
    {ExitCue, "exitCue", kExitNextBar, kAsNextBar},
    {EntryCue, "entryCue", kExitAtOnce, kNoEqual},
    {CrossFade, "crossFade", kExitAtOnce, nullptr},  // its fades make the cross-fade
};
constexpr Timing kUnknownTiming{Immediate, "unknown", kExitAtOnce, kNoEqual};

const Timing& TimingOf(TransitionType type) {
  for (const Timing& timing : kTimings) {
    if (timing.type == type) return timing;
  }
  return kUnknownTiming;
}

// Wwise's fade curves by name; two of the schema's curves have no equal and
// take the nearest.
struct Curve {
  int value;
  const char* nearest;  // set when approximated
};
Curve WwiseCurve(FadeCurve curve) {
  switch (curve) {
    case SCurve: return {5, nullptr};
    case Log1: return {2, nullptr};   // Log1.41
    case Log2: return {2, "Log1.41"};
    case Log3: return {0, nullptr};
    case Exp1: return {6, nullptr};   // Exp1.41
    case Exp2: return {6, "Exp1.41"};
    case Exp3: return {8, nullptr};
    default: return {4, nullptr};     // Linear
  }
}

class Builder {
 public:
  Builder(const WwiseProjectData& model, const MusicWorkUnit& unit, Identifiers& ids, GameSyncs& syncs,
          NativeExport& report)
      : model_(model), unit_(unit), ids_(ids), syncs_(syncs), report_(report) {}

  MusicHierarchy Build() {
    Index();
    PlanContainers();
    MoveConnections();
    NameObjects();
    const WorkUnitFrame frame = WorkUnit(doc_, "InteractiveMusic", unit_.name, unit_.id, unit_.schemaVersion);
    BuildObjects();
    // The top level: loose segments, then every container no other holds.
    std::vector<Node> top;
    for (size_t s = 0; s < model_.segments.size(); ++s) {
      if (segmentOwner_[s] == kNone) top.push_back(segmentNodes_[s]);
    }
    for (size_t c = 0; c < plans_.size(); ++c) {
      if (plans_[c].parent == kNone && plans_[c].host == kNone) top.push_back(containerNodes_[c]);
    }
    if (!top.empty()) {
      const Node list = doc_.Element(frame.workUnit, "ChildrenList");
      for (const Node node : top) doc_.Attach(list, node);
    }
    MusicHierarchy result;
    result.document = doc_.Write(frame.document);
    for (size_t c = 0; c < plans_.size(); ++c) {
      const Plan& plan = plans_[c];
      const std::string& guid = model_.containers[c].guid;
      const ProjectObject& object = objects_.at(guid);
      if (plan.single) {
        result.playable[guid] = {singles_.at(c), object.id};
      } else if (plan.kind != Kind::Folder && plan.kind != Kind::Layers) {
        result.playable[guid] = {object, object.id};
      }
    }
    return result;
  }

 private:
  const std::string& Clean(const std::string& name) {
    auto [it, added] = cleaned_.try_emplace(name);
    if (added) {
      bool changed = false;
      it->second = CleanText(name, changed);
      if (changed) report_.Warn("Characters Wwise cannot read were left out of the name \"" + it->second + "\"");
    }
    return it->second;
  }

  const std::string& GuidOf(const Child& child) const {
    return child.isSegment ? model_.segments[child.index].guid : model_.containers[child.index].guid;
  }

  // Each model object's role: the cluster or group it was made from (a
  // cluster or group the score lists twice is told apart by its occurrence).
  void Index() {
    for (size_t s = 0; s < model_.segments.size(); ++s) {
      segmentIndex_.emplace(model_.segments[s].guid, s);
      roles_.emplace(model_.segments[s].guid, Occurrence("cluster:" + model_.segments[s].clusterGuid));
    }
    for (size_t c = 0; c < model_.containers.size(); ++c) {
      containerIndex_.emplace(model_.containers[c].guid, c);
      roles_.emplace(model_.containers[c].guid, Occurrence("group:" + model_.containers[c].groupGuid));
    }
    segmentOwner_.assign(model_.segments.size(), kNone);
  }

  // The role itself the first time, then "<role>@2", "<role>@3", ...
  std::string Occurrence(const std::string& role) {
    const int n = ++occurrences_[role];
    return n == 1 ? role : role + "@" + std::to_string(n);
  }

  const std::string& Role(const std::string& modelGuid) const { return roles_.at(modelGuid); }

  // Kinds, owners and hosts, in model order: a group comes after every group
  // it holds, so a child's kind is known when its parent claims it.
  void PlanContainers() {
    plans_.resize(model_.containers.size());
    for (size_t c = 0; c < plans_.size(); ++c) {
      const WwiseMusicContainer& container = model_.containers[c];
      Plan& plan = plans_[c];
      switch (container.type) {
        case PlaylistContainer: plan.kind = Kind::Playlist; break;
        case RandomSequence:
          plan.kind = Kind::Playlist;
          plan.playMode = kRandomStep;
          break;
        case SwitchContainer: plan.kind = Kind::Switch; break;
        case BlendContainer: plan.kind = LayersPossible(container) ? Kind::Layers : Kind::Playlist; break;
        default:
          plan.kind = Kind::Folder;
          report_.Warn("Group \"" + Clean(container.name) + "\" has no music type: written as a folder");
      }
      if (container.type == BlendContainer && plan.kind == Kind::Playlist) {
        report_.Warn("Vertical group \"" + Clean(container.name) +
                     "\" holds other groups: written as a sequence playlist, its layers play one after another");
      }
      for (const std::string& guid : container.children) Claim(c, guid);
    }
    // Outermost first, so that a host's top is known before its guests'.
    for (size_t c = plans_.size(); c-- > 0;) {
      plans_[c].top = plans_[c].host == kNone ? c : plans_[plans_[c].host].top;
      plans_[c].single = plans_[c].kind == Kind::Layers && plans_[c].parent == kNone;
    }
  }

  bool LayersPossible(const WwiseMusicContainer& container) const {
    if (container.children.empty()) return false;
    std::unordered_set<size_t> seen;
    for (const std::string& guid : container.children) {
      const auto it = segmentIndex_.find(guid);
      if (it == segmentIndex_.end() || segmentOwner_[it->second] != kNone || !seen.insert(it->second).second) {
        return false;
      }
    }
    return true;
  }

  void Claim(size_t c, const std::string& guid) {
    Plan& plan = plans_[c];
    const std::string& name = model_.containers[c].name;
    if (const auto it = segmentIndex_.find(guid); it != segmentIndex_.end()) {
      const size_t s = it->second;
      if (segmentOwner_[s] == kNone) {
        segmentOwner_[s] = c;
      } else if (segmentOwner_[s] != c) {
        report_.Warn("Cluster \"" + Clean(model_.segments[s].name) + "\" is already in group \"" +
                     Clean(model_.containers[segmentOwner_[s]].name) + "\": left out of \"" + Clean(name) + "\"");
        return;
      }
      plan.children.push_back({true, s});  // a playlist may play a segment twice
      return;
    }
    const auto it = containerIndex_.find(guid);
    if (it == containerIndex_.end()) return;
    const size_t k = it->second;
    Plan& child = plans_[k];
    if (child.parent != kNone || child.host != kNone) {
      report_.Warn("Group \"" + Clean(model_.containers[k].name) + "\" is already in another group: left out of \"" +
                   Clean(name) + "\"");
      return;
    }
    const bool playlistGuest = plan.kind == Kind::Playlist && child.kind == Kind::Playlist;
    const bool fits = plan.kind == Kind::Folder || (plan.kind == Kind::Switch && child.kind != Kind::Folder) ||
                      (plan.kind == Kind::Playlist && child.kind == Kind::Layers) || playlistGuest;
    if (!fits) {
      report_.Warn("Group \"" + Clean(model_.containers[k].name) + "\" cannot be placed inside \"" + Clean(name) +
                   "\" in Wwise" + (plan.kind == Kind::Playlist ? " (a playlist holds segments only)" : "") +
                   ": written at the top level");
      return;
    }
    (playlistGuest ? child.host : child.parent) = c;
    plan.children.push_back({false, k});
  }

  // Transitions and stingers go to the object that plays their container:
  // a playlist group's to its playlist, a layered segment's transitions to
  // the container above it. Folders play nothing.
  void MoveConnections() {
    moves_.transitions.resize(plans_.size());
    moves_.stingers.resize(plans_.size());
    for (size_t c = 0; c < plans_.size(); ++c) {
      const WwiseMusicContainer& container = model_.containers[c];
      const Plan& plan = plans_[c];
      size_t transitionHolder = plan.top, stingerHolder = plan.top;
      if (plan.kind == Kind::Layers) {
        transitionHolder = plan.parent == kNone ? kNone : plans_[plan.parent].top;
        if (transitionHolder != kNone && plans_[transitionHolder].kind == Kind::Folder) transitionHolder = kNone;
      }
      if (plan.kind == Kind::Folder) transitionHolder = stingerHolder = kNone;
      if (!container.transitions.empty() && transitionHolder == kNone) {
        report_.Warn(std::to_string(container.transitions.size()) + " transition(s) of group \"" +
                     Clean(container.name) + "\" have no music container to live in: left out");
      }
      if (!container.stingers.empty() && stingerHolder == kNone) {
        report_.Warn(std::to_string(container.stingers.size()) + " stinger(s) of group \"" + Clean(container.name) +
                     "\" have no music object to live in: left out");
      }
      for (const WwiseTransition& t : container.transitions) {
        if (transitionHolder != kNone) moves_.transitions[transitionHolder].push_back(&t);
      }
      for (const WwiseStinger& s : container.stingers) {
        if (stingerHolder != kNone) moves_.stingers[stingerHolder].push_back(&s);
      }
    }
  }

  // What a reference to each model GUID names once the objects are made.
  void NameObjects() {
    for (size_t s = 0; s < model_.segments.size(); ++s) {
      const WwiseMusicSegment& segment = model_.segments[s];
      const size_t owner = segmentOwner_[s];
      objects_[segment.guid] = owner != kNone && plans_[owner].kind == Kind::Layers
                                   ? Reference(model_.containers[owner])
                                   : ProjectObject{Clean(segment.name), ids_.Guid(Role(segment.guid)), unit_.id};
    }
    for (size_t c = 0; c < plans_.size(); ++c) {
      objects_[model_.containers[c].guid] = Reference(model_.containers[plans_[c].top]);
    }
  }

  ProjectObject Reference(const WwiseMusicContainer& container) {
    return {Clean(container.name), ids_.Guid(Role(container.guid)), unit_.id};
  }

  // Segments first (loose or held), then containers in model order, so that
  // each object's children exist when it is made.
  void BuildObjects() {
    segmentNodes_.assign(model_.segments.size(), kNone);
    for (size_t s = 0; s < model_.segments.size(); ++s) {
      const size_t owner = segmentOwner_[s];
      if (owner != kNone && plans_[owner].kind == Kind::Layers) continue;
      const WwiseMusicSegment& segment = model_.segments[s];
      segmentNodes_[s] = Segment(Clean(segment.name), Role(segment.guid), segment.startTime, {&segment}, {});
    }
    containerNodes_.assign(plans_.size(), kNone);
    playlistGroups_.assign(plans_.size(), kNone);
    for (size_t c = 0; c < plans_.size(); ++c) {
      const WwiseMusicContainer& container = model_.containers[c];
      const Plan& plan = plans_[c];
      if (plan.kind == Kind::Layers) {
        std::vector<const WwiseMusicSegment*> layers;
        double start = std::numeric_limits<double>::infinity();
        for (const Child& child : plan.children) {
          layers.push_back(&model_.segments[child.index]);
          start = std::min(start, layers.back()->startTime);
        }
        containerNodes_[c] = Segment(Clean(container.name), Role(container.guid), start, layers, moves_.stingers[c]);
        if (plan.single) containerNodes_[c] = SinglePlaylist(c, containerNodes_[c]);
        continue;
      }
      if (plan.kind == Kind::Playlist) playlistGroups_[c] = PlaylistGroup(c);
      if (plan.host != kNone) continue;  // a group of its host's playlist
      containerNodes_[c] = Container(c);
    }
  }

  Node Segment(const std::string& name, const std::string& role, double start,
               const std::vector<const WwiseMusicSegment*>& layers, const std::vector<const WwiseStinger*>& stingers) {
    const Node node = Object(doc_, "MusicSegment", name, ids_, role);
    double end = start;
    for (const WwiseMusicSegment* layer : layers) end = std::max(end, layer->startTime + std::max(0.0, layer->duration));
    if (layers.size() == 1 && layers[0]->duration < 0) {
      report_.Warn("Cluster \"" + name + "\" ends before it starts: written with no length");
    }
    const double length = end - start;
    PropertyList(doc_, node, {Real64("EndPosition", length)});
    BusReferences(doc_.Element(node, "ReferenceList"), true);
    bool anyTrack = false;
    for (const WwiseMusicSegment* layer : layers) anyTrack = anyTrack || !layer->tracks.empty();
    if (anyTrack) {
      const Node tracks = doc_.Element(node, "ChildrenList");
      for (const WwiseMusicSegment* layer : layers) {
        for (size_t t = 0; t < layer->tracks.size(); ++t) {
          const std::string role = Role(layer->guid) + "/track" + (t > 0 ? "@" + std::to_string(t + 1) : "");
          doc_.Attach(tracks, Track(layer->tracks[t], role, layer->startTime - start, std::max(0.0, layer->duration)));
        }
      }
    }
    // Cues: the first layer's entry and exit, made relative to the segment.
    const WwiseMusicSegment& first = *layers.front();
    double entry = 0.0, exit = length;
    for (const WwiseCue& cue : first.cues) {
      if (cue.name == "Entry") entry = CueTime(name, "Entry", cue.time - start, length);
      if (cue.name == "Exit") exit = CueTime(name, "Exit", cue.time - start, length);
    }
    const Node lists = doc_.Element(node, "ObjectLists");
    const Node cues = doc_.Element(lists, "ObjectList");
    doc_.Attribute(cues, "Name", "Cues");
    const Node entryCue = Object(doc_, "MusicCue", "Entry Cue", ids_.Guid(role + "/entry cue"));
    doc_.Attach(LocalEntry(doc_, cues), entryCue);
    if (entry != 0.0) PropertyList(doc_, entryCue, {Real64("TimeMs", entry)});
    const Node exitCue = Object(doc_, "MusicCue", "Exit Cue", ids_.Guid(role + "/exit cue"));
    doc_.Attach(LocalEntry(doc_, cues), exitCue);
    std::vector<Property> exitProperties{Int16("CueType", 1)};
    if (exit != 0.0) exitProperties.push_back(Real64("TimeMs", exit));
    PropertyList(doc_, exitCue, std::move(exitProperties));
    Stingers(lists, role, stingers);
    return node;
  }

  double CueTime(const std::string& segment, const char* cue, double time, double length) {
    const double clamped = std::clamp(time, 0.0, length);
    if (clamped != time) {
      report_.Warn(std::string(cue) + " cue of \"" + segment + "\" lies outside the segment: moved to " +
                   FormatReal(clamped) + " ms");
    }
    return clamped;
  }

  // A track whose one clip covers the cluster's audio from its start.
  Node Track(const WwiseMusicTrack& track, const std::string& role, double playAt, double length) {
    const Node node = Object(doc_, "MusicTrack", Clean(track.name), ids_, role);
    const Node references = doc_.Element(node, "ReferenceList");
    BusReferences(references, false);
    TransitionRoot(references, role, nullptr);
    const std::string file = AudioFile(track.audioFile);
    const std::string sourceName = file.substr(0, file.rfind('.'));
    const std::string& sourceId = ids_.Guid(role + "/source");
    const Node source = Object(doc_, "AudioFileSource", sourceName, sourceId);
    doc_.Attach(doc_.Element(node, "ChildrenList"), source);
    doc_.Text(doc_.Element(source, "Language"), "SFX");
    doc_.Text(doc_.Element(source, "AudioFile"), file);
    const Node media = doc_.Element(doc_.Element(source, "MediaIDList"), "MediaID");
    doc_.Attribute(media, "ID", std::to_string(ids_.ShortId(role + "/source")));
    const Node sequences = doc_.Element(doc_.Element(node, "ObjectLists"), "ObjectList");
    doc_.Attribute(sequences, "Name", "Sequences");
    const Node sequence = Object(doc_, "MusicTrackSequence", "", ids_.Guid(role + "/sequence"));
    doc_.Attach(LocalEntry(doc_, sequences), sequence);
    const Node clips = doc_.Element(doc_.Element(sequence, "ObjectLists"), "ObjectList");
    doc_.Attribute(clips, "Name", "Clips");
    const Node clip = Object(doc_, "MusicClip", sourceName, ids_.Guid(role + "/clip"));
    doc_.Attach(LocalEntry(doc_, clips), clip);
    std::vector<Property> properties{Real64("EndTrimOffset", length)};
    if (playAt != 0.0) properties.push_back(Real64("PlayAt", playAt));
    PropertyList(doc_, clip, std::move(properties));
    const Node sourceRef = doc_.Element(clip, "AudioSourceRef");
    doc_.Attribute(sourceRef, "Name", sourceName).Attribute(sourceRef, "ID", sourceId);
    return node;
  }

  // The name of an audio file in Originals/SFX: its base name, made unique
  // among the export's files; each source is copied once.
  std::string AudioFile(const std::string& path) {
    if (const auto it = audioNames_.find(path); it != audioNames_.end()) return it->second;
    const size_t slash = ZOLVA::Files::LastSeparator(path);
    bool changed = false;
    std::string base = CleanText(slash == std::string::npos ? path : path.substr(slash + 1), changed);
    if (base.empty()) base = "audio.wav";
    const size_t dot = base.rfind('.');
    const std::string stem = base.substr(0, dot), extension = dot == std::string::npos ? "" : base.substr(dot);
    std::string name = base;
    for (int n = 2; !usedAudioNames_.insert(name).second; ++n) name = stem + "_" + std::to_string(n) + extension;
    if (name != base || changed) report_.Warn("Audio file \"" + path + "\" is written as \"" + name + "\"");
    std::string lower = extension;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char ch) { return ch >= 'A' && ch <= 'Z' ? ch + 32 : ch; });
    if (lower != ".wav") report_.Warn("Audio file \"" + name + "\" is not a WAV file: Wwise imports WAV files");
    report_.audio.push_back({path, "Originals/SFX/" + name});
    return audioNames_[path] = name;
  }

  // The item group a playlist-kind container plays: its segments as leaves,
  // its playlist guests as groups of their own.
  Node PlaylistGroup(size_t c) {
    const Plan& plan = plans_[c];
    const std::string& role = Role(model_.containers[c].guid);
    const Node group = Object(doc_, "MusicPlaylistItem", "", ids_, role + "/playlist");
    std::vector<Property> properties;
    if (plan.playMode != kSequenceContinuous) {
      properties.push_back(Int16("PlayMode", plan.playMode));
      // A random group on its own keeps choosing; inside a sequence it plays once.
      if (plan.host == kNone && model_.containers[c].groupType == Random) properties.push_back(Int16("LoopCount", kLoopForever));
    }
    PropertyList(doc_, group, std::move(properties));
    if (plan.children.empty()) return group;
    const Node items = doc_.Element(group, "ChildrenList");
    for (const Child& child : plan.children) {
      if (!child.isSegment && plans_[child.index].kind == Kind::Playlist) {
        doc_.Attach(items, playlistGroups_[child.index]);
        continue;
      }
      const std::string& guid = GuidOf(child);
      PlaylistLeaf(items, Occurrence(role + "/item/" + Role(guid)), objects_.at(guid));
    }
    return group;
  }

  void PlaylistLeaf(Node items, const std::string& role, const ProjectObject& segment) {
    const Node leaf = Object(doc_, "MusicPlaylistItem", "", ids_, role);
    doc_.Attach(items, leaf);
    PropertyList(doc_, leaf, {Int16("PlaylistItemType", 1)});
    Refer(doc_.Element(leaf, "ReferenceList"), "Segment", segment);
  }

  // Layers no container holds: a playlist container of the group's name that
  // plays its segment once, as Wwise users play a single segment. Events in
  // Wwise-saved projects target containers, sounds, states, switches and
  // triggers, never a segment, so the group's Play event targets this
  // container. The segment keeps its identities; the container and its parts
  // take the group's role with "/single", which no other object uses.
  Node SinglePlaylist(size_t c, Node segment) {
    const WwiseMusicContainer& container = model_.containers[c];
    const std::string role = Role(container.guid) + "/single";
    const Node node = Object(doc_, "MusicPlaylistContainer", Clean(container.name), ids_, role);
    const Node references = doc_.Element(node, "ReferenceList");
    BusReferences(references, true);
    const Node group = Object(doc_, "MusicPlaylistItem", "", ids_, role + "/playlist");
    doc_.Attach(CustomReference(doc_, references, "PlaylistRoot"), group);
    PlaylistLeaf(doc_.Element(group, "ChildrenList"), role + "/item", objects_.at(container.guid));
    const std::vector<const WwiseTransition*> none;
    TransitionRoot(references, role, &none);
    doc_.Attach(doc_.Element(node, "ChildrenList"), segment);
    singles_[c] = {Clean(container.name), ids_.Guid(role), unit_.id};
    return node;
  }

  Node Container(size_t c) {
    const WwiseMusicContainer& container = model_.containers[c];
    const Plan& plan = plans_[c];
    static constexpr const char* kElements[] = {"MusicPlaylistContainer", "MusicSwitchContainer", "", "Folder"};
    const std::string& role = Role(container.guid);
    const Node node = Object(doc_, kElements[static_cast<int>(plan.kind)], Clean(container.name), ids_, role);
    if (plan.kind != Kind::Folder) {
      const Node references = doc_.Element(node, "ReferenceList");
      BusReferences(references, true);
      if (plan.kind == Kind::Playlist) doc_.Attach(CustomReference(doc_, references, "PlaylistRoot"), playlistGroups_[c]);
      TransitionRoot(references, role, &moves_.transitions[c]);
    }
    // Children: this container's own, and those of the playlist groups it hosts.
    std::vector<Node> children;
    std::vector<size_t> pending{c};
    while (!pending.empty()) {
      const size_t at = pending.back();
      pending.pop_back();
      const auto& list = plans_[at].children;
      for (auto it = list.rbegin(); it != list.rend(); ++it) {
        if (it->isSegment) {
          if (segmentOwner_[it->index] == at) children.push_back(segmentNodes_[it->index]);
        } else if (plans_[it->index].host == at) {
          pending.push_back(it->index);
        } else {
          children.push_back(containerNodes_[it->index]);
        }
      }
    }
    // Each object once, in the order the groups list them.
    std::reverse(children.begin(), children.end());
    std::unordered_set<Node> placed;
    Node list = kNone;
    for (const Node child : children) {
      if (!placed.insert(child).second) continue;
      if (list == kNone) list = doc_.Element(node, "ChildrenList");
      doc_.Attach(list, child);
    }
    if (plan.kind == Kind::Folder) return node;
    const Node lists = doc_.Element("ObjectLists");
    if (plan.kind == Kind::Switch) SwitchLists(lists, c);
    Stingers(lists, role, moves_.stingers[c]);
    if (doc_.HasChildren(lists)) doc_.Attach(node, lists);
    return node;
  }

  // The switch group it follows, and one entry per child: the child's name
  // as the switch value; the default switch's child also as the wildcard.
  void SwitchLists(Node lists, size_t c) {
    const WwiseMusicContainer& container = model_.containers[c];
    std::string groupName = container.switchGroup;
    if (groupName.empty()) {
      groupName = Clean(container.name) + "_Switch";
      report_.Warn("Switch group \"" + Clean(container.name) + "\" names no Switch group: it follows \"" +
                   WwiseIdentifier(groupName) + "\"");
    }
    const GameSyncGroup& group = syncs_.Group(groupName);
    const ProjectObject groupRef{group.name, group.id, group.workUnitId};
    const Node arguments = doc_.Element(lists, "ObjectList");
    doc_.Attribute(arguments, "Name", "Arguments");
    Refer(arguments, "", groupRef);
    const Node entries = doc_.Element(lists, "ObjectList");
    doc_.Attribute(entries, "Name", "Entries");
    const std::string& role = Role(container.guid);
    auto entry = [&](const ProjectObject& child, const ProjectObject& path, const std::string& entryRole) {
      const Node node = Object(doc_, "MultiSwitchEntry", "", ids_.Guid(entryRole));
      doc_.Attach(LocalEntry(doc_, entries), node);
      Refer(doc_.Element(node, "ReferenceList"), "AudioNode", child);
      const Node pathList = doc_.Element(doc_.Element(node, "ObjectLists"), "ObjectList");
      doc_.Attribute(pathList, "Name", "EntryPath");
      Refer(pathList, "", path);
    };
    bool defaultFound = container.defaultSwitch.empty();
    std::unordered_set<std::string> done;
    for (const Child& child : plans_[c].children) {
      const ProjectObject& object = objects_.at(GuidOf(child));
      if (!done.insert(object.id).second) continue;
      const std::string& valueName = child.isSegment ? model_.segments[child.index].name : model_.containers[child.index].name;
      const std::optional<ProjectObject> value = syncs_.Value(group, Clean(valueName));
      if (!value) {
        report_.Warn("Switch group \"" + group.name + "\" has no value \"" + Clean(valueName) + "\": \"" +
                     object.name + "\" gets no entry");
        continue;
      }
      const std::string entryRole = role + "/entry/" + Role(GuidOf(child));
      entry(object, *value, entryRole);
      if (!defaultFound && (container.defaultSwitch == valueName || WwiseIdentifier(container.defaultSwitch) == value->name)) {
        entry(object, groupRef, entryRole + "/default");  // the group itself: any other value
        defaultFound = true;
      }
    }
    if (!defaultFound) {
      report_.Warn("Default switch \"" + Clean(container.defaultSwitch) + "\" of \"" + Clean(container.name) +
                   "\" names none of its children: no default entry");
    }
  }

  void Stingers(Node lists, const std::string& role, const std::vector<const WwiseStinger*>& stingers) {
    Node list = kNone;
    for (const WwiseStinger* stinger : stingers) {
      const auto segment = objects_.find(stinger->segmentId);
      if (stinger->segmentId.empty() || segment == objects_.end()) {
        report_.Warn("Stinger \"" + Clean(stinger->triggerEvent) + "\" plays no cluster: left out");
        continue;
      }
      if (list == kNone) {
        list = doc_.Element(lists, "ObjectList");
        doc_.Attribute(list, "Name", "Stingers");
      }
      const std::string stingerRole = role + "/stinger/" + stinger->triggerEvent + "/" + Role(stinger->segmentId);
      const Node node = Object(doc_, "MusicStinger", "", ids_.Guid(Occurrence(stingerRole)));
      doc_.Attach(LocalEntry(doc_, list), node);
      const Node references = doc_.Element(node, "ReferenceList");
      Refer(references, "Segment", segment->second);
      Refer(references, "Trigger", syncs_.Trigger(Clean(stinger->triggerEvent)));
    }
  }

  void Refer(Node parent, std::string_view name, const ProjectObject& target) {
    ObjectReference(doc_, parent, name, target, unit_.schemaVersion);
  }

  // References to the project's conversion settings (when it has them and
  // the object takes them) and to its Master Audio Bus, in Wwise's order.
  void BusReferences(Node references, bool conversion) {
    if (conversion && !unit_.conversion.id.empty()) Refer(references, "Conversion", unit_.conversion);
    Refer(references, "OutputBus", unit_.masterBus);
  }

  // The transition root: an empty folder on a track; on a container, a
  // folder holding the default any-to-any transition, then the group's own.
  void TransitionRoot(Node references, const std::string& role, const std::vector<const WwiseTransition*>* transitions) {
    const Node root = Object(doc_, "MusicTransition", "Root", ids_.Guid(role + "/transitions"));
    doc_.Attach(CustomReference(doc_, references, "TransitionRoot"), root);
    PropertyList(doc_, root, {Flag("IsFolder")});
    if (transitions) {
      const Node children = doc_.Element(root, "ChildrenList");
      const Node any = Object(doc_, "MusicTransition", "Transition", ids_.Guid(role + "/transition/any"));
      doc_.Attach(children, any);
      PropertyList(doc_, any, {Flag("PlayDestinationPreEntry"), Flag("PlaySourcePostExit")});
      doc_.Element(any, "TransitionInfo");
      for (const WwiseTransition* transition : *transitions) Transition(children, role, *transition);
    }
    doc_.Element(root, "TransitionInfo");
  }

  // The role of a transition's end: its cluster or group, or "-" for none.
  std::string EndRole(const std::string& modelGuid) const {
    const auto it = roles_.find(modelGuid);
    return it == roles_.end() ? "-" : it->second;
  }

  void Transition(Node children, const std::string& holderRole, const WwiseTransition& transition) {
    const std::string role =
        Occurrence(holderRole + "/transition/" + EndRole(transition.sourceId) + ">" + EndRole(transition.destinationId));
    const Node node = Object(doc_, "MusicTransition", "Transition", ids_.Guid(role));
    doc_.Attach(children, node);
    const auto source = objects_.find(transition.sourceId), destination = objects_.find(transition.destinationId);
    const bool hasSource = source != objects_.end(), hasDestination = destination != objects_.end();
    const TransitionType type = transition.transitionType;
    const Timing& timing = TimingOf(type);
    if (timing.warning && warnedTimings_.insert(&timing).second) {
      report_.Warn(std::string("Transition type ") + timing.name + " " + timing.warning);
    }
    const double fade = std::min(transition.fadeOutTime, 60.0);
    if (fade != transition.fadeOutTime) report_.Warn("Fade of " + FormatReal(transition.fadeOutTime) + " s shortened to Wwise's longest, 60 s");
    if (type == CrossFade && !(fade > 0)) report_.Warn("Cross-fade transition without a fade time: written as a cut");
    std::vector<Property> properties{Int16("ExitSourceAt", timing.exitSourceAt)};
    if (hasSource) properties.push_back(Int16("SourceContextType", 2));
    if (hasDestination) properties.push_back(Int16("DestinationContextType", 2));
    if (fade > 0) {
      properties.push_back(Flag("EnableSourceFadeOut"));
      properties.push_back(Flag("EnableDestinationFadeIn"));
    }
    PropertyList(doc_, node, std::move(properties));
    if (hasSource || hasDestination) {
      const Node references = doc_.Element(node, "ReferenceList");
      if (hasDestination) Refer(references, "DestinationContextObject", destination->second);
      if (hasSource) Refer(references, "SourceContextObject", source->second);
    }
    const Node info = doc_.Element(node, "TransitionInfo");
    if (!(fade > 0)) return;
    const Curve out = WwiseCurve(transition.fadeOutCurve), in = WwiseCurve(transition.fadeInCurve);
    if (out.nearest || in.nearest) {
      report_.Warn(std::string("A fade curve with no Wwise equal is written as ") + (out.nearest ? out.nearest : in.nearest));
    }
    const Node fadeOut = Object(doc_, "MusicFade", "Source Fade-out", ids_.Guid(role + "/fade-out"));
    doc_.Attach(doc_.Element(info, "SourceFadeOut"), fadeOut);
    PropertyList(doc_, fadeOut, {Int16("FadeCurve", out.value), Real64("FadeTime", fade), Int16("FadeType", 1)});
    const Node fadeIn = Object(doc_, "MusicFade", "Destination Fade-in", ids_.Guid(role + "/fade-in"));
    doc_.Attach(doc_.Element(info, "DestinationFadeIn"), fadeIn);
    PropertyList(doc_, fadeIn, {Int16("FadeCurve", in.value), Real64("FadeTime", std::min(transition.fadeInTime, 60.0))});
  }

  const WwiseProjectData& model_;
  const MusicWorkUnit& unit_;
  Identifiers& ids_;
  GameSyncs& syncs_;
  NativeExport& report_;
  Document doc_;
  std::unordered_map<std::string, size_t> segmentIndex_, containerIndex_;
  std::unordered_map<std::string, std::string> cleaned_, audioNames_;
  std::unordered_set<std::string> usedAudioNames_;
  std::unordered_map<std::string, ProjectObject> objects_;
  std::unordered_map<size_t, ProjectObject> singles_;  // the playlist containers around single layers
  std::unordered_map<std::string, std::string> roles_;  // by model GUID
  std::unordered_map<std::string, int> occurrences_;
  std::unordered_set<const Timing*> warnedTimings_;  // each approximation is told once
  std::vector<size_t> segmentOwner_;
  std::vector<Plan> plans_;
  Moves moves_;
  std::vector<Node> segmentNodes_, containerNodes_, playlistGroups_;
};

}  // namespace

MusicHierarchy BuildMusicHierarchy(const WwiseProjectData& model, const MusicWorkUnit& unit, Identifiers& ids,
                                   GameSyncs& syncs, NativeExport& report) {
  return Builder(model, unit, ids, syncs, report).Build();
}

}  // namespace ZOLVA_Wwise::Native

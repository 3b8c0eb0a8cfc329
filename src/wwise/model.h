// The records of the Wwise export: the schema as the interface script sends
// it, the interactive-music model made from it, and the export options.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZOLVA_Wwise {

enum GroupType : int32_t { Horizontal = 0, Vertical = 1, OneShot = 2, Random = 3, Switch = 4, OtherGroup = 5 };
enum ConnectionType : int32_t { Transition = 0, Stinger = 1, Blend = 2 };
enum TransitionType : int32_t {
  Immediate = 0, NextGrid = 1, NextBar = 2, NextBeat = 3, NextCue = 4, ExitCue = 5, EntryCue = 6, CrossFade = 7
};
enum FadeCurve : int32_t { Linear = 0, SCurve = 1, Log1 = 2, Log2 = 3, Log3 = 4, Exp1 = 5, Exp2 = 6, Exp3 = 7 };

// ---- the schema, as read from the script's JSON (times in seconds) ----

struct ClusterInfo {
  std::string guid;
  std::string name;
  std::string parentGuid;
  double startTime = 0.0;
  double endTime = 0.0;
  double entryPoint = -1.0;  // below 0: not set
  double exitPoint = -1.0;   // below 0: not set
  bool isLoop = false;
  int32_t color = 0;
  std::string audioFile;
};

struct GroupInfo {
  std::string guid;
  std::string name;
  std::string parentGuid;
  GroupType type = OtherGroup;
  std::vector<std::string> childGuids;
  int32_t color = 0;
  std::optional<std::string> switchGroup;
  std::optional<std::string> defaultSwitch;
};

struct ConnectionInfo {
  std::string guid;
  std::string sourceGuid;
  std::string targetGuid;
  ConnectionType type = Transition;
  TransitionType transitionType = NextGrid;
  double fadeTime = 0.0;
  FadeCurve fadeCurve = Linear;
  std::optional<std::string> triggerEvent;
};

struct V2Schema {
  std::vector<ClusterInfo> clusters;
  std::vector<GroupInfo> groups;
  std::vector<ConnectionInfo> connections;
  std::unordered_map<std::string, size_t> clusterIndex;  // guid -> position in clusters
  std::unordered_map<std::string, size_t> groupIndex;    // guid -> position in groups
  std::string projectName;
  std::string exportPath;
};

// ---- the Wwise model (times in milliseconds, but for transition fades) ----

enum ContainerType : int32_t {
  PlaylistContainer = 0, SegmentObject = 1, SwitchContainer = 2, RandomSequence = 3, BlendContainer = 4,
  ActorMixer = 5
};

struct WwiseCue {
  std::string name;
  double time = 0.0;
};

struct WwiseMusicTrack {
  std::string guid;
  std::string name;
  std::string audioFile;
};

struct WwiseMusicSegment {
  std::string guid;
  std::string shortId;
  std::string clusterGuid;  // the cluster it was made from
  std::string name;
  double duration = 0.0;
  double startTime = 0.0;  // the cluster's start in the project, ms
  double tempo = 120.0;
  int32_t timeSignatureNumerator = 4;
  int32_t timeSignatureDenominator = 4;
  std::vector<WwiseCue> cues;
  std::vector<WwiseMusicTrack> tracks;
};

struct WwiseTransition {
  std::string sourceId;
  std::string destinationId;
  TransitionType transitionType = NextGrid;
  double fadeOutTime = 0.0;  // the schema's value as it stands
  double fadeInTime = 0.0;
  FadeCurve fadeOutCurve = Linear;
  FadeCurve fadeInCurve = Linear;
  std::optional<std::string> sourceCue;
  std::optional<std::string> destinationCue;
};

struct WwiseStinger {
  std::string segmentId;
  std::string triggerEvent;
  double preLookAhead = 0.0;
};

struct WwiseMusicContainer {
  std::string guid;
  std::string shortId;
  std::string groupGuid;  // the group it was made from
  std::string name;
  ContainerType type = ActorMixer;
  GroupType groupType = OtherGroup;  // the group it was made from
  std::vector<std::string> children;  // segment and container GUIDs, in the group's order
  std::string switchGroup;
  std::string defaultSwitch;
  std::map<std::string, std::string> switchAssignments;  // switch value -> child GUID
  std::vector<WwiseTransition> transitions;
  std::vector<WwiseStinger> stingers;
  bool isLooping = false;
  int32_t loopCount = 1;
  bool avoidRepeat = false;
};

struct WwiseEvent {
  std::string guid;
  std::string shortId;
  std::string name;
  std::string target;  // the container it plays
  int32_t actionType = 0;  // 0: play
};

struct WwiseSoundBank {
  std::string guid;
  std::string name;
  std::vector<std::string> events;
  std::vector<std::string> mediaFiles;
};

struct ExportOptions {
  std::string outputPath;
  std::string projectName = "ZOLVA_Export";
  bool copyAudioFiles = true;
  std::string audioSubfolder = "Audio";
  bool createEvents = true;
  bool createSoundBank = true;
  bool flattenHierarchy = false;
  TransitionType defaultTransition = NextGrid;
  double defaultFadeTime = 500.0;
  FadeCurve defaultFadeCurve = Linear;
  std::string eventPrefix = "Play_";
  std::string segmentSuffix;
  // "fixed" (the default) or "native": Work Units in Wwise's own format,
  // for the project at `wwiseProject`. Any other value is refused.
  std::string format = "fixed";
  std::string wwiseProject;
};

struct WwiseProjectData {
  std::string projectName;
  std::vector<WwiseMusicSegment> segments;
  std::vector<WwiseMusicContainer> containers;
  std::vector<WwiseEvent> events;
  std::vector<WwiseSoundBank> soundBanks;
  std::string audioDirectory;
  std::unordered_map<std::string, std::string> clusterToSegment;   // cluster guid -> segment GUID
  std::unordered_map<std::string, std::string> groupToContainer;   // group guid -> container GUID
};

}  // namespace ZOLVA_Wwise

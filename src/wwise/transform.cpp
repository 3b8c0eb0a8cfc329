// Turning a parsed schema into the Wwise interactive-music model: a segment
// per cluster, a container per group (children first), transitions and
// stingers on the container above their source cluster, play events for the
// top-level containers and one sound bank.
#include "wwise/transform.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "wwise/schema.h"
#include "wwise/transform_order.h"

namespace ZOLVA_Wwise::Schema {
namespace {

ContainerType ContainerTypeOf(GroupType type) {
  switch (type) {
    case Horizontal: return PlaylistContainer;
    case Vertical: return BlendContainer;
    case OneShot:
    case Random: return RandomSequence;
    case Switch: return SwitchContainer;
    default: return ActorMixer;
  }
}

const char* ContainerTypeName(ContainerType type) {
  switch (type) {
    case PlaylistContainer: return "MusicPlaylistContainer";
    case BlendContainer: return "BlendContainer";
    case RandomSequence: return "RandomSequenceContainer";
    case SwitchContainer: return "MusicSwitchContainer";
    default: return "ActorMixer";
  }
}

template <typename Map>
const typename Map::mapped_type* Find(const Map& map, const std::string& key) {
  const auto it = map.find(key);
  return it == map.end() ? nullptr : &it->second;
}

}  // namespace

// The pass rule, run as one sweep of events instead of pass after pass. A
// group is taken in pass k exactly when every guid it waits on was first taken
// in an earlier pass, or in pass k by a group listed before it. So each guid
// remembers the pass it was first taken in and the lowest list position that
// took it in that pass, and each group counts the references it still waits
// for and, within the current pass, the references whose guid was taken only
// by groups listed after it ("late" ones). A group with nothing to wait for
// and nothing late joins the current pass; one that is only late joins the
// next. Within a pass the groups are handled in any order: a group can only
// ever depend on groups listed before it in the same pass, so the set a pass
// takes does not depend on that order, and sorting by (pass, position) at the
// end gives the rule's order. Each reference is looked at a bounded number of
// times. Every pass that could take a group takes at least one, so the rule's
// limit of one pass per group never cuts a pass short and needs no check.
std::vector<size_t> OrderGroupsChildrenFirst(const std::vector<GroupInfo>& groups) {
  const size_t n = groups.size();
  std::unordered_map<std::string_view, size_t> guidIds;
  guidIds.reserve(n);
  std::vector<size_t> guidOf(n);
  for (size_t g = 0; g < n; ++g) guidOf[g] = guidIds.emplace(groups[g].guid, guidIds.size()).first->second;
  const size_t guidCount = guidIds.size();

  // References to group guids, by guid, as the referring group's position in
  // list order (repeats kept).
  std::vector<size_t> waiting(n, 0);
  std::vector<size_t> childIds;
  std::vector<size_t> refStart(guidCount + 1, 0);
  for (size_t g = 0; g < n; ++g) {
    for (const std::string& child : groups[g].childGuids) {
      const auto it = guidIds.find(child);
      if (it == guidIds.end()) continue;
      childIds.push_back(it->second);
      ++refStart[it->second + 1];
      ++waiting[g];
    }
  }
  for (size_t c = 0; c < guidCount; ++c) refStart[c + 1] += refStart[c];
  std::vector<size_t> refs(childIds.size());
  {
    std::vector<size_t> fill(refStart.begin(), refStart.end() - 1);
    size_t at = 0;
    for (size_t g = 0; g < n; ++g) {
      for (size_t k = 0; k < waiting[g]; ++k) refs[fill[childIds[at++]]++] = g;
    }
  }

  std::vector<size_t> firstPass(guidCount, 0), lowest(guidCount, 0), lateEnd(guidCount, 0);
  std::vector<size_t> passOf(n, 0), late(n, 0), lateStamp(n, 0);
  std::vector<bool> queued(n, false);
  std::vector<size_t> current, held;
  for (size_t g = 0; g < n; ++g) {
    if (waiting[g] == 0) {
      current.push_back(g);
      queued[g] = true;
    }
  }
  size_t pass = 1;
  auto lateNow = [&](size_t g) { return lateStamp[g] == pass ? late[g] : 0; };
  auto take = [&](size_t g) {
    if (queued[g]) return;
    current.push_back(g);
    queued[g] = true;
  };
  for (; !current.empty(); ++pass) {
    for (size_t at = 0; at < current.size(); ++at) {
      const size_t h = current[at];
      passOf[h] = pass;
      const size_t c = guidOf[h];
      if (firstPass[c] == 0) {
        firstPass[c] = pass;
        lowest[c] = h;
        lateEnd[c] = refStart[c];
        for (size_t r = refStart[c]; r < refStart[c + 1]; ++r) {
          const size_t g = refs[r];
          if (g < h) {
            late[g] = lateNow(g) + 1;
            lateStamp[g] = pass;
            lateEnd[c] = r + 1;
          }
          if (--waiting[g] == 0) {
            // Pass 1 takes only groups without group children.
            if (pass > 1 && lateNow(g) == 0) take(g);
            else held.push_back(g);
          }
        }
      } else if (firstPass[c] == pass && h < lowest[c]) {
        // A group listed earlier took the same guid in this pass: the
        // references between the two positions are no longer late.
        lowest[c] = h;
        while (lateEnd[c] > refStart[c] && refs[lateEnd[c] - 1] > h) {
          const size_t g = refs[--lateEnd[c]];
          if (--late[g] == 0 && waiting[g] == 0 && pass > 1) take(g);
        }
      }
    }
    current.clear();
    for (const size_t g : held) take(g);
    held.clear();
  }

  // Sort by (pass, position): bucket by pass, filling each bucket in list order.
  std::vector<size_t> passStart(pass + 1, 0);
  for (size_t g = 0; g < n; ++g) {
    if (passOf[g]) ++passStart[passOf[g]];
  }
  for (size_t p = 1; p <= pass; ++p) passStart[p] += passStart[p - 1];
  std::vector<size_t> order(passStart[pass]);
  for (size_t g = 0; g < n; ++g) {
    if (passOf[g]) order[passStart[passOf[g] - 1]++] = g;
  }
  return order;
}

WwiseProjectData TransformToWwise(const V2Schema& schema, const ExportOptions& options) {
  WwiseProjectData project;
  project.projectName = schema.projectName.empty() ? options.projectName : schema.projectName;
  project.audioDirectory = options.outputPath + "/" + options.audioSubfolder;

  // Lookups by guid over the schema's own lists; a repeated guid means its
  // last entry, as in the schema's indexes.
  std::unordered_map<std::string_view, const ClusterInfo*> clusterByGuid;
  const auto& segmentOf = project.clusterToSegment;
  clusterByGuid.reserve(schema.clusters.size());
  project.clusterToSegment.reserve(schema.clusters.size());
  project.segments.reserve(schema.clusters.size());
  for (const ClusterInfo& cluster : schema.clusters) {
    WwiseMusicSegment& segment = project.segments.emplace_back();
    segment.guid = GenerateWwiseGUID();
    segment.shortId = GenerateShortId();
    segment.clusterGuid = cluster.guid;
    segment.name = cluster.name;
    segment.duration = (cluster.endTime - cluster.startTime) * 1000.0;
    segment.startTime = cluster.startTime * 1000.0;
    // Cue times are the schema's times scaled, not made relative to the start.
    if (cluster.entryPoint >= 0) segment.cues.push_back({"Entry", cluster.entryPoint * 1000.0});
    if (cluster.exitPoint >= 0) segment.cues.push_back({"Exit", cluster.exitPoint * 1000.0});
    if (!cluster.audioFile.empty()) {
      segment.tracks.push_back({GenerateWwiseGUID(), cluster.name + "_Track", cluster.audioFile});
    }
    clusterByGuid[cluster.guid] = &cluster;
    project.clusterToSegment[cluster.guid] = segment.guid;
  }

  const std::vector<size_t> order = OrderGroupsChildrenFirst(schema.groups);
  std::unordered_map<std::string_view, size_t> containerOf;  // group guid -> position in containers
  containerOf.reserve(order.size());
  project.containers.reserve(order.size());
  for (const size_t g : order) {
    const GroupInfo& group = schema.groups[g];
    WwiseMusicContainer& container = project.containers.emplace_back();
    container.guid = GenerateWwiseGUID();
    container.shortId = GenerateShortId();
    container.groupGuid = group.guid;
    container.name = group.name;
    container.type = ContainerTypeOf(group.type);
    container.groupType = group.type;
    for (const std::string& child : group.childGuids) {
      if (const std::string* segment = Find(segmentOf, child)) {
        container.children.push_back(*segment);
      } else if (const auto it = containerOf.find(child); it != containerOf.end()) {
        container.children.push_back(project.containers[it->second].guid);
      }
    }
    if (group.type == Switch) {
      container.switchGroup = group.switchGroup.value_or(std::string());
      if (group.defaultSwitch) container.defaultSwitch = *group.defaultSwitch;
    }
    containerOf[group.guid] = project.containers.size() - 1;
    project.groupToContainer[group.guid] = container.guid;
  }

  // The container of the group above a connection's source cluster, if any.
  auto parentContainer = [&](const std::string& sourceGuid) -> WwiseMusicContainer* {
    const auto cluster = clusterByGuid.find(sourceGuid);
    if (cluster == clusterByGuid.end() || cluster->second->parentGuid.empty()) return nullptr;
    const auto it = containerOf.find(cluster->second->parentGuid);
    return it == containerOf.end() ? nullptr : &project.containers[it->second];
  };
  auto objectOf = [&](const std::string& guid) {
    if (const std::string* segment = Find(segmentOf, guid)) return *segment;
    const auto it = containerOf.find(guid);
    return it == containerOf.end() ? std::string() : project.containers[it->second].guid;
  };
  for (const ConnectionInfo& connection : schema.connections) {
    WwiseMusicContainer* container = parentContainer(connection.sourceGuid);
    if (!container) continue;
    if (connection.type == Stinger) {
      WwiseStinger& stinger = container->stingers.emplace_back();
      if (const std::string* segment = Find(segmentOf, connection.targetGuid)) stinger.segmentId = *segment;
      stinger.triggerEvent = connection.triggerEvent ? *connection.triggerEvent : "Stinger_" + connection.guid;
      continue;
    }
    WwiseTransition& transition = container->transitions.emplace_back();
    transition.sourceId = objectOf(connection.sourceGuid);
    transition.destinationId = objectOf(connection.targetGuid);
    transition.transitionType = connection.transitionType;
    // Fades keep the schema's value as it stands (not scaled to milliseconds).
    transition.fadeOutTime = transition.fadeInTime = connection.fadeTime;
    transition.fadeOutCurve = transition.fadeInCurve = connection.fadeCurve;
    if (connection.transitionType == ExitCue) transition.sourceCue = "Exit";
    if (connection.transitionType == EntryCue) transition.destinationCue = "Entry";
  }

  if (options.createEvents) {
    std::unordered_set<std::string_view> nested;
    for (const WwiseMusicContainer& container : project.containers) nested.insert(container.children.begin(), container.children.end());
    for (const WwiseMusicContainer& container : project.containers) {
      if (nested.count(container.guid)) continue;
      WwiseEvent& event = project.events.emplace_back();
      event.guid = GenerateWwiseGUID();
      event.shortId = GenerateShortId();
      event.name = options.eventPrefix + container.name;
      event.target = container.guid;
    }
  }

  if (options.createSoundBank) {
    WwiseSoundBank& bank = project.soundBanks.emplace_back();
    bank.guid = GenerateWwiseGUID();
    bank.name = project.projectName + "_SoundBank";
    for (const WwiseEvent& event : project.events) bank.events.push_back(event.name);
    for (const WwiseMusicSegment& segment : project.segments) {
      for (const WwiseMusicTrack& track : segment.tracks) bank.mediaFiles.push_back(track.audioFile);
    }
  }
  return project;
}

const char* MapGroupTypeToContainer(const char* groupType) {
  return ContainerTypeName(ContainerTypeOf(groupType ? StringToGroupType(groupType) : OtherGroup));
}

}  // namespace ZOLVA_Wwise::Schema

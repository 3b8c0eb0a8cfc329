#include "actions/cluster_score.h"

#include <map>
#include <vector>

#include "actions/actions.h"
#include "actions/cluster_outline.h"
#include "cluster/cluster_edit.h"
#include "host/files.h"
#include "json/json_text.h"
#include "json/number_text.h"

namespace ZOLVA_Actions {
namespace {

using ZOLVA::Json::AppendString;

struct Group {
  std::string guid, name, type, parent;
  std::vector<std::string> children;
};

// The audio a cluster's segment plays: what this session rendered for it,
// else a file named after it in the render folder.
std::string AudioOf(const ZOLVA_Cluster::ClusterData& cluster, const std::string& renderFolder) {
  if (const std::vector<std::string>* files = RenderedFiles(cluster.guid)) {
    for (const std::string& file : *files) {
      if (ZOLVA::Files::IsRegularFile(file)) return file;
    }
  }
  const std::string guess = renderFolder + "/" + cluster.name + ".wav";
  return !renderFolder.empty() && ZOLVA::Files::IsRegularFile(guess) ? guess : std::string();
}

void AppendStringMember(std::string& out, const char* key, const std::string& value) {
  out += ",\"";
  out += key;
  out += "\":";
  AppendString(out, value);
}

// Times to the full precision of a double's 15 digits, not the six of the
// result texts: a segment's bounds in a long project need every millisecond.
void AppendNumberMember(std::string& out, const char* key, double value) {
  out += ",\"";
  out += key;
  out += "\":";
  ZOLVA::Json::AppendGeneral(out, value, 15);
}

}  // namespace

std::string ClusterScoreJson(const std::string& projectName, const std::string& renderFolder) {
  std::map<std::string, ZOLVA_Cluster::ClusterData> clusters;
  for (ZOLVA_Cluster::ClusterData& cluster : ZOLVA_Cluster::AllClusters()) clusters[cluster.guid] = std::move(cluster);
  const std::vector<OutlineEntry> outline = ClusterOutline();

  // Tree parents become playlists (a cluster that is a parent is exported as
  // its children's playlist only); each entry is a child of its parent.
  std::map<std::string, size_t> groupOf;
  std::vector<Group> groups;
  std::map<std::string, std::string> parentOf;
  for (const OutlineEntry& entry : outline) {
    if (entry.parent.empty()) continue;
    parentOf[entry.guid] = entry.parent;
    auto found = groupOf.find(entry.parent);
    if (found == groupOf.end()) {
      const auto cluster = clusters.find(entry.parent);
      const std::string name = cluster != clusters.end() ? cluster->second.name : "Group " + entry.parent;
      found = groupOf.emplace(entry.parent, groups.size()).first;
      groups.push_back({entry.parent, name, "horizontal", std::string(), {}});
    }
    groups[found->second].children.push_back(entry.guid);
  }
  for (Group& group : groups) {
    const auto parent = parentOf.find(group.guid);
    if (parent != parentOf.end()) group.parent = parent->second;
  }

  std::string json = "{\"projectName\":";
  AppendString(json, projectName);
  json += ",\"clusters\":[";
  bool first = true;
  for (const OutlineEntry& entry : outline) {
    const auto found = clusters.find(entry.guid);
    if (found == clusters.end() || groupOf.count(entry.guid)) continue;
    const ZOLVA_Cluster::ClusterData& cluster = found->second;
    std::string parent = entry.parent;
    if (parent.empty() && cluster.is_loop) {
      parent = "loop:" + cluster.guid;
      groups.push_back({parent, cluster.name, "random", std::string(), {cluster.guid}});
    }
    json += first ? "{" : ",{";
    first = false;
    json += "\"guid\":";
    AppendString(json, cluster.guid);
    AppendStringMember(json, "name", cluster.name);
    if (!parent.empty()) AppendStringMember(json, "parentGuid", parent);
    AppendNumberMember(json, "startTime", cluster.start_time);
    AppendNumberMember(json, "endTime", cluster.end_time);
    // Points outside the cluster were never set (the script's older table
    // keeps none): the segment then starts and ends at its bounds.
    if (cluster.entry_point >= cluster.start_time && cluster.entry_point <= cluster.end_time) {
      AppendNumberMember(json, "entryPoint", cluster.entry_point);
    }
    if (cluster.exit_point > cluster.start_time && cluster.exit_point <= cluster.end_time) {
      AppendNumberMember(json, "exitPoint", cluster.exit_point);
    }
    json += cluster.is_loop ? ",\"isLoop\":true" : ",\"isLoop\":false";
    json += ",\"color\":" + std::to_string(cluster.color);
    const std::string audio = AudioOf(cluster, renderFolder);
    if (!audio.empty()) AppendStringMember(json, "audioFile", audio);
    json += "}";
  }
  json += "],\"groups\":[";
  for (size_t g = 0; g < groups.size(); ++g) {
    json += g ? ",{" : "{";
    json += "\"guid\":";
    AppendString(json, groups[g].guid);
    AppendStringMember(json, "name", groups[g].name);
    AppendStringMember(json, "type", groups[g].type);
    if (!groups[g].parent.empty()) AppendStringMember(json, "parentGuid", groups[g].parent);
    json += ",\"childGuids\":[";
    for (size_t c = 0; c < groups[g].children.size(); ++c) {
      if (c) json += ",";
      AppendString(json, groups[g].children[c]);
    }
    json += "]}";
  }
  json += "],\"connections\":[]}";
  return json;
}

}  // namespace ZOLVA_Actions

// Creating, naming, deleting clusters and changing their members.
#include <algorithm>
#include <string>
#include <vector>

#include "actions/action_support.h"
#include "actions/actions.h"
#include "cluster/association.h"
#include "cluster/cluster_edit.h"
#include "cluster/persistence.h"
#include "cluster/project_items.h"

namespace ZOLVA_Actions {
namespace {

using ZOLVA_Cluster::ClusterData;

constexpr char kCreate[] = "ZOLVA: Create cluster from time selection";
constexpr char kRename[] = "ZOLVA: Rename cluster at edit cursor";
constexpr char kDelete[] = "ZOLVA: Delete cluster at edit cursor";
constexpr char kAdd[] = "ZOLVA: Add selected items to cluster at edit cursor";
constexpr char kRemove[] = "ZOLVA: Remove selected items from their clusters";

struct Span {
  double start = 0.0, end = 0.0;
  bool Empty() const { return !(end > start); }
};

Span TimeSelection() {
  Span span;
  if (GetSet_LoopTimeRange2) GetSet_LoopTimeRange2(nullptr, false, false, &span.start, &span.end, false);
  return span;
}

// From the first selected item's start to the last one's end.
Span SelectedItemsSpan() {
  Span span;
  bool first = true;
  for (MediaItem* item : ZOLVA_Cluster::SelectedItems()) {
    const double start = ZOLVA_Cluster::ItemValue(item, "D_POSITION");
    const double end = start + ZOLVA_Cluster::ItemValue(item, "D_LENGTH");
    span.start = first ? start : std::min(span.start, start);
    span.end = first ? end : std::max(span.end, end);
    first = false;
  }
  return span;
}

std::string FreeName() {
  const size_t count = ZOLVA_Cluster::AllClusters().size();
  for (size_t n = count + 1;; ++n) {
    std::string name = "Cluster " + std::to_string(n);
    if (!ZOLVA_Cluster::ClusterNameTaken(name)) return name;
  }
}

// Asks for a name until it is one no other cluster has, or the user cancels.
bool AskName(const char* title, std::string& name, const std::string& exceptGuid) {
  while (AskText(title, "Cluster name:", name)) {
    const size_t first = name.find_first_not_of(" \t"), last = name.find_last_not_of(" \t");
    name = first == std::string::npos ? std::string() : name.substr(first, last - first + 1);
    if (name.empty()) {
      Tell("A cluster needs a name. Type one, or press Cancel to leave the clusters as they are.");
    } else if (ZOLVA_Cluster::ClusterNameTaken(name, exceptGuid)) {
      Tell("A cluster named \"" + name + "\" already exists. Type another name, or press Cancel.");
    } else {
      return true;
    }
  }
  return false;
}

std::vector<std::string> SelectedItemGuids() {
  std::vector<std::string> guids;
  for (MediaItem* item : ZOLVA_Cluster::SelectedItems()) guids.push_back(ZOLVA_Cluster::ItemGuid(item));
  return guids;
}

}  // namespace

void CreateClusterFromTimeSelection() {
  if (!ReadyToChange(kCreate, {ZOLVA_HOST_FUNCTION(GetUserInputs), ZOLVA_HOST_FUNCTION(GetSet_LoopTimeRange2),
                               ZOLVA_HOST_FUNCTION(genGuid), ZOLVA_HOST_FUNCTION(guidToString)})) {
    return;
  }
  Span span = TimeSelection();
  if (span.Empty()) span = SelectedItemsSpan();
  if (span.Empty()) {
    Tell(std::string(kCreate) + ": there is no time selection and no item is selected.\n\nSelect the time range "
         "the cluster should cover, or the items it should hold, then run the action again.");
    return;
  }
  std::string name = FreeName();
  if (!AskName("ZOLVA: Create cluster", name, std::string())) return;
  ProjectChange change(kCreate);
  const std::string guid = ZOLVA_Cluster::CreateNamedCluster(name, span.start, span.end);
  if (guid.empty()) return;
  ZOLVA_Cluster::Activation::AssociateSelectedItems(guid, ZOLVA_Cluster::Activation::AssociationOptions());
  ZOLVA_Cluster::SaveToProject();
}

void RenameClusterAtCursor() {
  if (!ReadyToChange(kRename, {ZOLVA_HOST_FUNCTION(GetUserInputs), ZOLVA_HOST_FUNCTION(GetCursorPositionEx)})) return;
  const std::string guid = ClusterAtCursor(kRename);
  if (guid.empty()) return;
  const std::string old = ZOLVA_Cluster::FindCluster(guid).value_or(ClusterData()).name;
  std::string name = old;
  if (!AskName("ZOLVA: Rename cluster", name, guid) || name == old) return;
  ProjectChange change(kRename);
  ZOLVA_Cluster::RenameCluster(guid, name);
  ZOLVA_Cluster::SaveToProject();
}

void DeleteClusterAtCursor() {
  if (!ReadyToChange(kDelete, {ZOLVA_HOST_FUNCTION(GetCursorPositionEx)})) return;
  const std::string guid = ClusterAtCursor(kDelete);
  if (guid.empty()) return;
  const ClusterData cluster = ZOLVA_Cluster::FindCluster(guid).value_or(ClusterData());
  const size_t members = cluster.items.size();
  if (members > 0 && !AskYesNo("Delete the cluster \"" + cluster.name + "\"?\n\nIts " + std::to_string(members) +
                               (members == 1 ? " item stays" : " items stay") +
                               " in the project; only the cluster goes. Edit > Undo brings it back.")) {
    return;
  }
  ProjectChange change(kDelete);
  ZOLVA_Cluster::DeleteCluster(guid);
  ZOLVA_Cluster::SaveToProject();
}

void AddSelectedItemsToCluster() {
  if (!ReadyToChange(kAdd, {ZOLVA_HOST_FUNCTION(GetCursorPositionEx)})) return;
  const std::vector<MediaItem*> items = ZOLVA_Cluster::SelectedItems();
  if (items.empty()) {
    Tell(std::string(kAdd) + ": no item is selected.\n\nSelect the items to add, put the edit cursor into the "
         "cluster, then run the action again.");
    return;
  }
  const std::string guid = ClusterAtCursor(kAdd);
  if (guid.empty()) return;
  const ClusterData cluster = ZOLVA_Cluster::FindCluster(guid).value_or(ClusterData());
  const bool anyInside = std::any_of(items.begin(), items.end(), [&](MediaItem* item) {
    return ZOLVA_Cluster::Overlaps(cluster, ZOLVA_Cluster::ItemValue(item, "D_POSITION"),
                                   ZOLVA_Cluster::ItemValue(item, "D_LENGTH"));
  });
  if (!anyInside) {
    Tell(std::string(kAdd) + ": none of the selected items overlaps the cluster \"" + cluster.name + "\" (" +
         Seconds(cluster.start_time) + " to " + Seconds(cluster.end_time) +
         ").\n\nSelect items inside the cluster's range, then run the action again.");
    return;
  }
  ProjectChange change(kAdd);
  const ZOLVA_Cluster::Activation::AssociationResult result =
      ZOLVA_Cluster::Activation::AssociateSelectedItems(guid, ZOLVA_Cluster::Activation::AssociationOptions());
  ZOLVA_Cluster::SaveToProject();
  if (result.items_skipped > 0) {
    Console("ZOLVA: " + std::to_string(result.items_skipped) + " selected item(s) lie outside \"" + cluster.name +
            "\" and were not added.\n");
  }
}

void RemoveSelectedItemsFromClusters() {
  if (!ReadyToChange(kRemove, {})) return;
  const std::vector<std::string> guids = SelectedItemGuids();
  if (guids.empty()) {
    Tell(std::string(kRemove) + ": no item is selected.\n\nSelect the items to take out of their clusters, then "
         "run the action again.");
    return;
  }
  const std::vector<ClusterData> clusters = ZOLVA_Cluster::AllClusters();
  const bool anyMember = std::any_of(guids.begin(), guids.end(), [&](const std::string& item) {
    return std::any_of(clusters.begin(), clusters.end(), [&](const ClusterData& c) { return c.items.count(item) != 0; });
  });
  if (!anyMember) {
    Tell(std::string(kRemove) + ": none of the selected items is in a cluster, so there is nothing to remove.");
    return;
  }
  ProjectChange change(kRemove);
  ZOLVA_Cluster::RemoveItemsFromAllClusters(guids);
  ZOLVA_Cluster::SaveToProject();
}

}  // namespace ZOLVA_Actions

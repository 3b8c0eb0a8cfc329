#include "actions/action_list.h"

#include <iterator>

#include "actions/actions.h"
#include "host/api_frame.h"
#include "host/reaper_api.h"

namespace ZOLVA_Actions {
namespace {

struct Action {
  const char* id;    // the command name without its "_"; never changes
  const char* name;  // as the action list shows it
  void (*run)();
  bool (*isOn)();  // toggles only
};

// In the order the action list and the menu show them.
const Action kActions[] = {
    {"ZOLVA_CREATE_CLUSTER", "ZOLVA: Create cluster from time selection...", &CreateClusterFromTimeSelection,
     nullptr},
    {"ZOLVA_RENAME_CLUSTER", "ZOLVA: Rename cluster at edit cursor...", &RenameClusterAtCursor, nullptr},
    {"ZOLVA_DELETE_CLUSTER", "ZOLVA: Delete cluster at edit cursor", &DeleteClusterAtCursor, nullptr},
    {"ZOLVA_ADD_SELECTED_ITEMS", "ZOLVA: Add selected items to cluster at edit cursor", &AddSelectedItemsToCluster,
     nullptr},
    {"ZOLVA_REMOVE_SELECTED_ITEMS", "ZOLVA: Remove selected items from their clusters",
     &RemoveSelectedItemsFromClusters, nullptr},
    {"ZOLVA_AUDITION_CLUSTER", "ZOLVA: Audition cluster at edit cursor", &ToggleAuditionAtCursor, &AuditionIsOn},
    {"ZOLVA_CREATE_REGIONS", "ZOLVA: Create regions from clusters", &CreateRegionsFromClusters, nullptr},
    {"ZOLVA_RENDER_CLUSTERS", "ZOLVA: Render clusters...", &RenderClusters, nullptr},
    {"ZOLVA_EXPORT_WWISE", "ZOLVA: Export clusters to Wwise...", &ExportClustersToWwise, nullptr},
    {"ZOLVA_LIST_CLUSTERS", "ZOLVA: List clusters", &ListClusters, nullptr},
};
constexpr size_t kCount = std::size(kActions);

// The host keeps these records' strings, which are literals, and hands out
// one command id per action; 0 where registering failed.
custom_action_register_t g_records[kCount];
int g_commandIds[kCount] = {};

const Action* Find(int command, size_t* at = nullptr) {
  if (command <= 0) return nullptr;
  for (size_t i = 0; i < kCount; ++i) {
    if (g_commandIds[i] != command) continue;
    if (at) *at = i;
    return &kActions[i];
  }
  return nullptr;
}

// What the host calls for a toggle's state: guarded, -1 ("not ours") on failure.
void* TogglePointer() { return reinterpret_cast<void*>(ZOLVA::Guarded<&ActionToggleState, -1>); }

}  // namespace

void RegisterActions() {
  if (!plugin_register) return;
  for (size_t i = 0; i < kCount; ++i) {
    g_records[i] = {0, kActions[i].id, kActions[i].name, nullptr};
    g_commandIds[i] = plugin_register("custom_action", &g_records[i]);
  }
  plugin_register("toggleaction", TogglePointer());
}

void UnregisterActions() {
  if (!plugin_register) return;
  plugin_register("-toggleaction", TogglePointer());
  for (size_t i = kCount; i-- > 0;) {
    plugin_register("-custom_action", &g_records[i]);
    g_commandIds[i] = 0;
  }
}

bool RunAction(int command) {
  size_t at = 0;
  const Action* action = Find(command, &at);
  if (!action) return false;
  action->run();
  // Toolbar buttons and menu check marks show a toggle's new state.
  if (action->isOn && RefreshToolbar2) RefreshToolbar2(0, g_commandIds[at]);
  return true;
}

int ActionToggleState(int command) {
  const Action* action = Find(command);
  if (!action || !action->isOn) return -1;
  return action->isOn() ? 1 : 0;
}

std::vector<RegisteredAction> RegisteredActions() {
  std::vector<RegisteredAction> list;
  for (size_t i = 0; i < kCount; ++i) list.push_back({kActions[i].name, g_commandIds[i]});
  return list;
}

}  // namespace ZOLVA_Actions

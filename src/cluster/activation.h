// Auditioning one cluster: its items sound, with their recorded takes and
// lanes, and every other item in its range is muted. Deactivation unmutes
// every muted item of the project.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ZOLVA_Cluster::Activation {

struct ActivationOptions {
  bool suspend_deactivation = false;  // leave the other items as they are
  bool selective_midi_off = false;    // notes off only on tracks under the play head
  bool preserve_selection = true;     // select the selected items again afterwards
};

struct ActivationResult {
  bool success = false;
  int32_t items_activated = 0;  // for a deactivation: the items unmuted
  int32_t items_muted = 0;
  std::vector<std::string> item_guids;  // activated, in project order
  std::string error;
};

ActivationOptions ParseActivationOptions(const char* options_json);

ActivationResult ActivateCluster(const std::string& cluster_guid, const ActivationOptions& options);
ActivationResult DeactivateAllClusters();

}  // namespace ZOLVA_Cluster::Activation

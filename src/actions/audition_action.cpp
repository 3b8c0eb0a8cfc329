// Auditioning the cluster at the edit cursor, as a toggle.
#include <string>

#include "actions/action_support.h"
#include "actions/actions.h"
#include "cluster/activation.h"

namespace ZOLVA_Actions {
namespace {

constexpr char kAudition[] = "ZOLVA: Audition cluster at edit cursor";

// The cluster this action last auditioned; empty while off. The interface
// script may end an audition too, which this does not see: the next run then
// turns the toggle off, ending every audition again, which changes nothing.
std::string g_auditioned;

}  // namespace

bool AuditionIsOn() { return !g_auditioned.empty(); }

void ToggleAuditionAtCursor() {
  if (!HostHas(kAudition, {ZOLVA_HOST_FUNCTION(Undo_BeginBlock2), ZOLVA_HOST_FUNCTION(Undo_EndBlock2),
                           ZOLVA_HOST_FUNCTION(GetCursorPositionEx)})) {
    return;
  }
  if (AuditionIsOn()) {
    ProjectChange change(kAudition);
    ZOLVA_Cluster::Activation::DeactivateAllClusters();
    g_auditioned.clear();
    return;
  }
  if (!LoadClusters()) return;
  const std::string guid = ClusterAtCursor(kAudition);
  if (guid.empty()) return;
  ProjectChange change(kAudition);
  const ZOLVA_Cluster::Activation::ActivationResult result =
      ZOLVA_Cluster::Activation::ActivateCluster(guid, ZOLVA_Cluster::Activation::ActivationOptions());
  if (result.success) g_auditioned = guid;
}

}  // namespace ZOLVA_Actions

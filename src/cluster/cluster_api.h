// Start-up, shutdown and script functions of the cluster module.
#pragma once

#include "cluster/cluster_state.h"

namespace ZOLVA_Cluster {

// Publishes the module's script functions, in table order.
void RegisterAPI();
// Withdraws their "API_" registrations.
void UnregisterAPI();

}  // namespace ZOLVA_Cluster

// Start-up, shutdown and script functions of the cluster module.
#pragma once

namespace ZOLVA_Cluster {

namespace State {
// Empties the registry and its indices.
void Initialize();
void Shutdown();
}  // namespace State

// Publishes the module's script functions, in table order.
void RegisterAPI();
// Withdraws their "API_" registrations.
void UnregisterAPI();

}  // namespace ZOLVA_Cluster

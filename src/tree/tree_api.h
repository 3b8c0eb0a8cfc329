// Start-up, shutdown and script functions of the tree module.
#pragma once

namespace ZOLVA_Tree {

// Empties the tree under its mutex.
void Initialize();
void Shutdown();

// Publishes the module's script functions, in table order.
void RegisterAPI();
// Withdraws their "API_" registrations.
void UnregisterAPI();

}  // namespace ZOLVA_Tree

// Start-up, shutdown and script functions of the render module.
#pragma once

namespace ZOLVA_Render {

// Resets the item cache unless the module is already initialised (a second
// registration keeps it), and marks it initialised.
void Initialize();
// Empties the caches and marks the module uninitialised.
void Shutdown();

// Publishes the module's script functions, in table order.
void RegisterAPI();
// Withdraws their "API_" registrations.
void UnregisterAPI();

}  // namespace ZOLVA_Render

// Start-up, shutdown and script functions of the region module.
#pragma once

namespace ZOLVA_Region {

// Marks the module initialised / uninitialised.
void Initialize();
void Shutdown();

// Publishes the module's script functions, in table order.
void RegisterAPI();
// Withdraws their "API_" registrations.
void UnregisterAPI();

}  // namespace ZOLVA_Region

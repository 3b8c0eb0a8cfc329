// GUID lists come from scripts: any text, however long or broken, adds only
// regions the host resolves and never reads past the text.
#include <cstddef>
#include <cstdint>
#include <string>

#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "sim_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static sim::Host* host = [] {
    auto* h = new sim::Host;
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    AddProjectMarker2(nullptr, true, 0.0, 5.0, "", -1, 0);
    AddProjectMarker2(nullptr, false, 2.0, 0.0, "", -1, 0);
    return h;
  }();
  host->matrixCalls.clear();
  // Each '@' stands for a real marker or region GUID, so the fuzzer reaches
  // GUIDs that resolve as well as ones that do not.
  std::string text;
  for (size_t i = 0; i < size; ++i) {
    if (data[i] == '@') {
      text += host->markers[i % host->markers.size()].guid;
    } else {
      text += static_cast<char>(data[i]);
    }
  }
  ZOLVA_Render::AddRegionsByGuid(text.c_str());
  ZOLVA_Render::ClearRenderMatrix();
  return 0;
}

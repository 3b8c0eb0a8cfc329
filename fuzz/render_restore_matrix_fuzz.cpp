// Snapshot texts come back from scripts: whatever the text, restoring it
// never crashes, hangs or reads past it, and the matrix holds only real rows.
#include <cstddef>
#include <cstdint>
#include <string>

#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "sim_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static sim::Host* host = [] {
    auto* h = new sim::Host;
    for (int i = 0; i < 4; ++i) h->AddTrack();
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    for (int i = 0; i < 5; ++i) AddProjectMarker2(nullptr, i != 2, i * 10.0, i * 10.0 + 5, "", -1, 0);
    return h;
  }();
  host->matrixCalls.clear();
  const std::string text(reinterpret_cast<const char*>(data), size);
  ZOLVA_Render::RestoreRegionMatrix(text.c_str());
  ZOLVA_Render::CacheRegionRenderMatrix();
  return 0;
}

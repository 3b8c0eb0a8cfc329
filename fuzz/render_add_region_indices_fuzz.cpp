// Number lists come from scripts: any text adds one master-track entry per
// number it holds, never more, and never reads past the text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "sim_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static sim::Host* host = [] {
    auto* h = new sim::Host;
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    AddProjectMarker2(nullptr, true, 0.0, 5.0, "", -1, 0);
    return h;
  }();
  host->matrixCalls.clear();
  const std::string text(reinterpret_cast<const char*>(data), size);
  ZOLVA_Render::AddRegionIndices(text.c_str());
  if (host->matrixCalls.size() > text.size()) std::abort();  // each number needs at least one digit
  for (const sim::MatrixCall& call : host->matrixCalls) {
    if (call.track != &host->masterTrack || call.flag != 1) std::abort();
  }
  ZOLVA_Render::ClearRenderMatrix();
  return 0;
}

// "P_EXT:ZOLVA" is written by scripts outside the extension: any value, read
// directly or through a cache build, yields only GUIDs found in the text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "render/cluster_refs.h"
#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "sim_host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static sim::Host* host = [] {
    auto* h = new sim::Host;
    h->AddItem(h->AddTrack(), 1.0, 2.0);
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    return h;
  }();
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (const std::string& guid : ZOLVA_Render::ExtractClusterGuids(text)) {
    if (guid.empty() || text.find('"' + guid + '"') == std::string::npos) std::abort();
  }
  // The host copies the value whole into the reader's 8 KiB buffer, so the
  // project holds only values that fit, as a real caller's would.
  const std::string stored = text.substr(0, 8191);
  host->items[0]->ext["ZOLVA"] = stored;
  ZOLVA_Render::BuildItemClusterCache();
  for (const std::string& guid : ZOLVA_Render::ExtractClusterGuids(stored.c_str())) {
    if (!ZOLVA_Render::GetClusterItems(guid.c_str())) std::abort();
  }
  return 0;
}

// Preparing one cluster for rendering: its items soloed on their recorded
// takes, the other items in its range muted, video left out; the project's
// state is backed up first (once) for the restore after the render.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ZOLVA_Cluster::Render {

struct RenderPrepOptions {
  bool solo_items = true;  // read, but the cluster's items are soloed either way
  bool mute_others = true;
  bool exclude_video = true;
};

struct RenderPrepResult {
  bool success = false;
  int32_t items_soloed = 0;
  std::vector<std::string> item_guids;  // soloed, in project order
  std::string error;
};

RenderPrepOptions ParseRenderPrepOptions(const char* options_json);

RenderPrepResult PrepareClusterForRender(const std::string& cluster_guid, const RenderPrepOptions& options);

}  // namespace ZOLVA_Cluster::Render

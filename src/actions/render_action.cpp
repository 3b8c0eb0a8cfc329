// Rendering every cluster through REAPER's own render: one region render per
// cluster with only that cluster sounding, the user's render settings put
// back afterwards.
#include <map>
#include <string>
#include <vector>

#include "actions/action_support.h"
#include "actions/actions.h"
#include "actions/region_actions.h"
#include "actions/render_settings.h"
#include "cluster/cluster_edit.h"
#include "cluster/persistence.h"
#include "cluster/render_backup.h"
#include "cluster/render_prep.h"
#include "render/region_matrix.h"

namespace ZOLVA_Actions {
namespace {

constexpr char kRender[] = "ZOLVA: Render clusters";
// "File: Render project, using the most recent render settings, auto-close
// render dialog".
constexpr int kRenderWithLastSettings = 42230;

// The files each cluster was last rendered to, by cluster GUID.
std::map<std::string, std::vector<std::string>> g_rendered;

std::vector<std::string> SplitTargets(const std::string& targets) {
  std::vector<std::string> files;
  for (size_t at = 0; at < targets.size();) {
    const size_t end = std::min(targets.find(';', at), targets.size());
    if (end > at) files.push_back(targets.substr(at, end - at));
    at = end + 1;
  }
  return files;
}

}  // namespace

const std::vector<std::string>* RenderedFiles(const std::string& clusterGuid) {
  const auto found = g_rendered.find(clusterGuid);
  return found == g_rendered.end() ? nullptr : &found->second;
}

void RenderClusters() {
  if (!ReadyToChange(kRender, {ZOLVA_HOST_FUNCTION(GetSetProjectInfo), ZOLVA_HOST_FUNCTION(GetSetProjectInfo_String),
                               ZOLVA_HOST_FUNCTION(EnumProjects), ZOLVA_HOST_FUNCTION(Main_OnCommand),
                               ZOLVA_HOST_FUNCTION(EnumRegionRenderMatrix), ZOLVA_HOST_FUNCTION(SetRegionRenderMatrix),
                               ZOLVA_HOST_FUNCTION(GetMasterTrack), ZOLVA_HOST_FUNCTION(AddProjectMarker2),
                               ZOLVA_HOST_FUNCTION(SetProjectMarkerByIndex2)}) ||
      !HasClusters(kRender)) {
    return;
  }
  const size_t count = ZOLVA_Cluster::AllClusters().size();
  const std::string project = ProjectFile();
  if (project.empty()) {
    Tell(std::string(kRender) + ": save the project first (File > Save project).\n\nEach cluster is rendered "
         "into the project's render folder (Render to: in File > Render...; without one, the folder the project "
         "file is saved in), one file named after the cluster, and an unsaved project has no folder yet.");
    return;
  }
  const std::string folder = RenderFolder(project);
  if (!AskOkCancel("Render " + std::to_string(count) + (count == 1 ? " cluster" : " clusters") +
                   ", one file each named after its cluster, into\n" + folder +
                   "\n\nREAPER's render settings and the region render matrix are put back afterwards.")) {
    return;
  }
  {
    ProjectChange change(kRender);
    KeepClusterRegions();
    ZOLVA_Cluster::SaveToProject();
  }
  std::string report = "ZOLVA: rendered " + std::to_string(count) + (count == 1 ? " cluster" : " clusters") + ":\n";
  {
    SavedRenderSettings saved;
    saved.UseRegionMatrix();
    for (const ZOLVA_Cluster::ClusterData& cluster : ZOLVA_Cluster::AllClusters()) {
      if (cluster.region_guid.empty()) {
        report += "  " + cluster.name + ": no region could be made for it, so it was not rendered\n";
        continue;
      }
      ZOLVA_Render::ClearRenderMatrix();
      ZOLVA_Render::AddRegionsByGuid(("[\"" + cluster.region_guid + "\"]").c_str());
      const ZOLVA_Cluster::Render::RenderPrepResult prepared = ZOLVA_Cluster::Render::PrepareClusterForRender(
          cluster.guid, ZOLVA_Cluster::Render::RenderPrepOptions());
      std::vector<std::string> files = SplitTargets(ProjectInfoText("RENDER_TARGETS"));
      if (prepared.success) Main_OnCommand(kRenderWithLastSettings, 0);
      ZOLVA_Cluster::State::RestoreRenderState();
      report += "  " + cluster.name + ":";
      for (const std::string& file : files) report += "\n    " + file;
      report += files.empty() ? " no file\n" : "\n";
      g_rendered[cluster.guid] = std::move(files);
    }
  }
  Console(report);
}

}  // namespace ZOLVA_Actions

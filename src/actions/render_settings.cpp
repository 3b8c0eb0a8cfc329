#include "actions/render_settings.h"

#include <cstdint>
#include <vector>

#include "actions/action_support.h"
#include "host/reaper_api.h"
#include "render/region_matrix.h"

namespace ZOLVA_Actions {
namespace {

// RENDER_BOUNDSFLAG: every project region.
constexpr double kAllRegions = 3;
// RENDER_SETTINGS bits: stems (1, 2) and the item and track sources (32, 64,
// 128) give way to the render matrix (8), which alone then names what renders.
constexpr int64_t kSourceBits = 1 | 2 | 32 | 64 | 128;
constexpr int64_t kUseRenderMatrix = 8;
// The string functions take no size; REAPER's paths and lists fit in this.
constexpr size_t kTextSize = 65536;

double ProjectInfo(const char* key) { return GetSetProjectInfo ? GetSetProjectInfo(nullptr, key, 0, false) : 0; }
void SetProjectInfo(const char* key, double value) {
  if (GetSetProjectInfo) GetSetProjectInfo(nullptr, key, value, true);
}

bool IsAbsolute(const std::string& path) {
  return (!path.empty() && (path[0] == '/' || path[0] == '\\')) || (path.size() > 1 && path[1] == ':');
}

}  // namespace

std::string ProjectInfoText(const char* key) {
  if (!GetSetProjectInfo_String) return std::string();
  std::vector<char> buffer(kTextSize, '\0');
  GetSetProjectInfo_String(nullptr, key, buffer.data(), false);
  buffer.back() = '\0';
  return buffer.data();
}

void SetProjectInfoText(const char* key, const std::string& value) {
  if (!GetSetProjectInfo_String) return;
  std::vector<char> buffer(value.begin(), value.end());
  buffer.push_back('\0');
  GetSetProjectInfo_String(nullptr, key, buffer.data(), true);
}

std::string RenderFolder(const std::string& projectFile) {
  const std::string setting = ProjectInfoText("RENDER_FILE");
  const std::string projectFolder = FolderOf(projectFile);
  if (IsAbsolute(setting)) return setting;
  return setting.empty() ? projectFolder : projectFolder + "/" + setting;
}

SavedRenderSettings::SavedRenderSettings()
    : bounds_(ProjectInfo("RENDER_BOUNDSFLAG")),
      settings_(ProjectInfo("RENDER_SETTINGS")),
      pattern_(ProjectInfoText("RENDER_PATTERN")),
      matrix_(ZOLVA_Render::CacheRegionRenderMatrix()) {
  ZOLVA_Render::ReleaseMatrixSnapshot();
}

SavedRenderSettings::~SavedRenderSettings() {
  ZOLVA_Render::RestoreRegionMatrix(matrix_.c_str());
  SetProjectInfoText("RENDER_PATTERN", pattern_);
  SetProjectInfo("RENDER_SETTINGS", settings_);
  SetProjectInfo("RENDER_BOUNDSFLAG", bounds_);
}

void SavedRenderSettings::UseRegionMatrix() {
  SetProjectInfo("RENDER_BOUNDSFLAG", kAllRegions);
  SetProjectInfo("RENDER_SETTINGS",
                 static_cast<double>((static_cast<int64_t>(settings_) & ~kSourceBits) | kUseRenderMatrix));
  SetProjectInfoText("RENDER_PATTERN", "$region");
}

}  // namespace ZOLVA_Actions

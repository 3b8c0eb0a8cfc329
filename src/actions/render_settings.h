// REAPER's render settings of the current project that a cluster render
// changes, read before it and written back after it.
#pragma once

#include <string>

namespace ZOLVA_Actions {

// A text value of the project ("RENDER_FILE", "RENDER_TARGETS", ...).
std::string ProjectInfoText(const char* key);
void SetProjectInfoText(const char* key, const std::string& value);

// The folder REAPER renders into: the project's render folder setting, taken
// from the project's own folder when relative or empty.
std::string RenderFolder(const std::string& projectFile);

class SavedRenderSettings {
 public:
  // Reads the bounds, the render settings, the file name pattern and the
  // region render matrix.
  SavedRenderSettings();
  // Writes them all back.
  ~SavedRenderSettings();
  SavedRenderSettings(const SavedRenderSettings&) = delete;
  SavedRenderSettings& operator=(const SavedRenderSettings&) = delete;

  // The settings of a render of the project's regions through the render
  // matrix, one file per region named after it; the user's other choices
  // (format, channels, metadata, ...) stay.
  void UseRegionMatrix();

 private:
  double bounds_;
  double settings_;
  std::string pattern_;
  std::string matrix_;
};

}  // namespace ZOLVA_Actions

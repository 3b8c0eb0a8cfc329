// The transformed project as compact JSON for the interface script: its
// transitions and stingers, and a summary of what an export would write.
#pragma once

#include <string>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Export {

std::string GenerateTransitionsJson(const WwiseProjectData& project);
std::string PreviewExportJson(const WwiseProjectData& project, const ExportOptions& options);

}  // namespace ZOLVA_Wwise::Export

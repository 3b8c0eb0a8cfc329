// Reading the export options a script passes, by exact text.
#pragma once

#include "wwise/model.h"

namespace ZOLVA_Wwise {

// The defaults, changed by what the text holds: "outputPath" and
// "projectName" as the text right after "\"key\":\"" up to the next quote,
// the flags only by the exact spelling of their other value, and
// "defaultFadeTime" as the number after "\"defaultFadeTime\":". "format"
// and "wwiseProject" are read as JSON members (blanks around the colon
// allowed, string escapes decoded); "format" keeps any value it has, which
// the export refuses unless it is "fixed" or "native".
ExportOptions ParseExportOptions(const char* options_json);

}  // namespace ZOLVA_Wwise

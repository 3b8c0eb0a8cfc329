// Writing a transformed project to disk as Work Units (with the audio beside
// them), and the quick structural check of one Work Unit file.
#pragma once

#include <string>
#include <vector>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Export {

struct ExportResult {
  bool success = false;
  std::vector<std::string> files;       // the Work Units written, in writing order
  std::vector<std::string> audioFiles;  // the audio copies made
  std::string error;                    // the first failure's message
};

ExportResult GenerateWWU(const WwiseProjectData& project, const ExportOptions& options);

// True when the file passes the check; otherwise `error` says why.
bool ValidateWWUFile(const std::string& path, std::string& error);

}  // namespace ZOLVA_Wwise::Export

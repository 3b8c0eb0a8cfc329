// The native export: Work Units in the format Wwise itself saves, made for
// one Wwise project, in the folders Wwise scans, so that copying the output
// folders into the project adds them.
#pragma once

#include <string>
#include <vector>

#include "wwise/model.h"
#include "wwise/native/project_reader.h"
#include "wwise/native/report.h"

namespace ZOLVA_Wwise::Native {

// Every document and audio copy of the export, in memory: the music Work
// Unit, then events and sound bank (as the options ask), then the Switch
// groups and Triggers the project lacked. Every identity is derived from
// the score (see identity.h) and kept clear of those the project's own
// objects use; the Work Units of an earlier export of the same name count
// as this export's own, which it replaces.
NativeExport BuildNativeExport(const WwiseProjectData& model, const ExportOptions& options, const ProjectInfo& project);

// Writes the documents under `root` (and the audio, when `copyAudio`),
// appending the paths written to `written`. False with `error` at the first
// failure; an audio file that cannot be copied is a warning.
bool WriteNativeExport(NativeExport& result, const std::string& root, bool copyAudio,
                       std::vector<std::string>& written, std::string& error);

}  // namespace ZOLVA_Wwise::Native

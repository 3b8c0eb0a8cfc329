#include "wwise/export.h"

#include <fstream>
#include <iterator>

#include "host/files.h"
#include "wwise/work_units.h"

namespace ZOLVA_Wwise::Export {

namespace {

using ZOLVA::Files::CopyRegularFile;
using ZOLVA::Files::FromUtf8;
using ZOLVA::Files::IsRegularFile;
using ZOLVA::Files::MakeDirectory;
using ZOLVA::Files::WriteWholeFile;

// The part after the last folder separator.
std::string BaseName(const std::string& path) {
  const size_t slash = ZOLVA::Files::LastSeparator(path);
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace

ExportResult GenerateWWU(const WwiseProjectData& project, const ExportOptions& options) {
  ExportResult result;
  const std::string& root = options.outputPath;
  if (!MakeDirectory(root)) {
    result.error = "Failed to create output directory: " + root;
    return result;
  }
  for (const char* folder : {"/Interactive Music Hierarchy", "/Events", "/SoundBanks"}) MakeDirectory(root + folder);

  struct WorkUnit {
    bool wanted;
    std::string path;
    std::string (*document)(const WwiseProjectData&);
    const char* failure;
  };
  const WorkUnit units[] = {
      {true, root + "/Interactive Music Hierarchy/" + project.projectName + ".wwu", MusicWorkUnit,
       "Failed to write music work unit: "},
      {options.createEvents, root + "/Events/" + project.projectName + "_Events.wwu", EventsWorkUnit,
       "Failed to write events work unit: "},
      {options.createSoundBank, root + "/SoundBanks/" + project.projectName + "_SoundBanks.wwu", SoundBanksWorkUnit,
       "Failed to write soundbanks work unit: "},
  };
  for (const WorkUnit& unit : units) {
    if (!unit.wanted) continue;
    if (!WriteWholeFile(unit.path, unit.document(project))) {
      result.error = unit.failure + unit.path;
      return result;
    }
    result.files.push_back(unit.path);
  }

  if (options.copyAudioFiles) {
    const std::string audioDirectory = root + "/" + options.audioSubfolder;
    MakeDirectory(audioDirectory);
    for (const WwiseMusicSegment& segment : project.segments) {
      for (const WwiseMusicTrack& track : segment.tracks) {
        if (track.audioFile.empty()) continue;
        const std::string destination = audioDirectory + "/" + BaseName(track.audioFile);
        if (CopyRegularFile(track.audioFile, destination)) result.audioFiles.push_back(destination);
      }
    }
  }
  result.success = true;
  return result;
}

bool ValidateWWUFile(const std::string& path, std::string& error) {
  error.clear();
  if (!IsRegularFile(path)) {
    error = "File not found: " + path;
    return false;
  }
  std::ifstream in(FromUtf8(path), std::ios::binary);
  if (!in) {
    error = "Cannot open file: " + path;
    return false;
  }
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  static constexpr std::pair<const char*, const char*> kMarkers[] = {
      {"<?xml", "Missing XML declaration"},
      {"<WwiseDocument", "Missing WwiseDocument element"},
      {"</WwiseDocument>", "Unclosed WwiseDocument element"},
      {"<WorkUnit", "Missing WorkUnit element"},
  };
  for (const auto& [marker, message] : kMarkers) {
    if (text.find(marker) == std::string::npos) {
      error = message;
      return false;
    }
  }
  return true;
}

}  // namespace ZOLVA_Wwise::Export

#include "wwise/export.h"

#include <fstream>
#include <iterator>

#include "host/files.h"
#include "wwise/work_units.h"

namespace ZOLVA_Wwise::Export {

namespace {

using ZOLVA::Files::FromUtf8;
using ZOLVA::Files::IsRegularFile;
using ZOLVA::Files::MakeDirectory;

// Truncates and writes; true only when every byte reached the file, so a
// write that fails part way (a full disk shows at the final flush) is never
// reported as done.
bool WriteFile(const std::string& path, const std::string& content) {
  std::ofstream out(FromUtf8(path), std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  out.close();
  return !out.fail();
}

// The part after the last folder separator.
std::string BaseName(const std::string& path) {
  const size_t slash = ZOLVA::Files::LastSeparator(path);
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Copies through the streams; false when either side cannot be opened or the
// copy does not complete. A source that already is the destination (audio
// taken from an earlier export's folder) is left as it is: opening it for
// writing would empty it before it is read.
bool CopyFile(const std::string& from, const std::string& to) {
  if (!IsRegularFile(from)) return false;
  if (ZOLVA::Files::SameFile(from, to)) return true;
  std::ifstream in(FromUtf8(from), std::ios::binary);
  if (!in) return false;
  std::ofstream out(FromUtf8(to), std::ios::binary | std::ios::trunc);
  if (!out) return false;
  char buffer[1 << 16];
  while (in.read(buffer, sizeof buffer) || in.gcount() > 0) {
    if (!out.write(buffer, in.gcount())) return false;
  }
  if (in.bad()) return false;
  out.close();
  return !out.fail();
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
    if (!WriteFile(unit.path, unit.document(project))) {
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
        if (CopyFile(track.audioFile, destination)) result.audioFiles.push_back(destination);
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

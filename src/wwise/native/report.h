// What a native export writes, and what it tells the script about it.
#pragma once

#include <string>
#include <vector>

#include "wwise/native/names.h"

namespace ZOLVA_Wwise::Native {

struct Rename {
  std::string type;  // "Event", "SoundBank", "WorkUnit", "SwitchGroup", "Switch", "Trigger"
  std::string from;
  std::string to;
};

struct NativeExport {
  struct File {
    std::string category;      // "Interactive Music Hierarchy", "Events", ...
    std::string relativePath;  // below the output folder, with '/'
    std::string content;
  };
  struct Audio {
    std::string source;        // the file as the schema names it
    std::string relativePath;  // "Originals/SFX/<name>"
  };
  std::vector<File> files;
  std::vector<Audio> audio;
  std::vector<std::string> warnings;  // every approximation, in the order met
  std::vector<Rename> renamed;

  // Kept as readable text: a name quoted in it may carry bytes a script
  // could not take.
  void Warn(const std::string& text) {
    bool changed = false;
    warnings.push_back(CleanText(text, changed));
  }
};

}  // namespace ZOLVA_Wwise::Native

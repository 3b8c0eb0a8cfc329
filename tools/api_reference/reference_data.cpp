#include "reference_data.h"

#include <fstream>

namespace ZOLVA::Reference {

const Field* Entry::Find(const std::string& key) const {
  for (const Field& field : fields) {
    if (field.key == key) return &field;
  }
  return nullptr;
}

const Entry* File::Find(const std::string& name) const {
  for (const Entry& entry : entries) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

bool ReadFile(const std::string& path, File& file, std::string& error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot read " + path;
    return false;
  }
  file = File{path, {}};
  int number = 0;
  for (std::string text; std::getline(in, text);) {
    ++number;
    if (!text.empty() && text.back() == '\r') text.pop_back();
    if (text.empty()) continue;
    if (text.compare(0, 2, "= ") == 0) {
      file.entries.push_back({text.substr(2), {}});
      continue;
    }
    const size_t colon = text.find(':');
    const bool indented = text.compare(0, 2, "  ") == 0;
    const bool field = !indented && colon != std::string::npos && text[0] >= 'A' && text[0] <= 'Z';
    if (file.entries.empty() || (indented && file.entries.back().fields.empty()) || (!indented && !field)) {
      error = path + ":" + std::to_string(number) +
              ": expected \"= name\", \"Key: text\" or a line of a field indented by two blanks";
      return false;
    }
    std::vector<Field>& fields = file.entries.back().fields;
    if (indented) {
      fields.back().lines.push_back({number, text.substr(2)});
    } else {
      const size_t head = text.find_first_not_of(' ', colon + 1);
      fields.push_back({text.substr(0, colon), head == std::string::npos ? "" : text.substr(head), {}});
    }
  }
  return true;
}

std::string ModuleFilePath(const std::string& module) {
  return ZOLVA_SOURCE_DIR "/src/" + module + "/" + module + "_reference.txt";
}

}  // namespace ZOLVA::Reference

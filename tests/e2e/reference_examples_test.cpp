// Every example of the script-function reference (src/<module>/<module>_reference.txt), run through the loaded
// module: each on a fresh host after its module's setup lines, with the module's JSON texts bound by name, so the
// reference fails here as soon as it and the behaviour disagree.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <map>

#include "call_script.h"
#include "reference_data.h"

namespace e2e {
namespace {

namespace Reference = ZOLVA::Reference;

struct Example {
  std::string name;
  std::vector<ScriptLine> lines;
  std::map<std::string, std::string> texts;
};

void PrintTo(const Example& example, std::ostream* out) { *out << example.name; }

void Append(std::vector<ScriptLine>& lines, const Reference::File& file, const Reference::Field* field) {
  if (!field) return;
  for (const Reference::Line& line : field->lines) lines.push_back({file.path + ":" + std::to_string(line.number), line.text});
}

std::vector<Example> Examples() {
  std::vector<Example> examples;
  for (const auto& folder : std::filesystem::directory_iterator(ZOLVA_SOURCE_DIR "/src")) {
    const std::string module = folder.path().filename().u8string();
    Reference::File file;
    std::string error;  // the reference tool's own test reports an unreadable file
    if (!Reference::ReadFile(Reference::ModuleFilePath(module), file, error)) continue;
    const Reference::Entry* header = file.Find("module");
    std::map<std::string, std::string> texts;
    for (const Reference::Entry& entry : file.entries) {
      for (const Reference::Field& field : entry.fields) {
        if (field.key.rfind("Json ", 0) != 0) continue;
        std::string& text = texts[field.key.substr(5)];
        for (const Reference::Line& line : field.lines) text += line.text + "\n";
      }
    }
    for (const Reference::Entry& entry : file.entries) {
      if (!entry.Find("Example")) continue;
      Example example{entry.name, {}, texts};
      Append(example.lines, file, header ? header->Find("Setup") : nullptr);
      Append(example.lines, file, entry.Find("Example"));
      for (char& c : example.name) c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
      examples.push_back(std::move(example));
    }
  }
  return examples;
}

class ReferenceExample : public ::testing::TestWithParam<Example> {};
TEST_P(ReferenceExample, Passes) { RunCallLines(GetParam().lines, GetParam().texts); }
INSTANTIATE_TEST_SUITE_P(Reference, ReferenceExample, ::testing::ValuesIn(Examples()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace e2e

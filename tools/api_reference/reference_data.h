// The reference kept beside each module's table, src/<module>/<module>_reference.txt:
// entries that each start with a line "= <name>" (a script function, "module" for the
// module as a whole, or "section <title>"), made of fields "Key: text" whose further
// lines are indented by two blanks. Blank lines separate; they carry nothing.
#pragma once

#include <string>
#include <vector>

namespace ZOLVA::Reference {

struct Line {
  int number;        // in the file, from 1
  std::string text;  // without the two-blank indent
};

struct Field {
  std::string key;          // "Result", "Example", "Json schema", ...
  std::string head;         // the text after "Key: " on the field's own line
  std::vector<Line> lines;  // the indented lines under it
};

struct Entry {
  std::string name;
  std::vector<Field> fields;
  const Field* Find(const std::string& key) const;
};

struct File {
  std::string path;
  std::vector<Entry> entries;
  const Entry* Find(const std::string& name) const;
};

// Reads one reference file; false, with the file and line in `error`, when it
// cannot be read or a line has none of the forms above.
bool ReadFile(const std::string& path, File& file, std::string& error);

// Where a module's reference file lies in the source tree.
std::string ModuleFilePath(const std::string& module);

}  // namespace ZOLVA::Reference

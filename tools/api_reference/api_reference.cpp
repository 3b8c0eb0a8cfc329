// Writes the script-function reference (api.md) and the Lua language-server
// definitions (zolva.lua) from the registration tables the extension
// registers from, so that neither can drift from what REAPER is given, and
// from the reference beside each table (what each function answers, reads
// and needs; its examples run in the end-to-end tests). A function without
// its Result or Fails stops the tool.
//
//   zolva_api_reference OUT_DIR [--compare DOCS_DIR] [--definitions FILE]
//
// Without options it writes both files into OUT_DIR. --compare then checks
// them against the committed copies in DOCS_DIR; --definitions checks every
// function's definition text (name|return|types|names|help, one a line, in
// registration order) against FILE. Any difference exits with status 1.
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "extension/plugin_lifecycle.h"
#include "host/api_frame.h"
#include "reference_data.h"

namespace {

namespace Reference = ZOLVA::Reference;

// The conventions every function follows, the reference's opening text.
constexpr const char* kConventionsPath = ZOLVA_SOURCE_DIR "/tools/api_reference/conventions.md";

constexpr const char* kUpdateHint =
    "To update the committed files, run: cmake --build <build folder> --target zolva_api_docs";

std::vector<std::string> SplitCommas(const std::string& text) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  size_t start = 0;
  for (;;) {
    const size_t comma = text.find(',', start);
    parts.push_back(text.substr(start, comma - start));
    if (comma == std::string::npos) return parts;
    start = comma + 1;
  }
}

bool EndsWith(const std::string& text, const char* suffix) {
  const size_t n = std::strlen(suffix);
  return text.size() >= n && text.compare(text.size() - n, n, suffix) == 0;
}

// One argument or result as Lua sees it.
struct LuaValue {
  std::string name;
  std::string type;
};

// A function as the reference presents it.
struct Function {
  const ZOLVA::ApiSpec* entry;
  std::vector<std::string> types;
  std::vector<std::string> names;
  std::vector<LuaValue> luaArgs;     // what a script passes
  std::vector<LuaValue> luaResults;  // what it gets back, the result first
};

std::string LuaType(const std::string& cType) {
  if (cType == "int" || cType == "int*") return "integer";
  if (cType == "double" || cType == "double*") return "number";
  if (cType == "bool" || cType == "bool*") return "boolean";
  return "string";  // const char*, char*
}

bool IsLuaKeyword(const std::string& name) {
  static const char* const kKeywords[] = {"and",  "break", "do",  "else", "elseif", "end",   "false",
                                          "for",  "function", "goto", "if",   "in",     "local", "nil",
                                          "not",  "or",    "repeat", "return", "then", "true",  "until",
                                          "while"};
  for (const char* keyword : kKeywords) {
    if (name == keyword) return true;
  }
  return false;
}

std::string LuaName(const std::string& name) { return IsLuaKeyword(name) ? name + "_" : name; }

// The Lua view of the arguments, following how REAPER marshals them by type
// and name: an int named after the previous argument plus "_sz" is the
// buffer size the host supplies; a char* buffer named ...Out or ...OutNeedBig
// is a result only, any other char* buffer is passed in and comes back;
// scalar pointers are results when named ...Out or ...OutOptional, both
// when named ...InOut or ...InOutOptional, and arguments otherwise.
void BuildLuaView(Function& f) {
  const ZOLVA::ApiSpec& entry = *f.entry;
  if (std::strcmp(entry.returnWord, "void") != 0) f.luaResults.push_back({"retval", LuaType(entry.returnWord)});
  for (size_t i = 0; i < f.types.size(); ++i) {
    const std::string& type = f.types[i];
    const std::string& name = f.names[i];
    if (type == "int" && i > 0 && name == f.names[i - 1] + "_sz") continue;
    const LuaValue value{LuaName(name), LuaType(type)};
    bool in = true;
    bool out = false;
    if (type == "char*") {
      out = true;
      in = !(EndsWith(name, "Out") || EndsWith(name, "OutNeedBig"));
    } else if (EndsWith(type, "*") && type != "const char*") {
      if (EndsWith(name, "InOut") || EndsWith(name, "InOutOptional")) {
        out = true;
      } else if (EndsWith(name, "Out") || EndsWith(name, "OutOptional")) {
        in = false;
        out = true;
      }
    }
    if (in) f.luaArgs.push_back(value);
    if (out) f.luaResults.push_back(value);
  }
}

struct ModuleFunctions {
  const char* name;
  std::vector<Function> functions;
  Reference::File reference;  // the Result, Options, Needs, Fails and examples of each function
};

std::vector<ModuleFunctions> CollectModules() {
  std::vector<ModuleFunctions> modules;
  for (const ZOLVA::NamedModule& named : ZOLVA::ModulesInRegistrationOrder()) {
    ModuleFunctions module{named.name, {}, {}};
    for (size_t i = 0; i < named.module->apiCount; ++i) {
      Function f{&named.module->api[i], SplitCommas(named.module->api[i].argTypes()),
                 SplitCommas(named.module->api[i].argNames), {}, {}};
      BuildLuaView(f);
      module.functions.push_back(std::move(f));
    }
    modules.push_back(std::move(module));
  }
  return modules;
}

// The definition text's four fields, joined with '|' as the tests list them.
std::string DefinitionLine(const Function& f) {
  return std::string(f.entry->publicName) + "|" + f.entry->returnWord + "|" + f.entry->argTypes() + "|" +
         f.entry->argNames + "|" + f.entry->help;
}

std::string CArguments(const Function& f) {
  std::string text;
  for (size_t i = 0; i < f.types.size(); ++i) {
    if (i) text += ", ";
    text += f.types[i] + " " + f.names[i];
  }
  return text;
}

std::string Joined(const std::vector<LuaValue>& values) {
  std::string text;
  for (const LuaValue& v : values) text += (text.empty() ? "" : ", ") + v.name;
  return text;
}

std::string LuaCall(const Function& f) {
  std::string call;
  if (!f.luaResults.empty()) call = Joined(f.luaResults) + " = ";
  return call + "reaper." + f.entry->publicName + "(" + Joined(f.luaArgs) + ")";
}

std::string FailureDescription(const Function& f) {
  if (f.entry->failureText) return std::string("`") + f.entry->failureText + "`";
  if (f.entry->failureArgument >= 0) {
    return "the argument `" + f.names[static_cast<size_t>(f.entry->failureArgument)] + "`, unchanged";
  }
  if (std::strcmp(f.entry->returnWord, "void") == 0) return "none (no result)";
  return "computed from the arguments";
}

size_t CountFunctions(const std::vector<ModuleFunctions>& modules) {
  size_t count = 0;
  for (const ModuleFunctions& m : modules) count += m.functions.size();
  return count;
}

// One option of an options text, from the line "key type default: meaning".
struct Option {
  std::string key;
  std::string type;
  std::string defaultText;
  std::string meaning;
};

bool ParseOption(const std::string& line, Option& option) {
  const size_t type = line.find(' ');
  const size_t value = type == std::string::npos ? type : line.find(' ', type + 1);
  const size_t meaning = value == std::string::npos ? value : line.find(": ", value + 1);
  if (meaning == std::string::npos) return false;
  option = {line.substr(0, type), line.substr(type + 1, value - type - 1), line.substr(value + 1, meaning - value - 1),
            line.substr(meaning + 2)};
  return true;
}

std::vector<Option> OptionsOf(const Reference::Field& field) {
  std::vector<Option> options;
  for (const Reference::Line& line : field.lines) {
    Option option;
    if (ParseOption(line.text, option)) options.push_back(option);
  }
  return options;
}

bool TakesOptions(const Function& f) {
  for (const std::string& name : f.names) {
    if (name == "options_json") return true;
  }
  return false;
}

bool StartsWith(const std::string& text, const char* prefix) { return text.rfind(prefix, 0) == 0; }

// Every registered function has its Result and Fails, and Options when it takes an
// options text; every entry names a registered function, the module or a section, and
// holds only the fields such an entry has. Writes what is missing to `errors`.
void CheckReference(const ModuleFunctions& m, std::ostream& errors) {
  const Reference::File& file = m.reference;
  std::set<std::string> classes;
  for (const Reference::Entry& entry : file.entries) {
    const Reference::Field* options = entry.Find("Options");
    if (options && !options->lines.empty()) classes.insert(options->head);
  }
  for (const Reference::Entry& entry : file.entries) {
    const Function* function = nullptr;
    for (const Function& f : m.functions) function = entry.name == f.entry->publicName ? &f : function;
    const bool section = StartsWith(entry.name, "section ");
    if (!function && !section && entry.name != "module") {
      errors << file.path << ": \"" << entry.name << "\" is no function of the module " << m.name << "\n";
    }
    for (const Reference::Field& field : entry.fields) {
      const std::string& k = field.key;
      const bool allowed = function ? k == "Result" || k == "Options" || k == "Needs" || k == "Fails" || k == "Example"
                                    : k == "Text" || StartsWith(k, "Json ") || (section ? k == "Example" : k == "Setup");
      if (!allowed) errors << file.path << ": " << entry.name << " has the field \"" << k << "\"\n";
      Option option;
      for (const Reference::Line& line : field.lines) {
        if (k == "Options" && !ParseOption(line.text, option)) {
          errors << file.path << ":" << line.number << ": expected \"key type default: meaning\"\n";
        }
      }
      if (k == "Options" && !classes.count(field.head)) {
        errors << file.path << ": " << entry.name << " names the options " << field.head << ", listed nowhere\n";
      }
    }
  }
  for (const Function& f : m.functions) {
    const Reference::Entry* entry = file.Find(f.entry->publicName);
    for (const char* key : {"Result", "Fails", "Options"}) {
      const bool needed = std::strcmp(key, "Options") != 0 || TakesOptions(f);
      if (needed && (!entry || !entry->Find(key))) {
        errors << file.path << ": " << f.entry->publicName << " has no " << key << "\n";
      }
    }
  }
}

// A field as a list item: its own line, then its lines indented under it.
void WriteItem(std::ostream& out, const char* label, const Reference::Field* field) {
  if (!field) return;
  out << "- " << label << ": " << field->head << "\n";
  for (const Reference::Line& line : field->lines) out << "  " << line.text << "\n";
}

void WriteBlock(std::ostream& out, const char* language, const Reference::Field& field) {
  out << "\n```" << language << "\n";
  for (const Reference::Line& line : field.lines) out << line.text << "\n";
  out << "```\n";
}

// The entry's free text and named JSON texts, as paragraphs and code blocks.
void WriteTexts(std::ostream& out, const Reference::Entry& entry) {
  for (const Reference::Field& field : entry.fields) {
    if (field.key == "Text") {
      // Each line a paragraph, but the rows of a table together.
      out << "\n" << field.head << "\n";
      bool row = false;
      for (const Reference::Line& line : field.lines) {
        if (line.text.empty()) continue;
        const bool nextRow = line.text[0] == '|';
        out << (row && nextRow ? "" : "\n") << line.text << "\n";
        row = nextRow;
      }
    } else if (StartsWith(field.key, "Json ")) {
      out << "\n`${" << field.key.substr(5) << "}`:\n";
      WriteBlock(out, "json", field);
    }
  }
}

void WriteExample(std::ostream& out, const Reference::Entry& entry) {
  const Reference::Field* example = entry.Find("Example");
  if (!example) return;
  out << "\nExample:\n";
  WriteBlock(out, "text", *example);
}

// The function that lists the keys of an options class.
const char* OptionsOwner(const ModuleFunctions& m, const std::string& className) {
  for (const Function& f : m.functions) {
    const Reference::Entry* entry = m.reference.Find(f.entry->publicName);
    const Reference::Field* options = entry ? entry->Find("Options") : nullptr;
    if (options && options->head == className && !options->lines.empty()) return f.entry->publicName;
  }
  return "";
}

void WriteOptions(std::ostream& out, const ModuleFunctions& m, const Reference::Field* field) {
  if (!field) return;
  out << "- Options: a JSON object text with the keys of `" << field->head << "`";
  if (field->lines.empty()) {
    out << ", listed under " << OptionsOwner(m, field->head) << "; `\"\"` or `nil` keeps every default.\n";
    return;
  }
  out << "; `\"\"` or `nil` keeps every default.\n\n  | Key | Type | Default | Meaning |\n  |---|---|---|---|\n";
  for (const Option& o : OptionsOf(*field)) {
    out << "  | `" << o.key << "` | " << o.type << " | `" << o.defaultText << "` | " << o.meaning << " |\n";
  }
  out << "\n";
}

std::string Markdown(const std::vector<ModuleFunctions>& modules, const std::string& conventions) {
  std::ostringstream out;
  out << "# ZOLVA script functions\n\n"
      << "<!-- Generated by zolva_api_reference from the extension's registration tables and the reference\n"
      << "     beside each table (src/<module>/<module>_reference.txt); do not edit.\n"
      << "     Update with: cmake --build <build folder> --target zolva_api_docs -->\n\n"
      << "The extension registers " << CountFunctions(modules) << " functions in " << modules.size()
      << " modules, listed here in registration order.\n\n"
      << conventions << "\n| Module | Functions |\n|---|---|\n";
  for (const ModuleFunctions& m : modules) {
    out << "| [" << m.name << "](#module-" << m.name << ") | " << m.functions.size() << " |\n";
  }
  for (const ModuleFunctions& m : modules) {
    out << "\n## Module `" << m.name << "`\n";
    if (const Reference::Entry* module = m.reference.Find("module")) {
      WriteTexts(out, *module);
      if (const Reference::Field* setup = module->Find("Setup")) {
        out << "\nEvery example of this module starts from this project:\n";
        WriteBlock(out, "text", *setup);
      }
    }
    for (const Function& f : m.functions) {
      const ZOLVA::ApiSpec& s = *f.entry;
      const Reference::Entry* entry = m.reference.Find(s.publicName);
      out << "\n### " << s.publicName << "\n\n"
          << s.help << "\n\n"
          << "- C: `" << s.returnWord << " " << s.publicName << "(" << CArguments(f) << ")`\n"
          << "- Lua: `" << LuaCall(f) << "`\n";
      if (!entry) continue;
      WriteItem(out, "Result", entry->Find("Result"));
      WriteOptions(out, m, entry->Find("Options"));
      WriteItem(out, "Needs", entry->Find("Needs"));
      WriteItem(out, "Fails", entry->Find("Fails"));
      out << "- Internal failure (out of memory, say): " << FailureDescription(f) << "\n";
      WriteExample(out, *entry);
    }
    for (const Reference::Entry& entry : m.reference.entries) {
      if (!StartsWith(entry.name, "section ")) continue;
      out << "\n### " << entry.name.substr(8) << "\n";
      WriteTexts(out, entry);
      WriteExample(out, entry);
    }
  }
  return out.str();
}

// A field as Lua comment lines, "---Label: head" then its lines.
void WriteComment(std::ostream& out, const char* label, const Reference::Field* field) {
  if (!field) return;
  out << "---\n---" << label << ": " << field->head << "\n";
  for (const Reference::Line& line : field->lines) out << "---" << line.text << "\n";
}

std::string LuaDefinitions(const std::vector<ModuleFunctions>& modules) {
  std::ostringstream out;
  out << "---@meta\n"
      << "-- ZOLVA script functions for the Lua language server: add this file's folder to\n"
      << "-- workspace.library. Generated by zolva_api_reference from the extension's\n"
      << "-- registration tables and the reference beside each; do not edit.\n\n"
      << "reaper = reaper or {}\n";
  for (const ModuleFunctions& m : modules) {
    out << "\n-- Module " << m.name << "\n";
    for (const Function& f : m.functions) {
      const Reference::Entry* entry = m.reference.Find(f.entry->publicName);
      const Reference::Field* options = entry ? entry->Find("Options") : nullptr;
      // An options class is declared where its keys are listed; scripts encode one to JSON.
      if (options && !options->lines.empty()) {
        out << "\n---Options for " << f.entry->publicName << ", passed as a JSON object text.\n"
            << "---@class " << options->head << "\n";
        for (const Option& o : OptionsOf(*options)) {
          out << "---@field " << o.key << "? " << o.type << " Default " << o.defaultText << ". " << o.meaning << "\n";
        }
      }
      out << "\n---" << f.entry->help << "\n";
      if (entry) {
        WriteComment(out, "Result", entry->Find("Result"));
        WriteComment(out, "Needs", entry->Find("Needs"));
        WriteComment(out, "Fails", entry->Find("Fails"));
      }
      out << "---\n---Internal failure: " << FailureDescription(f) << "\n";
      for (const LuaValue& v : f.luaArgs) {
        out << "---@param " << v.name << " " << v.type;
        if (options && v.name == "options_json") out << " JSON text of a " << options->head << "; \"\" for the defaults";
        out << "\n";
      }
      for (size_t i = 0; i < f.luaResults.size(); ++i) {
        const LuaValue& v = f.luaResults[i];
        const bool own = i == 0 && std::strcmp(f.entry->returnWord, "void") != 0;
        // A null text may reach Lua as nil.
        const bool mayBeNil = own && f.entry->failureText && std::strcmp(f.entry->failureText, "null") == 0;
        const Reference::Field* result = own && entry ? entry->Find("Result") : nullptr;
        out << "---@return " << v.type << (mayBeNil ? "?" : "") << " " << (own ? "retval" : v.name)
            << (result ? " # " + result->head : "") << "\n";
      }
      out << "function reaper." << f.entry->publicName << "(" << Joined(f.luaArgs) << ") end\n";
    }
  }
  return out.str();
}

bool ReadFile(const std::string& path, std::string& text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  return true;
}

bool WriteFile(const std::string& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary);
  out << text;
  out.close();
  if (!out) std::cerr << "cannot write " << path << "\n";
  return static_cast<bool>(out);
}

// Reports the first line where two texts differ.
bool SameText(const std::string& committedPath, const std::string& generatedPath, const std::string& generated) {
  std::string committed;
  if (!ReadFile(committedPath, committed)) {
    std::cerr << committedPath << " is missing.\n";
    return false;
  }
  if (committed == generated) return true;
  std::istringstream a(committed);
  std::istringstream b(generated);
  std::string lineA;
  std::string lineB;
  for (int line = 1;; ++line) {
    const bool moreA = static_cast<bool>(std::getline(a, lineA));
    const bool moreB = static_cast<bool>(std::getline(b, lineB));
    if (!moreA && !moreB) break;
    if (!moreA || !moreB || lineA != lineB) {
      std::cerr << committedPath << " is out of date; it differs from " << generatedPath << " at line " << line
                << ":\n  committed: " << (moreA ? lineA : "(end of file)")
                << "\n  generated: " << (moreB ? lineB : "(end of file)") << "\n";
      return false;
    }
  }
  std::cerr << committedPath << " is out of date (line endings differ from " << generatedPath << ").\n";
  return false;
}

// Compares the definition texts with a list of expected lines.
bool SameDefinitions(const std::vector<ModuleFunctions>& modules, const std::string& path) {
  std::string text;
  if (!ReadFile(path, text)) {
    std::cerr << "cannot read " << path << "\n";
    return false;
  }
  std::vector<std::string> expected;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (!line.empty()) expected.push_back(line);
  }
  std::vector<std::string> actual;
  for (const ModuleFunctions& m : modules) {
    for (const Function& f : m.functions) actual.push_back(DefinitionLine(f));
  }
  bool same = expected.size() == actual.size();
  if (!same) {
    std::cerr << "the tables hold " << actual.size() << " functions, " << path << " lists " << expected.size()
              << "\n";
  }
  int shown = 0;
  for (size_t i = 0; i < expected.size() && i < actual.size() && shown < 5; ++i) {
    if (expected[i] != actual[i]) {
      ++shown;
      std::cerr << "definition " << i + 1 << " differs:\n  listed: " << expected[i] << "\n  tables: " << actual[i]
                << "\n";
      same = false;
    }
  }
  return same;
}

}  // namespace

int main(int argc, char** argv) {
  std::string outDir;
  std::string compareDir;
  std::string definitions;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--compare" && i + 1 < argc) {
      compareDir = argv[++i];
    } else if (arg == "--definitions" && i + 1 < argc) {
      definitions = argv[++i];
    } else if (outDir.empty() && arg.rfind("--", 0) != 0) {
      outDir = arg;
    } else {
      outDir.clear();
      break;
    }
  }
  if (outDir.empty()) {
    std::cerr << "usage: zolva_api_reference OUT_DIR [--compare DOCS_DIR] [--definitions FILE]\n";
    return 2;
  }

  std::vector<ModuleFunctions> modules = CollectModules();
  std::ostringstream errors;
  std::string conventions;
  if (!ReadFile(kConventionsPath, conventions)) errors << "cannot read " << kConventionsPath << "\n";
  for (ModuleFunctions& m : modules) {
    std::string error;
    if (Reference::ReadFile(Reference::ModuleFilePath(m.name), m.reference, error)) {
      CheckReference(m, errors);
    } else {
      errors << error << "\n";
    }
  }
  if (!errors.str().empty()) {
    std::cerr << errors.str();
    return 1;
  }
  const std::string markdown = Markdown(modules, conventions);
  const std::string lua = LuaDefinitions(modules);
  if (!WriteFile(outDir + "/api.md", markdown) || !WriteFile(outDir + "/zolva.lua", lua)) return 1;

  bool ok = true;
  if (!definitions.empty()) ok = SameDefinitions(modules, definitions) && ok;
  if (!compareDir.empty()) {
    const bool markdownOk = SameText(compareDir + "/api.md", outDir + "/api.md", markdown);
    const bool luaOk = SameText(compareDir + "/zolva.lua", outDir + "/zolva.lua", lua);
    const bool docsOk = markdownOk && luaOk;
    if (!docsOk) std::cerr << kUpdateHint << "\n";
    ok = docsOk && ok;
  }
  if (ok) std::cout << CountFunctions(modules) << " functions in " << modules.size() << " modules\n";
  return ok ? 0 : 1;
}

// Writes the script-function reference (api.md) and the Lua language-server
// definitions (zolva.lua) from the registration tables the extension
// registers from, so that neither can drift from what REAPER is given.
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
#include <sstream>
#include <string>
#include <vector>

#include "extension/plugin_lifecycle.h"
#include "host/api_frame.h"

namespace {

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
};

std::vector<ModuleFunctions> CollectModules() {
  std::vector<ModuleFunctions> modules;
  for (const ZOLVA::NamedModule& named : ZOLVA::ModulesInRegistrationOrder()) {
    ModuleFunctions module{named.name, {}};
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

std::string Markdown(const std::vector<ModuleFunctions>& modules) {
  std::ostringstream out;
  out << "# ZOLVA script functions\n\n"
      << "<!-- Generated by zolva_api_reference from the extension's registration tables; do not edit.\n"
      << "     Update with: cmake --build <build folder> --target zolva_api_docs -->\n\n"
      << "The extension registers " << CountFunctions(modules) << " functions in " << modules.size()
      << " modules, listed here in registration order. Scripts call them through the `reaper` table, "
      << "for example `reaper.ZOLVA_Render_GetVersion()`; `reaper.APIExists(\"ZOLVA_Render_GetVersion\")` "
      << "tells whether the extension is loaded.\n\n"
      << "For each function: its C signature (the definition REAPER is given), the Lua call (buffer sizes "
      << "are supplied by REAPER, and outputs come back as extra results after the function's own), and "
      << "the failure value: what the function answers when it fails internally instead of its usual "
      << "result. A `null` text may reach Lua as `nil` or as an empty string; check for both.\n\n"
      << "Editor completion: `docs/zolva.lua` holds the same functions as definitions for the Lua "
      << "language server.\n\n"
      << "| Module | Functions |\n|---|---|\n";
  for (const ModuleFunctions& m : modules) {
    out << "| [" << m.name << "](#module-" << m.name << ") | " << m.functions.size() << " |\n";
  }
  for (const ModuleFunctions& m : modules) {
    out << "\n## Module `" << m.name << "`\n";
    for (const Function& f : m.functions) {
      const ZOLVA::ApiSpec& s = *f.entry;
      out << "\n### " << s.publicName << "\n\n"
          << s.help << "\n\n"
          << "- C: `" << s.returnWord << " " << s.publicName << "(" << CArguments(f) << ")`\n"
          << "- Lua: `" << LuaCall(f) << "`\n"
          << "- Returns: `" << s.returnWord << "`\n"
          << "- Arguments: " << (f.types.empty() ? "none" : "`" + CArguments(f) + "`") << "\n"
          << "- Failure value: " << FailureDescription(f) << "\n";
    }
  }
  return out.str();
}

std::string LuaDefinitions(const std::vector<ModuleFunctions>& modules) {
  std::ostringstream out;
  out << "---@meta\n"
      << "-- ZOLVA script functions for the Lua language server: add this file's folder to\n"
      << "-- workspace.library. Generated by zolva_api_reference from the extension's\n"
      << "-- registration tables; do not edit.\n\n"
      << "reaper = reaper or {}\n";
  for (const ModuleFunctions& m : modules) {
    out << "\n-- Module " << m.name << "\n";
    for (const Function& f : m.functions) {
      out << "\n---" << f.entry->help << "\n"
          << "---\n---Failure value: " << FailureDescription(f) << "\n";
      for (const LuaValue& v : f.luaArgs) out << "---@param " << v.name << " " << v.type << "\n";
      for (size_t i = 0; i < f.luaResults.size(); ++i) {
        const LuaValue& v = f.luaResults[i];
        const bool own = i == 0 && std::strcmp(f.entry->returnWord, "void") != 0;
        // A null text may reach Lua as nil.
        const bool mayBeNil = own && f.entry->failureText && std::strcmp(f.entry->failureText, "null") == 0;
        out << "---@return " << v.type << (mayBeNil ? "?" : "") << (own ? "" : " " + v.name) << "\n";
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

  const std::vector<ModuleFunctions> modules = CollectModules();
  const std::string markdown = Markdown(modules);
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

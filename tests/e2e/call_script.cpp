// Call scripts: a project set up line by line, script function calls with their
// expected results, and checks of what the calls did to the host.
//   track T1 K=v ... | item I1 T1 <position> <length> K=v ...   ($T1, $I1: their GUIDs)
//   region R1 <start> <end> <number> [GUID] | marker M1 <position> <number> [GUID]
//   set|expect <item or track> K=v ...     numeric values, or P_EXT:<name>="text"
//   set|expect project <section>:<key>="text"   ("" deletes it)
//   set|expect host K=v ...                logs, counters and settings of the simulated host
//   set|expect matrix 1:-1,2 3:1            render matrix rows: region number:track numbers
//   file <path> | remove <path>            a file below the resource folder
//   run | reload                           the "ZOLVA: Run" action | unload and load again
//   ZOLVA_Name(arg, ...) [== result, ...]   a call, and what it returns then its outputs
// Literals: "text" (\" \\ \n \t \r escapes; ${name} is replaced by a bound text),
// nil, true, false, integers, numbers with a point or exponent, and $name, bound
// by its first use in an expected list. "text"... expects a text that begins so.
#include "call_script.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace e2e {
namespace {

struct Script {
  sim::Host host;
  std::unique_ptr<Extension> extension;
  std::map<std::string, Value> vars;
  std::map<std::string, NumericValues*> values;
  std::map<std::string, ExtValues*> exts;
  std::map<std::string, MediaTrack*> tracks;
  std::string where;  // file:line, for failures
};

Value Literal(Script& sc, const std::string& s, size_t& at, std::string* unbound = nullptr, bool* prefix = nullptr) {
  while (at < s.size() && (s[at] == ' ' || s[at] == ',')) ++at;
  if (s[at] == '"') {
    std::string text;
    for (++at; s[at] != '"'; ++at) text += s[at] != '\\' ? s[at] : "\"\\\n\t\r"[std::string("\"\\ntr").find(s[++at])];
    for (size_t v; (v = text.find("${")) != std::string::npos;) {
      const size_t end = text.find('}', v);
      text.replace(v, end - v + 1, std::get<std::string>(sc.vars.at("$" + text.substr(v + 2, end - v - 2))));
    }
    const bool open = s.compare(++at, 3, "...") == 0;
    if (prefix) *prefix = open;
    return at += open ? 3 : 0, text;
  }
  const size_t end = std::min(s.find_first_of(" ,)", at), s.size());
  const std::string word = s.substr(at, end - at);
  at = end;
  if (word == "nil" || word == "true" || word == "false") return word == "nil" ? nil : Value(word == "true");
  if (word[0] == '$' && !sc.vars.count(word) && unbound) *unbound = word;
  if (word[0] == '$') return sc.vars.count(word) ? sc.vars[word] : nil;
  if (word.find_first_of(".eE") != std::string::npos) return std::stod(word);
  return std::stoi(word);
}

double Number(const Value& v) { return std::holds_alternative<int>(v) ? std::get<int>(v) : std::get<double>(v); }

std::string MatrixText(sim::Host& h) {
  std::string text;
  for (const auto& [region, row] : h.renderMatrix) {
    text += (text.empty() ? "" : " ") + std::to_string(region) + ':';
    for (size_t i = 0; i < row.size(); ++i) text += (i ? "," : "") + std::to_string(int(row[i]->values["IP_TRACKNUMBER"]));
  }
  return text;
}

void SetMatrix(sim::Host& h, const std::string& rows) {
  std::istringstream in(rows);
  for (std::string row, track; in >> row;) {
    for (std::istringstream tracks(row.substr(row.find(':') + 1)); std::getline(tracks, track, ',');) {
      const int n = std::stoi(track);
      h.renderMatrix[std::stoi(row)].push_back(n < 0 ? &h.masterTrack : h.tracks.at(n - 1).get());
    }
  }
}

// The host's logs and counters as a script sees them.
Value HostValue(sim::Host& h, const std::string& key) {
  std::string commands, message, script;
  for (const auto& c : h.commands) commands += (commands.empty() ? "" : " ") + std::to_string(c.first);
  for (const auto& m : h.messageBoxes) message = m.message + '|' + m.title + '|' + std::to_string(m.type);
  for (const auto& r : h.scriptRegistrations) {
    script = (r.add ? "add " : "remove ") + std::to_string(r.section) + ' ' + r.path + (r.commit ? " commit" : "");
  }
  const auto& libPath = h.extState[{"ZOLVA", "lib_path"}];
  const std::map<std::string, Value> v{
      {"dirty", h.dirtyMarks}, {"messages", int(h.messageBoxes.size())}, {"message", message},
      {"scripts", int(h.scriptRegistrations.size())}, {"script", script}, {"commands", commands},
      {"calls", int(h.hostCalls)}, {"lib_path", libPath.first + (libPath.second ? " (persisted)" : "")}};
  return v.at(key);
}

void SetHost(sim::Host& h, const std::string& key, const Value& value) {
  if (key == "nextScriptCommandId") h.nextScriptCommandId = std::get<int>(value);
  if (key == "resourcePathNull") h.resourcePathNull = std::get<bool>(value);
  if (key == "calls") h.hostCalls = std::get<int>(value);
  if (key == "lib_path") h.extState[{"ZOLVA", "lib_path"}] = {std::get<std::string>(value), false};
}

// "K=literal" pairs of a set or expect line on one object.
void Apply(Script& sc, bool set, const std::string& object, const std::string& rest) {
  for (size_t at = 0, eq; (eq = rest.find('=', at)) != std::string::npos;) {
    const std::string key = rest.substr(rest.rfind(' ', eq) + 1, eq - rest.rfind(' ', eq) - 1);
    const Value value = Literal(sc, rest, at = eq + 1);
    std::string* text = nullptr;
    if (object == "project") {
      ExtValues& section = sc.host.projExtState[key.substr(0, key.find(':'))];
      text = &section[key.substr(key.find(':') + 1)];
      if (set && std::get<std::string>(value).empty()) section.erase(key.substr(key.find(':') + 1));
      if (set && std::get<std::string>(value).empty()) continue;
    } else if (object == "host" && set) {
      SetHost(sc.host, key, value);
      continue;
    } else if (object == "host") {
      EXPECT_EQ(HostValue(sc.host, key), value) << sc.where << ' ' << key;
      continue;
    } else if (key.rfind("P_EXT:", 0) == 0) {
      text = &(*sc.exts.at(object))[key.substr(6)];
    }
    if (set) text ? void(*text = std::get<std::string>(value)) : void((*sc.values.at(object))[key] = Number(value));
    if (!set) {
      EXPECT_EQ(text ? Value(*text) : Value((*sc.values.at(object))[key]), text ? value : Value(Number(value)))
          << sc.where << ' ' << object << ' ' << key;
    }
  }
}

void Call(Script& sc, const std::string& line) {
  const size_t open = line.find('('), close = line.rfind(')'), arrow = line.find("==", close);
  const std::string inner = line.substr(open + 1, close - open - 1);
  Values args;
  for (size_t at = 0; inner.find_first_not_of(", ", at) != std::string::npos;) args.push_back(Literal(sc, inner, at));
  const Values actual = e2e::Call(sc.host, line.substr(0, open), args);
  if (arrow == std::string::npos) return;
  const std::string expected = line.substr(arrow + 2);
  size_t at = 0, i = 0;
  for (; expected.find_first_not_of(", ", at) != std::string::npos; ++i) {
    std::string unbound;
    bool prefix = false;
    const Value want = Literal(sc, expected, at, &unbound, &prefix);
    const Value got = i < actual.size() ? actual[i] : Value("(none)");
    if (!unbound.empty()) sc.vars[unbound] = got;
    if (!unbound.empty()) continue;
    if (prefix && std::holds_alternative<std::string>(got)) {
      EXPECT_EQ(std::get<std::string>(got).substr(0, std::get<std::string>(want).size()), std::get<std::string>(want));
    } else {
      EXPECT_TRUE(got == want) << sc.where << " result " << i << ": " << (std::get_if<std::string>(&got) ? std::get<std::string>(got) : "not that");
    }
  }
  EXPECT_EQ(i, actual.size()) << sc.where << ": number of results";
}

void Line(Script& sc, const std::string& line) {
  std::istringstream words(line);
  std::string verb, name, rest, track, guid;
  words >> verb >> name;
  const std::filesystem::path file = std::filesystem::path(sc.host.resourcePath) / name;
  double a = 0, b = 0;
  int number = 0;
  if (verb == "track" || verb == "item") {
    MediaTrack* t = verb == "track" ? sc.host.AddTrack() : nullptr;
    MediaItem* i = verb == "item" && words >> track >> a >> b ? sc.host.AddItem(sc.tracks.at(track), a, b) : nullptr;
    sc.vars["$" + name] = t ? t->guid : i->guid;
    sc.values[name] = t ? &t->values : &i->values;
    if (i) sc.exts[name] = &i->ext;
    if (t) sc.tracks[name] = t;
    verb = "set";
  } else if ((verb == "region" && words >> a >> b >> number) || (verb == "marker" && words >> a >> number)) {
    words >> guid;
    sc.vars["$" + name] = sc.host.AddMarker({verb == "region", a, verb == "region" ? b : 0.0, name, number, 0, guid});
  } else if (verb == "file") {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << "-- interface\n";
  } else if (verb == "remove") {
    std::filesystem::remove(file);
  } else if (verb == "run") {
    EXPECT_TRUE(sc.host.RunCommand(sc.host.customActions.at("ZOLVA_OPEN_COMMAND"))) << sc.where;
  } else if (verb == "reload") {
    sc.extension.reset();
    sc.extension.reset(new Extension(sc.host));
  } else if (verb != "set" && verb != "expect") {
    return Call(sc, line);
  }
  std::getline(words, rest);
  if (name == "matrix" && verb == "set") SetMatrix(sc.host, rest);
  if (name == "matrix" && verb == "expect") {
    EXPECT_EQ(" " + MatrixText(sc.host), rest == "" ? " " : rest) << sc.where;
  }
  if (name != "matrix" && (verb == "set" || verb == "expect")) Apply(sc, verb == "set", name, rest);
}

}  // namespace

void RunCallScript(const std::string& path) {
  std::ifstream in(path);
  ASSERT_TRUE(in) << path;
  Script sc;
  sc.vars["$resource"] = sc.host.resourcePath;
  sc.extension.reset(new Extension(sc.host));
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    sc.where = path + ":" + std::to_string(++number);
    if (!line.empty() && line[0] != '#') Line(sc, line);
  }
}

}  // namespace e2e

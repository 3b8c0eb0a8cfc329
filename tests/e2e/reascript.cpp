#include "reascript.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdint>
#include <algorithm>
#include <cstring>
#include <deque>
#include <stdexcept>

namespace e2e {
namespace {

constexpr int kOutBufferSize = 1024;  // what Lua hands an "...Out" string buffer

bool EndsWith(const std::string& s, const std::string& suffix) {
  return s.size() >= suffix.size() && s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::vector<std::string> Split(const std::string& text) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  size_t start = 0;
  for (size_t comma; (comma = text.find(',', start)) != std::string::npos; start = comma + 1) {
    parts.push_back(text.substr(start, comma - start));
  }
  parts.push_back(text.substr(start));
  return parts;
}

}  // namespace

LoadedExtension::LoadedExtension(sim::Host& host) {
  handle_ = dlopen(ZOLVA_MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
  if (!handle_) throw std::runtime_error(dlerror());
  entry_ = reinterpret_cast<int (*)(void*, reaper_plugin_info_t*)>(dlsym(handle_, "ReaperPluginEntry"));
  if (!entry_) throw std::runtime_error("ReaperPluginEntry not exported");
  loadResult_ = entry_(handle_, host.Record());
}

int LoadedExtension::Unload() {
  unloaded_ = true;
  return entry_(handle_, nullptr);
}

LoadedExtension::~LoadedExtension() {
  if (!unloaded_) Unload();
  dlclose(handle_);
}

Definition ParseDefinition(const std::string& text) {
  Definition d;
  std::vector<std::string> fields;
  size_t start = 0;
  for (int i = 0; i < 4; ++i) {
    const size_t end = text.find('\0', start);
    fields.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  d.returnType = fields[0];
  d.types = Split(fields[1]);
  d.names = Split(fields[2]);
  d.help = fields[3];
  return d;
}

Definition DefinitionOf(sim::Host& host, const std::string& name) {
  auto it = host.registered.find("APIdef_" + name);
  if (it == host.registered.end()) throw std::runtime_error("no definition for " + name);
  return ParseDefinition(it->second.definition);
}

Values Call(sim::Host& host, const std::string& name, const Values& args) {
  const Definition def = DefinitionOf(host, name);
  auto vararg = host.registered.find("APIvararg_" + name);
  if (vararg == host.registered.end()) throw std::runtime_error("no vararg entry for " + name);
  if (def.types.size() != def.names.size()) throw std::runtime_error("definition mismatch: " + name);

  std::vector<void*> slots(def.types.size() + 1, nullptr);
  std::deque<double> doubles;  // stable addresses for double slots
  std::deque<int> ints;
  std::deque<std::string> strings;
  std::deque<std::vector<char>> buffers;
  std::vector<size_t> outputs;
  size_t nextArg = 0;
  auto nextLuaArg = [&]() -> Value { return nextArg < args.size() ? args[nextArg++] : Value(); };

  for (size_t i = 0; i < def.types.size(); ++i) {
    const std::string& type = def.types[i];
    const std::string& pname = def.names[i];
    const bool isOut = EndsWith(pname, "Out");
    if (type == "int" && EndsWith(pname, "_sz")) {
      // The size of the buffer before it: supplied by the host, hidden from Lua.
      const std::string& prev = i > 0 ? def.names[i - 1] : std::string();
      if (pname != prev + "_sz") throw std::runtime_error("stray size argument in " + name);
      slots[i] = reinterpret_cast<void*>(static_cast<intptr_t>(buffers.back().size()));
    } else if (type == "char*") {
      Value v = isOut ? Value() : nextLuaArg();
      std::vector<char> buffer(kOutBufferSize, '\0');
      if (auto* s = std::get_if<std::string>(&v)) std::strncpy(buffer.data(), s->c_str(), buffer.size() - 1);
      buffers.push_back(std::move(buffer));
      slots[i] = buffers.back().data();
      outputs.push_back(i);
    } else if (type == "int*" || type == "double*") {
      Value v = isOut ? Value() : nextLuaArg();
      if (type == "int*") {
        ints.push_back(std::holds_alternative<int>(v) ? std::get<int>(v) : 0);
        slots[i] = &ints.back();
      } else {
        doubles.push_back(std::holds_alternative<double>(v) ? std::get<double>(v) : 0.0);
        slots[i] = &doubles.back();
      }
      outputs.push_back(i);
    } else if (type == "int") {
      Value v = nextLuaArg();
      const int n = std::holds_alternative<int>(v) ? std::get<int>(v) : 0;
      slots[i] = reinterpret_cast<void*>(static_cast<intptr_t>(n));
    } else if (type == "double") {
      Value v = nextLuaArg();
      if (auto* d = std::get_if<double>(&v)) {
        doubles.push_back(*d);
        slots[i] = &doubles.back();
      } else if (auto* n = std::get_if<int>(&v)) {
        doubles.push_back(*n);
        slots[i] = &doubles.back();
      }  // nil: a null double pointer
    } else if (type == "const char*") {
      Value v = nextLuaArg();
      if (auto* s = std::get_if<std::string>(&v)) {
        strings.push_back(*s);
        slots[i] = const_cast<char*>(strings.back().c_str());
      }
    } else {
      throw std::runtime_error("unknown type " + type + " in " + name);
    }
  }

  auto fn = reinterpret_cast<void* (*)(void**, int)>(vararg->second.value);
  void* result = fn(slots.data(), static_cast<int>(def.types.size()));

  Values out;
  if (def.returnType == "int") {
    out.emplace_back(static_cast<int>(reinterpret_cast<intptr_t>(result)));
  } else if (def.returnType == "bool") {
    out.emplace_back((reinterpret_cast<intptr_t>(result) & 0xFF) != 0);
  } else if (def.returnType == "const char*") {
    out.push_back(result ? Value(std::string(static_cast<const char*>(result))) : Value());
  } else if (def.returnType != "void") {
    throw std::runtime_error("unknown return type in " + name);
  }
  for (size_t i : outputs) {
    const std::string& type = def.types[i];
    if (type == "char*") {
      out.emplace_back(std::string(static_cast<const char*>(slots[i])));
    } else if (type == "int*") {
      out.emplace_back(*static_cast<int*>(slots[i]));
    } else {
      out.emplace_back(*static_cast<double*>(slots[i]));
    }
  }
  return out;
}

void ExpectRegistersInOrder(const std::vector<Signature>& functions) {
  sim::Host host;
  LoadedExtension ext(host);
  const auto& log = host.registerLog;
  size_t at = 0;
  while (at < log.size() && log[at].name != "API_" + functions.front().first) ++at;
  ASSERT_LE(at + 3 * functions.size(), log.size()) << functions.front().first << " not registered";
  for (const auto& [name, fields] : functions) {
    std::string definition = fields + '\0';
    std::replace(definition.begin(), definition.end(), '|', '\0');
    EXPECT_EQ(log[at++].name, "API_" + name);
    EXPECT_EQ(log[at++].name, "APIvararg_" + name);
    EXPECT_EQ(log[at].name, "APIdef_" + name);
    EXPECT_EQ(log[at++].definition, definition) << name;
  }
  ext.Unload();
  for (const auto& f : functions) EXPECT_FALSE(host.IsRegistered("API_" + f.first)) << f.first;
}

}  // namespace e2e

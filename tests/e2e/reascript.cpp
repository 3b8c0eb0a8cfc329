#include "reascript.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <stdexcept>

#include "module_loader.h"

namespace e2e {
namespace {

constexpr size_t kOutBufferSize = 1024;  // what Lua hands an "...Out" string buffer

bool EndsWith(const std::string& s, const std::string& end) {
  return s.size() >= end.size() && s.compare(s.size() - end.size(), end.size(), end) == 0;
}

// "a,b" -> {"a", "b"}; also splits a definition text into its NUL-terminated fields.
std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  for (size_t start = 0, end = 0; start < text.size(); start = end + 1) {
    end = std::min(text.find(separator, start), text.size());
    parts.push_back(text.substr(start, end - start));
  }
  return parts;
}

// Integers and booleans travel in the slot itself, widened to pointer width.
void* IntSlot(const Value& v) {
  const int n = std::holds_alternative<int>(v) ? std::get<int>(v) : std::holds_alternative<bool>(v) && std::get<bool>(v);
  return reinterpret_cast<void*>(static_cast<intptr_t>(n));
}

}  // namespace

Extension::Extension(sim::Host& host, bool load) {
  module_ = OpenModule(ZOLVA_MODULE_PATH);
  entry_ = reinterpret_cast<int (*)(void*, reaper_plugin_info_t*)>(ModuleSymbol(module_, "ReaperPluginEntry"));
  if (!entry_) throw std::runtime_error("ReaperPluginEntry is not exported");
  if (load) loadResult = entry_(module_, &host.record);
}

int Extension::Unload() { return unloaded_ = true, entry_(module_, nullptr); }

Extension::~Extension() {
  if (!unloaded_) Unload();
  CloseModule(module_);
}

Values Call(sim::Host& host, const std::string& name, const Values& args) {
  const auto fields = Split(host.registered.at("APIdef_" + name).definition, '\0');
  const auto types = Split(fields.at(1), ','), names = Split(fields.at(2), ',');
  if (types.size() != names.size()) throw std::runtime_error("types and names differ in " + name);
  std::deque<double> doubles{0.0};  // storage whose addresses stay put while it grows
  std::vector<void*> slots(types.size(), nullptr);
  slots.push_back(&doubles.front());  // one more slot, where a double result goes
  std::deque<int> ints;
  std::deque<std::string> texts;
  std::vector<size_t> outputs;
  size_t next = 0;
  for (size_t i = 0; i < types.size(); ++i) {
    const std::string& type = types[i];
    const bool out = EndsWith(names[i], "Out");
    const Value arg = out || EndsWith(names[i], "_sz") || next >= args.size() ? nil : args[next++];
    if (out || type == "char*") outputs.push_back(i);
    if (type == "int" && EndsWith(names[i], "_sz")) {  // the preceding buffer's size, hidden from Lua
      if (i == 0 || names[i] != names[i - 1] + "_sz") throw std::runtime_error("stray size in " + name);
      slots[i] = IntSlot(static_cast<int>(texts.back().size()));
    } else if (type == "int" || type == "bool") {
      slots[i] = IntSlot(arg);
    } else if (type == "double" || type == "double*") {
      if (auto* n = std::get_if<int>(&arg)) doubles.push_back(*n);
      if (auto* d = std::get_if<double>(&arg)) doubles.push_back(*d);
      if (out) doubles.push_back(0.0);  // Lua's outputs start at 0, never null
      slots[i] = out || !std::holds_alternative<std::monostate>(arg) ? &doubles.back() : nullptr;
    } else if (type == "int*") {
      ints.push_back(std::holds_alternative<int>(arg) ? std::get<int>(arg) : 0);
      slots[i] = out || !std::holds_alternative<std::monostate>(arg) ? &ints.back() : nullptr;
    } else if (type == "char*") {  // "...Out": a fresh buffer; otherwise Lua's string, updated in place
      texts.push_back(std::holds_alternative<std::string>(arg) ? std::get<std::string>(arg) : std::string());
      texts.back().resize(kOutBufferSize);
      slots[i] = texts.back().data();
    } else if (type == "const char*") {
      if (auto* s = std::get_if<std::string>(&arg)) texts.push_back(*s);
      slots[i] = std::holds_alternative<std::string>(arg) ? texts.back().data() : nullptr;
    } else {
      throw std::runtime_error("unknown type " + type + " in " + name);
    }
  }
  auto entry = reinterpret_cast<void* (*)(void**, int)>(host.registered.at("APIvararg_" + name).value);
  void* result = entry(slots.data(), static_cast<int>(types.size() + (fields[0] == "double")));
  Values values;
  if (fields[0] == "double") values.emplace_back(doubles.front());
  if (fields[0] == "int") values.emplace_back(static_cast<int>(reinterpret_cast<intptr_t>(result)));
  if (fields[0] == "bool") values.emplace_back((reinterpret_cast<intptr_t>(result) & 0xFF) != 0);
  if (fields[0] == "const char*") values.push_back(result ? Value(std::string(static_cast<char*>(result))) : nil);
  for (size_t i : outputs) {
    if (types[i] == "char*") values.emplace_back(std::string(static_cast<char*>(slots[i])));
    if (types[i] == "int*") values.emplace_back(*static_cast<int*>(slots[i]));
    if (types[i] == "double*") values.emplace_back(*static_cast<double*>(slots[i]));
  }
  return values;
}

}  // namespace e2e

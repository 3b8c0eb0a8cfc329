// Reading the V2 schema by key search. This is a forgiving scanner, not a JSON
// parser: keys are found by plain substring search, only the value kinds each
// field needs are read, and anything absent or malformed keeps its default.
#include "wwise/schema.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "json/number_text.h"

namespace ZOLVA_Wwise::Schema {
namespace {

constexpr size_t kNone = std::string_view::npos;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

size_t SkipBlanks(std::string_view text, size_t pos) {
  while (pos < text.size() && IsBlank(text[pos])) ++pos;
  return pos;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The value position after the first occurrence of "\"key\"" and a colon
// (blanks allowed around it). Only the first occurrence counts, wherever it
// stands: one inside an earlier value or nested object wins, and when no colon
// follows it there is no value at all.
size_t FindJsonKey(std::string_view text, std::string_view key) {
  std::string needle;
  needle.reserve(key.size() + 2);
  needle += '"';
  needle += key;
  needle += '"';
  const size_t at = text.find(needle);
  if (at == kNone) return kNone;
  const size_t colon = SkipBlanks(text, at + needle.size());
  if (colon >= text.size() || text[colon] != ':') return kNone;
  return SkipBlanks(text, colon + 1);
}

// One quoted string at `pos` (after blanks). \n, \r and \t become their
// control bytes; a backslash before anything else yields that character alone,
// so \u0041 reads as "u0041". On success `out` is replaced and `pos` moves past
// the closing quote; without a closing quote `out` is left alone.
bool ParseJsonString(std::string_view text, size_t& pos, std::string& out) {
  pos = SkipBlanks(text, pos);
  if (pos >= text.size() || text[pos] != '"') return false;
  std::string value;
  size_t i = pos + 1;
  while (i < text.size()) {
    // Copy the run up to the next quote or backslash whole.
    size_t stop = i;
    while (stop < text.size() && text[stop] != '"' && text[stop] != '\\') ++stop;
    value.append(text.data() + i, stop - i);
    i = stop;
    if (i >= text.size()) break;
    if (text[i] == '"') {
      out = std::move(value);
      pos = i + 1;
      return true;
    }
    if (i + 1 >= text.size()) {  // a backslash that ends the text stays a backslash
      value += '\\';
      ++i;
      break;
    }
    const char escaped = text[i + 1];
    value += escaped == 'n' ? '\n' : escaped == 'r' ? '\r' : escaped == 't' ? '\t' : escaped;
    i += 2;
  }
  pos = i;
  return false;
}

// Just past the value at `pos` (after blanks). Arrays and objects are skipped
// by counting their own bracket kind outside strings, without descending, so
// any depth costs one pass; an unbalanced one runs to the end of the text.
size_t SkipJsonValue(std::string_view text, size_t pos) {
  pos = SkipBlanks(text, pos);
  if (pos >= text.size()) return pos;
  const size_t n = text.size();
  auto skipString = [&](size_t i) {  // i at the opening quote; returns past the closing one
    for (++i; i < n; ++i) {
      if (text[i] == '\\') {
        if (i + 1 < n) ++i;
      } else if (text[i] == '"') {
        return i + 1;
      }
    }
    return n;
  };
  const char first = text[pos];
  if (first == '"') return skipString(pos);
  if (first == '[' || first == '{') {
    const char close = first == '[' ? ']' : '}';
    size_t depth = 0;
    for (size_t i = pos; i < n;) {
      if (text[i] == '"') {
        i = skipString(i);
        continue;
      }
      if (text[i] == first) ++depth;
      if (text[i] == close && --depth == 0) return i + 1;
      ++i;
    }
    return n;
  }
  if (first == 't' || first == 'n') return std::min(pos + 4, n);
  if (first == 'f') return std::min(pos + 5, n);
  size_t i = pos;
  while (i < n && (IsDigit(text[i]) || text[i] == '+' || text[i] == '-' || text[i] == '.' || text[i] == 'e' ||
                   text[i] == 'E')) {
    ++i;
  }
  return i;
}

bool MatchesWordAt(std::string_view text, size_t pos, std::string_view lowerWord) {
  if (text.size() - pos < lowerWord.size()) return false;
  for (size_t k = 0; k < lowerWord.size(); ++k) {
    char c = text[pos + k];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != lowerWord[k]) return false;
  }
  return true;
}

// Hexadecimal digits with an optional point and binary exponent ("1.8p3"),
// at `i`. Up to 60 bits of digits are kept; the rest only mark the value
// inexact, which is enough for the rounding of a double.
double ReadHexNumber(std::string_view text, size_t i) {
  uint64_t mantissa = 0;
  int64_t exponent = 0;
  bool inexact = false;
  bool afterPoint = false;
  for (; i < text.size(); ++i) {
    if (text[i] == '.' && !afterPoint) {
      afterPoint = true;
      continue;
    }
    const int digit = HexDigit(text[i]);
    if (digit < 0) break;
    if (mantissa < (uint64_t{1} << 56)) {
      mantissa = mantissa * 16 + static_cast<uint64_t>(digit);
      if (afterPoint) exponent -= 4;
    } else {
      inexact |= digit != 0;
      if (!afterPoint) exponent += 4;
    }
  }
  if (i + 1 < text.size() && (text[i] == 'p' || text[i] == 'P')) {
    size_t j = i + 1;
    const bool negative = text[j] == '-';
    if (text[j] == '+' || text[j] == '-') ++j;
    int64_t power = 0;
    for (; j < text.size() && IsDigit(text[j]); ++j) power = std::min<int64_t>(power * 10 + (text[j] - '0'), 1 << 20);
    exponent += negative ? -power : power;
  }
  exponent = std::max<int64_t>(std::min<int64_t>(exponent, 1 << 20), -(1 << 20));
  return std::ldexp(static_cast<double>(mantissa | (inexact ? 1 : 0)), static_cast<int>(exponent));
}

// The number the C library's strtod reads at `pos` in the "C" locale, whatever
// locale the process runs in: leading white space, a sign, then decimal digits
// with an optional point and exponent, hexadecimal after "0x", or inf,
// infinity and nan. Too large gives an infinity, too small zero. Nothing when
// no number starts there.
std::optional<double> ReadNumber(std::string_view text, size_t pos) {
  size_t i = pos;
  while (i < text.size() && (IsBlank(text[i]) || text[i] == '\v' || text[i] == '\f')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  const double sign = negative ? -1.0 : 1.0;
  if (i >= text.size()) return std::nullopt;
  if (MatchesWordAt(text, i, "inf")) return sign * std::numeric_limits<double>::infinity();
  if (MatchesWordAt(text, i, "nan")) return std::copysign(std::numeric_limits<double>::quiet_NaN(), sign);
  if (text[i] == '0' && i + 2 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X')) {
    const size_t digits = i + 2;
    if (HexDigit(text[digits]) >= 0 || (text[digits] == '.' && digits + 1 < text.size() && HexDigit(text[digits + 1]) >= 0)) {
      return sign * ReadHexNumber(text, digits);
    }
  }
  // The extent of the decimal form, and the power of ten of its leading
  // significant digit, which tells an overflow from an underflow.
  const size_t start = i;
  int64_t leadingPower = 0;
  bool significant = false;
  size_t digits = 0;
  for (; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
    if (significant) ++leadingPower;
    significant |= text[i] != '0';
  }
  if (i < text.size() && text[i] == '.') {
    for (++i; i < text.size() && IsDigit(text[i]); ++i, ++digits) {
      if (!significant) --leadingPower;
      significant |= text[i] != '0';
    }
  }
  if (digits == 0) return std::nullopt;
  if (i + 1 < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    size_t j = i + 1;
    const bool negativePower = text[j] == '-';
    if (text[j] == '+' || text[j] == '-') ++j;
    if (j < text.size() && IsDigit(text[j])) {
      int64_t power = 0;
      for (; j < text.size() && IsDigit(text[j]); ++j) power = std::min<int64_t>(power * 10 + (text[j] - '0'), 1 << 30);
      leadingPower += negativePower ? -power : power;
      i = j;
    }
  }
  if (!significant) return sign * 0.0;
  const std::optional<double> value = ZOLVA::Json::ReadNumber(text.substr(start, i - start));
  if (!value) return sign * (leadingPower >= 0 ? std::numeric_limits<double>::infinity() : 0.0);
  return sign * *value;
}

// A double truncated toward zero into 32 bits; out-of-range values saturate
// and NaN gives 0, where a plain cast would be undefined.
int32_t TruncateToInt32(double value) {
  if (std::isnan(value)) return 0;
  if (value <= static_cast<double>(std::numeric_limits<int32_t>::min())) return std::numeric_limits<int32_t>::min();
  if (value >= static_cast<double>(std::numeric_limits<int32_t>::max())) return std::numeric_limits<int32_t>::max();
  return static_cast<int32_t>(value);
}

// Field readers over one element's text. Each leaves its field alone when the
// key is missing or its value is not of the kind it reads.
class Element {
 public:
  explicit Element(std::string_view text) : text_(text) {}

  std::optional<std::string> String(std::string_view key) const {
    size_t pos = FindJsonKey(text_, key);
    std::string value;
    if (pos == kNone || !ParseJsonString(text_, pos, value)) return std::nullopt;
    return value;
  }
  void ReadString(std::string_view key, std::string& field) const {
    if (auto value = String(key)) field = std::move(*value);
  }
  void ReadOptional(std::string_view key, std::optional<std::string>& field) const {
    if (auto value = String(key)) field = std::move(value);
  }
  // A present key always stores its number; text that is no number gives 0.0.
  void ReadDouble(std::string_view key, double& field) const {
    const size_t pos = FindJsonKey(text_, key);
    if (pos != kNone) field = ReadNumber(text_, pos).value_or(0.0);
  }
  void ReadColor(int32_t& field) const {
    const size_t pos = FindJsonKey(text_, "color");
    if (pos == kNone) return;
    if (const auto value = ReadNumber(text_, pos)) field = TruncateToInt32(*value);
  }
  void ReadBool(std::string_view key, bool& field) const {
    const size_t pos = FindJsonKey(text_, key);
    if (pos == kNone) return;
    if (text_.compare(pos, 4, "true") == 0) field = true;
    if (text_.compare(pos, 5, "false") == 0) field = false;
  }
  // One of the exact spellings, the enumeration's values in order.
  template <typename Enum, size_t N>
  void ReadEnum(std::string_view key, const std::pair<const char*, Enum> (&spellings)[N], Enum& field) const {
    const auto value = String(key);
    if (!value) return;
    for (const auto& [spelling, number] : spellings) {
      if (*value == spelling) field = number;
    }
  }
  // Every string of the array value, in order; other values are stepped over.
  std::vector<std::string> StringArray(std::string_view key) const {
    std::vector<std::string> values;
    size_t pos = FindJsonKey(text_, key);
    if (pos == kNone || pos >= text_.size() || text_[pos] != '[') return values;
    ++pos;
    for (;;) {
      pos = SkipBlanks(text_, pos);
      if (pos >= text_.size() || text_[pos] == ']') break;
      if (text_[pos] == '"') {
        std::string value;
        if (!ParseJsonString(text_, pos, value)) break;
        values.push_back(std::move(value));
      } else {
        const size_t next = SkipJsonValue(text_, pos);
        pos = next > pos ? next : pos + 1;
      }
      pos = SkipBlanks(text_, pos);
      if (pos < text_.size() && text_[pos] == ',') ++pos;
    }
    return values;
  }

 private:
  std::string_view text_;
};

// Calls `read` with the text of each object of the array under `key` in the
// whole document. Anything between the objects is stepped over.
template <typename Read>
void ForEachElement(std::string_view json, std::string_view key, Read read) {
  size_t pos = FindJsonKey(json, key);
  if (pos == kNone || pos >= json.size() || json[pos] != '[') return;
  ++pos;
  for (;;) {
    pos = SkipBlanks(json, pos);
    if (pos >= json.size() || json[pos] == ']') return;
    if (json[pos] == '{') {
      const size_t end = SkipJsonValue(json, pos);
      read(Element(json.substr(pos, end - pos)));
      pos = end;
    } else {
      ++pos;
      if (pos < json.size() && json[pos] == ',') ++pos;
    }
  }
}

const std::pair<const char*, ConnectionType> kConnectionTypes[] = {
    {"transition", Transition}, {"stinger", Stinger}, {"blend", Blend}};
// "nextCue" has no spelling here: that value is never read from a schema.
const std::pair<const char*, TransitionType> kTransitionTypes[] = {
    {"immediate", Immediate}, {"nextGrid", NextGrid}, {"nextBar", NextBar},     {"nextBeat", NextBeat},
    {"exitCue", ExitCue},     {"entryCue", EntryCue}, {"crossFade", CrossFade}};
const std::pair<const char*, FadeCurve> kFadeCurves[] = {
    {"linear", Linear}, {"sCurve", SCurve}, {"log1", Log1}, {"log2", Log2},
    {"log3", Log3},     {"exp1", Exp1},     {"exp2", Exp2}, {"exp3", Exp3}};

}  // namespace

GroupType StringToGroupType(std::string_view text) {
  if (text == "horizontal") return Horizontal;
  if (text == "vertical") return Vertical;
  if (text == "oneshot") return OneShot;
  if (text == "random") return Random;
  if (text == "switch") return Switch;
  return OtherGroup;
}

bool ParseV2Schema(std::string_view json, V2Schema& schema) {
  schema = V2Schema();
  if (json.empty()) return false;

  ForEachElement(json, "clusters", [&](const Element& element) {
    ClusterInfo& cluster = schema.clusters.emplace_back();
    element.ReadString("guid", cluster.guid);
    element.ReadString("name", cluster.name);
    element.ReadString("parentGuid", cluster.parentGuid);
    element.ReadDouble("startTime", cluster.startTime);
    element.ReadDouble("endTime", cluster.endTime);
    element.ReadDouble("entryPoint", cluster.entryPoint);
    element.ReadDouble("exitPoint", cluster.exitPoint);
    element.ReadBool("isLoop", cluster.isLoop);
    element.ReadColor(cluster.color);
    element.ReadString("audioFile", cluster.audioFile);
  });

  ForEachElement(json, "groups", [&](const Element& element) {
    GroupInfo& group = schema.groups.emplace_back();
    element.ReadString("guid", group.guid);
    element.ReadString("name", group.name);
    element.ReadString("parentGuid", group.parentGuid);
    if (const auto type = element.String("type")) group.type = StringToGroupType(*type);
    group.childGuids = element.StringArray("childGuids");
    element.ReadColor(group.color);
    element.ReadOptional("switchGroup", group.switchGroup);
    element.ReadOptional("defaultSwitch", group.defaultSwitch);
  });

  ForEachElement(json, "connections", [&](const Element& element) {
    ConnectionInfo& connection = schema.connections.emplace_back();
    element.ReadString("guid", connection.guid);
    element.ReadString("sourceGuid", connection.sourceGuid);
    element.ReadString("targetGuid", connection.targetGuid);
    element.ReadEnum("type", kConnectionTypes, connection.type);
    element.ReadEnum("transitionType", kTransitionTypes, connection.transitionType);
    element.ReadDouble("fadeTime", connection.fadeTime);
    element.ReadEnum("fadeCurve", kFadeCurves, connection.fadeCurve);
    element.ReadOptional("triggerEvent", connection.triggerEvent);
  });

  // The first occurrence in the whole document, even one inside an element.
  const Element document(json);
  document.ReadString("projectName", schema.projectName);
  document.ReadString("exportPath", schema.exportPath);

  for (size_t i = 0; i < schema.clusters.size(); ++i) schema.clusterIndex[schema.clusters[i].guid] = i;
  for (size_t i = 0; i < schema.groups.size(); ++i) schema.groupIndex[schema.groups[i].guid] = i;
  return !schema.clusters.empty() || !schema.groups.empty();
}

}  // namespace ZOLVA_Wwise::Schema

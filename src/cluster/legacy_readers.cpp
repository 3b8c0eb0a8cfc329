#include "cluster/legacy_format.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <type_traits>

#include "json/number_text.h"
#include "json/text_scan.h"

namespace ZOLVA_Cluster::Serialize {
namespace {

constexpr std::string_view kClusterGuidKey = "cluster_guid";
constexpr size_t kMemberWindow = 500;  // members further from their entry's start are absent

bool IsWordChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// First whole-word occurrence of `key` in [from, limit), or npos. Whole word
// keeps "name" from matching inside "display_name".
size_t FindKey(std::string_view text, std::string_view key, size_t from, size_t limit) {
  limit = std::min(limit, text.size());
  while (from < limit) {
    const size_t at = text.find(key, from);
    if (at == std::string_view::npos || at + key.size() > limit) return std::string_view::npos;
    const bool startsWord = at == 0 || !IsWordChar(text[at - 1]);
    const bool endsWord = at + key.size() == text.size() || !IsWordChar(text[at + key.size()]);
    if (startsWord && endsWord) return at;
    from = at + 1;
  }
  return std::string_view::npos;
}

// A Lua string literal: its escapes are the ones ReadEscapedString reads.
std::string ReadLuaString(std::string_view text, size_t open, size_t& end) {
  bool closed = false;
  return ZOLVA::Text::ReadEscapedString(text, open, end, closed);
}

// The next double-quoted string after a key ending at `afterKey`, opening
// before `limit`. A quote right after the key closes a bracketed key
// (["name"]="...") and is not the value's.
bool ReadQuotedValue(std::string_view text, size_t afterKey, size_t limit, std::string& value) {
  const size_t open = ZOLVA::Text::FindValueQuote(text, afterKey, limit);
  if (open == std::string_view::npos) return false;
  size_t end = 0;
  value = ReadLuaString(text, open, end);
  return true;
}

// The run of characters from `allowed` that starts at the first such
// character after the key, if that start lies before `limit`.
std::string_view ReadRun(std::string_view text, size_t afterKey, size_t limit, std::string_view allowed) {
  const size_t start = text.substr(0, limit).find_first_of(allowed, afterKey);
  if (start == std::string_view::npos) return {};
  size_t end = text.find_first_not_of(allowed, start);
  if (end == std::string_view::npos) end = text.size();
  return text.substr(start, end - start);
}

// A field keeps its value when the run does not convert.
template <typename T>
void ParseRun(std::string_view run, T& field) {
  if constexpr (std::is_floating_point_v<T>) {
    if (const std::optional<double> value = ZOLVA::Json::ReadNumber(run)) field = *value;
  } else if (const std::optional<T> value = ZOLVA::Text::ParseInteger<T>(run)) {
    field = *value;
  }
}

// True when the word "true" follows the key, past a closing quote, bracket,
// '=' and blanks.
bool ReadTrueWord(std::string_view text, size_t afterKey) {
  const size_t start = text.find_first_not_of("\"]= \t\r\n", afterKey);
  return start != std::string_view::npos && text.substr(start, 4) == "true" &&
         (start + 4 == text.size() || !IsWordChar(text[start + 4]));
}

// Index of the brace closing the one at `open` (quoted strings skipped), or
// the text's end when it is never closed.
size_t MatchingBrace(std::string_view text, size_t open) {
  size_t depth = 0;
  for (size_t i = open; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') {
      size_t end = 0;
      ReadLuaString(text, i, end);
      i = end - 1;
    } else if (c == '{') {
      ++depth;
    } else if (c == '}' && --depth == 0) {
      return i;
    }
  }
  return text.size();
}

// Reads one cluster entry starting at the "cluster_guid" key at `start`.
bool ReadClusterEntry(std::string_view text, size_t start, ClusterData& cluster) {
  const size_t limit = std::min(text.size(), start + kMemberWindow);
  if (!ReadQuotedValue(text, start + kClusterGuidKey.size(), limit, cluster.guid) ||
      cluster.guid.empty()) {
    return false;
  }
  auto member = [&](std::string_view key, size_t& afterKey) {
    const size_t at = FindKey(text, key, start, limit);
    afterKey = at == std::string_view::npos ? 0 : at + key.size();
    return at != std::string_view::npos;
  };
  constexpr std::string_view kDigits = "0123456789";
  size_t after = 0;
  if (member("cluster_id", after)) ParseRun(ReadRun(text, after, limit, kDigits), cluster.cluster_id);
  if (member("name", after)) ReadQuotedValue(text, after, limit, cluster.name);
  if (member("color", after)) ParseRun(ReadRun(text, after, limit, "0123456789-"), cluster.color);
  if (member("c_start", after)) ParseRun(ReadRun(text, after, limit, "0123456789-."), cluster.start_time);
  if (member("c_end", after)) ParseRun(ReadRun(text, after, limit, "0123456789-."), cluster.end_time);
  if (member("region_guid", after)) ReadQuotedValue(text, after, limit, cluster.region_guid);
  if (member("is_loop", after)) cluster.is_loop = ReadTrueWord(text, after);
  return true;
}

// One item table spanning [begin, end]: an association when it names an item_guid.
void ReadItemEntry(std::string_view text, size_t begin, size_t end,
                   std::unordered_map<std::string, ItemAssociation>& items) {
  ItemAssociation item;
  const size_t guidAt = FindKey(text, "item_guid", begin, end);
  if (guidAt == std::string_view::npos ||
      !ReadQuotedValue(text, guidAt + 9, end, item.item_guid) || item.item_guid.empty()) {
    return;
  }
  const size_t takeAt = FindKey(text, "item_take_guid", begin, end);
  if (takeAt != std::string_view::npos) ReadQuotedValue(text, takeAt + 14, end, item.item_take_guid);
  const size_t timeAt = FindKey(text, "time_modified", begin, end);
  if (timeAt != std::string_view::npos) {
    ParseRun(ReadRun(text, timeAt + 13, end, "0123456789-"), item.time_modified);
  }
  std::string key = item.item_guid;
  items.emplace(std::move(key), std::move(item));
}

// The item tables directly inside the cluster value spanning [open, close].
void ReadClusterItems(std::string_view text, size_t open, size_t close,
                      std::unordered_map<std::string, ItemAssociation>& items) {
  for (size_t i = open + 1; i < close; ++i) {
    if (text[i] == '"') {
      size_t end = 0;
      ReadLuaString(text, i, end);
      i = end - 1;
    } else if (text[i] == '{') {
      const size_t entryEnd = std::min(MatchingBrace(text, i), close);
      ReadItemEntry(text, i, entryEnd, items);
      i = entryEnd;
    }
  }
}

}  // namespace

bool ParseLegacyClusterTable(std::string_view text, std::vector<ClusterData>& clusters) {
  clusters.clear();
  size_t pos = 0;
  while (text.size() - pos >= kClusterGuidKey.size()) {
    const size_t start = FindKey(text, kClusterGuidKey, pos, text.size());
    if (start == std::string_view::npos) break;
    ClusterData cluster;
    if (ReadClusterEntry(text, start, cluster)) clusters.push_back(std::move(cluster));
    pos = start + kClusterGuidKey.size();
  }
  return !clusters.empty();
}

bool ParseLegacyClusterItems(std::string_view text, LegacyItemMap& items) {
  items.clear();
  bool found = false;
  size_t pos = 0;
  while (true) {
    const size_t bracket = text.find("[\"", pos);
    if (bracket == std::string_view::npos) break;
    size_t after = 0;
    std::string clusterGuid = ReadLuaString(text, bracket + 1, after);
    pos = after;
    const size_t equals = text.find_first_not_of("] \t\r\n", after);
    if (equals == std::string_view::npos || text[equals] != '=') continue;
    const size_t open = text.find_first_not_of(" \t\r\n", equals + 1);
    if (open == std::string_view::npos || text[open] != '{') continue;
    const size_t close = MatchingBrace(text, open);
    ReadClusterItems(text, open, close, items[clusterGuid]);
    found = true;
    pos = close;
  }
  return found;
}

}  // namespace ZOLVA_Cluster::Serialize

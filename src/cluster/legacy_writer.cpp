#include "cluster/legacy_format.h"

#include "json/json_text.h"

namespace ZOLVA_Cluster::Serialize {
namespace {

// A Lua string literal escapes the same five bytes a JSON string does (tab,
// line feed, carriage return, quote, backslash) and keeps every other byte.
void EscapeLuaString(std::string& out, std::string_view text) { ZOLVA::Json::AppendString(out, text); }

// "[<escaped key>]={<number>}"
void AppendReference(std::string& out, std::string_view key, size_t number) {
  out += '[';
  EscapeLuaString(out, key);
  out += "]={";
  out += std::to_string(number);
  out += '}';
}

}  // namespace

std::string SerializeLegacyClusterItems(const std::vector<ClusterData>& clusters) {
  std::vector<const ClusterData*> numbered;  // table numbers 2, 3, ... in this order
  size_t itemCount = 0;
  for (const ClusterData& cluster : clusters) {
    if (cluster.items.empty()) continue;
    numbered.push_back(&cluster);
    itemCount += cluster.items.size();
  }

  std::string out;
  // Room for the item tables too, so appending them at the end moves nothing.
  out.reserve(64 + 64 * numbered.size() + 160 * itemCount);
  out += "{{";
  for (size_t i = 0; i < numbered.size(); ++i) {
    if (i > 0) out += ',';
    AppendReference(out, numbered[i]->guid, 2 + i);
  }
  out += ",}";

  // One walk over the items: their references go into the cluster tables
  // and, numbered alike, their own tables into a second text appended after.
  std::string itemTables;
  itemTables.reserve(112 * itemCount);
  size_t nextItemNumber = 2 + numbered.size();
  for (const ClusterData* cluster : numbered) {
    out += ",{";
    bool first = true;
    for (const auto& entry : cluster->items) {
      const ItemAssociation& item = entry.second;
      if (!first) out += ',';
      first = false;
      AppendReference(out, item.item_guid, nextItemNumber++);
      itemTables += ",{[\"item_guid\"]=";
      EscapeLuaString(itemTables, item.item_guid);
      itemTables += ",[\"time_modified\"]=";
      itemTables += std::to_string(item.time_modified);
      itemTables += ',';
      if (!item.item_take_guid.empty()) {
        itemTables += "[\"item_take_guid\"]=";
        EscapeLuaString(itemTables, item.item_take_guid);
        itemTables += ',';
      }
      itemTables += '}';
    }
    out += ",}";
  }
  out += itemTables;
  out += '}';
  return out;
}

}  // namespace ZOLVA_Cluster::Serialize

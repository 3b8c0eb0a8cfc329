#include "render/item_cache.h"

#include <chrono>
#include <cstring>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "host/host_values.h"
#include "json/json_text.h"
#include "render/cluster_refs.h"

namespace ZOLVA_Render {
namespace {

// The cache and the texts handed out from it, behind one lock.
std::mutex g_cacheMutex;
std::unordered_map<std::string, std::vector<ClusterItemInfo>> g_itemCache;
bool g_cacheValid = false;
double g_cacheBuildTime = 0.0;  // milliseconds, microsecond resolution
uint64_t g_totalCachedItems = 0;
std::string g_itemsText;
std::string g_statsText;

using Lock = std::lock_guard<std::mutex>;

void ResetLocked() {
  g_itemCache.clear();
  g_cacheValid = false;
  g_cacheBuildTime = 0.0;
  g_totalCachedItems = 0;
}

constexpr size_t kExtBufferSize = 8192;

bool HostCanBuild() {
  return CountMediaItems && GetMediaItem && GetSetMediaItemInfo_String && GetMediaItemInfo_Value;
}

ClusterItemInfo DescribeItem(MediaItem* item) {
  ClusterItemInfo info;
  info.item = item;
  info.position = GetMediaItemInfo_Value(item, "D_POSITION");
  info.length = GetMediaItemInfo_Value(item, "D_LENGTH");
  info.take_index = static_cast<int32_t>(GetMediaItemInfo_Value(item, "I_CURTAKE"));
  info.item_guid = ZOLVA::GuidOf(GetSetMediaItemInfo_String, item);
  return info;
}

}  // namespace

void BuildItemClusterCache() {
  Lock lock(g_cacheMutex);
  ResetLocked();
  const auto start = std::chrono::steady_clock::now();
  if (HostCanBuild()) {
    std::vector<char> buffer(kExtBufferSize, '\0');
    const int count = CountMediaItems(nullptr);
    for (int i = 0; i < count; ++i) {
      MediaItem* item = GetMediaItem(nullptr, i);
      if (!item) continue;
      buffer[0] = '\0';
      if (!GetSetMediaItemInfo_String(item, "P_EXT:ZOLVA", buffer.data(), false)) continue;
      buffer.back() = '\0';
      const std::vector<std::string> clusters = ExtractClusterGuids(std::string_view(buffer.data()));
      if (clusters.empty()) continue;
      const ClusterItemInfo info = DescribeItem(item);
      for (const std::string& cluster : clusters) {
        g_itemCache[cluster].push_back(info);
        ++g_totalCachedItems;
      }
    }
  }
  const auto elapsed = std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() - start);
  g_cacheBuildTime = static_cast<double>(elapsed.count() / 1000) / 1000.0;
  g_cacheValid = true;
}

void InvalidateItemCache() {
  Lock lock(g_cacheMutex);
  ResetLocked();
}

bool IsCacheValid() {
  Lock lock(g_cacheMutex);
  return g_cacheValid;
}

const char* GetClusterItems(const char* cluster_guid) {
  Lock lock(g_cacheMutex);
  if (!cluster_guid || !*cluster_guid || !g_cacheValid) return nullptr;
  const auto found = g_itemCache.find(cluster_guid);
  if (found == g_itemCache.end() || found->second.empty()) return nullptr;
  std::string& text = g_itemsText;
  text = "[";
  for (const ClusterItemInfo& info : found->second) {
    if (text.size() > 1) text += ',';
    text += "{\"item_guid\":\"";
    text += info.item_guid;  // written as the host gave it, not escaped
    text += "\",\"position\":";
    ZOLVA::Json::AppendNumber(text, info.position);
    text += ",\"length\":";
    ZOLVA::Json::AppendNumber(text, info.length);
    text += ",\"take_index\":";
    text += std::to_string(info.take_index);
    text += '}';
  }
  text += ']';
  return text.c_str();
}

const char* GetCacheStats() {
  Lock lock(g_cacheMutex);
  std::string& text = g_statsText;
  text = "{\"valid\":";
  text += g_cacheValid ? "true" : "false";
  text += ",\"cluster_count\":" + std::to_string(g_itemCache.size());
  text += ",\"item_count\":" + std::to_string(g_totalCachedItems);
  text += ",\"build_time_ms\":";
  ZOLVA::Json::AppendNumber(text, g_cacheBuildTime);
  text += '}';
  return text.c_str();
}

}  // namespace ZOLVA_Render

#include "render/region_matrix.h"

#include <mutex>
#include <string>
#include <vector>

#include "host/reaper_api.h"
#include "json/text_scan.h"
#include "render/matrix_text.h"

namespace ZOLVA_Render {
namespace {

// The last snapshot text, handed to the script that asked for it.
std::mutex g_matrixMutex;
std::string g_regionMatrixCache;

constexpr int kAdd = 1;
constexpr int kRemove = -1;

bool HostHasMatrix() {
  return CountProjectMarkers && EnumProjectMarkers2 && EnumRegionRenderMatrix && SetRegionRenderMatrix;
}

// Calls visit(displayed number) for each region, in enumeration order.
template <typename Visit>
void ForEachRegion(Visit&& visit) {
  const int count = CountProjectMarkers(nullptr, nullptr, nullptr);
  for (int i = 0; i < count; ++i) {
    bool isRegion = false;
    double position = 0.0, regionEnd = 0.0;
    const char* name = nullptr;
    int number = 0;
    if (EnumProjectMarkers2(nullptr, i, &isRegion, &position, &regionEnd, &name, &number) <= 0) break;
    if (isRegion) visit(number);
  }
}

// The snapshot's track number: 1-based, the host's -1 for the master track.
// Any other number below 1 names no track.
MediaTrack* TrackFromNumber(int number) {
  if (number == -1 || number == 0) return GetMasterTrack ? GetMasterTrack(nullptr) : nullptr;
  return number > 0 && GetTrack ? GetTrack(nullptr, number - 1) : nullptr;
}

// The displayed number of the region with that GUID, if it is a region.
bool RegionNumberOfGuid(const std::string& guid, int& number) {
  const std::string key = "MARKER_INDEX_FROM_GUID:" + guid;
  char answer[64] = {};
  if (!GetSetProjectInfo_String(nullptr, key.c_str(), answer, false)) return false;
  answer[sizeof answer - 1] = '\0';
  const std::optional<int> index = ZOLVA::Text::ParseInteger<int>(answer);
  if (!index) return false;
  bool isRegion = false;
  double position = 0.0, regionEnd = 0.0;
  const char* name = nullptr;
  return EnumProjectMarkers2(nullptr, *index, &isRegion, &position, &regionEnd, &name, &number) > 0 && isRegion;
}

}  // namespace

const char* CacheRegionRenderMatrix() {
  std::lock_guard<std::mutex> lock(g_matrixMutex);
  g_regionMatrixCache = "{\"regions\":[";
  if (HostHasMatrix() && GetMediaTrackInfo_Value) {
    bool first = true;
    ForEachRegion([&](int number) {
      MatrixRow row{number, {}};
      for (int j = 0; MediaTrack* track = EnumRegionRenderMatrix(nullptr, number, j); ++j) {
        row.tracks.push_back(static_cast<int>(GetMediaTrackInfo_Value(track, "IP_TRACKNUMBER")));
      }
      if (row.tracks.empty()) return;
      if (!first) g_regionMatrixCache += ',';
      first = false;
      AppendMatrixRow(g_regionMatrixCache, row);
    });
  }
  g_regionMatrixCache += "]}";
  return g_regionMatrixCache.c_str();
}

void ReleaseMatrixSnapshot() {
  std::lock_guard<std::mutex> lock(g_matrixMutex);
  std::string().swap(g_regionMatrixCache);
}

void ClearRenderMatrix() {
  if (!HostHasMatrix()) return;
  ForEachRegion([](int number) {
    // Counting first bounds the removals, so a host that refused one could
    // not keep this loop turning.
    int entries = 0;
    while (EnumRegionRenderMatrix(nullptr, number, entries)) ++entries;
    for (int k = 0; k < entries; ++k) {
      MediaTrack* track = EnumRegionRenderMatrix(nullptr, number, 0);
      if (!track) break;
      SetRegionRenderMatrix(nullptr, number, track, kRemove);
    }
  });
}

void RestoreRegionMatrix(const char* cache_json) {
  if (!cache_json || !*cache_json || !HostHasMatrix()) return;
  ClearRenderMatrix();
  for (const MatrixRow& row : ReadMatrixSnapshot(cache_json)) {
    for (int number : row.tracks) {
      if (MediaTrack* track = TrackFromNumber(number)) SetRegionRenderMatrix(nullptr, row.region, track, kAdd);
    }
  }
}

void AddRegionsByGuid(const char* json_guids) {
  if (!json_guids || !HostHasMatrix() || !GetSetProjectInfo_String || !GetMasterTrack) return;
  MediaTrack* master = GetMasterTrack(nullptr);
  for (const std::string& guid : QuotedTexts(json_guids)) {
    int number = 0;
    if (!guid.empty() && RegionNumberOfGuid(guid, number)) SetRegionRenderMatrix(nullptr, number, master, kAdd);
  }
}

void AddRegionIndices(const char* json_indices) {
  if (!json_indices || !SetRegionRenderMatrix || !GetMasterTrack) return;
  const std::vector<int32_t> numbers = ZOLVA::Text::ScanIntegerList(json_indices);
  MediaTrack* master = GetMasterTrack(nullptr);
  for (int32_t number : numbers) SetRegionRenderMatrix(nullptr, number, master, kAdd);
}

}  // namespace ZOLVA_Render

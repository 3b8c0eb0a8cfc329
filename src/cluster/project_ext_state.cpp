#include "cluster/project_ext_state.h"

#include <cstring>
#include <limits>
#include <vector>

#include "host/reaper_api.h"

namespace ZOLVA_Cluster {
namespace {

constexpr size_t kLargestBuffer = static_cast<size_t>(std::numeric_limits<int>::max());

// The whole value: the host fills a buffer only up to its size and reports
// presence rather than length, so a buffer filled to the brim is grown and
// the value read again until it ends short of the brim.
std::string ReadWholeProjectValue(const char* key) {
  size_t size = kClusterDataBufferSize;
  while (true) {
    std::string value = ReadProjectValue(key, size);
    if (value.size() + 1 < size || size > kLargestBuffer / 2) return value;
    size *= 2;
  }
}

}  // namespace

std::string ReadProjectValue(const char* key, size_t bufferSize) {
  if (!GetProjExtState || bufferSize == 0) return std::string();
  std::vector<char> buffer(bufferSize, '\0');
  GetProjExtState(nullptr, kExtSection, key, buffer.data(), static_cast<int>(bufferSize));
  buffer.back() = '\0';
  return std::string(buffer.data(), std::strlen(buffer.data()));
}

void WriteProjectValue(const char* key, const std::string& value) {
  if (SetProjExtState) SetProjExtState(nullptr, kExtSection, key, value.c_str());
}

void WriteClusterData(const std::string& text) {
  const std::string stored = ReadWholeProjectValue(kClusterDataKey);
  if (stored.size() > kClusterDataBufferSize - 1 && stored != text) {
    WriteProjectValue(kClusterDataOverflowKey, stored);
  }
  WriteProjectValue(kClusterDataKey, text);
}

void MarkCurrentProjectDirty() {
  if (MarkProjectDirty) MarkProjectDirty(nullptr);
}

}  // namespace ZOLVA_Cluster

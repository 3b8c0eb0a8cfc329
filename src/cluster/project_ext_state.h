// The cluster module's values in the current project's extension state,
// section "ZOLVA".
#pragma once

#include <cstddef>
#include <string>

namespace ZOLVA_Cluster {

inline constexpr char kExtSection[] = "ZOLVA";
inline constexpr char kClusterDataKey[] = "CLUSTER_DATA_V2";
inline constexpr char kClusterDataOverflowKey[] = "CLUSTER_DATA_V2_OVERFLOW";
inline constexpr char kClusterItemsKey[] = "CLUSTER_ITEMS";
inline constexpr char kClusterTableKey[] = "CLUSTER_TABLE";

// The fixed read buffers: a value is seen only up to bufferSize - 1 characters.
inline constexpr size_t kClusterDataBufferSize = 32768;
inline constexpr size_t kClusterTableBufferSize = 32768;
inline constexpr size_t kClusterItemsBufferSize = 65536;
inline constexpr size_t kLegacyProbeBufferSize = 4096;

// The value read into a zeroed buffer of `bufferSize` bytes, so at most
// bufferSize - 1 characters of it; empty when absent or the host lacks the call.
std::string ReadProjectValue(const char* key, size_t bufferSize);

void WriteProjectValue(const char* key, const std::string& value);

// Writes "CLUSTER_DATA_V2". A stored value too long for the fixed read buffer
// cannot be loaded, so rather than destroy it, when it differs from `text`
// it is first kept whole under "CLUSTER_DATA_V2_OVERFLOW".
void WriteClusterData(const std::string& text);

void MarkCurrentProjectDirty();

}  // namespace ZOLVA_Cluster

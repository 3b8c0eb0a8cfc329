// The stored form of the whole registry: a Base64 text holding a small
// container ("VLOZ" magic, version 1, record count) whose every record is a
// cluster, Base64-encoded on its own and made of tagged sections. A reader
// can thus drop one damaged record and skip sections it does not know.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cluster/cluster_data.h"

namespace ZOLVA_Cluster::Serialize {

// The container text for the clusters, in list order. Strings longer than
// 65,535 bytes keep only the low 16 bits of their length (not representable).
std::string SerializeAllClusters(const std::vector<ClusterData>& clusters);

// Replaces `clusters` with every record of the text that decodes completely,
// in stored order. False (and `clusters` empty) only when the container is
// shorter than its magic, has another magic, or a version above 1; damaged
// records are dropped without failing the call.
bool DeserializeAllClusters(std::string_view text, std::vector<ClusterData>& clusters);

}  // namespace ZOLVA_Cluster::Serialize

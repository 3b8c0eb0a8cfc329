// Random clusters for round-trip checks, and a field-by-field comparison
// that tells apart doubles by their bits (NaN, -0.0).
#pragma once

#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <tuple>

#include "cluster/cluster_data.h"

namespace cluster_samples {

using ZOLVA_Cluster::ClusterData;
using ZOLVA_Cluster::ItemAssociation;

inline std::string RandomBytes(std::mt19937_64& rng, size_t maxLength) {
  std::string s(rng() % (maxLength + 1), '\0');
  for (char& c : s) c = static_cast<char>(rng() & 0xFF);  // any byte, NUL and UTF-8 included
  return s;
}

inline double RandomDouble(std::mt19937_64& rng) {
  static const double kExtremes[] = {0.0, -0.0, 1e308, -1e-308, 5e-324, 1234.5678,
                                     std::numeric_limits<double>::infinity(),
                                     std::numeric_limits<double>::quiet_NaN()};
  if (rng() % 2) return kExtremes[rng() % 8];
  const uint64_t bits = rng();
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

inline ClusterData RandomCluster(std::mt19937_64& rng, size_t maxItems) {
  ClusterData c;
  c.guid = RandomBytes(rng, 40);
  c.cluster_id = static_cast<uint32_t>(rng());
  c.name = RandomBytes(rng, 60);
  c.color = static_cast<int32_t>(rng());  // negative colours too
  c.start_time = RandomDouble(rng);
  c.end_time = RandomDouble(rng);
  c.entry_point = RandomDouble(rng);
  c.exit_point = RandomDouble(rng);
  c.is_loop = rng() % 2;
  c.region_guid = RandomBytes(rng, 40);
  c.region_aux = static_cast<uint32_t>(rng());
  c.link_guid = RandomBytes(rng, 40);
  const size_t itemCount = rng() % (maxItems + 1);
  for (size_t i = 0; i < itemCount; ++i) {
    const ItemAssociation item{RandomBytes(rng, 40), RandomBytes(rng, 40), static_cast<int64_t>(rng()),
                               RandomDouble(rng), RandomDouble(rng)};
    c.items.emplace(item.item_guid, item);
  }
  c.time_created = static_cast<int64_t>(rng());
  c.time_modified = static_cast<int64_t>(rng());
  return c;
}

// Every field, doubles by their bits so that NaN and -0.0 count too.
inline std::string Fingerprint(const ItemAssociation& i) {
  std::string f = i.item_guid + '\0' + i.item_take_guid + '\0';
  f.append(reinterpret_cast<const char*>(&i.time_modified), 8);
  f.append(reinterpret_cast<const char*>(&i.position), 8).append(reinterpret_cast<const char*>(&i.length), 8);
  return f;
}

inline bool SameCluster(const ClusterData& a, const ClusterData& b) {
  const double at[] = {a.start_time, a.end_time, a.entry_point, a.exit_point};
  const double bt[] = {b.start_time, b.end_time, b.entry_point, b.exit_point};
  if (std::tie(a.guid, a.cluster_id, a.name, a.color, a.is_loop, a.region_guid, a.region_aux, a.link_guid,
               a.time_created, a.time_modified) !=
          std::tie(b.guid, b.cluster_id, b.name, b.color, b.is_loop, b.region_guid, b.region_aux,
                   b.link_guid, b.time_created, b.time_modified) ||
      std::memcmp(at, bt, sizeof at) != 0 || a.items.size() != b.items.size()) {
    return false;
  }
  for (const auto& [key, item] : a.items) {
    const auto other = b.items.find(key);
    if (other == b.items.end() || Fingerprint(item) != Fingerprint(other->second)) return false;
  }
  return true;
}

}  // namespace cluster_samples

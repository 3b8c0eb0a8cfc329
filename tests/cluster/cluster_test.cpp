// The cluster registry and its stored form: Base64, the binary container, indices and the overflow key.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <map>
#include <random>
#include <tuple>

#include "cluster/base64.h"
#include "cluster/binary_format.h"
#include "cluster/cluster_state.h"
#include "cluster/persistence.h"
#include "cluster/project_ext_state.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Cluster;
using namespace ZOLVA_Cluster::Serialize;

std::vector<uint8_t> Bytes(std::string_view s) { return {s.begin(), s.end()}; }

ClusterData Cluster(const std::string& guid, const std::vector<ItemAssociation>& items = {}) {
  ClusterData c;
  c.guid = guid;
  c.name = guid + guid;  // with a one-character GUID, an 87-byte record whose text ends without padding
  for (const auto& item : items) c.items.emplace(item.item_guid, item);
  return c;
}

TEST(Base64, DecodesInGroupsOfFourWithItsOwnLeniencies) {
  const std::pair<std::string, std::string> cases[] = {
      {"", ""}, {"QQ==", "A"}, {"QUI=", "AB"}, {"QUJD", "ABC"}, {"QQ==QUJD", "AABC"}, {"QUJ", ""}, {"QUJDR", ""},
      {"QUJD*UJD", "ABC"}, {"QUJDQ*JD", "ABC"},  // invalid first or second character ends decoding
      {"QU*D", "A@\x03"}, {"QUJ*", "AB@"},       // invalid third or fourth counts as zero bits
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(Base64Decode(text), Bytes(bytes)) << text;
}

uint64_t Bits(double value) {
  uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// Every field of the cluster, doubles by their bits (so NaN and -0.0 count too), items in key order.
auto Fields(const ClusterData& c) {
  std::map<std::string, std::tuple<std::string, std::string, int64_t, uint64_t, uint64_t>> items;
  for (const auto& [key, i] : c.items) {
    items[key] = {i.item_guid, i.item_take_guid, i.time_modified, Bits(i.position), Bits(i.length)};
  }
  return std::tuple(c.guid, c.cluster_id, c.name, c.color, Bits(c.start_time), Bits(c.end_time), Bits(c.entry_point),
                    Bits(c.exit_point), c.is_loop, c.region_guid, c.region_aux, c.link_guid, c.time_created,
                    c.time_modified, items);
}

TEST(BinaryFormat, RandomRegistriesRoundTripExactly) {
  std::mt19937_64 rng(1234);
  const double kExtremes[] = {0.0, -0.0, 1e308, -1e-308, 5e-324, HUGE_VAL, -HUGE_VAL, NAN};
  auto real = [&] {
    const uint64_t bits = rng();
    double value = kExtremes[bits % 8];
    if (bits & 8) std::memcpy(&value, &bits, sizeof value);  // or any bit pattern at all
    return value;
  };
  auto text = [&] {
    std::string s(rng() % 41, '\0');
    for (char& ch : s) ch = static_cast<char>(rng());  // NUL and invalid UTF-8 included
    return s;
  };
  for (int round = 0; round < 40; ++round) {
    std::vector<ClusterData> clusters(rng() % 30);
    for (ClusterData& c : clusters) {
      c = {text(), uint32_t(rng()), text(), int32_t(rng()), real(), real(), real(), real(), rng() % 2 == 1,
           text(), uint32_t(rng()), text(), {}, int64_t(rng()), int64_t(rng())};
      for (size_t n = rng() % 26; n > 0; --n) {
        const ItemAssociation item{text(), text(), int64_t(rng()), real(), real()};
        c.items.emplace(item.item_guid, item);
      }
    }
    std::vector<ClusterData> back;
    ASSERT_TRUE(DeserializeAllClusters(SerializeAllClusters(clusters), back));
    ASSERT_EQ(back.size(), clusters.size());
    for (size_t i = 0; i < back.size(); ++i) EXPECT_EQ(Fields(back[i]), Fields(clusters[i])) << round;
  }
}

std::string U32(size_t v) { return {char(v), char(v >> 8), char(v >> 16), char(v >> 24)}; }

// A container text announcing `count` records and holding the given record texts, less its last `cut` bytes.
std::string Container(const std::vector<std::string>& records, uint32_t count, char version = 1, size_t cut = 0) {
  std::string bytes = std::string("VLOZ") + version + '\0' + U32(count);
  for (const std::string& r : records) bytes += U32(r.size()) + r;
  bytes.resize(bytes.size() - cut);
  return Base64Encode(Bytes(bytes));
}

// The record text of a cluster, after `change` to its raw bytes.
std::string Record(const std::string& guid, void (*change)(std::vector<uint8_t>&) = [](std::vector<uint8_t>&) {}) {
  const std::vector<uint8_t> outer = Base64Decode(SerializeAllClusters({Cluster(guid)}));
  std::vector<uint8_t> record = Base64Decode(std::string(outer.begin() + 14, outer.end()));
  change(record);
  return Base64Encode(record);
}

// The GUIDs of the records a container text loads, led by "rejected" when the call fails.
std::vector<std::string> Load(const std::string& text) {
  std::vector<ClusterData> clusters(1);
  std::vector<std::string> guids;
  if (!DeserializeAllClusters(text, clusters)) guids.push_back("rejected");
  for (const auto& c : clusters) guids.push_back(c.guid);
  return guids;
}

TEST(BinaryFormat, ADamagedRecordCostsOnlyItselfAndABadHeaderTheWhole) {
  using Strings = std::vector<std::string>;
  const std::string a = Record("A"), c = Record("C");
  const std::tuple<const char*, std::string, Strings> cases[] = {
      {"empty registry", "VkxPWgEAAAAAAA==", {}},
      {"end tag cut", Container({a, Record("B", [](auto& r) { r.pop_back(); }), c}, 3), {"A", "C"}},
      {"record version 2", Container({a, Record("B", [](auto& r) { r[4] = 2; }), c}, 3), {"A", "C"}},
      {"unknown tags skipped a byte each",
       Container({a, Record("B", [](auto& r) { r.insert(r.begin() + 6, {0, 6, 254}); })}, 2), {"A", "B"}},
      {"cut in the last padding", Container({a, Record("B", [](auto& r) { r.push_back(0); })}, 2, 1, 2), {"A", "B"}},
      {"five-byte record: only the magic checked", Container({Base64Encode({'V', 'L', 'O', 'Z', 255})}, 1), {""}},
      {"container version 2", Container({a}, 1, 2), {"rejected"}},
      {"other magic", Base64Encode(Bytes("XLOZ\1")), {"rejected"}},
  };
  for (const auto& [label, text, guids] : cases) EXPECT_EQ(Load(text), guids) << label;
  EXPECT_EQ(SerializeAllClusters({}), "VkxPWgEAAAAAAA==");
  // Cut anywhere inside the last record, down to its length field: the records before it stay.
  for (size_t cut = 1; cut <= c.size() + 4; ++cut) EXPECT_EQ(Load(Container({a, c}, 2, 1, cut)), Strings{"A"}) << cut;
}

TEST(ClusterProject, IndicesCarryOnAcrossReloadsAndOnlyALongDifferingValueIsKeptAside) {
  sim::Host host;
  ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
  State::Shutdown();
  State::Initialize();
  const ItemAssociation item{"I", "", 0, 0, 0};
  host.projExtState["ZOLVA"]["CLUSTER_DATA_V2"] = SerializeAllClusters({Cluster("A", {item}), Cluster("B", {item})});
  for (const uint32_t first : {1u, 3u}) {
    EXPECT_EQ(LoadFromProject(), "{\"success\":true,\"clusters_loaded\":2,\"format\":\"binary\"}");
    State::WithRegistry([&](const State::ClusterStateCache& cache) {
      EXPECT_EQ(cache.guidIndex, (std::unordered_map<std::string, uint32_t>{{"A", first}, {"B", first + 1}}));
      EXPECT_EQ(cache.itemIndex.at("I"), (std::vector<uint32_t>{first, first + 1}));
    });
  }
  // A stored value the read buffer cannot hold is kept aside when written over, unless it is the new text.
  const std::string loadable(32767, 'Q'), tooLong(32768, 'Q');
  const std::tuple<std::string, std::string, std::string> cases[] = {  // stored, written, then kept aside
      {loadable, "x", ""}, {tooLong, "x", tooLong}, {tooLong, tooLong, ""}};
  for (const auto& [stored, written, kept] : cases) {
    host.projExtState["ZOLVA"] = {{"CLUSTER_DATA_V2", stored}};
    WriteClusterData(written);
    EXPECT_EQ(host.projExtState["ZOLVA"]["CLUSTER_DATA_V2_OVERFLOW"], kept) << stored.size() << ' ' << written.size();
  }
}

}  // namespace

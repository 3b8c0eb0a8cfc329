#include "cluster/binary_format.h"

#include <gtest/gtest.h>

#include "cluster/base64.h"
#include "cluster_samples.h"

namespace {

using namespace ZOLVA_Cluster;
using namespace ZOLVA_Cluster::Serialize;
using cluster_samples::SameCluster;

std::vector<uint8_t> Bytes(std::string_view s) { return std::vector<uint8_t>(s.begin(), s.end()); }

TEST(Base64, EncodesAndDecodesWithItsLeniencies) {
  struct {
    const char* text;
    const char* bytes;  // expected decode
  } const cases[] = {
      {"", ""},
      {"QQ==", "A"},
      {"QUI=", "AB"},
      {"QUJD", "ABC"},
      {"QUJ", ""},            // not a multiple of four: nothing
      {"QUJDR", ""},
      {"QUJD*UJD", "ABC"},    // invalid first character ends decoding
      {"QUJDQ*JD", "ABC"},    // invalid second character too
      {"QU*D", "A@\x03"},     // invalid third counts as zero bits, still a byte
      {"QUJ*", "AB@"},        // invalid fourth likewise
      {"QQ==QUJD", "AABC"},   // padding mid-text does not stop the next group
  };
  for (const auto& c : cases) {
    const std::string text = c.text;
    const std::string expected = c.bytes;
    EXPECT_EQ(Base64Decode(text), Bytes(expected)) << text;
  }
  for (const char* bytes : {"A", "AB", "\xFF\xFE\x80\x01"}) {
    EXPECT_EQ(Base64Decode(Base64Encode(Bytes(bytes))), Bytes(bytes));
  }
}

TEST(BinaryFormat, EmptyListIsTheSixteenCharacterContainer) {
  EXPECT_EQ(SerializeAllClusters({}), "VkxPWgEAAAAAAA==");
  std::vector<ClusterData> out(1);
  EXPECT_TRUE(DeserializeAllClusters("VkxPWgEAAAAAAA==", out));
  EXPECT_TRUE(out.empty());
}

TEST(BinaryFormat, RandomRegistriesRoundTripExactly) {
  std::mt19937_64 rng(1234);
  for (int round = 0; round < 40; ++round) {
    std::vector<ClusterData> clusters;
    for (size_t n = rng() % 30; n > 0; --n) clusters.push_back(cluster_samples::RandomCluster(rng, 25));
    std::vector<ClusterData> back;
    ASSERT_TRUE(DeserializeAllClusters(SerializeAllClusters(clusters), back));
    ASSERT_EQ(back.size(), clusters.size());
    for (size_t i = 0; i < clusters.size(); ++i) EXPECT_TRUE(SameCluster(back[i], clusters[i])) << i;
  }
}

// Hand-built containers: records are given as their Base64 texts.
std::string Container(const std::vector<std::string>& records, uint32_t count, uint16_t version = 1) {
  std::vector<uint8_t> b = Bytes("VLOZ");
  b.push_back(static_cast<uint8_t>(version));
  b.push_back(static_cast<uint8_t>(version >> 8));
  for (int s = 0; s < 32; s += 8) b.push_back(static_cast<uint8_t>(count >> s));
  for (const std::string& r : records) {
    for (int s = 0; s < 32; s += 8) b.push_back(static_cast<uint8_t>(r.size() >> s));
    b.insert(b.end(), r.begin(), r.end());
  }
  return Base64Encode(b);
}

ClusterData Named(const std::string& guid) {
  ClusterData c;
  c.guid = guid;
  c.name = "n" + guid;
  return c;
}

// The raw bytes of one cluster's record (the container holds them as Base64).
std::vector<uint8_t> RecordBytes(const ClusterData& c) {
  const std::vector<uint8_t> outer = Base64Decode(SerializeAllClusters({c}));
  return Base64Decode(std::string(outer.begin() + 14, outer.end()));
}

std::string Text(const std::vector<uint8_t>& bytes) { return Base64Encode(bytes); }

std::vector<std::string> Guids(const std::vector<ClusterData>& clusters) {
  std::vector<std::string> guids;
  for (const auto& c : clusters) guids.push_back(c.guid);
  return guids;
}

TEST(BinaryFormat, DamagedRecordsCostOnlyThemselves) {
  const std::string a = Text(RecordBytes(Named("A"))), c = Text(RecordBytes(Named("C")));
  std::vector<uint8_t> cut = RecordBytes(Named("B"));
  cut.pop_back();  // trailing 255 gone
  std::vector<uint8_t> newer = RecordBytes(Named("B"));
  newer[4] = 2;  // record version 2
  std::vector<uint8_t> badMagic = RecordBytes(Named("B"));
  badMagic[0] = 'X';
  std::vector<uint8_t> unknownTags = RecordBytes(Named("B"));
  unknownTags.insert(unknownTags.begin() + 6, {0, 6, 254});  // skipped one byte each
  struct {
    const char* label;
    std::vector<std::string> records;
    uint32_t count;
    std::vector<std::string> expected;
  } const cases[] = {
      {"cut end tag", {a, Text(cut), c}, 3, {"A", "C"}},
      {"record version 2", {a, Text(newer), c}, 3, {"A", "C"}},
      {"record magic", {a, Text(badMagic), c}, 3, {"A", "C"}},
      {"record text not a multiple of four", {a, Text(RecordBytes(Named("B"))) + "Q", c}, 3, {"A", "C"}},
      {"unknown tags", {a, Text(unknownTags)}, 2, {"A", "B"}},
      {"three announced, two present", {a, c}, 3, {"A", "C"}},
      {"six-byte record with an odd version byte", {Text({'V', 'L', 'O', 'Z', 9, 0})}, 1, {}},
      {"five-byte record: header only, no end tag", {Text({'V', 'L', 'O', 'Z', 9})}, 1, {}},
      {"header then 255 after four bytes", {Text({'V', 'L', 'O', 'Z', 255})}, 1, {""}},
      {"count zero ignores what follows", {a}, 0, {}},
  };
  for (const auto& k : cases) {
    std::vector<ClusterData> out;
    EXPECT_TRUE(DeserializeAllClusters(Container(k.records, k.count), out)) << k.label;
    EXPECT_EQ(Guids(out), k.expected) << k.label;
  }
}

TEST(BinaryFormat, ContainerCutInsideARecordKeepsTheRecordsBefore) {
  const std::string a = Text(RecordBytes(Named("A"))), c = Text(RecordBytes(Named("C")));
  for (size_t cut = 1; cut <= c.size() + 4; ++cut) {
    std::vector<uint8_t> outer = Base64Decode(Container({a, c}, 2));
    outer.resize(outer.size() - cut);
    std::vector<ClusterData> out;
    EXPECT_TRUE(DeserializeAllClusters(Text(outer), out));
    EXPECT_EQ(Guids(out), std::vector<std::string>{"A"}) << cut;
  }
}

TEST(BinaryFormat, WholeValueRejectedOnlyForBadOuterHeader) {
  const std::string a = Text(RecordBytes(Named("A")));
  std::vector<ClusterData> out;
  EXPECT_FALSE(DeserializeAllClusters(Container({a}, 1, 2), out));
  EXPECT_FALSE(DeserializeAllClusters(Container({a}, 1) + "A", out));  // not a multiple of four
  EXPECT_FALSE(DeserializeAllClusters(Text(Bytes("VLO")), out));
  EXPECT_FALSE(DeserializeAllClusters(Text(Bytes("XLOZ\1\0\0\0\0\0")), out));
  EXPECT_FALSE(DeserializeAllClusters("{\"a\":1}", out));
  EXPECT_TRUE(out.empty());
  EXPECT_TRUE(DeserializeAllClusters(Text(Bytes("VLOZ")), out));  // magic only: count reads 0
}

}  // namespace

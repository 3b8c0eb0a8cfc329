#include "cluster/binary_format.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "cluster/base64.h"

namespace ZOLVA_Cluster::Serialize {
namespace {

constexpr uint32_t kMagic = 0x5A4F4C56;  // "VLOZ" in file order
constexpr uint16_t kVersion = 1;

enum Tag : uint8_t {
  kIdentity = 1,
  kTimingAndRegion = 2,
  kItem = 3,
  kLinkAndItemCount = 4,
  kTimestamps = 5,
  kEnd = 255,
};

// Little-endian byte writer; 64-bit values go out as two 32-bit halves, low first.
class BinaryWriter {
 public:
  void WriteU8(uint8_t value) { bytes_.push_back(value); }
  void WriteU16(uint16_t value) {
    bytes_.push_back(static_cast<uint8_t>(value));
    bytes_.push_back(static_cast<uint8_t>(value >> 8));
  }
  void WriteU32(uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) bytes_.push_back(static_cast<uint8_t>(value >> shift));
  }
  void WriteU64(uint64_t value) {
    WriteU32(static_cast<uint32_t>(value));
    WriteU32(static_cast<uint32_t>(value >> 32));
  }
  void WriteI64(int64_t value) { WriteU64(static_cast<uint64_t>(value)); }
  void WriteF64(double value) {
    uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    WriteU64(bits);
  }
  void WriteRaw(std::string_view text) { bytes_.insert(bytes_.end(), text.begin(), text.end()); }
  void WriteString(std::string_view text) {
    WriteU16(static_cast<uint16_t>(text.size()));
    WriteRaw(text);
  }
  void WriteHeader() {
    WriteU32(kMagic);
    WriteU16(kVersion);
  }
  const std::vector<uint8_t>& bytes() const { return bytes_; }

 private:
  std::vector<uint8_t> bytes_;
};

// Bounds-checked reader: a U16 or U32 that would cross the end reads 0 and
// consumes nothing; a byte past the end reads 0; a string takes what is left.
class BinaryReader {
 public:
  BinaryReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  size_t remaining() const { return size_ - pos_; }
  bool AtEnd() const { return pos_ >= size_; }
  void Skip(size_t count) { pos_ += std::min(count, remaining()); }

  uint8_t ReadU8() { return AtEnd() ? 0 : data_[pos_++]; }
  uint16_t ReadU16() { return static_cast<uint16_t>(ReadLittleEndian(2)); }
  uint32_t ReadU32() { return static_cast<uint32_t>(ReadLittleEndian(4)); }
  uint64_t ReadU64() {
    const uint64_t low = ReadU32();
    return low | (uint64_t{ReadU32()} << 32);
  }
  int64_t ReadI64() { return static_cast<int64_t>(ReadU64()); }
  double ReadF64() {
    const uint64_t bits = ReadU64();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  std::string_view ReadBytes(size_t count) {
    const size_t taken = std::min(count, remaining());
    std::string_view view(reinterpret_cast<const char*>(data_ + pos_), taken);
    pos_ += taken;
    return view;
  }
  std::string ReadString() { return std::string(ReadBytes(ReadU16())); }

  // Magic, then the version when at least six bytes are present (with four
  // or five only the magic is checked, a leniency stored data relies on).
  bool ReadHeader() {
    if (size_ < 4 || ReadU32() != kMagic) return false;
    return size_ < 6 || ReadU16() <= kVersion;
  }

 private:
  uint32_t ReadLittleEndian(size_t width) {
    if (remaining() < width) return 0;
    uint32_t value = 0;
    for (size_t i = 0; i < width; ++i) value |= uint32_t{data_[pos_ + i]} << (8 * i);
    pos_ += width;
    return value;
  }

  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

std::vector<uint8_t> EncodeRecord(const ClusterData& cluster) {
  BinaryWriter w;
  w.WriteHeader();
  w.WriteU8(kIdentity);
  w.WriteString(cluster.guid);
  w.WriteU32(cluster.cluster_id);
  w.WriteString(cluster.name);
  w.WriteU32(static_cast<uint32_t>(cluster.color));
  w.WriteU8(kTimingAndRegion);
  w.WriteF64(cluster.start_time);
  w.WriteF64(cluster.end_time);
  w.WriteF64(cluster.entry_point);
  w.WriteF64(cluster.exit_point);
  w.WriteU8(cluster.is_loop ? 1 : 0);
  w.WriteString(cluster.region_guid);
  w.WriteU32(cluster.region_aux);
  w.WriteU8(kLinkAndItemCount);
  w.WriteString(cluster.link_guid);
  w.WriteU32(static_cast<uint32_t>(cluster.items.size()));
  for (const auto& entry : cluster.items) {
    const ItemAssociation& item = entry.second;
    w.WriteU8(kItem);
    w.WriteString(item.item_guid);
    w.WriteString(item.item_take_guid);
    w.WriteI64(item.time_modified);
    w.WriteF64(item.position);
    w.WriteF64(item.length);
  }
  w.WriteU8(kTimestamps);
  w.WriteI64(cluster.time_created);
  w.WriteI64(cluster.time_modified);
  w.WriteU8(kEnd);
  return w.bytes();
}

// Reads one record's sections into `cluster`; true when it closes with the
// end tag before the bytes run out. Unknown tags are skipped one byte at a time.
bool DecodeRecord(const std::vector<uint8_t>& bytes, ClusterData& cluster) {
  BinaryReader r(bytes.data(), bytes.size());
  if (!r.ReadHeader()) return false;
  while (!r.AtEnd()) {
    switch (r.ReadU8()) {
      case kIdentity:
        cluster.guid = r.ReadString();
        cluster.cluster_id = r.ReadU32();
        cluster.name = r.ReadString();
        cluster.color = static_cast<int32_t>(r.ReadU32());
        break;
      case kTimingAndRegion:
        cluster.start_time = r.ReadF64();
        cluster.end_time = r.ReadF64();
        cluster.entry_point = r.ReadF64();
        cluster.exit_point = r.ReadF64();
        cluster.is_loop = r.ReadU8() != 0;
        cluster.region_guid = r.ReadString();
        cluster.region_aux = r.ReadU32();
        break;
      case kItem: {
        ItemAssociation item;
        item.item_guid = r.ReadString();
        item.item_take_guid = r.ReadString();
        item.time_modified = r.ReadI64();
        item.position = r.ReadF64();
        item.length = r.ReadF64();
        std::string key = item.item_guid;
        cluster.items.emplace(std::move(key), std::move(item));  // first entry of a key wins
        break;
      }
      case kLinkAndItemCount:
        cluster.link_guid = r.ReadString();
        r.ReadU32();  // item count: the item sections themselves are what count
        break;
      case kTimestamps:
        cluster.time_created = r.ReadI64();
        cluster.time_modified = r.ReadI64();
        break;
      case kEnd:
        return true;
      default:
        break;
    }
  }
  return false;
}

// A record text announced longer than the container holds is completed with
// zero bytes. Zero is outside the alphabet, so decoding stops at the first
// group it starts; padding just past the group that was cut gives the same bytes.
std::vector<uint8_t> DecodeRecordText(std::string_view present, uint32_t announced) {
  if (announced % 4 != 0) return {};
  if (present.size() == announced) return Base64Decode(present);
  std::string completed(present);
  completed.resize((present.size() + 3) / 4 * 4, '\0');
  return Base64Decode(completed);
}

}  // namespace

std::string SerializeAllClusters(const std::vector<ClusterData>& clusters) {
  BinaryWriter outer;
  outer.WriteHeader();
  outer.WriteU32(static_cast<uint32_t>(clusters.size()));
  for (const ClusterData& cluster : clusters) {
    const std::string record = Base64Encode(EncodeRecord(cluster));
    outer.WriteU32(static_cast<uint32_t>(record.size()));
    outer.WriteRaw(record);
  }
  return Base64Encode(outer.bytes());
}

bool DeserializeAllClusters(std::string_view text, std::vector<ClusterData>& clusters) {
  clusters.clear();
  const std::vector<uint8_t> bytes = Base64Decode(text);
  BinaryReader r(bytes.data(), bytes.size());
  if (!r.ReadHeader()) return false;
  const uint32_t count = r.ReadU32();
  clusters.reserve(std::min<size_t>(count, r.remaining() / 4));
  // Once fewer than four bytes are left every further record reads as empty
  // and is dropped, so the loop may stop there instead of counting on.
  for (uint32_t i = 0; i < count && r.remaining() >= 4; ++i) {
    const uint32_t length = r.ReadU32();
    const std::vector<uint8_t> record = DecodeRecordText(r.ReadBytes(length), length);
    ClusterData cluster;
    if (DecodeRecord(record, cluster)) clusters.push_back(std::move(cluster));
  }
  return true;
}

}  // namespace ZOLVA_Cluster::Serialize

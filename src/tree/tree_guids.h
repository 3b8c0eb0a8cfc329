// The GUID texts the tree knows, each stored once and numbered in the order
// it was first seen. A text is looked up once, when it enters the tree; from
// then on the tree works with the number.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ZOLVA_Tree {

// The number of no GUID: the parent of a root, or a text never seen.
constexpr uint32_t kNoGuid = UINT32_MAX;

// `size` as a 32-bit offset or count; throws std::length_error beyond that.
uint32_t Narrow(size_t size);

// Makes room for `extra` more elements, growing geometrically, so that the
// appends that follow cannot fail halfway through a change.
template <typename Container>
void MakeRoom(Container& container, size_t extra) {
  if (container.capacity() - container.size() < extra) {
    container.reserve(std::max(2 * container.capacity(), container.size() + extra));
  }
}

class GuidTable {
 public:
  // The number of `text`, or kNoGuid when it has not been seen.
  uint32_t Find(std::string_view text) const;
  // The number of `text`, numbering it next when it is new.
  uint32_t Intern(std::string_view text);
  std::string_view Text(uint32_t guid) const;
  size_t size() const { return ends_.size(); }

 private:
  // An open-addressing index: each slot holds a text's number and hash, or
  // kNoGuid when empty. The hash spares comparing texts that cannot match.
  struct Slot {
    uint32_t guid = kNoGuid;
    uint32_t hash = 0;
  };
  // The slot holding `text`, or the empty slot where it belongs.
  size_t Probe(std::string_view text, uint32_t hash) const;
  void Grow();

  std::string texts_;           // every text, one after another
  std::vector<uint32_t> ends_;  // where each text ends in `texts_`
  std::vector<Slot> slots_;     // a power of two in size, at most half full
};

}  // namespace ZOLVA_Tree

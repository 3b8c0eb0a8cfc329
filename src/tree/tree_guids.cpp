#include "tree/tree_guids.h"

#include <functional>
#include <stdexcept>

namespace ZOLVA_Tree {
namespace {

uint32_t Hash(std::string_view text) { return static_cast<uint32_t>(std::hash<std::string_view>()(text)); }

}  // namespace

uint32_t Narrow(size_t size) {
  if (size >= kNoGuid) throw std::length_error("cluster tree too large");
  return static_cast<uint32_t>(size);
}

size_t GuidTable::Probe(std::string_view text, uint32_t hash) const {
  const size_t mask = slots_.size() - 1;
  for (size_t at = hash & mask;; at = (at + 1) & mask) {
    const Slot& slot = slots_[at];
    if (slot.guid == kNoGuid || (slot.hash == hash && Text(slot.guid) == text)) return at;
  }
}

uint32_t GuidTable::Find(std::string_view text) const {
  return slots_.empty() ? kNoGuid : slots_[Probe(text, Hash(text))].guid;
}

uint32_t GuidTable::Intern(std::string_view text) {
  if (2 * (size() + 1) > slots_.size()) Grow();
  const uint32_t hash = Hash(text);
  Slot& slot = slots_[Probe(text, hash)];
  if (slot.guid != kNoGuid) return slot.guid;
  const uint32_t end = Narrow(texts_.size() + text.size());
  MakeRoom(texts_, text.size());
  MakeRoom(ends_, 1);
  slot = {Narrow(size()), hash};
  texts_ += text;
  ends_.push_back(end);
  return slot.guid;
}

std::string_view GuidTable::Text(uint32_t guid) const {
  const uint32_t begin = guid == 0 ? 0 : ends_[guid - 1];
  return std::string_view(texts_).substr(begin, ends_[guid] - begin);
}

void GuidTable::Grow() {
  std::vector<Slot> old(slots_.empty() ? 16 : 2 * slots_.size());
  old.swap(slots_);
  const size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.guid == kNoGuid) continue;
    size_t at = slot.hash & mask;
    while (slots_[at].guid != kNoGuid) at = (at + 1) & mask;
    slots_[at] = slot;
  }
}

}  // namespace ZOLVA_Tree

// The Work Unit writers take any model: names of any bytes, containers that
// reference themselves, each other in cycles, unknown or empty GUIDs, long
// chains, and enum values outside their lists. Every writer must end, every
// Work Unit must keep its frame and markers, and every object document (no
// comments in it) must stay a balanced tree of tags whatever its names hold.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "wwise/model.h"
#include "wwise/work_unit_objects.h"
#include "wwise/work_units.h"

namespace {

using namespace ZOLVA_Wwise;

class Bytes {
 public:
  Bytes(const uint8_t* data, size_t size) : data_(data), size_(size) {}
  uint8_t Next() { return at_ < size_ ? data_[at_++] : 0; }
  // Up to 15 raw bytes.
  std::string Text() {
    std::string text;
    for (int n = Next() % 16; n > 0 && at_ < size_; --n) text += static_cast<char>(Next());
    return text;
  }
  double Number() {
    double value = 0.0;
    uint8_t raw[sizeof value] = {};
    for (uint8_t& b : raw) b = Next();
    if (raw[0] & 1) return static_cast<int8_t>(raw[1]) * 250.5;  // plain values most of the time
    std::memcpy(&value, raw, sizeof value);                      // NaN, infinities, extremes
    return value;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
};

// A GUID of a segment or container of the model, an unknown one, an empty one or raw bytes.
std::string PickGuid(Bytes& bytes, size_t segments, size_t containers) {
  const uint8_t b = bytes.Next();
  switch (b % 5) {
    case 0: return "{S" + std::to_string(b % (segments + 1)) + "}";
    case 1:
    case 2: return "{C" + std::to_string(b % (containers + 1)) + "}";
    case 3: return b & 8 ? std::string() : "{unknown}";
    default: return bytes.Text();
  }
}

// A start tag is its name, then ` name="value"` pairs whose values hold no
// quote, then " /" when it closes itself.
bool WellFormedStartTag(std::string_view tag, bool& selfClosing) {
  size_t at = tag.find(' ');
  selfClosing = false;
  while (at < tag.size()) {
    if (tag.substr(at) == " /") return selfClosing = true;
    const size_t equals = tag.find("=\"", at);
    const size_t close = equals == std::string_view::npos ? equals : tag.find('"', equals + 2);
    if (close == std::string_view::npos || tag.substr(at + 1, equals - at - 1).find_first_of(" \"") != std::string_view::npos) {
      return false;
    }
    at = close + 1;
    if (at < tag.size() && tag[at] != ' ') return false;
  }
  return true;
}

// Start and end tags pair up, every tag is well formed, and nothing but text
// follows the root: escaping kept every name's bytes out of the markup.
// Iterative: a stack of names.
bool BalancedTree(std::string_view doc) {
  std::vector<std::string_view> open;
  size_t at = doc.find("?>\n");
  if (at == std::string_view::npos) return false;
  bool rootClosed = false;
  while ((at = doc.find('<', at)) != std::string_view::npos) {
    const size_t end = doc.find('>', at);
    if (end == std::string_view::npos || rootClosed) return false;
    const std::string_view tag = doc.substr(at + 1, end - at - 1);
    bool selfClosing = false;
    if (tag.substr(0, 1) == "/") {
      if (open.empty() || open.back() != tag.substr(1)) return false;
      open.pop_back();
    } else if (tag.find('<') != std::string_view::npos || !WellFormedStartTag(tag, selfClosing)) {
      return false;
    } else if (!selfClosing) {
      open.push_back(tag.substr(0, tag.find(' ')));
    }
    rootClosed = open.empty();
    at = end + 1;
  }
  return rootClosed;
}

bool FramedWorkUnit(const std::string& doc) {
  static constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<WwiseDocument ";
  static constexpr std::string_view kTail = "</WwiseDocument>\n";
  return doc.compare(0, kHead.size(), kHead) == 0 && doc.size() >= kTail.size() &&
         doc.compare(doc.size() - kTail.size(), kTail.size(), kTail) == 0 && doc.find("<WorkUnit") != std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Bytes bytes(data, size);
  WwiseProjectData project;
  project.projectName = bytes.Text();
  const size_t segments = bytes.Next() % 8;
  const uint8_t shape = bytes.Next();
  // Mostly a few containers wired by the bytes; now and then a chain of up
  // to 961 whose last link points back to its first.
  const bool chain = shape >= 0xf0;
  const size_t containers = chain ? 64 * static_cast<size_t>(shape & 0x0f) + 1 : shape % 12;

  for (size_t i = 0; i < segments; ++i) {
    WwiseMusicSegment segment;
    segment.guid = "{S" + std::to_string(i) + "}";
    segment.shortId = bytes.Text();
    segment.name = bytes.Text();
    segment.duration = bytes.Number();
    segment.tempo = bytes.Number();
    segment.timeSignatureNumerator = static_cast<int8_t>(bytes.Next());
    for (int n = bytes.Next() % 3; n > 0; --n) segment.cues.push_back({bytes.Text(), bytes.Number()});
    for (int n = bytes.Next() % 3; n > 0; --n) segment.tracks.push_back({bytes.Text(), bytes.Text(), bytes.Text()});
    project.segments.push_back(std::move(segment));
  }
  for (size_t i = 0; i < containers; ++i) {
    WwiseMusicContainer container;
    container.guid = "{C" + std::to_string(i) + "}";
    container.name = bytes.Text();
    container.type = static_cast<ContainerType>(bytes.Next() % 8);
    if (chain) {
      container.children = {"{C" + std::to_string((i + 1) % containers) + "}", "{S0}"};
    } else {
      for (int n = bytes.Next() % 5; n > 0; --n) container.children.push_back(PickGuid(bytes, segments, containers));
    }
    container.switchGroup = bytes.Text();
    container.defaultSwitch = bytes.Text();
    for (int n = bytes.Next() % 3; n > 0; --n) {
      container.switchAssignments[bytes.Text()] = PickGuid(bytes, segments, containers);
    }
    for (int n = bytes.Next() % 3; n > 0; --n) {
      WwiseTransition transition;
      transition.sourceId = PickGuid(bytes, segments, containers);
      transition.destinationId = PickGuid(bytes, segments, containers);
      transition.transitionType = static_cast<TransitionType>(static_cast<int8_t>(bytes.Next()));
      transition.fadeOutTime = bytes.Number();
      transition.fadeInTime = bytes.Number();
      const uint8_t cues = bytes.Next();
      if (cues & 1) transition.sourceCue = bytes.Text();
      if (cues & 2) transition.destinationCue = bytes.Text();
      container.transitions.push_back(std::move(transition));
    }
    for (int n = bytes.Next() % 3; n > 0; --n) {
      container.stingers.push_back({PickGuid(bytes, segments, containers), bytes.Text(), bytes.Number()});
    }
    const uint8_t flags = bytes.Next();
    container.isLooping = flags & 1;
    container.avoidRepeat = flags & 2;
    container.loopCount = static_cast<int8_t>(bytes.Next());
    project.containers.push_back(std::move(container));
  }
  for (int n = bytes.Next() % 4; n > 0; --n) {
    project.events.push_back({bytes.Text(), bytes.Text(), bytes.Text(), PickGuid(bytes, segments, containers),
                              static_cast<int8_t>(bytes.Next())});
  }
  for (int n = bytes.Next() % 3; n > 0; --n) {
    WwiseSoundBank bank{bytes.Text(), bytes.Text(), {}, {}};
    for (int e = bytes.Next() % 4; e > 0; --e) bank.events.push_back(bytes.Text());
    project.soundBanks.push_back(std::move(bank));
  }

  for (const WwiseMusicSegment& segment : project.segments) {
    if (!BalancedTree(Xml::GenerateMusicSegmentXml(segment))) std::abort();
  }
  for (const WwiseMusicContainer& container : project.containers) {
    if (!BalancedTree(Xml::GenerateMusicContainerXml(container))) std::abort();
  }
  for (const std::string& doc : {Export::MusicWorkUnit(project), Export::EventsWorkUnit(project),
                                 Export::SoundBanksWorkUnit(project)}) {
    if (!FramedWorkUnit(doc)) std::abort();
  }
  return 0;
}

// Schema texts come from the interface script, or from anything that calls
// the script function: any bytes must scan and transform in linear time. The
// result must keep its invariants: indexes that point at the last record of
// their guid, containers made children first in the order the pass rule
// gives, identifiers in their formats, and events only for top-level
// containers.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "wwise/preview_json.h"
#include "wwise/schema.h"
#include "wwise/transform.h"
#include "wwise/transform_order.h"
#include "wwise/work_units.h"

namespace {

using namespace ZOLVA_Wwise;
using namespace ZOLVA_Wwise::Schema;

void Check(bool condition) {
  if (!condition) std::abort();
}

bool IsGuid(const std::string& text) {
  if (text.size() != 38 || text.front() != '{' || text.back() != '}') return false;
  for (size_t i = 1; i < 37; ++i) {
    const bool hyphen = i == 9 || i == 14 || i == 19 || i == 24;
    const char c = text[i];
    if (hyphen != (c == '-')) return false;
    if (!hyphen && !((c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'))) return false;
  }
  return true;
}

// The pass rule run literally, pass after pass (small lists only).
std::vector<size_t> LiteralOrder(const std::vector<GroupInfo>& groups) {
  std::set<std::string> guids, taken;
  for (const GroupInfo& g : groups) guids.insert(g.guid);
  std::vector<bool> placed(groups.size());
  std::vector<size_t> order;
  for (size_t pass = 0; pass < groups.size() && order.size() < groups.size(); ++pass) {
    for (size_t i = 0; i < groups.size(); ++i) {
      const bool ready = std::all_of(groups[i].childGuids.begin(), groups[i].childGuids.end(), [&](const std::string& c) {
        return !guids.count(c) || (pass > 0 && taken.count(c));
      });
      if (placed[i] || !ready) continue;
      placed[i] = true;
      taken.insert(groups[i].guid);
      order.push_back(i);
    }
  }
  return order;
}

template <typename Record>
void CheckIndex(const std::vector<Record>& records, const std::unordered_map<std::string, size_t>& index) {
  Check(index.size() <= records.size());
  for (size_t i = 0; i < records.size(); ++i) {
    const auto it = index.find(records[i].guid);
    Check(it != index.end() && it->second >= i && records[it->second].guid == records[i].guid);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view json(reinterpret_cast<const char*>(data), size);
  V2Schema schema;
  const bool parsed = ParseV2Schema(json, schema);
  Check(parsed == (!json.empty() && (!schema.clusters.empty() || !schema.groups.empty())));
  CheckIndex(schema.clusters, schema.clusterIndex);
  CheckIndex(schema.groups, schema.groupIndex);

  const std::vector<size_t> order = OrderGroupsChildrenFirst(schema.groups);
  if (schema.groups.size() <= 64) Check(order == LiteralOrder(schema.groups));

  const WwiseProjectData project = TransformToWwise(schema, ExportOptions());
  // Whatever the schema held, every writer takes the project it became.
  using namespace ZOLVA_Wwise::Export;
  for (const std::string& text : {MusicWorkUnit(project), EventsWorkUnit(project), SoundBanksWorkUnit(project),
                                  GenerateTransitionsJson(project), PreviewExportJson(project, ExportOptions())}) {
    Check(!text.empty());
  }
  Check(project.segments.size() == schema.clusters.size());
  Check(project.containers.size() == order.size());
  std::unordered_set<std::string> made, nested;
  for (const WwiseMusicSegment& segment : project.segments) Check(IsGuid(segment.guid) && made.insert(segment.guid).second);
  for (const WwiseMusicContainer& container : project.containers) {
    Check(IsGuid(container.guid) && !container.shortId.empty() && container.shortId.size() <= 10);
    for (const std::string& child : container.children) Check(made.count(child) == 1);  // children first
    made.insert(container.guid);
    nested.insert(container.children.begin(), container.children.end());
  }
  size_t topLevel = 0;
  for (const WwiseMusicContainer& container : project.containers) topLevel += nested.count(container.guid) == 0;
  Check(project.events.size() == topLevel);
  for (const WwiseEvent& event : project.events) Check(nested.count(event.target) == 0);
  Check(project.soundBanks.size() == 1 && project.soundBanks[0].events.size() == project.events.size());
  return 0;
}

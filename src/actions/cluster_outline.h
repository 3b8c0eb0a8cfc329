// The clusters in the shape the user arranged them in: the cluster tree the
// interface script keeps for this session, when it holds nodes, with every
// cluster it leaves out placed at the top level after it.
#pragma once

#include <string>
#include <vector>

namespace ZOLVA_Actions {

struct OutlineEntry {
  std::string guid;    // a cluster's GUID, or a tree node that is no cluster
  std::string parent;  // empty at the top level
  int depth = 0;
};

// Pre-order: every entry comes before its children.
std::vector<OutlineEntry> ClusterOutline();

}  // namespace ZOLVA_Actions

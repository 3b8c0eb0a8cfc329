// The children-first order in which groups become containers.
#pragma once

#include <cstddef>
#include <vector>

#include "wwise/model.h"

namespace ZOLVA_Wwise::Schema {

// Positions in `groups`, in the order this pass rule places them:
//  - pass 1 takes, in list order, every group none of whose childGuids names
//    a group;
//  - each further pass walks the list again and takes each group not yet
//    taken once every childGuid that names a group is the guid of a group
//    already taken, counting those taken earlier in the same pass;
//  - passes end when a pass takes nothing (or all groups are taken).
// Groups never taken (caught in a cycle of child references, or waiting on
// one) are left out. The result is computed in time linear in the number of
// groups and child references, however many passes the rule would take.
std::vector<size_t> OrderGroupsChildrenFirst(const std::vector<GroupInfo>& groups);

}  // namespace ZOLVA_Wwise::Schema

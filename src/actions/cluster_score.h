// The clusters as the score the Wwise export reads: every cluster a segment
// (with its rendered audio when there is one), every parent in the cluster
// tree a playlist of its children, and a looping cluster at the top level a
// playlist that repeats it for ever.
#pragma once

#include <string>

namespace ZOLVA_Actions {

std::string ClusterScoreJson(const std::string& projectName, const std::string& renderFolder);

}  // namespace ZOLVA_Actions

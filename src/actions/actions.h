// The native actions: each runs on REAPER's main thread when the user
// chooses it, asks what it needs, and changes the project in one undo point
// or not at all.
#pragma once

#include <string>
#include <vector>

namespace ZOLVA_Actions {

void CreateClusterFromTimeSelection();
void RenameClusterAtCursor();
void DeleteClusterAtCursor();
void AddSelectedItemsToCluster();
void RemoveSelectedItemsFromClusters();

// A toggle: on auditions the cluster at the edit cursor, off ends every
// audition.
void ToggleAuditionAtCursor();
bool AuditionIsOn();

void CreateRegionsFromClusters();
void RenderClusters();
// The files the last render of this session made for a cluster; null when
// it was not rendered.
const std::vector<std::string>* RenderedFiles(const std::string& clusterGuid);
void ExportClustersToWwise();
void ListClusters();

}  // namespace ZOLVA_Actions

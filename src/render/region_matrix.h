// The host's region render matrix: which tracks are rendered for which
// region, addressed by the region's displayed number. Snapshots let a render
// script rewrite the matrix and put the user's back afterwards. All of it is
// silent: unknown regions, missing tracks and malformed texts are skipped.
#pragma once

namespace ZOLVA_Render {

// The whole matrix as {"regions":[{"idx":1,"tracks":[-1,3]},...]}, regions
// in enumeration order, rows without tracks left out. Valid until the next
// snapshot (or the module's shutdown).
const char* CacheRegionRenderMatrix();
// Drops the held snapshot text.
void ReleaseMatrixSnapshot();

// Clears the matrix first, then adds every row of a snapshot text; track -1
// or 0 is the master track. Null or empty text changes nothing.
void RestoreRegionMatrix(const char* cache_json);
// Removes every track from every region's row.
void ClearRenderMatrix();
// Adds the master track for each region named by a quoted GUID in the text.
void AddRegionsByGuid(const char* json_guids);
// Adds the master track for each region number in the text, unchecked.
void AddRegionIndices(const char* json_indices);

}  // namespace ZOLVA_Render

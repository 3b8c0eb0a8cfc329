// The Interactive Music Hierarchy Work Unit of a native export: the model's
// segments, groups, transitions and stingers as the objects Wwise itself
// writes.
#pragma once

#include <string>
#include <unordered_map>

#include "wwise/model.h"
#include "wwise/native/elements.h"
#include "wwise/native/game_syncs.h"
#include "wwise/native/report.h"

namespace ZOLVA_Wwise::Native {

struct MusicWorkUnit {
  std::string name;  // the Work Unit's name and file name
  std::string id;
  int schemaVersion = 0;
  ProjectObject masterBus;
  ProjectObject conversion;  // no ID when the project has no Default Conversion Settings
};

// What a Play action on a model container plays.
struct Playable {
  ProjectObject target;  // the container the group became, or the one around its segment
  std::string identity;  // the ID of the object the group became, which its event's identities follow
};

struct MusicHierarchy {
  std::string document;
  // By model container. Not listed: containers that became folders, which
  // play nothing, and layers another container holds, which that one plays.
  std::unordered_map<std::string, Playable> playable;
};

// Groups map to objects so: horizontal to a playlist in sequence, random and
// one-shot to a playlist in random-step mode (a random group at the top
// loops), switch to a switch container, vertical to one segment with a track
// per layer (a sequence playlist when it holds other groups; a segment no
// container holds goes into a playlist container of its own, which plays it),
// any other to a folder. A playlist group inside another playlist becomes a
// group of its playlist items; an object the music hierarchy cannot nest
// where its group sits goes to the top, with a warning. Audio files to copy
// are added to `report.audio`. Every object's identities come from `ids` by role (see
// identity.h): segments by their cluster, containers by their group, and
// their parts by the same and what part they are.
MusicHierarchy BuildMusicHierarchy(const WwiseProjectData& model, const MusicWorkUnit& unit, Identifiers& ids,
                                   GameSyncs& syncs, NativeExport& report);

}  // namespace ZOLVA_Wwise::Native

// What a native export needs from the user's Wwise project: its schema
// version, the Work Unit that holds the Master Audio Bus, and the Switch
// groups, State groups and Triggers that already exist. The project is only
// read.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ZOLVA_Wwise::Native {

inline constexpr char kMasterAudioBusId[] = "{1514A4D8-1DA6-412A-A17E-75CA0C2149F3}";

struct ProjectObject {
  std::string name;
  std::string id;
  std::string workUnitId;
};

struct GameSyncGroup : ProjectObject {
  bool isState = false;
  std::vector<ProjectObject> values;  // its Switches or States
};

struct ProjectInfo {
  std::string folder;  // the folder of the .wproj
  int schemaVersion = 0;
  std::string masterBusWorkUnitId;
  std::vector<GameSyncGroup> groups;  // Switch and State groups, in reading order
  std::vector<ProjectObject> triggers;
};

// The schema versions a native export writes: Wwise 2023.1 and 2024.1.
bool IsSupportedSchemaVersion(int version);

// The SchemaVersion of a project document (a WwiseDocument of Type
// "Project"), or 0 when the text is not one.
int ProjectSchemaVersion(std::string_view wprojText);

// Adds what one Work Unit text holds to `info`: the Master Audio Bus's Work
// Unit, Switch and State groups with their values, Triggers.
void ReadWorkUnit(std::string_view wwuText, ProjectInfo& info);

// Reads the .wproj and the Work Units of its Master-Mixer Hierarchy,
// Switches, States and Triggers folders. False with `error` set when the
// path is missing, not a .wproj, unreadable, not a project, of a schema
// version other than 119 or 123, or without a Master Audio Bus.
bool ReadProject(const std::string& wprojPath, ProjectInfo& info, std::string& error);

}  // namespace ZOLVA_Wwise::Native

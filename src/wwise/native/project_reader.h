// What a native export needs from the user's Wwise project: its schema
// version, the Work Units that hold the Master Audio Bus and the Default
// Conversion Settings, the Switch groups, State groups and Triggers that
// already exist, and the identifiers its objects use. The project is only
// read.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
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
  ProjectObject conversion;  // the Default Conversion Settings; no ID when the project has none
  // Every ID and ShortID (media IDs included) an object of the project
  // carries, with the ID of the Work Unit that holds the object.
  std::vector<std::pair<std::string, std::string>> objectIds;
  std::vector<std::pair<uint32_t, std::string>> shortIds;
  // The Work Units read, by path below the project folder ("Events/A.wwu"), with their IDs.
  std::unordered_map<std::string, std::string> workUnits;
};

// The schema versions a native export writes: Wwise 2023.1 and 2024.1.
bool IsSupportedSchemaVersion(int version);

// The SchemaVersion of a project document (a WwiseDocument of Type
// "Project"), or 0 when the text is not one.
int ProjectSchemaVersion(std::string_view wprojText);

// Adds what one Work Unit text holds to `info`: the Master Audio Bus's and
// the Default Conversion Settings' Work Unit, Switch and State groups with
// their values, Triggers, and the identifiers of the objects it defines
// (not of those it refers to). Returns the Work Unit's ID, empty if none.
std::string ReadWorkUnit(std::string_view wwuText, ProjectInfo& info);

// Reads the .wproj and the Work Units in every folder of the project but
// Originals, GeneratedSoundBanks and hidden ones. False with `error` set
// when the path is missing, not a .wproj, unreadable, not a project, of a
// schema version other than 119 or 123, or without a Master Audio Bus.
bool ReadProject(const std::string& wprojPath, ProjectInfo& info, std::string& error);

}  // namespace ZOLVA_Wwise::Native

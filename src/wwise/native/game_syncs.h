// The Switch groups, Switches and Triggers a native export refers to: the
// project's own when one of that name exists, otherwise made in the export's
// Switches and Triggers Work Units, with identities derived from their names
// so that every export makes the same ones.
#pragma once

#include <string>
#include <deque>
#include <optional>
#include <utility>

#include "wwise/native/elements.h"
#include "wwise/native/report.h"

namespace ZOLVA_Wwise::Native {

class GameSyncs {
 public:
  GameSyncs(const ProjectInfo& project, std::string switchesWorkUnit, std::string triggersWorkUnit, Identifiers& ids,
            NativeExport& report)
      : project_(project), switchesWorkUnit_(std::move(switchesWorkUnit)),
        triggersWorkUnit_(std::move(triggersWorkUnit)), ids_(ids), report_(report) {}

  // The group of that name (its exact name first, then its identifier form):
  // a Switch or State group of the project, or a new Switch group.
  const GameSyncGroup& Group(const std::string& name);
  // A value of a group Group returned: found by name (exact, then identifier
  // form), or made when the group is new; none when a project group lacks it.
  std::optional<ProjectObject> Value(const GameSyncGroup& group, const std::string& name);
  const ProjectObject& Trigger(const std::string& name);

  bool HasNewGroups() const { return !newGroups_.empty(); }
  bool HasNewTriggers() const { return !newTriggers_.empty(); }
  // The Switches and Triggers Work Units, holding what was made.
  std::string SwitchesDocument(const std::string& workUnitName, int schemaVersion) const;
  std::string TriggersDocument(const std::string& workUnitName, int schemaVersion) const;

 private:
  std::string Identifier(const std::string& name, const char* type);

  const ProjectInfo& project_;
  std::string switchesWorkUnit_, triggersWorkUnit_;
  Identifiers& ids_;
  NativeExport& report_;
  std::deque<GameSyncGroup> newGroups_;  // a deque: references handed out stay valid
  std::deque<ProjectObject> newTriggers_;
};

}  // namespace ZOLVA_Wwise::Native

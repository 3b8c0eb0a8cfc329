#include "wwise/native/game_syncs.h"

#include "wwise/native/names.h"

namespace ZOLVA_Wwise::Native {
namespace {

template <typename List>
auto FindNamed(List& list, const std::string& name, const std::string& identifier) -> decltype(&*list.begin()) {
  for (auto& object : list) {
    if (object.name == name) return &object;
  }
  for (auto& object : list) {
    if (object.name == identifier) return &object;
  }
  return nullptr;
}

}  // namespace

std::string GameSyncs::Identifier(const std::string& name, const char* type) {
  std::string identifier = WwiseIdentifier(name);
  if (identifier != name) {
    report_.renamed.push_back({type, name, identifier});
    report_.Warn(std::string(type) + " \"" + name + "\" renamed to \"" + identifier + "\"");
  }
  return identifier;
}

const GameSyncGroup& GameSyncs::Group(const std::string& name) {
  const std::string identifier = WwiseIdentifier(name);
  if (const GameSyncGroup* group = FindNamed(project_.groups, name, identifier)) return *group;
  if (GameSyncGroup* group = FindNamed(newGroups_, name, identifier)) return *group;
  GameSyncGroup& group = newGroups_.emplace_back();
  group.name = Identifier(name, "SwitchGroup");
  group.id = ids_.Guid("switch group:" + group.name);
  group.workUnitId = switchesWorkUnit_;
  return group;
}

std::optional<ProjectObject> GameSyncs::Value(const GameSyncGroup& group, const std::string& name) {
  const std::string identifier = WwiseIdentifier(name);
  if (const ProjectObject* value = FindNamed(group.values, name, identifier)) return *value;
  for (GameSyncGroup& made : newGroups_) {
    if (&made != &group) continue;
    const std::string value = Identifier(name, "Switch");
    made.values.push_back({value, ids_.Guid("switch:" + made.name + "/" + value), switchesWorkUnit_});
    return made.values.back();
  }
  return std::nullopt;  // a group of the project, which is left as it is
}

const ProjectObject& GameSyncs::Trigger(const std::string& name) {
  const std::string identifier = WwiseIdentifier(name);
  if (const ProjectObject* trigger = FindNamed(project_.triggers, name, identifier)) return *trigger;
  if (ProjectObject* trigger = FindNamed(newTriggers_, name, identifier)) return *trigger;
  const std::string trigger = Identifier(name, "Trigger");
  return newTriggers_.emplace_back(ProjectObject{trigger, ids_.Guid("trigger:" + trigger), triggersWorkUnit_});
}

std::string GameSyncs::SwitchesDocument(const std::string& workUnitName, int schemaVersion) const {
  Document doc;
  const WorkUnitFrame frame = WorkUnit(doc, "Switches", workUnitName, switchesWorkUnit_, schemaVersion);
  const Node children = doc.Element(frame.workUnit, "ChildrenList");
  for (const GameSyncGroup& group : newGroups_) {
    const Node node = Object(doc, "SwitchGroup", group.name, group.id);
    doc.Attach(children, node);
    if (group.values.empty()) continue;
    const Node values = doc.Element(node, "ChildrenList");
    for (const ProjectObject& value : group.values) doc.Attach(values, Object(doc, "Switch", value.name, value.id));
  }
  return doc.Write(frame.document);
}

std::string GameSyncs::TriggersDocument(const std::string& workUnitName, int schemaVersion) const {
  Document doc;
  const WorkUnitFrame frame = WorkUnit(doc, "Triggers", workUnitName, triggersWorkUnit_, schemaVersion);
  const Node children = doc.Element(frame.workUnit, "ChildrenList");
  for (const ProjectObject& trigger : newTriggers_) doc.Attach(children, Object(doc, "Trigger", trigger.name, trigger.id));
  return doc.Write(frame.document);
}

}  // namespace ZOLVA_Wwise::Native

#include "wwise/native/native_export.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "host/files.h"
#include "wwise/native/elements.h"
#include "wwise/native/game_syncs.h"
#include "wwise/native/music_hierarchy.h"
#include "wwise/native/names.h"

namespace ZOLVA_Wwise::Native {
namespace {

constexpr char kMusicFolder[] = "Interactive Music Hierarchy";

// Identifiers for names of one kind, each used once in the export.
class UniqueNames {
 public:
  UniqueNames(const char* type, NativeExport& report) : type_(type), report_(report) {}

  std::string operator()(const std::string& name) {
    const std::string identifier = WwiseIdentifier(name);
    std::string unique = identifier;
    for (int n = 2; !used_.insert(unique).second; ++n) unique = identifier + "_" + std::to_string(n);
    if (unique != name) {
      bool changed = false;
      const std::string readable = CleanText(name, changed);
      report_.renamed.push_back({type_, readable, unique});
      report_.Warn(std::string(type_) + " \"" + readable + "\" renamed to \"" + unique + "\"");
    }
    return unique;
  }

 private:
  const char* type_;
  NativeExport& report_;
  std::unordered_set<std::string> used_;
};

// The IDs of the export's Work Units, by category. Each comes from the Work
// Unit's name and category alone, so a re-export replaces the same files.
struct WorkUnitIds {
  explicit WorkUnitIds(const std::string& name) : name_(name) {}
  std::string operator()(const char* category) const {
    return DerivedGuid("work unit:" + std::string(category) + "/" + name_);
  }
  std::unordered_set<std::string> All() const {
    std::unordered_set<std::string> all;
    for (const char* category : kCategories) all.insert((*this)(category));
    return all;
  }
  static constexpr const char* kCategories[] = {kMusicFolder, "Events", "SoundBanks", "Switches", "Triggers"};

 private:
  std::string name_;
};

// What the project holds outside the export's own Work Units (those of an
// earlier export, which this one replaces): the game syncs it may use and
// the identifiers no object of the export may take, the export's Work Unit
// IDs among them.
ProjectInfo Others(const ProjectInfo& project, const std::unordered_set<std::string>& own, ReservedIds& reserved) {
  ProjectInfo others = project;
  reserved.guids.insert(own.begin(), own.end());
  const auto isOwn = [&](const ProjectObject& object) { return own.count(object.workUnitId) > 0; };
  others.groups.erase(std::remove_if(others.groups.begin(), others.groups.end(), isOwn), others.groups.end());
  others.triggers.erase(std::remove_if(others.triggers.begin(), others.triggers.end(), isOwn), others.triggers.end());
  for (const auto& [id, workUnit] : project.objectIds) {
    if (!own.count(workUnit)) reserved.guids.insert(id);
  }
  for (const auto& [shortId, workUnit] : project.shortIds) {
    if (!own.count(workUnit)) reserved.shortIds.insert(shortId);
  }
  return others;
}

void AddFile(NativeExport& result, const ProjectInfo& project, const char* category, const std::string& workUnit,
             const std::string& id, std::string content) {
  std::string path = std::string(category) + "/" + workUnit + ".wwu";
  if (const auto existing = project.workUnits.find(path); existing != project.workUnits.end() && existing->second != id) {
    result.Warn("The Wwise project already has \"" + path + "\": copying this export into it would replace that file");
  }
  result.files.push_back({category, std::move(path), std::move(content)});
}

}  // namespace

NativeExport BuildNativeExport(const WwiseProjectData& model, const ExportOptions& options, const ProjectInfo& project) {
  NativeExport result;
  const std::string workUnit = UniqueNames("WorkUnit", result)(model.projectName);
  const WorkUnitIds unitIds(workUnit);
  ReservedIds reserved;
  const ProjectInfo others = Others(project, unitIds.All(), reserved);
  Identifiers ids(std::move(reserved));
  const int schema = project.schemaVersion;
  if (project.conversion.id.empty()) {
    result.Warn("The Wwise project has no \"Default Conversion Settings\": segments and containers are written "
                "without a Conversion reference");
  }
  GameSyncs syncs(others, unitIds("Switches"), unitIds("Triggers"), ids, result);
  const MusicWorkUnit music{workUnit, unitIds(kMusicFolder), schema,
                            {"Master Audio Bus", kMasterAudioBusId, project.masterBusWorkUnitId}, project.conversion};
  const MusicHierarchy hierarchy = BuildMusicHierarchy(model, music, ids, syncs, result);
  AddFile(result, project, kMusicFolder, workUnit, music.id, hierarchy.document);

  std::vector<ProjectObject> events;
  if (options.createEvents) {
    Document doc;
    const std::string eventsWorkUnit = unitIds("Events");
    const WorkUnitFrame frame = WorkUnit(doc, "Events", workUnit, eventsWorkUnit, schema);
    UniqueNames names("Event", result);
    std::unordered_map<std::string, int> playsOf;  // events so far by what they play
    Node list = 0;
    for (const WwiseEvent& event : model.events) {
      const auto target = hierarchy.playable.find(event.target);
      if (target == hierarchy.playable.end()) {
        result.Warn("Event \"" + event.name + "\" plays a folder, which Wwise cannot play: left out");
        continue;
      }
      if (events.empty()) list = doc.Element(frame.workUnit, "ChildrenList");
      // An event is what its group became: renaming the group keeps the event.
      const std::string& played = target->second.identity;
      const int plays = ++playsOf[played];
      const std::string role = "event:" + played + (plays > 1 ? "@" + std::to_string(plays) : "");
      events.push_back({names(event.name), ids.Guid(role), eventsWorkUnit});
      const Node node = Object(doc, "Event", events.back().name, events.back().id);
      doc.Attach(list, node);
      const Node action = Object(doc, "Action", "", ids, role + "/action");
      doc.Attach(doc.Element(node, "ChildrenList"), action);
      PropertyList(doc, action, {Int16("ActionType", 1)});  // play
      ObjectReference(doc, doc.Element(action, "ReferenceList"), "Target", target->second.target, schema);
    }
    AddFile(result, project, "Events", workUnit, eventsWorkUnit, doc.Write(frame.document));
  }

  if (options.createSoundBank) {
    Document doc;
    const WorkUnitFrame frame = WorkUnit(doc, "SoundBanks", workUnit, unitIds("SoundBanks"), schema);
    UniqueNames names("SoundBank", result);
    if (!model.soundBanks.empty()) {
      const Node list = doc.Element(frame.workUnit, "ChildrenList");
      for (const WwiseSoundBank& bank : model.soundBanks) {
        const std::string name = names(bank.name);
        const Node node = Object(doc, "SoundBank", name, ids.Guid("soundbank:" + name));
        doc.Attach(list, node);
        const Node inclusions = doc.Element(node, "ObjectInclusionList");
        for (const ProjectObject& event : events) {
          const Node ref = doc.Element(inclusions, "ObjectRef");
          doc.Attribute(ref, "Name", event.name).Attribute(ref, "ID", event.id).Attribute(ref, "WorkUnitID", event.workUnitId);
          doc.Attribute(ref, "Origin", "Manual").Attribute(ref, "Filter", "7");  // events, structures and media
        }
        doc.Element(node, "ObjectExclusionList");
        doc.Element(node, "GameSyncExclusionList");
      }
    }
    AddFile(result, project, "SoundBanks", workUnit, unitIds("SoundBanks"), doc.Write(frame.document));
  }
  if (syncs.HasNewGroups()) {
    AddFile(result, project, "Switches", workUnit, unitIds("Switches"), syncs.SwitchesDocument(workUnit, schema));
  }
  if (syncs.HasNewTriggers()) {
    AddFile(result, project, "Triggers", workUnit, unitIds("Triggers"), syncs.TriggersDocument(workUnit, schema));
  }
  return result;
}

bool WriteNativeExport(NativeExport& result, const std::string& root, bool copyAudio, std::vector<std::string>& written,
                       std::string& error) {
  using ZOLVA::Files::MakeDirectory;
  if (!MakeDirectory(root)) {
    error = "Failed to create output directory: " + root;
    return false;
  }
  for (const NativeExport::File& file : result.files) {
    MakeDirectory(root + "/" + file.category);
    const std::string path = root + "/" + file.relativePath;
    if (!ZOLVA::Files::WriteWholeFile(path, file.content)) {
      error = "Failed to write work unit: " + path;
      return false;
    }
    written.push_back(path);
  }
  if (!copyAudio || result.audio.empty()) return true;
  MakeDirectory(root + "/Originals");
  MakeDirectory(root + "/Originals/SFX");
  for (const NativeExport::Audio& audio : result.audio) {
    if (!ZOLVA::Files::CopyRegularFile(audio.source, root + "/" + audio.relativePath)) {
      result.Warn("Audio file \"" + audio.source + "\" could not be copied to \"" + audio.relativePath + "\"");
    }
  }
  return true;
}

}  // namespace ZOLVA_Wwise::Native

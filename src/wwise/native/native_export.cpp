#include "wwise/native/native_export.h"

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

void AddFile(NativeExport& result, const ProjectInfo& project, const char* category, const std::string& workUnit,
             std::string content) {
  std::string path = std::string(category) + "/" + workUnit + ".wwu";
  if (!project.folder.empty() && ZOLVA::Files::IsRegularFile(project.folder + "/" + path)) {
    result.Warn("The Wwise project already has \"" + path + "\": copying this export into it would replace that file");
  }
  result.files.push_back({category, std::move(path), std::move(content)});
}

}  // namespace

NativeExport BuildNativeExport(const WwiseProjectData& model, const ExportOptions& options, const ProjectInfo& project) {
  NativeExport result;
  Identifiers ids;
  const std::string workUnit = UniqueNames("WorkUnit", result)(model.projectName);
  const int schema = project.schemaVersion;
  GameSyncs syncs(project, ids.Guid(), ids.Guid(), ids, result);
  const MusicWorkUnit music{workUnit, ids.Guid(), schema, {"Master Audio Bus", kMasterAudioBusId, project.masterBusWorkUnitId}};
  const MusicHierarchy hierarchy = BuildMusicHierarchy(model, music, ids, syncs, result);
  AddFile(result, project, kMusicFolder, workUnit, hierarchy.document);

  std::vector<ProjectObject> events;
  if (options.createEvents) {
    Document doc;
    const std::string eventsWorkUnit = ids.Guid();
    const WorkUnitFrame frame = WorkUnit(doc, "Events", workUnit, eventsWorkUnit, schema);
    UniqueNames names("Event", result);
    Node list = 0;
    for (const WwiseEvent& event : model.events) {
      const auto target = hierarchy.playable.find(event.target);
      if (target == hierarchy.playable.end()) {
        result.Warn("Event \"" + event.name + "\" plays a folder, which Wwise cannot play: left out");
        continue;
      }
      if (events.empty()) list = doc.Element(frame.workUnit, "ChildrenList");
      events.push_back({names(event.name), event.guid, eventsWorkUnit});
      const Node node = Object(doc, "Event", events.back().name, event.guid);
      doc.Attach(list, node);
      const Node action = Object(doc, "Action", "", ids.Guid(), ids);
      doc.Attach(doc.Element(node, "ChildrenList"), action);
      PropertyList(doc, action, {Int16("ActionType", 1)});  // play
      ObjectReference(doc, doc.Element(action, "ReferenceList"), "Target", target->second);
    }
    AddFile(result, project, "Events", workUnit, doc.Write(frame.document));
  }

  if (options.createSoundBank) {
    Document doc;
    const WorkUnitFrame frame = WorkUnit(doc, "SoundBanks", workUnit, ids.Guid(), schema);
    UniqueNames names("SoundBank", result);
    if (!model.soundBanks.empty()) {
      const Node list = doc.Element(frame.workUnit, "ChildrenList");
      for (const WwiseSoundBank& bank : model.soundBanks) {
        const Node node = Object(doc, "SoundBank", names(bank.name), bank.guid);
        doc.Attach(list, node);
        const Node inclusions = doc.Element(node, "ObjectInclusionList");
        for (const ProjectObject& event : events) {
          const Node ref = doc.Element(inclusions, "ObjectRef");
          doc.Attribute(ref, "Name", event.name).Attribute(ref, "ID", event.id).Attribute(ref, "WorkUnitID", event.workUnitId);
          doc.Attribute(ref, "Filter", "7").Attribute(ref, "Origin", "Manual");  // events, structures and media
        }
        doc.Element(node, "ObjectExclusionList");
        doc.Element(node, "GameSyncExclusionList");
      }
    }
    AddFile(result, project, "SoundBanks", workUnit, doc.Write(frame.document));
  }
  if (syncs.HasNewGroups()) AddFile(result, project, "Switches", workUnit, syncs.SwitchesDocument(workUnit, schema));
  if (syncs.HasNewTriggers()) AddFile(result, project, "Triggers", workUnit, syncs.TriggersDocument(workUnit, schema));
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

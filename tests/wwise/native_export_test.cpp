// The native export checked the way Wwise reads a project: every reference
// resolves, identifiers are unique, and each object has the shape of one
// Wwise saved itself.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "wwise/model.h"
#include "wwise/export_options.h"
#include "wwise/native/identity.h"
#include "wwise/native/names.h"
#include "wwise/native/native_export.h"
#include "wwise/native/project_reader.h"
#include "wwise/native/sha1.h"
#include "wwise/native/xml_scan.h"
#include "wwise/schema.h"
#include "wwise/transform.h"

namespace ZOLVA_Wwise::Native {
namespace {

constexpr char kSwitches[] =
    "<WwiseDocument Type=\"WorkUnit\" ID=\"{6984FCAC-A6E6-49E2-A79F-77BC288701F0}\"><Switches><WorkUnit>"
    "<SwitchGroup Name=\"Mood\" ID=\"{9127B7FC-12D5-45F1-99E7-D9EC0CF8E8B1}\"><ChildrenList>"
    "<Switch Name=\"Calm\" ID=\"{30D56DEF-DA40-45C9-A9EC-37FEBDF904E4}\"/></ChildrenList></SwitchGroup>"
    "<StateGroup Name=\"Zone\" ID=\"{AF599241-DE64-4286-BB8B-B0260EE20B80}\"/>"
    "<Switch Name=\"Stray\" ID=\"{7C400264-0402-4E47-930D-960FBDD8605B}\"/></WorkUnit></Switches></WwiseDocument>"
    "<WwiseDocument Type=\"WorkUnit\" ID=\"{A74EEB4A-0805-4AFA-969C-53DCB862B550}\"><Bus Name=\"Master Audio Bus\" "
    "ID=\"{1514A4D8-1DA6-412A-A17E-75CA0C2149F3}\"/><Trigger Name='Hit &amp; Run' ID='{25D1ACE1-D5FA-450D-826B-745E8B0838BB}'/>"
    "<Conversion Name=\"Default Conversion Settings\" ID=\"{6D1B890C-9826-4384-BF07-C15223E9FB56}\"/>";

ProjectInfo Project(int schemaVersion = 119) {
  ProjectInfo project;
  project.schemaVersion = schemaVersion;
  ReadWorkUnit(kSwitches, project);
  return project;
}

constexpr char kSchema[] = R"({"projectName":"Deep","clusters":[
  {"guid":"a","name":"A","parentGuid":"h","startTime":1,"endTime":3,"entryPoint":1.5,"audioFile":"/m/a.wav"},
  {"guid":"b","name":"B","parentGuid":"v","startTime":2,"endTime":6,"audioFile":"/m/b.wav"},
  {"guid":"c","name":"C","parentGuid":"v","startTime":4,"endTime":5,"audioFile":"/n/b.wav"},
  {"guid":"d","name":"Calm","parentGuid":"s","startTime":0,"endTime":1,"audioFile":"/m/d.aif"},
  {"guid":"e","name":"E","parentGuid":"x","startTime":0,"endTime":2}],
 "groups":[{"guid":"v","name":"V","type":"vertical","childGuids":["b","c"]},
  {"guid":"r","name":"R","type":"oneshot","childGuids":["a"]},
  {"guid":"h","name":"H","type":"horizontal","childGuids":["r","v","a"]},
  {"guid":"s","name":"S","type":"switch","switchGroup":"Mood","defaultSwitch":"Calm","childGuids":["d","h"]},
  {"guid":"x","name":"X","type":"vertical","childGuids":["e"]}],
 "connections":[{"guid":"t","sourceGuid":"a","targetGuid":"b","transitionType":"nextBar","fadeTime":90},
  {"guid":"u","sourceGuid":"b","targetGuid":"a","type":"stinger","triggerEvent":"Hit & Run"},
  {"guid":"w","sourceGuid":"d","targetGuid":"h","transitionType":"exitCue","fadeTime":1,"fadeCurve":"exp2"}]})";

NativeExport Export(const std::string& schemaJson, const ProjectInfo& project) {
  V2Schema schema;
  EXPECT_TRUE(Schema::ParseV2Schema(schemaJson.c_str(), schema));
  const ExportOptions options;
  return BuildNativeExport(Schema::TransformToWwise(schema, options), options, project);
}

// An element as written: its attributes and the names of its children.
struct Element {
  std::string name, workUnit;
  std::map<std::string, std::string> attributes;
  std::vector<std::string> children;
  std::vector<size_t> childIndexes;  // into the list of all elements
};

std::vector<Element> Elements(const NativeExport& result) {
  std::vector<Element> all;
  for (const auto& file : result.files) {
    std::string workUnit;
    std::vector<size_t> open;
    ScanTags(file.content, [&](const Tag& tag) {
      if (tag.kind == Tag::End) return open.pop_back();
      if (!open.empty()) all[open.back()].children.emplace_back(tag.name), all[open.back()].childIndexes.push_back(all.size());
      Element& element = all.emplace_back();
      element.name = tag.name;
      for (const auto& [name, value] : tag.attributes) element.attributes[std::string(name)] = value;
      if (element.name == "WorkUnit") workUnit = element.attributes["ID"];
      element.workUnit = workUnit;
      if (tag.kind == Tag::Start) open.push_back(all.size() - 1);
    });
  }
  return all;
}

TEST(NativeExport, EveryReferenceResolvesAndEveryIdentifierIsUnique) {
  const ProjectInfo project = Project();
  const NativeExport result = Export(kSchema, project);
  const std::vector<Element> elements = Elements(result);
  std::map<std::string, const Element*> defined;  // objects by ID
  std::set<unsigned long> shortIds;
  std::string eventsUnit, layers;
  const std::regex guid(R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})");
  for (const Element& e : elements) {
    const auto id = e.attributes.find("ID");
    if (e.name == "ObjectRef" || e.name == "AudioSourceRef" || e.name == "WwiseDocument" || id == e.attributes.end()) {
      continue;
    }
    if (e.name == "MediaID") {
      EXPECT_TRUE(shortIds.insert(std::stoul(id->second)).second) << id->second;
      continue;
    }
    EXPECT_TRUE(defined.emplace(id->second, &e).second) << "ID used twice: " << id->second;
    if (e.name == "Event") eventsUnit = e.workUnit;
    if (e.name == "MusicSegment" && e.attributes.at("Name") == "X") layers = id->second;
    EXPECT_TRUE(std::regex_match(id->second, guid)) << id->second;
    if (const auto shortId = e.attributes.find("ShortID"); shortId != e.attributes.end()) {
      const unsigned long value = std::stoul(shortId->second);
      EXPECT_TRUE(value > 0 && value < (1ul << 30) && shortIds.insert(value).second) << shortId->second;
    }
  }
  std::map<std::string, ProjectObject> external{{kMasterAudioBusId, {"Master Audio Bus", kMasterAudioBusId, project.masterBusWorkUnitId}}};
  for (const GameSyncGroup& group : project.groups) {
    external[group.id] = group;
    for (const ProjectObject& value : group.values) external[value.id] = value;
  }
  for (const ProjectObject& trigger : project.triggers) external[trigger.id] = trigger;
  external[project.conversion.id] = project.conversion;
  size_t references = 0;
  for (const Element& e : elements) {
    if (e.name != "ObjectRef" && e.name != "AudioSourceRef") continue;
    ++references;
    const std::string& id = e.attributes.at("ID");
    std::string name, workUnit;
    if (const auto it = defined.find(id); it != defined.end()) {
      name = it->second->attributes.at("Name"), workUnit = it->second->workUnit;
      // Events play containers, as every event of a Wwise-saved project does.
      const std::string& kind = it->second->name;
      EXPECT_TRUE(e.workUnit != eventsUnit || kind == "MusicPlaylistContainer" || kind == "MusicSwitchContainer") << kind;
    } else if (const auto out = external.find(id); out != external.end()) {
      name = out->second.name, workUnit = out->second.workUnitId;
    } else {
      ADD_FAILURE() << "dangling " << e.name << " " << e.attributes.at("Name") << " " << id;
      continue;
    }
    EXPECT_EQ(e.attributes.at("Name"), name) << id;
    if (e.name == "ObjectRef") {
      EXPECT_EQ(e.attributes.at("WorkUnitID"), workUnit) << id;
    }
  }
  EXPECT_GT(references, 20u);
  // The top-level vertical group plays through a playlist container; its event keeps the ID it had when it
  // played the segment.
  EXPECT_NE(result.files[1].content.find("<Event Name=\"Play_X\" ID=\"" + DerivedGuid("event:" + layers)), std::string::npos);
  // The layers share one segment; the existing group and trigger are used, not made again.
  EXPECT_EQ(result.files.size(), 3u);
  EXPECT_EQ(result.audio.size(), 4u);
  std::map<std::string, std::string> audio;
  for (const auto& file : result.audio) audio[file.source] = file.relativePath;
  EXPECT_EQ(audio["/n/b.wav"], "Originals/SFX/b_2.wav");  // a second b.wav from another folder
}

// Wwise-saved objects: their attributes, the order of their parts, and the
// type of each property.
TEST(NativeExport, ObjectsHaveTheShapeWwiseSaves) {
  struct Shape {
    const char* element;
    std::set<std::string> attributes;
    std::vector<std::string> order;  // children, in this order where present
  };
  const Shape shapes[] = {
      {"MusicSegment", {"Name", "ID", "ShortID"}, {"PropertyList", "ReferenceList", "ChildrenList", "ObjectLists"}},
      {"MusicPlaylistContainer", {"Name", "ID", "ShortID"}, {"ReferenceList", "ChildrenList", "ObjectLists"}},
      {"MusicSwitchContainer", {"Name", "ID", "ShortID"}, {"ReferenceList", "ChildrenList", "ObjectLists"}},
      {"MusicTrack", {"Name", "ID", "ShortID"}, {"ReferenceList", "ChildrenList", "ObjectLists"}},
      {"AudioFileSource", {"Name", "ID"}, {"Language", "AudioFile", "MediaIDList"}},
      {"MusicClip", {"Name", "ID"}, {"PropertyList", "AudioSourceRef"}},
      {"MusicPlaylistItem", {"Name", "ID", "ShortID"}, {"PropertyList", "ReferenceList", "ChildrenList"}},
      {"MusicTransition", {"Name", "ID"}, {"PropertyList", "ReferenceList", "ChildrenList", "TransitionInfo"}},
      {"MusicCue", {"Name", "ID"}, {"PropertyList"}},
      {"MusicStinger", {"Name", "ID"}, {"ReferenceList"}},
      {"MultiSwitchEntry", {"Name", "ID"}, {"ReferenceList", "ObjectLists"}},
      {"Event", {"Name", "ID"}, {"ChildrenList"}},
      {"Action", {"Name", "ID", "ShortID"}, {"PropertyList", "ReferenceList"}},
      {"SoundBank", {"Name", "ID"}, {"ObjectInclusionList", "ObjectExclusionList", "GameSyncExclusionList"}},
      {"WorkUnit", {"Name", "ID", "PersistMode"}, {"ChildrenList"}},
      {"ObjectRef", {"Name", "ID", "WorkUnitID"}, {}},
  };
  const std::map<std::string, std::string> propertyTypes = {
      {"EndPosition", "Real64"},    {"CueType", "int16"},  {"TimeMs", "Real64"},     {"PlaylistItemType", "int16"},
      {"PlayMode", "int16"},        {"LoopCount", "int16"}, {"ExitSourceAt", "int16"}, {"SourceContextType", "int16"},
      {"DestinationContextType", "int16"}, {"EnableSourceFadeOut", "bool"}, {"EnableDestinationFadeIn", "bool"},
      {"FadeCurve", "int16"},       {"FadeTime", "Real64"}, {"FadeType", "int16"},     {"IsFolder", "bool"},
      {"PlayDestinationPreEntry", "bool"}, {"PlaySourcePostExit", "bool"}, {"ActionType", "int16"},
      {"EndTrimOffset", "Real64"},  {"PlayAt", "Real64"}};
  std::set<std::string> seen;
  for (const Element& e : Elements(Export(kSchema, Project()))) {
    if (e.name == "Property") {
      EXPECT_EQ(propertyTypes.at(e.attributes.at("Name")), e.attributes.at("Type")) << e.attributes.at("Name");
      continue;
    }
    for (const Shape& shape : shapes) {
      if (e.name != shape.element) continue;
      seen.insert(e.name);
      std::set<std::string> attributes;
      for (const auto& [name, value] : e.attributes) attributes.insert(name);
      if (e.name == "ObjectRef") attributes.erase("Filter"), attributes.erase("Origin");  // bank inclusions
      EXPECT_EQ(attributes, shape.attributes) << e.name;
      size_t at = 0;
      for (const std::string& child : e.children) {
        while (at < shape.order.size() && shape.order[at] != child) ++at;
        EXPECT_LT(at++, shape.order.size()) << e.name << " > " << child << " out of order";
      }
    }
  }
  EXPECT_EQ(seen.size(), std::size(shapes));
}

// The first child of `e` with that element name (and Name attribute, when given); null if none.
const Element* Child(const std::vector<Element>& all, const Element& e, const std::string& name,
                     const std::string& named = "") {
  for (const size_t i : e.childIndexes) {
    const auto attribute = all[i].attributes.find("Name");
    if (all[i].name == name && (named.empty() || (attribute != all[i].attributes.end() && attribute->second == named))) {
      return &all[i];
    }
  }
  return nullptr;
}

// As in every project Wwise 2023.1 and 2024.1 save: the default any-to-any transition first in every container,
// a Conversion reference on each segment and container, plugin attributes right after the name, on bus,
// conversion and target references and, in 2023.1 only, on transition context references, and bank
// inclusions ending with Origin, then Filter.
TEST(NativeExport, WrittenAsWwiseWritesIt) {
  const std::string small = R"({"clusters":[{"guid":"c","name":"C","parentGuid":"p","endTime":1}],
    "groups":[{"guid":"p","name":"P","type":"horizontal","childGuids":["c"]}]})";
  for (const std::string& schema : {std::string(kSchema), small}) {
    for (const int version : {119, 123}) {
      for (const bool conversion : {true, false}) {
        ProjectInfo project = Project(version);
        if (!conversion) project.conversion = ProjectObject();
        const NativeExport result = Export(schema, project);
        const std::vector<Element> all = Elements(result);
        size_t objects = 0, conversions = 0;
        const std::regex plugin(std::string("OutputBus|Conversion|Target") + (version == 119 ? "|(Source|Destination)ContextObject" : ""));
        for (const Element& e : all) {
          const auto name = e.attributes.find("Name");
          if (e.name == "WwiseDocument") {
            EXPECT_EQ(e.attributes.at("SchemaVersion"), std::to_string(version));
          }
          if (e.name == "Reference" && name != e.attributes.end()) {
            EXPECT_EQ(e.attributes.count("CompanyID") + e.attributes.count("PluginType"),
                      std::regex_match(name->second, plugin) ? 2u : 0u) << name->second;
          }
          if (e.name != "MusicSegment" && e.name != "MusicPlaylistContainer" && e.name != "MusicSwitchContainer") continue;
          ++objects;
          const Element* first = &all[Child(all, e, "ReferenceList")->childIndexes.front()];
          conversions += first->attributes.at("Name") == "Conversion" &&
                         Child(all, *first, "ObjectRef")->attributes.at("ID") == project.conversion.id;
          if (e.name == "MusicSegment") continue;
          const Element* root = Child(all, *Child(all, *Child(all, e, "ReferenceList"), "Reference", "TransitionRoot"), "Custom");
          const Element* children = Child(all, *Child(all, *root, "MusicTransition"), "ChildrenList");
          ASSERT_NE(children, nullptr) << name->second;
          const Element& any = all[children->childIndexes.front()];
          EXPECT_TRUE(Child(all, any, "PropertyList") && !Child(all, any, "ReferenceList")) << name->second;
        }
        EXPECT_EQ(conversions, conversion ? objects : 0u);
        EXPECT_EQ(!result.warnings.empty() && result.warnings[0].rfind("The Wwise project has no \"Default Conversion", 0) == 0,
                  !conversion);
        const std::regex misshapen(R"x(<Reference (?!Name="\w+"( CompanyID="4095" PluginID="65535" PluginType="15")?>))x");
        for (const auto& file : result.files) {
          EXPECT_TRUE(file.category != "SoundBanks" || file.content.find("Origin=\"Manual\" Filter=\"7\"/>") != std::string::npos);
          EXPECT_FALSE(std::regex_search(file.content, misshapen)) << file.category;
        }
      }
    }
  }
}

// Each transition type as written (the same in schema 119 and 123): ExitSourceAt only as Wwise-saved projects write
// it, the destination from its entry cue, each changed timing told once, however many transitions have it.
TEST(NativeExport, TransitionTimingsAreThoseWwiseProjectsUse) {
  const std::tuple<int, const char*, const char*> table[] = {  // type, ExitSourceAt, warning
      {Immediate, "0", ""}, {NextGrid, "2", "nextGrid is written as nextBar"}, {NextBar, "2", ""}, {NextBeat, "3", ""},
      {NextCue, "2", "nextCue is written as nextBar"}, {ExitCue, "2", "exitCue is written as nextBar"},
      {EntryCue, "0", "entryCue has no Wwise equal"}, {CrossFade, "0", ""}, {9, "0", "unknown has no Wwise equal"}};
  WwiseProjectData model;
  model.projectName = "T";
  WwiseMusicContainer& playlist = model.containers.emplace_back();
  playlist.guid = "p", playlist.type = PlaylistContainer;
  std::string expected, warnings, written, told;
  for (const auto& [type, value, warning] : table) {
    const WwiseTransition transition{"", "", static_cast<TransitionType>(type), 1.0, 1.0, Linear, Linear, {}, {}};
    playlist.transitions.insert(playlist.transitions.end(), 2, transition);
    expected += std::string(value) + value;
    if (*warning) warnings += std::string("Transition type ") + warning + "|";
  }
  const NativeExport result = BuildNativeExport(model, ExportOptions(), Project());
  const std::string& music = result.files[0].content;
  const std::regex exit(R"x("ExitSourceAt" Type="int16" Value="(\d+)")x");
  for (std::sregex_iterator it(music.begin(), music.end(), exit), end; it != end; ++it) written += (*it)[1];
  for (const std::string& warning : result.warnings) told += warning.substr(0, warning.find_first_of(":,")) + "|";
  EXPECT_EQ(written, expected);
  EXPECT_EQ(told, warnings);
  EXPECT_EQ(music.find("DestinationJumpPositionPreset"), std::string::npos);
}

// Each object's element and ID, with its ShortID.
std::map<std::string, std::string> Identities(const NativeExport& result) {
  std::map<std::string, std::string> identities;
  for (const Element& e : Elements(result)) {
    const auto id = e.attributes.find("ID");
    if (id == e.attributes.end() || e.name == "ObjectRef" || e.name == "AudioSourceRef") continue;
    const auto shortId = e.attributes.find("ShortID");
    identities[e.name + " " + id->second] = shortId == e.attributes.end() ? "" : shortId->second;
  }
  return identities;
}

TEST(NativeExport, EveryObjectKeepsItsIdentity) {
  ProjectInfo project;  // without the Switch group and the Trigger, which are made
  project.schemaVersion = 123;
  project.masterBusWorkUnitId = "{A74EEB4A-0805-4AFA-969C-53DCB862B550}";
  const NativeExport first = Export(kSchema, project), again = Export(kSchema, project);
  for (size_t f = 0; f < first.files.size(); ++f) EXPECT_EQ(first.files[f].content, again.files[f].content);
  const auto before = Identities(first);
  // One cluster renamed, and a cluster and a group added before the others.
  std::string edited = kSchema;
  edited.replace(edited.find(R"("name":"A")"), 10, R"("name":"Renamed")");
  edited.insert(edited.find("\"clusters\":[") + 12, R"({"guid":"n","name":"New","parentGuid":"m","endTime":1},)");
  edited.insert(edited.find("\"groups\":[") + 10, R"({"guid":"m","name":"M","type":"horizontal","childGuids":["n"]},)");
  const auto after = Identities(Export(edited, project));
  for (const auto& [id, shortId] : before) EXPECT_TRUE(after.count(id) && after.at(id) == shortId) << id;
  EXPECT_EQ(after.size(), before.size() + 10);  // segment, 2 cues, container, 2 items, 2 transitions, event, action
  // A segment's ID and ShortID taken by another Work Unit of the project: that segment alone is derived again.
  const auto segment = std::find_if(before.begin(), before.end(), [](const auto& i) { return i.first.rfind("MusicSegment", 0) == 0; });
  ProjectInfo taken = project;
  taken.objectIds.emplace_back(segment->first.substr(13), "{0F0F0F0F-0000-4000-8000-000000000000}");
  taken.shortIds.emplace_back(std::stoul(segment->second), "{0F0F0F0F-0000-4000-8000-000000000000}");
  const auto moved = Identities(Export(kSchema, taken));
  std::vector<std::string> changed;
  for (const auto& [id, shortId] : moved) {
    if (!before.count(id)) changed.push_back(shortId);
  }
  ASSERT_EQ(changed.size(), 1u);
  EXPECT_NE(changed[0], segment->second);
  EXPECT_EQ(moved.size(), before.size());
}

TEST(NativeIdentity, Sha1KnownAnswers) {
  const std::pair<std::string, std::string> vectors[] = {
      {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq", "84983e441c3bd26ebaae4aa1f95129e5e54670f1"},
      {std::string(1000, 'a'), "291e9a6c66994949b57ba5e650361e98fc36b1ba"}};
  for (const auto& [text, hex] : vectors) {
    std::string digest;
    for (const uint8_t byte : Sha1(text)) digest += "0123456789abcdef"[byte >> 4], digest += "0123456789abcdef"[byte & 15];
    EXPECT_EQ(digest, hex) << text.size();
  }
}

TEST(NativeOptions, FormatAndProjectAreJsonMembers) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"{ \"format\" :\t\"native\" ,\"wwiseProject\" : \"C:\\\\W\\\\G.wproj\"}", "native", "C:\\W\\G.wproj"},
      {R"({"name":"format","format":"fixed"})", "fixed", ""},
      {R"({"format":"Native","wwiseProject":"open)", "Native", ""},
      {R"({"format" : null })", "null", ""},
      {"", "fixed", ""}};
  for (const auto& [text, format, project] : cases) {
    const ExportOptions options = ParseExportOptions(text);
    EXPECT_EQ(options.format, format) << text;
    EXPECT_EQ(options.wwiseProject, project) << text;
  }
}

// Nesting as deep as the schema goes, without the stack growing with it.
TEST(NativeExport, DeepNestingIsWrittenWhole) {
  std::string schema = R"({"clusters":[{"guid":"c0","name":"Leaf","endTime":1}],"groups":[)";
  constexpr int kDepth = 5000;
  for (int i = 0; i < kDepth; ++i) {
    schema += (i ? "," : "") + std::string(R"({"guid":"g)") + std::to_string(i) + R"(","type":")" +
              (i % 2 ? "switch" : "horizontal") + R"(","childGuids":[")" + (i ? "g" : "c") + std::to_string(i ? i - 1 : 0) + "\"]}";
  }
  const NativeExport result = Export((schema + "]}").c_str(), Project());
  size_t objects = 0;
  ScanTags(result.files.front().content, [&](const Tag& tag) {
    objects += tag.kind == Tag::Start && (tag.name == "MusicSwitchContainer" || tag.name == "MusicPlaylistContainer");
  });
  EXPECT_EQ(objects, size_t{kDepth});
}

TEST(NativeNames, IdentifiersAndCleanText) {
  const std::pair<const char*, const char*> identifiers[] = {
      {"Play_Main", "Play_Main"}, {"1st", "_1st"}, {"", "_"}, {"Été 2", "_t__2"}, {"a\xff" "b", "a_b"}, {"a-b c", "a_b_c"}};
  for (const auto& [name, identifier] : identifiers) EXPECT_EQ(WwiseIdentifier(name), identifier) << name;
  const std::pair<std::string, std::string> texts[] = {
      {"R\u00e9veil", "R\u00e9veil"}, {"a\tb\x7f\n", "ab"}, {"x\xc3(", "x\xEF\xBF\xBD("}, {"\xed\xa0\x80", "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"}};
  for (const auto& [text, clean] : texts) {
    bool changed = false;
    EXPECT_EQ(CleanText(text, changed), clean);
    EXPECT_EQ(changed, text != clean);
  }
}

TEST(NativeProject, ReadsWhatTheExportRefersTo) {
  const std::pair<const char*, int> versions[] = {
      {"<?xml version=\"1.0\"?><WwiseDocument Type=\"Project\" SchemaVersion=\"119\">", 119},
      {"<!-- x --><WwiseDocument SchemaVersion='123' Type='Project'/>", 123},
      {"<WwiseDocument Type=\"WorkUnit\" SchemaVersion=\"119\">", 0},
      {"<Other/><WwiseDocument Type=\"Project\" SchemaVersion=\"119\">", 0},
      {"<WwiseDocument Type=\"Project\" SchemaVersion=\"12x\">", 0},
      {"<WwiseDocument Type=\"Project\" SchemaVersion=\"", 0}};
  for (const auto& [text, version] : versions) EXPECT_EQ(ProjectSchemaVersion(text), version) << text;
  const ProjectInfo project = Project();
  EXPECT_EQ(project.masterBusWorkUnitId, "{A74EEB4A-0805-4AFA-969C-53DCB862B550}");
  ASSERT_EQ(project.groups.size(), 2u);
  EXPECT_EQ(project.groups[0].values.size(), 1u);  // a Switch outside any group is no value
  EXPECT_TRUE(project.groups[1].isState);
  ASSERT_EQ(project.triggers.size(), 1u);
  EXPECT_EQ(project.triggers[0].name, "Hit & Run");
}

}  // namespace
}  // namespace ZOLVA_Wwise::Native

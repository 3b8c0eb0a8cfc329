#include "wwise/work_units.h"

#include <string_view>
#include <utility>

#include "json/json_text.h"
#include "wwise/work_unit_objects.h"
#include "wwise/xml_builder.h"

namespace ZOLVA_Wwise {

namespace {

using Xml::kFalse;
using Xml::kTrue;
using Xml::XmlBuilder;

// An element holding only text. Empty text still closes the start tag, so the
// closing tag comes on a line of its own.
void TextElement(XmlBuilder& xml, std::string_view name, std::string_view text) {
  xml.StartElement(name);
  xml.AddTextContent(text);
  xml.EndElement();
}

// Numbers in element text: a default stream's form, classic locale.
void NumberElement(XmlBuilder& xml, std::string_view name, double value) {
  TextElement(xml, name, ZOLVA::Json::FormatNumber(value));
}

void IdentityAttributes(XmlBuilder& xml, const std::string& name, const std::string& guid) {
  xml.AddAttribute("Name", name);
  xml.AddAttribute("ID", guid);
}

// <ObjectRef ID="..." />
void ObjectRef(XmlBuilder& xml, std::string_view id) {
  xml.StartElement("ObjectRef");
  xml.AddAttribute("ID", id);
  xml.EndElement();
}

std::string_view ContainerElementName(ContainerType type) {
  switch (type) {
    case PlaylistContainer: return "MusicPlaylistContainer";
    case SegmentObject: return "MusicSegment";
    case SwitchContainer: return "MusicSwitchContainer";
    case RandomSequence: return "RandomSequenceContainer";
    case BlendContainer: return "BlendContainer";
    default: return "ActorMixer";
  }
}

std::string_view TransitionTypeName(TransitionType type) {
  switch (type) {
    case Immediate: return "Immediate";
    case NextGrid: return "NextGrid";
    case NextBar: return "NextBar";
    case NextBeat: return "NextBeat";
    case NextCue: return "NextCue";
    case ExitCue: return "ExitCue";
    case EntryCue: return "EntryCue";
    case CrossFade: return "CrossFade";
    default: return "Unknown";
  }
}

std::string_view ActionTypeName(int32_t type) {
  switch (type) {
    case 0: return "Play";
    case 1: return "Stop";
    case 2: return "Pause";
    case 3: return "Resume";
    default: return "";
  }
}

void WriteTransition(XmlBuilder& xml, const WwiseTransition& transition) {
  xml.StartElement("MusicTransition");
  xml.StartElement("Source");
  ObjectRef(xml, transition.sourceId.empty() ? std::string_view("Any") : transition.sourceId);
  xml.EndElement();
  xml.StartElement("Destination");
  ObjectRef(xml, transition.destinationId.empty() ? std::string_view("Any") : transition.destinationId);
  xml.EndElement();
  xml.StartElement("TransitionInfo");
  xml.StartElement("TransitionType");
  xml.AddAttribute("Type", kTrue);
  xml.AddTextContent(TransitionTypeName(transition.transitionType));
  xml.EndElement();
  for (const auto& [element, time] : {std::pair<const char*, double>{"FadeOutParams", transition.fadeOutTime},
                                      std::pair<const char*, double>{"FadeInParams", transition.fadeInTime}}) {
    xml.StartElement(element);
    xml.AddAttribute("Time", time);
    xml.AddAttribute("Curve", kTrue);
    xml.EndElement();
  }
  xml.EndElement();  // TransitionInfo
  if (transition.sourceCue) TextElement(xml, "SourceCue", *transition.sourceCue);
  if (transition.destinationCue) TextElement(xml, "DestinationCue", *transition.destinationCue);
  xml.EndElement();  // MusicTransition
}

// The frame every Work Unit shares; `body` fills its ChildrenList. `size`
// is what the body adds, as far as known up front.
template <typename Body>
std::string WorkUnitDocument(std::string_view category, const std::string& projectName, size_t size, Body&& body) {
  XmlBuilder xml;
  xml.Reserve(size + 256 + XmlBuilder::EscapedSize(projectName));
  xml.StartElement("WwiseDocument");
  xml.AddAttribute("Type", kTrue);
  xml.AddAttribute("Version", kTrue);
  xml.StartElement(category);
  xml.StartElement("WorkUnit");
  xml.AddAttribute("Name", projectName);
  xml.AddAttribute("Type", kTrue);
  xml.StartElement("ChildrenList");
  body(xml);
  for (int open = 0; open < 4; ++open) xml.EndElement();
  return xml.Release();
}

}  // namespace

namespace Xml {

std::string GenerateMusicSegmentXml(const WwiseMusicSegment& segment) {
  XmlBuilder xml;
  xml.StartElement("MusicSegment");
  IdentityAttributes(xml, segment.name, segment.guid);
  xml.AddAttribute("ShortID", segment.shortId);
  xml.StartElement("PropertyList");
  for (const auto& [property, value] : {std::pair<const char*, double>{"Duration", segment.duration},
                                        std::pair<const char*, double>{"Tempo", segment.tempo}}) {
    xml.StartElement("Property");
    xml.AddAttribute("Name", property);
    xml.AddAttribute("Type", kTrue);
    xml.StartElement("ValueList");
    xml.StartElement("Value");
    xml.AddAttribute("Platform", kTrue);
    xml.AddTextContent(ZOLVA::Json::FormatNumber(value));
    xml.EndElement();  // Value
    xml.EndElement();  // ValueList
    xml.EndElement();  // Property
  }
  xml.EndElement();  // PropertyList
  xml.StartElement("TimeSignatureInfo");
  TextElement(xml, "TimeSignatureNumerator", std::to_string(segment.timeSignatureNumerator));
  TextElement(xml, "TimeSignatureDenominator", std::to_string(segment.timeSignatureDenominator));
  xml.EndElement();
  xml.StartElement("CueList");
  for (const WwiseCue& cue : segment.cues) {
    xml.StartElement("Cue");
    xml.AddAttribute("Name", cue.name);
    NumberElement(xml, "Time", cue.time);
    xml.EndElement();
  }
  xml.EndElement();
  xml.StartElement("ChildrenList");
  for (const WwiseMusicTrack& track : segment.tracks) {
    xml.StartElement("MusicTrack");
    IdentityAttributes(xml, track.name, track.guid);
    TextElement(xml, "AudioFile", track.audioFile);
    xml.EndElement();
  }
  xml.EndElement();
  xml.EndElement();  // MusicSegment
  return xml.Release();
}

std::string GenerateMusicContainerXml(const WwiseMusicContainer& container) {
  XmlBuilder xml;
  xml.StartElement(ContainerElementName(container.type));
  IdentityAttributes(xml, container.name, container.guid);
  xml.AddAttribute("ShortID", container.shortId);
  switch (container.type) {
    case PlaylistContainer:
      xml.StartElement("Playlist");
      for (const std::string& child : container.children) {
        xml.StartElement("PlaylistItem");
        xml.AddAttribute("SegmentRef", child);
        xml.AddAttribute("PlayType", kTrue);
        xml.EndElement();
      }
      xml.EndElement();
      if (container.isLooping) {
        xml.StartElement("PlaylistLooping");
        xml.AddAttribute("Enabled", kTrue);
        if (container.loopCount >= 1) xml.AddAttribute("Count", std::to_string(container.loopCount));
        xml.EndElement();
      }
      break;
    case SwitchContainer:
      if (!container.switchGroup.empty()) TextElement(xml, "SwitchGroupRef", container.switchGroup);
      if (!container.defaultSwitch.empty()) TextElement(xml, "DefaultSwitchRef", container.defaultSwitch);
      xml.StartElement("ArgumentList");
      for (const auto& [value, child] : container.switchAssignments) {
        xml.StartElement("Argument");
        xml.AddAttribute("Name", value);
        TextElement(xml, "ChildRef", child);
        xml.EndElement();
      }
      xml.EndElement();
      break;
    case RandomSequence:
      xml.StartElement("RandomSettings");
      xml.AddAttribute("AvoidRepeat", container.avoidRepeat ? kTrue : kFalse);
      xml.EndElement();
      break;
    default:
      break;
  }
  if (!container.children.empty()) {
    xml.StartElement("ChildrenList");
    for (const std::string& child : container.children) {
      // Closed by a closing tag on its own line, never self-closed.
      xml.StartElement("ObjectRef");
      xml.AddAttribute("Name", kTrue);
      xml.AddAttribute("ID", child);
      xml.AddTextContent({});
      xml.EndElement();
    }
    xml.EndElement();
  }
  if (!container.transitions.empty()) {
    xml.StartElement("TransitionList");
    for (const WwiseTransition& transition : container.transitions) WriteTransition(xml, transition);
    xml.EndElement();
  }
  if (!container.stingers.empty()) {
    xml.StartElement("StingerList");
    for (const WwiseStinger& stinger : container.stingers) {
      xml.StartElement("Stinger");
      TextElement(xml, "TriggerEvent", stinger.triggerEvent);
      xml.StartElement("SegmentRef");
      xml.AddAttribute("ID", stinger.segmentId);
      xml.EndElement();
      NumberElement(xml, "PreLookAhead", stinger.preLookAhead);
      xml.EndElement();
    }
    xml.EndElement();
  }
  xml.EndElement();
  return xml.Release();
}

}  // namespace Xml

namespace Export {

// Every segment and container is a document of its own, taken into the Work
// Unit as text: escaped once more, declaration line and all. Each is escaped
// straight from its builder into the Work Unit and dropped, so the work is
// one pass over every object's text however the containers reference each
// other. The objects are written twice: once to size the Work Unit, which
// then never moves (in a large export, fresh memory costs more than writing
// the small objects again), and once into it.
std::string MusicWorkUnit(const WwiseProjectData& project) {
  size_t size = 0;
  for (const WwiseMusicSegment& segment : project.segments) {
    size += XmlBuilder::EscapedSize(Xml::GenerateMusicSegmentXml(segment)) + segment.name.size() + 40;
  }
  for (const WwiseMusicContainer& container : project.containers) {
    size += XmlBuilder::EscapedSize(Xml::GenerateMusicContainerXml(container)) + container.name.size() + 40;
  }
  return WorkUnitDocument("InteractiveMusic", project.projectName, size, [&](XmlBuilder& xml) {
    for (const WwiseMusicSegment& segment : project.segments) {
      xml.AddComment("Music Segment: " + segment.name);
      xml.AddTextContent(Xml::GenerateMusicSegmentXml(segment));
    }
    for (const WwiseMusicContainer& container : project.containers) {
      xml.AddComment("Container: " + container.name);
      xml.AddTextContent(Xml::GenerateMusicContainerXml(container));
    }
  });
}

std::string EventsWorkUnit(const WwiseProjectData& project) {
  return WorkUnitDocument("Events", project.projectName, project.events.size() * 512, [&](XmlBuilder& xml) {
    for (const WwiseEvent& event : project.events) {
      xml.AddComment("Event: " + event.name);
      xml.StartElement("Event");
      IdentityAttributes(xml, event.name, event.guid);
      xml.AddAttribute("ShortID", event.shortId);
      xml.StartElement("ChildrenList");
      xml.StartElement("Action");
      TextElement(xml, "ActionType", ActionTypeName(event.actionType));
      xml.StartElement("Target");
      ObjectRef(xml, event.target);
      xml.EndElement();  // Target
      xml.EndElement();  // Action
      xml.EndElement();  // ChildrenList
      xml.EndElement();  // Event
    }
  });
}

std::string SoundBanksWorkUnit(const WwiseProjectData& project) {
  return WorkUnitDocument("SoundBanks", project.projectName, project.soundBanks.size() * 256, [&](XmlBuilder& xml) {
    for (const WwiseSoundBank& bank : project.soundBanks) {
      xml.AddComment("SoundBank: " + bank.name);
      xml.StartElement("SoundBank");
      IdentityAttributes(xml, bank.name, bank.guid);
      xml.StartElement("IncludeList");
      for (const std::string& event : bank.events) {
        xml.StartElement("Include");
        xml.AddAttribute("Type", kTrue);
        xml.AddAttribute("ID", event);
        xml.EndElement();
      }
      xml.EndElement();  // IncludeList
      xml.EndElement();  // SoundBank
    }
  });
}

}  // namespace Export

}  // namespace ZOLVA_Wwise

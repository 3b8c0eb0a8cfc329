#include "wwise/preview_json.h"

#include <iterator>
#include <string>

#include "json/json_text.h"

namespace ZOLVA_Wwise::Export {
namespace {

using ZOLVA::Json::AppendNumber;
using ZOLVA::Json::AppendString;

const char* TransitionTypeName(TransitionType type) {
  static constexpr const char* kNames[] = {"Immediate", "NextGrid", "NextBar",  "NextBeat",
                                           "NextCue",   "ExitCue",  "EntryCue", "CrossFade"};
  const auto index = static_cast<size_t>(type);
  return type >= 0 && index < std::size(kNames) ? kNames[index] : "Unknown";
}

// Value 8 has no schema spelling but is named all the same.
const char* FadeCurveName(FadeCurve curve) {
  static constexpr const char* kNames[] = {"Linear", "SCurve", "Log1", "Log2", "Log3",
                                           "Exp1",   "Exp2",   "Exp3", "Constant"};
  const auto index = static_cast<size_t>(curve);
  return curve >= 0 && index < std::size(kNames) ? kNames[index] : "Linear";
}

const char* ContainerTypeName(ContainerType type) {
  static constexpr const char* kNames[] = {"MusicPlaylistContainer",  "MusicSegment",   "MusicSwitchContainer",
                                           "RandomSequenceContainer", "BlendContainer", "ActorMixer"};
  const auto index = static_cast<size_t>(type);
  return type >= 0 && index < std::size(kNames) ? kNames[index] : "Unknown";
}

// ,"key": with the comma left out for the first key of an object.
void Key(std::string& out, const char* key) {
  if (out.back() != '{') out += ',';
  out += '"';
  out += key;
  out += "\":";
}

void StringField(std::string& out, const char* key, const std::string& value) {
  Key(out, key);
  AppendString(out, value);
}

void NumberField(std::string& out, const char* key, double value) {
  Key(out, key);
  AppendNumber(out, value);
}

void CountField(std::string& out, const char* key, size_t count) {
  Key(out, key);
  out += std::to_string(count);
}

void BoolField(std::string& out, const char* key, bool value) {
  Key(out, key);
  out += value ? "true" : "false";
}

// "key":[{...},{...}], one object per element as `write` fills it.
template <typename List, typename Write>
void ObjectArray(std::string& out, const char* key, const List& list, Write write) {
  Key(out, key);
  out += '[';
  bool first = true;
  for (const auto& element : list) {
    out += first ? "{" : ",{";
    first = false;
    write(element);
    out += '}';
  }
  out += ']';
}

}  // namespace

std::string GenerateTransitionsJson(const WwiseProjectData& project) {
  std::string out = "{\"transitions\":[";
  bool first = true;
  for (const WwiseMusicContainer& container : project.containers) {
    for (const WwiseTransition& t : container.transitions) {
      out += first ? "{" : ",{";
      first = false;
      StringField(out, "containerId", container.guid);
      StringField(out, "containerName", container.name);
      StringField(out, "sourceId", t.sourceId);
      StringField(out, "destinationId", t.destinationId);
      StringField(out, "transitionType", TransitionTypeName(t.transitionType));
      NumberField(out, "fadeOutTime", t.fadeOutTime);
      NumberField(out, "fadeInTime", t.fadeInTime);
      StringField(out, "fadeOutCurve", FadeCurveName(t.fadeOutCurve));
      StringField(out, "fadeInCurve", FadeCurveName(t.fadeInCurve));
      if (t.sourceCue) StringField(out, "sourceCue", *t.sourceCue);
      if (t.destinationCue) StringField(out, "destinationCue", *t.destinationCue);
      out += '}';
    }
  }
  out += "],\"stingers\":[";
  first = true;
  for (const WwiseMusicContainer& container : project.containers) {
    for (const WwiseStinger& s : container.stingers) {
      out += first ? "{" : ",{";
      first = false;
      StringField(out, "containerId", container.guid);
      StringField(out, "segmentId", s.segmentId);
      StringField(out, "triggerEvent", s.triggerEvent);
      NumberField(out, "preLookAhead", s.preLookAhead);
      out += '}';
    }
  }
  return out + "]}";
}

std::string PreviewExportJson(const WwiseProjectData& project, const ExportOptions& options) {
  std::string out = "{\"success\":true,\"preview\":{";
  ObjectArray(out, "segments", project.segments, [&out](const WwiseMusicSegment& s) {
    StringField(out, "id", s.guid);
    StringField(out, "name", s.name);
    NumberField(out, "duration", s.duration);
    CountField(out, "cues", s.cues.size());
    CountField(out, "tracks", s.tracks.size());
  });
  ObjectArray(out, "containers", project.containers, [&out](const WwiseMusicContainer& c) {
    StringField(out, "id", c.guid);
    StringField(out, "name", c.name);
    StringField(out, "type", ContainerTypeName(c.type));
    CountField(out, "children", c.children.size());
    CountField(out, "transitions", c.transitions.size());
    CountField(out, "stingers", c.stingers.size());
  });
  ObjectArray(out, "events", project.events, [&out](const WwiseEvent& e) {
    StringField(out, "id", e.guid);
    StringField(out, "name", e.name);
    StringField(out, "targetId", e.target);
  });
  ObjectArray(out, "soundBanks", project.soundBanks, [&out](const WwiseSoundBank& b) {
    StringField(out, "id", b.guid);
    StringField(out, "name", b.name);
    CountField(out, "events", b.events.size());
    CountField(out, "mediaFiles", b.mediaFiles.size());
  });
  out += ",\"options\":{";
  BoolField(out, "copyAudioFiles", options.copyAudioFiles);
  BoolField(out, "createEvents", options.createEvents);
  BoolField(out, "createSoundBank", options.createSoundBank);
  StringField(out, "eventPrefix", options.eventPrefix);
  return out + "}}}";
}

}  // namespace ZOLVA_Wwise::Export

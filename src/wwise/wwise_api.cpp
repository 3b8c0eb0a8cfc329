// The Wwise module's script functions: transform a schema, preview and
// export it, list its transitions, validate Work Units and keep the export
// settings in the project. The last transformed project lives in the module
// state below; every function that touches that state holds the state mutex
// for its whole run.
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <mutex>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "host/api_frame.h"
#include "host/files.h"
#include "host/reaper_api.h"
#include "host/version.h"
#include "json/json_text.h"
#include "wwise/export.h"
#include "wwise/export_options.h"
#include "wwise/model.h"
#include "wwise/native/native_export.h"
#include "wwise/native/project_reader.h"
#include "wwise/preview_json.h"
#include "wwise/schema.h"
#include "wwise/transform.h"

namespace ZOLVA_Wwise {
namespace {

// Answered when a JSON function fails unexpectedly (out of memory, say).
constexpr char kInternalErrorJson[] = "{\"success\":false,\"error\":\"Internal error\"}";
constexpr char kFalseText[] = "false";
constexpr char kActorMixer[] = "ActorMixer";

constexpr char kSettingsSection[] = "ZOLVA_Wwise";
constexpr char kSettingsKey[] = "ProjectSettings";
constexpr size_t kSettingsBufferSize = 4096;
constexpr size_t kLargestBuffer = static_cast<size_t>(std::numeric_limits<int>::max());

constexpr char kNoProjectData[] = "No schema transformed. Call TransformSchema first";

// The options an export starts from, one key a line. The pairs are written
// without blanks, so the text reads back as options unchanged.
constexpr char kDefaultOptionsJson[] =
    "{\n"
    "  \"outputPath\":\"\",\n"
    "  \"projectName\":\"ZOLVA_Export\",\n"
    "  \"copyAudioFiles\":true,\n"
    "  \"audioSubfolder\":\"Audio\",\n"
    "  \"createEvents\":true,\n"
    "  \"createSoundBank\":true,\n"
    "  \"flattenHierarchy\":false,\n"
    "  \"defaultTransition\":\"NextGrid\",\n"
    "  \"defaultFadeTime\":500.0,\n"
    "  \"defaultFadeCurve\":\"Linear\",\n"
    "  \"eventPrefix\":\"Play_\",\n"
    "  \"segmentSuffix\":\"\"\n"
    "}";

std::mutex g_stateMutex;
WwiseProjectData g_currentProject;
bool g_hasProjectData = false;
ExportOptions g_currentOptions;  // what TransformSchema uses: the defaults
std::string g_lastError;
std::string g_resultBuffer;
bool g_initialized = false;

using Lock = std::lock_guard<std::mutex>;

bool Given(const char* text) { return text && *text; }

// The callers below hold g_stateMutex.
const char* Publish(std::string text) {
  g_resultBuffer = std::move(text);
  return g_resultBuffer.c_str();
}

const char* Fail(const std::string& message) {
  g_lastError = message;
  return Publish(ZOLVA::Json::BuildJsonError(message));
}

// The module's own GUIDs, from a generator of its own, created on first use
// and kept for the life of the process.
std::string NewGuid() {
  struct Generator {
    std::random_device device;
    std::mt19937 engine{device()};
    std::uniform_int_distribution<uint32_t> distribution;  // every 32-bit value
  };
  static Generator generator;
  uint32_t v[4];
  for (uint32_t& value : v) value = generator.distribution(generator.engine);
  char text[39];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%04X-%04X%08X}", static_cast<unsigned>(v[0]),
                static_cast<unsigned>(v[1] >> 16), static_cast<unsigned>(v[1] & 0xFFFFu),
                static_cast<unsigned>(v[2] >> 16), static_cast<unsigned>(v[2] & 0xFFFFu),
                static_cast<unsigned>(v[3]));
  return text;
}

// The whole stored value: the host fills a buffer only up to its size, so a
// buffer filled to the brim is grown and the value read again.
std::string ReadSettings() {
  if (!GetProjExtState) return std::string();
  for (size_t size = kSettingsBufferSize;; size *= 2) {
    std::vector<char> buffer(size, '\0');
    GetProjExtState(nullptr, kSettingsSection, kSettingsKey, buffer.data(), static_cast<int>(size));
    buffer.back() = '\0';
    const size_t length = std::strlen(buffer.data());
    if (length + 1 < size || size > kLargestBuffer / 2) return std::string(buffer.data(), length);
  }
}

// A second registration keeps the stored project; only the first start resets.
void Start() {
  const Lock lock(g_stateMutex);
  if (g_initialized) return;
  g_initialized = true;
  g_hasProjectData = false;
  g_lastError.clear();
}

void Stop() {
  const Lock lock(g_stateMutex);
  g_currentProject = WwiseProjectData();
  g_hasProjectData = false;
  g_initialized = false;
}

const char* GetVersion() { return ZOLVA::kVersion; }

const char* IsAvailable() {
  const Lock lock(g_stateMutex);
  return g_initialized ? "true" : "false";
}

const char* TransformSchema(const char* schema_json) {
  const Lock lock(g_stateMutex);
  if (!Given(schema_json)) return Fail("Schema JSON required");
  V2Schema schema;
  if (!Schema::ParseV2Schema(schema_json, schema)) return Fail("Failed to parse V2 schema");
  g_currentProject = Schema::TransformToWwise(schema, g_currentOptions);
  g_hasProjectData = true;
  return Publish("{\"success\":true,\"segments\":" + std::to_string(g_currentProject.segments.size()) +
                 ",\"containers\":" + std::to_string(g_currentProject.containers.size()) +
                 ",\"events\":" + std::to_string(g_currentProject.events.size()) + "}");
}

bool IsNative(const ExportOptions& options) { return options.format == "native"; }
bool KnownFormat(const ExportOptions& options) { return IsNative(options) || options.format == "fixed"; }

// The Wwise project a native export is made for, read; false with the
// message set when it cannot be used.
bool ReadWwiseProject(const ExportOptions& options, Native::ProjectInfo& project, std::string& error) {
  if (options.wwiseProject.empty()) {
    error = "Wwise project required for native export";
    return false;
  }
  return Native::ReadProject(options.wwiseProject, project, error);
}

// [<text of each element>, ...], the text being what `textOf` gives.
template <typename List, typename TextOf>
void AppendStringArray(std::string& json, const List& list, TextOf textOf) {
  json += '[';
  bool first = true;
  for (const auto& element : list) {
    if (!first) json += ',';
    first = false;
    ZOLVA::Json::AppendString(json, textOf(element));
  }
  json += ']';
}

const std::string& Itself(const std::string& text) { return text; }

// ,"format":"native","warnings":[...],"renamed":[{"type","from","to"}...]
void AppendNativeReport(std::string& json, const Native::NativeExport& result) {
  using ZOLVA::Json::AppendString;
  json += ",\"format\":\"native\",\"warnings\":";
  AppendStringArray(json, result.warnings, Itself);
  json += ",\"renamed\":[";
  for (size_t i = 0; i < result.renamed.size(); ++i) {
    json += i > 0 ? ",{\"type\":" : "{\"type\":";
    AppendString(json, result.renamed[i].type);
    json += ",\"from\":";
    AppendString(json, result.renamed[i].from);
    json += ",\"to\":";
    AppendString(json, result.renamed[i].to);
    json += '}';
  }
  json += ']';
}

const char* PreviewExport(const char* options_json) {
  const Lock lock(g_stateMutex);
  if (!g_hasProjectData) return Fail(kNoProjectData);
  const ExportOptions options = ParseExportOptions(options_json);
  if (!KnownFormat(options)) return Fail("Unknown export format: " + options.format);
  std::string json = Export::PreviewExportJson(g_currentProject, options);
  if (!IsNative(options)) return Publish(std::move(json));
  Native::ProjectInfo project;
  std::string error;
  if (!ReadWwiseProject(options, project, error)) return Fail(error);
  const Native::NativeExport result = Native::BuildNativeExport(g_currentProject, options, project);
  // The preview object, then what would be written, relative to the output folder.
  json.pop_back();
  json += ",\"files\":";
  AppendStringArray(json, result.files, [](const auto& file) -> const std::string& { return file.relativePath; });
  json += ",\"audioFiles\":";
  AppendStringArray(json, result.audio, [](const auto& audio) -> const std::string& { return audio.relativePath; });
  AppendNativeReport(json, result);
  return Publish(json + "}");
}

const char* GenerateWorkUnits(const char* output_path, const char* options_json) {
  const Lock lock(g_stateMutex);
  if (!Given(output_path)) return Fail("Output path required");
  if (!g_hasProjectData) return Fail(kNoProjectData);
  ExportOptions options = ParseExportOptions(options_json);
  options.outputPath = output_path;
  if (!KnownFormat(options)) return Fail("Unknown export format: " + options.format);
  Export::ExportResult result;
  Native::NativeExport native;
  if (IsNative(options)) {
    Native::ProjectInfo project;
    if (!ReadWwiseProject(options, project, result.error)) return Fail(result.error);
    if (ZOLVA::Files::SameFolder(options.outputPath, project.folder)) {
      return Fail("Output path is the Wwise project's own folder; export elsewhere and copy the files into its folders: " +
                  options.outputPath);
    }
    native = Native::BuildNativeExport(g_currentProject, options, project);
    result.success = Native::WriteNativeExport(native, options.outputPath, options.copyAudioFiles, result.files, result.error);
  } else {
    result = Export::GenerateWWU(g_currentProject, options);
  }
  if (!result.success) return Fail(result.error);
  size_t transitions = 0;
  for (const WwiseMusicContainer& container : g_currentProject.containers) transitions += container.transitions.size();
  std::string json = "{\"success\":true,\"files\":";
  AppendStringArray(json, result.files, Itself);
  json += ",\"segments_created\":" + std::to_string(g_currentProject.segments.size());
  json += ",\"containers_created\":" + std::to_string(g_currentProject.containers.size());
  json += ",\"transitions_created\":" + std::to_string(transitions);
  json += ",\"events_created\":" + std::to_string(g_currentProject.events.size());
  if (IsNative(options)) AppendNativeReport(json, native);
  return Publish(json + "}");
}

const char* GenerateTransitions() {
  const Lock lock(g_stateMutex);
  if (!g_hasProjectData) return Fail(kNoProjectData);
  return Publish(Export::GenerateTransitionsJson(g_currentProject));
}

const char* GenerateGUID() {
  const Lock lock(g_stateMutex);
  return Publish(NewGuid());
}

const char* MapGroupTypeToContainer(const char* group_type) { return Schema::MapGroupTypeToContainer(group_type); }

const char* ValidateWWU(const char* wwu_path) {
  const Lock lock(g_stateMutex);
  if (!Given(wwu_path)) return Fail("WWU path required");
  std::string error;
  if (Export::ValidateWWUFile(wwu_path, error)) return Publish("{\"success\":true,\"valid\":true}");
  std::string json = "{\"success\":true,\"valid\":false,\"error\":";
  ZOLVA::Json::AppendString(json, error);
  return Publish(json + "}");
}

const char* GetDefaultOptions() { return kDefaultOptionsJson; }

const char* SetProjectSettings(const char* settings_json) {
  const Lock lock(g_stateMutex);
  if (!Given(settings_json)) return Fail("Settings JSON required");
  if (SetProjExtState) SetProjExtState(nullptr, kSettingsSection, kSettingsKey, settings_json);
  return Publish("{\"success\":true}");
}

const char* GetProjectSettings() {
  const Lock lock(g_stateMutex);
  std::string settings = ReadSettings();
  return settings.empty() ? kDefaultOptionsJson : Publish(std::move(settings));
}

using ZOLVA::Api;
using ZOLVA::kEmptyText;

constexpr ZOLVA::ApiSpec kApi[] = {
    Api<&GetVersion, kEmptyText>("ZOLVA_Wwise_GetVersion", "", "Get Wwise module version"),
    Api<&IsAvailable, kFalseText>("ZOLVA_Wwise_IsAvailable", "", "Check if Wwise module is available"),
    Api<&TransformSchema, kInternalErrorJson>("ZOLVA_Wwise_TransformSchema", "schema_json",
                                              "Transform V2 schema to Wwise structure"),
    Api<&PreviewExport, kInternalErrorJson>("ZOLVA_Wwise_PreviewExport", "options_json",
                                            "Preview Wwise export without generating files"),
    Api<&GenerateWorkUnits, kInternalErrorJson>("ZOLVA_Wwise_GenerateWorkUnits", "output_path,options_json",
                                                "Generate Wwise Work Unit files"),
    Api<&GenerateTransitions, kInternalErrorJson>("ZOLVA_Wwise_GenerateTransitions", "",
                                                  "Generate transition definitions as JSON"),
    Api<&GenerateGUID, kEmptyText>("ZOLVA_Wwise_GenerateGUID", "", "Generate Wwise-compatible GUID"),
    Api<&MapGroupTypeToContainer, kActorMixer>("ZOLVA_Wwise_MapGroupTypeToContainer", "group_type",
                                               "Map ZOLVA group type to Wwise container type"),
    Api<&ValidateWWU, kInternalErrorJson>("ZOLVA_Wwise_ValidateWWU", "wwu_path", "Validate Wwise Work Unit file"),
    Api<&GetDefaultOptions, kInternalErrorJson>("ZOLVA_Wwise_GetDefaultOptions", "",
                                                "Get default export options as JSON"),
    Api<&SetProjectSettings, kInternalErrorJson>("ZOLVA_Wwise_SetProjectSettings", "settings_json",
                                                 "Set project-specific Wwise settings"),
    Api<&GetProjectSettings, kInternalErrorJson>("ZOLVA_Wwise_GetProjectSettings", "",
                                                 "Get current project Wwise settings"),
};

}  // namespace

extern const ZOLVA::Module kModule = ZOLVA::MakeModule(kApi, Start, Stop);

}  // namespace ZOLVA_Wwise

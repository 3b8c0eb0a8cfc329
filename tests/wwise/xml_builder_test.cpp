// The XML builder's layout and escaping, its numbers in a decimal-comma
// locale, the Work Unit check, and the export's failure paths on disk.
#include <gtest/gtest.h>
#ifndef _WIN32
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <locale>
#include <stdexcept>

#include "wwise/export.h"
#include "wwise/xml_builder.h"
#include "comma_locale.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Wwise;
using Xml::XmlBuilder;
namespace fs = std::filesystem;

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

using sim::Utf8Path;

// A fresh folder whose name has a non-ASCII character; its path is UTF-8.
struct TempDir {
  std::string path = sim::MakeTempFolder("zolva wwise \xc3\xbc ");
  ~TempDir() {
    if (!path.empty()) fs::remove_all(Utf8Path(path));
  }
};

void Write(const std::string& path, const std::string& text) { std::ofstream(Utf8Path(path), std::ios::binary) << text; }

TEST(XmlBuilder, Layout) {
  const struct {
    const char* name;
    std::function<void(XmlBuilder&)> build;
    std::string expected;  // after the declaration line
  } cases[] = {
      {"attribute escaped, self-closed", [](XmlBuilder& x) { x.StartElement("A"); x.AddAttribute("x", "1 & 2"); x.EndElement(); },
       "<A x=\"1 &amp; 2\" />\n"},
      {"child closes the parent's start tag",
       [](XmlBuilder& x) { x.StartElement("A"); x.StartElement("B"); x.EndElement(); x.EndElement(); },
       "<A>\n\t<B />\n</A>\n"},
      {"attribute after text dropped, closing tag after the text",
       [](XmlBuilder& x) { x.StartElement("A"); x.AddTextContent("<t>"); x.AddAttribute("y", "1"); x.EndElement(); },
       "<A>\n&lt;t&gt;</A>\n"},
      {"text at depth 2", [](XmlBuilder& x) {
         x.StartElement("A"); x.StartElement("B"); x.StartElement("C"); x.AddTextContent("4");
         for (int i = 0; i < 4; ++i) x.EndElement();  // one more than open
       },
       "<A>\n\t<B>\n\t\t<C>\n4\t\t</C>\n\t</B>\n</A>\n"},
      {"empty text still gives a closing tag",
       [](XmlBuilder& x) { x.StartElement("A"); x.StartElement("B"); x.AddTextContent(""); x.EndElement(); x.EndElement(); },
       "<A>\n\t<B>\n\t</B>\n</A>\n"},
      {"comment closes the start tag, text as is",
       [](XmlBuilder& x) { x.StartElement("A"); x.AddComment("x & <y>"); x.AddTextContent("z\n"); x.EndElement(); },
       "<A>\n\t<!-- x & <y> -->\nz\n</A>\n"},
      {"doubles fixed with six decimals", [](XmlBuilder& x) {
         x.StartElement("N");
         for (double v : {120.0, 1500.0, -0.5, 1e-7, 1234567.891, 0.1 + 0.2}) x.AddAttribute("v", v);
         x.EndElement();
       },
       "<N v=\"120.000000\" v=\"1500.000000\" v=\"-0.500000\" v=\"0.000000\" v=\"1234567.891000\" v=\"0.300000\" />\n"},
      {"nothing open: no attribute, no end", [](XmlBuilder& x) { x.EndElement(); x.AddAttribute("a", "b"); }, ""},
  };
  for (const auto& c : cases) {
    XmlBuilder builder;
    c.build(builder);
    EXPECT_EQ(builder.Text(), kDeclaration + c.expected) << c.name;
  }
}

TEST(XmlBuilder, EscapesTheFiveCharactersOnly) {
  using namespace std::string_literals;
  EXPECT_EQ(XmlBuilder::EscapeXml("a&b<c>d\"e'f"), "a&amp;b&lt;c&gt;d&quot;e&apos;f");
  const std::string untouched = "\xc3\xa9\x01\t\n\0;#x26;amp"s;
  EXPECT_EQ(XmlBuilder::EscapeXml(untouched), untouched);
  EXPECT_EQ(XmlBuilder::EscapeXml(XmlBuilder::EscapeXml("&<")), "&amp;amp;&amp;lt;");
  EXPECT_EQ(XmlBuilder::EscapeXml(""), "");
  for (const std::string& text : {"a&b<c>d\"e'f"s, untouched, ""s}) {
    EXPECT_EQ(XmlBuilder::EscapedSize(text), XmlBuilder::EscapeXml(text).size()) << text;
  }
}

// A host may switch the process to a decimal comma at any time.
TEST(XmlBuilder, FixedNumbersIgnoreTheLocale) {
  sim::CommaLocale comma;
  if (!comma.active && std::getenv("CI")) FAIL() << "no de_DE locale: generate de_DE.UTF-8 (scripts/run-tests.sh does)";
  if (!comma.active) GTEST_SKIP() << "de_DE.UTF-8 is not installed; the decimal-comma check did not run";
  XmlBuilder builder;
  builder.StartElement("N");
  builder.AddAttribute("t", 1234567.25);
  builder.EndElement();
  EXPECT_EQ(builder.Text(), kDeclaration + "<N t=\"1234567.250000\" />\n");
}

TEST(ValidateWWUFile, MarkersAndPaths) {
  TempDir dir;
  ASSERT_FALSE(dir.path.empty());
  const std::string file = dir.path + "/unit.wwu";
  const struct {
    std::string content;
    std::string error;  // empty: valid
  } cases[] = {
      {"<?xml?><WwiseDocument><WorkUnit/></WwiseDocument>", ""},
      {"<!-- <WorkUnit </WwiseDocument> <WwiseDocument <?xml -->", ""},  // any order, even in a comment
      {"", "Missing XML declaration"},
      {"<WorkUnit <WwiseDocument </WwiseDocument>", "Missing XML declaration"},
      {"<?xml </WwiseDocument> <WorkUnit", "Missing WwiseDocument element"},
      {"<?xml <WwiseDocument <WorkUnit", "Unclosed WwiseDocument element"},
      {"<?xml <WwiseDocument </WwiseDocument>", "Missing WorkUnit element"},
  };
  for (const auto& c : cases) {
    Write(file, c.content);
    std::string error = "stale";
    EXPECT_EQ(Export::ValidateWWUFile(file, error), c.error.empty()) << c.content;
    EXPECT_EQ(error, c.error) << c.content;
  }
  std::string error;
  EXPECT_FALSE(Export::ValidateWWUFile(dir.path + "/absent.wwu", error));
  EXPECT_EQ(error, "File not found: " + dir.path + "/absent.wwu");
  EXPECT_FALSE(Export::ValidateWWUFile(dir.path, error));
  EXPECT_EQ(error, "File not found: " + dir.path);
#ifndef _WIN32  // Windows has no unreadable mode for a file
  ::chmod(file.c_str(), 0);
  if (::geteuid() != 0) {  // root reads it anyway
    EXPECT_FALSE(Export::ValidateWWUFile(file, error));
    EXPECT_EQ(error, "Cannot open file: " + file);
  }
#endif
}

// What each failure leaves: its message, and only the Work Units written before it listed.
TEST(GenerateWWU, FailuresStopAtTheirStep) {
  TempDir dir;
  ASSERT_FALSE(dir.path.empty());
  WwiseProjectData project;
  project.projectName = "Pr\xc3\xb8j & 'x'";
  const std::string music = "/Interactive Music Hierarchy/" + project.projectName + ".wwu";
  const std::string events = "/Events/" + project.projectName + "_Events.wwu";
  const std::string banks = "/SoundBanks/" + project.projectName + "_SoundBanks.wwu";
  const struct {
    std::string output;  // relative to the temp folder
    std::string blocker;  // a folder made in the way of this file
    std::string error;
    size_t written;
  } cases[] = {
      {"/file", "", "Failed to write music work unit: " + dir.path + "/file" + music, 0},
      {"/file/sub", "", "Failed to create output directory: " + dir.path + "/file/sub", 0},
      {"/e", events, "Failed to write events work unit: " + dir.path + "/e" + events, 1},
      {"/b", banks, "Failed to write soundbanks work unit: " + dir.path + "/b" + banks, 2},
      {"/ok", "", "", 3},
  };
  Write(dir.path + "/file", "not a folder");
  for (const auto& c : cases) {
    ExportOptions options;
    options.outputPath = dir.path + c.output;
    if (!c.blocker.empty()) fs::create_directories(Utf8Path(options.outputPath + c.blocker));
    const Export::ExportResult result = Export::GenerateWWU(project, options);
    EXPECT_EQ(result.success, c.error.empty()) << c.output;
    EXPECT_EQ(result.error, c.error);
    ASSERT_EQ(result.files.size(), c.written) << c.output;
    for (size_t i = 0; i < c.written; ++i) {
      EXPECT_EQ(result.files[i], options.outputPath + (i == 0 ? music : i == 1 ? events : banks));
      EXPECT_TRUE(fs::is_regular_file(Utf8Path(result.files[i])));
    }
  }
}

TEST(GenerateWWU, AudioCopiesByBaseNameSkippingWhatCannotBeOpened) {
  TempDir dir;
  ASSERT_FALSE(dir.path.empty());
  Write(dir.path + "/a b.wav", std::string("RIFF\0data", 9));
  Write(dir.path + "/empty.wav", "");
  WwiseProjectData project;
  project.projectName = "P";
  project.segments.resize(2);
  // The system's own separator before the file name ("\\" on Windows).
  const std::string native = (Utf8Path(dir.path) / "a b.wav").u8string();
  project.segments[0].tracks = {{"", "", native}, {"", "", dir.path + "/missing.wav"}, {"", "", ""}};
  project.segments[1].tracks = {{"", "", dir.path + "/empty.wav"}, {"", "", dir.path}};
  ExportOptions options;
  options.outputPath = dir.path + "/out";
  options.audioSubfolder = "Audio \xc3\xa4";
  options.createEvents = options.createSoundBank = false;
  const Export::ExportResult result = Export::GenerateWWU(project, options);
  EXPECT_TRUE(result.success);
  EXPECT_EQ(result.files.size(), 1u);
  const std::string audio = options.outputPath + "/Audio \xc3\xa4/";
  EXPECT_EQ(result.audioFiles, (std::vector<std::string>{audio + "a b.wav", audio + "empty.wav"}));
  EXPECT_EQ(fs::file_size(Utf8Path(audio + "a b.wav")), 9u);
  EXPECT_EQ(fs::file_size(Utf8Path(audio + "empty.wav")), 0u);
  // A second export from the copies themselves keeps their content.
  project.segments[0].tracks = {{"", "", audio + "a b.wav"}};
  EXPECT_TRUE(Export::GenerateWWU(project, options).success);
  EXPECT_EQ(fs::file_size(Utf8Path(audio + "a b.wav")), 9u);
}

}  // namespace

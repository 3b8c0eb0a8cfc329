// The pieces every Wwise object is written with: identities, property lists,
// references, local objects, and the identifiers they carry.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "wwise/native/document.h"
#include "wwise/native/project_reader.h"

namespace ZOLVA_Wwise::Native {

using Node = Document::Node;

// GUIDs in Wwise's form, and ShortIDs that are unique within one export,
// never 0 and below 2^30, as Wwise's own.
class Identifiers {
 public:
  std::string Guid() const;
  uint32_t ShortId();

 private:
  std::unordered_set<uint32_t> used_;
};

// A Real64 value as Wwise writes it: the shortest text of at most 15
// significant digits, with a point whatever the locale.
std::string FormatReal(double value);

struct Property {
  std::string_view name;
  std::string_view type;  // "bool", "int16", "int32", "Real64", "string"
  std::string value;
};

inline Property Int16(std::string_view name, int value) { return {name, "int16", std::to_string(value)}; }
inline Property Real64(std::string_view name, double value) { return {name, "Real64", FormatReal(value)}; }
inline Property Flag(std::string_view name) { return {name, "bool", "True"}; }

// <element Name ID [ShortID]>, not yet attached.
Node Object(Document& doc, std::string_view element, const std::string& name, const std::string& id);
Node Object(Document& doc, std::string_view element, const std::string& name, const std::string& id,
            Identifiers& ids);

// <PropertyList> with the properties sorted by name; nothing when empty.
void PropertyList(Document& doc, Node parent, std::vector<Property> properties);

// <ObjectRef Name ID WorkUnitID/>.
void ObjectRef(Document& doc, Node parent, const ProjectObject& target);

// <Reference [Name] CompanyID="4095" PluginID="65535" PluginType="15"> with
// an ObjectRef inside: a reference to another object of the project.
void ObjectReference(Document& doc, Node parent, std::string_view name, const ProjectObject& target);

// <Reference Name><Custom> for an object owned by its reference; returns
// the Custom element.
Node CustomReference(Document& doc, Node referenceList, std::string_view name);

// <Reference><Local> inside an ObjectList; returns the Local element.
Node LocalEntry(Document& doc, Node objectList);

// The frame of a standalone Work Unit; returns the WorkUnit element, whose
// ChildrenList the caller adds.
struct WorkUnitFrame {
  Node document;
  Node workUnit;
};
WorkUnitFrame WorkUnit(Document& doc, std::string_view category, const std::string& name, const std::string& id,
                       int schemaVersion);

}  // namespace ZOLVA_Wwise::Native

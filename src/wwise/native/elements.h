// The pieces every Wwise object is written with: identities, property lists,
// references, local objects, and the identifiers they carry.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wwise/native/document.h"
#include "wwise/native/identity.h"
#include "wwise/native/project_reader.h"

namespace ZOLVA_Wwise::Native {

using Node = Document::Node;

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

// <element Name ID>, not yet attached.
Node Object(Document& doc, std::string_view element, const std::string& name, const std::string& id);
// <element Name ID ShortID> with the identities of `role`, not yet attached.
Node Object(Document& doc, std::string_view element, const std::string& name, Identifiers& ids,
            const std::string& role);

// <PropertyList> with the properties sorted by name; nothing when empty.
void PropertyList(Document& doc, Node parent, std::vector<Property> properties);

// <ObjectRef Name ID WorkUnitID/>.
void ObjectRef(Document& doc, Node parent, const ProjectObject& target);

// <Reference [Name]> with an ObjectRef inside: a reference to another object
// of the project. As in Wwise's own files, the references to the output bus,
// the conversion settings and an action's target carry
// CompanyID="4095" PluginID="65535" PluginType="15" after the Name; in
// schema 119 (Wwise 2023.1) a transition's source and destination context
// references carry them too, in schema 123 (2024.1) they do not. No other
// reference carries them.
void ObjectReference(Document& doc, Node parent, std::string_view name, const ProjectObject& target,
                     int schemaVersion);

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

#include "wwise/native/elements.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "json/number_text.h"

namespace ZOLVA_Wwise::Native {

std::string FormatReal(double value) {
  std::string text;
  ZOLVA::Json::AppendGeneral(text, value, 15);
  return text;
}

Node Object(Document& doc, std::string_view element, const std::string& name, const std::string& id) {
  const Node node = doc.Element(element);
  doc.Attribute(node, "Name", name).Attribute(node, "ID", id);
  return node;
}

Node Object(Document& doc, std::string_view element, const std::string& name, Identifiers& ids,
            const std::string& role) {
  const Node node = Object(doc, element, name, ids.Guid(role));
  doc.Attribute(node, "ShortID", std::to_string(ids.ShortId(role)));
  return node;
}

void PropertyList(Document& doc, Node parent, std::vector<Property> properties) {
  if (properties.empty()) return;
  std::sort(properties.begin(), properties.end(),
            [](const Property& a, const Property& b) { return a.name < b.name; });
  const Node list = doc.Element(parent, "PropertyList");
  for (Property& property : properties) {
    const Node node = doc.Element(list, "Property");
    doc.Attribute(node, "Name", std::string(property.name))
        .Attribute(node, "Type", std::string(property.type))
        .Attribute(node, "Value", std::move(property.value));
  }
}

void ObjectRef(Document& doc, Node parent, const ProjectObject& target) {
  const Node node = doc.Element(parent, "ObjectRef");
  doc.Attribute(node, "Name", target.name).Attribute(node, "ID", target.id).Attribute(node, "WorkUnitID", target.workUnitId);
}

namespace {

// The references Wwise writes with the plug-in attributes, and the first
// schema version that writes them without.
struct PluginReference {
  std::string_view name;
  int withoutFrom;
};
constexpr PluginReference kPluginReferences[] = {
    {"OutputBus", std::numeric_limits<int>::max()}, {"Conversion", std::numeric_limits<int>::max()},
    {"Target", std::numeric_limits<int>::max()},    {"SourceContextObject", 123},
    {"DestinationContextObject", 123}};

bool CarriesPluginAttributes(std::string_view name, int schemaVersion) {
  for (const PluginReference& reference : kPluginReferences) {
    if (reference.name == name) return schemaVersion < reference.withoutFrom;
  }
  return false;
}

}  // namespace

void ObjectReference(Document& doc, Node parent, std::string_view name, const ProjectObject& target,
                     int schemaVersion) {
  const Node reference = doc.Element(parent, "Reference");
  if (!name.empty()) doc.Attribute(reference, "Name", std::string(name));
  if (CarriesPluginAttributes(name, schemaVersion)) {
    doc.Attribute(reference, "CompanyID", "4095").Attribute(reference, "PluginID", "65535").Attribute(reference, "PluginType", "15");
  }
  ObjectRef(doc, reference, target);
}

Node CustomReference(Document& doc, Node referenceList, std::string_view name) {
  const Node reference = doc.Element(referenceList, "Reference");
  doc.Attribute(reference, "Name", std::string(name));
  return doc.Element(reference, "Custom");
}

Node LocalEntry(Document& doc, Node objectList) { return doc.Element(doc.Element(objectList, "Reference"), "Local"); }

WorkUnitFrame WorkUnit(Document& doc, std::string_view category, const std::string& name, const std::string& id,
                       int schemaVersion) {
  WorkUnitFrame frame;
  frame.document = doc.Element("WwiseDocument");
  doc.Attribute(frame.document, "Type", "WorkUnit").Attribute(frame.document, "ID", id);
  doc.Attribute(frame.document, "SchemaVersion", std::to_string(schemaVersion));
  frame.workUnit = Object(doc, "WorkUnit", name, id);
  doc.Attribute(frame.workUnit, "PersistMode", "Standalone");
  doc.Attach(doc.Element(frame.document, category), frame.workUnit);
  return frame;
}

}  // namespace ZOLVA_Wwise::Native

#include "wwise/native/document.h"

#include "wwise/xml_builder.h"

namespace ZOLVA_Wwise::Native {

Document::Node Document::Element(std::string_view name) {
  nodes_.push_back(Item{std::string(name), {}, {}, {}});
  return nodes_.size() - 1;
}

std::string Document::Write(Node root) const {
  using Xml::XmlBuilder;
  std::string out = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
  // Depth-first with an explicit stack: (node, next child to write).
  std::vector<std::pair<Node, size_t>> stack{{root, 0}};
  while (!stack.empty()) {
    auto& [node, next] = stack.back();
    const Item& item = nodes_[node];
    const size_t depth = stack.size() - 1;
    if (next == 0) {
      out.append(depth, '\t');
      out += '<';
      out += item.name;
      for (const auto& [name, value] : item.attributes) {
        out += ' ';
        out += name;
        out += "=\"";
        XmlBuilder::AppendEscaped(out, value);
        out += '"';
      }
      if (item.children.empty()) {
        if (item.text.empty()) {
          out += "/>\n";
        } else {
          out += '>';
          XmlBuilder::AppendEscaped(out, item.text);
          out += "</" + item.name + ">\n";
        }
        stack.pop_back();
        continue;
      }
      out += ">\n";
    }
    if (next < item.children.size()) {
      const Node child = item.children[next++];
      stack.emplace_back(child, 0);
      continue;
    }
    out.append(depth, '\t');
    out += "</" + item.name + ">\n";
    stack.pop_back();
  }
  return out;
}

}  // namespace ZOLVA_Wwise::Native

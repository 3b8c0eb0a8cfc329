// A Work Unit built as a tree of elements before it is written, so that an
// object can be made before the container that will hold it. Written the way
// Wwise saves: tabs, one element a line, attributes in the order given,
// empty elements closed with "/>".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZOLVA_Wwise::Native {

class Document {
 public:
  using Node = size_t;

  // An element that belongs to no parent yet.
  Node Element(std::string_view name);
  // An element appended to the parent's children.
  Node Element(Node parent, std::string_view name) {
    const Node node = Element(name);
    Attach(parent, node);
    return node;
  }
  void Attach(Node parent, Node child) { nodes_[parent].children.push_back(child); }
  // Attributes are written in the order they are added; values are escaped
  // when written.
  Document& Attribute(Node node, std::string_view name, std::string value) {
    nodes_[node].attributes.emplace_back(name, std::move(value));
    return *this;
  }
  void Text(Node node, std::string text) { nodes_[node].text = std::move(text); }
  bool HasChildren(Node node) const { return !nodes_[node].children.empty(); }

  // The XML declaration and the element tree under `root`, each element
  // written once however deep the tree.
  std::string Write(Node root) const;

 private:
  struct Item {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<Node> children;
    std::string text;
  };
  std::vector<Item> nodes_;
};

}  // namespace ZOLVA_Wwise::Native

// File: DotWriter.cpp
#include "DotWriter.h"

#include <cstdio>
#include <vector>

namespace vekzol_tool {

namespace {

// Colours: border, fill and text.
constexpr char kGreen[] = "#1a7f37";
constexpr char kGreenFill[] = "#dafbe1";
constexpr char kRed[] = "#cf222e";
constexpr char kRedFill[] = "#ffebe9";
constexpr char kOrange[] = "#bc4c00";
constexpr char kOrangeFill[] = "#fff1e5";
constexpr char kBlue[] = "#0969da";
constexpr char kBlueFill[] = "#ddf4ff";
constexpr char kGrey[] = "#8c959f";
constexpr char kGreyFill[] = "#f6f8fa";
constexpr char kGreyText[] = "#57606a";
constexpr char kDark[] = "#1f2328";
constexpr char kWhite[] = "#ffffff";

// The width of the border or line of an entry point.
constexpr char kRootPen[] = "3";

// An end that names no object.
constexpr char kPointLook[] =
    " [shape=point, width=0.08, color=\"#57606a\", fillcolor=\"#57606a\"]";

void AppendHex(std::string& out, unsigned char byte) {
  static const char digits[] = "0123456789ABCDEF";
  out += '^';
  out += digits[byte >> 4];
  out += digits[byte & 15];
}

std::string Quoted(const std::string& inside) { return "\"" + inside + "\""; }

const char* StateWord(EdgeState state) {
  switch (state) {
    case EdgeState::kOld:
      return "old";
    case EdgeState::kNew:
      return "new";
    case EdgeState::kBoth:
      break;
  }
  return "both";
}

// The node name of a drawn node.
std::string NodeName(const DrawnNode& node) {
  if (!node.point) return Quoted(DotNodeName(node.id));
  return Quoted("^end:" + DotNodeName(node.id) + ":" + StateWord(node.state) + ":" +
                (node.source ? "source" : "target"));
}

// Attributes, written as `name=value, ...`.
class Attributes {
 public:
  // A value written as it is (a number, a word).
  Attributes& Plain(const char* name, const std::string& value) {
    Separate();
    text_ += name;
    text_ += '=';
    text_ += value;
    return *this;
  }
  // A value inside quotes, already escaped.
  Attributes& Text(const char* name, const std::string& value) {
    return Plain(name, Quoted(value));
  }
  std::string Bracketed() const { return text_.empty() ? std::string() : " [" + text_ + "]"; }

 private:
  void Separate() {
    if (!text_.empty()) text_ += ", ";
  }
  std::string text_;
};

// The colours of a vertex by how it changed; nothing for an unchanged one,
// which takes the defaults.
void AddVertexLook(Attributes& attributes, unsigned changes, bool root) {
  const bool moved = (changes & kVertexMoved) != 0;
  const bool renamed = (changes & kVertexRenamed) != 0;
  if ((changes & kVertexAdded) != 0) {
    attributes.Text("color", kGreen).Text("fillcolor", kGreenFill);
  } else if ((changes & kVertexRemoved) != 0) {
    attributes.Text("style", "rounded,filled,dashed")
        .Text("color", kRed)
        .Text("fillcolor", kRedFill);
  } else if (moved) {
    // Moved and renamed: the border of a move, the fill of a rename.
    attributes.Text("color", kOrange).Text("fillcolor", renamed ? kBlueFill : kOrangeFill);
  } else if (renamed) {
    attributes.Text("color", kBlue).Text("fillcolor", kBlueFill);
  } else {
    if (root) attributes.Plain("penwidth", kRootPen);
    return;
  }
  attributes.Text("fontcolor", kDark).Plain("penwidth", root ? kRootPen : "1.5");
}

// The colour and line of an edge by how it changed and in which states.
void AddEdgeLook(Attributes& attributes, EdgeChange change, EdgeState state, bool root) {
  const char* colour = nullptr;
  switch (change) {
    case EdgeChange::kAdded:
      colour = kGreen;
      break;
    case EdgeChange::kRemoved:
      colour = kRed;
      break;
    case EdgeChange::kMoved:
      colour = kOrange;
      break;
    case EdgeChange::kUnchanged:
      break;
  }
  if (colour != nullptr) attributes.Text("color", colour).Text("fontcolor", colour);
  if (root) {
    attributes.Plain("penwidth", kRootPen);
  } else if (colour != nullptr) {
    attributes.Plain("penwidth", "1.5");
  }
  if (state == EdgeState::kOld) attributes.Plain("style", "dashed");
}

std::string VertexLabel(const DrawnNode& node) {
  std::string label;
  if ((node.changes & kVertexRenamed) != 0) {
    label = (node.renamedFrom.empty() ? std::string("(none)") : DotLabelText(node.renamedFrom)) +
            " \xE2\x86\x92 " + DotLabelText(node.renamedTo) + "\\n";
  } else if (!node.name.empty()) {
    label = DotLabelText(node.name) + "\\n";
  }
  return label + DotLabelText(node.id);
}

void AppendLegend(std::string& dot, bool withRoots) {
  dot += "  subgraph \"cluster_legend\" {\n";
  dot += "    graph [label=\"Legend\", style=\"rounded\", color=\"#d0d7de\", fontcolor=\"";
  dot += kGreyText;
  dot += "\"];\n";
  struct VertexSample {
    const char* key;
    const char* label;
    unsigned changes;
  };
  const VertexSample vertices[] = {
      {"added", "added", kVertexAdded},
      {"removed", "removed", kVertexRemoved},
      {"moved", "moved", kVertexMoved},
      {"renamed", "renamed\\nold name \xE2\x86\x92 new name", kVertexRenamed},
      {"neighbour", "unchanged neighbour", 0},
  };
  // The samples in one column, top down in this order: the vertices and
  // the sources of the edges in one rank, the edges' targets in the next,
  // each rank's order kept by a chain of invisible edges (which, from left
  // to right, runs from the bottom up).
  std::vector<std::string> column;
  std::vector<std::string> targets;
  for (const VertexSample& sample : vertices) {
    Attributes attributes;
    attributes.Text("label", sample.label);
    AddVertexLook(attributes, sample.changes, false);
    column.push_back("\"^legend:" + std::string(sample.key) + "\"");
    dot += "    " + column.back() + attributes.Bracketed() + ";\n";
  }
  if (withRoots) {
    column.push_back("\"^legend:entry\"");
    dot += "    " + column.back() + " [label=\"entry point (--roots)\", penwidth=";
    dot += kRootPen;
    dot += "];\n";
  }
  struct EdgeSample {
    const char* key;
    const char* label;
    EdgeChange change;
    EdgeState state;
  };
  const EdgeSample edges[] = {
      {"edge-added", "edge added", EdgeChange::kAdded, EdgeState::kNew},
      {"edge-removed", "edge removed", EdgeChange::kRemoved, EdgeState::kOld},
      {"edge-moved-old", "moved: old edge", EdgeChange::kMoved, EdgeState::kOld},
      {"edge-moved-new", "moved: new edge", EdgeChange::kMoved, EdgeState::kNew},
      {"edge-unchanged", "edge unchanged", EdgeChange::kUnchanged, EdgeState::kBoth},
  };
  const std::string hidden = " [style=invis, label=\"\", width=0.3, height=0.1]";
  // Each edge sample between two nodes of its own: an invisible one and
  // an invisible one or a point.
  auto appendEdge = [&dot, &hidden, &column, &targets](const std::string& key, const char* label,
                                                       EdgeChange change, EdgeState state,
                                                       bool root, const std::string& targetLook) {
    const std::string from = "\"^legend:" + key + ":from\"";
    const std::string to = "\"^legend:" + key + ":to\"";
    dot += "    " + from + hidden + ";\n";
    dot += "    " + to + targetLook + ";\n";
    Attributes attributes;
    attributes.Text("label", label);
    AddEdgeLook(attributes, change, state, root);
    dot += "    " + from + " -> " + to + attributes.Bracketed() + ";\n";
    column.push_back(from);
    targets.push_back(to);
  };
  for (const EdgeSample& sample : edges) {
    appendEdge(sample.key, sample.label, sample.change, sample.state, false, hidden);
  }
  if (withRoots) {
    appendEdge("edge-entry", "entry edge (--roots)", EdgeChange::kUnchanged, EdgeState::kBoth, true,
               hidden);
  }
  appendEdge("edge-end", "end naming no object", EdgeChange::kUnchanged, EdgeState::kBoth, false,
             kPointLook);
  for (const std::vector<std::string>* rank : {&column, &targets}) {
    std::string same = "    { rank=same;";
    std::string chain = "    ";
    for (const std::string& node : *rank) same += " " + node + ";";
    for (auto node = rank->rbegin(); node != rank->rend(); ++node) {
      chain += (node == rank->rbegin() ? "" : " -> ") + *node;
    }
    dot += same + " }\n" + chain + " [style=invis];\n";
  }
  dot += "  }\n";
}

}  // namespace

std::string DotLabelText(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '"') {
      out += "\\\"";
    } else if (c == '\\') {
      out += "\\\\";
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '&') {
      out += "&amp;";
    } else if (byte < 0x20) {
      // U+2400 + byte: E2 90 80+byte.
      out += "\xE2\x90";
      out += static_cast<char>(0x80 + byte);
    } else if (byte == 0x7F) {
      out += "\xE2\x90\xA1";  // U+2421
    } else {
      out += c;
    }
  }
  return out;
}

std::string DotNodeName(std::string_view id) {
  std::string out;
  out.reserve(id.size());
  for (char c : id) {
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '^' || c == '%' || c == '"' || c == '\\' || c == '&' || byte < 0x20 || byte == 0x7F) {
      AppendHex(out, byte);
    } else {
      out += c;
    }
  }
  return out;
}

std::string CutNote(const Drawing& drawing) {
  const DrawingCut& cut = drawing.cut;
  if (!cut.cut) return std::string();
  const char* kind = drawing.comparison ? "changed " : "";
  return "drawing " + std::to_string(cut.drawnVertices) + " of " + std::to_string(cut.vertices) +
         " " + kind + "vertices, in " + std::to_string(cut.drawnParts) + " of " +
         std::to_string(cut.parts) + " " + kind + "parts (--max-drawn " +
         std::to_string(cut.maxNodes) + ": at most " + std::to_string(cut.maxNodes) +
         " vertices, their edges " + std::to_string(cut.maxLength) +
         " ranks long); the rest is left out";
}

std::string WriteDot(const Drawing& drawing) {
  const bool colours = drawing.comparison;
  std::string dot = colours ? "digraph \"change\" {\n" : "digraph \"model\" {\n";
  dot +=
      "  graph [rankdir=LR, fontname=\"Helvetica\", fontsize=11, nodesep=0.1, ranksep=0.5, "
      "labelloc=t, labeljust=l];\n";
  dot +=
      "  node [shape=box, style=\"rounded,filled\", fontname=\"Helvetica\", fontsize=10, "
      "margin=\"0.15,0.06\", ";
  dot += std::string("color=\"") + (colours ? kGrey : kGreyText) + "\", fillcolor=\"" +
         (colours ? kGreyFill : kWhite) + "\", fontcolor=\"" + (colours ? kGreyText : kDark) +
         "\"];\n";
  dot += "  edge [fontname=\"Helvetica\", fontsize=8, arrowsize=0.6, ";
  dot += std::string("color=\"") + (colours ? kGrey : kGreyText) + "\", fontcolor=\"" + kGreyText +
         "\"];\n";
  const std::string note = CutNote(drawing);
  if (!note.empty()) {
    // In two lines, each left-justified (\l), so that a text wider than
    // Graphviz measured it runs out to the right only.
    std::string label = note;
    label[0] = 'D';
    const size_t limit = label.find(" (--max-drawn");
    dot += "  label=\"" + DotLabelText(label.substr(0, limit)) + "\\l" +
           DotLabelText(label.substr(limit + 1)) + "\\l\";\n";
  }
  if (colours) AppendLegend(dot, drawing.withRoots);

  for (const DrawnNode& node : drawing.nodes) {
    Attributes attributes;
    if (node.point) {
      dot += "  " + NodeName(node) + kPointLook + ";\n";
      continue;
    }
    attributes.Text("label", VertexLabel(node));
    AddVertexLook(attributes, node.changes, node.root);
    dot += "  " + NodeName(node) + attributes.Bracketed() + ";\n";
  }
  for (const DrawnEdge& edge : drawing.edges) {
    Attributes attributes;
    attributes.Text("label", DotLabelText(edge.id));
    AddEdgeLook(attributes, edge.change, edge.state, edge.root);
    dot += "  " + NodeName(drawing.nodes[edge.from]) + " -> " + NodeName(drawing.nodes[edge.to]) +
           attributes.Bracketed() + ";\n";
  }
  dot += "}\n";
  return dot;
}

}  // namespace vekzol_tool

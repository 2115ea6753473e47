// File: VEKZOLGraphText.cpp
// The text forms of a graph: the full listing (ToString) and the indented
// tree (Dump). Both are fixed formats, down to the tabs and the empty
// lines, and hosts compare them as they are.
//
// The tree shows each vertex once per path from a root, so Dump walks like
// GetAllChildren: depth-first, children in edge order, with its path on the
// heap. A cycle below a root stops it with CAtlException(E_FAIL).
#include <vekzol/graphs/VEKZOLGraph.h>

#include <cstddef>
#include <cstdint>

#include <vekzol/platform/Status.h>

#include "graphs/GraphTextPieces.h"
#include "graphs/GraphWalk.h"
#include "graphs/IdMap.h"
#include "graphs/MemoryFailure.h"

namespace {

using vekzol::graphs::AppendBlanks;
using vekzol::graphs::CountText;
using vekzol::graphs::RaiseMemoryFailure;
using vekzol::graphs::WalkBelow;

// The two counts as both headers of the listing show them.
void AppendCounts(CString& text, std::size_t vertices, std::size_t edges) {
  text += "\tNb Vertices: ";
  text += CountText(vertices);
  text += "\n";
  text += "\tNb Edges: ";
  text += CountText(edges);
  text += "\n";
}

// Appends the tree lines to `text`. Each line is composed apart and then
// appended whole, so a failure while composing leaves no half line behind.
class TreeLines {
 public:
  TreeLines(CString& text, int startLevel) : m_Text(text), m_StartLevel(startLevel) {}

  void OnChild(VEKZOLGraphVertex*) {}
  bool Enter(VEKZOLGraphVertex* vertex, std::size_t depth) {
    // Each call one level deeper adds one to a 32-bit level, wrapping as
    // such an addition does.
    const auto level = static_cast<int>(static_cast<std::uint32_t>(m_StartLevel) +
                                        static_cast<std::uint32_t>(depth));
    AppendLine(vertex, level);
    return true;
  }

  // No prefix at level 0 or less; else two blanks per level and "|__".
  void AppendLine(VEKZOLGraphVertex* vertex, int level) {
    m_Line.Empty();
    if (level >= 1) {
      AppendBlanks(m_Line, 2 * static_cast<std::size_t>(level));
      m_Line += "|__";
    }
    m_Line += vertex->GetName();
    m_Line += "\n";
    m_Text += m_Line;
  }

 private:
  CString& m_Text;
  const int m_StartLevel;
  // Kept between lines, so that its buffer is allocated once per walk.
  CString m_Line;
};

}  // namespace

CString VEKZOLGraph::ToString() {
  return RaiseMemoryFailure([this] {
    CString text("Graph:\n\n");
    AppendCounts(text, m_Vertices->size(), m_Edges->size());
    text += "\n";
    for (const auto& entry : *m_Vertices) {
      if (entry.second != nullptr) {
        text += entry.second->ToString();
      }
    }
    for (const auto& entry : *m_Edges) {
      if (entry.second != nullptr) {
        text += entry.second->ToString();
      }
    }
    text += "\n";
    text += "Graph Summary:\n\n";
    AppendCounts(text, m_Vertices->size(), m_Edges->size());
    text += "\n";
    text += Dump();
    return text;
  });
}

CString VEKZOLGraph::Dump() {
  return RaiseMemoryFailure([this] {
    CString text("Graph: ");
    text += m_Name;
    text += "\n\n";
    AppendCounts(text, m_Vertices->size(), m_Edges->size());
    text += "\n";
    CString treeText;
    std::deque<VEKZOLGraphVertex*> roots;
    GetRoots(roots);
    for (VEKZOLGraphVertex* root : roots) {
      if (root != nullptr) {
        Dump(root, treeText, 0);
      }
    }
    text += "\n";
    text += treeText;
    text += "\n";
    text += "\n";
    return text;
  });
}

long VEKZOLGraph::Dump(VEKZOLGraphVertex* vertex, CString& text, int level) {
  if (vertex == nullptr) {
    return E_INVALIDARG;
  }
  RaiseMemoryFailure([&] {
    TreeLines lines(text, level);
    lines.AppendLine(vertex, level);
    WalkBelow(vertex, lines);
  });
  // The status carries nothing; the public Dump ignores it.
  return E_FAIL;
}

// Memory running out at any allocation of a graph operation: the operation
// raises CAtlException(E_OUTOFMEMORY), never std::bad_alloc; the graph stays
// sound (every link it holds is whole, the flags agree with the edge lists)
// and is destroyed with every vertex and edge it made; a walk has appended
// a prefix of what the complete walk appends. Each test fails the first
// allocation of the operation, then the second, and so on, until the
// operation completes, and then checks that it gave the complete result.
//
// The program replaces the global allocator. Under the sanitizer build the
// leak check sees every block that a failed operation left behind.
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/graphs/VEKZOLProcessGraph.h>
#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"
#include "platform/CountingAllocatorTesting.h"

namespace {

using graph_test::GraphPeer;
using graph_test::Model;

// A small model with what a graph tolerates: a vertex with several parents,
// parallel edges, ends that name no vertex and a null end, duplicate object
// and relation ids, null entries, and a cycle with a self-loop that no root
// reaches.
//
//   a -> b (ab, ab2), a -> c (ac), b -> d (bd), c -> d (cd), y -> y (yy),
//   outside -> c (oc), b -> nowhere (bn), null -> e (ne), x -> y -> x
void FillModel(Model& model) {
  auto* a = model.Object("a", "Alpha");
  auto* b = model.Object("b");
  auto* c = model.Object("c", "Gamma");
  auto* d = model.Object("d");
  auto* e = model.Object("e");
  auto* x = model.Object("x");
  auto* y = model.Object("y");
  model.Object("a", "second a");  // the first object of an id stays
  model.objects.push_back(nullptr);
  auto* outside = model.Outside("outside");
  auto* nowhere = model.Outside("nowhere");
  model.Relation("ab", a, b);
  model.Relation("ac", a, c);
  model.Relation("bd", b, d);
  model.relations.push_back(nullptr);
  model.Relation("cd", c, d);
  model.Relation("ab2", a, b);
  model.Relation("yy", y, y);
  model.Relation("oc", outside, c);
  model.Relation("bn", b, nowhere);
  model.Relation("ne", nullptr, e);
  model.Relation("xy", x, y);
  model.Relation("yx", y, x);
  model.Relation("ab", c, a);  // the first relation of an id stays
}

std::string IdOf(VEKZOLGraphVertex* vertex) {
  return vertex == nullptr ? std::string("-") : std::string(vertex->GetID().GetString());
}

std::string IdOf(VEKZOLGraphEdge* edge) {
  return edge == nullptr ? std::string("-") : std::string(edge->GetID().GetString());
}

template <typename Element>
std::vector<std::string> Ids(const std::deque<Element*>& elements) {
  std::vector<std::string> ids;
  for (Element* element : elements) ids.push_back(IdOf(element));
  return ids;
}

// Everything the graph's links say, one line per edge and per vertex.
std::vector<std::string> Links(VEKZOLGraph& graph) {
  std::vector<std::string> lines;
  std::deque<VEKZOLGraphEdge*> edges;
  graph.GetAllEdges(edges);
  for (VEKZOLGraphEdge* edge : edges) {
    lines.push_back("edge " + IdOf(edge) + ": " + IdOf(edge->GetParent()) + " -> " +
                    IdOf(edge->GetChild()));
  }
  std::deque<VEKZOLGraphVertex*> vertices;
  graph.GetAllVertices(vertices);
  for (VEKZOLGraphVertex* vertex : vertices) {
    std::string line = "vertex " + IdOf(vertex) + (vertex->IsRoot() ? " root" : "") +
                       (vertex->IsLeaf() ? " leaf" : "") + " in:";
    std::deque<VEKZOLGraphEdge*> parents;
    vertex->GetParentEdges(parents);
    for (VEKZOLGraphEdge* edge : parents) line += " " + IdOf(edge);
    line += " out:";
    std::deque<VEKZOLGraphEdge*> children;
    vertex->GetChildEdges(children);
    for (VEKZOLGraphEdge* edge : children) line += " " + IdOf(edge);
    lines.push_back(line);
  }
  return lines;
}

// The invariants that AddEdge keeps: an edge with a parent vertex stands
// once among that vertex's child edges, one with a child vertex once among
// its parent edges; every edge a vertex lists is an edge of the graph that
// names the vertex at that end; the flags tell whether the lists are empty.
void ExpectSound(VEKZOLGraph& graph, const std::string& when) {
  std::deque<VEKZOLGraphEdge*> edges;
  graph.GetAllEdges(edges);
  std::deque<VEKZOLGraphVertex*> vertices;
  graph.GetAllVertices(vertices);
  const auto count = [](const std::deque<VEKZOLGraphEdge*>& list, VEKZOLGraphEdge* edge) {
    int found = 0;
    for (VEKZOLGraphEdge* entry : list) found += entry == edge ? 1 : 0;
    return found;
  };
  for (VEKZOLGraphEdge* edge : edges) {
    ASSERT_NE(nullptr, edge) << when;
    if (VEKZOLGraphVertex* parent = edge->GetParent()) {
      std::deque<VEKZOLGraphEdge*> out;
      parent->GetChildEdges(out);
      EXPECT_EQ(1, count(out, edge)) << when << ": edge " << IdOf(edge);
    }
    if (VEKZOLGraphVertex* child = edge->GetChild()) {
      std::deque<VEKZOLGraphEdge*> in;
      child->GetParentEdges(in);
      EXPECT_EQ(1, count(in, edge)) << when << ": edge " << IdOf(edge);
    }
  }
  for (VEKZOLGraphVertex* vertex : vertices) {
    ASSERT_NE(nullptr, vertex) << when;
    std::deque<VEKZOLGraphEdge*> in;
    std::deque<VEKZOLGraphEdge*> out;
    vertex->GetParentEdges(in);
    vertex->GetChildEdges(out);
    EXPECT_EQ(in.empty(), vertex->IsRoot()) << when << ": vertex " << IdOf(vertex);
    EXPECT_EQ(out.empty(), vertex->IsLeaf()) << when << ": vertex " << IdOf(vertex);
    for (VEKZOLGraphEdge* edge : in) {
      EXPECT_EQ(1, count(edges, edge)) << when << ": vertex " << IdOf(vertex);
      EXPECT_EQ(vertex, edge->GetChild()) << when << ": vertex " << IdOf(vertex);
    }
    for (VEKZOLGraphEdge* edge : out) {
      EXPECT_EQ(1, count(edges, edge)) << when << ": vertex " << IdOf(vertex);
      EXPECT_EQ(vertex, edge->GetParent()) << when << ": vertex " << IdOf(vertex);
    }
  }
}

// Whether `part` is the beginning of `whole`.
bool IsPrefix(const std::vector<std::string>& part, const std::vector<std::string>& whole) {
  if (part.size() > whole.size()) return false;
  for (std::size_t i = 0; i < part.size(); ++i) {
    if (part[i] != whole[i]) return false;
  }
  return true;
}

class VEKZOLGraphAllocationFailureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    FillModel(m_Model);
    // What the first build of the process sets up once (the trace log's
    // switches and file name) is not the operation's own.
    {
      VEKZOLGraph warmUp("warm-up");
      warmUp.Build(m_Model.objects, m_Model.relations);
    }
    m_Vertices = VEKZOLGraphVertex::_RefCounter;
    m_Edges = VEKZOLGraphEdge::_RefCounter;
  }

  // After a graph is destroyed, every vertex and edge it made is gone.
  void ExpectAllDestroyed(const std::string& when) {
    EXPECT_EQ(m_Vertices, VEKZOLGraphVertex::_RefCounter) << when;
    EXPECT_EQ(m_Edges, VEKZOLGraphEdge::_RefCounter) << when;
  }

  // A graph built completely from the model.
  std::unique_ptr<GraphPeer> Built() {
    auto graph = std::make_unique<GraphPeer>("G");
    graph->Build(m_Model.objects, m_Model.relations);
    return graph;
  }

  // Runs a walk that appends to a deque of vertices, on a complete graph,
  // with memory running out at each allocation in turn; each failed run
  // appended a prefix of what the complete run appends, the graph is
  // unchanged, and the complete run answers `status` with `expected`. A
  // walk whose few results fit in the deque's first block may allocate
  // nothing at all.
  void CheckVertexWalk(
      const std::function<long(VEKZOLGraph&, std::deque<VEKZOLGraphVertex*>&)>& walk, long status,
      const std::vector<std::string>& expected, std::size_t minFailures = 0) {
    std::size_t failures = 0;
    for (std::size_t allowed = 0;; ++allowed) {
      const std::string when = "after " + std::to_string(allowed) + " allocations";
      auto graph = Built();
      const std::vector<std::string> links = Links(*graph);
      std::deque<VEKZOLGraphVertex*> found;
      long answer = S_OK;
      HRESULT raised = S_OK;
      const Ending ending = RunFailingAfter(
          allowed, [&] { answer = walk(*graph, found); }, raised);
      if (ending == Ending::kCompleted) {
        EXPECT_EQ(status, answer) << when;
        EXPECT_EQ(expected, Ids(found)) << when;
        graph.reset();
        ExpectAllDestroyed(when);
        break;
      }
      ++failures;
      ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
      EXPECT_TRUE(IsPrefix(Ids(found), expected)) << when;
      EXPECT_EQ(links, Links(*graph)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
    }
    EXPECT_GE(failures, minFailures);
  }

  // The same for an operation that gives a text.
  void CheckText(const std::function<CString(VEKZOLGraph&)>& render, const CString& expected) {
    std::size_t failures = 0;
    for (std::size_t allowed = 0;; ++allowed) {
      const std::string when = "after " + std::to_string(allowed) + " allocations";
      auto graph = Built();
      const std::vector<std::string> links = Links(*graph);
      CString text("before");
      HRESULT raised = S_OK;
      const Ending ending = RunFailingAfter(
          allowed, [&] { text = render(*graph); }, raised);
      if (ending == Ending::kCompleted) {
        EXPECT_STREQ(expected.GetString(), text.GetString()) << when;
        graph.reset();
        ExpectAllDestroyed(when);
        break;
      }
      ++failures;
      ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
      EXPECT_STREQ("before", text.GetString()) << when;
      EXPECT_EQ(links, Links(*graph)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
    }
    EXPECT_GT(failures, 3u);
  }

  Model m_Model;
  int m_Vertices = 0;
  int m_Edges = 0;
};

const std::vector<std::string> kCompleteLinks = {
    "edge ab: a -> b",
    "edge ab2: a -> b",
    "edge ac: a -> c",
    "edge bd: b -> d",
    "edge bn: b -> -",
    "edge cd: c -> d",
    "edge ne: - -> e",
    "edge oc: - -> c",
    "edge xy: x -> y",
    "edge yx: y -> x",
    "edge yy: y -> y",
    "vertex a root in: out: ab ac ab2",
    "vertex b in: ab ab2 out: bd bn",
    "vertex c in: ac oc out: cd",
    "vertex d leaf in: bd cd out:",
    "vertex e leaf in: ne out:",
    "vertex x in: yx out: xy",
    "vertex y in: yy xy out: yy yx",
};

TEST_F(VEKZOLGraphAllocationFailureTest, BuildRaisesOutOfMemoryAndLeavesASoundGraph) {
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    auto graph = std::make_unique<GraphPeer>("G");
    long status = S_OK;
    HRESULT raised = S_OK;
    const Ending ending = RunFailingAfter(
        allowed, [&] { status = graph->Build(m_Model.objects, m_Model.relations); }, raised);
    if (ending == Ending::kCompleted) {
      EXPECT_EQ(E_FAIL, status) << when;
      EXPECT_EQ(kCompleteLinks, Links(*graph)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
      break;
    }
    ++failures;
    ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
    ExpectSound(*graph, when);
    graph.reset();
    ExpectAllDestroyed(when);
  }
  EXPECT_GT(failures, 10u);
}

// A second Build adds to a graph that holds vertices already, one AddVertex
// at a time.
TEST_F(VEKZOLGraphAllocationFailureTest, SecondBuildRaisesOutOfMemoryAndLeavesASoundGraph) {
  Model first;
  first.Object("b");
  first.Object("z");
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    auto graph = std::make_unique<GraphPeer>("G");
    graph->Build(first.objects, first.relations);
    HRESULT raised = S_OK;
    const Ending ending = RunFailingAfter(
        allowed, [&] { graph->Build(m_Model.objects, m_Model.relations); }, raised);
    if (ending == Ending::kCompleted) {
      std::vector<std::string> expected = kCompleteLinks;
      expected.push_back("vertex z root leaf in: out:");
      EXPECT_EQ(expected, Links(*graph)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
      break;
    }
    ++failures;
    ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
    ExpectSound(*graph, when);
    graph.reset();
    ExpectAllDestroyed(when);
  }
  EXPECT_GT(failures, 10u);
}

TEST_F(VEKZOLGraphAllocationFailureTest, AddVertexAndAddEdgeRaiseOutOfMemoryAndAddNothingHalf) {
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    auto graph = std::make_unique<GraphPeer>("G");
    HRESULT raised = S_OK;
    std::size_t added = 0;
    const Ending ending = RunFailingAfter(
        allowed,
        [&] {
          for (VEKIZOLObject* object : m_Model.objects) {
            VEKZOLGraphVertex* vertex = nullptr;
            if (object != nullptr) graph->AddVertex(object, vertex);
            ++added;
          }
          for (VEKIZOLRelation* relation : m_Model.relations) {
            VEKZOLGraphEdge* edge = nullptr;
            if (relation != nullptr) graph->AddEdge(relation, edge);
            ++added;
          }
        },
        raised);
    if (ending == Ending::kCompleted) {
      EXPECT_EQ(kCompleteLinks, Links(*graph)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
      break;
    }
    ++failures;
    ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
    ExpectSound(*graph, when);
    // What the graph holds is what the calls before the failed one added,
    // and perhaps the failed one's vertex or edge.
    std::deque<VEKZOLGraphVertex*> vertices;
    std::deque<VEKZOLGraphEdge*> edges;
    graph->GetAllVertices(vertices);
    graph->GetAllEdges(edges);
    EXPECT_LE(vertices.size() + edges.size(), added + 1) << when;
    graph.reset();
    ExpectAllDestroyed(when);
  }
  EXPECT_GT(failures, 10u);
}

TEST_F(VEKZOLGraphAllocationFailureTest, CopyRaisesOutOfMemoryAndFreesWhatItMade) {
  auto source = Built();
  m_Vertices = VEKZOLGraphVertex::_RefCounter;  // the source's stay
  m_Edges = VEKZOLGraphEdge::_RefCounter;
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    // The host's block for the graph object is not the copy's to make.
    std::unique_ptr<VEKZOLGraph> copy;
    void* place = ::operator new(sizeof(VEKZOLGraph));
    HRESULT raised = S_OK;
    const Ending ending = RunFailingAfter(
        allowed, [&] { copy.reset(new (place) VEKZOLGraph(*source, "copy", true)); }, raised);
    if (copy == nullptr) ::operator delete(place);
    if (ending == Ending::kCompleted) {
      // Made afresh from the relations, in edge id order: a's and y's
      // edges change their order.
      std::vector<std::string> expected = kCompleteLinks;
      expected[11] = "vertex a root in: out: ab ab2 ac";
      expected.back() = "vertex y in: xy yy out: yx yy";
      EXPECT_EQ(expected, Links(*copy)) << when;
      copy.reset();
      ExpectAllDestroyed(when);
      break;
    }
    ++failures;
    ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
    EXPECT_EQ(nullptr, copy) << when;
    ExpectAllDestroyed(when);
  }
  EXPECT_GT(failures, 10u);
}

TEST_F(VEKZOLGraphAllocationFailureTest, GetAllChildrenRaisesOutOfMemoryAfterAPrefix) {
  CheckVertexWalk(
      [](VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& found) {
        return graph.GetAllChildren(CString("a"), found);
      },
      E_FAIL, {"b", "d", "c", "d", "b", "d"}, 2);
}

TEST_F(VEKZOLGraphAllocationFailureTest, GetAllChildrenFromAnEdgeRaisesOutOfMemoryAfterAPrefix) {
  CheckVertexWalk(
      [](VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& found) {
        return graph.GetAllChildren(CString("ab"), found);
      },
      E_FAIL, {"d"});
}

TEST_F(VEKZOLGraphAllocationFailureTest, GetAllLeavesRaisesOutOfMemoryAfterAPrefix) {
  // d once per path; b's edge to nowhere leads to no vertex.
  CheckVertexWalk(
      [](VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& found) {
        return graph.GetAllLeaves(CString("a"), found);
      },
      E_FAIL, {"d", "d", "d"}, 2);
  CheckVertexWalk(
      [](VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& found) {
        return graph.GetAllLeaves(CString("e"), found);
      },
      S_FALSE, {"e"});
}

TEST_F(VEKZOLGraphAllocationFailureTest, RootsLeavesAndListingsRaiseOutOfMemoryAfterAPrefix) {
  CheckVertexWalk([](VEKZOLGraph& graph,
                     std::deque<VEKZOLGraphVertex*>& found) { return graph.GetRoots(found); },
                  S_OK, {"a"});
  CheckVertexWalk([](VEKZOLGraph& graph,
                     std::deque<VEKZOLGraphVertex*>& found) { return graph.GetLeaves(found); },
                  S_OK, {"d", "e"});
  CheckVertexWalk([](VEKZOLGraph& graph,
                     std::deque<VEKZOLGraphVertex*>& found) { return graph.GetAllVertices(found); },
                  S_OK, {"a", "b", "c", "d", "e", "x", "y"});
  CheckVertexWalk(
      [](VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& found) {
        VEKZOLGraphVertex* d = nullptr;
        graph.GetVertex("d", d);
        return d->GetParents(found);
      },
      S_OK, {"b", "c"});
  CheckVertexWalk(
      [](VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& found) {
        VEKZOLGraphVertex* a = nullptr;
        graph.GetVertex("a", a);
        return a->GetChildren(found);
      },
      S_OK, {"b", "c", "b"});
}

TEST_F(VEKZOLGraphAllocationFailureTest, RootEdgesAndAllEdgesRaiseOutOfMemoryAfterAPrefix) {
  // Both forms append to deques of edges; the two-deque GetRoots to one of
  // vertices too, whose ids stand in front of the edges' here.
  const std::vector<std::string> rootsAndRootEdges = {"a", "ne", "oc"};
  const std::vector<std::string> allEdges = {"ab", "ab2", "ac", "bd", "bn", "cd",
                                             "ne", "oc",  "xy", "yx", "yy"};
  for (const bool roots : {true, false}) {
    const std::vector<std::string>& expected = roots ? rootsAndRootEdges : allEdges;
    for (std::size_t allowed = 0;; ++allowed) {
      const std::string when = "after " + std::to_string(allowed) + " allocations";
      auto graph = Built();
      std::deque<VEKZOLGraphVertex*> vertices;
      std::deque<VEKZOLGraphEdge*> edges;
      long status = E_INVALIDARG;
      HRESULT raised = S_OK;
      const Ending ending = RunFailingAfter(
          allowed,
          [&] { status = roots ? graph->GetRoots(vertices, edges) : graph->GetAllEdges(edges); },
          raised);
      std::vector<std::string> ids = Ids(vertices);
      for (const std::string& id : Ids(edges)) ids.push_back(id);
      if (ending == Ending::kCompleted) {
        EXPECT_EQ(S_OK, status) << when;
        EXPECT_EQ(expected, ids) << when;
        break;
      }
      ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
      EXPECT_TRUE(IsPrefix(ids, expected)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
    }
  }
}

// A cycle below the start ends the walk with E_FAIL; memory running out
// before it is reached still says E_OUTOFMEMORY. From x the walk enters y,
// whose oldest edge is its self-loop: y is appended again and closes it.
TEST_F(VEKZOLGraphAllocationFailureTest, WalkIntoACycleRaisesOutOfMemoryOrTheCycle) {
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    auto graph = Built();
    std::deque<VEKZOLGraphVertex*> found;
    HRESULT raised = S_OK;
    const Ending ending = RunFailingAfter(
        allowed, [&] { graph->GetAllChildren(CString("x"), found); }, raised);
    ASSERT_NE(Ending::kCompleted, ending) << when;
    ASSERT_NE(Ending::kBadAlloc, ending) << when;
    const std::vector<std::string> ids = Ids(found);
    graph.reset();
    ExpectAllDestroyed(when);
    if (ending == Ending::kOtherStatus) {
      EXPECT_EQ(E_FAIL, raised) << when;
      EXPECT_EQ((std::vector<std::string>{"y", "y"}), ids) << when;
      break;
    }
    ++failures;
    EXPECT_TRUE(IsPrefix(ids, {"y", "y"})) << when;
  }
  EXPECT_GT(failures, 0u);
}

const char kDump[] =
    "Graph: G\n\n\tNb Vertices: 7\n\tNb Edges: 11\n\n\n"
    "Alpha\n  |__b\n    |__d\n  |__Gamma\n    |__d\n  |__b\n    |__d\n\n\n";

TEST_F(VEKZOLGraphAllocationFailureTest, DumpRaisesOutOfMemoryAndLeavesTheGraphAlone) {
  CheckText([](VEKZOLGraph& graph) { return graph.Dump(); }, kDump);
}

TEST_F(VEKZOLGraphAllocationFailureTest, ToStringRaisesOutOfMemoryAndLeavesTheGraphAlone) {
  auto graph = Built();
  const CString expected = graph->ToString();
  graph.reset();
  ASSERT_NE(-1, expected.Find(kDump));
  CheckText([](VEKZOLGraph& graph) { return graph.ToString(); }, expected);
}

// The protected Dump of one vertex appends whole lines only. From c it
// completes; from x it meets the cycle through y's self-loop after y's line.
TEST_F(VEKZOLGraphAllocationFailureTest, DumpOfAVertexRaisesOutOfMemoryAndKeepsWholeLines) {
  struct Case {
    const char* start;
    int level;
    Ending ending;
    std::string complete;
  };
  const Case cases[] = {
      {"c", 1, Ending::kCompleted, "so far\n  |__Gamma\n    |__d\n"},
      {"x", 0, Ending::kOtherStatus, "so far\nx\n  |__y\n"},
  };
  for (const Case& check : cases) {
    std::size_t failures = 0;
    for (std::size_t allowed = 0;; ++allowed) {
      const std::string when =
          std::string(check.start) + " after " + std::to_string(allowed) + " allocations";
      auto graph = Built();
      CString text("so far\n");
      HRESULT raised = S_OK;
      long status = S_OK;
      VEKZOLGraphVertex* start = nullptr;
      graph->GetVertex(check.start, start);
      const Ending ending = RunFailingAfter(
          allowed, [&] { status = graph->DumpVertex(start, text, check.level); }, raised);
      graph.reset();
      ExpectAllDestroyed(when);
      if (ending != Ending::kOutOfMemory) {
        EXPECT_EQ(check.ending, ending) << when;
        // A completed dump answers E_FAIL, and so does the cycle.
        EXPECT_EQ(E_FAIL, ending == Ending::kCompleted ? status : raised) << when;
        EXPECT_EQ(check.complete, text.GetString()) << when;
        break;
      }
      ++failures;
      const std::string part = text.GetString();
      EXPECT_EQ(0, check.complete.compare(0, part.size(), part)) << when;
      EXPECT_EQ('\n', part.back()) << when;
    }
    EXPECT_GT(failures, 0u);
  }
}

TEST_F(VEKZOLGraphAllocationFailureTest, ProcessGraphBuildRaisesOutOfMemory) {
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    auto graph = std::make_unique<VEKZOLProcessGraph>("P");
    HRESULT raised = S_OK;
    const Ending ending = RunFailingAfter(
        allowed, [&] { graph->Build(m_Model.objects, m_Model.relations); }, raised);
    if (ending == Ending::kCompleted) {
      EXPECT_EQ(kCompleteLinks, Links(*graph)) << when;
      graph.reset();
      ExpectAllDestroyed(when);
      break;
    }
    ++failures;
    ASSERT_EQ(Ending::kOutOfMemory, ending) << when << ", status " << raised;
    ExpectSound(*graph, when);
    graph.reset();
    ExpectAllDestroyed(when);
  }
  EXPECT_GT(failures, 10u);
}

}  // namespace

// Tests of the text forms: ToString of vertices, edges and graphs, and the
// public and protected Dump, compared byte for byte.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <deque>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::EdgePeer;
using graph_test::GraphPeer;
using graph_test::Model;
using graph_test::RaisedStatus;
using graph_test::TestObject;
using graph_test::VertexPeer;

VEKZOLGraphVertex* VertexOf(VEKZOLGraph& graph, const CString& id) {
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.GetVertex(id, vertex)) << id.GetString();
  return vertex;
}

VEKZOLGraphEdge* EdgeOf(VEKZOLGraph& graph, const CString& id) {
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.GetEdge(id, edge)) << id.GetString();
  return edge;
}

std::string Text(const CString& text) { return std::string(text.GetString(), text.GetLength()); }

// ---------------------------------------------------------------------------
// Vertex

TEST(VEKZOLGraphVertexTextTest, VertexWithoutEdgesShowsZeroChildrenAndAnEmptyParentLine) {
  TestObject object("p");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: p\n"
      "\tNb Children: 0\n"
      "\tParent: \n"
      "\n",
      Text(vertex.ToString()));
}

TEST(VEKZOLGraphVertexTextTest, VertexShowsItsParentAndOneLineWithTwoBlanksPerChild) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  TestObject* s = model.Object("s");
  model.Relation("pq", p, q);
  model.Relation("qs", q, s);
  model.Relation("qr", q, r);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: q\n"
      "\tNb Children: 2\n"
      "\tParent: \tName: p\n"
      "\tChild:  \tName: s\n"
      "\tChild:  \tName: r\n"
      "\n",
      Text(VertexOf(graph, "q")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, VertexWithTwoParentsShowsOnlyTheParentOfItsOldestIncomingEdge) {
  Model model;
  TestObject* a = model.Object("a");
  TestObject* b = model.Object("b");
  TestObject* c = model.Object("c");
  model.Relation("2", b, c);
  model.Relation("1", a, c);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: c\n"
      "\tNb Children: 0\n"
      "\tParent: \tName: b\n"
      "\n",
      Text(VertexOf(graph, "c")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, VertexWhoseOldestIncomingEdgeHasNoParentShowsNoParent) {
  Model model;
  TestObject* a = model.Object("a");
  TestObject* c = model.Object("c");
  model.Relation("1", model.Outside("x"), c);
  model.Relation("2", a, c);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: c\n"
      "\tNb Children: 0\n"
      "\tParent: \n"
      "\n",
      Text(VertexOf(graph, "c")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, ChildCountCountsEdgesWhileChildLinesNeedAChildVertex) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("px", p, model.Outside("x"));
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: p\n"
      "\tNb Children: 1\n"
      "\tParent: \n"
      "\n",
      Text(VertexOf(graph, "p")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, ParallelEdgesGiveTwoChildLines) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("1", p, q);
  model.Relation("2", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: p\n"
      "\tNb Children: 2\n"
      "\tParent: \n"
      "\tChild:  \tName: q\n"
      "\tChild:  \tName: q\n"
      "\n",
      Text(VertexOf(graph, "p")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, SelfLoopShowsTheVertexAsItsOwnParentAndChild) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("pp", p, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: p\n"
      "\tNb Children: 1\n"
      "\tParent: \tName: p\n"
      "\tChild:  \tName: p\n"
      "\n",
      Text(VertexOf(graph, "p")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, DisplayNamesStandWhereTheyExistAndIdsElsewhere) {
  Model model;
  TestObject* p = model.Object("p", "Press");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r", "Rivet");
  model.Relation("pq", p, q);
  model.Relation("qr", q, r);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Vertice:\n"
      "\tName: q\n"
      "\tNb Children: 1\n"
      "\tParent: \tName: Press\n"
      "\tChild:  \tName: Rivet\n"
      "\n",
      Text(VertexOf(graph, "q")->ToString()));
}

TEST(VEKZOLGraphVertexTextTest, VertexWithoutObjectHasAnEmptyName) {
  VEKZOLGraphVertex vertex(nullptr);
  EXPECT_EQ("Vertice:\n\tName: \n\tNb Children: 0\n\tParent: \n\n", Text(vertex.ToString()));
}

TEST(VEKZOLGraphVertexTextTest, TextShowsNeitherTheRootNorTheLeafFlag) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  for (const char* id : {"p", "q"}) {
    const std::string text = Text(VertexOf(graph, id)->ToString());
    EXPECT_EQ(std::string::npos, text.find("Is Root")) << text;
    EXPECT_EQ(std::string::npos, text.find("Is Leaf")) << text;
    EXPECT_EQ(std::string::npos, text.find("TRUE")) << text;
    EXPECT_EQ(std::string::npos, text.find("FALSE")) << text;
  }
}

TEST(VEKZOLGraphVertexTextTest, NullEdgesGiveNoChildLineButCountAsChildren) {
  TestObject object("p");
  VertexPeer vertex(&object);
  vertex.AppendChildEdge(nullptr);
  vertex.AppendParentEdge(nullptr);
  EXPECT_EQ("Vertice:\n\tName: p\n\tNb Children: 1\n\tParent: \n\n", Text(vertex.ToString()));
}

// ---------------------------------------------------------------------------
// Edge

TEST(VEKZOLGraphEdgeTextTest, EdgeWithBothEndsShowsBothNamesEachOnItsLine) {
  Model model;
  TestObject* p = model.Object("p", "Press");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Edge:\n"
      "\tName: pq\n"
      "\tParent: \tName: Press\n"
      "\tChild:  \tName: q\n",
      Text(EdgeOf(graph, "pq")->ToString()));
}

TEST(VEKZOLGraphEdgeTextTest, EdgeWithNeitherEndRunsParentAndChildTogetherWithoutLineFeed) {
  Model model;
  model.Relation("e", nullptr, nullptr);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ("Edge:\n\tName: e\n\tParent: \tChild:  ", Text(EdgeOf(graph, "e")->ToString()));
}

TEST(VEKZOLGraphEdgeTextTest, EdgeWithoutParentPutsTheChildOnTheParentLine) {
  Model model;
  TestObject* q = model.Object("q");
  model.Relation("e", model.Outside("x"), q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ("Edge:\n\tName: e\n\tParent: \tChild:  \tName: q\n",
            Text(EdgeOf(graph, "e")->ToString()));
}

TEST(VEKZOLGraphEdgeTextTest, EdgeWithoutChildEndsWithoutLineFeed) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("e", p, nullptr);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ("Edge:\n\tName: e\n\tParent: \tName: p\n\tChild:  ",
            Text(EdgeOf(graph, "e")->ToString()));
}

TEST(VEKZOLGraphEdgeTextTest, EdgeWithoutRelationHasAnEmptyName) {
  VEKZOLGraphEdge edge(nullptr);
  EXPECT_EQ("Edge:\n\tName: \n\tParent: \tChild:  ", Text(edge.ToString()));
}

TEST(VEKZOLGraphEdgeTextTest, EdgeNamesItsEndsByTheirIdsWhenTheyHaveNoDisplayName) {
  TestObject parentObject("", "");
  TestObject childObject("c", "");
  VEKZOLGraphVertex parent(&parentObject);
  VEKZOLGraphVertex child(&childObject);
  EdgePeer edge(nullptr);
  edge.SetEnds(&parent, &child);
  EXPECT_EQ("Edge:\n\tName: \n\tParent: \tName: \n\tChild:  \tName: c\n", Text(edge.ToString()));
}

// ---------------------------------------------------------------------------
// Graph: ToString and Dump

TEST(VEKZOLGraphTextTest, ToStringOfAnEmptyGraph) {
  VEKZOLGraph graph;
  EXPECT_EQ(
      "Graph:\n"
      "\n"
      "\tNb Vertices: 0\n"
      "\tNb Edges: 0\n"
      "\n"
      "\n"
      "Graph Summary:\n"
      "\n"
      "\tNb Vertices: 0\n"
      "\tNb Edges: 0\n"
      "\n"
      "Graph: \n"
      "\n"
      "\tNb Vertices: 0\n"
      "\tNb Edges: 0\n"
      "\n"
      "\n"
      "\n"
      "\n",
      Text(graph.ToString()));
}

TEST(VEKZOLGraphTextTest, ToStringOfASmallGraphIsTheListingTheSummaryAndTheTree) {
  Model model;
  TestObject* p = model.Object("p", "Press");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  TestObject* s = model.Object("s");
  model.Relation("e1", p, q);
  model.Relation("e2", p, r);
  model.Relation("e3", q, s);
  model.Relation("e4", r, model.Outside("x"));
  VEKZOLGraph graph("G");
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Graph:\n"
      "\n"
      "\tNb Vertices: 4\n"
      "\tNb Edges: 4\n"
      "\n"
      "Vertice:\n"
      "\tName: Press\n"
      "\tNb Children: 2\n"
      "\tParent: \n"
      "\tChild:  \tName: q\n"
      "\tChild:  \tName: r\n"
      "\n"
      "Vertice:\n"
      "\tName: q\n"
      "\tNb Children: 1\n"
      "\tParent: \tName: Press\n"
      "\tChild:  \tName: s\n"
      "\n"
      "Vertice:\n"
      "\tName: r\n"
      "\tNb Children: 1\n"
      "\tParent: \tName: Press\n"
      "\n"
      "Vertice:\n"
      "\tName: s\n"
      "\tNb Children: 0\n"
      "\tParent: \tName: q\n"
      "\n"
      "Edge:\n"
      "\tName: e1\n"
      "\tParent: \tName: Press\n"
      "\tChild:  \tName: q\n"
      "Edge:\n"
      "\tName: e2\n"
      "\tParent: \tName: Press\n"
      "\tChild:  \tName: r\n"
      "Edge:\n"
      "\tName: e3\n"
      "\tParent: \tName: q\n"
      "\tChild:  \tName: s\n"
      "Edge:\n"
      "\tName: e4\n"
      "\tParent: \tName: r\n"
      "\tChild:  "
      "\n"
      "Graph Summary:\n"
      "\n"
      "\tNb Vertices: 4\n"
      "\tNb Edges: 4\n"
      "\n"
      "Graph: G\n"
      "\n"
      "\tNb Vertices: 4\n"
      "\tNb Edges: 4\n"
      "\n"
      "\n"
      "Press\n"
      "  |__q\n"
      "    |__s\n"
      "  |__r\n"
      "\n"
      "\n",
      Text(graph.ToString()));
}

TEST(VEKZOLGraphTextTest, DumpIndentsTwoBlanksPerLevelBetweenTwoEmptyLinesOnEachSide) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  TestObject* s = model.Object("s");
  model.Relation("pq", p, q);
  model.Relation("pr", p, r);
  model.Relation("qs", q, s);
  VEKZOLGraph graph("G");
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Graph: G\n"
      "\n"
      "\tNb Vertices: 4\n"
      "\tNb Edges: 3\n"
      "\n"
      "\n"
      "p\n"
      "  |__q\n"
      "    |__s\n"
      "  |__r\n"
      "\n"
      "\n",
      Text(graph.Dump()));
}

TEST(VEKZOLGraphTextTest, DumpOfAnUnnamedGraphPutsTheEmptyLineRightBehindTheLabel) {
  Model model;
  model.Object("p");
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ("Graph: \n\n\tNb Vertices: 1\n\tNb Edges: 0\n\n\np\n\n\n", Text(graph.Dump()));
}

TEST(VEKZOLGraphTextTest, DumpShowsAVertexWithTwoParentsWithAllBelowItUnderEachParent) {
  Model model;
  TestObject* a = model.Object("a");
  TestObject* b = model.Object("b");
  TestObject* c = model.Object("c");
  TestObject* d = model.Object("d");
  model.Relation("1", a, c);
  model.Relation("2", b, c);
  model.Relation("3", c, d);
  VEKZOLGraph graph("two parents");
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Graph: two parents\n"
      "\n"
      "\tNb Vertices: 4\n"
      "\tNb Edges: 3\n"
      "\n"
      "\n"
      "a\n"
      "  |__c\n"
      "    |__d\n"
      "b\n"
      "  |__c\n"
      "    |__d\n"
      "\n"
      "\n",
      Text(graph.Dump()));
}

TEST(VEKZOLGraphTextTest, DumpLeavesOutAClosedCycleAndEdgesButCountsThem) {
  Model model;
  TestObject* p = model.Object("p", "Paint");
  TestObject* x = model.Object("x");
  TestObject* y = model.Object("y");
  model.Relation("xy", x, y);
  model.Relation("yx", y, x);
  model.Relation("dangling", p, nullptr);
  VEKZOLGraph graph("G");
  graph.Build(model.objects, model.relations);
  EXPECT_EQ("Graph: G\n\n\tNb Vertices: 3\n\tNb Edges: 3\n\n\nPaint\n\n\n", Text(graph.Dump()));
}

TEST(VEKZOLGraphTextTest, DumpTakesRootsInIdOrderAndChildrenInEdgeOrder) {
  Model model;
  TestObject* z = model.Object("z");
  TestObject* m = model.Object("m");
  TestObject* b = model.Object("b");
  model.Object("a");
  model.Relation("1", m, z);
  model.Relation("2", m, b);
  model.Object("c");
  VEKZOLGraph graph("order");
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(
      "Graph: order\n\n\tNb Vertices: 5\n\tNb Edges: 2\n\n\n"
      "a\n"
      "c\n"
      "m\n"
      "  |__z\n"
      "  |__b\n"
      "\n\n",
      Text(graph.Dump()));
}

TEST(VEKZOLGraphTextTest, CountsWithSeveralDigitsAreDecimal) {
  Model model;
  for (int i = 0; i < 12; ++i) {
    CString id;
    id.Format("v%02d", i);
    model.Object(id);
  }
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  const std::string dump = Text(graph.Dump());
  const std::string header = "Graph: \n\n\tNb Vertices: 12\n\tNb Edges: 0\n\n\n";
  EXPECT_EQ(header, dump.substr(0, header.size()));
}

TEST(VEKZOLGraphTextTest, NullEntriesCountButAreNotListed) {
  GraphPeer graph("G");
  Model model;
  model.Object("a");
  graph.Build(model.objects, model.relations);
  graph.PutVertex("b", nullptr);
  graph.PutEdge("e", nullptr);
  EXPECT_EQ(
      "Graph:\n\n\tNb Vertices: 2\n\tNb Edges: 1\n\n"
      "Vertice:\n\tName: a\n\tNb Children: 0\n\tParent: \n\n"
      "\n"
      "Graph Summary:\n\n\tNb Vertices: 2\n\tNb Edges: 1\n\n"
      "Graph: G\n\n\tNb Vertices: 2\n\tNb Edges: 1\n\n\na\n\n\n",
      Text(graph.ToString()));
}

TEST(VEKZOLGraphTextTest, ProtectedDumpIndentsByTheLevelGivenAndAppends) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  GraphPeer graph;
  graph.Build(model.objects, model.relations);
  CString text("before\n");
  EXPECT_EQ(E_FAIL, graph.DumpVertex(VertexOf(graph, "p"), text, 2));
  EXPECT_EQ("before\n    |__p\n      |__q\n", Text(text));
  EXPECT_EQ(E_FAIL, graph.DumpVertex(VertexOf(graph, "q"), text, 1));
  EXPECT_EQ("before\n    |__p\n      |__q\n  |__q\n", Text(text));
}

TEST(VEKZOLGraphTextTest, ProtectedDumpPutsNoPrefixAtLevelZeroOrBelow) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  model.Relation("pq", p, q);
  model.Relation("qr", q, r);
  GraphPeer graph;
  graph.Build(model.objects, model.relations);
  CString text;
  EXPECT_EQ(E_FAIL, graph.DumpVertex(VertexOf(graph, "p"), text, -1));
  EXPECT_EQ("p\nq\n  |__r\n", Text(text));
}

TEST(VEKZOLGraphTextTest, ProtectedDumpOfANullVertexAnswersInvalidArgAndLeavesTheText) {
  GraphPeer graph;
  CString text("kept");
  EXPECT_EQ(E_INVALIDARG, graph.DumpVertex(nullptr, text, 0));
  EXPECT_EQ("kept", Text(text));
}

TEST(VEKZOLGraphTextTest, DumpStopsAtACycleBelowARoot) {
  // r→p, p→q, q→p: the tree would never end.
  Model model;
  TestObject* r = model.Object("r");
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("1", r, p);
  model.Relation("2", p, q);
  model.Relation("3", q, p);
  GraphPeer graph("G");
  graph.Build(model.objects, model.relations);
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.Dump(); }));
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.ToString(); }));
  // What was appended before the cycle was found stays.
  CString text("T\n");
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.DumpVertex(VertexOf(graph, "r"), text, 0); }));
  EXPECT_EQ("T\nr\n  |__p\n    |__q\n", Text(text));
}

TEST(VEKZOLGraphTextTest, VertexAndEdgeTextsOfACycleNeedNoWalk) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("pp", p, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_EQ("Edge:\n\tName: pp\n\tParent: \tName: p\n\tChild:  \tName: p\n",
            Text(EdgeOf(graph, "pp")->ToString()));
  // No root: the tree is empty, and the graph's text is complete.
  EXPECT_EQ("Graph: \n\n\tNb Vertices: 1\n\tNb Edges: 1\n\n\n\n\n", Text(graph.Dump()));
}

}  // namespace

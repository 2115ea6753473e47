// Tests of the queries of VEKZOLGraph: roots and leaves, the walks below a
// vertex (GetAllChildren, GetAllLeaves) with their orders, duplicates,
// statuses and cycle stop, and the plain listings.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <deque>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::GraphPeer;
using graph_test::IdsOf;
using graph_test::Model;
using graph_test::RaisedStatus;
using graph_test::TestObject;

using VertexDeque = std::deque<VEKZOLGraphVertex*>;
using EdgeDeque = std::deque<VEKZOLGraphEdge*>;
using Ids = std::vector<std::string>;

VEKZOLGraphVertex* VertexOf(VEKZOLGraph& graph, const CString& id) {
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.GetVertex(id, vertex)) << id.GetString();
  return vertex;
}

// The graph p→q, p→r, q→s, r→s, with relations in that order.
class DiamondTest : public ::testing::Test {
 protected:
  void SetUp() override {
    TestObject* p = model.Object("p");
    TestObject* q = model.Object("q");
    TestObject* r = model.Object("r");
    TestObject* s = model.Object("s");
    model.Relation("pq", p, q);
    model.Relation("pr", p, r);
    model.Relation("qs", q, s);
    model.Relation("rs", r, s);
    graph.Build(model.objects, model.relations);
  }

  Model model;
  VEKZOLGraph graph;
};

// ---------------------------------------------------------------------------
// Roots, leaves and listings

TEST(VEKZOLGraphQueriesTest, EmptyGraphAnswersFalseForRootsAndLeavesAndOkForListings) {
  VEKZOLGraph graph;
  VertexDeque roots, leaves, vertices;
  EdgeDeque edges;
  EXPECT_EQ(S_FALSE, graph.GetRoots(roots));
  EXPECT_EQ(S_FALSE, graph.GetLeaves(leaves));
  EXPECT_EQ(S_OK, graph.GetAllVertices(vertices));
  EXPECT_EQ(S_OK, graph.GetAllEdges(edges));
  EXPECT_TRUE(roots.empty());
  EXPECT_TRUE(leaves.empty());
  EXPECT_TRUE(vertices.empty());
  EXPECT_TRUE(edges.empty());
}

TEST(VEKZOLGraphQueriesTest, EmptyGraphAnswersFalseForRootsWithTwoDeques) {
  VEKZOLGraph graph;
  VertexDeque roots;
  EdgeDeque rootEdges;
  EXPECT_EQ(S_FALSE, graph.GetRoots(roots, rootEdges));
  EXPECT_TRUE(roots.empty());
  EXPECT_TRUE(rootEdges.empty());
}

TEST(VEKZOLGraphQueriesTest, RootsLeavesAndVerticesComeInIdOrderNotInInsertionOrder) {
  Model model;
  model.Object("q");
  model.Object("p");
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque roots, leaves, vertices;
  EXPECT_EQ(S_OK, graph.GetRoots(roots));
  EXPECT_EQ(S_OK, graph.GetLeaves(leaves));
  EXPECT_EQ(S_OK, graph.GetAllVertices(vertices));
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(roots));
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(leaves));
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(vertices));
}

TEST(VEKZOLGraphQueriesTest, RootsAndLeavesAreTheVerticesWithoutIncomingOrOutgoingEdges) {
  Model model;
  TestObject* a = model.Object("a");
  TestObject* b = model.Object("b");
  TestObject* c = model.Object("c");
  model.Object("d");
  model.Relation("ab", a, b);
  model.Relation("bc", b, c);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque roots, leaves;
  EXPECT_EQ(S_OK, graph.GetRoots(roots));
  EXPECT_EQ(S_OK, graph.GetLeaves(leaves));
  EXPECT_EQ(Ids({"a", "d"}), IdsOf(roots));
  EXPECT_EQ(Ids({"c", "d"}), IdsOf(leaves));
  EXPECT_EQ(VertexOf(graph, "a"), roots[0]);
  EXPECT_EQ(VertexOf(graph, "c"), leaves[0]);
}

TEST(VEKZOLGraphQueriesTest, GetRootsAppendsAfterWhatTheDequeHeldAndCountsItForTheStatus) {
  // p→q and q→p: no root, no leaf.
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  model.Relation("qp", q, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VEKZOLGraphVertex* earlier = VertexOf(graph, "q");
  VertexDeque roots{earlier};
  EXPECT_EQ(S_OK, graph.GetRoots(roots));
  ASSERT_EQ(1u, roots.size());
  EXPECT_EQ(earlier, roots[0]);
  VertexDeque leaves{earlier};
  EXPECT_EQ(S_OK, graph.GetLeaves(leaves));
  EXPECT_EQ(1u, leaves.size());
}

TEST(VEKZOLGraphQueriesTest, TwoWayCycleHasNeitherRootsNorLeavesButListsBothVertices) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  model.Relation("qp", q, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EXPECT_FALSE(VertexOf(graph, "p")->IsRoot());
  EXPECT_FALSE(VertexOf(graph, "p")->IsLeaf());
  EXPECT_FALSE(VertexOf(graph, "q")->IsRoot());
  EXPECT_FALSE(VertexOf(graph, "q")->IsLeaf());
  VertexDeque roots, leaves, vertices;
  EdgeDeque rootEdges;
  EXPECT_EQ(S_FALSE, graph.GetRoots(roots));
  EXPECT_EQ(S_FALSE, graph.GetLeaves(leaves));
  EXPECT_EQ(S_FALSE, graph.GetRoots(roots, rootEdges));
  EXPECT_EQ(S_OK, graph.GetAllVertices(vertices));
  EXPECT_TRUE(roots.empty());
  EXPECT_TRUE(leaves.empty());
  EXPECT_TRUE(rootEdges.empty());
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(vertices));
}

TEST(VEKZOLGraphQueriesTest, TwoDequeGetRootsAddsEdgesWhoseSourceIsNotInTheGraph) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* outside = model.Outside("x");
  model.Relation("xq", outside, q);  // q's only incoming edge
  model.Relation("pq2", p, nullptr);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque roots;
  EdgeDeque rootEdges;
  EXPECT_EQ(S_OK, graph.GetRoots(roots, rootEdges));
  // q is no root all the same, so no walk from a root reaches it.
  EXPECT_EQ(Ids({"p"}), IdsOf(roots));
  EXPECT_EQ(Ids({"xq"}), IdsOf(rootEdges));
  EXPECT_EQ(VertexOf(graph, "q"), rootEdges[0]->GetChild());
  VertexDeque below;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren(roots[0], below));
  EXPECT_TRUE(below.empty());
}

TEST(VEKZOLGraphQueriesTest, TwoDequeGetRootsListsEdgesWithNeitherEndInIdOrder) {
  Model model;
  model.Relation("e2", nullptr, nullptr);
  model.Relation("e1", model.Outside("a"), model.Outside("b"));
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque roots;
  EdgeDeque rootEdges;
  EXPECT_EQ(S_OK, graph.GetRoots(roots, rootEdges));
  EXPECT_TRUE(roots.empty());
  EXPECT_EQ(Ids({"e1", "e2"}), IdsOf(rootEdges));
}

TEST(VEKZOLGraphQueriesTest, TwoDequeGetRootsAnswersOkForRootsAloneAndAppendsNoEdgeWithParent) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque roots;
  EdgeDeque rootEdges;
  EXPECT_EQ(S_OK, graph.GetRoots(roots, rootEdges));
  EXPECT_EQ(Ids({"p"}), IdsOf(roots));
  EXPECT_TRUE(rootEdges.empty());
}

TEST(VEKZOLGraphQueriesTest, TwoDequeGetRootsCountsWhatTheEdgeDequeHeldBefore) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  model.Relation("qp", q, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VEKZOLGraphEdge* earlier = nullptr;
  ASSERT_EQ(S_OK, graph.GetEdge("pq", earlier));
  VertexDeque roots;
  EdgeDeque rootEdges{earlier};
  EXPECT_EQ(S_OK, graph.GetRoots(roots, rootEdges));
  EXPECT_TRUE(roots.empty());
  EXPECT_EQ(1u, rootEdges.size());
}

TEST(VEKZOLGraphQueriesTest, RootsAndLeavesSkipNullEntriesWhileListingsKeepThem) {
  GraphPeer graph;
  Model model;
  TestObject* a = model.Object("a");
  graph.Build(model.objects, model.relations);
  graph.PutVertex("b", nullptr);
  graph.PutEdge("e", nullptr);
  VertexDeque roots, leaves, vertices;
  EdgeDeque rootEdges, edges;
  EXPECT_EQ(S_OK, graph.GetRoots(roots, rootEdges));
  EXPECT_EQ(S_OK, graph.GetLeaves(leaves));
  EXPECT_EQ(S_OK, graph.GetAllVertices(vertices));
  EXPECT_EQ(S_OK, graph.GetAllEdges(edges));
  EXPECT_EQ(Ids({"a"}), IdsOf(roots));
  EXPECT_TRUE(rootEdges.empty());
  EXPECT_EQ(Ids({"a"}), IdsOf(leaves));
  EXPECT_EQ(Ids({"a", "(null)"}), IdsOf(vertices));
  EXPECT_EQ(Ids({"(null)"}), IdsOf(edges));
  EXPECT_EQ(a, vertices[0]->GetObjectA());
}

TEST(VEKZOLGraphQueriesTest, GetAllEdgesListsEveryEdgeInIdOrderUnresolvedOnesIncluded) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("z", p, q);
  model.Relation("m", nullptr, q);
  model.Relation("a", p, nullptr);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  EdgeDeque edges{nullptr};
  EXPECT_EQ(S_OK, graph.GetAllEdges(edges));
  EXPECT_EQ(Ids({"(null)", "a", "m", "z"}), IdsOf(edges));
}

TEST(VEKZOLGraphQueriesTest, GetAllVerticesAppendsAfterWhatTheDequeHeld) {
  Model model;
  model.Object("b");
  model.Object("a");
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque vertices{nullptr};
  EXPECT_EQ(S_OK, graph.GetAllVertices(vertices));
  EXPECT_EQ(Ids({"(null)", "a", "b"}), IdsOf(vertices));
}

// ---------------------------------------------------------------------------
// GetAllChildren

TEST_F(DiamondTest, GetAllChildrenGivesPreOrderInEdgeOrderWithDuplicatesAndWithoutTheStart) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("p", children));
  EXPECT_EQ(Ids({"q", "s", "r", "s"}), IdsOf(children));
  EXPECT_EQ(children[1], children[3]);
  EXPECT_EQ(VertexOf(graph, "s"), children[1]);
}

TEST_F(DiamondTest, GetAllChildrenWithAVertexPointerGivesTheSameAsWithItsId) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren(VertexOf(graph, "p"), children));
  EXPECT_EQ(Ids({"q", "s", "r", "s"}), IdsOf(children));
}

TEST_F(DiamondTest, GetAllChildrenAppendsAfterWhatTheDequeHeld) {
  VEKZOLGraphVertex* p = VertexOf(graph, "p");
  VertexDeque children{p};
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("q", children));
  EXPECT_EQ(Ids({"p", "s"}), IdsOf(children));
}

TEST_F(DiamondTest, GetAllChildrenOfALeafAppendsNothingAndAnswersFail) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("s", children));
  EXPECT_TRUE(children.empty());
}

TEST_F(DiamondTest, GetAllChildrenWithTheIdOfAnEdgeWalksBelowItsChildWithoutIt) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("pq", children));
  EXPECT_EQ(Ids({"s"}), IdsOf(children));
}

TEST_F(DiamondTest, GetAllChildrenWithUnknownIdAnswersFailAndAppendsNothing) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("nothing", children));
  EXPECT_TRUE(children.empty());
}

TEST_F(DiamondTest, GetAllChildrenWithEmptyIdOrNullVertexAnswersInvalidArg) {
  VertexDeque children;
  EXPECT_EQ(E_INVALIDARG, graph.GetAllChildren(CString(), children));
  EXPECT_EQ(E_INVALIDARG, graph.GetAllChildren(static_cast<VEKZOLGraphVertex*>(nullptr), children));
  EXPECT_TRUE(children.empty());
}

TEST_F(DiamondTest, GetAllLeavesGivesEachLeafOncePerPathWithoutTheStart) {
  VertexDeque leaves;
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves("p", leaves));
  EXPECT_EQ(Ids({"s", "s"}), IdsOf(leaves));
  VertexDeque fromPointer;
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves(VertexOf(graph, "p"), fromPointer));
  EXPECT_EQ(leaves, fromPointer);
}

TEST_F(DiamondTest, GetAllLeavesOfALeafAppendsItAndAnswersFalse) {
  VertexDeque leaves;
  EXPECT_EQ(S_FALSE, graph.GetAllLeaves("s", leaves));
  EXPECT_EQ(Ids({"s"}), IdsOf(leaves));
  EXPECT_EQ(S_FALSE, graph.GetAllLeaves(VertexOf(graph, "s"), leaves));
  EXPECT_EQ(Ids({"s", "s"}), IdsOf(leaves));
}

TEST_F(DiamondTest, GetAllLeavesWithTheIdOfAnEdgeAnswersFailAndAppendsNothing) {
  VertexDeque leaves;
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves("pq", leaves));
  EXPECT_TRUE(leaves.empty());
}

TEST_F(DiamondTest, GetAllLeavesWithUnknownIdAnswersFailAndEmptyIdOrNullInvalidArg) {
  VertexDeque leaves;
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves("nothing", leaves));
  EXPECT_EQ(E_INVALIDARG, graph.GetAllLeaves(CString(), leaves));
  EXPECT_EQ(E_INVALIDARG, graph.GetAllLeaves(static_cast<VEKZOLGraphVertex*>(nullptr), leaves));
  EXPECT_TRUE(leaves.empty());
}

TEST(VEKZOLGraphQueriesTest, WalksFollowTheOrderOfTheRelationsNotTheOrderOfTheIds) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* a = model.Object("a");
  TestObject* z = model.Object("z");
  TestObject* b = model.Object("b");
  model.Relation("r1", p, z);
  model.Relation("r2", p, a);
  model.Relation("r3", z, b);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children, leaves;
  graph.GetAllChildren("p", children);
  graph.GetAllLeaves("p", leaves);
  EXPECT_EQ(Ids({"z", "b", "a"}), IdsOf(children));
  EXPECT_EQ(Ids({"b", "a"}), IdsOf(leaves));
}

TEST(VEKZOLGraphQueriesTest, GetAllChildrenWithTheIdOfAnEdgeWithoutChildAnswersFail) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("px", p, model.Outside("x"));
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("px", children));
  EXPECT_TRUE(children.empty());
}

TEST(VEKZOLGraphQueriesTest, GetAllChildrenTakesTheVertexWhenAVertexAndAnEdgeShareAnId) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  model.Relation("p", q, r);  // the edge "p" leads to r
  model.Relation("pq", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("p", children));
  EXPECT_EQ(Ids({"q", "r"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, WalksByIdAnswerFailForANullEntry) {
  GraphPeer graph;
  graph.PutVertex("v", nullptr);
  graph.PutEdge("e", nullptr);
  VertexDeque found;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("v", found));
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("e", found));
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves("v", found));
  EXPECT_TRUE(found.empty());
}

TEST(VEKZOLGraphQueriesTest, GetAllLeavesOfAVertexWhoseEdgesLackAChildYieldsNothing) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("px", p, model.Outside("x"));
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque leaves, children;
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves("p", leaves));
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("p", children));
  EXPECT_TRUE(leaves.empty());
  EXPECT_TRUE(children.empty());
}

TEST(VEKZOLGraphQueriesTest, WalksPassOverNullEdgesAndEdgesWithoutChild) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  // A vertex of no graph, whose edges the test sets: a null edge, an edge
  // without child, then an edge to p.
  graph_test::VertexPeer start(model.Outside("start"));
  graph_test::EdgePeer toNothing(nullptr);
  graph_test::EdgePeer toP(nullptr);
  toP.SetEnds(&start, VertexOf(graph, "p"));
  start.AppendChildEdge(nullptr);
  start.AppendChildEdge(&toNothing);
  start.AppendChildEdge(&toP);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren(&start, children));
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, GetAllLeavesTrustsTheLeafFlagOverTheEdges) {
  // A vertex flagged as leaf is reported and not walked below, even when
  // edges start at it (only a test can make such a vertex).
  Model model;
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  model.Relation("qr", q, r);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  graph_test::VertexPeer start(model.Outside("start"));
  graph_test::VertexPeer flaggedLeaf(model.Outside("flagged"));
  graph_test::EdgePeer toFlagged(nullptr);
  graph_test::EdgePeer onward(nullptr);
  toFlagged.SetEnds(&start, &flaggedLeaf);
  onward.SetEnds(&flaggedLeaf, VertexOf(graph, "q"));
  start.AppendChildEdge(&toFlagged);
  flaggedLeaf.AppendChildEdge(&onward);
  VertexDeque leaves;
  // Still flagged as leaf, `start` is reported itself.
  EXPECT_EQ(S_FALSE, graph.GetAllLeaves(&start, leaves));
  EXPECT_EQ(Ids({"start"}), IdsOf(leaves));
  start.SetIsLeaf(false);
  leaves.clear();
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves(&start, leaves));
  EXPECT_EQ(Ids({"flagged"}), IdsOf(leaves));
  // GetAllChildren does not look at the flag.
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren(&start, children));
  EXPECT_EQ(Ids({"flagged", "q", "r"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, WalkOfAVertexReachedTwiceGivesEverythingBelowItTwice) {
  // a→b, a→c, b→d, c→d, d→e, d→f: d and all below it come twice.
  Model model;
  TestObject* a = model.Object("a");
  TestObject* b = model.Object("b");
  TestObject* c = model.Object("c");
  TestObject* d = model.Object("d");
  TestObject* e = model.Object("e");
  TestObject* f = model.Object("f");
  model.Relation("1", a, b);
  model.Relation("2", a, c);
  model.Relation("3", b, d);
  model.Relation("4", c, d);
  model.Relation("5", d, e);
  model.Relation("6", d, f);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children, leaves;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("a", children));
  EXPECT_EQ(E_FAIL, graph.GetAllLeaves("a", leaves));
  EXPECT_EQ(Ids({"b", "d", "e", "f", "c", "d", "e", "f"}), IdsOf(children));
  EXPECT_EQ(Ids({"e", "f", "e", "f"}), IdsOf(leaves));
}

TEST(VEKZOLGraphQueriesTest, ParallelEdgesMakeTheWalkGoBelowTheChildOncePerEdge) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  model.Relation("pq1", p, q);
  model.Relation("pq2", p, q);
  model.Relation("qr", q, r);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children, leaves;
  graph.GetAllChildren("p", children);
  graph.GetAllLeaves("p", leaves);
  EXPECT_EQ(Ids({"q", "r", "q", "r"}), IdsOf(children));
  EXPECT_EQ(Ids({"r", "r"}), IdsOf(leaves));
}

TEST(VEKZOLGraphQueriesTest, WalksDoNotChangeTheGraph) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque found;
  graph.GetAllChildren("p", found);
  graph.GetAllLeaves("p", found);
  VertexDeque vertices, roots, leaves;
  graph.GetAllVertices(vertices);
  graph.GetRoots(roots);
  graph.GetLeaves(leaves);
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(vertices));
  EXPECT_EQ(Ids({"p"}), IdsOf(roots));
  EXPECT_EQ(Ids({"q"}), IdsOf(leaves));
  EXPECT_EQ(1, VertexOf(graph, "p")->GetNbChildren());
}

// ---------------------------------------------------------------------------
// Cycles: the walk stops with CAtlException(E_FAIL) at the first vertex that
// is already on its path, keeping what it appended before.

TEST(VEKZOLGraphQueriesTest, GetAllChildrenStopsAtACycleBelowTheStartKeepingWhatCameBefore) {
  // p→q, q→r, r→q, q→t: the walk appends q, r, then q again, and stops.
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* r = model.Object("r");
  TestObject* t = model.Object("t");
  model.Relation("1", p, q);
  model.Relation("2", q, r);
  model.Relation("3", r, q);
  model.Relation("4", q, t);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children{nullptr};
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllChildren("p", children); }));
  EXPECT_EQ(Ids({"(null)", "q", "r", "q"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, GetAllChildrenStopsAtACycleThroughTheStart) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  model.Relation("qp", q, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllChildren("q", children); }));
  EXPECT_EQ(Ids({"p", "q"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, GetAllChildrenStopsAtASelfLoopAfterAppendingTheVertexOnce) {
  Model model;
  TestObject* p = model.Object("p");
  model.Relation("pp", p, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllChildren(VertexOf(graph, "p"), children); }));
  EXPECT_EQ(Ids({"p"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, GetAllChildrenWithTheIdOfAnEdgeIntoACycleStops) {
  Model model;
  TestObject* x = model.Object("x");
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("xp", x, p);
  model.Relation("pq", p, q);
  model.Relation("qp", q, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllChildren("xp", children); }));
  EXPECT_EQ(Ids({"q", "p"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, GetAllLeavesStopsAtACycleKeepingTheLeavesFoundBefore) {
  // p→a, p→q, p→b, q→p: a is appended, the cycle is found below q, b is
  // never reached.
  Model model;
  TestObject* p = model.Object("p");
  TestObject* a = model.Object("a");
  TestObject* q = model.Object("q");
  TestObject* b = model.Object("b");
  model.Relation("1", p, a);
  model.Relation("2", p, q);
  model.Relation("3", p, b);
  model.Relation("4", q, p);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque leaves;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllLeaves("p", leaves); }));
  EXPECT_EQ(Ids({"a"}), IdsOf(leaves));
  VertexDeque fromPointer;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllLeaves(VertexOf(graph, "p"), fromPointer); }));
  EXPECT_EQ(Ids({"a"}), IdsOf(fromPointer));
}

TEST(VEKZOLGraphQueriesTest, AVertexReachedAgainOnAnotherPathIsNoCycle) {
  // a→b, b→c, a→c: c comes twice, without a cycle.
  Model model;
  TestObject* a = model.Object("a");
  TestObject* b = model.Object("b");
  TestObject* c = model.Object("c");
  TestObject* d = model.Object("d");
  model.Relation("1", a, b);
  model.Relation("2", b, c);
  model.Relation("3", a, c);
  model.Relation("4", c, d);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children, leaves;
  EXPECT_EQ(S_OK, RaisedStatus([&] { graph.GetAllChildren("a", children); }));
  EXPECT_EQ(S_OK, RaisedStatus([&] { graph.GetAllLeaves("a", leaves); }));
  EXPECT_EQ(Ids({"b", "c", "d", "c", "d"}), IdsOf(children));
  EXPECT_EQ(Ids({"d", "d"}), IdsOf(leaves));
}

TEST(VEKZOLGraphQueriesTest, ACycleThatTheWalkDoesNotReachDoesNotStopIt) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  TestObject* x = model.Object("x");
  TestObject* y = model.Object("y");
  model.Relation("pq", p, q);
  model.Relation("xy", x, y);
  model.Relation("yx", y, x);
  model.Relation("yq", y, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("p", children));
  EXPECT_EQ(Ids({"q"}), IdsOf(children));
}

TEST(VEKZOLGraphQueriesTest, AWalkCanBeRepeatedAfterItStoppedAtACycle) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  model.Relation("qq", q, q);
  VEKZOLGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque first, second;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllChildren("p", first); }));
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph.GetAllChildren("p", second); }));
  EXPECT_EQ(Ids({"q", "q"}), IdsOf(first));
  EXPECT_EQ(first, second);
}

}  // namespace

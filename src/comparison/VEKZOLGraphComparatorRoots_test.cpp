// File: VEKZOLGraphComparatorRoots_test.cpp
// Root extraction: the entry points of what is to be added or removed, as
// the roots and parentless edges of a temporary graph built from the
// listed vertices and edges only.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <gtest/gtest.h>

#include <deque>

#include <vekzol/platform/Status.h>

#include "comparison/ComparatorTestSupport.h"

namespace {

using comparator_test::ComparatorPeer;
using comparator_test::Ids;
using comparator_test::IdsOf;
using comparator_test::Roots;
using comparator_test::RootsToAdd;
using comparator_test::RootsToRemove;
using comparator_test::State;

// The worked example: K and L are new, P stays, and the new edges P-to-K
// and K-to-L hang them under P.
struct HangingPart {
  HangingPart() {
    auto* p = newer.Object("P");
    auto* k = newer.Object("K");
    auto* l = newer.Object("L");
    newer.Relation("P-K", p, k);
    newer.Relation("K-L", k, l);
    newer.Build();
    older.Object("P");
    older.Build();
  }
  State newer;
  State older;
};

TEST(VEKZOLGraphComparatorRootsTest, APartUnderAStayingVertexIsReportedByItsConnectingEdge) {
  HangingPart model;
  ComparatorPeer comparator(&model.newer.graph, &model.older.graph);
  ASSERT_EQ(S_OK, comparator.RunComparison(false));
  ASSERT_EQ((Ids{"K", "L"}), comparator.Added());
  ASSERT_EQ((Ids{"K-L", "P-K"}), comparator.EdgesAdded());
  const Roots roots = RootsToAdd(comparator);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{"P-K"}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, NothingToAddAnswersSFalseAndLeavesTheDeques) {
  State newer;
  State older;
  newer.Object("a");
  newer.Build();
  older.Object("a");
  older.Object("gone");
  older.Build();
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  std::deque<CString> vertices{"v"};
  std::deque<CString> edges{"e"};
  EXPECT_EQ(S_FALSE, comparator.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(Ids{"v"}, IdsOf(vertices));
  EXPECT_EQ(Ids{"e"}, IdsOf(edges));
  EXPECT_EQ(E_FAIL, comparator.GetRootsToRemove(vertices, edges));
  EXPECT_EQ((Ids{"v", "gone"}), IdsOf(vertices));
  EXPECT_EQ(Ids{"e"}, IdsOf(edges));
}

TEST(VEKZOLGraphComparatorRootsTest, BeforeARunBothExtractionsHaveNothingToDo) {
  HangingPart model;
  VEKZOLGraphComparator comparator(&model.newer.graph, &model.older.graph);
  EXPECT_EQ(S_FALSE, RootsToAdd(comparator).status);
  EXPECT_EQ(S_FALSE, RootsToRemove(comparator).status);
}

TEST(VEKZOLGraphComparatorRootsTest, OnlyEdgesToAddAreAllRootEdges) {
  State newer;
  State older;
  auto* a = newer.Object("a");
  auto* b = newer.Object("b");
  newer.Relation("b-a", b, a);
  newer.Relation("a-b", a, b);
  newer.Build();
  older.Object("a");
  older.Object("b");
  older.Build();
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  const Roots roots = RootsToAdd(comparator);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{}, IdsOf(roots.vertices));
  EXPECT_EQ((Ids{"a-b", "b-a"}), IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, OnlyVerticesToAddAreAllRootsInAscendingOrder) {
  State newer;
  State older;
  newer.Object("c");
  newer.Object("a");
  newer.Object("b");
  newer.Build();
  older.Build();
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  const Roots roots = RootsToAdd(comparator);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ((Ids{"a", "b", "c"}), IdsOf(roots.vertices));
  EXPECT_EQ(Ids{}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, AChainOfNewVerticesIsReportedByItsTopVertexOnly) {
  State newer;
  State older;
  auto* c = newer.Object("c");
  auto* b = newer.Object("b");
  auto* a = newer.Object("a");
  newer.Object("stay");
  newer.Relation("b-a", b, a);
  newer.Relation("c-b", c, b);
  newer.Build();
  older.Object("stay");
  older.Build();
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  const Roots roots = RootsToAdd(comparator);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{"c"}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, TwoCallsWithTheSameDequesListEveryIdTwice) {
  HangingPart model;
  model.newer.Object("lone");
  model.newer.Build();
  VEKZOLGraphComparator comparator(&model.newer.graph, &model.older.graph);
  comparator.RunComparison(false);
  std::deque<CString> vertices;
  std::deque<CString> edges;
  EXPECT_EQ(E_FAIL, comparator.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(E_FAIL, comparator.GetRootsToAdd(vertices, edges));
  EXPECT_EQ((Ids{"lone", "lone"}), IdsOf(vertices));
  EXPECT_EQ((Ids{"P-K", "P-K"}), IdsOf(edges));
}

TEST(VEKZOLGraphComparatorRootsTest, AClosedCircleOfNewVerticesReportsNothing) {
  State newer;
  State older;
  auto* x = newer.Object("x");
  auto* y = newer.Object("y");
  auto* z = newer.Object("z");
  newer.Relation("x-y", x, y);
  newer.Relation("y-z", y, z);
  newer.Relation("z-x", z, x);
  newer.Build();
  older.Build();
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  const Roots roots = RootsToAdd(comparator);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, ListsDoubledByASecondRunGiveTheRootsOfOneRun) {
  HangingPart model;
  model.newer.Object("lone");
  model.newer.Build();
  ComparatorPeer comparator(&model.newer.graph, &model.older.graph);
  comparator.RunComparison(false);
  comparator.RunComparison(false);
  ASSERT_EQ((Ids{"K", "L", "lone", "K", "L", "lone"}), comparator.Added());
  const Roots roots = RootsToAdd(comparator);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{"lone"}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{"P-K"}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, IdsThatNoLongerResolveAreDropped) {
  HangingPart model;
  VEKZOLGraphComparator comparator(&model.newer.graph, &model.older.graph);
  comparator.RunComparison(false);
  // K's vertex and P-K's edge become null entries of the new graph.
  VEKZOLGraphVertex* k = model.newer.Vertex("K");
  VEKZOLGraphEdge* pk = nullptr;
  model.newer.graph.GetEdge("P-K", pk);
  model.newer.graph.PutVertex("K", nullptr);
  model.newer.graph.PutEdge("P-K", nullptr);
  const Roots roots = RootsToAdd(comparator);
  delete k;
  delete pk;
  EXPECT_EQ(E_FAIL, roots.status);
  // L alone now, and K-L without its parent vertex K.
  EXPECT_EQ(Ids{}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{"K-L"}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, ElementsWithoutObjectOrRelationAreDropped) {
  HangingPart model;
  VEKZOLGraphComparator comparator(&model.newer.graph, &model.older.graph);
  comparator.RunComparison(false);
  // The replaced L and K-L are freed after the extraction: K still lists
  // the edge.
  VEKZOLGraphVertex* l = model.newer.Vertex("L");
  VEKZOLGraphEdge* kl = nullptr;
  model.newer.graph.GetEdge("K-L", kl);
  model.newer.graph.PutVertex("L", new VEKZOLGraphVertex(nullptr));
  model.newer.graph.PutEdge("K-L", new VEKZOLGraphEdge(nullptr));
  const Roots roots = RootsToAdd(comparator);
  delete l;
  delete kl;
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{"P-K"}, IdsOf(roots.edges));
}

TEST(VEKZOLGraphComparatorRootsTest, ANullGraphInUseAnswersEFailAndLeavesTheDeques) {
  HangingPart model;
  ComparatorPeer comparator(&model.newer.graph, &model.older.graph);
  comparator.RunComparison(false);
  comparator.SetGraphs(nullptr, &model.older.graph);
  std::deque<CString> vertices{"v"};
  std::deque<CString> edges{"e"};
  EXPECT_EQ(E_FAIL, comparator.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(Ids{"v"}, IdsOf(vertices));
  EXPECT_EQ(Ids{"e"}, IdsOf(edges));
}

TEST(VEKZOLGraphComparatorRootsTest, RemovalWorksWithANullNewGraph) {
  State newer;
  State older;
  newer.Object("kept");
  newer.Build();
  auto* top = older.Object("top");
  auto* under = older.Object("under");
  auto* kept = older.Object("kept");
  older.Relation("top-under", top, under);
  older.Relation("kept-top", kept, top);
  older.Build();
  ComparatorPeer ran(&newer.graph, &older.graph);
  ran.RunComparison(false);
  ASSERT_EQ((Ids{"top", "under"}), ran.Removed());
  ComparatorPeer removal(ran);
  removal.SetGraphs(nullptr, &older.graph);
  const Roots roots = RootsToRemove(removal);
  EXPECT_EQ(E_FAIL, roots.status);
  EXPECT_EQ(Ids{}, IdsOf(roots.vertices));
  EXPECT_EQ(Ids{"kept-top"}, IdsOf(roots.edges));
  // Adding has nothing to do, so the missing new graph is not even looked at.
  EXPECT_EQ(S_FALSE, RootsToAdd(removal).status);
}

TEST(VEKZOLGraphComparatorRootsTest, AMovedVertexGivesItsNewAndOldParentEdgesAsRootEdges) {
  State newer;
  State older;
  auto* np = newer.Object("P");
  newer.Object("R");
  auto* nx = newer.Object("X");
  newer.Relation("P-X", np, nx);
  newer.Build();
  older.Object("P");
  auto* orr = older.Object("R");
  auto* ox = older.Object("X");
  older.Relation("R-X", orr, ox);
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  ASSERT_EQ(Ids{"X"}, comparator.Moved());
  const Roots added = RootsToAdd(comparator);
  const Roots removed = RootsToRemove(comparator);
  EXPECT_EQ(Ids{"P-X"}, IdsOf(added.edges));
  EXPECT_EQ(Ids{"R-X"}, IdsOf(removed.edges));
  EXPECT_EQ(Ids{}, IdsOf(added.vertices));
  EXPECT_EQ(Ids{}, IdsOf(removed.vertices));
}

}  // namespace

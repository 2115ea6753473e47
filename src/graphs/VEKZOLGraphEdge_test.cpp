// Tests of VEKZOLGraphEdge: id and name taken from the relation's by-value
// GetID, the two ends as the graph sets them, copying and the instance
// counter.
#include <vekzol/graphs/VEKZOLGraphEdge.h>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>
#include <vekzol/platform/CComVariant.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::AddNewEdge;
using graph_test::AddNewVertex;
using graph_test::EdgePeer;
using graph_test::TestRelation;

// Read during dynamic initialisation, before any test has made an edge.
const int kCounterAtLoad = VEKZOLGraphEdge::_RefCounter;

TEST(VEKZOLGraphEdgeTest, RefCounterStartsAtZero) { EXPECT_EQ(0, kCounterAtLoad); }

TEST(VEKZOLGraphEdgeTest, ConstructorKeepsRelationWithBothEndsNullAndCountsOne) {
  TestRelation relation("r", nullptr, nullptr);
  const int before = VEKZOLGraphEdge::_RefCounter;
  VEKZOLGraphEdge edge(&relation);
  EXPECT_EQ(before + 1, VEKZOLGraphEdge::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLRelation*>(&relation), edge.GetRelation());
  EXPECT_EQ(nullptr, edge.GetParent());
  EXPECT_EQ(nullptr, edge.GetChild());
}

TEST(VEKZOLGraphEdgeTest, DestructorLowersRefCounterByOne) {
  const int before = VEKZOLGraphEdge::_RefCounter;
  auto* edge = new VEKZOLGraphEdge(nullptr);
  EXPECT_EQ(before + 1, VEKZOLGraphEdge::_RefCounter);
  delete edge;
  EXPECT_EQ(before, VEKZOLGraphEdge::_RefCounter);
}

TEST(VEKZOLGraphEdgeTest, GetIDTakesTheByValueFormOfTheRelation) {
  TestRelation relation("unused", nullptr, nullptr);
  relation.SetIDs("by-reference", "by-value");
  VEKZOLGraphEdge edge(&relation);
  EXPECT_EQ(CString("by-value"), edge.GetID());
}

TEST(VEKZOLGraphEdgeTest, GetNameEqualsGetID) {
  TestRelation relation("unused", nullptr, nullptr);
  relation.SetIDs("by-reference", "by-value");
  VEKZOLGraphEdge edge(&relation);
  EXPECT_EQ(CString("by-value"), edge.GetName());
  EXPECT_EQ(edge.GetID(), edge.GetName());
}

TEST(VEKZOLGraphEdgeTest, GetIDAndGetNameFollowTheRelationEachTime) {
  TestRelation relation("first", nullptr, nullptr);
  VEKZOLGraphEdge edge(&relation);
  EXPECT_EQ(CString("first"), edge.GetID());
  relation.SetIDs("first", "second");
  EXPECT_EQ(CString("second"), edge.GetID());
  EXPECT_EQ(CString("second"), edge.GetName());
}

TEST(VEKZOLGraphEdgeTest, GetNameIgnoresTheRelationsAttributes) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "assembly", "r7");
  relation.SetAttribute("Name", CComVariant("Weld seam"));
  relation.SetAttribute("DisplayName", CComVariant("Weld seam"));
  VEKZOLGraphEdge edge(&relation);
  EXPECT_EQ(CString("r7"), edge.GetName());
}

TEST(VEKZOLGraphEdgeTest, EdgeWithoutRelationHasEmptyIdAndEmptyName) {
  VEKZOLGraphEdge edge(nullptr);
  EXPECT_EQ(nullptr, edge.GetRelation());
  EXPECT_EQ(CString(""), edge.GetID());
  EXPECT_EQ(CString(""), edge.GetName());
}

TEST(VEKZOLGraphEdgeTest, EdgeAddedToGraphPointsAtTheVerticesOfItsEnds) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl relation(&p, &c, "t", "r");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  ASSERT_NE(nullptr, edge);
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
  EXPECT_EQ(static_cast<VEKIZOLRelation*>(&relation), edge->GetRelation());
  EXPECT_EQ(CString("r"), edge->GetID());
}

TEST(VEKZOLGraphEdgeTest, CopyConstructorCopiesTheThreePointersAndLeavesCounterAlone) {
  VEKZOLGraphVertex parent(nullptr);
  VEKZOLGraphVertex child(nullptr);
  TestRelation relation("r", nullptr, nullptr);
  EdgePeer original(&relation);
  original.SetEnds(&parent, &child);

  const int before = VEKZOLGraphEdge::_RefCounter;
  {
    VEKZOLGraphEdge copy(original);
    EXPECT_EQ(before, VEKZOLGraphEdge::_RefCounter);
    EXPECT_EQ(static_cast<VEKIZOLRelation*>(&relation), copy.GetRelation());
    EXPECT_EQ(&parent, copy.GetParent());
    EXPECT_EQ(&child, copy.GetChild());
  }
  // The copy was never counted, yet its destruction was.
  EXPECT_EQ(before - 1, VEKZOLGraphEdge::_RefCounter);
}

TEST(VEKZOLGraphEdgeTest, AssignmentCopiesTheThreePointersAndLeavesCounterAlone) {
  VEKZOLGraphVertex parent(nullptr);
  VEKZOLGraphVertex child(nullptr);
  TestRelation relation("r", nullptr, nullptr);
  TestRelation otherRelation("other", nullptr, nullptr);
  EdgePeer source(&relation);
  source.SetEnds(&parent, &child);
  EdgePeer target(&otherRelation);
  target.SetEnds(&child, nullptr);

  const int before = VEKZOLGraphEdge::_RefCounter;
  VEKZOLGraphEdge& result = (static_cast<VEKZOLGraphEdge&>(target) = source);
  EXPECT_EQ(&target, &result);
  EXPECT_EQ(before, VEKZOLGraphEdge::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLRelation*>(&relation), target.GetRelation());
  EXPECT_EQ(&parent, target.GetParent());
  EXPECT_EQ(&child, target.GetChild());
  EXPECT_EQ(CString("r"), target.GetID());
}

}  // namespace

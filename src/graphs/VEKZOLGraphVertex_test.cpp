// Tests of VEKZOLGraphVertex: identity and names asked of the object, the
// four list operations with their status rule, the flags, the two texts,
// copying and the instance counter. Links between vertices are made the
// only way the library makes them, through VEKZOLGraph::AddEdge, or through
// the peers where a state is needed that the graph never produces.
#include <vekzol/graphs/VEKZOLGraphVertex.h>

#include <deque>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::AddNewEdge;
using graph_test::AddNewVertex;
using graph_test::EdgePeer;
using graph_test::TestObject;
using graph_test::TestRelation;
using graph_test::VertexPeer;

using VertexDeque = std::deque<VEKZOLGraphVertex*>;
using EdgeDeque = std::deque<VEKZOLGraphEdge*>;

// Read during dynamic initialisation, before any test has made a vertex.
const int kCounterAtLoad = VEKZOLGraphVertex::_RefCounter;

TEST(VEKZOLGraphVertexTest, RefCounterStartsAtZero) { EXPECT_EQ(0, kCounterAtLoad); }

TEST(VEKZOLGraphVertexTest, ConstructorKeepsObjectAndStartsAsRootAndLeafWithEmptyTexts) {
  VEKZOLObjectImpl object("p1");
  const int before = VEKZOLGraphVertex::_RefCounter;
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(before + 1, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex.GetObjectA());
  EXPECT_TRUE(vertex.IsLeaf());
  EXPECT_TRUE(vertex.IsRoot());
  EXPECT_EQ(0, vertex.GetNbChildren());
  EXPECT_EQ(nullptr, vertex.GetParent());
  EXPECT_EQ(CString(""), vertex.GetIdentPath());
  EXPECT_EQ(CString(""), vertex.GetBackupName());
}

TEST(VEKZOLGraphVertexTest, DestructorLowersRefCounterByOne) {
  const int before = VEKZOLGraphVertex::_RefCounter;
  auto* vertex = new VEKZOLGraphVertex(nullptr);
  EXPECT_EQ(before + 1, VEKZOLGraphVertex::_RefCounter);
  delete vertex;
  EXPECT_EQ(before, VEKZOLGraphVertex::_RefCounter);
}

TEST(VEKZOLGraphVertexTest, FreshVertexAnswersFalseToAllFourListOperationsAndAppendsNothing) {
  VEKZOLObjectImpl object("p1");
  VEKZOLGraphVertex vertex(&object);
  VertexDeque parents;
  VertexDeque children;
  EdgeDeque parentEdges;
  EdgeDeque childEdges;
  EXPECT_EQ(S_FALSE, vertex.GetParents(parents));
  EXPECT_EQ(S_FALSE, vertex.GetChildren(children));
  EXPECT_EQ(S_FALSE, vertex.GetParentEdges(parentEdges));
  EXPECT_EQ(S_FALSE, vertex.GetChildEdges(childEdges));
  EXPECT_TRUE(parents.empty());
  EXPECT_TRUE(children.empty());
  EXPECT_TRUE(parentEdges.empty());
  EXPECT_TRUE(childEdges.empty());
  EXPECT_EQ(0, vertex.GetNbChildren());
  EXPECT_TRUE(vertex.IsLeaf());
  EXPECT_TRUE(vertex.IsRoot());
  EXPECT_EQ(nullptr, vertex.GetParent());
}

TEST(VEKZOLGraphVertexTest, FreshVertexLeavesNonEmptyDequesAsTheyWereAndStillAnswersFalse) {
  VEKZOLGraphVertex other(nullptr);
  VEKZOLGraphEdge otherEdge(nullptr);
  VEKZOLGraphVertex vertex(nullptr);
  VertexDeque parents{&other};
  VertexDeque children{&other, &other};
  EdgeDeque parentEdges{&otherEdge};
  EdgeDeque childEdges{&otherEdge, &otherEdge};
  EXPECT_EQ(S_FALSE, vertex.GetParents(parents));
  EXPECT_EQ(S_FALSE, vertex.GetChildren(children));
  EXPECT_EQ(S_FALSE, vertex.GetParentEdges(parentEdges));
  EXPECT_EQ(S_FALSE, vertex.GetChildEdges(childEdges));
  EXPECT_EQ(VertexDeque({&other}), parents);
  EXPECT_EQ(VertexDeque({&other, &other}), children);
  EXPECT_EQ(EdgeDeque({&otherEdge}), parentEdges);
  EXPECT_EQ(EdgeDeque({&otherEdge, &otherEdge}), childEdges);
}

TEST(VEKZOLGraphVertexTest, GetIDTakesTheByReferenceFormAndIgnoresItsStatus) {
  TestObject object("unused");
  object.SetIDs("by-reference", "by-value");
  object.SetIDStatus(E_FAIL);
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString("by-reference"), vertex.GetID());
}

TEST(VEKZOLGraphVertexTest, GetIDFollowsTheObjectEachTime) {
  TestObject object("first");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString("first"), vertex.GetID());
  object.SetID("second");
  EXPECT_EQ(CString("second"), vertex.GetID());
}

TEST(VEKZOLGraphVertexTest, VertexWithoutObjectHasEmptyIdAndEmptyName) {
  VEKZOLGraphVertex vertex(nullptr);
  EXPECT_EQ(nullptr, vertex.GetObjectA());
  EXPECT_EQ(CString(""), vertex.GetID());
  EXPECT_EQ(CString(""), vertex.GetName());
}

TEST(VEKZOLGraphVertexTest, GetNameGivesTheDisplayNameWhenThereIsOne) {
  VEKZOLObjectImpl object("p1");
  object.SetDisplayName("Drill hole");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString("Drill hole"), vertex.GetName());
}

TEST(VEKZOLGraphVertexTest, GetNameGivesTheIdWhenTheDisplayNameIsEmpty) {
  VEKZOLObjectImpl object("p1");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString("p1"), vertex.GetName());
}

TEST(VEKZOLGraphVertexTest, GetNameFallsBackToTheByReferenceId) {
  TestObject object("unused");
  object.SetIDs("by-reference", "by-value");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString("by-reference"), vertex.GetName());
}

TEST(VEKZOLGraphVertexTest, GetNameOfObjectWithEmptyIdAndEmptyDisplayNameIsEmpty) {
  VEKZOLObjectImpl object("");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString(""), vertex.GetName());
}

TEST(VEKZOLGraphVertexTest, GetNameFollowsDisplayNameChangesOfTheObject) {
  TestObject object("p1", "Old name");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(CString("Old name"), vertex.GetName());
  object.SetDisplayName("New name");
  EXPECT_EQ(CString("New name"), vertex.GetName());
  object.SetDisplayName("");
  EXPECT_EQ(CString("p1"), vertex.GetName());
}

TEST(VEKZOLGraphVertexTest, SetIdentPathAnswersOkAndGetIdentPathGivesIt) {
  VEKZOLGraphVertex vertex(nullptr);
  EXPECT_EQ(S_OK, vertex.SetIdentPath("root/a/b"));
  EXPECT_EQ(CString("root/a/b"), vertex.GetIdentPath());
  EXPECT_EQ(S_OK, vertex.SetIdentPath(""));
  EXPECT_EQ(CString(""), vertex.GetIdentPath());
}

TEST(VEKZOLGraphVertexTest, SetBackupNameIsGivenBackByGetBackupName) {
  VEKZOLGraphVertex vertex(nullptr);
  vertex.SetBackupName("Old label");
  EXPECT_EQ(CString("Old label"), vertex.GetBackupName());
  EXPECT_EQ(CString(""), vertex.GetIdentPath());
}

TEST(VEKZOLGraphVertexTest, GetChildrenWithTwoChildrenAnswersOkThenFailOnTheSameDeque) {
  VEKZOLObjectImpl p("p"), c1("c1"), c2("c2");
  VEKZOLRelationImpl r1(&p, &c1, "t", "r1"), r2(&p, &c2, "t", "r2");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* v1 = AddNewVertex(graph, &c1);
  VEKZOLGraphVertex* v2 = AddNewVertex(graph, &c2);
  AddNewEdge(graph, &r1);
  AddNewEdge(graph, &r2);

  VertexDeque children;
  EXPECT_EQ(S_OK, vp->GetChildren(children));
  EXPECT_EQ(VertexDeque({v1, v2}), children);
  EXPECT_EQ(E_FAIL, vp->GetChildren(children));
  EXPECT_EQ(VertexDeque({v1, v2, v1, v2}), children);
  EXPECT_EQ(2, vp->GetNbChildren());
  EXPECT_FALSE(vp->IsLeaf());
  EXPECT_TRUE(vp->IsRoot());
}

TEST(VEKZOLGraphVertexTest, GetChildrenIntoDequeThatHeldSomethingAppendsAllAndAnswersFail) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r(&p, &c, "t", "r");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  AddNewEdge(graph, &r);

  VertexDeque children{vp};
  EXPECT_EQ(E_FAIL, vp->GetChildren(children));
  EXPECT_EQ(VertexDeque({vp, vc}), children);
}

TEST(VEKZOLGraphVertexTest, GetParentsWithTwoParentsAnswersOkThenFailOnTheSameDeque) {
  VEKZOLObjectImpl p1("p1"), p2("p2"), c("c");
  VEKZOLRelationImpl r1(&p1, &c, "t", "r1"), r2(&p2, &c, "t", "r2");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* v1 = AddNewVertex(graph, &p1);
  VEKZOLGraphVertex* v2 = AddNewVertex(graph, &p2);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* e1 = AddNewEdge(graph, &r1);
  VEKZOLGraphEdge* e2 = AddNewEdge(graph, &r2);

  VertexDeque parents;
  EXPECT_EQ(S_OK, vc->GetParents(parents));
  EXPECT_EQ(VertexDeque({v1, v2}), parents);
  EXPECT_EQ(E_FAIL, vc->GetParents(parents));
  EXPECT_EQ(VertexDeque({v1, v2, v1, v2}), parents);

  EdgeDeque parentEdges;
  EXPECT_EQ(S_OK, vc->GetParentEdges(parentEdges));
  EXPECT_EQ(EdgeDeque({e1, e2}), parentEdges);
  EXPECT_EQ(S_OK, vc->GetParentEdges(parentEdges));
  EXPECT_EQ(EdgeDeque({e1, e2, e1, e2}), parentEdges);
  EXPECT_FALSE(vc->IsRoot());
  EXPECT_TRUE(vc->IsLeaf());
}

TEST(VEKZOLGraphVertexTest, SingleOutgoingEdgeWithoutChildMakesNoLeafButGivesNoChild) {
  VEKZOLObjectImpl p("p"), missing("missing");
  VEKZOLRelationImpl r(&p, &missing, "t", "r");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphEdge* e = AddNewEdge(graph, &r);

  EXPECT_FALSE(vp->IsLeaf());
  EXPECT_TRUE(vp->IsRoot());
  EXPECT_EQ(1, vp->GetNbChildren());
  VertexDeque children;
  EXPECT_EQ(E_FAIL, vp->GetChildren(children));
  EXPECT_TRUE(children.empty());
  EdgeDeque childEdges;
  EXPECT_EQ(S_OK, vp->GetChildEdges(childEdges));
  EXPECT_EQ(EdgeDeque({e}), childEdges);
}

TEST(VEKZOLGraphVertexTest, SingleIncomingEdgeWithoutParentMakesNoRootButGivesNoParent) {
  VEKZOLObjectImpl c("c");
  VEKZOLRelationImpl r(nullptr, &c, "t", "r");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* e = AddNewEdge(graph, &r);

  EXPECT_FALSE(vc->IsRoot());
  EXPECT_TRUE(vc->IsLeaf());
  EXPECT_EQ(nullptr, vc->GetParent());
  VertexDeque parents;
  EXPECT_EQ(E_FAIL, vc->GetParents(parents));
  EXPECT_TRUE(parents.empty());
  EdgeDeque parentEdges;
  EXPECT_EQ(S_OK, vc->GetParentEdges(parentEdges));
  EXPECT_EQ(EdgeDeque({e}), parentEdges);
}

TEST(VEKZOLGraphVertexTest, ParallelEdgesGiveTheChildTwiceAndCountTwice) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r1(&p, &c, "t", "r1"), r2(&p, &c, "t", "r2");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* e1 = AddNewEdge(graph, &r1);
  VEKZOLGraphEdge* e2 = AddNewEdge(graph, &r2);

  VertexDeque children;
  EXPECT_EQ(S_OK, vp->GetChildren(children));
  EXPECT_EQ(VertexDeque({vc, vc}), children);
  EXPECT_EQ(2, vp->GetNbChildren());
  EdgeDeque childEdges;
  EXPECT_EQ(S_OK, vp->GetChildEdges(childEdges));
  EXPECT_EQ(EdgeDeque({e1, e2}), childEdges);
  VertexDeque parents;
  EXPECT_EQ(S_OK, vc->GetParents(parents));
  EXPECT_EQ(VertexDeque({vp, vp}), parents);
}

TEST(VEKZOLGraphVertexTest, SelfLoopMakesTheVertexItsOwnParentAndChildAndNeitherRootNorLeaf) {
  VEKZOLObjectImpl a("a");
  VEKZOLRelationImpl loop(&a, &a, "t", "loop");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* va = AddNewVertex(graph, &a);
  VEKZOLGraphEdge* e = AddNewEdge(graph, &loop);

  EXPECT_FALSE(va->IsRoot());
  EXPECT_FALSE(va->IsLeaf());
  EXPECT_EQ(va, va->GetParent());
  EXPECT_EQ(1, va->GetNbChildren());
  VertexDeque parents;
  VertexDeque children;
  EXPECT_EQ(S_OK, va->GetParents(parents));
  EXPECT_EQ(S_OK, va->GetChildren(children));
  EXPECT_EQ(VertexDeque({va}), parents);
  EXPECT_EQ(VertexDeque({va}), children);
  EdgeDeque parentEdges;
  EdgeDeque childEdges;
  EXPECT_EQ(S_OK, va->GetParentEdges(parentEdges));
  EXPECT_EQ(S_OK, va->GetChildEdges(childEdges));
  EXPECT_EQ(EdgeDeque({e}), parentEdges);
  EXPECT_EQ(EdgeDeque({e}), childEdges);
}

TEST(VEKZOLGraphVertexTest, GetParentIsTheParentOfTheOldestIncomingEdge) {
  VEKZOLObjectImpl p1("p1"), p2("p2"), c("c");
  VEKZOLRelationImpl r1(&p1, &c, "t", "r1"), r2(&p2, &c, "t", "r2");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* v1 = AddNewVertex(graph, &p1);
  VEKZOLGraphVertex* v2 = AddNewVertex(graph, &p2);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  // The edge with the larger id comes first: attachment order decides.
  AddNewEdge(graph, &r2);
  AddNewEdge(graph, &r1);
  EXPECT_EQ(v2, vc->GetParent());
  EXPECT_NE(v1, vc->GetParent());
}

TEST(VEKZOLGraphVertexTest, GetParentIsNullWhenTheOldestIncomingEdgeHasNoParent) {
  VEKZOLObjectImpl p("p"), missing("missing"), c("c");
  VEKZOLRelationImpl unresolved(&missing, &c, "t", "r1"), resolved(&p, &c, "t", "r2");
  VEKZOLGraph graph;
  AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  AddNewEdge(graph, &unresolved);
  AddNewEdge(graph, &resolved);
  EXPECT_EQ(nullptr, vc->GetParent());
}

TEST(VEKZOLGraphVertexTest, EdgeListOperationsSkipNullEdgePointers) {
  VEKZOLGraphVertex other(nullptr);
  VertexPeer vertex(nullptr);
  EdgePeer out(nullptr);
  out.SetEnds(&vertex, &other);
  EdgePeer in(nullptr);
  in.SetEnds(&other, &vertex);
  vertex.AppendChildEdge(nullptr);
  vertex.AppendChildEdge(&out);
  vertex.AppendParentEdge(nullptr);
  vertex.AppendParentEdge(&in);

  EdgeDeque childEdges;
  EXPECT_EQ(S_OK, vertex.GetChildEdges(childEdges));
  EXPECT_EQ(EdgeDeque({&out}), childEdges);
  EdgeDeque parentEdges;
  EXPECT_EQ(S_OK, vertex.GetParentEdges(parentEdges));
  EXPECT_EQ(EdgeDeque({&in}), parentEdges);

  // Two entries counted, one vertex appended: the counts differ.
  EXPECT_EQ(2, vertex.GetNbChildren());
  VertexDeque children;
  EXPECT_EQ(E_FAIL, vertex.GetChildren(children));
  EXPECT_EQ(VertexDeque({&other}), children);
  VertexDeque parents;
  EXPECT_EQ(E_FAIL, vertex.GetParents(parents));
  EXPECT_EQ(VertexDeque({&other}), parents);
  // The oldest incoming entry is null: no parent.
  EXPECT_EQ(nullptr, vertex.GetParent());
}

TEST(VEKZOLGraphVertexTest, EdgeListsHoldingOnlyNullPointersAnswerOkAndAppendNothing) {
  VertexPeer vertex(nullptr);
  vertex.AppendChildEdge(nullptr);
  vertex.AppendParentEdge(nullptr);
  EdgeDeque childEdges;
  EdgeDeque parentEdges;
  EXPECT_EQ(S_OK, vertex.GetChildEdges(childEdges));
  EXPECT_EQ(S_OK, vertex.GetParentEdges(parentEdges));
  EXPECT_TRUE(childEdges.empty());
  EXPECT_TRUE(parentEdges.empty());
}

TEST(VEKZOLGraphVertexTest, CopyConstructorCopiesMemberByMemberAndLeavesCounterAlone) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r(&p, &c, "t", "r");
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* e = AddNewEdge(graph, &r);
  vp->SetIdentPath("ident");
  vp->SetBackupName("backup");

  const int before = VEKZOLGraphVertex::_RefCounter;
  {
    VEKZOLGraphVertex copy(*vp);
    EXPECT_EQ(before, VEKZOLGraphVertex::_RefCounter);
    EXPECT_EQ(static_cast<VEKIZOLObject*>(&p), copy.GetObjectA());
    EXPECT_EQ(CString("ident"), copy.GetIdentPath());
    EXPECT_EQ(CString("backup"), copy.GetBackupName());
    EXPECT_FALSE(copy.IsLeaf());
    EXPECT_TRUE(copy.IsRoot());
    EdgeDeque childEdges;
    EXPECT_EQ(S_OK, copy.GetChildEdges(childEdges));
    EXPECT_EQ(EdgeDeque({e}), childEdges);
    // The shared edge still starts at the first vertex.
    EXPECT_EQ(vp, e->GetParent());
    VertexDeque children;
    EXPECT_EQ(S_OK, copy.GetChildren(children));
    EXPECT_EQ(VertexDeque({vc}), children);
  }
  // The copy was never counted, yet its destruction was.
  EXPECT_EQ(before - 1, VEKZOLGraphVertex::_RefCounter);
}

TEST(VEKZOLGraphVertexTest, AssignmentCopiesEveryMemberAndLeavesCounterAlone) {
  VEKZOLObjectImpl p("p"), c("c"), other("other");
  VEKZOLRelationImpl r(&p, &c, "t", "r");
  VEKZOLGraph graph;
  AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* e = AddNewEdge(graph, &r);
  vc->SetIdentPath("ident");
  vc->SetBackupName("backup");

  VEKZOLGraphVertex target(&other);
  target.SetIdentPath("old ident");
  const int before = VEKZOLGraphVertex::_RefCounter;
  VEKZOLGraphVertex& result = (target = *vc);
  EXPECT_EQ(&target, &result);
  EXPECT_EQ(before, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&c), target.GetObjectA());
  EXPECT_EQ(CString("c"), target.GetID());
  EXPECT_EQ(CString("ident"), target.GetIdentPath());
  EXPECT_EQ(CString("backup"), target.GetBackupName());
  EXPECT_TRUE(target.IsLeaf());
  EXPECT_FALSE(target.IsRoot());
  EdgeDeque parentEdges;
  EXPECT_EQ(S_OK, target.GetParentEdges(parentEdges));
  EXPECT_EQ(EdgeDeque({e}), parentEdges);
  EdgeDeque childEdges;
  EXPECT_EQ(S_FALSE, target.GetChildEdges(childEdges));
}

TEST(VEKZOLGraphVertexTest, ListOperationsReadTheEdgesNotTheRelation) {
  // The links were made once by the graph; listing never asks the relation.
  VEKZOLObjectImpl p("p"), c("c");
  TestRelation r("r", &p, &c);
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  AddNewEdge(graph, &r);
  EXPECT_EQ(1, r.SourceReads());
  EXPECT_EQ(1, r.TargetReads());
  VertexDeque children;
  EXPECT_EQ(S_OK, vp->GetChildren(children));
  EXPECT_EQ(VertexDeque({vc}), children);
  EXPECT_EQ(1, r.SourceReads());
  EXPECT_EQ(1, r.TargetReads());
}

}  // namespace

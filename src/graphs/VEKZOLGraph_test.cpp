// Tests of VEKZOLGraph construction: adding vertices and edges, resolving
// the ends of edges, Build with its trace lines and statuses, lookups by
// id, the copying constructor, assignment, the destructor and Cleanup.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <deque>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::AddNewEdge;
using graph_test::AddNewVertex;
using graph_test::GraphPeer;
using graph_test::TestObject;
using graph_test::TestRelation;

using ObjectDeque = std::deque<VEKIZOLObject*>;
using RelationDeque = std::deque<VEKIZOLRelation*>;
using VertexDeque = std::deque<VEKZOLGraphVertex*>;
using EdgeDeque = std::deque<VEKZOLGraphEdge*>;
using Keys = std::vector<CString>;

// The whole trace file of this process; empty while none was written.
std::string ReadTraceFile() {
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  if (path.IsEmpty()) {
    return std::string();
  }
  std::ifstream in(path.GetString(), std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

// Writes one line so that the trace file exists, and returns its content,
// against which a test then compares.
std::string TraceWithMarker() {
  VEKZOLLog::WriteMsg("Info:\t graph test marker", 0);
  std::string content = ReadTraceFile();
  EXPECT_FALSE(content.empty()) << "the trace file was not written";
  return content;
}

// The messages of the lines added to the trace file since it held `before`:
// what follows the first tab of each line (the time stamp comes before it).
std::vector<std::string> MessagesWrittenSince(const std::string& before) {
  const std::string after = ReadTraceFile();
  EXPECT_EQ(0, after.compare(0, before.size(), before)) << "the trace file was rewritten";
  std::vector<std::string> messages;
  std::istringstream added(after.size() > before.size() ? after.substr(before.size()) : "");
  std::string line;
  while (std::getline(added, line)) {
    if (!line.empty() && line.back() == '\r') {
      line.pop_back();
    }
    const std::size_t tab = line.find('\t');
    messages.push_back(tab == std::string::npos ? line : line.substr(tab + 1));
  }
  return messages;
}

const std::vector<std::string> kBuildTraceLines = {"Info:\t Build Graph -->",
                                                   "Info:\t Build Graph <--"};

VEKZOLGraphVertex* FindVertex(VEKZOLGraph& graph, const CString& id) {
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.GetVertex(id, vertex)) << id.GetString();
  return vertex;
}

VEKZOLGraphEdge* FindEdge(VEKZOLGraph& graph, const CString& id) {
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.GetEdge(id, edge)) << id.GetString();
  return edge;
}

VertexDeque ChildrenOf(VEKZOLGraphVertex* vertex) {
  VertexDeque children;
  vertex->GetChildren(children);
  return children;
}

// ---------------------------------------------------------------------------
// Construction

TEST(VEKZOLGraphTest, DefaultConstructedGraphIsEmptyAndUnnamed) {
  GraphPeer graph;
  EXPECT_EQ(CString(""), graph.Name());
  EXPECT_TRUE(graph.VertexKeys().empty());
  EXPECT_TRUE(graph.EdgeKeys().empty());
}

TEST(VEKZOLGraphTest, ConstructorKeepsTheNameGiven) {
  GraphPeer graph("Old state");
  EXPECT_EQ(CString("Old state"), graph.Name());
  EXPECT_TRUE(graph.VertexKeys().empty());
}

// ---------------------------------------------------------------------------
// AddVertex

TEST(VEKZOLGraphTest, AddVertexWithNullObjectAnswersInvalidArgAndLeavesOutPointer) {
  GraphPeer graph;
  VEKZOLGraphVertex sentinel(nullptr);
  VEKZOLGraphVertex* vertex = &sentinel;
  const int before = VEKZOLGraphVertex::_RefCounter;
  EXPECT_EQ(E_INVALIDARG, graph.AddVertex(nullptr, vertex));
  EXPECT_EQ(&sentinel, vertex);
  EXPECT_EQ(before, VEKZOLGraphVertex::_RefCounter);
  EXPECT_TRUE(graph.VertexKeys().empty());
}

TEST(VEKZOLGraphTest, AddVertexAnswersOkWithANewVertexForTheObject) {
  VEKZOLObjectImpl object("p1");
  GraphPeer graph;
  const int before = VEKZOLGraphVertex::_RefCounter;
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.AddVertex(&object, vertex));
  ASSERT_NE(nullptr, vertex);
  EXPECT_EQ(before + 1, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex->GetObjectA());
  EXPECT_EQ(CString("p1"), vertex->GetID());
  EXPECT_TRUE(vertex->IsRoot());
  EXPECT_TRUE(vertex->IsLeaf());
  EXPECT_EQ(Keys({"p1"}), graph.VertexKeys());
  EXPECT_EQ(vertex, FindVertex(graph, "p1"));
}

TEST(VEKZOLGraphTest, AddVertexKeysByTheByReferenceIdAndIgnoresItsStatus) {
  TestObject object("unused");
  object.SetIDs("by-reference", "by-value");
  object.SetIDStatus(E_FAIL);
  GraphPeer graph;
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.AddVertex(&object, vertex));
  EXPECT_EQ(Keys({"by-reference"}), graph.VertexKeys());
  VEKZOLGraphVertex* found = nullptr;
  EXPECT_EQ(E_FAIL, graph.GetVertex("by-value", found));
  EXPECT_EQ(nullptr, found);
  EXPECT_EQ(vertex, FindVertex(graph, "by-reference"));
}

TEST(VEKZOLGraphTest, AddVertexWithKnownIdAnswersFalseWithTheVertexOfTheFirstObject) {
  VEKZOLObjectImpl first("a");
  first.SetDisplayName("First");
  VEKZOLObjectImpl second("a");
  second.SetDisplayName("Second");
  GraphPeer graph;
  VEKZOLGraphVertex* vertex = AddNewVertex(graph, &first);
  const int before = VEKZOLGraphVertex::_RefCounter;

  VEKZOLGraphVertex* again = nullptr;
  EXPECT_EQ(S_FALSE, graph.AddVertex(&second, again));
  EXPECT_EQ(vertex, again);
  EXPECT_EQ(before, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&first), vertex->GetObjectA());
  EXPECT_EQ(CString("First"), vertex->GetName());
  EXPECT_EQ(Keys({"a"}), graph.VertexKeys());

  // The same object a second time is no different.
  VEKZOLGraphVertex* third = nullptr;
  EXPECT_EQ(S_FALSE, graph.AddVertex(&first, third));
  EXPECT_EQ(vertex, third);
}

TEST(VEKZOLGraphTest, AddVertexWithEmptyIdEntersItUnderTheEmptyKey) {
  VEKZOLObjectImpl object("");
  GraphPeer graph;
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.AddVertex(&object, vertex));
  ASSERT_NE(nullptr, vertex);
  EXPECT_EQ(Keys({""}), graph.VertexKeys());
  VEKZOLObjectImpl other("");
  VEKZOLGraphVertex* again = nullptr;
  EXPECT_EQ(S_FALSE, graph.AddVertex(&other, again));
  EXPECT_EQ(vertex, again);
}

TEST(VEKZOLGraphTest, IdsThatDifferOnlyInCaseAreTwoVertices) {
  VEKZOLObjectImpl lower("a"), upper("A");
  GraphPeer graph;
  VEKZOLGraphVertex* vLower = AddNewVertex(graph, &lower);
  VEKZOLGraphVertex* vUpper = AddNewVertex(graph, &upper);
  EXPECT_NE(vLower, vUpper);
  EXPECT_EQ(Keys({"A", "a"}), graph.VertexKeys());
  EXPECT_EQ(vLower, FindVertex(graph, "a"));
  EXPECT_EQ(vUpper, FindVertex(graph, "A"));
}

TEST(VEKZOLGraphTest, VerticesAndEdgesAreKeptInByteOrderOfTheirIds) {
  VEKZOLObjectImpl b("b"), e("\xC3\xA9"), a("a"), B("B"), ab("ab");
  VEKZOLRelationImpl r2(nullptr, nullptr, "t", "r2"), r10(nullptr, nullptr, "t", "r10"),
      r1(nullptr, nullptr, "t", "r1");
  GraphPeer graph;
  for (VEKIZOLObject* object : ObjectDeque{&b, &e, &a, &B, &ab}) {
    AddNewVertex(graph, object);
  }
  for (VEKIZOLRelation* relation : RelationDeque{&r2, &r10, &r1}) {
    AddNewEdge(graph, relation);
  }
  EXPECT_EQ(Keys({"B", "a", "ab", "b", "\xC3\xA9"}), graph.VertexKeys());
  EXPECT_EQ(Keys({"r1", "r10", "r2"}), graph.EdgeKeys());
}

TEST(VEKZOLGraphTest, VertexKeyIsTheIdAtTheTimeOfAdding) {
  TestObject object("old");
  GraphPeer graph;
  VEKZOLGraphVertex* vertex = AddNewVertex(graph, &object);
  object.SetID("new");
  EXPECT_EQ(vertex, FindVertex(graph, "old"));
  VEKZOLGraphVertex* missing = nullptr;
  EXPECT_EQ(E_FAIL, graph.GetVertex("new", missing));
  EXPECT_EQ(nullptr, missing);
  // The vertex asks its object: it reports the new id under the old key.
  EXPECT_EQ(CString("new"), vertex->GetID());
  EXPECT_EQ(Keys({"old"}), graph.VertexKeys());
}

// ---------------------------------------------------------------------------
// AddEdge

TEST(VEKZOLGraphTest, AddEdgeWithNullRelationAnswersInvalidArgAndLeavesOutPointer) {
  GraphPeer graph;
  VEKZOLGraphEdge sentinel(nullptr);
  VEKZOLGraphEdge* edge = &sentinel;
  const int before = VEKZOLGraphEdge::_RefCounter;
  EXPECT_EQ(E_INVALIDARG, graph.AddEdge(nullptr, edge));
  EXPECT_EQ(&sentinel, edge);
  EXPECT_EQ(before, VEKZOLGraphEdge::_RefCounter);
  EXPECT_TRUE(graph.EdgeKeys().empty());
}

TEST(VEKZOLGraphTest, AddEdgeAnswersOkAndLinksBothEnds) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl relation(&p, &c, "t", "r");
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  const int before = VEKZOLGraphEdge::_RefCounter;
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.AddEdge(&relation, edge));
  ASSERT_NE(nullptr, edge);
  EXPECT_EQ(before + 1, VEKZOLGraphEdge::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLRelation*>(&relation), edge->GetRelation());
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
  EXPECT_FALSE(vp->IsLeaf());
  EXPECT_TRUE(vp->IsRoot());
  EXPECT_TRUE(vc->IsLeaf());
  EXPECT_FALSE(vc->IsRoot());
  EXPECT_EQ(VertexDeque({vc}), ChildrenOf(vp));
  EXPECT_EQ(vp, vc->GetParent());
  EXPECT_EQ(Keys({"r"}), graph.EdgeKeys());
  EXPECT_EQ(edge, FindEdge(graph, "r"));
}

TEST(VEKZOLGraphTest, AddEdgeKeysByTheByValueIdOfTheRelation) {
  TestRelation relation("unused", nullptr, nullptr);
  relation.SetIDs("by-reference", "by-value");
  GraphPeer graph;
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  EXPECT_EQ(Keys({"by-value"}), graph.EdgeKeys());
  EXPECT_EQ(edge, FindEdge(graph, "by-value"));
  VEKZOLGraphEdge* missing = nullptr;
  EXPECT_EQ(E_FAIL, graph.GetEdge("by-reference", missing));
  EXPECT_EQ(nullptr, missing);
}

TEST(VEKZOLGraphTest, AddEdgeMatchesEndsByObjectIdNotByPointer) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLObjectImpl pTwin("p"), cTwin("c");
  VEKZOLRelationImpl relation(&pTwin, &cTwin, "t", "r");
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&p), edge->GetParent()->GetObjectA());
}

TEST(VEKZOLGraphTest, AddEdgeLooksEndsUpByTheByReferenceIdOfTheEndObject) {
  VEKZOLObjectImpl a("a"), z("z");
  TestObject sourceEnd("unused"), targetEnd("unused");
  sourceEnd.SetIDs("a", "z");
  targetEnd.SetIDs("z", "a");
  TestRelation relation("r", &sourceEnd, &targetEnd);
  GraphPeer graph;
  VEKZOLGraphVertex* va = AddNewVertex(graph, &a);
  VEKZOLGraphVertex* vz = AddNewVertex(graph, &z);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  EXPECT_EQ(va, edge->GetParent());
  EXPECT_EQ(vz, edge->GetChild());
}

TEST(VEKZOLGraphTest, AddEdgeReadsEachEndOnceAndIgnoresTheStatusOfTheReads) {
  VEKZOLObjectImpl p("p"), c("c");
  TestRelation relation("r", &p, &c);
  relation.SetEndStatus(E_FAIL);
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  EXPECT_EQ(1, relation.SourceReads());
  EXPECT_EQ(1, relation.TargetReads());
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
}

TEST(VEKZOLGraphTest, AddEdgeWithKnownIdAnswersFalseReadsNoEndAndLinksNothingAgain) {
  VEKZOLObjectImpl p("p"), c("c"), x("x"), y("y");
  TestRelation first("r", &p, &c);
  TestRelation second("r", &x, &y);
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphVertex* vx = AddNewVertex(graph, &x);
  VEKZOLGraphVertex* vy = AddNewVertex(graph, &y);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &first);
  const int before = VEKZOLGraphEdge::_RefCounter;

  VEKZOLGraphEdge* again = nullptr;
  EXPECT_EQ(S_FALSE, graph.AddEdge(&second, again));
  EXPECT_EQ(edge, again);
  EXPECT_EQ(0, second.SourceReads());
  EXPECT_EQ(0, second.TargetReads());
  EXPECT_EQ(before, VEKZOLGraphEdge::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLRelation*>(&first), edge->GetRelation());
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
  EXPECT_TRUE(vx->IsLeaf());
  EXPECT_TRUE(vy->IsRoot());

  // The first relation once more: still nothing read or linked again.
  EXPECT_EQ(S_FALSE, graph.AddEdge(&first, again));
  EXPECT_EQ(edge, again);
  EXPECT_EQ(1, first.SourceReads());
  EXPECT_EQ(1, first.TargetReads());
  EXPECT_EQ(1, vp->GetNbChildren());
  EdgeDeque parentEdges;
  EXPECT_EQ(S_OK, vc->GetParentEdges(parentEdges));
  EXPECT_EQ(EdgeDeque({edge}), parentEdges);
}

TEST(VEKZOLGraphTest, AddEdgeWhoseTargetIsMissingLinksTheSourceAndLeavesChildNull) {
  VEKZOLObjectImpl p("p"), missing("missing");
  VEKZOLRelationImpl relation(&p, &missing, "t", "r");
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.AddEdge(&relation, edge));
  ASSERT_NE(nullptr, edge);
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(nullptr, edge->GetChild());
  EXPECT_FALSE(vp->IsLeaf());
  EXPECT_EQ(1, vp->GetNbChildren());
  EXPECT_EQ(Keys({"p"}), graph.VertexKeys());
  EXPECT_EQ(Keys({"r"}), graph.EdgeKeys());
}

TEST(VEKZOLGraphTest, AddEdgeWithNullSourceObjectIsTreatedLikeAMissingSource) {
  VEKZOLObjectImpl c("c");
  VEKZOLRelationImpl relation(nullptr, &c, "t", "r");
  GraphPeer graph;
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.AddEdge(&relation, edge));
  ASSERT_NE(nullptr, edge);
  EXPECT_EQ(nullptr, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
  EXPECT_FALSE(vc->IsRoot());
  EXPECT_TRUE(vc->IsLeaf());
  EXPECT_EQ(nullptr, vc->GetParent());
}

TEST(VEKZOLGraphTest, AddEdgeWithBothEndsNullGoesInUnresolved) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "t", "r");
  GraphPeer graph;
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.AddEdge(&relation, edge));
  ASSERT_NE(nullptr, edge);
  EXPECT_EQ(nullptr, edge->GetParent());
  EXPECT_EQ(nullptr, edge->GetChild());
  EXPECT_EQ(Keys({"r"}), graph.EdgeKeys());
}

TEST(VEKZOLGraphTest, AddEdgeBeforeAddVertexStaysUnresolvedWhileACopyResolvesIt) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl relation(&p, &c, "t", "r");
  GraphPeer graph;
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  EXPECT_EQ(nullptr, edge->GetParent());
  EXPECT_EQ(nullptr, edge->GetChild());
  EXPECT_TRUE(vp->IsLeaf());
  EXPECT_TRUE(vc->IsRoot());

  // A second AddEdge of the same id does not repair it either.
  VEKZOLGraphEdge* again = nullptr;
  EXPECT_EQ(S_FALSE, graph.AddEdge(&relation, again));
  EXPECT_EQ(nullptr, edge->GetParent());
  EXPECT_EQ(nullptr, edge->GetChild());

  GraphPeer copy(graph);
  VEKZOLGraphEdge* copied = FindEdge(copy, "r");
  ASSERT_NE(nullptr, copied);
  EXPECT_EQ(FindVertex(copy, "p"), copied->GetParent());
  EXPECT_EQ(FindVertex(copy, "c"), copied->GetChild());
  EXPECT_NE(nullptr, copied->GetParent());
  EXPECT_NE(nullptr, copied->GetChild());
}

TEST(VEKZOLGraphTest, AddEdgeLooksUpTheEndObjectsIdAsItIsNow) {
  TestObject p("p");
  VEKZOLObjectImpl c("c");
  VEKZOLRelationImpl relation(&p, &c, "t", "r");
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  AddNewVertex(graph, &c);
  p.SetID("renamed");
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  EXPECT_EQ(nullptr, edge->GetParent());
  EXPECT_TRUE(vp->IsLeaf());
}

TEST(VEKZOLGraphTest, SelfLoopIsLinkedAtBothEndsOfTheSameVertex) {
  VEKZOLObjectImpl a("a");
  VEKZOLRelationImpl loop(&a, &a, "t", "loop");
  GraphPeer graph;
  VEKZOLGraphVertex* va = AddNewVertex(graph, &a);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &loop);
  EXPECT_EQ(va, edge->GetParent());
  EXPECT_EQ(va, edge->GetChild());
  EXPECT_FALSE(va->IsRoot());
  EXPECT_FALSE(va->IsLeaf());
  EXPECT_EQ(VertexDeque({va}), ChildrenOf(va));
  EXPECT_EQ(va, va->GetParent());
}

TEST(VEKZOLGraphTest, ParallelEdgesWithDifferentIdsAreBothKept) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r1(&p, &c, "t", "r1"), r2(&p, &c, "t", "r2");
  GraphPeer graph;
  VEKZOLGraphVertex* vp = AddNewVertex(graph, &p);
  VEKZOLGraphVertex* vc = AddNewVertex(graph, &c);
  VEKZOLGraphEdge* e1 = AddNewEdge(graph, &r1);
  VEKZOLGraphEdge* e2 = AddNewEdge(graph, &r2);
  EXPECT_NE(e1, e2);
  EXPECT_EQ(Keys({"r1", "r2"}), graph.EdgeKeys());
  EXPECT_EQ(VertexDeque({vc, vc}), ChildrenOf(vp));
  EXPECT_EQ(2, vp->GetNbChildren());
}

TEST(VEKZOLGraphTest, VertexAndEdgeMayShareAnId) {
  VEKZOLObjectImpl x("x");
  VEKZOLRelationImpl relation(&x, nullptr, "t", "x");
  GraphPeer graph;
  VEKZOLGraphVertex* vertex = AddNewVertex(graph, &x);
  VEKZOLGraphEdge* edge = AddNewEdge(graph, &relation);
  EXPECT_EQ(vertex, FindVertex(graph, "x"));
  EXPECT_EQ(edge, FindEdge(graph, "x"));
  EXPECT_EQ(vertex, edge->GetParent());
}

// ---------------------------------------------------------------------------
// Build

TEST(VEKZOLGraphTest, BuildWithTwoEmptyDequesAnswersInvalidArgAndWritesNoTraceLine) {
  const std::string before = TraceWithMarker();
  GraphPeer graph;
  ObjectDeque objects;
  RelationDeque relations;
  EXPECT_EQ(E_INVALIDARG, graph.Build(objects, relations));
  EXPECT_EQ(before, ReadTraceFile());
  EXPECT_TRUE(graph.VertexKeys().empty());
  EXPECT_TRUE(graph.EdgeKeys().empty());
}

TEST(VEKZOLGraphTest, BuildWithOneObjectAnswersFailAndGivesOneVertexThatIsRootAndLeaf) {
  VEKZOLObjectImpl object("p1");
  const std::string before = TraceWithMarker();
  GraphPeer graph;
  ObjectDeque objects{&object};
  RelationDeque relations;
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(kBuildTraceLines, MessagesWrittenSince(before));
  EXPECT_EQ(Keys({"p1"}), graph.VertexKeys());
  EXPECT_TRUE(graph.EdgeKeys().empty());
  VEKZOLGraphVertex* vertex = FindVertex(graph, "p1");
  ASSERT_NE(nullptr, vertex);
  EXPECT_TRUE(vertex->IsRoot());
  EXPECT_TRUE(vertex->IsLeaf());
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex->GetObjectA());
}

TEST(VEKZOLGraphTest, BuildWithRelationsOnlyWritesTheTraceLinesAndMakesUnresolvedEdges) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r1(&p, &c, "t", "r1"), r2(&c, &p, "t", "r2");
  const std::string before = TraceWithMarker();
  GraphPeer graph;
  ObjectDeque objects;
  RelationDeque relations{&r1, &r2};
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(kBuildTraceLines, MessagesWrittenSince(before));
  EXPECT_TRUE(graph.VertexKeys().empty());
  EXPECT_EQ(Keys({"r1", "r2"}), graph.EdgeKeys());
  for (const char* id : {"r1", "r2"}) {
    VEKZOLGraphEdge* edge = FindEdge(graph, id);
    ASSERT_NE(nullptr, edge);
    EXPECT_EQ(nullptr, edge->GetParent());
    EXPECT_EQ(nullptr, edge->GetChild());
  }
}

TEST(VEKZOLGraphTest, BuildWithOnlyNullPointersWritesBothTraceLinesAndAddsNothing) {
  const std::string before = TraceWithMarker();
  GraphPeer graph;
  ObjectDeque objects{nullptr, nullptr};
  RelationDeque relations{nullptr};
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(kBuildTraceLines, MessagesWrittenSince(before));
  EXPECT_TRUE(graph.VertexKeys().empty());
  EXPECT_TRUE(graph.EdgeKeys().empty());
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter);
}

TEST(VEKZOLGraphTest, BuildSkipsNullPointersAndLeavesTheInputDequesAsTheyWere) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r(&p, &c, "t", "r");
  GraphPeer graph;
  ObjectDeque objects{nullptr, &p, nullptr, &c};
  RelationDeque relations{nullptr, &r, nullptr};
  const ObjectDeque objectsBefore = objects;
  const RelationDeque relationsBefore = relations;
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(objectsBefore, objects);
  EXPECT_EQ(relationsBefore, relations);
  EXPECT_EQ(Keys({"c", "p"}), graph.VertexKeys());
  EXPECT_EQ(Keys({"r"}), graph.EdgeKeys());
  VEKZOLGraphEdge* edge = FindEdge(graph, "r");
  EXPECT_EQ(FindVertex(graph, "p"), edge->GetParent());
  EXPECT_EQ(FindVertex(graph, "c"), edge->GetChild());
}

TEST(VEKZOLGraphTest, BuildEntersEveryVertexBeforeTheFirstEdge) {
  // The relation's ends come last among the objects; they are found anyway.
  VEKZOLObjectImpl x("x"), p("p"), c("c");
  VEKZOLRelationImpl r(&p, &c, "t", "r");
  GraphPeer graph;
  ObjectDeque objects{&x, &c, &p};
  RelationDeque relations{&r};
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  VEKZOLGraphEdge* edge = FindEdge(graph, "r");
  EXPECT_EQ(FindVertex(graph, "p"), edge->GetParent());
  EXPECT_EQ(FindVertex(graph, "c"), edge->GetChild());
}

TEST(VEKZOLGraphTest, BuildWithTwoObjectsOfOneIdKeepsTheFirst) {
  VEKZOLObjectImpl first("a"), second("a");
  first.SetDisplayName("First");
  second.SetDisplayName("Second");
  GraphPeer graph;
  ObjectDeque objects{&first, &second};
  RelationDeque relations;
  const int before = VEKZOLGraphVertex::_RefCounter;
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(before + 1, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(Keys({"a"}), graph.VertexKeys());
  VEKZOLGraphVertex* vertex = FindVertex(graph, "a");
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&first), vertex->GetObjectA());
  EXPECT_EQ(CString("First"), vertex->GetName());
  VEKZOLGraphVertex* again = nullptr;
  EXPECT_EQ(S_FALSE, graph.AddVertex(&second, again));
  EXPECT_EQ(vertex, again);
}

TEST(VEKZOLGraphTest, BuildWithTwoRelationsOfOneIdLinksAccordingToTheFirst) {
  VEKZOLObjectImpl p("p"), c("c"), x("x"), y("y");
  VEKZOLRelationImpl first(&p, &c, "t", "r"), second(&x, &y, "t", "r");
  GraphPeer graph;
  ObjectDeque objects{&p, &c, &x, &y};
  RelationDeque relations{&first, &second};
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(Keys({"r"}), graph.EdgeKeys());
  VEKZOLGraphEdge* edge = FindEdge(graph, "r");
  EXPECT_EQ(static_cast<VEKIZOLRelation*>(&first), edge->GetRelation());
  EXPECT_EQ(FindVertex(graph, "p"), edge->GetParent());
  EXPECT_EQ(FindVertex(graph, "c"), edge->GetChild());
  EXPECT_TRUE(FindVertex(graph, "x")->IsLeaf());
  EXPECT_TRUE(FindVertex(graph, "y")->IsRoot());
}

TEST(VEKZOLGraphTest, BuildKeepsTheOrderOfTheRelationsDequeInEveryVertex) {
  VEKZOLObjectImpl p("p"), q("q"), c1("c1"), c2("c2"), c3("c3");
  VEKZOLRelationImpl r3(&p, &c3, "t", "r3"), r1(&p, &c1, "t", "r1"), r2(&p, &c2, "t", "r2");
  VEKZOLRelationImpl rq(&q, &c1, "t", "a-first-by-id");
  GraphPeer graph;
  ObjectDeque objects{&p, &q, &c1, &c2, &c3};
  RelationDeque relations{&r3, &r1, &r2, &rq};
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  VEKZOLGraphVertex* vp = FindVertex(graph, "p");
  EXPECT_EQ(
      VertexDeque({FindVertex(graph, "c3"), FindVertex(graph, "c1"), FindVertex(graph, "c2")}),
      ChildrenOf(vp));
  // c1's oldest incoming edge is r1 (from p), though rq has the smaller id.
  EXPECT_EQ(vp, FindVertex(graph, "c1")->GetParent());
}

TEST(VEKZOLGraphTest, SecondBuildAddsToWhatIsThere) {
  VEKZOLObjectImpl p("p"), c("c"), d("d"), pAgain("p");
  VEKZOLRelationImpl r1(&p, &c, "t", "r1"), r2(&p, &d, "t", "r2");
  GraphPeer graph;
  ObjectDeque firstObjects{&p, &c};
  RelationDeque firstRelations{&r1};
  EXPECT_EQ(E_FAIL, graph.Build(firstObjects, firstRelations));
  VEKZOLGraphVertex* vp = FindVertex(graph, "p");

  ObjectDeque secondObjects{&pAgain, &d};
  RelationDeque secondRelations{&r2, &r1};
  EXPECT_EQ(E_FAIL, graph.Build(secondObjects, secondRelations));
  EXPECT_EQ(Keys({"c", "d", "p"}), graph.VertexKeys());
  EXPECT_EQ(Keys({"r1", "r2"}), graph.EdgeKeys());
  EXPECT_EQ(vp, FindVertex(graph, "p"));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&p), vp->GetObjectA());
  EXPECT_EQ(VertexDeque({FindVertex(graph, "c"), FindVertex(graph, "d")}), ChildrenOf(vp));
}

// ---------------------------------------------------------------------------
// GetVertex and GetEdge

TEST(VEKZOLGraphTest, GetVertexOfEmptyIdAnswersInvalidArgEvenWhenSuchAVertexExists) {
  VEKZOLObjectImpl object("");
  GraphPeer graph;
  AddNewVertex(graph, &object);
  VEKZOLGraphVertex sentinel(nullptr);
  VEKZOLGraphVertex* vertex = &sentinel;
  EXPECT_EQ(E_INVALIDARG, graph.GetVertex("", vertex));
  EXPECT_EQ(&sentinel, vertex);
}

TEST(VEKZOLGraphTest, GetVertexOfUnknownIdAnswersFailAndLeavesOutPointerAlone) {
  VEKZOLObjectImpl object("a");
  GraphPeer graph;
  AddNewVertex(graph, &object);
  VEKZOLGraphVertex sentinel(nullptr);
  VEKZOLGraphVertex* vertex = &sentinel;
  EXPECT_EQ(E_FAIL, graph.GetVertex("b", vertex));
  EXPECT_EQ(&sentinel, vertex);
  EXPECT_EQ(E_FAIL, graph.GetVertex("A", vertex));
  EXPECT_EQ(&sentinel, vertex);
}

TEST(VEKZOLGraphTest, GetVertexOfKnownIdAnswersOkWithTheVertex) {
  VEKZOLObjectImpl object("a");
  GraphPeer graph;
  VEKZOLGraphVertex* added = AddNewVertex(graph, &object);
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.GetVertex("a", vertex));
  EXPECT_EQ(added, vertex);
}

TEST(VEKZOLGraphTest, GetEdgeOfEmptyIdAnswersInvalidArgEvenWhenSuchAnEdgeExists) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "t", "");
  GraphPeer graph;
  AddNewEdge(graph, &relation);
  EXPECT_EQ(Keys({""}), graph.EdgeKeys());
  VEKZOLGraphEdge sentinel(nullptr);
  VEKZOLGraphEdge* edge = &sentinel;
  EXPECT_EQ(E_INVALIDARG, graph.GetEdge("", edge));
  EXPECT_EQ(&sentinel, edge);
}

TEST(VEKZOLGraphTest, GetEdgeOfUnknownIdAnswersFailAndLeavesOutPointerAlone) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "t", "r");
  GraphPeer graph;
  AddNewEdge(graph, &relation);
  VEKZOLGraphEdge sentinel(nullptr);
  VEKZOLGraphEdge* edge = &sentinel;
  EXPECT_EQ(E_FAIL, graph.GetEdge("R", edge));
  EXPECT_EQ(&sentinel, edge);
}

TEST(VEKZOLGraphTest, GetEdgeOfKnownIdAnswersOkWithTheEdge) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "t", "r");
  GraphPeer graph;
  VEKZOLGraphEdge* added = AddNewEdge(graph, &relation);
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.GetEdge("r", edge));
  EXPECT_EQ(added, edge);
}

// ---------------------------------------------------------------------------
// Copying constructor

// p -> c over "r1", q -> c over "r2", with ident paths and backup names set
// on the source's vertices.
class VEKZOLGraphCopyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ObjectDeque objects{&p_, &q_, &c_};
    RelationDeque relations{&r1_, &r2_};
    source_.Build(objects, relations);
    for (const char* id : {"p", "q", "c"}) {
      VEKZOLGraphVertex* vertex = FindVertex(source_, id);
      vertex->SetIdentPath(CString("path/") + id);
      vertex->SetBackupName(CString("backup ") + id);
    }
  }

  VEKZOLObjectImpl p_{"p"}, q_{"q"}, c_{"c"};
  VEKZOLRelationImpl r1_{&p_, &c_, "t", "r1"}, r2_{&q_, &c_, "t", "r2"};
  GraphPeer source_{"Source"};
};

TEST_F(VEKZOLGraphCopyTest, CopyWithoutIdentPathsHasNewVerticesOverTheSameObjects) {
  GraphPeer copy(source_, "Copy", false);
  EXPECT_EQ(CString("Copy"), copy.Name());
  EXPECT_EQ(CString("Source"), source_.Name());
  EXPECT_EQ(source_.VertexKeys(), copy.VertexKeys());
  EXPECT_EQ(source_.EdgeKeys(), copy.EdgeKeys());
  for (const char* id : {"p", "q", "c"}) {
    VEKZOLGraphVertex* original = FindVertex(source_, id);
    VEKZOLGraphVertex* copied = FindVertex(copy, id);
    ASSERT_NE(nullptr, copied);
    EXPECT_NE(original, copied);
    EXPECT_EQ(original->GetObjectA(), copied->GetObjectA());
    EXPECT_EQ(CString(""), copied->GetIdentPath());
    EXPECT_EQ(CString(""), copied->GetBackupName());
  }
  for (const char* id : {"r1", "r2"}) {
    VEKZOLGraphEdge* original = FindEdge(source_, id);
    VEKZOLGraphEdge* copied = FindEdge(copy, id);
    ASSERT_NE(nullptr, copied);
    EXPECT_NE(original, copied);
    EXPECT_EQ(original->GetRelation(), copied->GetRelation());
  }
  EXPECT_EQ(FindVertex(copy, "p"), FindEdge(copy, "r1")->GetParent());
  EXPECT_EQ(FindVertex(copy, "c"), FindEdge(copy, "r1")->GetChild());
  // The source is unchanged.
  EXPECT_EQ(CString("path/p"), FindVertex(source_, "p")->GetIdentPath());
  EXPECT_EQ(FindVertex(source_, "p"), FindEdge(source_, "r1")->GetParent());
}

TEST_F(VEKZOLGraphCopyTest, CopyWithIdentPathsTakesThemButNotTheBackupNames) {
  GraphPeer copy(source_, "Copy", true);
  EXPECT_EQ(CString("Copy"), copy.Name());
  for (const char* id : {"p", "q", "c"}) {
    VEKZOLGraphVertex* original = FindVertex(source_, id);
    VEKZOLGraphVertex* copied = FindVertex(copy, id);
    ASSERT_NE(nullptr, copied);
    EXPECT_NE(original, copied);
    EXPECT_EQ(original->GetObjectA(), copied->GetObjectA());
    EXPECT_EQ(CString("path/") + id, copied->GetIdentPath());
    EXPECT_EQ(CString(""), copied->GetBackupName());
  }
}

TEST_F(VEKZOLGraphCopyTest, CopyWithDefaultsIsUnnamedWithoutIdentPaths) {
  GraphPeer copy(source_);
  EXPECT_EQ(CString(""), copy.Name());
  EXPECT_EQ(source_.VertexKeys(), copy.VertexKeys());
  EXPECT_EQ(CString(""), FindVertex(copy, "p")->GetIdentPath());

  VEKZOLGraph plain = source_;
  VEKZOLGraphVertex* vertex = FindVertex(plain, "c");
  ASSERT_NE(nullptr, vertex);
  EXPECT_NE(FindVertex(source_, "c"), vertex);
  EXPECT_EQ(CString(""), vertex->GetIdentPath());
}

TEST_F(VEKZOLGraphCopyTest, CopyCountsItsOwnVerticesAndEdges) {
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;
  {
    GraphPeer copy(source_, "Copy", true);
    EXPECT_EQ(vertices + 3, VEKZOLGraphVertex::_RefCounter);
    EXPECT_EQ(edges + 2, VEKZOLGraphEdge::_RefCounter);
  }
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter);
}

TEST(VEKZOLGraphTest, CopyOrdersEachVertexsEdgesByEdgeId) {
  VEKZOLObjectImpl p1("p1"), p2("p2"), c1("c1"), c2("c2"), x("x");
  VEKZOLRelationImpl toC2(&p1, &c2, "t", "a"), toC1(&p1, &c1, "t", "b");
  VEKZOLRelationImpl fromP2(&p2, &x, "t", "c"), fromP1(&p1, &x, "t", "d");
  GraphPeer source;
  ObjectDeque objects{&p1, &p2, &c1, &c2, &x};
  // Given out of id order.
  RelationDeque relations{&toC1, &toC2, &fromP1, &fromP2};
  source.Build(objects, relations);
  EXPECT_EQ(
      VertexDeque({FindVertex(source, "c1"), FindVertex(source, "c2"), FindVertex(source, "x")}),
      ChildrenOf(FindVertex(source, "p1")));
  EXPECT_EQ(FindVertex(source, "p1"), FindVertex(source, "x")->GetParent());

  GraphPeer copy(source);
  EXPECT_EQ(VertexDeque({FindVertex(copy, "c2"), FindVertex(copy, "c1"), FindVertex(copy, "x")}),
            ChildrenOf(FindVertex(copy, "p1")));
  EXPECT_EQ(FindVertex(copy, "p2"), FindVertex(copy, "x")->GetParent());
}

TEST(VEKZOLGraphTest, CopySkipsNullVerticesAndEdgesAndThoseWithoutObjectOrRelation) {
  VEKZOLObjectImpl a("a");
  VEKZOLRelationImpl r(&a, &a, "t", "r");
  GraphPeer source;
  AddNewVertex(source, &a);
  AddNewEdge(source, &r);
  source.PutVertex("null", nullptr);
  source.PutVertex("no object", new VEKZOLGraphVertex(nullptr));
  source.PutEdge("null", nullptr);
  source.PutEdge("no relation", new VEKZOLGraphEdge(nullptr));

  GraphPeer copy(source, "Copy", true);
  EXPECT_EQ(Keys({"a"}), copy.VertexKeys());
  EXPECT_EQ(Keys({"r"}), copy.EdgeKeys());
  VEKZOLGraphVertex* va = FindVertex(copy, "a");
  EXPECT_EQ(va, FindEdge(copy, "r")->GetParent());
  EXPECT_EQ(va, FindEdge(copy, "r")->GetChild());
  // The source's destructor deletes what it holds and skips the null entries.
}

TEST(VEKZOLGraphTest, CopyRekeysVerticesByTheObjectsPresentId) {
  TestObject object("old");
  GraphPeer source;
  AddNewVertex(source, &object);
  object.SetID("new");
  GraphPeer copy(source);
  EXPECT_EQ(Keys({"old"}), source.VertexKeys());
  EXPECT_EQ(Keys({"new"}), copy.VertexKeys());
}

// ---------------------------------------------------------------------------
// Assignment

TEST(VEKZOLGraphTest, AssignmentSharesVerticesAndEdgesAndForgetsWhatWasHeld) {
  VEKZOLObjectImpl p("p"), c("c"), old("old");
  VEKZOLRelationImpl r(&p, &c, "t", "r"), oldRelation(&old, &old, "t", "old");
  GraphPeer source("Source");
  ObjectDeque objects{&p, &c};
  RelationDeque relations{&r};
  source.Build(objects, relations);
  GraphPeer target("Target");
  VEKZOLGraphVertex* oldVertex = AddNewVertex(target, &old);
  VEKZOLGraphEdge* oldEdge = AddNewEdge(target, &oldRelation);
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;

  VEKZOLGraph& result = (static_cast<VEKZOLGraph&>(target) = source);
  EXPECT_EQ(static_cast<VEKZOLGraph*>(&target), &result);
  EXPECT_EQ(CString("Source"), target.Name());
  EXPECT_EQ(Keys({"c", "p"}), target.VertexKeys());
  EXPECT_EQ(Keys({"r"}), target.EdgeKeys());
  EXPECT_EQ(FindVertex(source, "p"), FindVertex(target, "p"));
  EXPECT_EQ(FindVertex(source, "c"), FindVertex(target, "c"));
  EXPECT_EQ(FindEdge(source, "r"), FindEdge(target, "r"));
  // Nothing was copied, and nothing deleted.
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&old), oldVertex->GetObjectA());
  EXPECT_EQ(oldVertex, oldEdge->GetParent());

  // Only one of the two may delete the shared vertices; the forgotten ones
  // are freed here by hand.
  EXPECT_EQ(E_FAIL, target.Cleanup());
  delete oldVertex;
  delete oldEdge;
}

// ---------------------------------------------------------------------------
// Destructor, Cleanup and the counters

TEST(VEKZOLGraphTest, DestructorDeletesEveryVertexAndEdgeTheGraphHolds) {
  VEKZOLObjectImpl p("p"), c("c"), d("d");
  VEKZOLRelationImpl r1(&p, &c, "t", "r1"), r2(&p, &d, "t", "r2");
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;
  {
    VEKZOLGraph graph("Doomed");
    ObjectDeque objects{&p, &c, &d};
    RelationDeque relations{&r1, &r2};
    graph.Build(objects, relations);
    EXPECT_EQ(vertices + 3, VEKZOLGraphVertex::_RefCounter);
    EXPECT_EQ(edges + 2, VEKZOLGraphEdge::_RefCounter);
  }
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter);
}

TEST(VEKZOLGraphTest, CleanupAnswersFailAndForgetsWithoutDeleting) {
  VEKZOLObjectImpl p("p"), c("c");
  VEKZOLRelationImpl r(&p, &c, "t", "r");
  GraphPeer graph("Kept name");
  ObjectDeque objects{&p, &c};
  RelationDeque relations{&r};
  graph.Build(objects, relations);
  VEKZOLGraphVertex* vp = FindVertex(graph, "p");
  VEKZOLGraphVertex* vc = FindVertex(graph, "c");
  VEKZOLGraphEdge* edge = FindEdge(graph, "r");
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;

  EXPECT_EQ(E_FAIL, graph.Cleanup());
  EXPECT_TRUE(graph.VertexKeys().empty());
  EXPECT_TRUE(graph.EdgeKeys().empty());
  EXPECT_EQ(CString("Kept name"), graph.Name());
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter);
  VEKZOLGraphVertex* missing = nullptr;
  EXPECT_EQ(E_FAIL, graph.GetVertex("p", missing));
  EXPECT_EQ(nullptr, missing);
  // What was forgotten is still intact.
  EXPECT_EQ(vp, edge->GetParent());
  EXPECT_EQ(vc, edge->GetChild());
  EXPECT_EQ(CString("p"), vp->GetID());

  // The graph can be built again, with new vertices.
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  EXPECT_EQ(Keys({"c", "p"}), graph.VertexKeys());
  EXPECT_NE(vp, FindVertex(graph, "p"));

  delete vp;
  delete vc;
  delete edge;
}

TEST(VEKZOLGraphTest, CleanupOfAnEmptyGraphAnswersFail) {
  GraphPeer graph;
  EXPECT_EQ(E_FAIL, graph.Cleanup());
  EXPECT_EQ(E_FAIL, graph.Cleanup());
}

TEST(VEKZOLGraphTest, VertexCounterRisesWithBuildStaysAfterCleanupAndFallsWithTheGraph) {
  VEKZOLObjectImpl a("a"), b("b"), c("c");
  VEKZOLRelationImpl r(&a, &b, "t", "r");
  ObjectDeque objects{&a, &b, &c};
  RelationDeque relations{&r};
  const int start = VEKZOLGraphVertex::_RefCounter;

  auto* cleaned = new VEKZOLGraph("cleaned");
  cleaned->Build(objects, relations);
  EXPECT_EQ(start + 3, VEKZOLGraphVertex::_RefCounter);
  VertexDeque forgotten;
  for (const char* id : {"a", "b", "c"}) {
    forgotten.push_back(FindVertex(*cleaned, id));
  }
  VEKZOLGraphEdge* forgottenEdge = FindEdge(*cleaned, "r");
  EXPECT_EQ(E_FAIL, cleaned->Cleanup());
  EXPECT_EQ(start + 3, VEKZOLGraphVertex::_RefCounter);
  delete cleaned;
  EXPECT_EQ(start + 3, VEKZOLGraphVertex::_RefCounter);

  auto* destroyed = new VEKZOLGraph("destroyed");
  destroyed->Build(objects, relations);
  EXPECT_EQ(start + 6, VEKZOLGraphVertex::_RefCounter);
  delete destroyed;
  EXPECT_EQ(start + 3, VEKZOLGraphVertex::_RefCounter);

  for (VEKZOLGraphVertex* vertex : forgotten) {
    delete vertex;
  }
  delete forgottenEdge;
  EXPECT_EQ(start, VEKZOLGraphVertex::_RefCounter);
}

}  // namespace

namespace {

// An object whose id cannot be read: both forms of GetID raise
// E_OUTOFMEMORY, as a host's string class may.
class UnreadableIdObject : public VEKZOLObjectImpl {
 public:
  using VEKZOLObjectImpl::VEKZOLObjectImpl;
  CString GetID() override { AtlThrow(E_OUTOFMEMORY); }
  long GetID(CString&) override { AtlThrow(E_OUTOFMEMORY); }
};

// A graph built from nothing makes its vertices after reading every id;
// a failure while reading leaves it without a vertex or a half-made entry,
// and it can be built again.
TEST(VEKZOLGraphTest, AFailureWhileReadingIdsLeavesAFreshGraphEmptyAndWhole) {
  VEKZOLObjectImpl a("a");
  VEKZOLObjectImpl b("b");
  UnreadableIdObject unreadable("x");
  std::deque<VEKIZOLObject*> objects{&a, &unreadable, &b};
  std::deque<VEKIZOLRelation*> relations;
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  GraphPeer graph("fails");
  HRESULT status = S_OK;
  try {
    graph.Build(objects, relations);
  } catch (const CAtlException& e) {
    status = e.m_hr;
  }
  EXPECT_EQ(E_OUTOFMEMORY, status);
  EXPECT_TRUE(graph.VertexKeys().empty());
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  std::deque<VEKIZOLObject*> good{&b, &a};
  graph.Build(good, relations);
  EXPECT_EQ((std::vector<CString>{"a", "b"}), graph.VertexKeys());
  VEKZOLGraphVertex* vertex = nullptr;
  ASSERT_EQ(S_OK, graph.GetVertex("b", vertex));
  EXPECT_EQ(&b, vertex->GetObjectA());
}

// The vertices of a fresh build lie in id order, each with the first object
// of its id, whatever the order of the list.
TEST(VEKZOLGraphTest, AFreshBuildGivesEachIdTheFirstObjectOfTheList) {
  VEKZOLObjectImpl c1("c"), a1("a"), c2("c"), b1("b"), a2("a");
  std::deque<VEKIZOLObject*> objects{&c1, &a1, &c2, nullptr, &b1, &a2};
  std::deque<VEKIZOLRelation*> relations;
  GraphPeer graph;
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  graph.Build(objects, relations);
  EXPECT_EQ(vertices + 3, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ((std::vector<CString>{"a", "b", "c"}), graph.VertexKeys());
  VEKZOLGraphVertex* vertex = nullptr;
  graph.GetVertex("a", vertex);
  EXPECT_EQ(&a1, vertex->GetObjectA());
  graph.GetVertex("c", vertex);
  EXPECT_EQ(&c1, vertex->GetObjectA());
}

}  // namespace

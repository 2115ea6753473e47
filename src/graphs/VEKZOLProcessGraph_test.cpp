// Tests of the process graph and its two companion classes: the forwarding
// operations with their constant E_FAIL, the copy without name and ident
// paths, and the companions' counting in the base counters.
#include <vekzol/graphs/VEKZOLProcessGraph.h>

#include <deque>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/graphs/VEKZOLProcessGraphEdge.h>
#include <vekzol/graphs/VEKZOLProcessGraphVertex.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::IdsOf;
using graph_test::Model;
using graph_test::TestObject;
using graph_test::TestRelation;

using VertexDeque = std::deque<VEKZOLGraphVertex*>;
using EdgeDeque = std::deque<VEKZOLGraphEdge*>;
using Ids = std::vector<std::string>;

// The whole trace file of this process, after writing one line so that it
// exists.
std::string TraceAfterMarker() {
  VEKZOLLog::WriteMsg("Info:\t process graph test marker", 0);
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  std::ifstream in(path.GetString(), std::ios::binary);
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

std::string Text(const CString& text) { return std::string(text.GetString(), text.GetLength()); }

VEKZOLGraphVertex* VertexOf(VEKZOLGraph& graph, const CString& id) {
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.GetVertex(id, vertex)) << id.GetString();
  return vertex;
}

// The chain p→q→r.
class ProcessChainTest : public ::testing::Test {
 protected:
  void SetUp() override {
    TestObject* p = model.Object("p");
    TestObject* q = model.Object("q");
    TestObject* r = model.Object("r");
    model.Relation("pq", p, q);
    model.Relation("qr", q, r);
    EXPECT_EQ(E_FAIL, graph.Build(model.objects, model.relations));
  }

  Model model;
  VEKZOLProcessGraph graph{"Line 1"};
};

TEST_F(ProcessChainTest, StartingProcessesAreTheRootsAndAnswerFail) {
  VertexDeque processes;
  EXPECT_EQ(E_FAIL, graph.GetStartingProcesses(processes));
  EXPECT_EQ(Ids({"p"}), IdsOf(processes));
  EXPECT_EQ(VertexOf(graph, "p"), processes[0]);
}

TEST_F(ProcessChainTest, EndingProcessesAreTheLeavesAndAnswerFail) {
  VertexDeque processes;
  EXPECT_EQ(E_FAIL, graph.GetEndingProcesses(processes));
  EXPECT_EQ(Ids({"r"}), IdsOf(processes));
}

TEST_F(ProcessChainTest, NextProcessesAreTheDirectSuccessorsOnlyAndAnswerFail) {
  VertexDeque processes;
  EXPECT_EQ(E_FAIL, graph.GetNextProcesses(VertexOf(graph, "p"), processes));
  EXPECT_EQ(Ids({"q"}), IdsOf(processes));
}

TEST_F(ProcessChainTest, NextProcessesOfTheLastProcessAnswerFailAndAppendNothing) {
  VertexDeque processes;
  EXPECT_EQ(E_FAIL, graph.GetNextProcesses(VertexOf(graph, "r"), processes));
  EXPECT_TRUE(processes.empty());
}

TEST_F(ProcessChainTest, NextProcessesOfANullVertexAnswerInvalidArg) {
  VertexDeque processes;
  EXPECT_EQ(E_INVALIDARG, graph.GetNextProcesses(nullptr, processes));
  EXPECT_TRUE(processes.empty());
}

TEST_F(ProcessChainTest, InheritedOperationsAnswerAsTheBaseDoes) {
  VertexDeque roots, children;
  EXPECT_EQ(S_OK, graph.GetRoots(roots));
  EXPECT_EQ(E_FAIL, graph.GetAllChildren("p", children));
  EXPECT_EQ(Ids({"q", "r"}), IdsOf(children));
  EXPECT_EQ("Graph: Line 1\n\n\tNb Vertices: 3\n\tNb Edges: 2\n\n\np\n  |__q\n    |__r\n\n\n",
            Text(graph.Dump()));
}

TEST_F(ProcessChainTest, GetVertexAndGetEdgeGiveObjectsOfThePlainClasses) {
  VEKZOLGraphVertex* vertex = VertexOf(graph, "q");
  ASSERT_NE(nullptr, vertex);
  EXPECT_EQ(nullptr, dynamic_cast<VEKZOLProcessGraphVertex*>(vertex));
  VEKZOLGraphEdge* edge = nullptr;
  ASSERT_EQ(S_OK, graph.GetEdge("pq", edge));
  EXPECT_EQ(nullptr, dynamic_cast<VEKZOLProcessGraphEdge*>(edge));
}

TEST_F(ProcessChainTest, CopyHasNoNameNoIdentPathsAndItsOwnVerticesOverTheSameObjects) {
  VertexOf(graph, "p")->SetIdentPath("ident");
  VEKZOLProcessGraph copy(graph);
  EXPECT_EQ("Graph: \n\n\tNb Vertices: 3\n\tNb Edges: 2\n\n\np\n  |__q\n    |__r\n\n\n",
            Text(copy.Dump()));
  VEKZOLGraphVertex* original = VertexOf(graph, "p");
  VEKZOLGraphVertex* copied = VertexOf(copy, "p");
  EXPECT_NE(original, copied);
  EXPECT_EQ(original->GetObjectA(), copied->GetObjectA());
  EXPECT_EQ("", Text(copied->GetIdentPath()));
}

TEST_F(ProcessChainTest, AssignmentSharesTheVerticesOfTheOtherGraph) {
  VEKZOLProcessGraph other("other");
  other = graph;
  EXPECT_EQ(VertexOf(graph, "q"), VertexOf(other, "q"));
  EXPECT_EQ(Text(graph.Dump()), Text(other.Dump()));
  // Only one of the two may delete them.
  EXPECT_EQ(E_FAIL, other.Cleanup());
}

TEST_F(ProcessChainTest, CleanupAnswersFailAndForgetsTheVertices) {
  VertexDeque vertices;
  EdgeDeque edges;
  graph.GetAllVertices(vertices);
  graph.GetAllEdges(edges);
  const int vertexCount = VEKZOLGraphVertex::_RefCounter;
  EXPECT_EQ(E_FAIL, graph.Cleanup());
  EXPECT_EQ(vertexCount, VEKZOLGraphVertex::_RefCounter);
  VertexDeque after;
  graph.GetAllVertices(after);
  EXPECT_TRUE(after.empty());
  for (VEKZOLGraphVertex* vertex : vertices) delete vertex;
  for (VEKZOLGraphEdge* edge : edges) delete edge;
}

TEST(VEKZOLProcessGraphTest, BuildWithEmptyDequesAnswersFailAndWritesNoTraceLine) {
  const std::string before = TraceAfterMarker();
  VEKZOLProcessGraph graph;
  std::deque<VEKIZOLObject*> objects;
  std::deque<VEKIZOLRelation*> relations;
  EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  std::ifstream in(path.GetString(), std::ios::binary);
  std::ostringstream after;
  after << in.rdbuf();
  EXPECT_EQ(before, after.str());
}

TEST(VEKZOLProcessGraphTest, BuildWithContentWritesTheTraceLinesOfTheBase) {
  const std::string before = TraceAfterMarker();
  Model model;
  model.Object("p");
  VEKZOLProcessGraph graph;
  EXPECT_EQ(E_FAIL, graph.Build(model.objects, model.relations));
  const std::string after = TraceAfterMarker();
  const std::string added = after.substr(before.size());
  EXPECT_NE(std::string::npos, added.find("\tInfo:\t Build Graph -->"));
  EXPECT_NE(std::string::npos, added.find("\tInfo:\t Build Graph <--"));
}

TEST(VEKZOLProcessGraphTest, ForwardingOperationsAnswerFailWhereTheBaseAnswersOtherwise) {
  VEKZOLProcessGraph graph;
  VertexDeque processes;
  EXPECT_EQ(E_FAIL, graph.GetStartingProcesses(processes));
  EXPECT_EQ(E_FAIL, graph.GetEndingProcesses(processes));
  EXPECT_TRUE(processes.empty());
  EXPECT_EQ(S_FALSE, graph.GetRoots(processes));
  EXPECT_EQ(S_FALSE, graph.GetLeaves(processes));
}

TEST(VEKZOLProcessGraphTest, NextProcessesAppendOnePerEdgeInEdgeOrderAfterWhatTheDequeHeld) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* z = model.Object("z");
  TestObject* a = model.Object("a");
  model.Relation("1", p, z);
  model.Relation("2", p, a);
  model.Relation("3", p, z);
  model.Relation("4", p, nullptr);
  VEKZOLProcessGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque processes{nullptr};
  EXPECT_EQ(E_FAIL, graph.GetNextProcesses(VertexOf(graph, "p"), processes));
  EXPECT_EQ(Ids({"(null)", "z", "a", "z"}), IdsOf(processes));
}

TEST(VEKZOLProcessGraphTest, NextProcessesTakeAVertexOfAnotherGraph) {
  Model model;
  TestObject* p = model.Object("p");
  TestObject* q = model.Object("q");
  model.Relation("pq", p, q);
  VEKZOLGraph plain;
  plain.Build(model.objects, model.relations);
  VEKZOLProcessGraph empty;
  VertexDeque processes;
  EXPECT_EQ(E_FAIL, empty.GetNextProcesses(VertexOf(plain, "p"), processes));
  EXPECT_EQ(Ids({"q"}), IdsOf(processes));
}

TEST(VEKZOLProcessGraphTest, StartingAndEndingProcessesAppendInIdOrder) {
  Model model;
  model.Object("b");
  model.Object("a");
  VEKZOLProcessGraph graph;
  graph.Build(model.objects, model.relations);
  VertexDeque starting{nullptr}, ending;
  EXPECT_EQ(E_FAIL, graph.GetStartingProcesses(starting));
  EXPECT_EQ(E_FAIL, graph.GetEndingProcesses(ending));
  EXPECT_EQ(Ids({"(null)", "a", "b"}), IdsOf(starting));
  EXPECT_EQ(Ids({"a", "b"}), IdsOf(ending));
}

TEST(VEKZOLProcessGraphTest, ProcessVertexCountsInTheVertexCounterAndBehavesAsAVertex) {
  TestObject object("step", "Step 1");
  const int before = VEKZOLGraphVertex::_RefCounter;
  {
    VEKZOLProcessGraphVertex vertex(&object);
    EXPECT_EQ(before + 1, VEKZOLGraphVertex::_RefCounter);
    EXPECT_EQ(&object, vertex.GetObjectA());
    EXPECT_EQ("step", Text(vertex.GetID()));
    EXPECT_EQ("Step 1", Text(vertex.GetName()));
    EXPECT_TRUE(vertex.IsRoot());
    EXPECT_TRUE(vertex.IsLeaf());
    vertex.SetIdentPath("path");
    {
      VEKZOLProcessGraphVertex copy(vertex);
      EXPECT_EQ(before + 1, VEKZOLGraphVertex::_RefCounter);
      EXPECT_EQ(&object, copy.GetObjectA());
      EXPECT_EQ("path", Text(copy.GetIdentPath()));
    }
    // The copy's destructor subtracted, its constructor had not added.
    EXPECT_EQ(before, VEKZOLGraphVertex::_RefCounter);
    TestObject other("other");
    VEKZOLProcessGraphVertex assigned(&other);
    assigned = vertex;
    EXPECT_EQ(&object, assigned.GetObjectA());
    EXPECT_EQ("path", Text(assigned.GetIdentPath()));
  }
  EXPECT_EQ(before - 1, VEKZOLGraphVertex::_RefCounter);
}

TEST(VEKZOLProcessGraphTest, ProcessEdgeCountsInTheEdgeCounterAndBehavesAsAnEdge) {
  TestRelation relation("succ", nullptr, nullptr);
  const int before = VEKZOLGraphEdge::_RefCounter;
  {
    VEKZOLProcessGraphEdge edge(&relation);
    EXPECT_EQ(before + 1, VEKZOLGraphEdge::_RefCounter);
    EXPECT_EQ(&relation, edge.GetRelation());
    EXPECT_EQ("succ", Text(edge.GetName()));
    EXPECT_EQ(nullptr, edge.GetParent());
    EXPECT_EQ(nullptr, edge.GetChild());
    {
      VEKZOLProcessGraphEdge copy(edge);
      EXPECT_EQ(before + 1, VEKZOLGraphEdge::_RefCounter);
      EXPECT_EQ(&relation, copy.GetRelation());
    }
    EXPECT_EQ(before, VEKZOLGraphEdge::_RefCounter);
    VEKZOLProcessGraphEdge assigned(nullptr);
    assigned = edge;
    EXPECT_EQ(&relation, assigned.GetRelation());
    EXPECT_EQ("Edge:\n\tName: succ\n\tParent: \tChild:  ", Text(assigned.ToString()));
  }
  EXPECT_EQ(before - 1, VEKZOLGraphEdge::_RefCounter);
}

TEST(VEKZOLProcessGraphTest, CompanionsAreDeletedThroughTheBaseDestructor) {
  TestObject object("step");
  TestRelation relation("succ", nullptr, nullptr);
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;
  VEKZOLGraphVertex* vertex = new VEKZOLProcessGraphVertex(&object);
  VEKZOLGraphEdge* edge = new VEKZOLProcessGraphEdge(&relation);
  delete vertex;
  delete edge;
  EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter);
}

}  // namespace

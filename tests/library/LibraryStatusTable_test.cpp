// The library-wide table of statuses, row by row, over every operation with
// a `long` result that has landed so far: objects and relations, the
// object-list map, graphs and process graphs, the string-list services, the
// timer, the trace log, the option store, the error services, the
// file-system services and the session directory. Each subsystem that lands
// later adds its rows here, calling its real operations.
//
// Every row is checked on each of its outcomes, with the status value
// itself: where the table says "always", the operation is called on the
// paths that could tell otherwise (empty input, missing element).
#include <cstdio>
#include <deque>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/comparison/VEKZOLGraphComparator.h>
#include <vekzol/diagnostics/VEKZOLErrorServices.h>
#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>
#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/graphs/VEKZOLProcessGraph.h>
#include <vekzol/objects/VEKZOLBaseObjectImpl.h>
#include <vekzol/objects/VEKZOLMapOfObjList.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>
#include <vekzol/platform/CComVariant.h>
#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>
#include <vekzol/services/VEKZOLSTLServices.h>

#include "diagnostics/VEKZOLLogTestSupport.h"
#include "options/VEKZOLOptionsMgrTestSupport.h"
#include "platform/System.h"
#include "filesystem/VEKZOLFileSystemServicesTestSupport.h"
#include "stringlists/VEKZOLSTLServicesTestPeer.h"

namespace {

using ObjectDeque = std::deque<VEKIZOLObject*>;
using RelationDeque = std::deque<VEKIZOLRelation*>;
using VertexDeque = std::deque<VEKZOLGraphVertex*>;
using EdgeDeque = std::deque<VEKZOLGraphEdge*>;
using StringDeque = std::deque<CString>;

// The base implementation with the one operation it leaves open.
class BaseObject : public VEKZOLBaseObjectImpl {
 public:
  explicit BaseObject(const char* id) : VEKZOLBaseObjectImpl(id) {}
  CString IsA() override { return "BaseObject"; }
};

// A graph whose protected Dump of a vertex can be called.
class DumpableGraph : public VEKZOLGraph {
 public:
  using VEKZOLGraph::Dump;
};

// The platform's backend, unable to tell the user's decimal separator.
class NoSeparatorSystem : public vekzol::platform::ForwardingSystem {
 public:
  NoSeparatorSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}
  bool UserDecimalSeparator(std::string*) override { return false; }
};

// Calls the Cleanup of `graph`'s own class and frees what it makes the graph
// forget: the vertices and edges it held.
template <typename Graph>
void CleanupAndFree(Graph& graph, long& status) {
  VertexDeque vertices;
  EdgeDeque edges;
  graph.GetAllVertices(vertices);
  graph.GetAllEdges(edges);
  status = graph.Cleanup();
  for (VEKZOLGraphVertex* vertex : vertices) {
    delete vertex;
  }
  for (VEKZOLGraphEdge* edge : edges) {
    delete edge;
  }
}

VEKZOLGraphVertex* VertexOf(VEKZOLGraph& graph, const char* id) {
  VEKZOLGraphVertex* vertex = nullptr;
  graph.GetVertex(id, vertex);
  return vertex;
}

// The chain a → b → c, and the relation o → c from an object outside it.
class ChainModel {
 public:
  ChainModel()
      : a("a"),
        b("b"),
        c("c"),
        outside("o"),
        ab(&a, &b, "t", "ab"),
        bc(&b, &c, "t", "bc"),
        oc(&outside, &c, "t", "oc") {}

  ObjectDeque Objects() { return {&a, &b, &c}; }
  RelationDeque Relations() { return {&ab, &bc}; }

  VEKZOLObjectImpl a;
  VEKZOLObjectImpl b;
  VEKZOLObjectImpl c;
  VEKZOLObjectImpl outside;
  VEKZOLRelationImpl ab;
  VEKZOLRelationImpl bc;
  VEKZOLRelationImpl oc;
};

// The cycle p → q → p: no roots, no leaves.
class CycleModel {
 public:
  CycleModel() : p("p"), q("q"), pq(&p, &q, "t", "pq"), qp(&q, &p, "t", "qp") {}

  ObjectDeque Objects() { return {&p, &q}; }
  RelationDeque Relations() { return {&pq, &qp}; }

  VEKZOLObjectImpl p;
  VEKZOLObjectImpl q;
  VEKZOLRelationImpl pq;
  VEKZOLRelationImpl qp;
};

class StatusTableOfLandedOperationsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    vekzol_log_test::RemoveTraceFiles(vekzol_log_test::TestTempDir());
    VEKZOLLogTestPeer::Reset();
  }
};

// ------------------------------------------------------------ objects

TEST_F(StatusTableOfLandedOperationsTest, IdAndRelationGettersOfTheImplementationsAlwaysAnswerSOk) {
  CString text;
  VEKIZOLObject* end = nullptr;
  BaseObject base("");
  EXPECT_EQ(base.GetID(text), S_OK);
  EXPECT_EQ(base.GetRefID(text), S_OK);

  VEKZOLObjectImpl object("");
  EXPECT_EQ(object.GetID(text), S_OK);
  EXPECT_EQ(object.GetRefID(text), S_OK);
  EXPECT_EQ(object.GetSCIID(text), S_OK);
  EXPECT_EQ(object.SetSCIID(""), S_OK);
  EXPECT_EQ(object.SetSCIID("SCI-1"), S_OK);
  EXPECT_EQ(object.SetDisplayName(""), S_OK);
  EXPECT_EQ(object.SetDisplayName("name"), S_OK);

  VEKZOLRelationImpl relation(nullptr, nullptr, "", "");
  EXPECT_EQ(relation.GetID(text), S_OK);
  EXPECT_EQ(relation.GetRefID(text), S_OK);
  EXPECT_EQ(relation.GetRelationType(text), S_OK);
  EXPECT_EQ(relation.GetSourceObject(end), S_OK);
  EXPECT_EQ(relation.GetTargetObject(end), S_OK);
}

TEST_F(StatusTableOfLandedOperationsTest, GetAttributeAnswersFoundMissingOrEmptyKey) {
  CComVariant value;
  BaseObject base("b");
  VEKZOLObjectImpl object("o");
  VEKZOLRelationImpl relation(nullptr, nullptr, "t", "r");
  base.SetAttribute("key", CComVariant(1));
  object.SetAttribute("key", CComVariant(2));
  relation.SetAttribute("key", CComVariant(3));

  EXPECT_EQ(base.GetAttribute("key", value), S_OK);
  EXPECT_EQ(base.GetAttribute("missing", value), E_FAIL);
  EXPECT_EQ(base.GetAttribute("", value), E_INVALIDARG);
  EXPECT_EQ(object.GetAttribute("key", value), S_OK);
  EXPECT_EQ(object.GetAttribute("missing", value), E_FAIL);
  EXPECT_EQ(object.GetAttribute("", value), E_INVALIDARG);
  EXPECT_EQ(relation.GetAttribute("key", value), S_OK);
  EXPECT_EQ(relation.GetAttribute("missing", value), E_FAIL);
  EXPECT_EQ(relation.GetAttribute("", value), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest, SetAttributeAnswersNewOverwrittenOrEmptyKey) {
  BaseObject base("b");
  EXPECT_EQ(base.SetAttribute("key", CComVariant(1)), S_OK);
  EXPECT_EQ(base.SetAttribute("key", CComVariant(2)), S_FALSE);
  EXPECT_EQ(base.SetAttribute("", CComVariant(3)), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest,
       MapOfObjListAddAndClearAlwaysAnswerSOkAndGetFindsOrFails) {
  VEKZOLMapOfObjList map;
  VEKZOLObjectImpl object("o");
  ObjectDeque none;
  ObjectDeque objects = {&object};
  EXPECT_EQ(map.Add("key", &object), S_OK);
  EXPECT_EQ(map.Add("key", nullptr), S_OK);
  EXPECT_EQ(map.Add("", &object), S_OK);
  EXPECT_EQ(map.Add("other", none), S_OK);
  EXPECT_EQ(map.Add("other", objects), S_OK);
  EXPECT_EQ(map.Get("key", objects), S_OK);
  EXPECT_EQ(map.Get("missing", objects), E_FAIL);
  EXPECT_EQ(map.clear(), S_OK);
  EXPECT_EQ(map.clear(), S_OK);
  EXPECT_EQ(map.Get("key", objects), E_FAIL);
}

// ------------------------------------------------------------ graphs

TEST_F(StatusTableOfLandedOperationsTest, AddVertexAndAddEdgeAnswerAddedAlreadyThereOrNull) {
  ChainModel model;
  VEKZOLGraph graph;
  VEKZOLGraphVertex* vertex = nullptr;
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(graph.AddVertex(&model.a, vertex), S_OK);
  EXPECT_EQ(graph.AddVertex(&model.a, vertex), S_FALSE);
  EXPECT_EQ(graph.AddVertex(nullptr, vertex), E_INVALIDARG);
  EXPECT_EQ(graph.AddEdge(&model.ab, edge), S_OK);
  EXPECT_EQ(graph.AddEdge(&model.ab, edge), S_FALSE);
  EXPECT_EQ(graph.AddEdge(nullptr, edge), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest, GetVertexAndGetEdgeAnswerFoundMissingOrEmptyId) {
  ChainModel model;
  VEKZOLGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  graph.Build(objects, relations);
  VEKZOLGraphVertex* vertex = nullptr;
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(graph.GetVertex("a", vertex), S_OK);
  EXPECT_EQ(graph.GetVertex("zz", vertex), E_FAIL);
  EXPECT_EQ(graph.GetVertex("", vertex), E_INVALIDARG);
  EXPECT_EQ(graph.GetEdge("ab", edge), S_OK);
  EXPECT_EQ(graph.GetEdge("zz", edge), E_FAIL);
  EXPECT_EQ(graph.GetEdge("", edge), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest,
       GetRootsAndGetLeavesAnswerSFalseOnlyForAnEmptyDequeAfter) {
  ChainModel chain;
  VEKZOLGraph chainGraph;
  ObjectDeque chainObjects = chain.Objects();
  RelationDeque chainRelations = chain.Relations();
  chainGraph.Build(chainObjects, chainRelations);
  VertexDeque roots;
  VertexDeque leaves;
  EXPECT_EQ(chainGraph.GetRoots(roots), S_OK);
  EXPECT_EQ(chainGraph.GetLeaves(leaves), S_OK);

  CycleModel cycle;
  VEKZOLGraph cycleGraph;
  ObjectDeque cycleObjects = cycle.Objects();
  RelationDeque cycleRelations = cycle.Relations();
  cycleGraph.Build(cycleObjects, cycleRelations);
  VertexDeque none;
  EXPECT_EQ(cycleGraph.GetRoots(none), S_FALSE);
  EXPECT_EQ(cycleGraph.GetLeaves(none), S_FALSE);
  // What the caller's deque held before counts.
  EXPECT_EQ(cycleGraph.GetRoots(roots), S_OK);
  EXPECT_EQ(cycleGraph.GetLeaves(leaves), S_OK);
}

TEST_F(StatusTableOfLandedOperationsTest, GetRootsWithTwoDequesAnswersSFalseOnlyWhenBothAreEmpty) {
  CycleModel cycle;
  VEKZOLObjectImpl outside("o");
  VEKZOLRelationImpl fromOutside(&outside, &cycle.p, "t", "op");
  VEKZOLGraph graph;
  ObjectDeque objects = cycle.Objects();
  RelationDeque relations = cycle.Relations();
  graph.Build(objects, relations);
  VertexDeque roots;
  EdgeDeque rootEdges;
  EXPECT_EQ(graph.GetRoots(roots, rootEdges), S_FALSE);

  VEKZOLGraphEdge* edge = nullptr;
  graph.AddEdge(&fromOutside, edge);
  VertexDeque rootsAgain;
  EXPECT_EQ(graph.GetRoots(rootsAgain, rootEdges), S_OK);
  EXPECT_TRUE(rootsAgain.empty());
}

TEST_F(StatusTableOfLandedOperationsTest, FullListingsAndSetIdentPathAlwaysAnswerSOk) {
  VEKZOLGraph empty;
  VertexDeque vertices;
  EdgeDeque edges;
  EXPECT_EQ(empty.GetAllVertices(vertices), S_OK);
  EXPECT_EQ(empty.GetAllEdges(edges), S_OK);

  VEKZOLObjectImpl object("a");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(vertex.SetIdentPath(""), S_OK);
  EXPECT_EQ(vertex.SetIdentPath("a/b"), S_OK);
}

TEST_F(StatusTableOfLandedOperationsTest, DeepWalksAnswerNullEmptyUnknownLeafOrTheirNormalEFail) {
  ChainModel model;
  VEKZOLGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  graph.Build(objects, relations);
  VEKZOLGraphVertex* a = VertexOf(graph, "a");
  VEKZOLGraphVertex* c = VertexOf(graph, "c");
  VertexDeque found;

  EXPECT_EQ(graph.GetAllChildren(static_cast<VEKZOLGraphVertex*>(nullptr), found), E_INVALIDARG);
  EXPECT_EQ(graph.GetAllChildren(a, found), E_FAIL);
  EXPECT_EQ(graph.GetAllChildren(c, found), E_FAIL);
  EXPECT_EQ(graph.GetAllChildren(CString(""), found), E_INVALIDARG);
  EXPECT_EQ(graph.GetAllChildren(CString("zz"), found), E_FAIL);
  EXPECT_EQ(graph.GetAllChildren(CString("a"), found), E_FAIL);

  EXPECT_EQ(graph.GetAllLeaves(static_cast<VEKZOLGraphVertex*>(nullptr), found), E_INVALIDARG);
  EXPECT_EQ(graph.GetAllLeaves(c, found), S_FALSE);
  EXPECT_EQ(graph.GetAllLeaves(a, found), E_FAIL);
  EXPECT_EQ(graph.GetAllLeaves(CString(""), found), E_INVALIDARG);
  EXPECT_EQ(graph.GetAllLeaves(CString("zz"), found), E_FAIL);
  EXPECT_EQ(graph.GetAllLeaves(CString("c"), found), S_FALSE);
  EXPECT_EQ(graph.GetAllLeaves(CString("a"), found), E_FAIL);
}

TEST_F(StatusTableOfLandedOperationsTest, BuildAnswersInvalidArgForTwoEmptyDequesElseEFail) {
  ChainModel model;
  ObjectDeque noObjects;
  RelationDeque noRelations;
  VEKZOLGraph empty;
  EXPECT_EQ(empty.Build(noObjects, noRelations), E_INVALIDARG);

  VEKZOLGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  EXPECT_EQ(graph.Build(objects, relations), E_FAIL);
  VEKZOLGraph objectsOnly;
  EXPECT_EQ(objectsOnly.Build(objects, noRelations), E_FAIL);
  VEKZOLGraph relationsOnly;
  EXPECT_EQ(relationsOnly.Build(noObjects, relations), E_FAIL);
}

TEST_F(StatusTableOfLandedOperationsTest, DumpOfAVertexAnswersInvalidArgForNullElseEFail) {
  ChainModel model;
  DumpableGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  graph.Build(objects, relations);
  CString text;
  EXPECT_EQ(graph.Dump(nullptr, text, 0), E_INVALIDARG);
  EXPECT_EQ(graph.Dump(VertexOf(graph, "a"), text, 0), E_FAIL);
  EXPECT_EQ(graph.Dump(VertexOf(graph, "c"), text, 2), E_FAIL);
}

TEST_F(StatusTableOfLandedOperationsTest, CleanupAlwaysAnswersEFail) {
  VEKZOLGraph empty;
  EXPECT_EQ(empty.Cleanup(), E_FAIL);

  ChainModel model;
  VEKZOLGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  graph.Build(objects, relations);
  long status = S_OK;
  CleanupAndFree(graph, status);
  EXPECT_EQ(status, E_FAIL);
}

TEST_F(StatusTableOfLandedOperationsTest, VertexNeighbourListingsAnswerNoneFoundOrMismatch) {
  ChainModel model;
  VEKZOLGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  graph.Build(objects, relations);
  VEKZOLGraphVertex* a = VertexOf(graph, "a");
  VEKZOLGraphVertex* b = VertexOf(graph, "b");
  VEKZOLGraphVertex* c = VertexOf(graph, "c");

  VertexDeque vertices;
  EXPECT_EQ(a->GetParents(vertices), S_FALSE);
  EXPECT_EQ(c->GetChildren(vertices), S_FALSE);
  EXPECT_EQ(b->GetParents(vertices), S_OK);
  EXPECT_EQ(b->GetChildren(vertices), E_FAIL);
  VertexDeque fresh;
  EXPECT_EQ(b->GetChildren(fresh), S_OK);
  EXPECT_EQ(c->GetParents(fresh), E_FAIL);

  // An edge whose parent end has no vertex in this graph.
  VEKZOLGraphEdge* edge = nullptr;
  graph.AddEdge(&model.oc, edge);
  VertexDeque parents;
  EXPECT_EQ(c->GetParents(parents), E_FAIL);

  EdgeDeque edges;
  EXPECT_EQ(a->GetParentEdges(edges), S_FALSE);
  EXPECT_EQ(c->GetChildEdges(edges), S_FALSE);
  EXPECT_EQ(a->GetChildEdges(edges), S_OK);
  EXPECT_EQ(c->GetParentEdges(edges), S_OK);
}

TEST_F(StatusTableOfLandedOperationsTest, ProcessGraphOperationsAnswerEFailAfterTheirWork) {
  ChainModel model;
  ObjectDeque noObjects;
  RelationDeque noRelations;
  VEKZOLProcessGraph empty;
  EXPECT_EQ(empty.Build(noObjects, noRelations), E_FAIL);

  VEKZOLProcessGraph graph;
  ObjectDeque objects = model.Objects();
  RelationDeque relations = model.Relations();
  EXPECT_EQ(graph.Build(objects, relations), E_FAIL);
  VertexDeque processes;
  EXPECT_EQ(graph.GetStartingProcesses(processes), E_FAIL);
  EXPECT_EQ(graph.GetEndingProcesses(processes), E_FAIL);
  VertexDeque none;
  EXPECT_EQ(empty.GetStartingProcesses(none), E_FAIL);
  EXPECT_EQ(empty.GetEndingProcesses(none), E_FAIL);
  VertexDeque next;
  EXPECT_EQ(graph.GetNextProcesses(nullptr, next), E_INVALIDARG);
  EXPECT_EQ(graph.GetNextProcesses(VertexOf(graph, "a"), next), E_FAIL);
  EXPECT_EQ(graph.GetNextProcesses(VertexOf(graph, "c"), next), E_FAIL);
  EXPECT_EQ(empty.Cleanup(), E_FAIL);
  long status = S_OK;
  CleanupAndFree(graph, status);
  EXPECT_EQ(status, E_FAIL);
}

// ------------------------------------------------------------ string-list services

TEST_F(StatusTableOfLandedOperationsTest, FindInDequeAnswersFoundMissingOrEmptyArgument) {
  const StringDeque list = {"a", "b"};
  const StringDeque empty;
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("b", list), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("z", list), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("", list), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("a", empty), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest, SetAlgebraAnswersSOkForAResultEFailForNoneOrInvalidArg) {
  StringDeque ab = {"a", "b"};
  StringDeque bc = {"b", "c"};
  StringDeque cd = {"c", "d"};
  StringDeque same = {"a", "b"};
  StringDeque empty;
  StringDeque result;
  EXPECT_EQ(VEKZOLSTLServices::Intersection(ab, bc, result), S_OK);
  result.clear();
  EXPECT_EQ(VEKZOLSTLServices::Intersection(ab, cd, result), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::Intersection(ab, empty, result), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::Intersection(empty, ab, result), E_INVALIDARG);

  result.clear();
  EXPECT_EQ(VEKZOLSTLServices::Difference(ab, bc, result), S_OK);
  result.clear();
  EXPECT_EQ(VEKZOLSTLServices::Difference(ab, same, result), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::Difference(empty, empty, result), E_INVALIDARG);

  // With one list empty, Difference still answers from the result list.
  result.clear();
  EXPECT_EQ(VEKZOLSTLServices::Difference(empty, ab, result), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::Difference(ab, empty, result), S_OK);
  result = {"held"};
  EXPECT_EQ(VEKZOLSTLServices::Difference(empty, ab, result), S_OK);

  // A result list that held something before answers S_OK with nothing added.
  result = {"held"};
  EXPECT_EQ(VEKZOLSTLServices::Intersection(ab, cd, result), S_OK);

  result.clear();
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(ab, bc, result), S_OK);
  result.clear();
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(ab, same, result), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(ab, empty, result), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(empty, ab, result), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest,
       AppendToDequeAndRemoveDuplicatesAnswerEFailAfterTheirWork) {
  StringDeque target;
  StringDeque source = {"b", "a", "b"};
  StringDeque empty;
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(target, source), E_FAIL);
  EXPECT_EQ(target.size(), 3u);
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(target, empty), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(target), E_FAIL);
  EXPECT_EQ(target.size(), 2u);
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(empty), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest, SortListObjectsAlwaysAnswersSOk) {
  VEKZOLObjectImpl first("1");
  VEKZOLObjectImpl second("2");
  first.SetDisplayName("b");
  second.SetDisplayName("a");
  ObjectDeque objects = {&first, &second};
  ObjectDeque empty;
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(objects, 0), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(objects, 1), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(objects, 7), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(empty, 0), S_OK);
}

TEST_F(StatusTableOfLandedOperationsTest, String2DoubleAnswersSOkOrEFail) {
  double number = 0.0;
  VEKZOLSTLServicesTestPeer::ForgetDecimalSeparator();
  {
    NoSeparatorSystem system;
    vekzol_log_test::ScopedSystem scoped(&system);
    EXPECT_EQ(VEKZOLSTLServices::String2Double("2.5", number), E_FAIL);
  }
  VEKZOLSTLServicesTestPeer::ForgetDecimalSeparator();
  EXPECT_EQ(VEKZOLSTLServices::String2Double("2.5", number), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("no number", number), S_OK);
  VEKZOLSTLServicesTestPeer::ForgetDecimalSeparator();
}

// ------------------------------------------------------------ file-system services

// A fresh directory below the program's private TEMP, and the session
// forgotten around each use.
class FileSystemRows {
 public:
  FileSystemRows() {
    root = vekzol_fs_test::Join(vekzol_fs_test::TestTempDir(), "status-table-fs");
    std::error_code error;
    std::filesystem::remove_all(root, error);
    vekzol_fs_test::MakeDir(root);
    VEKZOLFileSystemServices::Cleanup();
  }
  ~FileSystemRows() {
    VEKZOLFileSystemServices::Cleanup();
    std::error_code error;
    std::filesystem::remove_all(root, error);
  }
  CString At(const std::string& name) const { return vekzol_fs_test::Join(root, name).c_str(); }

  std::string root;
};

TEST_F(StatusTableOfLandedOperationsTest, ExistenceTestsAnswerYesNoOtherErrorOrEmptyPath) {
  FileSystemRows fs;
  vekzol_fs_test::WriteFile(fs.At("file").GetString(), "x");
  CString dir = fs.root.c_str();
  CString file = fs.At("file");
  CString missing = fs.At("missing");
  CString empty;
  bool isDirectory = false;
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(dir), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(file), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(empty), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(file), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(missing), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(dir, isDirectory), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(missing, isDirectory), S_FALSE);

  vekzol_fs_test::FakeSystem system;
  system.attributeFailures[fs.At("denied").GetString()] = 5;
  vekzol_fs_test::ScopedSystem scoped(&system);
  CString denied = fs.At("denied");
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(denied), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(denied), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(denied, isDirectory), E_FAIL);
}

TEST_F(StatusTableOfLandedOperationsTest, DirectoryOperationsAnswerAsTheirOwnStepsSay) {
  FileSystemRows fs;
  CString made = fs.At("made");
  CString file = fs.At("file");
  CString relative = "relative";
  CString missing = fs.At("missing");
  vekzol_fs_test::WriteFile(file.GetString(), "x");
  EXPECT_EQ(VEKZOLFileSystemServices::CreateDirectoryA(made, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::CreateDirectoryA(made, nullptr), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::CreateDirectoryA(relative, nullptr), E_INVALIDARG);
  CString oneCharacter = vekzol_fs_test::Join(made.GetString(), "x").c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::CreateDirectoryA(oneCharacter, nullptr), E_FAIL);

  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(made, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(missing, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(made, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(missing, nullptr), E_FAIL);
  {
    // A listing that cannot start: S_FALSE.
    class NoListing : public vekzol_fs_test::FakeSystem {
     public:
      uint32_t FindFiles(const char*, std::vector<vekzol::platform::FindEntry>*) override {
        return 5;
      }
    } system;
    vekzol_fs_test::ScopedSystem scoped(&system);
    CString dir = fs.root.c_str();
    EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(dir, nullptr), S_FALSE);
  }
  {
    vekzol_fs_test::FakeSystem system;
    system.deleteFailures[file.GetString()] = 5;
    vekzol_fs_test::ScopedSystem scoped(&system);
    CString dir = fs.root.c_str();
    EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(dir, nullptr), E_FAIL);
  }
}

TEST_F(StatusTableOfLandedOperationsTest, FileOperationsAnswerAsTheirOwnStepsSay) {
  FileSystemRows fs;
  CString dir = fs.root.c_str();
  CString sub = fs.At("sub");
  CString source = fs.At("a.txt");
  CString target = fs.At("b.txt");
  CString missing = fs.At("missing");
  CString empty;
  vekzol_fs_test::MakeDir(sub.GetString());
  vekzol_fs_test::WriteFile(source.GetString(), "a");
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(source, target, false, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(source, target, false, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(empty, target, false, nullptr), E_INVALIDARG);

  CString star = "*.txt";
  CString none = "*.none";
  CString one = "a.txt";
  CString gone = "gone.txt";
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, sub, star, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, sub, none, nullptr), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, sub, gone, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, missing, one, nullptr), E_INVALIDARG);
  StringDeque patterns;
  patterns.push_back("*.none");
  StringDeque noPatterns;
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, sub, patterns, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, sub, noPatterns, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::MoveFiles(dir, sub, patterns, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::MoveFiles(dir, sub, noPatterns, nullptr), E_INVALIDARG);
  patterns.push_back("a.txt");  // already in sub: the move fails
  EXPECT_EQ(VEKZOLFileSystemServices::MoveFiles(dir, sub, patterns, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFiles(dir, missing, patterns, nullptr), E_INVALIDARG);

  CString renamed = "c.txt";
  EXPECT_EQ(VEKZOLFileSystemServices::RenameFile(dir, one, renamed, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::RenameFile(dir, one, renamed, nullptr), E_FAIL);

  CString subName = "sub";
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, renamed, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, gone, nullptr), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, subName, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(missing, gone, nullptr), E_INVALIDARG);
  StringDeque names;
  names.push_back("gone.txt");
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, names, nullptr), S_OK);
  names.push_back("sub");
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, names, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, noPatterns, nullptr), E_INVALIDARG);

  StringDeque files;
  StringDeque dirs;
  CString all = vekzol_fs_test::Join(fs.root, "*").c_str();
  CString nothing = vekzol_fs_test::Join(fs.root, "*.none").c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(all, files, dirs), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(nothing, files, dirs), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(empty, files, dirs), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(dir, patterns, files, dirs), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(missing, patterns, files, dirs), E_INVALIDARG);

  CString name;
  EXPECT_EQ(VEKZOLFileSystemServices::GetFileNameFromPath(source, name), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::GetFileNameFromPath(empty, name), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest, SessionOperationsAnswerMadeNothingMadeOrFailure) {
  FileSystemRows fs;
  vekzol_fs_test::FakeSystem system;
  system.env["TEMP"] = fs.root;
  system.env["JBM_RQT_OUT"] = fs.root;
  vekzol_fs_test::ScopedSystem scoped(&system);
  CString id = "1";
  CString empty;
  CString path;
  CString name;
  EXPECT_EQ(VEKZOLFileSystemServicesTestPeer::GenerateName(id, name), S_OK);
  system.failLocalTime = true;
  VEKZOLLog::_CreationTimeStamp.Empty();
  EXPECT_EQ(VEKZOLFileSystemServicesTestPeer::GenerateName(empty, name), E_FAIL);
  system.failLocalTime = false;

  EXPECT_EQ(VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory(id, path, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory(id, path, nullptr), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), E_FAIL);

  CString run = "run";
  EXPECT_EQ(VEKZOLFileSystemServices::CreateRQTSessionDataDirectory(run, path, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::CreateRQTSessionDataDirectory(run, path, nullptr), S_FALSE);
  VEKZOLFileSystemServices::Cleanup();
  EXPECT_EQ(VEKZOLFileSystemServices::CreateRQTSessionDataDirectory(run, path, nullptr), S_FALSE);
  VEKZOLFileSystemServices::Cleanup();

  system.env["TEMP"] = vekzol_fs_test::Join(fs.root, "missing");
  system.env["JBM_RQT_OUT"] = vekzol_fs_test::Join(fs.root, "missing");
  EXPECT_EQ(VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory(id, path, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::CreateRQTSessionDataDirectory(run, path, nullptr), E_FAIL);
}

// ------------------------------------------------------------ diagnostics

TEST_F(StatusTableOfLandedOperationsTest, IncrementCounterAnswersSOkWhenCountedElseEFail) {
  // This program runs with timers on.
  VEKZOLTimer counter("status table counter", true);
  VEKZOLTimer timer("status table timer");
  EXPECT_EQ(counter.IncrementCounter(), S_OK);
  EXPECT_EQ(counter.IncrementCounter(), S_OK);
  EXPECT_EQ(timer.IncrementCounter(), E_FAIL);
  // The one operation with a long result that is no status: a count.
  EXPECT_EQ(counter.GetCounter(), 2);
  EXPECT_EQ(timer.GetCounter(), 0);
}

TEST_F(StatusTableOfLandedOperationsTest, GetLogFileAlwaysAnswersEFail) {
  std::FILE* stream = nullptr;
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  stream = nullptr;
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);

  // A trace file that cannot be opened, on creation and on appending.
  vekzol_log_test::FixedClockSystem system;
  system.failOpen = true;
  vekzol_log_test::ScopedSystem scoped(&system);
  VEKZOLLogTestPeer::Reset();
  stream = nullptr;
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);
  EXPECT_EQ(stream, nullptr);
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);
  EXPECT_EQ(stream, nullptr);
}

TEST_F(StatusTableOfLandedOperationsTest, PrintAllOptionsAlwaysAnswersEFail) {
  VEKZOLOptionsMgrTestPeer::Reset();
  // Verbosity off: nothing printed.
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_FALSE(VEKZOLOptionsMgrTestPeer::OptionsPrinted());
  // Verbosity on: printed, then already printed.
  VEKZOLLogTestPeer::SetVerbose(true);
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_TRUE(VEKZOLOptionsMgrTestPeer::OptionsPrinted());
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  VEKZOLOptionsMgrTestPeer::Reset();
}

TEST_F(StatusTableOfLandedOperationsTest, ErrorServicesAnswerAsTheirRowsSay) {
  std::deque<VEKZOLError*> errors;
  StringDeque messages;
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_FALSE);
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_FALSE);
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "", "s", nullptr, nullptr),
            E_INVALIDARG);
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "m", "s", nullptr, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeWarning, "m", "", nullptr, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeInfo, "m", "s", nullptr, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_OK);
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_OK);
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
}

TEST_F(StatusTableOfLandedOperationsTest, TheFourStatusValuesAndTheirSigns) {
  EXPECT_EQ(S_OK, 0L);
  EXPECT_EQ(S_FALSE, 1L);
  EXPECT_EQ(E_INVALIDARG, static_cast<long>(static_cast<int>(0x80070057u)));
  EXPECT_EQ(E_FAIL, static_cast<long>(static_cast<int>(0x80004005u)));
  EXPECT_EQ(E_OUTOFMEMORY, static_cast<long>(static_cast<int>(0x8007000Eu)));
  EXPECT_LT(E_INVALIDARG, 0);
  EXPECT_LT(E_FAIL, 0);
}

// Graph comparison.

TEST_F(StatusTableOfLandedOperationsTest, RunComparisonAnswersDifferencesNoneOrInvalidArg) {
  ChainModel chain;
  ObjectDeque objects = chain.Objects();
  RelationDeque relations = chain.Relations();
  VEKZOLGraph graph;
  graph.Build(objects, relations);
  VEKZOLGraph empty;
  VEKZOLGraphComparator same(&graph, &graph);
  EXPECT_EQ(same.RunComparison(false), S_FALSE);
  VEKZOLGraphComparator differing(&graph, &empty);
  EXPECT_EQ(differing.RunComparison(false), S_OK);
  VEKZOLGraphComparator noOld(&graph, nullptr);
  EXPECT_EQ(noOld.RunComparison(false), E_INVALIDARG);
  VEKZOLGraphComparator noNew(nullptr, &graph);
  EXPECT_EQ(noNew.RunComparison(true), E_INVALIDARG);
}

TEST_F(StatusTableOfLandedOperationsTest, ComparatorGettersAlwaysAnswerEFail) {
  ChainModel chain;
  ObjectDeque objects = chain.Objects();
  RelationDeque relations = chain.Relations();
  VEKZOLGraph graph;
  graph.Build(objects, relations);
  VEKZOLGraph empty;
  VEKZOLGraphComparator filled(&graph, &empty);
  filled.RunComparison(true);
  VEKZOLGraphComparator unrun(&graph, &empty);
  for (VEKZOLGraphComparator* comparator : {&filled, &unrun}) {
    StringDeque ids;
    EXPECT_EQ(comparator->GetVerticesToBeAdded(ids), E_FAIL);
    EXPECT_EQ(comparator->GetVerticesToBeRemoved(ids), E_FAIL);
    EXPECT_EQ(comparator->GetVerticesToBeMoved(ids), E_FAIL);
    EXPECT_EQ(comparator->GetVerticesToChangeName(ids), E_FAIL);
    EXPECT_EQ(comparator->GetEdgesToBeAdded(ids), E_FAIL);
    EXPECT_EQ(comparator->GetEdgesToBeRemoved(ids), E_FAIL);
  }
}

TEST_F(StatusTableOfLandedOperationsTest, RootExtractionAnswersSFalseForNothingToDoElseEFail) {
  ChainModel chain;
  ObjectDeque objects = chain.Objects();
  RelationDeque relations = chain.Relations();
  VEKZOLGraph graph;
  graph.Build(objects, relations);
  VEKZOLGraph empty;
  StringDeque vertices;
  StringDeque edges;
  VEKZOLGraphComparator adding(&graph, &empty);
  adding.RunComparison(false);
  EXPECT_EQ(adding.GetRootsToAdd(vertices, edges), E_FAIL);
  EXPECT_EQ(adding.GetRootsToRemove(vertices, edges), S_FALSE);
  VEKZOLGraphComparator removing(&empty, &graph);
  removing.RunComparison(false);
  EXPECT_EQ(removing.GetRootsToRemove(vertices, edges), E_FAIL);
  EXPECT_EQ(removing.GetRootsToAdd(vertices, edges), S_FALSE);
  // The graph in use gone after the run: E_FAIL before any work.
  class Forgetful : public VEKZOLGraphComparator {
   public:
    explicit Forgetful(const VEKZOLGraphComparator& other) : VEKZOLGraphComparator(other) {
      m_NewGraph = nullptr;
    }
  } forgetful(adding);
  EXPECT_EQ(forgetful.GetRootsToAdd(vertices, edges), E_FAIL);
  EXPECT_EQ(vertices.size(), 2u);  // the root "a" of each completed extraction above
  EXPECT_EQ(edges.size(), 0u);
}

}  // namespace

// File: VEKZOLGraphComparator_test.cpp
// The comparison run: which ids land in which of the six lists, in which
// order, the ident paths it writes, the outcome, the getters, repeated runs,
// null graphs, copies and assignment.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <gtest/gtest.h>

#include <deque>

#include <vekzol/platform/Status.h>

#include "comparison/ComparatorTestSupport.h"

namespace {

using comparator_test::ComparatorPeer;
using comparator_test::Ids;
using comparator_test::IdsOf;
using comparator_test::State;

TEST(VEKZOLGraphComparatorRunTest, TwoEmptyGraphsGiveNoDifferenceAndEmptyLists) {
  VEKZOLGraph newGraph;
  VEKZOLGraph oldGraph;
  ComparatorPeer comparator(&newGraph, &oldGraph);
  EXPECT_EQ(S_FALSE, comparator.RunComparison(true));
  EXPECT_EQ(Ids{}, comparator.Added());
  EXPECT_EQ(Ids{}, comparator.Removed());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{}, comparator.Renamed());
  EXPECT_EQ(Ids{}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());
}

// A small graph with a vertex under the empty id, which every pass skips.
void BuildSelfModel(State& state) {
  auto* b = state.Object("b", "Bee");
  auto* a = state.Object("a");
  state.Object("");
  state.Relation("a-b", a, b);
  state.Build();
}

// An empty graph's entries are a null pointer: the walks over the other
// graph ask memory ahead on it without forming a pointer from it.
TEST(VEKZOLGraphComparatorRunTest, AnEmptyNewGraphListsEveryOldVertexAndEdgeToRemove) {
  State state;
  BuildSelfModel(state);
  VEKZOLGraph empty;
  ComparatorPeer comparator(&empty, &state.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ((Ids{"a", "b"}), comparator.Removed());
  EXPECT_EQ(Ids{"a-b"}, comparator.EdgesRemoved());
  EXPECT_EQ(Ids{}, comparator.Added());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{}, comparator.EdgesAdded());
}

TEST(VEKZOLGraphComparatorRunTest, AnEmptyOldGraphListsEveryNewVertexAndEdgeToAdd) {
  State state;
  BuildSelfModel(state);
  VEKZOLGraph empty;
  ComparatorPeer comparator(&state.graph, &empty);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ((Ids{"a", "b"}), comparator.Added());
  EXPECT_EQ(Ids{"a-b"}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.Removed());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{}, comparator.Renamed());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, AGraphComparedWithItselfWithoutNamesHasNoDifference) {
  State state;
  BuildSelfModel(state);
  ComparatorPeer comparator(&state.graph, &state.graph);
  EXPECT_EQ(S_FALSE, comparator.RunComparison(false));
  EXPECT_EQ(Ids{}, comparator.Renamed());
}

TEST(VEKZOLGraphComparatorRunTest, AGraphComparedWithItselfWithNamesListsEveryVertexWithAnId) {
  State state;
  BuildSelfModel(state);
  ComparatorPeer comparator(&state.graph, &state.graph);
  // No backup name was ever set, so every name differs from its backup.
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ((Ids{"a", "b"}), comparator.Renamed());
  EXPECT_EQ(Ids{}, comparator.Added());
  EXPECT_EQ(Ids{}, comparator.Removed());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, ANameEqualToItsBackupNameIsNoChangeOfName) {
  State newer;
  State older;
  newer.Object("a", "Other new name");
  newer.Build();
  older.Object("a", "Same");
  older.Build();
  older.Vertex("a")->SetBackupName("Same");
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_FALSE, comparator.RunComparison(true));
  EXPECT_EQ(Ids{}, comparator.Renamed());
}

TEST(VEKZOLGraphComparatorRunTest, OnlyTheOldVertexNameAndItsBackupNameDecide) {
  State newer;
  State older;
  newer.Object("same", "Name");
  newer.Object("fallback");
  newer.Build();
  older.Object("same", "Name");
  older.Object("fallback");  // no display name: the name is the id
  older.Build();
  older.Vertex("same")->SetBackupName("Old backup");
  older.Vertex("fallback")->SetBackupName("fallback");
  newer.Vertex("same")->SetBackupName("Name");
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(Ids{"same"}, comparator.Renamed());
}

TEST(VEKZOLGraphComparatorRunTest, ANameDifferingOnlyInCaseIsListedWhenNamesAreChecked) {
  State newer;
  State older;
  newer.Object("a", "Pump");
  newer.Build();
  older.Object("a", "Pump");
  older.Build();
  older.Vertex("a")->SetBackupName("PUMP");
  older.Vertex("a")->SetIdentPath("old/a");
  newer.Vertex("a")->SetIdentPath("new/a");

  ComparatorPeer unchecked(&newer.graph, &older.graph);
  EXPECT_EQ(S_FALSE, unchecked.RunComparison(false));
  EXPECT_EQ(Ids{}, unchecked.Renamed());
  EXPECT_STREQ("new/a", newer.Vertex("a")->GetIdentPath());

  ComparatorPeer checked(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, checked.RunComparison(true));
  EXPECT_EQ(Ids{"a"}, checked.Renamed());
}

TEST(VEKZOLGraphComparatorRunTest, TheOldIdentPathTravelsToTheNewVertexWhenNotEmpty) {
  State newer;
  State older;
  newer.Object("a");
  newer.Object("b");
  newer.Object("c");
  newer.Build();
  older.Object("a");
  older.Object("b");
  older.Build();
  older.Vertex("a")->SetIdentPath("/plant/line1/a");
  newer.Vertex("a")->SetIdentPath("/plant/line2/a");
  newer.Vertex("b")->SetIdentPath("/kept/b");
  newer.Vertex("c")->SetIdentPath("/kept/c");
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_STREQ("/plant/line1/a", newer.Vertex("a")->GetIdentPath());
  EXPECT_STREQ("/plant/line1/a", older.Vertex("a")->GetIdentPath());
  EXPECT_STREQ("/kept/b", newer.Vertex("b")->GetIdentPath());  // old path empty
  EXPECT_STREQ("/kept/c", newer.Vertex("c")->GetIdentPath());  // no old vertex
  EXPECT_STREQ("", older.Vertex("b")->GetIdentPath());
}

TEST(VEKZOLGraphComparatorRunTest, OneParentInCommonKeepsAVertexFromBeingMoved) {
  State newer;
  State older;
  auto* np = newer.Object("P");
  auto* nq = newer.Object("Q");
  auto* nx = newer.Object("X");
  newer.Relation("P-X", np, nx);
  newer.Relation("Q-X", nq, nx);
  newer.Build();
  older.Object("P");
  auto* oq = older.Object("Q");
  auto* orr = older.Object("R");
  auto* ox = older.Object("X");
  older.Relation("Q-X", oq, ox);
  older.Relation("R-X", orr, ox);
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{"P-X"}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{"R-X"}, comparator.EdgesRemoved());
  EXPECT_EQ(Ids{}, comparator.Added());
  EXPECT_EQ(Ids{"R"}, comparator.Removed());
}

TEST(VEKZOLGraphComparatorRunTest, AVertexUnderAnotherParentIsMoved) {
  State newer;
  State older;
  auto* np = newer.Object("P");
  newer.Object("R");
  auto* nx = newer.Object("X");
  newer.Relation("e1", np, nx);
  newer.Build();
  older.Object("P");
  auto* orr = older.Object("R");
  auto* ox = older.Object("X");
  older.Relation("e1", orr, ox);  // same edge id, other parent
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ(Ids{"X"}, comparator.Moved());
  // The edge kept its id although it joins other vertices: in neither list.
  EXPECT_EQ(Ids{}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, ARootThatGotAParentAndAVertexThatBecameARootAreMoved) {
  State newer;
  State older;
  auto* nr = newer.Object("R");
  auto* nnow = newer.Object("gotParent");
  newer.Object("lostParent");
  newer.Relation("R-got", nr, nnow);
  newer.Build();
  auto* orr = older.Object("R");
  older.Object("gotParent");
  auto* olost = older.Object("lostParent");
  older.Relation("R-lost", orr, olost);
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ((Ids{"gotParent", "lostParent"}), comparator.Moved());
  EXPECT_EQ(Ids{"R-got"}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{"R-lost"}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, ARootOnBothSidesIsNotMoved) {
  State newer;
  State older;
  newer.Object("root");
  newer.Build();
  older.Object("root");
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_FALSE, comparator.RunComparison(false));
  EXPECT_EQ(Ids{}, comparator.Moved());
}

TEST(VEKZOLGraphComparatorRunTest, ParentsWithEmptyIdsAreNoParentInCommon) {
  State newer;
  State older;
  auto* nempty = newer.Object("");
  auto* nx = newer.Object("x");
  newer.Relation("e", nempty, nx);
  newer.Build();
  auto* oempty = older.Object("");
  auto* ox = older.Object("x");
  older.Relation("e", oempty, ox);
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  // Both sides have the parent "", which the intersection drops.
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ(Ids{"x"}, comparator.Moved());
}

TEST(VEKZOLGraphComparatorRunTest, AVertexWhoseIdChangedIsRemovedAndAddedAndItsChildMoved) {
  State newer;
  State older;
  auto* nnew = newer.Object("B2");
  auto* nchild = newer.Object("C");
  newer.Relation("B2-C", nnew, nchild);
  newer.Build();
  auto* oold = older.Object("B1");
  auto* ochild = older.Object("C");
  older.Relation("B1-C", oold, ochild);
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(Ids{"B2"}, comparator.Added());
  EXPECT_EQ(Ids{"B1"}, comparator.Removed());
  EXPECT_EQ(Ids{"C"}, comparator.Moved());
  EXPECT_EQ(Ids{"C"}, comparator.Renamed());
  EXPECT_EQ(Ids{"B2-C"}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{"B1-C"}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, IdsThatDifferOnlyByCaseAreDifferentIds) {
  State newer;
  State older;
  auto* na = newer.Object("a");
  auto* nb = newer.Object("B");
  newer.Relation("e", na, nb);
  newer.Build();
  auto* oa = older.Object("A");
  auto* ob = older.Object("b");
  older.Relation("E", oa, ob);
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ((Ids{"B", "a"}), comparator.Added());
  EXPECT_EQ((Ids{"A", "b"}), comparator.Removed());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{"e"}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{"E"}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, ListsComeInAscendingIdOrderWhateverTheInputOrder) {
  State newer;
  State older;
  for (const char* id : {"v9", "v1", "v5", "v3"}) newer.Object(id);
  auto* n1 = newer.model.objects[1];
  auto* n9 = newer.model.objects[0];
  newer.model.Relation("z", n1, n9);
  newer.model.Relation("m", n9, n1);
  newer.Build();
  older.Object("v7");
  older.Object("v0");
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ((Ids{"v1", "v3", "v5", "v9"}), comparator.Added());
  EXPECT_EQ((Ids{"v0", "v7"}), comparator.Removed());
  EXPECT_EQ((Ids{"m", "z"}), comparator.EdgesAdded());
}

TEST(VEKZOLGraphComparatorRunTest, NullEntriesAndEmptyIdsAreSkippedInEveryPass) {
  State newer;
  State older;
  newer.Object("a");
  newer.Relation("", nullptr, nullptr);
  newer.Build();
  newer.graph.PutVertex("n", nullptr);
  newer.graph.PutEdge("ne", nullptr);
  older.Object("");
  older.Build();
  older.graph.PutVertex("o", nullptr);
  older.graph.PutEdge("oe", nullptr);
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(Ids{"a"}, comparator.Added());
  EXPECT_EQ(Ids{}, comparator.Removed());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{}, comparator.Renamed());
  EXPECT_EQ(Ids{}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, AVertexWhoseNewKeyIsStillFoundIsPartneredByItsPresentId) {
  State newer;
  State older;
  auto* renamed = newer.Object("k");
  newer.Build();
  older.Object("k2");
  older.Build();
  // The host changes the id after the build: the key stays "k", the vertex
  // answers "k2" and is looked up under that id.
  renamed->SetID("k2");
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(Ids{}, comparator.Added());
  EXPECT_EQ(Ids{"k2"}, comparator.Renamed());
  // The old vertex "k2" is looked up among the new keys, where it is absent.
  EXPECT_EQ(Ids{"k2"}, comparator.Removed());
}

// An assigned graph holds the vertices of its source. With one vertex more
// in front of all others, each shared vertex stands at another position in
// each graph, and its parents are still matched by their ids: only the
// extra vertex differs.
TEST(VEKZOLGraphComparatorRunTest, GraphsSharingVerticesAtOtherPositionsDifferOnlyByTheirOwn) {
  State older;
  auto* p = older.Object("p");
  auto* c = older.Object("c");
  auto* d = older.Object("d");
  older.Relation("p-c", p, c);
  older.Relation("c-d", c, d);
  older.Build();
  VEKZOLGraph newer;
  newer = older.graph;
  graph_test::TestObject front("0-front");
  VEKZOLGraphVertex* frontVertex = nullptr;
  ASSERT_EQ(S_OK, newer.AddVertex(&front, frontVertex));

  ComparatorPeer comparator(&newer, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ(Ids{"0-front"}, comparator.Added());
  EXPECT_EQ(Ids{}, comparator.Removed());
  EXPECT_EQ(Ids{}, comparator.Moved());
  EXPECT_EQ(Ids{}, comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());

  // The source deletes the shared vertices; the assigned graph forgets them
  // and its own vertex is freed here.
  EXPECT_EQ(E_FAIL, newer.Cleanup());
  delete frontVertex;
}

TEST(VEKZOLGraphComparatorRunTest, ASecondRunAppendsTheSameFindingsAgain) {
  State newer;
  State older;
  auto* np = newer.Object("p");
  auto* nx = newer.Object("x");
  newer.Relation("p-x", np, nx);
  newer.Build();
  older.Object("x");
  older.Object("gone");
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ((Ids{"p", "p"}), comparator.Added());
  EXPECT_EQ((Ids{"gone", "gone"}), comparator.Removed());
  EXPECT_EQ((Ids{"x", "x"}), comparator.Moved());
  EXPECT_EQ((Ids{"x", "x"}), comparator.Renamed());
  EXPECT_EQ((Ids{"p-x", "p-x"}), comparator.EdgesAdded());
  EXPECT_EQ(Ids{}, comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorRunTest, ARunOverEqualGraphsAfterOneWithDifferencesAnswersSOk) {
  State newer;
  State older;
  newer.Object("a");
  auto* extra = newer.Object("b");
  newer.Build();
  older.Object("a");
  older.Build();
  ComparatorPeer comparator(&newer.graph, &older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  VEKZOLGraphVertex* added = nullptr;
  ASSERT_EQ(S_OK, older.graph.AddVertex(extra, added));  // now the graphs are equal
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ(Ids{"b"}, comparator.Added());
  ComparatorPeer fresh(&newer.graph, &older.graph);
  EXPECT_EQ(S_FALSE, fresh.RunComparison(false));
}

TEST(VEKZOLGraphComparatorRunTest, ARunWithoutNamesLeavesTheChangeOfNameListAsItWas) {
  State state;
  state.Object("a");
  state.Build();
  ComparatorPeer comparator(&state.graph, &state.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(S_OK, comparator.RunComparison(false));
  EXPECT_EQ(Ids{"a"}, comparator.Renamed());
}

TEST(VEKZOLGraphComparatorRunTest, ANullGraphIsRefusedAndChangesNothing) {
  State state;
  state.Object("a");
  state.Build();
  ComparatorPeer noOld(&state.graph, nullptr);
  EXPECT_EQ(E_INVALIDARG, noOld.RunComparison(true));
  ComparatorPeer noNew(nullptr, &state.graph);
  EXPECT_EQ(E_INVALIDARG, noNew.RunComparison(true));
  ComparatorPeer neither(nullptr, nullptr);
  EXPECT_EQ(E_INVALIDARG, neither.RunComparison(false));
  std::deque<CString> ids{"kept"};
  EXPECT_EQ(E_FAIL, noOld.GetVerticesToBeAdded(ids));
  EXPECT_EQ(E_FAIL, noOld.GetVerticesToChangeName(ids));
  EXPECT_EQ(E_FAIL, noOld.GetEdgesToBeRemoved(ids));
  EXPECT_EQ(Ids{"kept"}, IdsOf(ids));
}

// Fills every list of a comparator with known ids: a new graph and an old
// graph with one vertex and one edge in each of the six outcomes.
struct SixListModel {
  SixListModel() {
    auto* np = newer.Object("P");
    auto* nq = newer.Object("Q");
    auto* nadd = newer.Object("add");
    auto* nmove = newer.Object("move");
    newer.Relation("e-new", np, nadd);
    newer.Relation("e-move-new", nq, nmove);
    newer.Build();
    auto* op = older.Object("P");
    auto* oq = older.Object("Q");
    older.Object("remove");
    auto* omove = older.Object("move");
    older.Relation("e-move-old", op, omove);
    older.Relation("e-old", oq, op);
    older.Build();
  }
  State newer;
  State older;
};

TEST(VEKZOLGraphComparatorRunTest, TheSixListsOfOneRun) {
  SixListModel model;
  ComparatorPeer comparator(&model.newer.graph, &model.older.graph);
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(Ids{"add"}, comparator.Added());
  EXPECT_EQ(Ids{"remove"}, comparator.Removed());
  EXPECT_EQ((Ids{"P", "move"}), comparator.Moved());
  EXPECT_EQ((Ids{"P", "Q", "move"}), comparator.Renamed());
  EXPECT_EQ((Ids{"e-move-new", "e-new"}), comparator.EdgesAdded());
  EXPECT_EQ((Ids{"e-move-old", "e-old"}), comparator.EdgesRemoved());
}

TEST(VEKZOLGraphComparatorGetterTest, EachGetterAppendsItsListBehindWhatTheDequeHeldAndFails) {
  SixListModel model;
  VEKZOLGraphComparator comparator(&model.newer.graph, &model.older.graph);
  comparator.RunComparison(true);
  using Getter = long (VEKZOLGraphComparator::*)(std::deque<CString>&);
  const struct {
    Getter getter;
    Ids expected;
  } getters[] = {
      {&VEKZOLGraphComparator::GetVerticesToBeAdded, {"first", "add"}},
      {&VEKZOLGraphComparator::GetVerticesToBeRemoved, {"first", "remove"}},
      {&VEKZOLGraphComparator::GetVerticesToBeMoved, {"first", "P", "move"}},
      {&VEKZOLGraphComparator::GetVerticesToChangeName, {"first", "P", "Q", "move"}},
      {&VEKZOLGraphComparator::GetEdgesToBeAdded, {"first", "e-move-new", "e-new"}},
      {&VEKZOLGraphComparator::GetEdgesToBeRemoved, {"first", "e-move-old", "e-old"}},
  };
  for (const auto& entry : getters) {
    std::deque<CString> ids{"first"};
    EXPECT_EQ(E_FAIL, (comparator.*entry.getter)(ids));
    EXPECT_EQ(entry.expected, IdsOf(ids));
  }
}

TEST(VEKZOLGraphComparatorGetterTest, GettersOfEmptyListsLeaveTheDequeAndFail) {
  VEKZOLGraphComparator comparator(nullptr, nullptr);
  std::deque<CString> ids{"x", ""};
  EXPECT_EQ(E_FAIL, comparator.GetVerticesToBeAdded(ids));
  EXPECT_EQ(E_FAIL, comparator.GetVerticesToBeRemoved(ids));
  EXPECT_EQ(E_FAIL, comparator.GetVerticesToBeMoved(ids));
  EXPECT_EQ(E_FAIL, comparator.GetVerticesToChangeName(ids));
  EXPECT_EQ(E_FAIL, comparator.GetEdgesToBeAdded(ids));
  EXPECT_EQ(E_FAIL, comparator.GetEdgesToBeRemoved(ids));
  EXPECT_EQ((Ids{"x", ""}), IdsOf(ids));
}

TEST(VEKZOLGraphComparatorCopyTest, ACopyHasTheListsAndSharesTheGraphsButRunsByItself) {
  SixListModel model;
  ComparatorPeer original(&model.newer.graph, &model.older.graph);
  original.RunComparison(false);
  ComparatorPeer copy(original);
  EXPECT_EQ(original.Added(), copy.Added());
  EXPECT_EQ(original.Moved(), copy.Moved());
  EXPECT_EQ(original.EdgesRemoved(), copy.EdgesRemoved());
  EXPECT_EQ(&model.newer.graph, copy.NewGraph());
  EXPECT_EQ(&model.older.graph, copy.OldGraph());

  model.older.Vertex("P")->SetIdentPath("/p");
  EXPECT_EQ(S_OK, copy.RunComparison(true));
  EXPECT_EQ((Ids{"add", "add"}), copy.Added());
  EXPECT_EQ((Ids{"P", "Q", "move"}), copy.Renamed());
  EXPECT_EQ(Ids{"add"}, original.Added());
  EXPECT_EQ(Ids{}, original.Renamed());
  // The run of the copy wrote into the graph that both share.
  EXPECT_STREQ("/p", model.newer.Vertex("P")->GetIdentPath());
}

TEST(VEKZOLGraphComparatorCopyTest, AssignmentReplacesTheListsAndTakesThePointers) {
  SixListModel model;
  ComparatorPeer source(&model.newer.graph, &model.older.graph);
  source.RunComparison(true);
  State other;
  other.Object("own");
  other.Build();
  VEKZOLGraph empty;
  ComparatorPeer target(&other.graph, &empty);
  target.RunComparison(false);
  ASSERT_EQ(Ids{"own"}, target.Added());
  target = source;
  EXPECT_EQ(Ids{"add"}, target.Added());
  EXPECT_EQ(Ids{"remove"}, target.Removed());
  EXPECT_EQ((Ids{"P", "move"}), target.Moved());
  EXPECT_EQ((Ids{"P", "Q", "move"}), target.Renamed());
  EXPECT_EQ((Ids{"e-move-new", "e-new"}), target.EdgesAdded());
  EXPECT_EQ((Ids{"e-move-old", "e-old"}), target.EdgesRemoved());
  EXPECT_EQ(&model.newer.graph, target.NewGraph());
  EXPECT_EQ(&model.older.graph, target.OldGraph());
  target = target;  // NOLINT: assignment to itself keeps everything
  EXPECT_EQ(Ids{"add"}, target.Added());
}

TEST(VEKZOLGraphComparatorCopyTest, DestroyingAComparatorLeavesItsGraphsAlone) {
  SixListModel model;
  const int verticesBefore = VEKZOLGraphVertex::_RefCounter;
  {
    VEKZOLGraphComparator comparator(&model.newer.graph, &model.older.graph);
    comparator.RunComparison(true);
  }
  EXPECT_EQ(verticesBefore, VEKZOLGraphVertex::_RefCounter);
  std::deque<VEKZOLGraphVertex*> vertices;
  model.newer.graph.GetAllVertices(vertices);
  EXPECT_EQ((Ids{"P", "Q", "add", "move"}), graph_test::IdsOf(vertices));
}

}  // namespace

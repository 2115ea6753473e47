// File: VEKZOLGraphComparator_timers_env_test.cpp
// Runs with VEK_ZOL_TIMERS_ENABLED=1: each comparison run and each root
// extraction reports through a local timer of its own, refused calls and
// calls with nothing to do report nothing, and the parent test of each
// vertex goes through the intersection service with its timer.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLSTLServices.h>

#include "ComparisonModelGenerator.h"
#include "comparison/ComparatorTestSupport.h"
#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"

namespace {

using comparator_test::State;
using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using Peer = VEKZOLTimerTestPeer;

std::string TimerLine(const char* name, const char* cpu, const char* elapsed) {
  return Line(std::string("Timer:\t ") + name + "\tCPU Time:\t" + cpu + "\tElapsed Time:\t" +
              elapsed);
}

class VEKZOLGraphComparatorTimersEnvTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // P and K stay; K moves from P to Q, L is new under K, G is gone.
    auto* np = newer.Object("P");
    auto* nq = newer.Object("Q");
    auto* nk = newer.Object("K");
    auto* nl = newer.Object("L");
    newer.Relation("Q-K", nq, nk);
    newer.Relation("K-L", nk, nl);
    newer.Relation("P-Q", np, nq);
    newer.Build();
    auto* op = older.Object("P");
    auto* oq = older.Object("Q");
    auto* ok = older.Object("K");
    older.Object("G");
    older.Relation("P-K", op, ok);
    older.Relation("P-Q", op, oq);
    older.Build();
    system_.ticks = 1000;
    FreshTrace();
  }

  State newer;
  State older;
  TimerClockSystem system_;
  ScopedSystem scoped_{&system_};
};

TEST_F(VEKZOLGraphComparatorTimersEnvTest, ARunReportsItsOwnTimerOnce) {
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  system_.kernel = 30000;  // 3 ms of processor time so far
  EXPECT_EQ(S_OK, comparator.RunComparison(true));
  EXPECT_EQ(TimerLine("Graph - Run Comparison Timer", "3", "0"), TraceBody());
}

TEST_F(VEKZOLGraphComparatorTimersEnvTest, ARefusedRunReportsNothing) {
  VEKZOLGraphComparator comparator(&newer.graph, nullptr);
  EXPECT_EQ(E_INVALIDARG, comparator.RunComparison(true));
  EXPECT_EQ("", TraceBody());
}

TEST_F(VEKZOLGraphComparatorTimersEnvTest, EachRunTakesAndGivesBackASlotOfItsOwn) {
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  const uint32_t used = Peer::Used();
  const size_t free = Peer::FreeListLength(1000);
  comparator.RunComparison(false);
  EXPECT_EQ(used, Peer::Used());
  EXPECT_EQ(free, Peer::FreeListLength(1000));
  EXPECT_EQ(TimerLine("Graph - Run Comparison Timer", "0", "0") +
                TimerLine("Graph - Run Comparison Timer", "0", "0"),
            TraceBody());
}

TEST_F(VEKZOLGraphComparatorTimersEnvTest, TheIntersectionRunsForEachVertexWithParentsOnBothSides) {
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  const VEKZOLTimer& intersection = VEKZOLSTLServices::_IntersectionTimer;
  const long starts = Peer::StartCount(intersection);
  const long stops = Peer::StopCount(intersection);
  comparator.RunComparison(false);
  // K (Q against P) and Q (P against P); P is a root on both sides, L and G
  // are on one side only.
  EXPECT_EQ(starts + 2, Peer::StartCount(intersection));
  EXPECT_EQ(stops + 2, Peer::StopCount(intersection));
  std::deque<CString> moved;
  comparator.GetVerticesToBeMoved(moved);
  EXPECT_EQ(comparator_test::Ids{"K"}, comparator_test::IdsOf(moved));
}

TEST_F(VEKZOLGraphComparatorTimersEnvTest, ExtractionsReportTheirTimersAfterTheTemporaryBuild) {
  VEKZOLGraphComparator comparator(&newer.graph, &older.graph);
  comparator.RunComparison(false);
  FreshTrace();
  std::deque<CString> vertices;
  std::deque<CString> edges;
  EXPECT_EQ(E_FAIL, comparator.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(E_FAIL, comparator.GetRootsToRemove(vertices, edges));
  EXPECT_EQ(Line("Info:\t Build Graph -->") + Line("Info:\t Build Graph <--") +
                TimerLine("Graph - Get Roots To Add Timer", "0", "0") +
                Line("Info:\t Build Graph -->") + Line("Info:\t Build Graph <--") +
                TimerLine("Graph - Get Roots To Remove Timer", "0", "0"),
            TraceBody());
  EXPECT_EQ((comparator_test::Ids{"G"}), comparator_test::IdsOf(vertices));
  EXPECT_EQ((comparator_test::Ids{"K-L", "Q-K", "P-K"}), comparator_test::IdsOf(edges));
}

TEST_F(VEKZOLGraphComparatorTimersEnvTest, AnExtractionWithNothingToDoOrNoGraphReportsNothing) {
  VEKZOLGraph empty;
  VEKZOLGraphComparator same(&empty, &empty);
  same.RunComparison(false);
  std::deque<CString> vertices;
  std::deque<CString> edges;
  EXPECT_EQ(S_FALSE, same.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(S_FALSE, same.GetRootsToRemove(vertices, edges));
  comparator_test::ComparatorPeer orphan(&newer.graph, &older.graph);
  orphan.RunComparison(false);
  orphan.SetGraphs(nullptr, nullptr);
  FreshTrace();
  EXPECT_EQ(E_FAIL, orphan.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(E_FAIL, orphan.GetRootsToRemove(vertices, edges));
  EXPECT_EQ("", TraceBody());
  EXPECT_TRUE(vertices.empty());
  EXPECT_TRUE(edges.empty());
}

}  // namespace

namespace {

// On a generated model the intersection service is started and stopped
// once for each vertex in both graphs with parents on both sides, and its
// answers give the moved vertices the generator chose.
TEST(VEKZOLGraphComparatorTimersGeneratedTest,
     TheIntersectionRunsOncePerVertexWithParentsOnBothSides) {
  vekzol::comparison_model::GeneratorOptions options;
  options.elements = 3000;
  options.treeSize = 300;
  const auto model = vekzol::comparison_model::Generate(options);
  VEKZOLGraph oldGraph("old");
  VEKZOLGraph newGraph("new");
  oldGraph.Build(model->oldState.objectList, model->oldState.relationList);
  newGraph.Build(model->newState.objectList, model->newState.relationList);
  // What the service is to be asked about, read through the public
  // operations: vertices of both graphs whose parent lists are both filled.
  long expected = 0;
  std::deque<VEKZOLGraphVertex*> oldVertices;
  oldGraph.GetAllVertices(oldVertices);
  for (VEKZOLGraphVertex* oldVertex : oldVertices) {
    VEKZOLGraphVertex* newVertex = nullptr;
    newGraph.GetVertex(oldVertex->GetID(), newVertex);
    if (newVertex == nullptr) continue;
    std::deque<VEKZOLGraphVertex*> oldParents;
    std::deque<VEKZOLGraphVertex*> newParents;
    oldVertex->GetParents(oldParents);
    newVertex->GetParents(newParents);
    if (!oldParents.empty() && !newParents.empty()) ++expected;
  }
  ASSERT_GT(expected, 2000);
  const VEKZOLTimer& intersection = VEKZOLSTLServices::_IntersectionTimer;
  const long starts = Peer::StartCount(intersection);
  const long stops = Peer::StopCount(intersection);
  VEKZOLGraphComparator comparator(&newGraph, &oldGraph);
  comparator.RunComparison(false);
  EXPECT_EQ(starts + expected, Peer::StartCount(intersection));
  EXPECT_EQ(stops + expected, Peer::StopCount(intersection));
  std::deque<CString> moved;
  comparator.GetVerticesToBeMoved(moved);
  std::vector<std::string> movedIds;
  for (const CString& id : moved) movedIds.push_back(id.GetString());
  EXPECT_EQ(model->expected.verticesMoved, movedIds);
}

}  // namespace

// File: VEKZOLGraphComparatorAllocations_test.cpp
// A comparison run allocates nothing per vertex or edge: over two equal
// graphs (no list grows) the number of allocations of a run is the same
// at 300 and at 30,000 elements, with names checked or not. The program
// counts every allocation through the global operator new.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/platform/Status.h>

#include "ComparisonModelGenerator.h"
#include "platform/CountingAllocatorTesting.h"

namespace {

using vekzol::comparison_model::GeneratorOptions;

// Allocations of one run over two graphs built from the same state: the
// same objects, so every id, name and parent agrees and no list grows. The
// old graph's backup names are set to its names, so a check of names finds
// nothing either.
std::size_t AllocationsOfARun(int elements, bool checkNames) {
  GeneratorOptions options;
  options.elements = elements;
  const auto model = vekzol::comparison_model::Generate(options);
  auto& state = model->oldState;
  VEKZOLGraph oldGraph("old");
  VEKZOLGraph newGraph("new");
  oldGraph.Build(state.objectList, state.relationList);
  newGraph.Build(state.objectList, state.relationList);
  std::deque<VEKZOLGraphVertex*> vertices;
  oldGraph.GetAllVertices(vertices);
  for (VEKZOLGraphVertex* vertex : vertices) vertex->SetBackupName(vertex->GetName());

  VEKZOLGraphComparator comparator(&newGraph, &oldGraph);
  const std::size_t before = g_allocations;
  EXPECT_EQ(S_FALSE, comparator.RunComparison(checkNames));
  return g_allocations - before;
}

// What the first run of the process makes once (the timer's and the trace
// log's switches are read on first use) is not the run's own.
class VEKZOLGraphComparatorAllocationsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { AllocationsOfARun(300, true); }
};

TEST_F(VEKZOLGraphComparatorAllocationsTest, ARunAllocatesAsOftenAt30000ElementsAsAt300) {
  const std::size_t small = AllocationsOfARun(300, false);
  EXPECT_EQ(small, AllocationsOfARun(30000, false));
  EXPECT_LT(small, 40u);
}

TEST_F(VEKZOLGraphComparatorAllocationsTest, CheckingNamesAllocatesNothingPerVertex) {
  const std::size_t small = AllocationsOfARun(300, true);
  EXPECT_EQ(small, AllocationsOfARun(30000, true));
  EXPECT_LT(small, 40u);
}

}  // namespace

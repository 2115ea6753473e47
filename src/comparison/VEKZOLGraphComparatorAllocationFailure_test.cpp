// Memory running out at any allocation of a comparison: RunComparison,
// GetRootsToAdd and GetRootsToRemove raise the exception of the string
// class, CAtlException(E_OUTOFMEMORY), or of the list class, the standard
// std::bad_alloc, and nothing else; each list and each caller's deque holds
// a prefix of what the complete call gives; the graphs keep their links;
// the temporary graph of a root extraction is destroyed with every vertex
// and edge it made. Each test fails the first allocation of the call, then
// the second, and so on, until the call completes.
//
// The program replaces the global allocator. Under the sanitizer build the
// leak check sees every block that a failed call left behind.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <cstddef>
#include <deque>
#include <functional>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

#include "comparison/ComparatorTestSupport.h"
#include "platform/CountingAllocatorTesting.h"

namespace {

using comparator_test::ComparatorPeer;
using comparator_test::Ids;
using comparator_test::IdsOf;
using comparator_test::State;

bool IsPrefix(const Ids& part, const Ids& whole) {
  if (part.size() > whole.size()) return false;
  for (std::size_t i = 0; i < part.size(); ++i) {
    if (part[i] != whole[i]) return false;
  }
  return true;
}

// Two states with something of every kind: a vertex added (K) and one
// removed (D), a vertex moved (C, from A and B to K), parallel edges of
// which one is replaced (ab2 by ab3), an edge whose source is no vertex,
// and a cycle that no root reaches. A's backup name is its name, so a
// check of names lists every other vertex of the old graph.
class Comparison {
 public:
  Comparison() {
    Fill(oldState, false);
    Fill(newState, true);
    oldState.Build();
    newState.Build();
    VEKZOLGraphVertex* a = oldState.Vertex("A");
    a->SetBackupName(a->GetName());
    a->SetIdentPath("P/A");
  }

  State oldState;
  State newState;

 private:
  static void Fill(State& state, bool isNew) {
    auto* p = state.Object("P");
    auto* a = state.Object("A", "Alpha");
    auto* b = state.Object("B");
    auto* c = state.Object("C");
    auto* x = state.Object("x");
    auto* y = state.Object("y");
    auto* outside = state.model.Outside("outside");
    state.Relation("pa", p, a);
    state.Relation("pb", p, b);
    state.Relation("ab1", a, b);
    state.Relation("oa", outside, a);
    state.Relation("xy", x, y);
    state.Relation("yx", y, x);
    if (isNew) {
      auto* k = state.Object("K");
      state.Relation("pk", p, k);
      state.Relation("kc", k, c);
      state.Relation("ab3", a, b);
    } else {
      auto* d = state.Object("D");
      state.Relation("pd", p, d);
      state.Relation("ac", a, c);
      state.Relation("bc", b, c);
      state.Relation("ab2", a, b);
    }
  }
};

// The six lists of a comparator, one after the other.
std::vector<Ids> Lists(const ComparatorPeer& comparator) {
  return {comparator.Added(),   comparator.Removed(),    comparator.Moved(),
          comparator.Renamed(), comparator.EdgesAdded(), comparator.EdgesRemoved()};
}

const std::vector<Ids> kCompleteLists = {
    {"K"},                      // added
    {"D"},                      // removed
    {"C"},                      // moved
    {"B", "C", "P", "x", "y"},  // renamed: all but A, whose backup is its name
    {"ab3", "kc", "pk"},        // edges added
    {"ab2", "ac", "bc", "pd"},  // edges removed
};

class VEKZOLGraphComparatorAllocationFailureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // What the first run of the process sets up once (the switches of the
    // timers and of the trace log) is not the run's own.
    Comparison warmUp;
    ComparatorPeer comparator(&warmUp.newState.graph, &warmUp.oldState.graph);
    comparator.RunComparison(true);
    std::deque<CString> vertices;
    std::deque<CString> edges;
    comparator.GetRootsToAdd(vertices, edges);
  }
};

TEST_F(VEKZOLGraphComparatorAllocationFailureTest, RunComparisonKeepsAPrefixOfEachList) {
  const int vertices = VEKZOLGraphVertex::_RefCounter;
  const int edges = VEKZOLGraphEdge::_RefCounter;
  std::size_t failures = 0;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::string when = "after " + std::to_string(allowed) + " allocations";
    {
      Comparison comparison;
      const CString oldText = comparison.oldState.graph.ToString();
      const CString newText = comparison.newState.graph.ToString();
      ComparatorPeer comparator(&comparison.newState.graph, &comparison.oldState.graph);
      long status = E_INVALIDARG;
      HRESULT raised = S_OK;
      const Ending ending = RunFailingAfter(
          allowed, [&] { status = comparator.RunComparison(true); }, raised);
      const std::vector<Ids> lists = Lists(comparator);
      // The graphs keep their vertices, edges and links.
      EXPECT_STREQ(oldText.GetString(), comparison.oldState.graph.ToString().GetString()) << when;
      EXPECT_STREQ(newText.GetString(), comparison.newState.graph.ToString().GetString()) << when;
      if (ending == Ending::kCompleted) {
        EXPECT_EQ(S_OK, status) << when;
        EXPECT_EQ(kCompleteLists, lists) << when;
        EXPECT_STREQ("P/A", comparison.newState.Vertex("A")->GetIdentPath().GetString());
        break;
      }
      ++failures;
      ASSERT_TRUE(ending == Ending::kOutOfMemory || ending == Ending::kBadAlloc)
          << when << ", status " << raised;
      for (std::size_t i = 0; i < lists.size(); ++i) {
        EXPECT_TRUE(IsPrefix(lists[i], kCompleteLists[i])) << when << ", list " << i;
      }
    }
    EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter) << when;
    EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter) << when;
  }
  EXPECT_GT(failures, 10u);
}

// Roots to add: K hangs under P, which stays, so pk reports it; kc has its
// parent K; ab3 joins two vertices that stay. Roots to remove: D under P by
// pd; ac, bc and ab2 join vertices that stay.
TEST_F(VEKZOLGraphComparatorAllocationFailureTest, RootExtractionKeepsAPrefixAndFreesItsGraph) {
  struct Case {
    bool add;
    Ids vertices;
    Ids edges;
  };
  const Case cases[] = {
      {true, {}, {"ab3", "pk"}},
      {false, {}, {"ab2", "ac", "bc", "pd"}},
  };
  for (const Case& check : cases) {
    Comparison comparison;
    ComparatorPeer comparator(&comparison.newState.graph, &comparison.oldState.graph);
    ASSERT_EQ(S_OK, comparator.RunComparison(true));
    const std::vector<Ids> lists = Lists(comparator);
    const int vertices = VEKZOLGraphVertex::_RefCounter;
    const int edges = VEKZOLGraphEdge::_RefCounter;
    std::size_t failures = 0;
    for (std::size_t allowed = 0;; ++allowed) {
      const std::string when = std::string(check.add ? "add" : "remove") + " after " +
                               std::to_string(allowed) + " allocations";
      std::deque<CString> rootVertices;
      std::deque<CString> rootEdges;
      long status = S_OK;
      HRESULT raised = S_OK;
      const Ending ending = RunFailingAfter(
          allowed,
          [&] {
            status = check.add ? comparator.GetRootsToAdd(rootVertices, rootEdges)
                               : comparator.GetRootsToRemove(rootVertices, rootEdges);
          },
          raised);
      // The temporary graph is gone with all it made; the lists stay.
      EXPECT_EQ(vertices, VEKZOLGraphVertex::_RefCounter) << when;
      EXPECT_EQ(edges, VEKZOLGraphEdge::_RefCounter) << when;
      EXPECT_EQ(lists, Lists(comparator)) << when;
      if (ending == Ending::kCompleted) {
        EXPECT_EQ(E_FAIL, status) << when;
        EXPECT_EQ(check.vertices, IdsOf(rootVertices)) << when;
        EXPECT_EQ(check.edges, IdsOf(rootEdges)) << when;
        break;
      }
      ++failures;
      ASSERT_TRUE(ending == Ending::kOutOfMemory || ending == Ending::kBadAlloc)
          << when << ", status " << raised;
      EXPECT_TRUE(IsPrefix(IdsOf(rootVertices), check.vertices)) << when;
      EXPECT_TRUE(IsPrefix(IdsOf(rootEdges), check.edges)) << when;
    }
    EXPECT_GT(failures, 10u);
  }
}

}  // namespace

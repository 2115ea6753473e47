// Walks over a chain of a million process steps, on the default stack of
// the test process: GetAllChildren, GetAllLeaves and the tree lines of Dump
// give every vertex in order, and a cycle at the end of such a chain stops
// them with CAtlException(E_FAIL) after all that came before.
//
// The tree text of Dump grows with the square of the depth (two blanks per
// level on each line), so the million-deep tree is dumped through the
// protected Dump from a start level far below zero, where lines have no
// prefix; the public Dump and ToString are compared whole on a chain whose
// text stays small.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTestModel.h"

namespace {

using graph_test::GraphPeer;
using graph_test::Model;
using graph_test::RaisedStatus;

using VertexDeque = std::deque<VEKZOLGraphVertex*>;

constexpr int kDepth = 1000000;

CString IdOf(int index) {
  CString id;
  id.Format("v%07d", index);
  return id;
}

CString EdgeIdOf(int index) {
  CString id;
  id.Format("e%07d", index);
  return id;
}

// The objects of a chain v0 → v1 → ... of `depth` steps, with one relation
// per step.
std::unique_ptr<Model> ChainModel(int depth) {
  auto model = std::make_unique<Model>();
  VEKIZOLObject* previous = nullptr;
  for (int i = 0; i < depth; ++i) {
    VEKIZOLObject* object = model->Object(IdOf(i));
    if (previous != nullptr) {
      model->Relation(EdgeIdOf(i), previous, object);
    }
    previous = object;
  }
  return model;
}

// The number of positions from `first` on where `vertices` does not hold
// the vertex of objects[first], objects[first + 1], ... in that order.
std::size_t MismatchesAgainstChain(const VertexDeque& vertices, const Model& model,
                                   std::size_t first) {
  std::size_t mismatches = 0;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const std::size_t object = first + i;
    if (object >= model.objects.size() || vertices[i] == nullptr ||
        vertices[i]->GetObjectA() != model.objects[object]) {
      ++mismatches;
    }
  }
  return mismatches;
}

std::string ExpectedLines(int count) {
  std::string lines;
  lines.reserve(static_cast<std::size_t>(count) * 9);
  for (int i = 0; i < count; ++i) {
    lines += IdOf(i).GetString();
    lines += '\n';
  }
  return lines;
}

// One chain of a million steps for the suite: building it costs more than
// any of the walks.
class DeepChainTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    model_ = ChainModel(kDepth).release();
    graph_ = new GraphPeer("deep");
    graph_->Build(model_->objects, model_->relations);
  }
  static void TearDownTestSuite() {
    delete graph_;
    delete model_;
    graph_ = nullptr;
    model_ = nullptr;
  }

  static VEKZOLGraphVertex* Root() {
    VEKZOLGraphVertex* root = nullptr;
    EXPECT_EQ(S_OK, graph_->GetVertex(IdOf(0), root));
    return root;
  }

  static Model* model_;
  static GraphPeer* graph_;
};

Model* DeepChainTest::model_ = nullptr;
GraphPeer* DeepChainTest::graph_ = nullptr;

TEST_F(DeepChainTest, GetAllChildrenOfTheRootGivesEveryOtherStepInOrder) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph_->GetAllChildren(Root(), children));
  ASSERT_EQ(static_cast<std::size_t>(kDepth - 1), children.size());
  EXPECT_EQ(0u, MismatchesAgainstChain(children, *model_, 1));
}

TEST_F(DeepChainTest, GetAllChildrenByIdOfTheFirstEdgeStartsBelowItsChild) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, graph_->GetAllChildren(EdgeIdOf(1), children));
  ASSERT_EQ(static_cast<std::size_t>(kDepth - 2), children.size());
  EXPECT_EQ(0u, MismatchesAgainstChain(children, *model_, 2));
}

TEST_F(DeepChainTest, GetAllLeavesOfTheRootGivesTheLastStep) {
  VertexDeque leaves;
  EXPECT_EQ(E_FAIL, graph_->GetAllLeaves(IdOf(0), leaves));
  ASSERT_EQ(1u, leaves.size());
  EXPECT_EQ(model_->objects.back(), leaves[0]->GetObjectA());
}

TEST_F(DeepChainTest, ProtectedDumpGivesOneLinePerStepWithTheIndentOfItsLevel) {
  // Levels run from 2 - kDepth up to 1: only the last step is indented.
  CString text;
  EXPECT_EQ(E_FAIL, graph_->DumpVertex(Root(), text, 2 - kDepth));
  std::string expected = ExpectedLines(kDepth - 1);
  expected += "  |__";
  expected += IdOf(kDepth - 1).GetString();
  expected += "\n";
  ASSERT_EQ(expected.size(), static_cast<std::size_t>(text.GetLength()));
  EXPECT_TRUE(expected == text.GetString());
}

TEST_F(DeepChainTest, RootsAndLeavesOfTheChainAreItsTwoEnds) {
  VertexDeque roots, leaves;
  EXPECT_EQ(S_OK, graph_->GetRoots(roots));
  EXPECT_EQ(S_OK, graph_->GetLeaves(leaves));
  ASSERT_EQ(1u, roots.size());
  ASSERT_EQ(1u, leaves.size());
  EXPECT_EQ(model_->objects.front(), roots[0]->GetObjectA());
  EXPECT_EQ(model_->objects.back(), leaves[0]->GetObjectA());
}

// A chain of a million steps whose last step leads back to the middle one.
class DeepCycleTest : public ::testing::Test {
 protected:
  static constexpr int kBackTo = kDepth / 2;

  static void SetUpTestSuite() {
    model_ = ChainModel(kDepth).release();
    model_->Relation("back", model_->objects.back(), model_->objects[kBackTo]);
    graph_ = new GraphPeer("cycle");
    graph_->Build(model_->objects, model_->relations);
  }
  static void TearDownTestSuite() {
    delete graph_;
    delete model_;
    graph_ = nullptr;
    model_ = nullptr;
  }

  static VEKZOLGraphVertex* Root() {
    VEKZOLGraphVertex* root = nullptr;
    EXPECT_EQ(S_OK, graph_->GetVertex(IdOf(0), root));
    return root;
  }

  static Model* model_;
  static GraphPeer* graph_;
};

Model* DeepCycleTest::model_ = nullptr;
GraphPeer* DeepCycleTest::graph_ = nullptr;

TEST_F(DeepCycleTest, GetAllChildrenStopsAtTheCycleAfterTheWholeChainAndTheStepItLeadsBackTo) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph_->GetAllChildren(Root(), children); }));
  ASSERT_EQ(static_cast<std::size_t>(kDepth), children.size());
  VEKZOLGraphVertex* again = children.back();
  children.pop_back();
  EXPECT_EQ(0u, MismatchesAgainstChain(children, *model_, 1));
  EXPECT_EQ(model_->objects[kBackTo], again->GetObjectA());
}

TEST_F(DeepCycleTest, GetAllLeavesStopsAtTheCycleWithoutALeaf) {
  VertexDeque leaves;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph_->GetAllLeaves(IdOf(0), leaves); }));
  EXPECT_TRUE(leaves.empty());
}

TEST_F(DeepCycleTest, ProtectedDumpStopsAtTheCycleKeepingTheLinesOfTheWholeChain) {
  CString text;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph_->DumpVertex(Root(), text, -kDepth); }));
  const std::string expected = ExpectedLines(kDepth);
  ASSERT_EQ(expected.size(), static_cast<std::size_t>(text.GetLength()));
  EXPECT_TRUE(expected == text.GetString());
}

TEST_F(DeepCycleTest, WalkBelowTheCycleEntryFindsTheCycleThroughItsStart) {
  VertexDeque children;
  EXPECT_EQ(E_FAIL, RaisedStatus([&] { graph_->GetAllChildren(IdOf(kBackTo), children); }));
  ASSERT_EQ(static_cast<std::size_t>(kDepth - kBackTo), children.size());
  EXPECT_EQ(model_->objects[kBackTo], children.back()->GetObjectA());
  children.pop_back();
  EXPECT_EQ(0u, MismatchesAgainstChain(children, *model_, kBackTo + 1));
}

// The public texts of a chain deep enough to show the indentation at depth
// and short enough to compare whole.
TEST(DeepChainTextTest, DumpAndToStringOfAFourThousandStepChainAreExact) {
  constexpr int kSteps = 4000;
  auto model = ChainModel(kSteps);
  VEKZOLGraph graph("chain");
  graph.Build(model->objects, model->relations);
  std::string tree;
  for (int i = 0; i < kSteps; ++i) {
    if (i >= 1) {
      tree += std::string(2 * static_cast<std::size_t>(i), ' ');
      tree += "|__";
    }
    tree += IdOf(i).GetString();
    tree += "\n";
  }
  const std::string dump =
      "Graph: chain\n\n\tNb Vertices: 4000\n\tNb Edges: 3999\n\n\n" + tree + "\n\n";
  const CString dumped = graph.Dump();
  ASSERT_EQ(dump.size(), static_cast<std::size_t>(dumped.GetLength()));
  EXPECT_TRUE(dump == dumped.GetString());
  const CString listed = graph.ToString();
  const std::string listing(listed.GetString(), listed.GetLength());
  ASSERT_GT(listing.size(), dump.size());
  EXPECT_EQ(dump, listing.substr(listing.size() - dump.size()));
  const std::string head =
      "Graph:\n\n\tNb Vertices: 4000\n\tNb Edges: 3999\n\nVertice:\n\tName: v0000000\n";
  EXPECT_EQ(head, listing.substr(0, head.size()));
}

}  // namespace

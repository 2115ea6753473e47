// Tests of the measure of a graph's text forms: on every graph here the
// measured size is the length of the real Dump() and ToString(), a cycle
// reachable from a root is found exactly when the graph's walk stops on
// one, and sums beyond 64 bits saturate.
#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <vekzol/VEKZOLBase.h>

#include "GraphTextSize.h"
#include "ModelFile.h"
#include "ModelObject.h"
#include "ModelRelation.h"
#include "Phases.h"

namespace vekzol_tool {
namespace {

// The objects and relations of a test graph, kept as long as the graph.
class Model {
 public:
  explicit Model(const char* name = "test-graph")
      : name_(name), graph_(std::make_unique<VEKZOLGraph>(name_)) {}

  const CString& Name() const { return name_; }

  ModelObject* Object(const std::string& id, const std::string& name = "") {
    objects_.push_back(std::make_unique<ModelObject>(CString(id.c_str()), CString(name.c_str())));
    return objects_.back().get();
  }
  // Either end may be null: an end that names no object.
  void Relate(ModelObject* source, ModelObject* target) {
    const std::string id = "R-" + std::to_string(relations_.size() + 1000000);
    relations_.push_back(
        std::make_unique<ModelRelation>(CString(id.c_str()), CString("link"), source, target));
  }
  VEKZOLGraph& Build() {
    std::deque<VEKIZOLObject*> objects;
    std::deque<VEKIZOLRelation*> relations;
    for (auto& object : objects_) objects.push_back(object.get());
    for (auto& relation : relations_) relations.push_back(relation.get());
    graph_->Build(objects, relations);
    return *graph_;
  }

 private:
  std::vector<std::unique_ptr<ModelObject>> objects_;
  std::vector<std::unique_ptr<ModelRelation>> relations_;
  CString name_;
  std::unique_ptr<VEKZOLGraph> graph_;
};

// A chain of `length` vertices, "P<n>" each the parent of the next.
void AddChain(Model& model, int length) {
  ModelObject* previous = nullptr;
  for (int i = 0; i < length; ++i) {
    ModelObject* object = model.Object("P" + std::to_string(1000000 + i));
    if (previous != nullptr) model.Relate(previous, object);
    previous = object;
  }
}

// `diamonds` diamonds stacked: each joint splits into two vertices that
// join again, so the last joint is reached by 2^diamonds paths.
void AddDiamondStack(Model& model, int diamonds) {
  ModelObject* joint = model.Object("J000");
  for (int i = 0; i < diamonds; ++i) {
    const std::string level = std::to_string(100 + i);
    ModelObject* left = model.Object("L" + level);
    ModelObject* right = model.Object("R" + level);
    ModelObject* next = model.Object("J" + std::to_string(101 + i));
    model.Relate(joint, left);
    model.Relate(joint, right);
    model.Relate(left, next);
    model.Relate(right, next);
    joint = next;
  }
}

// The measure of both forms equals the length of the texts themselves.
void ExpectSizesOfTheTexts(VEKZOLGraph& graph, const CString& name) {
  const GraphTextSize dump = MeasureGraphText(graph, name, false);
  ASSERT_FALSE(dump.cycle);
  EXPECT_EQ(static_cast<std::uint64_t>(graph.Dump().GetLength()), dump.bytes);
  const GraphTextSize listing = MeasureGraphText(graph, name, true);
  ASSERT_FALSE(listing.cycle);
  EXPECT_EQ(static_cast<std::uint64_t>(graph.ToString().GetLength()), listing.bytes);
  EXPECT_EQ(dump.treeBytes, listing.treeBytes);
}

void ExpectSizesOfModelFile(const std::string& path) {
  SCOPED_TRACE(path);
  ModelFile model(path);
  PhaseTimes times;
  model.Load(times);
  model.Build();
  ExpectSizesOfTheTexts(model.Graph(), model.GraphName());
}

TEST(GraphTextSize, MatchesTheTextsOfTheExampleModels) {
  ExpectSizesOfModelFile(VEKZOL_EXAMPLES_DIR "/line-old.json");
  ExpectSizesOfModelFile(VEKZOL_EXAMPLES_DIR "/line-new.json");
}

TEST(GraphTextSize, MatchesTheTextsOfTheToolsTestModels) {
  // Duplicate ids and unknown ends; ids and names with quotes, control
  // characters and non-ASCII text.
  ExpectSizesOfModelFile(VEKZOL_TOOL_TEST_DATA_DIR "/duplicates.json");
  ExpectSizesOfModelFile(VEKZOL_TOOL_TEST_DATA_DIR "/escaping-old.json");
  ExpectSizesOfModelFile(VEKZOL_TOOL_TEST_DATA_DIR "/escaping-new.json");
}

TEST(GraphTextSize, FindsTheCycleOfTheToolsTestModel) {
  ModelFile model(VEKZOL_TOOL_TEST_DATA_DIR "/cycle.json");
  PhaseTimes times;
  model.Load(times);
  model.Build();
  EXPECT_TRUE(MeasureGraphText(model.Graph(), model.GraphName(), false).cycle);
  EXPECT_TRUE(MeasureGraphText(model.Graph(), model.GraphName(), true).cycle);
  EXPECT_THROW(model.Graph().Dump(), CAtlException);
}

TEST(GraphTextSize, CountsEachLineOfAShortChainExactly) {
  Model model("g");
  ModelObject* root = model.Object("R", "Root");
  ModelObject* a = model.Object("A", "Ab");
  ModelObject* b = model.Object("B");  // no name: the id stands in
  model.Relate(root, a);
  model.Relate(a, b);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  // "Root\n", "  |__Ab\n", "    |__B\n".
  EXPECT_EQ(22u, size.treeBytes);
  EXPECT_EQ(3u, size.treeLines);
  EXPECT_EQ(2u, size.depth);
  EXPECT_EQ(12u, size.indentBytes);
  EXPECT_EQ(3u, size.vertices);
  // "Graph: g\n\n\tNb Vertices: 3\n\tNb Edges: 2\n\n\n" and "\n\n" around it.
  EXPECT_EQ(10u + 16u + 13u + 2u + 22u + 2u, size.bytes);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, CountsParallelEdgesOncePerEdge) {
  Model model;
  ModelObject* root = model.Object("R", "Root");
  ModelObject* child = model.Object("C", "Child");
  ModelObject* grandchild = model.Object("G", "Grandchild");
  model.Relate(root, child);
  model.Relate(root, child);
  model.Relate(child, grandchild);
  model.Relate(child, grandchild);
  model.Relate(child, grandchild);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  EXPECT_EQ(1u + 2u + 6u, size.treeLines);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, AddsTheTreesOfSeveralRootsSharingVertices) {
  Model model;
  ModelObject* first = model.Object("A-root", "First");
  ModelObject* second = model.Object("B-root", "Second");
  ModelObject* shared = model.Object("S", "Shared");
  ModelObject* leaf = model.Object("T", "Leaf");
  model.Relate(first, shared);
  model.Relate(second, shared);
  model.Relate(shared, leaf);
  model.Object("Z-alone", "Alone");
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  EXPECT_EQ(3u + 3u + 1u, size.treeLines);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, SkipsRelationsWhoseEndsNameNoObject) {
  Model model;
  ModelObject* root = model.Object("R", "Root");
  ModelObject* child = model.Object("C", "Child");
  model.Relate(root, nullptr);
  model.Relate(root, child);
  model.Relate(nullptr, child);
  model.Relate(nullptr, nullptr);
  model.Relate(child, nullptr);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  EXPECT_EQ(2u, size.treeLines);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, FindsASelfLoopBelowARoot) {
  Model model;
  ModelObject* root = model.Object("R", "Root");
  ModelObject* loop = model.Object("L", "Loop");
  model.Relate(root, loop);
  model.Relate(loop, loop);
  VEKZOLGraph& graph = model.Build();
  EXPECT_TRUE(MeasureGraphText(graph, model.Name(), false).cycle);
  EXPECT_TRUE(MeasureGraphText(graph, model.Name(), true).cycle);
  EXPECT_THROW(graph.Dump(), CAtlException);
}

TEST(GraphTextSize, IgnoresACycleThatNoRootReaches) {
  Model model;
  model.Object("R", "Root");
  ModelObject* loop = model.Object("L", "Loop");
  ModelObject* other = model.Object("M", "Other");
  model.Relate(loop, loop);
  model.Relate(loop, other);
  model.Relate(other, loop);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  EXPECT_FALSE(size.cycle);
  EXPECT_EQ(1u, size.treeLines);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, FindsACycleBehindASharedVertex) {
  // The first root's tree is whole; the cycle is below the second root only.
  Model model;
  ModelObject* first = model.Object("A", "First");
  ModelObject* second = model.Object("B", "Second");
  ModelObject* shared = model.Object("S", "Shared");
  ModelObject* x = model.Object("X");
  ModelObject* y = model.Object("Y");
  model.Relate(first, shared);
  model.Relate(second, x);
  model.Relate(x, y);
  model.Relate(y, x);
  model.Relate(x, shared);
  VEKZOLGraph& graph = model.Build();
  EXPECT_TRUE(MeasureGraphText(graph, model.Name(), false).cycle);
  EXPECT_THROW(graph.Dump(), CAtlException);
}

TEST(GraphTextSize, MatchesTheTextsOfADeepChain) {
  Model model;
  AddChain(model, 3000);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  EXPECT_EQ(3000u, size.treeLines);
  EXPECT_EQ(2999u, size.depth);
  // Levels 1 to 2999: two blanks each and "|__".
  EXPECT_EQ(2u * (2999u * 3000u / 2u) + 3u * 2999u, size.indentBytes);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, MatchesTheTextsOfStackedDiamonds) {
  Model model;
  AddDiamondStack(model, 10);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize size = MeasureGraphText(graph, model.Name(), false);
  // k diamonds below a joint give 4 * (2^k - 1) lines below it.
  EXPECT_EQ(1u + 4u * ((1u << 10) - 1u), size.treeLines);
  EXPECT_EQ(20u, size.depth);
  ExpectSizesOfTheTexts(graph, model.Name());
}

TEST(GraphTextSize, SaturatesOnAStackOfDiamondsBeyond64Bits) {
  Model model;
  AddDiamondStack(model, 70);
  VEKZOLGraph& graph = model.Build();
  const GraphTextSize dump = MeasureGraphText(graph, model.Name(), false);
  EXPECT_FALSE(dump.cycle);
  EXPECT_EQ(kSaturated, dump.bytes);
  EXPECT_EQ(kSaturated, dump.treeBytes);
  EXPECT_EQ(kSaturated, dump.treeLines);
  EXPECT_EQ(kSaturated, dump.indentBytes);
  EXPECT_EQ(140u, dump.depth);
  EXPECT_EQ(211u, dump.vertices);
  EXPECT_EQ(kSaturated, MeasureGraphText(graph, model.Name(), true).bytes);
}

TEST(GraphTextSize, WritesSaturatedSizesAsLowerBounds) {
  EXPECT_EQ("0", SizeText(0));
  EXPECT_EQ("18446744073709551614", SizeText(kSaturated - 1));
  EXPECT_EQ("18446744073709551615 or more", SizeText(kSaturated));
}

TEST(GraphTextSize, MeasuresAGraphWithoutVertices) {
  Model model("empty");
  VEKZOLGraph& graph = model.Build();
  ExpectSizesOfTheTexts(graph, model.Name());
}

}  // namespace
}  // namespace vekzol_tool

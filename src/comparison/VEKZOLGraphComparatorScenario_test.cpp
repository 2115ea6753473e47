// File: VEKZOLGraphComparatorScenario_test.cpp
// Generated models of a few thousand elements: the six lists, both root
// lists and the ident paths written, against what the generator chose.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/platform/Status.h>

#include "ComparisonModelGenerator.h"

namespace {

using vekzol::comparison_model::GeneratorOptions;

std::vector<std::string> Strings(const std::deque<CString>& list) {
  std::vector<std::string> strings;
  for (const CString& id : list) strings.push_back(id.GetString());
  return strings;
}

void ExpectTheGeneratedAnswer(const GeneratorOptions& options) {
  const auto model = vekzol::comparison_model::Generate(options);
  auto& oldState = model->oldState;
  auto& newState = model->newState;
  VEKZOLGraph oldGraph("old");
  VEKZOLGraph newGraph("new");
  oldGraph.Build(oldState.objectList, oldState.relationList);
  newGraph.Build(newState.objectList, newState.relationList);
  vekzol::comparison_model::SetOldVertexTexts(*model, oldGraph);

  VEKZOLGraphComparator comparator(&newGraph, &oldGraph);
  ASSERT_EQ(S_OK, comparator.RunComparison(true));
  std::deque<CString> list;
  const auto& expected = model->expected;
  comparator.GetVerticesToBeAdded(list);
  EXPECT_EQ(expected.verticesAdded, Strings(list));
  list.clear();
  comparator.GetVerticesToBeRemoved(list);
  EXPECT_EQ(expected.verticesRemoved, Strings(list));
  list.clear();
  comparator.GetVerticesToBeMoved(list);
  EXPECT_EQ(expected.verticesMoved, Strings(list));
  list.clear();
  comparator.GetVerticesToChangeName(list);
  EXPECT_EQ(expected.verticesRenamed, Strings(list));
  list.clear();
  comparator.GetEdgesToBeAdded(list);
  EXPECT_EQ(expected.edgesAdded, Strings(list));
  list.clear();
  comparator.GetEdgesToBeRemoved(list);
  EXPECT_EQ(expected.edgesRemoved, Strings(list));

  std::deque<CString> vertices;
  std::deque<CString> edges;
  EXPECT_EQ(E_FAIL, comparator.GetRootsToAdd(vertices, edges));
  EXPECT_EQ(expected.rootVerticesToAdd, Strings(vertices));
  EXPECT_EQ(expected.rootEdgesToAdd, Strings(edges));
  vertices.clear();
  edges.clear();
  EXPECT_EQ(E_FAIL, comparator.GetRootsToRemove(vertices, edges));
  EXPECT_EQ(expected.rootVerticesToRemove, Strings(vertices));
  EXPECT_EQ(expected.rootEdgesToRemove, Strings(edges));

  // Every vertex in both graphs now carries its old vertex's ident path;
  // the added ones have none.
  std::deque<VEKZOLGraphVertex*> newVertices;
  newGraph.GetAllVertices(newVertices);
  size_t withPath = 0;
  for (VEKZOLGraphVertex* vertex : newVertices) {
    const std::string id = vertex->GetID().GetString();
    const std::string path = vertex->GetIdentPath().GetString();
    if (!path.empty()) {
      ++withPath;
      EXPECT_EQ("/" + id, path);
    }
  }
  EXPECT_EQ(newVertices.size() - expected.verticesAdded.size(), withPath);
}

TEST(VEKZOLGraphComparatorScenarioTest, AGeneratedModelGivesTheListsTheGeneratorChose) {
  GeneratorOptions options;
  options.elements = 3000;
  options.treeSize = 500;
  ExpectTheGeneratedAnswer(options);
}

TEST(VEKZOLGraphComparatorScenarioTest, AModelWithManyChangesAndSmallTreesGivesTheChosenLists) {
  GeneratorOptions options;
  options.elements = 4000;
  options.treeSize = 7;
  options.extraLinks = 0.3;
  options.removed = 0.1;
  options.added = 0.1;
  options.addedAsRoots = 0.3;
  options.moved = 0.1;
  options.renamed = 0.1;
  options.seed = 777;
  ExpectTheGeneratedAnswer(options);
}

TEST(VEKZOLGraphComparatorScenarioTest, TheGeneratorChoosesChangesOfEveryKind) {
  const auto model = vekzol::comparison_model::Generate(GeneratorOptions());
  const auto& expected = model->expected;
  EXPECT_EQ("PRC-0000000", model->ids[0]);
  EXPECT_EQ("PRD-0000001", model->ids[1]);
  EXPECT_EQ("RSC-0000002", model->ids[2]);
  EXPECT_EQ(3000u, model->oldState.objects.size());
  EXPECT_EQ(60u, expected.verticesAdded.size());
  EXPECT_FALSE(expected.verticesRemoved.empty());
  EXPECT_FALSE(expected.verticesMoved.empty());
  EXPECT_FALSE(expected.verticesRenamed.empty());
  EXPECT_FALSE(expected.rootVerticesToAdd.empty());
  EXPECT_FALSE(expected.rootEdgesToAdd.empty());
  EXPECT_FALSE(expected.rootEdgesToRemove.empty());
}

}  // namespace

namespace {

TEST(VEKZOLGraphComparatorScenarioTest, GuidShapedIdsGiveTheChosenLists) {
  GeneratorOptions options;
  options.elements = 4000;
  options.treeSize = 400;
  options.guidIds = true;
  options.seed = 4242;
  ExpectTheGeneratedAnswer(options);
}

}  // namespace

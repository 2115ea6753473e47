// File: GraphTestModel.h
// Test doubles and peers shared by the graph tests.
//
// TestObject and TestRelation let a test give the by-reference and the
// by-value GetID different answers (to see which form a caller uses), choose
// the status those calls return (to see that it is ignored), change an id
// after the fact, and count how often the ends of a relation are read.
// The peers open the protected state of the graph classes to the tests,
// for what no public operation reaches (a graph's name, null entries, the
// protected Dump). Model keeps the objects and relations of a test graph.
#ifndef VEKZOL_SRC_GRAPHS_GRAPHTESTMODEL_H_
#define VEKZOL_SRC_GRAPHS_GRAPHTESTMODEL_H_

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Status.h>

#include "graphs/IdMap.h"

namespace graph_test {

class TestObject final : public VEKIZOLObject {
 public:
  explicit TestObject(CString id, CString displayName = "")
      : m_RefFormID(id), m_ValueFormID(std::move(id)), m_DisplayName(std::move(displayName)) {}

  // Both forms of GetID answer `id` from now on.
  void SetID(const CString& id) {
    m_RefFormID = id;
    m_ValueFormID = id;
  }
  // The by-reference and the by-value GetID answer differently.
  void SetIDs(const CString& refFormID, const CString& valueFormID) {
    m_RefFormID = refFormID;
    m_ValueFormID = valueFormID;
  }
  // The status that the by-reference GetID returns (it still assigns).
  void SetIDStatus(long status) { m_IDStatus = status; }
  void SetDisplayName(const CString& name) { m_DisplayName = name; }

  CString GetID() override { return m_ValueFormID; }
  long GetID(CString& id) override {
    id = m_RefFormID;
    return m_IDStatus;
  }
  CString GetRefID() override { return CString(); }
  long GetRefID(CString& refId) override {
    refId.Empty();
    return S_OK;
  }
  long GetAttribute(const CString&, CComVariant&) override { return E_FAIL; }
  CString IsA() override { return "TestObject"; }
  CString GetDisplayName() override { return m_DisplayName; }
  long SetSCIID(const CString& sciid) override {
    m_SCIID = sciid;
    return S_OK;
  }
  CString GetSCIID() override { return m_SCIID; }
  long GetSCIID(CString& sciid) override {
    sciid = m_SCIID;
    return S_OK;
  }

 private:
  CString m_RefFormID;
  CString m_ValueFormID;
  CString m_DisplayName;
  CString m_SCIID;
  long m_IDStatus = S_OK;
};

class TestRelation final : public VEKIZOLRelation {
 public:
  TestRelation(CString id, VEKIZOLObject* source, VEKIZOLObject* target)
      : m_RefFormID(id), m_ValueFormID(std::move(id)), m_Source(source), m_Target(target) {}

  void SetIDs(const CString& refFormID, const CString& valueFormID) {
    m_RefFormID = refFormID;
    m_ValueFormID = valueFormID;
  }
  // The status that GetSourceObject/GetTargetObject return (they still
  // assign).
  void SetEndStatus(long status) { m_EndStatus = status; }
  // GetTargetObject raises CAtlException(E_FAIL) from now on, as a host's
  // relation may.
  void SetTargetRaises() { m_TargetRaises = true; }
  int SourceReads() const { return m_SourceReads; }
  int TargetReads() const { return m_TargetReads; }

  CString GetID() override { return m_ValueFormID; }
  long GetID(CString& id) override {
    id = m_RefFormID;
    return S_OK;
  }
  CString GetRefID() override { return CString(); }
  long GetRefID(CString& refId) override {
    refId.Empty();
    return S_OK;
  }
  long GetAttribute(const CString&, CComVariant&) override { return E_FAIL; }
  CString IsA() override { return "TestRelation"; }
  long GetSourceObject(VEKIZOLObject*& object) override {
    ++m_SourceReads;
    object = m_Source;
    return m_EndStatus;
  }
  long GetTargetObject(VEKIZOLObject*& object) override {
    ++m_TargetReads;
    if (m_TargetRaises) AtlThrow(E_FAIL);
    object = m_Target;
    return m_EndStatus;
  }
  long GetRelationType(CString& type) override {
    type = "test";
    return S_OK;
  }

 private:
  CString m_RefFormID;
  CString m_ValueFormID;
  VEKIZOLObject* m_Source;
  VEKIZOLObject* m_Target;
  long m_EndStatus = S_OK;
  bool m_TargetRaises = false;
  int m_SourceReads = 0;
  int m_TargetReads = 0;
};

// A graph whose name and map contents a test can see and seed.
class GraphPeer : public VEKZOLGraph {
 public:
  using VEKZOLGraph::VEKZOLGraph;
  // The copying constructor with its defaults (an inherited constructor is
  // not used for a copy from one argument).
  explicit GraphPeer(VEKZOLGraph& source) : VEKZOLGraph(source) {}

  const CString& Name() const { return m_Name; }
  std::vector<CString> VertexKeys() const {
    std::vector<CString> keys;
    for (const auto& entry : *m_Vertices) keys.push_back(entry.first);
    return keys;
  }
  std::vector<CString> EdgeKeys() const {
    std::vector<CString> keys;
    for (const auto& entry : *m_Edges) keys.push_back(entry.first);
    return keys;
  }
  // Puts `vertex`/`edge` (perhaps null) under `key`; the graph owns it then.
  void PutVertex(const CString& key, VEKZOLGraphVertex* vertex) { (*m_Vertices)[key] = vertex; }
  void PutEdge(const CString& key, VEKZOLGraphEdge* edge) { (*m_Edges)[key] = edge; }
  // The protected Dump of one vertex.
  long DumpVertex(VEKZOLGraphVertex* vertex, CString& text, int level) {
    return Dump(vertex, text, level);
  }
};

// A vertex whose edge lists a test fills directly, null entries included.
class VertexPeer : public VEKZOLGraphVertex {
 public:
  using VEKZOLGraphVertex::VEKZOLGraphVertex;

  void AppendChildEdge(VEKZOLGraphEdge* edge) { m_ChildEdges.push_back(edge); }
  void AppendParentEdge(VEKZOLGraphEdge* edge) { m_ParentEdges.push_back(edge); }
  void SetIsLeaf(bool isLeaf) { m_IsLeaf = isLeaf; }
};

// An edge whose ends a test sets directly.
class EdgePeer : public VEKZOLGraphEdge {
 public:
  using VEKZOLGraphEdge::VEKZOLGraphEdge;

  void SetEnds(VEKZOLGraphVertex* parent, VEKZOLGraphVertex* child) {
    m_Parent = parent;
    m_Child = child;
  }
};

// Objects and relations that a test declares by id, kept alive as long as
// the model, with the two deques that Build takes.
class Model {
 public:
  // A new object, listed in `objects`.
  TestObject* Object(const CString& id, const CString& displayName = "") {
    TestObject* object = Outside(id, displayName);
    objects.push_back(object);
    return object;
  }
  // A new object that is not listed, to stand at an end that the graph
  // does not know.
  TestObject* Outside(const CString& id, const CString& displayName = "") {
    m_Objects.push_back(std::make_unique<TestObject>(id, displayName));
    return m_Objects.back().get();
  }
  // A new relation from `source` to `target` (either may be null), listed
  // in `relations`.
  TestRelation* Relation(const CString& id, VEKIZOLObject* source, VEKIZOLObject* target) {
    m_Relations.push_back(std::make_unique<TestRelation>(id, source, target));
    relations.push_back(m_Relations.back().get());
    return m_Relations.back().get();
  }

  std::deque<VEKIZOLObject*> objects;
  std::deque<VEKIZOLRelation*> relations;

 private:
  std::vector<std::unique_ptr<TestObject>> m_Objects;
  std::vector<std::unique_ptr<TestRelation>> m_Relations;
};

// The ids of `vertices` (or edges) in order, "(null)" for a null entry, as
// standard strings so that a failure prints them.
template <typename Element>
std::vector<std::string> IdsOf(const std::deque<Element*>& elements) {
  std::vector<std::string> ids;
  for (Element* element : elements) {
    ids.push_back(element == nullptr ? "(null)" : element->GetID().GetString());
  }
  return ids;
}

// The status that the CAtlException raised by `call` carries; S_OK when
// `call` raises nothing.
template <typename Call>
long RaisedStatus(Call call) {
  try {
    call();
  } catch (const CAtlException& raised) {
    return raised.m_hr;
  }
  return S_OK;
}

// Adds `object` and expects a new vertex; the vertex, or null on failure.
inline VEKZOLGraphVertex* AddNewVertex(VEKZOLGraph& graph, VEKIZOLObject* object) {
  VEKZOLGraphVertex* vertex = nullptr;
  EXPECT_EQ(S_OK, graph.AddVertex(object, vertex));
  return vertex;
}

// Adds `relation` and expects a new edge; the edge, or null on failure.
inline VEKZOLGraphEdge* AddNewEdge(VEKZOLGraph& graph, VEKIZOLRelation* relation) {
  VEKZOLGraphEdge* edge = nullptr;
  EXPECT_EQ(S_OK, graph.AddEdge(relation, edge));
  return edge;
}

}  // namespace graph_test

#endif  // VEKZOL_SRC_GRAPHS_GRAPHTESTMODEL_H_

// File: VEKZOLGraph.cpp
// Building, copying and tearing down a graph. Vertices and edges are keyed
// by the ids their objects and relations gave when they were added; edges
// are linked to the vertices of their ends once, when they are added, by
// looking the ends' object ids up among the vertices present at that moment.
//
// Graphs of a million vertices are normal: the maps (IdMap.h) find an id by
// hash and keep the id order by sorting what was added at the next ordered
// read, so a build costs one hash probe per id and one sort, and the key is
// the id's own shared text, not a copy of it.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <memory>
#include <utility>
#include <vector>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphAccess.h"
#include "graphs/IdMap.h"
#include "graphs/MemoryFailure.h"

namespace {

using vekzol::graphs::RaiseMemoryFailure;
using VertexMap = vekzol::graphs::IdMap<VEKZOLGraphVertex>;
using EdgeMap = vekzol::graphs::IdMap<VEKZOLGraphEdge>;

// The entry of the vertex of `object` in `vertices`, matched by the
// object's id (the by-reference form, as AddVertex keys them); null for a
// null object, an id not in the graph or a null entry.
const VertexMap::Entry* FindVertexOf(const VertexMap& vertices, VEKIZOLObject* object) {
  if (object == nullptr) {
    return nullptr;
  }
  CString id;
  object->GetID(id);
  const auto* found = vertices.Find(id);
  return found == nullptr || found->second == nullptr ? nullptr : found;
}

// Deletes what the maps own, vertices first, each map in id order, and
// empties them.
void DeleteOwned(VertexMap& vertices, EdgeMap& edges) {
  for (const auto& entry : vertices) {
    delete entry.second;
  }
  for (const auto& entry : edges) {
    delete entry.second;
  }
  vertices.clear();
  edges.clear();
}

}  // namespace

VEKZOLGraph::VEKZOLGraph(CString name) : m_Vertices(nullptr), m_Edges(nullptr) {
  auto vertices = RaiseMemoryFailure([] { return std::make_unique<VertexMap>(); });
  // Edges are looked up by id far less often than vertices (whose ids every
  // relation's ends name): their map bisects its sorted entries and keeps a
  // hash table only for what was added since the last sort.
  auto edges = RaiseMemoryFailure([] { return std::make_unique<EdgeMap>(true); });
  m_Name = std::move(name);
  m_Vertices = vertices.release();
  m_Edges = edges.release();
}

// Links are not copied but made again from the relations: all vertices go in
// before the first edge, so every end present in the source is found, and
// the edge lists of each vertex follow the order of the edge ids.
VEKZOLGraph::VEKZOLGraph(VEKZOLGraph& source, CString name, bool keepIdentPaths)
    : VEKZOLGraph(std::move(name)) {
  // The delegated constructor has finished, so should a step below fail,
  // the destructor runs and frees what was made so far.
  m_Vertices->Reserve(source.m_Vertices->size());
  for (const auto& entry : *source.m_Vertices) {
    VEKZOLGraphVertex* sourceVertex = entry.second;
    if (sourceVertex == nullptr || sourceVertex->m_Object == nullptr) {
      continue;
    }
    VEKZOLGraphVertex* vertex = nullptr;
    AddVertex(sourceVertex->m_Object, vertex);
    if (vertex != nullptr && keepIdentPaths) {
      vertex->m_IdentPath = sourceVertex->m_IdentPath;
    }
  }
  m_Edges->Reserve(source.m_Edges->size());
  for (const auto& entry : *source.m_Edges) {
    VEKZOLGraphEdge* sourceEdge = entry.second;
    if (sourceEdge == nullptr || sourceEdge->m_Relation == nullptr) {
      continue;
    }
    VEKZOLGraphEdge* edge = nullptr;
    AddEdge(sourceEdge->m_Relation, edge);
  }
}

// Shares the other graph's vertices and edges; what this graph held is
// forgotten, not deleted (the caller destroys only one of the two).
VEKZOLGraph& VEKZOLGraph::operator=(const VEKZOLGraph& other) {
  if (this != &other) {
    *m_Vertices = *other.m_Vertices;
    *m_Edges = *other.m_Edges;
  }
  m_Name = other.m_Name;
  return *this;
}

VEKZOLGraph::~VEKZOLGraph() {
  m_Name.Empty();
  DeleteOwned(*m_Vertices, *m_Edges);
  delete m_Vertices;
  delete m_Edges;
}

long VEKZOLGraph::Build(std::deque<VEKIZOLObject*>& objects,
                        std::deque<VEKIZOLRelation*>& relations) {
  if (objects.empty() && relations.empty()) {
    return E_INVALIDARG;
  }
  RaiseMemoryFailure([&] {
    VEKZOLLog::WriteMsg("Info:\t Build Graph -->", 0);
    // Every vertex first, so that each edge finds its ends whatever the
    // order of the two lists. Duplicates are settled by AddVertex/AddEdge:
    // the first in each deque wins. The maps take room for all at once and
    // are sorted once at the end.
    m_Vertices->Reserve(objects.size());
    m_Edges->Reserve(relations.size());
    if (m_Vertices->empty()) {
      AddVerticesInIdOrder(objects);
    } else {
      for (VEKIZOLObject* object : objects) {
        if (object != nullptr) {
          VEKZOLGraphVertex* vertex = nullptr;
          AddVertex(object, vertex);
        }
      }
    }
    AddEdgesInBatches(relations);
    m_Vertices->Sort();
    m_Edges->Sort();
    VEKZOLLog::WriteMsg("Info:\t Build Graph <--", 0);
  });
  // A completed build answers E_FAIL: callers read the graph, not the status.
  return E_FAIL;
}

// A graph built from nothing makes its vertices in id order, so that they
// lie in memory in the order every walk and the comparison read them (the
// host's lists come in no order, and a vertex reached through a sorted walk
// would otherwise be a cache miss each). Each new id first enters the map
// with its object standing in for the vertex (the first object of an id
// wins, as with AddVertex); after the one sort the vertices are made in
// map order. If something fails half-way, the ids whose vertices were not
// made leave the map again, so the graph holds what was made so far.
void VEKZOLGraph::AddVerticesInIdOrder(std::deque<VEKIZOLObject*>& objects) {
  size_t made = 0;
  try {
    for (VEKIZOLObject* object : objects) {
      if (object == nullptr) {
        continue;
      }
      CString id;
      object->GetID(id);  // the status says nothing about the id
      const auto spot = m_Vertices->Locate(id);
      if (spot.entry == nullptr) {
        m_Vertices->Add(spot, id, reinterpret_cast<VEKZOLGraphVertex*>(object));
      }
    }
    const size_t count = m_Vertices->size();
    for (; made < count; ++made) {
      VEKZOLGraphVertex*& value = m_Vertices->ValueAt(made);
      value = new VEKZOLGraphVertex(reinterpret_cast<VEKIZOLObject*>(value));
    }
  } catch (...) {
    m_Vertices->Truncate(made);
    throw;
  }
}

long VEKZOLGraph::AddVertex(VEKIZOLObject* object, VEKZOLGraphVertex*& vertex) {
  if (object == nullptr) {
    return E_INVALIDARG;
  }
  CString id;
  object->GetID(id);  // the status says nothing about the id
  const auto spot = m_Vertices->Locate(id);
  if (spot.entry != nullptr) {
    // The first object with an id stays behind the vertex for good.
    vertex = spot.entry->second;
    return S_FALSE;
  }
  auto created =
      RaiseMemoryFailure([object] { return std::make_unique<VEKZOLGraphVertex>(object); });
  m_Vertices->Add(spot, id, created.get());
  vertex = created.release();
  return S_OK;
}

long VEKZOLGraph::AddEdge(VEKIZOLRelation* relation, VEKZOLGraphEdge*& edge) {
  if (relation == nullptr) {
    return E_INVALIDARG;
  }
  CString id = relation->GetID();
  const auto spot = m_Edges->Locate(id);
  if (spot.entry != nullptr) {
    // Already linked when it went in: the ends of this relation are not read.
    edge = spot.entry->second;
    return S_FALSE;
  }
  auto created =
      RaiseMemoryFailure([relation] { return std::make_unique<VEKZOLGraphEdge>(relation); });
  VEKZOLGraphEdge* added = created.get();
  m_Edges->Add(spot, id, added);
  created.release();
  edge = added;

  // Each end is resolved here and never again: a vertex added later does not
  // repair this edge. A missing end is no failure; the other end is linked
  // all the same.
  VEKIZOLObject* source = nullptr;
  relation->GetSourceObject(source);
  Access::LinkEnds(added, FindVertexOf(*m_Vertices, source), nullptr);
  VEKIZOLObject* target = nullptr;
  relation->GetTargetObject(target);
  Access::LinkEnds(added, nullptr, FindVertexOf(*m_Vertices, target));
  return S_OK;
}

namespace {

// A relation of a batch whose edge is added and whose ends are asked for:
// the ids its end objects answered, then their entries among the vertices.
struct PendingEdge {
  VEKZOLGraphEdge* edge = nullptr;
  CString ids[2];                  // source, target
  bool asked[2] = {false, false};  // the end object was there and told its id
  uint32_t hashes[2] = {0, 0};
  const VertexMap::Entry* found[2] = {nullptr, nullptr};
};

constexpr size_t kEdgeBatch = 64;

}  // namespace

// Build's edges, each relation as AddEdge adds it: the host is asked the
// same things in the same order (the relation's id; for a new id its
// source object and that object's id, then its target object and that
// object's id). What AddEdge does between those calls asks the host
// nothing: looking the ends' ids up among the vertices and linking. That
// part is done for a batch of relations at a time, in steps over the whole
// batch, each step asking memory ahead for the next one (the table slots,
// then the entries, then the vertices), because the relations come in no
// particular order and each look-up would otherwise wait for several cache
// misses in turn. The edges are linked in the relations' order, so every
// vertex's lists come out as from AddEdge.
//
// When something throws, the graph is left as AddEdge one by one would
// have left it: the relations asked so far are linked, and if linking
// itself fails, the edges of the batch that were not linked yet leave the
// graph again.
void VEKZOLGraph::AddEdgesInBatches(std::deque<VEKIZOLRelation*>& relations) {
  std::vector<PendingEdge> batch(kEdgeBatch);
  const auto linkBatch = [this, &batch](size_t count) {
    const VertexMap& vertices = *m_Vertices;
    for (size_t i = 0; i < count; ++i) {
      for (int end = 0; end < 2; ++end) {
        if (!batch[i].asked[end]) continue;
        batch[i].hashes[end] = vekzol::graphs::HashText(batch[i].ids[end].GetString());
        vertices.PrefetchSlot(batch[i].hashes[end]);
      }
    }
    for (size_t i = 0; i < count; ++i) {
      for (int end = 0; end < 2; ++end) {
        if (batch[i].asked[end]) vertices.PrefetchEntry(batch[i].hashes[end]);
      }
    }
    for (size_t i = 0; i < count; ++i) {
      for (int end = 0; end < 2; ++end) {
        if (!batch[i].asked[end]) continue;
        // As FindVertexOf answers: no link for a missing id or a null entry.
        const VertexMap::Entry* found =
            vertices.Locate(batch[i].ids[end], batch[i].hashes[end]).entry;
        if (found == nullptr || found->second == nullptr) continue;
        batch[i].found[end] = found;
        const char* vertex = reinterpret_cast<const char*>(found->second);
        __builtin_prefetch(vertex, 1);
        __builtin_prefetch(vertex + sizeof(VEKZOLGraphVertex) - 1, 1);
      }
    }
    size_t linked = 0;
    try {
      for (; linked < count; ++linked) {
        Access::LinkEnds(batch[linked].edge, batch[linked].found[0], batch[linked].found[1]);
      }
    } catch (...) {
      // The edge whose link failed stays, as AddEdge leaves it; the later
      // ones of the batch leave the graph, as if their relations had not
      // been reached.
      m_Edges->RemoveLast(count - linked - 1);
      for (size_t i = linked + 1; i < count; ++i) delete batch[i].edge;
      throw;
    }
  };
  auto next = relations.begin();
  while (next != relations.end()) {
    size_t count = 0;
    try {
      for (; next != relations.end() && count < kEdgeBatch; ++next) {
        VEKIZOLRelation* relation = *next;
        if (relation == nullptr) continue;
        CString id = relation->GetID();
        const auto spot = m_Edges->Locate(id);
        if (spot.entry != nullptr) continue;  // the first relation of an id stays
        auto created = std::make_unique<VEKZOLGraphEdge>(relation);
        m_Edges->Add(spot, id, created.get());
        PendingEdge& pending = batch[count++];
        pending = PendingEdge();
        pending.edge = created.release();
        VEKIZOLObject* source = nullptr;
        relation->GetSourceObject(source);
        if (source != nullptr) {
          source->GetID(pending.ids[0]);
          pending.asked[0] = true;
        }
        VEKIZOLObject* target = nullptr;
        relation->GetTargetObject(target);
        if (target != nullptr) {
          target->GetID(pending.ids[1]);
          pending.asked[1] = true;
        }
      }
    } catch (...) {
      linkBatch(count);
      throw;
    }
    linkBatch(count);
  }
}

long VEKZOLGraph::GetVertex(const CString& id, VEKZOLGraphVertex*& vertex) {
  if (id.IsEmpty()) {
    return E_INVALIDARG;
  }
  const auto* found = m_Vertices->Find(id);
  if (found == nullptr) {
    return E_FAIL;
  }
  vertex = found->second;
  return S_OK;
}

long VEKZOLGraph::GetEdge(const CString& id, VEKZOLGraphEdge*& edge) {
  if (id.IsEmpty()) {
    return E_INVALIDARG;
  }
  const auto* found = m_Edges->Find(id);
  if (found == nullptr) {
    return E_FAIL;
  }
  edge = found->second;
  return S_OK;
}

// Forgets without deleting: pointers held elsewhere stay valid, and their
// owner is now whoever holds them. The status is E_FAIL on every call.
long VEKZOLGraph::Cleanup() {
  m_Vertices->clear();
  m_Edges->clear();
  return E_FAIL;
}

// File: VEKZOLGraphVertex.cpp
// A vertex wraps one borrowed object. Its id and name are asked of the
// object on every call, so nothing here goes stale when the host renames an
// object; the edge lists are filled by VEKZOLGraph alone.
#include <vekzol/graphs/VEKZOLGraphVertex.h>

#include <cstdint>
#include <utility>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphTextPieces.h"
#include "graphs/MemoryFailure.h"

// Constant-initialised, so it reads 0 before any dynamic initialisation runs.
int VEKZOLGraphVertex::_RefCounter = 0;

namespace {

// The status rule shared by GetParents and GetChildren: the edge count, read
// as a 32-bit value, is compared with the whole deque as it stands after
// appending, not with what was appended. A deque that held something before,
// or an edge without a vertex at its far end, therefore gives E_FAIL.
long NeighbourStatus(std::uint32_t edgeCount, std::size_t dequeSize) {
  if (edgeCount == 0) {
    return S_FALSE;
  }
  return static_cast<std::size_t>(edgeCount) == dequeSize ? S_OK : E_FAIL;
}

}  // namespace

VEKZOLGraphVertex::VEKZOLGraphVertex(VEKIZOLObject* object)
    : m_Object(object), m_IsLeaf(true), m_IsRoot(true), m_RunPosition(0) {
  ++_RefCounter;
}

// A copy leaves the counter alone while its destructor still subtracts.
VEKZOLGraphVertex::VEKZOLGraphVertex(const VEKZOLGraphVertex& other)
    : m_Object(other.m_Object),
      m_ParentEdges(other.m_ParentEdges),
      m_ChildEdges(other.m_ChildEdges),
      m_IdentPath(other.m_IdentPath),
      m_BackupName(other.m_BackupName),
      m_IsLeaf(other.m_IsLeaf),
      m_IsRoot(other.m_IsRoot),
      m_RunPosition(0) {}

VEKZOLGraphVertex& VEKZOLGraphVertex::operator=(const VEKZOLGraphVertex& other) {
  m_Object = other.m_Object;
  m_ParentEdges = other.m_ParentEdges;
  m_ChildEdges = other.m_ChildEdges;
  m_IdentPath = other.m_IdentPath;
  m_BackupName = other.m_BackupName;
  m_IsLeaf = other.m_IsLeaf;
  m_IsRoot = other.m_IsRoot;
  return *this;
}

// Neither the object nor the edges are owned: they are only let go.
VEKZOLGraphVertex::~VEKZOLGraphVertex() {
  m_Object = nullptr;
  m_ParentEdges.clear();
  m_ChildEdges.clear();
  --_RefCounter;
}

CString VEKZOLGraphVertex::GetID() {
  CString id;
  if (m_Object != nullptr) {
    // The by-reference form is the one the graph keys vertices with; its
    // status carries nothing we could act on.
    m_Object->GetID(id);
  }
  return id;
}

VEKIZOLObject* VEKZOLGraphVertex::GetObjectA() { return m_Object; }

CString VEKZOLGraphVertex::GetName() {
  if (m_Object != nullptr) {
    CString name = m_Object->GetDisplayName();
    if (!name.IsEmpty()) {
      return name;
    }
  }
  return GetID();
}

VEKZOLGraphVertex* VEKZOLGraphVertex::GetParent() {
  if (m_ParentEdges.empty() || m_ParentEdges.front() == nullptr) {
    return nullptr;
  }
  return m_ParentEdges.front()->GetParent();
}

long VEKZOLGraphVertex::GetParents(std::deque<VEKZOLGraphVertex*>& parents) {
  const auto edgeCount = static_cast<std::uint32_t>(m_ParentEdges.size());
  vekzol::graphs::RaiseMemoryFailure([&] {
    for (VEKZOLGraphEdge* edge : m_ParentEdges) {
      if (edge != nullptr && edge->GetParent() != nullptr) {
        parents.push_back(edge->GetParent());
      }
    }
  });
  return NeighbourStatus(edgeCount, parents.size());
}

long VEKZOLGraphVertex::GetChildren(std::deque<VEKZOLGraphVertex*>& children) {
  const auto edgeCount = static_cast<std::uint32_t>(m_ChildEdges.size());
  vekzol::graphs::RaiseMemoryFailure([&] {
    for (VEKZOLGraphEdge* edge : m_ChildEdges) {
      if (edge != nullptr && edge->GetChild() != nullptr) {
        children.push_back(edge->GetChild());
      }
    }
  });
  return NeighbourStatus(edgeCount, children.size());
}

long VEKZOLGraphVertex::GetParentEdges(std::deque<VEKZOLGraphEdge*>& edges) {
  vekzol::graphs::RaiseMemoryFailure([&] {
    for (VEKZOLGraphEdge* edge : m_ParentEdges) {
      if (edge != nullptr) {
        edges.push_back(edge);
      }
    }
  });
  return m_ParentEdges.empty() ? S_FALSE : S_OK;
}

long VEKZOLGraphVertex::GetChildEdges(std::deque<VEKZOLGraphEdge*>& edges) {
  vekzol::graphs::RaiseMemoryFailure([&] {
    for (VEKZOLGraphEdge* edge : m_ChildEdges) {
      if (edge != nullptr) {
        edges.push_back(edge);
      }
    }
  });
  return m_ChildEdges.empty() ? S_FALSE : S_OK;
}

int VEKZOLGraphVertex::GetNbChildren() { return static_cast<int>(m_ChildEdges.size()); }

bool VEKZOLGraphVertex::IsLeaf() { return m_IsLeaf; }

bool VEKZOLGraphVertex::IsRoot() { return m_IsRoot; }

long VEKZOLGraphVertex::SetIdentPath(const CString& identPath) {
  m_IdentPath = identPath;
  return S_OK;
}

CString VEKZOLGraphVertex::GetIdentPath() { return m_IdentPath; }

void VEKZOLGraphVertex::SetBackupName(CString backupName) { m_BackupName = std::move(backupName); }

CString VEKZOLGraphVertex::GetBackupName() { return m_BackupName; }

CString VEKZOLGraphVertex::ToString() {
  CString text("Vertice:\n");
  text += "\tName: ";
  text += GetName();
  text += "\n";
  text += "\tNb Children: ";
  // Edges are counted, whether they reach a vertex or not.
  text += vekzol::graphs::CountText(m_ChildEdges.size());
  text += "\n";
  text += "\tParent: ";
  // Only the parent of the oldest incoming edge is shown, even with several.
  if (VEKZOLGraphVertex* parent = GetParent()) {
    text += "\tName: ";
    text += parent->GetName();
  }
  text += "\n";
  std::deque<VEKZOLGraphVertex*> children;
  GetChildren(children);
  for (VEKZOLGraphVertex* child : children) {
    if (child != nullptr) {
      text += "\tChild:  ";  // two blanks: the format has always had them
      text += "\tName: ";
      text += child->GetName();
      text += "\n";
    }
  }
  // The root and leaf flags are left out of the text.
  text += "\n";
  return text;
}

// File: VEKZOLGraphEdge.cpp
// An edge wraps one borrowed relation. Its two ends are set by VEKZOLGraph
// when the edge is added and stay null where no vertex was found then.
#include <vekzol/graphs/VEKZOLGraphEdge.h>

#include <vekzol/graphs/VEKZOLGraphVertex.h>

// Constant-initialised, so it reads 0 before any dynamic initialisation runs.
int VEKZOLGraphEdge::_RefCounter = 0;

VEKZOLGraphEdge::VEKZOLGraphEdge(VEKIZOLRelation* relation)
    : m_Relation(relation), m_Parent(nullptr), m_Child(nullptr), m_ParentIdHint(nullptr) {
  ++_RefCounter;
}

// A copy leaves the counter alone while its destructor still subtracts.
VEKZOLGraphEdge::VEKZOLGraphEdge(const VEKZOLGraphEdge& other)
    : m_Relation(other.m_Relation),
      m_Parent(other.m_Parent),
      m_Child(other.m_Child),
      m_ParentIdHint(other.m_ParentIdHint) {}

VEKZOLGraphEdge& VEKZOLGraphEdge::operator=(const VEKZOLGraphEdge& other) {
  m_Relation = other.m_Relation;
  m_Parent = other.m_Parent;
  m_Child = other.m_Child;
  m_ParentIdHint = other.m_ParentIdHint;
  return *this;
}

// The relation and the two vertices are borrowed: they are only let go.
VEKZOLGraphEdge::~VEKZOLGraphEdge() {
  m_Relation = nullptr;
  m_Parent = nullptr;
  m_Child = nullptr;
  --_RefCounter;
}

// The by-value form, which is also what the graph keys edges with.
CString VEKZOLGraphEdge::GetID() { return m_Relation != nullptr ? m_Relation->GetID() : CString(); }

CString VEKZOLGraphEdge::GetName() { return GetID(); }

VEKIZOLRelation* VEKZOLGraphEdge::GetRelation() { return m_Relation; }

VEKZOLGraphVertex* VEKZOLGraphEdge::GetParent() { return m_Parent; }

VEKZOLGraphVertex* VEKZOLGraphEdge::GetChild() { return m_Child; }

// A missing end writes its label and nothing after it, not even a line
// feed: an edge without parent vertex has "\tParent: " and "\tChild:  " on
// one line, and one without child vertex ends without a line feed.
CString VEKZOLGraphEdge::ToString() {
  CString text("Edge:\n");
  text += "\tName: ";
  text += GetName();
  text += "\n";
  text += "\tParent: ";
  if (m_Parent != nullptr) {
    text += "\tName: ";
    text += m_Parent->GetName();
    text += "\n";
  }
  text += "\tChild:  ";
  if (m_Child != nullptr) {
    text += "\tName: ";
    text += m_Child->GetName();
    text += "\n";
  }
  return text;
}

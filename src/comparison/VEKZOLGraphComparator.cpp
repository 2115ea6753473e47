// File: VEKZOLGraphComparator.cpp
// The comparator's life cycle and its six getters. The comparator borrows
// its graphs and owns only its lists of ids; copies share the graphs.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <vekzol/platform/Status.h>

namespace {

// What every getter does on its own list: append copies in list order to
// the caller's deque, which is not cleared. The answer is E_FAIL whether or
// not anything was appended; callers read the deque.
long AppendCopies(const std::deque<CString>& list, std::deque<CString>& ids) {
  for (const CString& id : list) {
    ids.push_back(id);
  }
  return E_FAIL;
}

}  // namespace

VEKZOLGraphComparator::VEKZOLGraphComparator(VEKZOLGraph* newGraph, VEKZOLGraph* oldGraph)
    : m_NewGraph(newGraph), m_OldGraph(oldGraph) {}

VEKZOLGraphComparator::VEKZOLGraphComparator(const VEKZOLGraphComparator& other)
    : m_VerticesToBeAdded(other.m_VerticesToBeAdded),
      m_VerticesToBeRemoved(other.m_VerticesToBeRemoved),
      m_VerticesToBeMoved(other.m_VerticesToBeMoved),
      m_VerticesToChangeName(other.m_VerticesToChangeName),
      m_EdgesToBeAdded(other.m_EdgesToBeAdded),
      m_EdgesToBeRemoved(other.m_EdgesToBeRemoved),
      m_NewGraph(other.m_NewGraph),
      m_OldGraph(other.m_OldGraph) {}

VEKZOLGraphComparator& VEKZOLGraphComparator::operator=(const VEKZOLGraphComparator& other) {
  m_VerticesToBeAdded = other.m_VerticesToBeAdded;
  m_VerticesToBeRemoved = other.m_VerticesToBeRemoved;
  m_VerticesToBeMoved = other.m_VerticesToBeMoved;
  m_VerticesToChangeName = other.m_VerticesToChangeName;
  m_EdgesToBeAdded = other.m_EdgesToBeAdded;
  m_EdgesToBeRemoved = other.m_EdgesToBeRemoved;
  m_NewGraph = other.m_NewGraph;
  m_OldGraph = other.m_OldGraph;
  return *this;
}

// The graphs are the host's: they are only forgotten. The lists go with the
// members.
VEKZOLGraphComparator::~VEKZOLGraphComparator() {
  m_NewGraph = nullptr;
  m_OldGraph = nullptr;
}

long VEKZOLGraphComparator::GetVerticesToBeAdded(std::deque<CString>& ids) {
  return AppendCopies(m_VerticesToBeAdded, ids);
}

long VEKZOLGraphComparator::GetVerticesToBeRemoved(std::deque<CString>& ids) {
  return AppendCopies(m_VerticesToBeRemoved, ids);
}

long VEKZOLGraphComparator::GetVerticesToBeMoved(std::deque<CString>& ids) {
  return AppendCopies(m_VerticesToBeMoved, ids);
}

long VEKZOLGraphComparator::GetVerticesToChangeName(std::deque<CString>& ids) {
  return AppendCopies(m_VerticesToChangeName, ids);
}

long VEKZOLGraphComparator::GetEdgesToBeAdded(std::deque<CString>& ids) {
  return AppendCopies(m_EdgesToBeAdded, ids);
}

long VEKZOLGraphComparator::GetEdgesToBeRemoved(std::deque<CString>& ids) {
  return AppendCopies(m_EdgesToBeRemoved, ids);
}

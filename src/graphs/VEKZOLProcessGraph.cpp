// File: VEKZOLProcessGraph.cpp
// Each operation forwards to the base and drops the base's status: the
// process operations answer E_FAIL in every case, and their callers read the
// deques.
#include <vekzol/graphs/VEKZOLProcessGraph.h>

#include <utility>

#include <vekzol/platform/Status.h>

VEKZOLProcessGraph::VEKZOLProcessGraph(CString name) : VEKZOLGraph(std::move(name)) {}

VEKZOLProcessGraph::VEKZOLProcessGraph(VEKZOLProcessGraph& source)
    : VEKZOLGraph(source, "", false) {}

VEKZOLProcessGraph& VEKZOLProcessGraph::operator=(const VEKZOLProcessGraph& other) {
  VEKZOLGraph::operator=(other);
  return *this;
}

VEKZOLProcessGraph::~VEKZOLProcessGraph() = default;

long VEKZOLProcessGraph::Build(std::deque<VEKIZOLObject*>& objects,
                               std::deque<VEKIZOLRelation*>& relations) {
  VEKZOLGraph::Build(objects, relations);
  return E_FAIL;
}

long VEKZOLProcessGraph::Cleanup() {
  VEKZOLGraph::Cleanup();
  return E_FAIL;
}

long VEKZOLProcessGraph::GetStartingProcesses(std::deque<VEKZOLGraphVertex*>& processes) {
  GetRoots(processes);
  return E_FAIL;
}

long VEKZOLProcessGraph::GetEndingProcesses(std::deque<VEKZOLGraphVertex*>& processes) {
  GetLeaves(processes);
  return E_FAIL;
}

long VEKZOLProcessGraph::GetNextProcesses(VEKZOLGraphVertex* process,
                                          std::deque<VEKZOLGraphVertex*>& processes) {
  if (process == nullptr) {
    return E_INVALIDARG;
  }
  process->GetChildren(processes);
  return E_FAIL;
}

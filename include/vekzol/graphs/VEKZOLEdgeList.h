// File: VEKZOLEdgeList.h
// VEKZOLEdgeList: the list of incoming or outgoing edges of a vertex, in the
// order they were attached. Most vertices of a model have one parent and
// few children, so the list is one pointer wide: empty, one edge held in
// place, or (tagged in its lowest bit) a heap block with a count, a
// capacity and the edges. One edge costs no allocation; more grow the block
// by half each time.
//
// Copies hold the same edge pointers in a block of their own; the edges are
// never owned. A failed allocation raises CAtlException(E_OUTOFMEMORY) and
// leaves the list as it was. Not synchronised.
#ifndef VEKZOL_GRAPHS_VEKZOLEDGELIST_H_
#define VEKZOL_GRAPHS_VEKZOLEDGELIST_H_

#include <cstddef>
#include <cstdint>

#include <vekzol/platform/Export.h>

class VEKZOLGraphEdge;

class VEKZOL_API VEKZOLEdgeList {
 public:
  VEKZOLEdgeList() noexcept : m_Head(nullptr) {}
  VEKZOLEdgeList(const VEKZOLEdgeList& other);
  VEKZOLEdgeList& operator=(const VEKZOLEdgeList& other);
  ~VEKZOLEdgeList();

  bool empty() const noexcept { return m_Head == nullptr; }
  size_t size() const noexcept {
    if (m_Head == nullptr) return 0;
    return IsBlock() ? BlockOf()->size : 1;
  }
  // The edges, oldest first, null entries included.
  VEKZOLGraphEdge* const* begin() const noexcept { return IsBlock() ? ItemsOf() : &m_Head; }
  VEKZOLGraphEdge* const* end() const noexcept { return begin() + size(); }
  VEKZOLGraphEdge* operator[](size_t index) const noexcept { return begin()[index]; }
  VEKZOLGraphEdge* front() const noexcept { return begin()[0]; }

  // Appends `edge`, null too.
  void push_back(VEKZOLGraphEdge* edge);
  void clear() noexcept;

 private:
  struct Block {
    uint32_t size;
    uint32_t capacity;
  };

  bool IsBlock() const noexcept { return (reinterpret_cast<uintptr_t>(m_Head) & 1u) != 0; }
  Block* BlockOf() const noexcept {
    return reinterpret_cast<Block*>(reinterpret_cast<uintptr_t>(m_Head) & ~uintptr_t{1});
  }
  VEKZOLGraphEdge** ItemsOf() const noexcept {
    return reinterpret_cast<VEKZOLGraphEdge**>(BlockOf() + 1);
  }
  static Block* NewBlock(uint32_t capacity);

  // Null when empty; the one edge; or a Block address with the lowest bit
  // set.
  VEKZOLGraphEdge* m_Head;
};

#endif  // VEKZOL_GRAPHS_VEKZOLEDGELIST_H_

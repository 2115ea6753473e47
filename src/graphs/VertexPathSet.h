// File: VertexPathSet.h
// The set of vertices on the current path of a depth-first walk, so that a
// walk can tell in constant time that the child it is about to enter is
// already one of its ancestors (a cycle).
//
// An open-addressing table of pointers with linear probing: no allocation
// per vertex, and a path of a million vertices costs one table of two
// million pointers. Deletion shifts the following entries back instead of
// leaving tombstones, since a walk inserts and erases every vertex it
// passes through.
#ifndef VEKZOL_SRC_GRAPHS_VERTEXPATHSET_H_
#define VEKZOL_SRC_GRAPHS_VERTEXPATHSET_H_

#include <cstddef>
#include <vector>

class VEKZOLGraphVertex;

namespace vekzol {
namespace graphs {

class VertexPathSet {
 public:
  VertexPathSet();

  bool Contains(const VEKZOLGraphVertex* vertex) const;
  // `vertex` is non-null and not in the set yet.
  void Insert(const VEKZOLGraphVertex* vertex);
  // `vertex` is in the set.
  void Erase(const VEKZOLGraphVertex* vertex);
  std::size_t Size() const { return m_Count; }

 private:
  std::size_t HomeOf(const VEKZOLGraphVertex* vertex) const;
  std::size_t SlotOf(const VEKZOLGraphVertex* vertex) const;
  void Grow();

  // Null marks a free slot. The size is a power of two, at least twice the
  // number of entries, so that probe runs stay short.
  std::vector<const VEKZOLGraphVertex*> m_Slots;
  std::size_t m_Count;
  unsigned m_Shift;
};

}  // namespace graphs
}  // namespace vekzol

#endif  // VEKZOL_SRC_GRAPHS_VERTEXPATHSET_H_

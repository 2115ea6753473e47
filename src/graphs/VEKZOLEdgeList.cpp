// File: VEKZOLEdgeList.cpp
// The growing and copying of an edge list. Blocks come from operator new,
// so that a host's or a test's allocator sees them, and their capacities
// are chosen so that each block fills the allocator's chunk: a header of 8
// bytes and an even number of edges.
#include <vekzol/graphs/VEKZOLEdgeList.h>

#include <cstring>
#include <limits>
#include <new>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

namespace {

// The next capacity: half as large again, even, at least 2.
uint32_t GrownCapacity(uint32_t capacity) {
  const uint64_t grown = static_cast<uint64_t>(capacity) + capacity / 2 + 2;
  if (grown > std::numeric_limits<uint32_t>::max() / 2) AtlThrow(E_OUTOFMEMORY);
  return static_cast<uint32_t>(grown) & ~1u;
}

}  // namespace

VEKZOLEdgeList::Block* VEKZOLEdgeList::NewBlock(uint32_t capacity) {
  void* memory = nullptr;
  try {
    memory = ::operator new(sizeof(Block) + sizeof(VEKZOLGraphEdge*) * capacity);
  } catch (const std::bad_alloc&) {
    AtlThrow(E_OUTOFMEMORY);
  }
  Block* block = new (memory) Block;
  block->size = 0;
  block->capacity = capacity;
  return block;
}

VEKZOLEdgeList::VEKZOLEdgeList(const VEKZOLEdgeList& other) : m_Head(nullptr) {
  if (!other.IsBlock()) {
    m_Head = other.m_Head;
    return;
  }
  const Block* source = other.BlockOf();
  Block* block = NewBlock(source->size < 2 ? 2 : (source->size + 1) & ~1u);
  std::memcpy(reinterpret_cast<VEKZOLGraphEdge**>(block + 1), other.ItemsOf(),
              sizeof(VEKZOLGraphEdge*) * source->size);
  block->size = source->size;
  m_Head = reinterpret_cast<VEKZOLGraphEdge*>(reinterpret_cast<uintptr_t>(block) | 1u);
}

VEKZOLEdgeList& VEKZOLEdgeList::operator=(const VEKZOLEdgeList& other) {
  if (this != &other) {
    VEKZOLEdgeList copy(other);
    clear();
    m_Head = copy.m_Head;
    copy.m_Head = nullptr;
  }
  return *this;
}

VEKZOLEdgeList::~VEKZOLEdgeList() { clear(); }

void VEKZOLEdgeList::push_back(VEKZOLGraphEdge* edge) {
  if (m_Head == nullptr && edge != nullptr) {
    m_Head = edge;  // one edge, held in place
    return;
  }
  const uint32_t size = static_cast<uint32_t>(this->size());
  if (IsBlock() && BlockOf()->size < BlockOf()->capacity) {
    ItemsOf()[size] = edge;
    ++BlockOf()->size;
    return;
  }
  // A larger block, filled before it replaces the old one.
  Block* block = NewBlock(GrownCapacity(size));
  VEKZOLGraphEdge** items = reinterpret_cast<VEKZOLGraphEdge**>(block + 1);
  std::memcpy(items, begin(), sizeof(VEKZOLGraphEdge*) * size);
  items[size] = edge;
  block->size = size + 1;
  clear();
  m_Head = reinterpret_cast<VEKZOLGraphEdge*>(reinterpret_cast<uintptr_t>(block) | 1u);
}

void VEKZOLEdgeList::clear() noexcept {
  if (IsBlock()) {
    Block* block = BlockOf();
    block->~Block();
    ::operator delete(block);
  }
  m_Head = nullptr;
}

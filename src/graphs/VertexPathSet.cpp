// File: VertexPathSet.cpp
#include "graphs/VertexPathSet.h"

#include <cstdint>

namespace vekzol {
namespace graphs {

namespace {

constexpr unsigned kInitialBits = 4;

}  // namespace

VertexPathSet::VertexPathSet()
    : m_Slots(std::size_t{1} << kInitialBits), m_Count(0), m_Shift(64 - kInitialBits) {}

// Fibonacci hashing: the multiplication spreads the address bits (vertices
// are heap blocks with equal low bits) and the top bits pick the slot.
std::size_t VertexPathSet::HomeOf(const VEKZOLGraphVertex* vertex) const {
  const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(vertex));
  return static_cast<std::size_t>((address * 0x9E3779B97F4A7C15ull) >> m_Shift);
}

// The slot that holds `vertex`, or the free slot that ends its probe run.
std::size_t VertexPathSet::SlotOf(const VEKZOLGraphVertex* vertex) const {
  const std::size_t mask = m_Slots.size() - 1;
  std::size_t slot = HomeOf(vertex);
  while (m_Slots[slot] != nullptr && m_Slots[slot] != vertex) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

bool VertexPathSet::Contains(const VEKZOLGraphVertex* vertex) const {
  return m_Slots[SlotOf(vertex)] != nullptr;
}

void VertexPathSet::Insert(const VEKZOLGraphVertex* vertex) {
  if (2 * (m_Count + 1) > m_Slots.size()) {
    Grow();
  }
  m_Slots[SlotOf(vertex)] = vertex;
  ++m_Count;
}

void VertexPathSet::Erase(const VEKZOLGraphVertex* vertex) {
  const std::size_t mask = m_Slots.size() - 1;
  std::size_t gap = SlotOf(vertex);
  m_Slots[gap] = nullptr;
  --m_Count;
  // Close the gap: an entry further along the run moves into it when its
  // home slot does not lie between the gap and where it stands, since a
  // probe from its home would otherwise stop at the gap.
  for (std::size_t slot = (gap + 1) & mask; m_Slots[slot] != nullptr; slot = (slot + 1) & mask) {
    const std::size_t home = HomeOf(m_Slots[slot]);
    if (((slot - home) & mask) >= ((slot - gap) & mask)) {
      m_Slots[gap] = m_Slots[slot];
      m_Slots[slot] = nullptr;
      gap = slot;
    }
  }
}

void VertexPathSet::Grow() {
  std::vector<const VEKZOLGraphVertex*> old(m_Slots.size() * 2, nullptr);
  old.swap(m_Slots);
  --m_Shift;
  for (const VEKZOLGraphVertex* vertex : old) {
    if (vertex != nullptr) {
      m_Slots[SlotOf(vertex)] = vertex;
    }
  }
}

}  // namespace graphs
}  // namespace vekzol

// File: IdMap.h
// IdMap: the map from id to vertex or edge that each graph keeps twice.
// It answers what an ordered map of CString keys answers (iteration in
// ascending `_mbscmp` order, exact case-sensitive look-up, the first entry
// of a key wins) at the pace of flat arrays:
//
// - The entries lie in one vector: a sorted prefix, then the entries added
//   since the last ordered read, in the order they came. The first ordered
//   read (begin, end, Sort) sorts that tail and merges it into the prefix,
//   so a bulk build sorts once and the merge is paid by the read, which
//   walks every entry anyway. An entry added above the last sorted key
//   extends the prefix at once, so ids added in order never need a sort.
// - An open-addressing table finds a key in O(1), sorted or not: linear
//   probing, at most four fifths full, 4 bytes a slot holding the entry's
//   index and, in the bits the index leaves free, a few bits of the key's
//   hash, so a probe passes most other keys without reading them. It is
//   rebuilt after a sort and when it grows, from hashes of the keys.
//
// A map may instead keep its table for the unsorted tail only
// (`hashTailOnly`): after a sort the table is given back and the sorted
// prefix is searched by bisection, in O(log n). The graph's edge map does
// so, since edges are looked up by id rarely and its table would cost four
// to five bytes an edge for good.
//
// Keys compare and hash up to their first NUL, as `_mbscmp` compares, so
// two keys that `_mbscmp` calls equal are one key here too. Values are
// borrowed pointers and may be null. Not synchronised: a const read may
// sort, like every read of the graph's maps on one thread at a time.
#ifndef VEKZOL_SRC_GRAPHS_IDMAP_H_
#define VEKZOL_SRC_GRAPHS_IDMAP_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Status.h>

#include "platform/TextOrder.h"

namespace vekzol {
namespace graphs {

// A hash of the bytes of `text` up to its first NUL. The text must be a
// CString's, padded with NULs to a multiple of eight bytes.
inline uint32_t HashText(const char* text) noexcept {
  constexpr uint64_t kOnes = 0x0101010101010101ull;
  constexpr uint64_t kHighs = 0x8080808080808080ull;
  constexpr uint64_t kMultiplier = 0x9E3779B97F4A7C15ull;
  uint64_t hash = 0x243F6A8885A308D3ull;
  for (size_t i = 0;; i += 8) {
    uint64_t word;
    std::memcpy(&word, text + i, 8);
    const uint64_t zeros = (word - kOnes) & ~word & kHighs;
    if (zeros != 0) {
      // Only the bytes before the first NUL count.
      const unsigned nul = static_cast<unsigned>(__builtin_ctzll(zeros)) & ~7u;
      word = nul == 0 ? 0 : (word & (~0ull >> (64 - nul)));
      hash = (hash ^ word ^ (i + nul / 8)) * kMultiplier;
      break;
    }
    hash = (hash ^ word) * kMultiplier;
    hash ^= hash >> 29;
  }
  hash ^= hash >> 32;
  hash *= 0xFF51AFD7ED558CCDull;
  hash ^= hash >> 29;
  return static_cast<uint32_t>(hash);
}

template <typename Value>
class IdMap {
 public:
  // Named as the entries of a standard map, so a walk reads the same.
  struct Entry {
    CString first;
    Value* second;
  };

  explicit IdMap(bool hashTailOnly = false) : m_HashTailOnly(hashTailOnly) {}
  IdMap(const IdMap&) = default;
  IdMap& operator=(const IdMap&) = default;

  size_t size() const noexcept { return m_Entries.size(); }
  bool empty() const noexcept { return m_Entries.empty(); }

  // The entries in ascending id order. The first ordered read after an
  // insertion sorts; pointers stay valid until the next insertion.
  const Entry* begin() const {
    Sort();
    return m_Entries.data();
  }
  const Entry* end() const {
    Sort();
    return m_Entries.data() + m_Entries.size();
  }

  // Where `id` stands or would stand: its entry, or null and the empty
  // slot that Add fills. Never sorts.
  struct Spot {
    const Entry* entry;
    uint32_t hash;
    size_t slot;
  };
  Spot Locate(const CString& id) const noexcept { return Locate(id, HashText(id.GetString())); }

  // Locate for an id whose HashText is known.
  Spot Locate(const CString& id, uint32_t hash) const noexcept {
    if (m_HashTailOnly && m_SortedCount > 0) {
      const Entry* begin = m_Entries.data();
      const Entry* end = begin + m_SortedCount;
      const Entry* at =
          std::lower_bound(begin, end, id, [](const Entry& entry, const CString& key) {
            return platform::TextCompare(entry.first, key) < 0;
          });
      if (at != end && platform::TextEqual(at->first, id)) return {at, hash, 0};
    }
    if (m_Slots.empty()) return {nullptr, hash, 0};
    const uint32_t tag = Tag(hash);
    for (size_t slot = Home(hash);; slot = Next(slot)) {
      const uint32_t content = m_Slots[slot];
      if (content == 0) return {nullptr, hash, slot};
      if ((content & ~m_IndexMask) != tag) continue;
      const Entry& entry = m_Entries[(content & m_IndexMask) - 1];
      if (platform::TextEqual(entry.first, id)) return {&entry, hash, slot};
    }
  }

  // Asking memory ahead for a look-up of the id with hash `hash`: first the
  // table's slot where the search starts, then, once that has arrived, the
  // entry it names. Neither changes anything, nor reads more than the slot.
  void PrefetchSlot(uint32_t hash) const noexcept {
    if (!m_Slots.empty()) __builtin_prefetch(&m_Slots[Home(hash)]);
  }
  void PrefetchEntry(uint32_t hash) const noexcept {
    if (m_Slots.empty()) return;
    const uint32_t content = m_Slots[Home(hash)];
    if (content != 0) __builtin_prefetch(&m_Entries[(content & m_IndexMask) - 1]);
  }

  // Takes back the last `count` entries added, which were added since the
  // last ordered read (to undo part of a bulk addition that failed).
  void RemoveLast(size_t count) noexcept {
    count = std::min(count, m_Entries.size());
    m_Entries.erase(m_Entries.end() - static_cast<std::ptrdiff_t>(count), m_Entries.end());
    m_SortedCount = std::min(m_SortedCount, m_Entries.size());
    if (!m_Slots.empty()) RefillSlots();
  }

  // The value of the entry at `index` in id order, to replace it.
  Value*& ValueAt(size_t index) {
    Sort();
    return m_Entries[index].second;
  }

  // The entry under `id`, or null; never sorts.
  const Entry* Find(const CString& id) const noexcept { return Locate(id).entry; }

  // Adds `value` under `id`, which Locate gave `spot` for (no entry) with
  // no change to the map since. On a failure of memory nothing has changed.
  void Add(const Spot& spot, const CString& id, Value* value) {
    const size_t count = m_Entries.size() + 1;
    if (count > kMaxEntries) AtlThrow(E_OUTOFMEMORY);
    // An id above the last sorted one, with no unsorted tail, extends the
    // sorted prefix; a map that indexes its tail only needs no slot for it.
    const bool inOrder = m_SortedCount + 1 == count &&
                         (count == 1 || platform::TextCompare(m_Entries[count - 2].first, id) < 0);
    const bool needsSlot = !(m_HashTailOnly && inOrder);
    // Table first, then the entry: a failure in either leaves the map as
    // it was (a larger table holds the same entries).
    size_t slot = spot.slot;
    if (needsSlot && (!HasRoomFor(Indexed() + 1) || count > m_IndexMask)) {
      Rehash(SlotsFor((Indexed() + 1) * 2), count * 2);
      slot = EmptySlotFor(spot.hash);
    }
    Guarded([&] { m_Entries.push_back(Entry{id, value}); });
    if (inOrder) m_SortedCount = count;
    if (needsSlot) m_Slots[slot] = Tag(spot.hash) | static_cast<uint32_t>(count);
  }

  // Adds `value` under `id` unless the id is there; answers the value
  // under the id either way and whether it was added.
  std::pair<Value*, bool> Insert(const CString& id, Value* value) {
    const Spot spot = Locate(id);
    if (spot.entry != nullptr) return {spot.entry->second, false};
    Add(spot, id, value);
    return {value, true};
  }

  // The value under `id`, added as null when the id is not there (for
  // tests that seed a map).
  Value*& operator[](const CString& id) {
    const Spot spot = Locate(id);
    if (spot.entry != nullptr) return const_cast<Entry*>(spot.entry)->second;
    Add(spot, id, nullptr);
    return m_Entries.back().second;
  }

  // Room for `count` more entries without growing the table or the
  // vector, for a bulk build.
  void Reserve(size_t count) {
    const size_t wanted = m_Entries.size() + count;
    if (wanted > kMaxEntries) AtlThrow(E_OUTOFMEMORY);
    Guarded([&] { m_Entries.reserve(wanted); });
    const size_t indexed = Indexed() + count;
    if (!HasRoomFor(indexed) || wanted > m_IndexMask) Rehash(SlotsFor(indexed), wanted);
  }

  // Sorts what was added since the last sort (see the file comment).
  void Sort() const {
    if (m_SortedCount == m_Entries.size()) {
      // Entries added in order (a copy of a graph) left the table that was
      // reserved for them unused: a map that indexes its tail only gives it
      // back.
      if (m_HashTailOnly && !m_Slots.empty()) ReleaseSlots();
      return;
    }
    const auto less = [](const Entry& left, const Entry& right) {
      return platform::TextCompare(left.first, right.first) < 0;
    };
    // A table of all entries keeps its slots when everything is sorted
    // anew: only the indexes in them follow the entries, and no key is
    // read again. That is done when the tail is the larger part (a bulk
    // build, whose first few ids may have come in order); a short tail is
    // sorted alone and merged in, and the table refilled.
    bool remapSlots = !m_HashTailOnly && m_SortedCount < m_Entries.size() - m_SortedCount;
    size_t first = remapSlots ? 0 : m_SortedCount;
    const size_t tail = m_Entries.size() - first;
    // Everything that can fail comes first: the tail's order, its entries
    // in that order and where each index goes. A read never fails, so
    // without the memory for them the tail is sorted where it stands, by
    // its keys alone, and merged in.
    std::vector<uint32_t> order;
    std::vector<uint32_t> rankOf;
    std::vector<Entry> sorted;
    try {
      order = TailOrder(first);
      sorted.reserve(tail);
      if (remapSlots) rankOf.resize(tail);
    } catch (const std::bad_alloc&) {
      first = m_SortedCount;
      remapSlots = false;
      std::sort(m_Entries.begin() + static_cast<std::ptrdiff_t>(first), m_Entries.end(), less);
      order.clear();  // the tail stands in order already
    }
    for (uint32_t position : order) sorted.push_back(std::move(m_Entries[first + position]));
    std::move(sorted.begin(), sorted.end(), m_Entries.begin() + static_cast<std::ptrdiff_t>(first));
    if (remapSlots) {
      for (uint32_t rank = 0; rank < tail; ++rank) rankOf[order[rank]] = rank;
      for (uint32_t& slot : m_Slots) {
        if (slot != 0) slot = (slot & ~m_IndexMask) | (rankOf[(slot & m_IndexMask) - 1] + 1);
      }
      m_SortedCount = m_Entries.size();
      return;
    }
    const auto middle = m_Entries.begin() + static_cast<std::ptrdiff_t>(first);
    // inplace_merge takes a buffer when it can and merges in place when it
    // cannot, so it fails on nothing.
    std::inplace_merge(m_Entries.begin(), middle, m_Entries.end(), less);
    m_SortedCount = m_Entries.size();
    if (m_HashTailOnly) {
      // Nothing is left unsorted: bisection finds every id.
      ReleaseSlots();
    } else {
      // The table holds indexes, which the sort has moved.
      RefillSlots();
    }
  }

  // Keeps the first `count` entries in id order and drops the others.
  void Truncate(size_t count) {
    Sort();
    if (count >= m_Entries.size()) return;
    m_Entries.erase(m_Entries.begin() + static_cast<std::ptrdiff_t>(count), m_Entries.end());
    m_SortedCount = m_Entries.size();
    RefillSlots();
  }

  // The entry under `id`, searched among the sorted entries forward from
  // `hint` (where an earlier call left it) by doubling steps and then
  // bisection, so ids asked in ascending order cost a few compares each
  // near the last one; `hint` moves on. Answers as Find.
  const Entry* FindForward(const CString& id, size_t& hint) const {
    Sort();
    const Entry* base = m_Entries.data();
    const size_t count = m_Entries.size();
    const auto less = [](const Entry& entry, const CString& key) {
      return platform::TextCompare(entry.first, key) < 0;
    };
    size_t low = std::min(hint, count);
    if (low > 0 && !less(base[low - 1], id)) low = 0;  // behind the hint: from the start
    size_t step = 1;
    while (low + step <= count && less(base[low + step - 1], id)) {
      low += step;
      step *= 2;
    }
    const Entry* at = std::lower_bound(base + low, base + std::min(low + step, count), id, less);
    hint = static_cast<size_t>(at - base);
    return at != base + count && platform::TextEqual(at->first, id) ? at : nullptr;
  }

  void clear() noexcept {
    std::vector<Entry>().swap(m_Entries);
    std::vector<uint32_t>().swap(m_Slots);
    m_SortedCount = 0;
    m_IndexMask = 0xFFFFFFFFu;
  }

  // Heap bytes the map holds in its two vectors.
  size_t HeapBytes() const noexcept {
    return m_Entries.capacity() * sizeof(Entry) + m_Slots.capacity() * sizeof(uint32_t);
  }

 private:
  static constexpr size_t kMaxEntries = std::numeric_limits<uint32_t>::max() / 2;

  template <typename F>
  static void Guarded(F&& step) {
    try {
      step();
    } catch (const std::bad_alloc&) {
      AtlThrow(E_OUTOFMEMORY);
    } catch (const std::length_error&) {
      AtlThrow(E_OUTOFMEMORY);
    }
  }

  // The first sixteen bytes of a key up to its first NUL, as two numbers
  // whose order is their byte order. The text must be a CString's, padded
  // with NULs to a multiple of eight bytes.
  struct Prefix {
    uint64_t high;
    uint64_t low;
  };
  static Prefix PrefixOf(const char* text) noexcept {
    constexpr uint64_t kOnes = 0x0101010101010101ull;
    constexpr uint64_t kHighs = 0x8080808080808080ull;
    uint64_t words[2] = {0, 0};
    for (int i = 0; i < 2; ++i) {
      uint64_t word;
      std::memcpy(&word, text + 8 * i, 8);
      const uint64_t zeros = (word - kOnes) & ~word & kHighs;
      if (zeros != 0) {
        const unsigned nul = static_cast<unsigned>(__builtin_ctzll(zeros)) & ~7u;
        words[i] = __builtin_bswap64(nul == 0 ? 0 : (word & (~0ull >> (64 - nul))));
        break;  // the text ends here: the rest stays zero
      }
      words[i] = __builtin_bswap64(word);
    }
    return {words[0], words[1]};
  }

  // The positions of the entries from `first` on, relative to it, in
  // ascending key order. The sort moves a key's first sixteen bytes with
  // its position, so most compares read no key: only equal prefixes, and
  // where byte order is not text order prefixes with bytes above ASCII,
  // are settled by the keys themselves.
  std::vector<uint32_t> TailOrder(size_t first) const {
    struct Keyed {
      Prefix prefix;
      uint32_t position;
    };
    const size_t count = m_Entries.size() - first;
    std::vector<Keyed> keyed(count);
    for (size_t i = 0; i < count; ++i) {
      keyed[i] = {PrefixOf(m_Entries[first + i].first.GetString()), static_cast<uint32_t>(i)};
    }
    const Entry* tail = m_Entries.data() + first;
    std::sort(keyed.begin(), keyed.end(), [tail](const Keyed& left, const Keyed& right) {
      constexpr uint64_t kHighs = 0x8080808080808080ull;
      const Prefix& a = left.prefix;
      const Prefix& b = right.prefix;
      if ((a.high != b.high || a.low != b.low) &&
          (platform::kByteOrderIsTextOrder || ((a.high | b.high | a.low | b.low) & kHighs) == 0)) {
        return a.high != b.high ? a.high < b.high : a.low < b.low;
      }
      return platform::TextCompare(tail[left.position].first, tail[right.position].first) < 0;
    });
    std::vector<uint32_t> order(count);
    for (size_t i = 0; i < count; ++i) order[i] = keyed[i].position;
    return order;
  }

  // The table is at most four fifths full.
  static size_t SlotsFor(size_t entries) { return entries + entries / 4 + 8; }
  bool HasRoomFor(size_t entries) const noexcept { return entries * 5 <= m_Slots.size() * 4; }
  // The entries the table holds: all, or the unsorted tail only.
  size_t Indexed() const noexcept {
    return m_HashTailOnly ? m_Entries.size() - m_SortedCount : m_Entries.size();
  }
  size_t FirstIndexed() const noexcept { return m_HashTailOnly ? m_SortedCount : 0; }

  // The home slot of a hash: its share of the table, so any table size
  // works.
  size_t Home(uint32_t hash) const noexcept {
    return static_cast<size_t>((static_cast<uint64_t>(hash) * m_Slots.size()) >> 32);
  }
  size_t Next(size_t slot) const noexcept { return slot + 1 == m_Slots.size() ? 0 : slot + 1; }
  // The hash bits kept beside the index: other bits than those that chose
  // the home slot.
  uint32_t Tag(uint32_t hash) const noexcept { return (hash * 0x9E3779B1u) & ~m_IndexMask; }

  size_t EmptySlotFor(uint32_t hash) const noexcept {
    size_t slot = Home(hash);
    while (m_Slots[slot] != 0) slot = Next(slot);
    return slot;
  }

  void Place(uint32_t index) const noexcept {
    const uint32_t hash = HashText(m_Entries[index].first.GetString());
    m_Slots[EmptySlotFor(hash)] = Tag(hash) | (index + 1);
  }

  void ReleaseSlots() const noexcept {
    std::vector<uint32_t>().swap(m_Slots);
    m_IndexMask = 0xFFFFFFFFu;
  }

  void RefillSlots() const noexcept {
    std::fill(m_Slots.begin(), m_Slots.end(), 0u);
    for (size_t i = FirstIndexed(); i < m_Entries.size(); ++i) Place(static_cast<uint32_t>(i));
  }

  // A table of `slotCount` slots for indexes up to `largestIndex`.
  void Rehash(size_t slotCount, size_t largestIndex) const {
    std::vector<uint32_t> slots;
    Guarded([&] { slots.assign(slotCount, 0u); });
    m_Slots.swap(slots);
    // The index lies below the mask; the bits above it carry the tags.
    const size_t bound = std::max(slotCount, largestIndex + 1);
    uint32_t mask = 1;
    while (mask < bound && mask != 0xFFFFFFFFu) mask = (mask << 1) | 1u;
    m_IndexMask = mask;
    RefillSlots();
  }

  bool m_HashTailOnly = false;
  mutable std::vector<Entry> m_Entries;
  mutable size_t m_SortedCount = 0;
  mutable std::vector<uint32_t> m_Slots;
  mutable uint32_t m_IndexMask = 0xFFFFFFFFu;
};

}  // namespace graphs
}  // namespace vekzol

#endif  // VEKZOL_SRC_GRAPHS_IDMAP_H_

// File: IdIndex.h
// The objects of a model file by id, for the ends of its relations: the
// first object of an id is the one an end names, as in the graph.
//
// An open-addressing table with linear probing, at most half full, each
// slot holding the id's full hash, where its text stands in the parsed
// document, and the object. Relations name their ends in no particular
// order, so each look-up would wait for two cache misses in turn (the
// slot, then the id's text to compare); the reader asks for both ahead,
// some relations in advance (PrefetchSlot, then PrefetchText once the slot
// has arrived), so that the look-ups of several relations are on their way
// at once. The texts are borrowed: they must outlive the index.
#ifndef VEKZOL_TOOLS_VEKZOL_IDINDEX_H_
#define VEKZOL_TOOLS_VEKZOL_IDINDEX_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

namespace vekzol_tool {

template <typename Object>
class IdIndex {
 public:
  // Room for `count` ids without growing.
  explicit IdIndex(size_t count) {
    size_t slots = 16;
    while (slots < count * 2) slots *= 2;
    slots_.resize(slots);
    mask_ = slots - 1;
  }

  static uint64_t Hash(std::string_view id) {
    // Never 0: a hash of 0 marks an empty slot.
    return std::hash<std::string_view>()(id) | 1u;
  }

  // Adds `object` under `id`, whose Hash is `hash`, unless the id is
  // there; false when it was.
  bool Add(std::string_view id, uint64_t hash, Object* object) {
    if ((count_ + 1) * 2 > slots_.size()) Grow();
    for (size_t slot = hash & mask_;; slot = (slot + 1) & mask_) {
      Slot& candidate = slots_[slot];
      if (candidate.hash == 0) {
        candidate = Slot{hash, id.data(), id.size(), object};
        ++count_;
        return true;
      }
      if (Matches(candidate, hash, id)) return false;
    }
  }

  // The object under `id`, whose Hash is `hash`, or null.
  Object* Find(std::string_view id, uint64_t hash) const {
    for (size_t slot = hash & mask_;; slot = (slot + 1) & mask_) {
      const Slot& candidate = slots_[slot];
      if (candidate.hash == 0) return nullptr;
      if (Matches(candidate, hash, id)) return candidate.object;
    }
  }

  // Asking memory ahead for Find(..., hash): its first slot, and once that
  // has arrived, the text it would compare. Neither changes anything.
  void PrefetchSlot(uint64_t hash) const { __builtin_prefetch(&slots_[hash & mask_]); }
  void PrefetchText(uint64_t hash) const {
    const Slot& slot = slots_[hash & mask_];
    if (slot.hash == hash) __builtin_prefetch(slot.text);
  }

 private:
  struct Slot {
    uint64_t hash = 0;
    const char* text = nullptr;
    size_t length = 0;
    Object* object = nullptr;
  };

  static bool Matches(const Slot& slot, uint64_t hash, std::string_view id) {
    return slot.hash == hash && slot.length == id.size() &&
           std::memcmp(slot.text, id.data(), id.size()) == 0;
  }

  void Grow() {
    std::vector<Slot> old(slots_.size() * 2);
    old.swap(slots_);
    mask_ = slots_.size() - 1;
    for (const Slot& slot : old) {
      if (slot.hash == 0) continue;
      size_t at = slot.hash & mask_;
      while (slots_[at].hash != 0) at = (at + 1) & mask_;
      slots_[at] = slot;
    }
  }

  std::vector<Slot> slots_;
  size_t mask_ = 0;
  size_t count_ = 0;
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_IDINDEX_H_

// File: ContentDifference.h
// What differs between the contents of two models (ModelContent.h), id by
// id: the ids only the old model has (removed), those only the new one has
// (added), and, for ids both have, each field and attribute whose value
// differs (changed), in id order; within an id the fields in their fixed
// order, then the attributes by key.
#ifndef VEKZOL_TOOLS_VEKZOL_CONTENTDIFFERENCE_H_
#define VEKZOL_TOOLS_VEKZOL_CONTENTDIFFERENCE_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "ContentRecord.h"
#include "ModelContent.h"

namespace vekzol_tool {

// Change::field of an attribute.
constexpr int kAttributeChange = -1;

// One field or attribute that differs: absent on one side (added or
// removed) or of another value (changed). A field's values are strings.
struct Change {
  int field = kAttributeChange;  // the index of the kind's field
  std::string_view key;          // the attribute's key
  bool hasOld = false;
  bool hasNew = false;
  Value oldValue;
  Value newValue;
};

// "added", "removed" or "changed".
const char* ChangeWord(const Change& change);
// The field's name or the attribute's key.
std::string_view ChangeName(const RecordKind& kind, const Change& change);

// Appends the change as one JSON object: {"field": NAME} or {"attribute":
// KEY}, then with `described` "change" (ChangeWord) and the JSON type of
// each side's value ("oldType", "newType"), then the values given, "old"
// and "new"; a side without a value is left out.
void AppendChangeJson(std::string& out, const RecordKind& kind, const Change& change,
                      bool described);

// The changes of one id: `count` changes of the list from `first`.
struct ChangedElement {
  std::string_view id;
  size_t first = 0;
  size_t count = 0;
  // The first entry of the id in the old model.
  const ContentEntry* before = nullptr;
};

struct KindDifference {
  // The first entry of each id only the old model has, and of each id
  // only the new one has; in id order.
  std::vector<const ContentEntry*> removed;
  std::vector<const ContentEntry*> added;
  std::vector<ChangedElement> changed;
  std::vector<Change> changes;
};

struct ModelDifference {
  // By KindIndex: objects, relations.
  KindDifference kinds[2];
  KindDifference& Of(const RecordKind& kind) { return kinds[KindIndex(kind)]; }
  const KindDifference& Of(const RecordKind& kind) const { return kinds[KindIndex(kind)]; }
  bool Empty() const;
  bool ContentChanged() const { return !kinds[0].changed.empty() || !kinds[1].changed.empty(); }
};

// Appends to `changes` what differs from `before` to `after`, in the order
// above; returns how many.
size_t CompareRecords(const RecordKind& kind, const Record& before, const Record& after,
                      std::vector<Change>& changes);

ModelDifference Difference(const ModelContent& before, const ModelContent& after);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CONTENTDIFFERENCE_H_

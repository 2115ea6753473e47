// File: ContentDifference.cpp
// Both models' entries are sorted by id: one merge of the two lists finds
// the ids of one side only and the ids of both, whose first entries are
// then compared field by field.
#include "ContentDifference.h"

namespace vekzol_tool {

namespace {

void DifferenceOf(const RecordKind& kind, const std::vector<ContentEntry>& before,
                  const std::vector<ContentEntry>& after, KindDifference& difference) {
  Record oldRecord;
  Record newRecord;
  EntryProblem problem;
  size_t i = 0;
  size_t j = 0;
  // The next id of each side: skips the duplicates of the current one.
  const auto next = [](const std::vector<ContentEntry>& entries, size_t at) {
    size_t end = at + 1;
    while (end < entries.size() && entries[end].id == entries[at].id) ++end;
    return end;
  };
  while (i < before.size() || j < after.size()) {
    const int order = i == before.size()  ? 1
                      : j == after.size() ? -1
                                          : before[i].id.compare(after[j].id);
    if (order < 0) {
      difference.removed.push_back(&before[i]);
      i = next(before, i);
    } else if (order > 0) {
      difference.added.push_back(&after[j]);
      j = next(after, j);
    } else {
      // Both were checked when read.
      ReadRecord(kind, before[i].element, oldRecord, problem);
      ReadRecord(kind, after[j].element, newRecord, problem);
      const size_t first = difference.changes.size();
      const size_t count = CompareRecords(kind, oldRecord, newRecord, difference.changes);
      if (count != 0) difference.changed.push_back({before[i].id, first, count, &before[i]});
      i = next(before, i);
      j = next(after, j);
    }
  }
}

}  // namespace

const char* ChangeWord(const Change& change) {
  return !change.hasOld ? "added" : !change.hasNew ? "removed" : "changed";
}

std::string_view ChangeName(const RecordKind& kind, const Change& change) {
  return change.field == kAttributeChange ? change.key : kind.fieldNames[change.field];
}

void AppendChangeJson(std::string& out, const RecordKind& kind, const Change& change,
                      bool described) {
  out += change.field == kAttributeChange ? "{\"attribute\": " : "{\"field\": ";
  AppendJsonString(out, ChangeName(kind, change));
  if (described) {
    out += ", \"change\": \"";
    out += ChangeWord(change);
    out += '"';
  }
  if (change.hasOld) {
    if (described) {
      out += ", \"oldType\": \"";
      out += JsonTypeName(change.oldValue.kind);
      out += '"';
    }
    out += ", \"old\": ";
    AppendValueJson(out, change.oldValue);
  }
  if (change.hasNew) {
    if (described) {
      out += ", \"newType\": \"";
      out += JsonTypeName(change.newValue.kind);
      out += '"';
    }
    out += ", \"new\": ";
    AppendValueJson(out, change.newValue);
  }
  out += '}';
}

bool ModelDifference::Empty() const {
  for (const KindDifference& kind : kinds) {
    if (!kind.removed.empty() || !kind.added.empty() || !kind.changed.empty()) return false;
  }
  return true;
}

size_t CompareRecords(const RecordKind& kind, const Record& before, const Record& after,
                      std::vector<Change>& changes) {
  const size_t start = changes.size();
  for (int field = 0; field < kind.fieldCount; ++field) {
    const Text& a = before.fields[field];
    const Text& b = after.fields[field];
    if (a.present == b.present && a.value == b.value) continue;
    Change change;
    change.field = field;
    change.hasOld = a.present;
    change.hasNew = b.present;
    if (a.present) change.oldValue = Value::String(a.value);
    if (b.present) change.newValue = Value::String(b.value);
    changes.push_back(change);
  }
  // Both attribute lists are sorted by key: a merge.
  size_t i = 0;
  size_t j = 0;
  const auto& a = before.attributes;
  const auto& b = after.attributes;
  while (i < a.size() || j < b.size()) {
    const int order = i == a.size() ? 1 : j == b.size() ? -1 : a[i].key.compare(b[j].key);
    Change change;
    if (order < 0) {
      change.key = a[i].key;
      change.hasOld = true;
      change.oldValue = a[i++].value;
    } else if (order > 0) {
      change.key = b[j].key;
      change.hasNew = true;
      change.newValue = b[j++].value;
    } else {
      if (a[i].value == b[j].value) {
        ++i;
        ++j;
        continue;
      }
      change.key = a[i].key;
      change.hasOld = change.hasNew = true;
      change.oldValue = a[i++].value;
      change.newValue = b[j++].value;
    }
    changes.push_back(change);
  }
  return changes.size() - start;
}

ModelDifference Difference(const ModelContent& before, const ModelContent& after) {
  ModelDifference difference;
  for (const RecordKind* kind : {&kObjectKind, &kRelationKind}) {
    DifferenceOf(*kind, before.Sorted(*kind), after.Sorted(*kind), difference.Of(*kind));
  }
  return difference;
}

}  // namespace vekzol_tool

// File: JsonPatch.cpp
#include "JsonPatch.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vekzol_tool {

namespace {

// The output is handed on whenever this much is ready.
constexpr size_t kWriteBytes = 1 << 20;

// A JSON Pointer's reference token: "~" as "~0", "/" as "~1".
void AppendToken(std::string& path, std::string_view token) {
  for (char c : token) {
    if (c == '~') {
      path += "~0";
    } else if (c == '/') {
      path += "~1";
    } else {
      path += c;
    }
  }
}

class PatchWriter {
 public:
  explicit PatchWriter(Output& output) : output_(output), out_("[") {}

  // Starts an operation: {"op": OP, "path": PATH (as JSON)
  void Begin(const char* op, const std::string& path) {
    out_ += first_ ? "\n  {\"op\": \"" : ",\n  {\"op\": \"";
    first_ = false;
    out_ += op;
    out_ += "\", \"path\": ";
    AppendJsonString(out_, path);
  }
  // Ends it, with a value or without.
  void End() {
    out_ += '}';
    if (out_.size() >= kWriteBytes) {
      output_.Write(out_);
      out_.clear();
    }
  }
  std::string& Value() {
    out_ += ", \"value\": ";
    return out_;
  }
  void Operation(const char* op, const std::string& path) {
    Begin(op, path);
    End();
  }
  void Operation(const char* op, const std::string& path, const vekzol_tool::Value& value) {
    Begin(op, path);
    AppendValueJson(Value(), value);
    End();
  }
  // Writes what is left and closes the array.
  void Close() {
    out_ += first_ ? "]\n" : "\n]\n";
    output_.Write(out_);
  }

 private:
  Output& output_;
  std::string out_;
  bool first_ = true;
};

std::string EntryPath(const RecordKind& kind, uint32_t index) {
  return "/" + std::string(kind.list) + "/" + std::to_string(index);
}

void WriteChanges(const RecordKind& kind, const KindDifference& difference, PatchWriter& patch) {
  for (const ChangedElement& element : difference.changed) {
    const std::string entry = EntryPath(kind, element.before->index);
    patch.Operation("test", entry + "/id", Value::String(element.id));
    // Whether the old entry has an "attributes" member: the record says.
    Record record;
    EntryProblem problem;
    ReadRecord(kind, element.before->element, record, problem);
    bool wholeAttributes = false;
    for (size_t i = element.first; i < element.first + element.count; ++i) {
      const Change& change = difference.changes[i];
      std::string path = entry + "/";
      if (change.field != kAttributeChange) {
        path += kind.fieldNames[change.field];
        if (change.hasOld) patch.Operation("test", path, change.oldValue);
      } else if (record.attributesGiven) {
        path += "attributes/";
        AppendToken(path, change.key);
      } else {
        // No member to add to: the new attributes, all added, in one.
        if (!wholeAttributes) {
          patch.Begin("add", path + "attributes");
          std::string& out = patch.Value();
          out += '{';
          bool first = true;
          for (size_t k = i; k < element.first + element.count; ++k) {
            const Change& added = difference.changes[k];
            if (added.field != kAttributeChange) continue;
            out += first ? "" : ", ";
            first = false;
            AppendJsonString(out, added.key);
            out += ": ";
            AppendValueJson(out, added.newValue);
          }
          out += '}';
          patch.End();
          wholeAttributes = true;
        }
        continue;
      }
      if (!change.hasOld) {
        patch.Operation("add", path, change.newValue);
      } else if (!change.hasNew) {
        patch.Operation("remove", path);
      } else {
        patch.Operation("replace", path, change.newValue);
      }
    }
  }
}

void WriteRemovals(const RecordKind& kind, const ModelContent& before,
                   const KindDifference& difference, PatchWriter& patch) {
  const std::vector<ContentEntry>& entries = before.Sorted(kind);
  std::vector<std::pair<uint32_t, std::string_view>> removed;
  for (const ContentEntry* entry : difference.removed) {
    // The first entry of the id and its duplicates, which follow it.
    for (const ContentEntry* same = entry;
         same != entries.data() + entries.size() && same->id == entry->id; ++same) {
      removed.emplace_back(same->index, same->id);
    }
  }
  std::sort(removed.begin(), removed.end(), std::greater<>());
  for (const auto& [index, id] : removed) {
    const std::string path = EntryPath(kind, index);
    patch.Operation("test", path + "/id", Value::String(id));
    patch.Operation("remove", path);
  }
}

void WriteAdditions(const RecordKind& kind, const ModelContent& before,
                    const KindDifference& difference, PatchWriter& patch) {
  if (difference.added.empty()) return;
  Record record;
  EntryProblem problem;
  const std::string list = "/" + std::string(kind.list);
  if (!before.HasList(kind)) {
    patch.Begin("add", list);
    std::string& out = patch.Value();
    out += '[';
    for (const ContentEntry* entry : difference.added) {
      if (entry != difference.added.front()) out += ", ";
      ReadRecord(kind, entry->element, record, problem);
      AppendRecordJson(out, kind, record, true);
    }
    out += ']';
    patch.End();
    return;
  }
  for (const ContentEntry* entry : difference.added) {
    patch.Begin("add", list + "/-");
    ReadRecord(kind, entry->element, record, problem);
    AppendRecordJson(patch.Value(), kind, record, true);
    patch.End();
  }
}

}  // namespace

void WriteJsonPatch(const ModelContent& before, const ModelDifference& difference, Output& output) {
  PatchWriter patch(output);
  for (const RecordKind* kind : {&kObjectKind, &kRelationKind}) {
    WriteChanges(*kind, difference.Of(*kind), patch);
  }
  for (const RecordKind* kind : {&kObjectKind, &kRelationKind}) {
    WriteRemovals(*kind, before, difference.Of(*kind), patch);
  }
  for (const RecordKind* kind : {&kObjectKind, &kRelationKind}) {
    WriteAdditions(*kind, before, difference.Of(*kind), patch);
  }
  patch.Close();
}

}  // namespace vekzol_tool

// File: ChangeFile.h
// A change file: what `diff` writes and `apply` applies. One JSON object:
//
//   {
//     "format": "vekzol-change",
//     "version": 1,
//     "oldDigest": "sha256:...",        the old model's content (ModelDigest.h)
//     "newDigest": "sha256:...",        the new model's content
//     "objectsRemoved": [RECORD, ...],  first entries of ids only OLD has
//     "objectsAdded": [RECORD, ...],    first entries of ids only NEW has
//     "objectsChanged": [{"id": ID, "changes": [CHANGE, ...]}, ...],
//     "relationsRemoved": [...], "relationsAdded": [...], "relationsChanged": [...]
//   }
//
// A RECORD is an entry of a model file with the fields it has, in their
// fixed order (ContentRecord.h). A CHANGE is {"field": NAME} or
// {"attribute": KEY} with the value before ("old") and after ("new"); a
// side without a value was absent there (the field or attribute was added
// or removed). Lists are in id order, the changes of an id in the fields'
// order, then by key. Removed records are complete and changes keep their
// old values, so that the change applies backwards too.
//
// Reading is strict: the format and version, the digests' form, every
// record as a model file's entry, every change (a known field, a string
// value for a field, at least one side, two sides that differ, each field
// or attribute once per id), and each id at most once per kind across the
// lists. Problems are ToolErrors naming the file, line and column.
#ifndef VEKZOL_TOOLS_VEKZOL_CHANGEFILE_H_
#define VEKZOL_TOOLS_VEKZOL_CHANGEFILE_H_

#include <simdjson.h>

#include <memory>
#include <string>
#include <vector>

#include "ContentDifference.h"
#include "FileIO.h"
#include "ModelContent.h"
#include "Phases.h"

namespace vekzol_tool {

constexpr char kChangeFormat[] = "vekzol-change";
constexpr int kChangeVersion = 1;

// Writes the change from `before` to `after`, both loaded with their
// digests, whose difference is `difference`.
void WriteChangeFile(const ModelContent& before, const ModelContent& after,
                     const ModelDifference& difference, Output& output);

class ChangeFile {
 public:
  // What the change does to one kind of element; each list in id order.
  struct KindChange {
    std::vector<ContentEntry> removed;
    std::vector<ContentEntry> added;
    std::vector<ChangedElement> changed;
    std::vector<Change> changes;
  };

  explicit ChangeFile(std::string path);
  ~ChangeFile();
  ChangeFile(const ChangeFile&) = delete;
  ChangeFile& operator=(const ChangeFile&) = delete;

  // Reads and checks the file; appends the times of "read" and "check"
  // <path>.
  void Load(PhaseTimes& times);

  const std::string& Path() const { return path_; }
  const std::string& OldDigest() const { return oldDigest_; }
  const std::string& NewDigest() const { return newDigest_; }
  const KindChange& Of(const RecordKind& kind) const { return kinds_[KindIndex(kind)]; }

 private:
  [[noreturn]] void Fail(const std::string& pointer, const std::string& message);
  void ReadKind(const RecordKind& kind, simdjson::dom::object top);
  void ReadChanged(const RecordKind& kind, simdjson::dom::array list, const std::string& name);

  std::string path_;
  simdjson::padded_string text_;
  std::unique_ptr<simdjson::dom::parser> parser_;
  std::string oldDigest_;
  std::string newDigest_;
  KindChange kinds_[2];
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CHANGEFILE_H_

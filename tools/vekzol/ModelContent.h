// File: ModelContent.h
// A model file read for its content (ContentRecord.h) rather than for a
// graph: `compare --content`, `diff` and `apply` work on it. The file is
// parsed once and kept parsed; its entries are listed by id, and the
// content of an id is that of its first entry, the one the graph keeps
// (later entries of the id are duplicates, carried but not content).
//
// It accepts exactly the files the model reader accepts (ModelFile.h): a
// file it refuses is handed to the model reader, so the message is the one
// every other command gives for it.
#ifndef VEKZOL_TOOLS_VEKZOL_MODELCONTENT_H_
#define VEKZOL_TOOLS_VEKZOL_MODELCONTENT_H_

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ContentRecord.h"
#include "Phases.h"
#include "Platform.h"

namespace vekzol_tool {

class ModelFile;

// An entry of a list: its id, its value in the parsed document and where
// it stands in the file's list (from 0).
struct ContentEntry {
  std::string_view id;
  simdjson::dom::element element;
  uint32_t index;
};

// Sorts entries by id, entries of one id by their place in the list.
void SortById(std::vector<ContentEntry>& entries);

// The index of kind in the two-element arrays below: 0 objects, 1 relations.
inline int KindIndex(const RecordKind& kind) { return &kind == &kObjectKind ? 0 : 1; }

class ModelContent {
 public:
  explicit ModelContent(std::string path);
  ~ModelContent();
  ModelContent(const ModelContent&) = delete;
  ModelContent& operator=(const ModelContent&) = delete;

  // Reads, parses and checks the file, and lists its entries by id; with
  // `digest` also computes the digest of its content (ModelDigest.h).
  // Appends the times of "read", "parse", "check", "sort" and "digest"
  // <path>. Throws ToolError naming the file on any problem, with the
  // model reader's message. Touches nothing outside this model, so two
  // load on two threads.
  void Load(PhaseTimes& times, bool digest);

  const std::string& Path() const { return path_; }
  // The entries of `kind` by id (SortById).
  const std::vector<ContentEntry>& Sorted(const RecordKind& kind) const {
    return sorted_[KindIndex(kind)];
  }
  // Whether the file has the list (a member "objects" or "relations"), and
  // the list itself (the last member of that name, as the reader takes it).
  bool HasList(const RecordKind& kind) const { return hasList_[KindIndex(kind)]; }
  simdjson::dom::array List(const RecordKind& kind) const { return lists_[KindIndex(kind)]; }
  // "sha256:..." once loaded with `digest`.
  const std::string& Digest() const { return digest_; }
  size_t Elements() const { return sorted_[0].size() + sorted_[1].size(); }

 private:
  [[noreturn]] void Refuse(const std::string& pointer, const std::string& message);
  void Check(const RecordKind& kind);

  std::string path_;
  // The model reader, asked for its message on a file refused here. Made
  // with the model, on the thread that makes it: it holds a graph of the
  // library.
  std::unique_ptr<ModelFile> reader_;
  MappedFile mapped_;
  simdjson::padded_string copy_;
  std::string_view text_;
  std::unique_ptr<simdjson::dom::parser> parser_;
  bool hasList_[2] = {};
  simdjson::dom::array lists_[2];
  std::vector<ContentEntry> sorted_[2];
  std::string digest_;
};

// Calls `visit(first, end)` for each id of `entries` (sorted by SortById)
// with the range of its entries; `first` is the one whose content counts.
template <typename Visit>
void ForEachId(const std::vector<ContentEntry>& entries, Visit&& visit) {
  size_t i = 0;
  while (i < entries.size()) {
    size_t end = i + 1;
    while (end < entries.size() && entries[end].id == entries[i].id) ++end;
    visit(i, end);
    i = end;
  }
}

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_MODELCONTENT_H_

// File: ModelContent.cpp
// Reading a model file for its content: the file is mapped or read as the
// model reader does it, parsed once, every entry checked and listed, the
// lists sorted by id, and the canonical form hashed on request.
#include "ModelContent.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "FileIO.h"
#include "JsonLocation.h"
#include "ModelDigest.h"
#include "ModelFile.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

using Clock = std::chrono::steady_clock;

// Lists of this many entries or more are counted by walking them: the
// parser gives the count only up to this value.
constexpr size_t kSaturatedEntryCount = 0xFFFFFF;

}  // namespace

void SortById(std::vector<ContentEntry>& entries) {
  std::sort(entries.begin(), entries.end(), [](const ContentEntry& a, const ContentEntry& b) {
    const int order = a.id.compare(b.id);
    return order != 0 ? order < 0 : a.index < b.index;
  });
}

ModelContent::ModelContent(std::string path)
    : path_(std::move(path)), reader_(std::make_unique<ModelFile>(path_)) {}

ModelContent::~ModelContent() = default;

void ModelContent::Refuse(const std::string& pointer, const std::string& message) {
  // The model reader words and places the problem as for every other
  // command; it is asked on the same text.
  PhaseTimes ignored;
  reader_->LoadText(text_.data(), text_.size(), ignored);
  throw ToolError(path_ + ": at " + pointer + ": " + message);
}

void ModelContent::Load(PhaseTimes& times, bool digest) {
  const Clock::time_point start = Clock::now();
  std::error_code sizeError;
  const std::uintmax_t fileSize =
      std::filesystem::file_size(std::filesystem::u8path(path_), sizeError);
  if (!sizeError && fileSize > kLargestModelBytes) {
    // Refused unread, with the reader's message.
    PhaseTimes ignored;
    reader_->Load(ignored);
    throw ToolError(path_ + ": the file is too large");
  }
  if (mapped_.Map(path_, simdjson::SIMDJSON_PADDING)) {
    text_ = std::string_view(mapped_.Data(), mapped_.Size());
  } else {
    InputFile file(path_);
    copy_ = simdjson::padded_string(file.Size());
    if (copy_.data() == nullptr) throw std::bad_alloc();
    file.ReadExactly(copy_.data(), copy_.size());
    text_ = std::string_view(copy_.data(), copy_.size());
  }
  const Clock::time_point read = Clock::now();
  times.emplace_back("read " + path_, Phases::Seconds(read - start));
  if (text_.size() > kLargestModelBytes) Refuse("", "the file is too large");

  parser_ = std::make_unique<simdjson::dom::parser>();
  simdjson::dom::element root;
  const simdjson::error_code error = parser_->parse(text_.data(), text_.size(), false).get(root);
  if (error == simdjson::MEMALLOC) throw std::bad_alloc();
  if (error != simdjson::SUCCESS) Refuse("", simdjson::error_message(error));
  const Clock::time_point parsed = Clock::now();
  times.emplace_back("parse " + path_, Phases::Seconds(parsed - read));

  simdjson::dom::object top;
  if (root.get_object().get(top) != simdjson::SUCCESS) Refuse("", "a model must be a JSON object");
  for (auto member : top) {
    for (const RecordKind* kind : {&kObjectKind, &kRelationKind}) {
      if (member.key != kind->list) continue;
      const int k = KindIndex(*kind);
      if (member.value.get_array().get(lists_[k]) != simdjson::SUCCESS) {
        Refuse(std::string("/") + kind->list,
               std::string("\"") + kind->list + "\" must be an array");
      }
      hasList_[k] = true;
    }
  }
  Check(kObjectKind);
  Check(kRelationKind);
  const Clock::time_point checked = Clock::now();
  times.emplace_back("check " + path_, Phases::Seconds(checked - parsed));
  SortById(sorted_[0]);
  SortById(sorted_[1]);
  const Clock::time_point sorted = Clock::now();
  times.emplace_back("sort " + path_, Phases::Seconds(sorted - checked));

  if (digest) {
    CanonicalForm form;
    Record record;
    EntryProblem problem;
    for (const RecordKind* kind : {&kObjectKind, &kRelationKind}) {
      const std::vector<ContentEntry>& entries = Sorted(*kind);
      form.BeginList(*kind);
      ForEachId(entries, [&](size_t first, size_t) {
        ReadRecord(*kind, entries[first].element, record, problem);
        form.Add(*kind, record);
      });
    }
    digest_ = form.Finish();
    times.emplace_back("digest " + path_, Phases::Seconds(Clock::now() - sorted));
  }
}

void ModelContent::Check(const RecordKind& kind) {
  const int k = KindIndex(kind);
  if (!hasList_[k]) return;
  std::vector<ContentEntry>& entries = sorted_[k];
  size_t count = lists_[k].size();
  if (count >= kSaturatedEntryCount) {
    count = 0;
    for (simdjson::dom::element entry : lists_[k]) {
      (void)entry;
      ++count;
    }
  }
  entries.reserve(count);
  Record record;
  EntryProblem problem;
  uint32_t index = 0;
  const std::string list = std::string("/") + kind.list;
  for (simdjson::dom::element element : lists_[k]) {
    if (!ReadRecord(kind, element, record, problem)) {
      Refuse(PointerChild(list, index) + problem.pointer, problem.message);
    }
    entries.push_back({record.id, element, index++});
  }
}

}  // namespace vekzol_tool

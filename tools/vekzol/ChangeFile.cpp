// File: ChangeFile.cpp
#include "ChangeFile.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <new>
#include <string_view>
#include <tuple>
#include <utility>

#include "JsonLocation.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

using Clock = std::chrono::steady_clock;

// The output is handed on whenever this much is ready.
constexpr size_t kWriteBytes = 1 << 20;

std::string ListName(const RecordKind& kind, const char* what) {
  return std::string(kind.list) + what;
}

bool IsDigest(std::string_view text) {
  constexpr std::string_view kPrefix = "sha256:";
  if (text.size() != kPrefix.size() + 64 || text.substr(0, kPrefix.size()) != kPrefix) {
    return false;
  }
  for (char c : text.substr(kPrefix.size())) {
    if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'))) return false;
  }
  return true;
}

void BeginList(std::string& out, const std::string& name) {
  out += ",\n  \"";
  out += name;
  out += "\": [";
}

void EndList(std::string& out, bool empty) { out += empty ? "]" : "\n  ]"; }

void WriteKind(const RecordKind& kind, const KindDifference& difference, std::string& out,
               Output& output) {
  Record record;
  EntryProblem problem;
  const std::pair<const char*, const std::vector<const ContentEntry*>*> records[] = {
      {"Removed", &difference.removed}, {"Added", &difference.added}};
  for (const auto& [what, entries] : records) {
    BeginList(out, ListName(kind, what));
    for (const ContentEntry* entry : *entries) {
      out += entry == entries->front() ? "\n    " : ",\n    ";
      ReadRecord(kind, entry->element, record, problem);
      AppendRecordJson(out, kind, record, true);
      if (out.size() >= kWriteBytes) {
        output.Write(out);
        out.clear();
      }
    }
    EndList(out, entries->empty());
  }
  BeginList(out, ListName(kind, "Changed"));
  for (const ChangedElement& element : difference.changed) {
    out += &element == &difference.changed.front() ? "\n    {\"id\": " : ",\n    {\"id\": ";
    AppendJsonString(out, element.id);
    out += ", \"changes\": [";
    for (size_t i = element.first; i < element.first + element.count; ++i) {
      if (i != element.first) out += ", ";
      AppendChangeJson(out, kind, difference.changes[i], false);
    }
    out += "]}";
    if (out.size() >= kWriteBytes) {
      output.Write(out);
      out.clear();
    }
  }
  EndList(out, difference.changed.empty());
}

}  // namespace

void WriteChangeFile(const ModelContent& before, const ModelContent& after,
                     const ModelDifference& difference, Output& output) {
  std::string out = "{\n  \"format\": \"";
  out += kChangeFormat;
  out += "\",\n  \"version\": " + std::to_string(kChangeVersion);
  out += ",\n  \"oldDigest\": \"" + before.Digest() + "\"";
  out += ",\n  \"newDigest\": \"" + after.Digest() + "\"";
  WriteKind(kObjectKind, difference.Of(kObjectKind), out, output);
  WriteKind(kRelationKind, difference.Of(kRelationKind), out, output);
  out += "\n}\n";
  output.Write(out);
}

ChangeFile::ChangeFile(std::string path) : path_(std::move(path)) {}

ChangeFile::~ChangeFile() = default;

void ChangeFile::Fail(const std::string& pointer, const std::string& message) {
  size_t offset = 0;
  if (FindValue(text_, pointer, offset)) {
    const TextPosition at = PositionOf(text_.data(), text_.size(), offset);
    throw ToolError(path_ + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": " +
                    message);
  }
  throw ToolError(path_ + ": at " + pointer + ": " + message);
}

void ChangeFile::Load(PhaseTimes& times) {
  const Clock::time_point start = Clock::now();
  {
    InputFile file(path_);
    text_ = simdjson::padded_string(file.Size());
    if (text_.data() == nullptr) throw std::bad_alloc();
    file.ReadExactly(text_.data(), text_.size());
  }
  const Clock::time_point read = Clock::now();
  times.emplace_back("read " + path_, Phases::Seconds(read - start));

  parser_ = std::make_unique<simdjson::dom::parser>();
  simdjson::dom::element root;
  const simdjson::error_code error = parser_->parse(text_).get(root);
  if (error == simdjson::MEMALLOC) throw std::bad_alloc();
  if (error != simdjson::SUCCESS) {
    size_t offset = 0;
    std::string reason;
    if (FindSyntaxError(text_.data(), text_.size(), offset, reason)) {
      const TextPosition at = PositionOf(text_.data(), text_.size(), offset);
      throw ToolError(path_ + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) +
                      ": invalid JSON: " + reason);
    }
    throw ToolError(path_ +
                    ": the JSON parser refused the file: " + simdjson::error_message(error));
  }
  simdjson::dom::object top;
  if (root.get_object().get(top) != simdjson::SUCCESS) {
    Fail("", "a change file must be a JSON object");
  }
  std::string_view format;
  if (top.at_key("format").get_string().get(format) != simdjson::SUCCESS ||
      format != kChangeFormat) {
    Fail(top.at_key("format").error() == simdjson::SUCCESS ? "/format" : "",
         std::string("not a change file of vekzol: \"format\" must be \"") + kChangeFormat + "\"");
  }
  int64_t version = 0;
  if (top.at_key("version").get_int64().get(version) != simdjson::SUCCESS ||
      version != kChangeVersion) {
    Fail(top.at_key("version").error() == simdjson::SUCCESS ? "/version" : "",
         "\"version\" must be " + std::to_string(kChangeVersion) +
             ", the version of change files this vekzol reads");
  }
  for (auto [name, digest] : {std::pair<const char*, std::string*>{"oldDigest", &oldDigest_},
                              std::pair<const char*, std::string*>{"newDigest", &newDigest_}}) {
    std::string_view text;
    if (top.at_key(name).get_string().get(text) != simdjson::SUCCESS || !IsDigest(text)) {
      Fail(top.at_key(name).error() == simdjson::SUCCESS ? std::string("/") + name : "",
           std::string("\"") + name + "\" must be \"sha256:\" and 64 lowercase hex digits");
    }
    *digest = std::string(text);
  }
  ReadKind(kObjectKind, top);
  ReadKind(kRelationKind, top);
  times.emplace_back("check " + path_, Phases::Seconds(Clock::now() - read));
}

void ChangeFile::ReadKind(const RecordKind& kind, simdjson::dom::object top) {
  KindChange& change = kinds_[KindIndex(kind)];
  const std::string names[3] = {ListName(kind, "Removed"), ListName(kind, "Added"),
                                ListName(kind, "Changed")};
  simdjson::dom::array lists[3];
  for (int list = 0; list < 3; ++list) {
    simdjson::dom::element found;
    if (top.at_key(names[list]).get(found) != simdjson::SUCCESS) continue;
    if (found.get_array().get(lists[list]) != simdjson::SUCCESS) {
      Fail("/" + names[list], "\"" + names[list] + "\" must be an array");
    }
  }
  Record record;
  EntryProblem problem;
  std::vector<ContentEntry>* const records[2] = {&change.removed, &change.added};
  for (int list = 0; list < 2; ++list) {
    uint32_t index = 0;
    for (simdjson::dom::element element : lists[list]) {
      if (!ReadRecord(kind, element, record, problem)) {
        Fail(PointerChild("/" + names[list], index) + problem.pointer, problem.message);
      }
      records[list]->push_back({record.id, element, index++});
    }
  }
  ReadChanged(kind, lists[2], names[2]);

  // Each id at most once in the three lists: (id, list, index), sorted.
  std::vector<std::tuple<std::string_view, int, uint32_t>> ids;
  ids.reserve(change.removed.size() + change.added.size() + change.changed.size());
  for (const ContentEntry& entry : change.removed) ids.emplace_back(entry.id, 0, entry.index);
  for (const ContentEntry& entry : change.added) ids.emplace_back(entry.id, 1, entry.index);
  for (size_t i = 0; i < change.changed.size(); ++i) {
    ids.emplace_back(change.changed[i].id, 2, static_cast<uint32_t>(i));
  }
  std::sort(ids.begin(), ids.end());
  for (size_t i = 1; i < ids.size(); ++i) {
    const auto& [id, list, index] = ids[i];
    const auto& [earlierId, earlierList, earlierIndex] = ids[i - 1];
    (void)earlierIndex;
    if (id != earlierId) continue;
    const std::string quoted = "\"" + std::string(id) + "\"";
    Fail(PointerChild("/" + names[list], index) + "/id",
         list == earlierList
             ? "the " + std::string(kind.singular) + " " + quoted + " is given twice in \"" +
                   names[list] + "\""
             : "the " + std::string(kind.singular) + " " + quoted + " is in both \"" +
                   names[earlierList] + "\" and \"" + names[list] + "\"");
  }
  SortById(change.removed);
  SortById(change.added);
  std::sort(change.changed.begin(), change.changed.end(),
            [](const ChangedElement& a, const ChangedElement& b) { return a.id < b.id; });
}

void ChangeFile::ReadChanged(const RecordKind& kind, simdjson::dom::array list,
                             const std::string& name) {
  KindChange& change = kinds_[KindIndex(kind)];
  std::string fieldNames;
  for (int field = 0; field < kind.fieldCount; ++field) {
    fieldNames += field == 0 ? "" : ", ";
    fieldNames += kind.fieldNames[field];
  }
  std::vector<std::string_view> keys;
  size_t index = 0;
  for (simdjson::dom::element element : list) {
    const std::string at = PointerChild("/" + name, index++);
    simdjson::dom::object entry;
    if (element.get_object().get(entry) != simdjson::SUCCESS) {
      Fail(at, "an entry of \"" + name + "\" must be a JSON object");
    }
    ChangedElement changed;
    simdjson::dom::element id;
    if (entry.at_key("id").get(id) != simdjson::SUCCESS) {
      Fail(at, "an entry of \"" + name + "\" must have an \"id\"");
    }
    if (id.get_string().get(changed.id) != simdjson::SUCCESS ||
        changed.id.find('\0') != std::string_view::npos) {
      Fail(at + "/id", "\"id\" must be a string without NUL characters");
    }
    simdjson::dom::array changes;
    if (entry.at_key("changes").get_array().get(changes) != simdjson::SUCCESS ||
        changes.size() == 0) {
      Fail(entry.at_key("changes").error() == simdjson::SUCCESS ? at + "/changes" : at,
           "\"changes\" must be an array of one change or more");
    }
    changed.first = change.changes.size();
    unsigned fieldsSeen = 0;
    keys.clear();
    size_t changeIndex = 0;
    for (simdjson::dom::element item : changes) {
      const std::string changeAt = PointerChild(at + "/changes", changeIndex++);
      simdjson::dom::object object;
      if (item.get_object().get(object) != simdjson::SUCCESS) {
        Fail(changeAt, "a change must be a JSON object");
      }
      Change one;
      simdjson::dom::element field;
      simdjson::dom::element attribute;
      const bool hasField = object.at_key("field").get(field) == simdjson::SUCCESS;
      const bool hasAttribute = object.at_key("attribute").get(attribute) == simdjson::SUCCESS;
      if (hasField == hasAttribute) {
        Fail(changeAt, "a change names either a \"field\" or an \"attribute\"");
      }
      if (hasField) {
        std::string_view fieldName;
        const bool named = field.get_string().get(fieldName) == simdjson::SUCCESS;
        one.field = -2;  // none of the kind's
        for (int f = 0; f < kind.fieldCount; ++f) {
          if (named && fieldName == kind.fieldNames[f]) one.field = f;
        }
        if (one.field < 0) {
          Fail(changeAt + "/field",
               "\"field\" of " + std::string(kind.withArticle) + " must be one of " + fieldNames);
        }
        if (fieldsSeen & (1u << one.field)) {
          Fail(changeAt, "the change of \"" + std::string(fieldName) + "\" is given twice");
        }
        fieldsSeen |= 1u << one.field;
      } else {
        if (!kind.hasAttributes) Fail(changeAt + "/attribute", "a relation has no attributes");
        if (attribute.get_string().get(one.key) != simdjson::SUCCESS || one.key.empty() ||
            one.key.find('\0') != std::string_view::npos) {
          Fail(changeAt + "/attribute",
               "\"attribute\" must be a non-empty string without NUL characters");
        }
        keys.push_back(one.key);
      }
      for (auto [side, has, value] :
           {std::tuple<const char*, bool*, Value*>{"old", &one.hasOld, &one.oldValue},
            std::tuple<const char*, bool*, Value*>{"new", &one.hasNew, &one.newValue}}) {
        simdjson::dom::element found;
        if (object.at_key(side).get(found) != simdjson::SUCCESS) continue;
        *has = true;
        const bool read = ReadValue(found, *value);
        if (hasField && (!read || value->kind != ValueKind::kString)) {
          Fail(changeAt + "/" + side,
               std::string("\"") + side + "\" of a field must be a string without NUL characters");
        }
        if (!read) {
          Fail(changeAt + "/" + side, std::string("\"") + side +
                                          "\" of an attribute must be a string without NUL "
                                          "characters, a number or a boolean");
        }
      }
      if (!one.hasOld && !one.hasNew) Fail(changeAt, "a change must have \"old\" or \"new\"");
      if (one.hasOld && one.hasNew && one.oldValue == one.newValue) {
        Fail(changeAt, "a change must have an \"old\" and a \"new\" that differ");
      }
      change.changes.push_back(one);
    }
    std::sort(keys.begin(), keys.end());
    const auto twice = std::adjacent_find(keys.begin(), keys.end());
    if (twice != keys.end()) {
      Fail(at + "/changes",
           "the change of the attribute \"" + std::string(*twice) + "\" is given twice");
    }
    changed.count = change.changes.size() - changed.first;
    change.changed.push_back(changed);
  }
}

}  // namespace vekzol_tool

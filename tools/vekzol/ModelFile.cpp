// File: ModelFile.cpp
// Reading a model file: one pass of the fast parser over the whole text,
// then a walk of its document that makes the library's objects and
// relations. Positions are looked for only when something is wrong.
#include "ModelFile.h"

#include <simdjson.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <new>
#include <string_view>
#include <system_error>
#include <utility>

#include "FileIO.h"
#include "IdIndex.h"
#include "JsonLocation.h"
#include "Phases.h"
#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

using Clock = std::chrono::steady_clock;

// The whole file in a buffer followed by the parser's padding, for a file
// that is not mapped.
simdjson::padded_string ReadFile(const std::string& path) {
  InputFile file(path);
  simdjson::padded_string text(file.Size());
  // The padded buffer's allocation does not throw.
  if (text.data() == nullptr) throw std::bad_alloc();
  file.ReadExactly(text.data(), text.size());
  return text;
}

static_assert(kLargestModelBytes == simdjson::SIMDJSON_MAXSIZE_BYTES,
              "the largest model file is the largest document the JSON parser takes");
static_assert(kDeepestModelNesting == simdjson::DEFAULT_MAX_DEPTH,
              "the deepest nesting is the JSON parser's default");

[[noreturn]] void RefuseSize(const std::string& path, unsigned long long size) {
  throw ToolError(path + ": the file has " + std::to_string(size) + " bytes, more than the " +
                  std::to_string(kLargestModelBytes) + " bytes a model file may have");
}

// The parser gives the number of entries of a list only up to this value;
// a list that long is counted by walking it, so that room is reserved for
// every entry (the objects must never move once made).
constexpr size_t kSaturatedEntryCount = 0xFFFFFF;

size_t EntryCount(simdjson::dom::array list) {
  size_t count = list.size();
  if (count >= kSaturatedEntryCount) {
    count = 0;
    for (simdjson::dom::element entry : list) {
      (void)entry;
      ++count;
    }
  }
  return count;
}

}  // namespace

// Walks the parsed document; every problem becomes a ToolError with the
// position of the value concerned.
class ModelFile::Reader {
 public:
  Reader(ModelFile& model, std::string_view text) : model_(model), text_(text) {}

  void Read(simdjson::dom::element root) {
    simdjson::dom::object top;
    if (root.get_object().get(top) != simdjson::SUCCESS) Fail("", "a model must be a JSON object");
    simdjson::dom::array objects;
    simdjson::dom::array relations;
    bool hasObjects = false;
    bool hasRelations = false;
    for (auto field : top) {
      if (field.key == "objects") {
        if (field.value.get_array().get(objects) != simdjson::SUCCESS) {
          Fail("/objects", "\"objects\" must be an array");
        }
        hasObjects = true;
      } else if (field.key == "relations") {
        if (field.value.get_array().get(relations) != simdjson::SUCCESS) {
          Fail("/relations", "\"relations\" must be an array");
        }
        hasRelations = true;
      }
    }
    if (hasObjects) ReadObjects(objects);
    if (hasRelations) ReadRelations(relations);
  }

 private:
  [[noreturn]] void Fail(const std::string& pointer, const std::string& what) {
    size_t offset = 0;
    simdjson::padded_string text(text_.data(), text_.size());
    if (FindValue(text, pointer, offset)) {
      const TextPosition at = PositionOf(text_.data(), text_.size(), offset);
      throw ToolError(model_.path_ + ":" + std::to_string(at.line) + ":" +
                      std::to_string(at.column) + ": " + what);
    }
    throw ToolError(model_.path_ + ": at " + pointer + ": " + what);
  }

  // Where an entry of a list stands, for messages: its JSON pointer is
  // only written out when something is wrong with it.
  struct EntryAt {
    const char* list;
    size_t index;
    std::string Pointer() const { return PointerChild(list, index); }
  };

  // The members of an entry that the reader looks at, found in one pass
  // over the entry: the first of each name, as a look-up by name finds it
  // (a look-up per name walked the entry once per name, present or not).
  enum Member {
    kId,
    kRefId,
    kName,
    kSciid,
    kBackupName,
    kIdentPath,
    kAttributes,
    kType,
    kSource,
    kTarget,
    kMemberCount
  };
  static constexpr std::string_view kMemberNames[kMemberCount] = {
      "id",        "refId",      "name", "sciid",  "backupName",
      "identPath", "attributes", "type", "source", "target"};
  struct Members {
    simdjson::dom::element values[kMemberCount];
    bool present[kMemberCount] = {};
    const simdjson::dom::element* Find(Member member) const {
      return present[member] ? &values[member] : nullptr;
    }
  };
  static Members MembersOf(simdjson::dom::object entry) {
    Members members;
    for (auto field : entry) {
      for (int member = 0; member < kMemberCount; ++member) {
        if (field.key == kMemberNames[member]) {
          if (!members.present[member]) {
            members.present[member] = true;
            members.values[member] = field.value;
          }
          break;
        }
      }
    }
    return members;
  }

  // A text member: absent gives false, a string without NUL gives true.
  bool Text(const Members& members, Member member, const EntryAt& at, std::string_view& text) {
    const simdjson::dom::element* found = members.Find(member);
    if (found == nullptr) return false;
    const char* const key = kMemberNames[member].data();  // literals end with a NUL
    if (found->get_string().get(text) != simdjson::SUCCESS) {
      Fail(PointerChild(at.Pointer(), key), std::string("\"") + key + "\" must be a string");
    }
    if (text.find('\0') != std::string_view::npos) {
      Fail(PointerChild(at.Pointer(), key),
           std::string("\"") + key + "\" must not hold a NUL character");
    }
    return true;
  }

  static CString ToCString(std::string_view text) {
    return CString(text.data(), static_cast<int>(text.size()));
  }

  CComVariant Attribute(simdjson::dom::element value, const std::string& pointer) {
    switch (value.type()) {
      case simdjson::dom::element_type::STRING: {
        std::string_view text = value.get_string().value_unsafe();
        if (text.find('\0') != std::string_view::npos)
          Fail(pointer, "an attribute value must not hold a NUL character");
        return CComVariant(ToCString(text));
      }
      case simdjson::dom::element_type::INT64: {
        const int64_t number = value.get_int64().value_unsafe();
        if (number >= INT32_MIN && number <= INT32_MAX) {
          return CComVariant(static_cast<int>(number));
        }
        return CComVariant(static_cast<long long>(number));
      }
      case simdjson::dom::element_type::UINT64:
        return CComVariant(static_cast<double>(value.get_uint64().value_unsafe()));
      case simdjson::dom::element_type::DOUBLE:
        return CComVariant(value.get_double().value_unsafe());
      case simdjson::dom::element_type::BOOL:
        return CComVariant(value.get_bool().value_unsafe());
      default:
        Fail(pointer, "an attribute value must be a string, a number or a boolean");
    }
  }

  void ReadObjects(simdjson::dom::array objects) {
    // Exactly the room needed: the objects never move once made.
    const size_t count = EntryCount(objects);
    model_.objects_.reserve(count);
    ids_ = IdIndex<ModelObject>(count);
    // The ids of the objects some entries ahead are hashed and their slots
    // asked for, as for the relations' ends below.
    constexpr size_t kAhead = 16;
    uint64_t idHashes[kAhead] = {};
    auto ahead = objects.begin();
    const auto last = objects.end();
    size_t asked = 0;
    const auto askAhead = [&] {
      if (ahead == last) return;
      uint64_t& hash = idHashes[asked % kAhead];
      hash = 0;
      std::string_view id;
      if ((*ahead).at_key("id").get_string().get(id) == simdjson::SUCCESS) {
        hash = IdIndex<ModelObject>::Hash(id);
        ids_.PrefetchSlot(hash);
      }
      ++ahead;
      ++asked;
    };
    while (asked < kAhead && ahead != last) askAhead();
    size_t index = 0;
    for (simdjson::dom::element element : objects) {
      const uint64_t askedHash = idHashes[index % kAhead];
      const EntryAt at{"/objects", index++};
      simdjson::dom::object entry;
      if (element.get_object().get(entry) != simdjson::SUCCESS) {
        Fail(at.Pointer(), "an entry of \"objects\" must be a JSON object");
      }
      const Members members = MembersOf(entry);
      std::string_view id;
      if (!Text(members, kId, at, id)) Fail(at.Pointer(), "an object must have an \"id\"");
      std::string_view refId;
      const bool hasRefId = Text(members, kRefId, at, refId);
      std::string_view nameText;
      CString name;
      if (Text(members, kName, at, nameText)) name = ToCString(nameText);
      ModelObject& object = model_.objects_.emplace_back(ToCString(id), std::move(name));
      std::string_view text;
      if (hasRefId) object.SetRefID(ToCString(refId));
      if (Text(members, kSciid, at, text)) object.SetSCIID(ToCString(text));
      if (Text(members, kBackupName, at, text)) {
        // Mostly the name again (a vertex not renamed): one text for both.
        object.SetBackupName(text == nameText ? object.GetDisplayName() : ToCString(text));
      }
      if (Text(members, kIdentPath, at, text)) object.SetIdentPath(ToCString(text));
      if (const simdjson::dom::element* found = members.Find(kAttributes)) {
        const simdjson::dom::element attributes = *found;
        const std::string attributesPointer = PointerChild(at.Pointer(), "attributes");
        simdjson::dom::object members;
        if (attributes.get_object().get(members) != simdjson::SUCCESS) {
          Fail(attributesPointer, "\"attributes\" must be a JSON object");
        }
        for (auto member : members) {
          const std::string memberPointer =
              PointerChild(attributesPointer, std::string(member.key));
          if (member.key.empty()) Fail(memberPointer, "an attribute name must not be empty");
          if (member.key.find('\0') != std::string_view::npos) {
            Fail(memberPointer, "an attribute name must not hold a NUL character");
          }
          object.SetAttribute(ToCString(member.key), Attribute(member.value, memberPointer));
        }
      }
      // For the look-up of relation ends; of equal ids the first object is
      // kept, as in the graph.
      ids_.Add(id, askedHash != 0 ? askedHash : IdIndex<ModelObject>::Hash(id), &object);
      askAhead();
    }
    model_.stats_.objects = model_.objects_.size();
  }

  VEKIZOLObject* End(const Members& members, Member end, const EntryAt& at) {
    std::string_view id;
    if (!Text(members, end, at, id)) return nullptr;
    ModelObject* found = ids_.Find(id, IdIndex<ModelObject>::Hash(id));
    if (found == nullptr) ++model_.stats_.unknownEnds;
    return found;
  }

  void ReadRelations(simdjson::dom::array relations) {
    model_.relations_.reserve(EntryCount(relations));
    // The ends of the relations some entries ahead are hashed and their
    // slots asked for, then, half way, the texts of those slots (see
    // IdIndex.h). Nothing is checked there: an entry that is not as it
    // should be is only reported when its turn comes.
    constexpr size_t kAhead = 16;
    constexpr size_t kHalfway = 8;
    uint64_t endHashes[kAhead][2] = {};
    auto ahead = relations.begin();
    const auto last = relations.end();
    size_t asked = 0;
    const auto askAhead = [&] {
      if (ahead == last) return;
      uint64_t* hashes = endHashes[asked % kAhead];
      hashes[0] = hashes[1] = 0;
      simdjson::dom::object entry;
      if ((*ahead).get_object().get(entry) == simdjson::SUCCESS) {
        const char* const keys[2] = {"source", "target"};
        for (int end = 0; end < 2; ++end) {
          std::string_view id;
          if (entry.at_key(keys[end]).get_string().get(id) == simdjson::SUCCESS) {
            hashes[end] = IdIndex<ModelObject>::Hash(id);
            ids_.PrefetchSlot(hashes[end]);
          }
        }
      }
      ++ahead;
      ++asked;
    };
    while (asked < kAhead && ahead != last) askAhead();

    size_t index = 0;
    for (simdjson::dom::element element : relations) {
      if (index + kHalfway < asked) {
        for (uint64_t hash : endHashes[(index + kHalfway) % kAhead]) {
          if (hash != 0) ids_.PrefetchText(hash);
        }
      }
      const EntryAt at{"/relations", index++};
      simdjson::dom::object entry;
      if (element.get_object().get(entry) != simdjson::SUCCESS) {
        Fail(at.Pointer(), "an entry of \"relations\" must be a JSON object");
      }
      const Members members = MembersOf(entry);
      std::string_view id;
      if (!Text(members, kId, at, id)) Fail(at.Pointer(), "a relation must have an \"id\"");
      std::string_view type;
      CString typeText;
      if (Text(members, kType, at, type)) typeText = ToCString(type);
      VEKIZOLObject* source = End(members, kSource, at);
      VEKIZOLObject* target = End(members, kTarget, at);
      model_.relations_.emplace_back(ToCString(id), std::move(typeText), source, target);
      askAhead();
    }
    model_.stats_.relations = model_.relations_.size();
  }

  ModelFile& model_;
  std::string_view text_;  // the whole file, for positions in messages
  // The objects by id, for the relations' ends; the texts are the parsed
  // document's.
  IdIndex<ModelObject> ids_{0};
};

ModelFile::ModelFile(std::string path) : path_(std::move(path)) {
  const std::string name = std::filesystem::u8path(path_).filename().u8string();
  graphName_ = CString(name.c_str());
  graph_ = std::make_unique<VEKZOLGraph>(graphName_);
}

ModelFile::~ModelFile() = default;

void ModelFile::Load(PhaseTimes& times) {
  const Clock::time_point start = Clock::now();
  // The size is asked before the file is mapped or read, so that a file
  // the parser could not take is refused without reading it. Where the
  // size cannot be asked, opening the file tells why.
  std::error_code sizeError;
  const std::uintmax_t fileSize =
      std::filesystem::file_size(std::filesystem::u8path(path_), sizeError);
  if (!sizeError && fileSize > kLargestModelBytes) RefuseSize(path_, fileSize);
  MappedFile mapped;
  simdjson::padded_string copy;
  std::string_view text;
  if (mapped.Map(path_, simdjson::SIMDJSON_PADDING)) {
    text = std::string_view(mapped.Data(), mapped.Size());
  } else {
    copy = ReadFile(path_);
    text = std::string_view(copy.data(), copy.size());
  }
  times.emplace_back("read " + path_, Phases::Seconds(Clock::now() - start));
  // Both forms of the text are followed by the parser's padding.
  LoadText(text.data(), text.size(), times);
}

void ModelFile::LoadText(const char* data, size_t size, PhaseTimes& times) {
  // A file that grew after its size was asked.
  if (size > kLargestModelBytes) RefuseSize(path_, size);
  const std::string_view text(data, size);
  const Clock::time_point read = Clock::now();
  simdjson::dom::parser parser;
  simdjson::dom::element root;
  const simdjson::error_code error = parser.parse(text.data(), text.size(), false).get(root);
  const Clock::time_point parsed = Clock::now();
  times.emplace_back("parse " + path_, Phases::Seconds(parsed - read));
  // The parser could not get memory for the document: reported as any
  // failed allocation is, not as a fault of the file.
  if (error == simdjson::MEMALLOC) throw std::bad_alloc();
  if (error != simdjson::SUCCESS) {
    // The parser tells no position. The first problem in the text is
    // reported: a value nested too deep, or the syntax error that the
    // position-aware parser finds (the parser also calls a list nested too
    // deep when its first member is missing, as in "[,]": a syntax error).
    size_t deepAt = 0;
    const bool deep = error == simdjson::DEPTH_ERROR &&
                      FindNestingPast(text.data(), text.size(), kDeepestModelNesting, deepAt);
    size_t offset = 0;
    std::string reason;
    const bool syntax = FindSyntaxError(text.data(), text.size(), offset, reason);
    if (deep && (!syntax || deepAt <= offset)) {
      const TextPosition at = PositionOf(text.data(), text.size(), deepAt);
      throw ToolError(path_ + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) +
                      ": a value nested " + std::to_string(kDeepestModelNesting + 1) +
                      " levels deep; a model file may nest values at most " +
                      std::to_string(kDeepestModelNesting) + " levels deep");
    }
    if (syntax) {
      const TextPosition at = PositionOf(text.data(), text.size(), offset);
      throw ToolError(path_ + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) +
                      ": invalid JSON: " + reason);
    }
    throw ToolError(path_ +
                    ": the JSON parser refused the file: " + simdjson::error_message(error));
  }
  Reader(*this, text).Read(root);
  times.emplace_back("objects " + path_, Phases::Seconds(Clock::now() - parsed));
}

void ModelFile::Build() {
  std::deque<VEKIZOLObject*> objects;
  std::deque<VEKIZOLRelation*> relations;
  for (ModelObject& object : objects_) objects.push_back(&object);
  for (ModelRelation& relation : relations_) relations.push_back(&relation);
  graph_->Build(objects, relations);  // E_FAIL once done, E_INVALIDARG for an empty model

  std::deque<VEKZOLGraphVertex*> vertices;
  graph_->GetAllVertices(vertices);
  for (VEKZOLGraphVertex* vertex : vertices) {
    if (vertex == nullptr || vertex->GetObjectA() == nullptr) continue;
    // Every object of this graph is one of ours, and the vertex holds the
    // first object of its id: its texts are the ones that count.
    auto* object = static_cast<ModelObject*>(vertex->GetObjectA());
    if (object->HasBackupName()) vertex->SetBackupName(object->BackupName());
    if (object->HasIdentPath()) vertex->SetIdentPath(object->IdentPath());
  }
  std::deque<VEKZOLGraphEdge*> edges;
  graph_->GetAllEdges(edges);
  stats_.duplicateObjectIds = objects_.size() - vertices.size();
  stats_.duplicateRelationIds = relations_.size() - edges.size();
}

void ModelFile::ReportTolerated() const {
  if (stats_.duplicateObjectIds != 0) {
    std::fprintf(stderr, "vekzol: %s: %zu object(s) with an id used before (the first one kept)\n",
                 path_.c_str(), stats_.duplicateObjectIds);
  }
  if (stats_.duplicateRelationIds != 0) {
    std::fprintf(stderr,
                 "vekzol: %s: %zu relation(s) with an id used before (the first one kept)\n",
                 path_.c_str(), stats_.duplicateRelationIds);
  }
  if (stats_.unknownEnds != 0) {
    std::fprintf(stderr, "vekzol: %s: %zu relation end(s) name no object (left unresolved)\n",
                 path_.c_str(), stats_.unknownEnds);
  }
}

}  // namespace vekzol_tool

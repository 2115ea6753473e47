// File: ChangeApplication.cpp
// The model's entries and the change's lists are all sorted by id: one
// merge per kind checks every step, decides what becomes of each entry of
// the model (kept, dropped, changed) and feeds the result's canonical form
// in id order. Only then is the result written, in the model's order.
#include "ChangeApplication.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ModelDigest.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

// What becomes of an entry of the model, by its place in its list; a
// changed entry is kChanged plus the index of its changed element.
constexpr uint32_t kKeep = 0;
constexpr uint32_t kDrop = 1;
constexpr uint32_t kChanged = 2;

// The output is handed on whenever this much is ready.
constexpr size_t kWriteBytes = 1 << 20;

// One side of a change: whether it has a value, and the value.
struct Side {
  bool has;
  const Value* value;
};

Side From(const Change& change, bool reverse) {
  return reverse ? Side{change.hasNew, &change.newValue} : Side{change.hasOld, &change.oldValue};
}
Side To(const Change& change, bool reverse) {
  return reverse ? Side{change.hasOld, &change.oldValue} : Side{change.hasNew, &change.newValue};
}

std::string Quoted(std::string_view text) {
  std::string quoted;
  AppendJsonString(quoted, text);
  return quoted;
}

std::string Describe(const Change& change, const Side& side) {
  if (!side.has) return "none";
  std::string text;
  if (change.field == kAttributeChange) {
    text += JsonTypeName(side.value->kind);
    text += ' ';
  }
  AppendValueJson(text, *side.value);
  return text;
}

void SetAttribute(std::vector<Attribute>& attributes, std::string_view key, const Side& side) {
  auto found = std::lower_bound(
      attributes.begin(), attributes.end(), key,
      [](const Attribute& attribute, std::string_view k) { return attribute.key < k; });
  const bool there = found != attributes.end() && found->key == key;
  if (!side.has) {
    if (there) attributes.erase(found);
  } else if (there) {
    found->value = *side.value;
  } else {
    attributes.insert(found, Attribute{key, *side.value});
  }
}

class Application {
 public:
  Application(const ModelContent& model, const ChangeFile& change, const ApplyOptions& options)
      : model_(model), change_(change), options_(options) {}

  // Checks every step of `kind` and decides what becomes of each entry;
  // adds the result's records to `form` when given.
  void Walk(const RecordKind& kind, CanonicalForm* form);
  void Write(const RecordKind& kind, std::string& out, Output& output);

 private:
  [[noreturn]] void Conflict(const RecordKind& kind, std::string_view id,
                             const std::string& what) const {
    throw ToolError(change_.Path() + ": cannot be applied to " + model_.Path() + ": the " +
                    kind.singular + " " + Quoted(id) + " " + what);
  }
  const std::vector<ContentEntry>& ToRemove(const RecordKind& kind) const {
    return options_.reverse ? change_.Of(kind).added : change_.Of(kind).removed;
  }
  const std::vector<ContentEntry>& ToAdd(const RecordKind& kind) const {
    return options_.reverse ? change_.Of(kind).removed : change_.Of(kind).added;
  }
  // Checks that `record` is as the changes of `element` expect, then
  // applies them to it.
  void Change(const RecordKind& kind, const ChangedElement& element, Record& record) const;
  void WriteChanged(const RecordKind& kind, simdjson::dom::element entry,
                    const ChangedElement& element, std::string& out);

  const ModelContent& model_;
  const ChangeFile& change_;
  const ApplyOptions& options_;
  std::vector<uint32_t> actions_[2];
  Record record_;
  Record other_;
  EntryProblem problem_;
};

void Application::Change(const RecordKind& kind, const ChangedElement& element,
                         Record& record) const {
  const std::vector<vekzol_tool::Change>& changes = change_.Of(kind).changes;
  for (size_t i = element.first; i < element.first + element.count; ++i) {
    const vekzol_tool::Change& change = changes[i];
    const Side expected = From(change, options_.reverse);
    Side found{false, nullptr};
    Value text;
    if (change.field == kAttributeChange) {
      if (const Attribute* attribute = record.FindAttribute(change.key)) {
        found = {true, &attribute->value};
      }
    } else if (record.fields[change.field].present) {
      text = Value::String(record.fields[change.field].value);
      found = {true, &text};
    }
    if (found.has != expected.has || (found.has && *found.value != *expected.value)) {
      const std::string name = change.field == kAttributeChange
                                   ? "attribute " + Quoted(change.key)
                                   : std::string(kind.fieldNames[change.field]);
      Conflict(kind, element.id,
               (found.has ? "has " + name + " " + Describe(change, found) : "has no " + name) +
                   " where the change expects " + Describe(change, expected));
    }
  }
  for (size_t i = element.first; i < element.first + element.count; ++i) {
    const vekzol_tool::Change& change = changes[i];
    const Side target = To(change, options_.reverse);
    if (change.field == kAttributeChange) {
      SetAttribute(record.attributes, change.key, target);
    } else {
      record.fields[change.field] =
          target.has ? Text{target.value->text, true} : Text{std::string_view(), false};
    }
  }
}

void Application::Walk(const RecordKind& kind, CanonicalForm* form) {
  const std::vector<ContentEntry>& entries = model_.Sorted(kind);
  const std::vector<ContentEntry>& toRemove = ToRemove(kind);
  const std::vector<ContentEntry>& toAdd = ToAdd(kind);
  const std::vector<ChangedElement>& changed = change_.Of(kind).changed;
  std::vector<uint32_t>& actions = actions_[KindIndex(kind)];
  actions.assign(entries.size(), kKeep);
  size_t r = 0;
  size_t c = 0;
  size_t a = 0;
  const auto addUpTo = [&](const std::string_view* id) {
    while (a < toAdd.size() && (id == nullptr || toAdd[a].id < *id)) {
      if (form != nullptr) {
        ReadRecord(kind, toAdd[a].element, other_, problem_);
        form->Add(kind, other_);
      }
      ++a;
    }
  };
  if (form != nullptr) form->BeginList(kind);
  ForEachId(entries, [&](size_t first, size_t end) {
    const std::string_view id = entries[first].id;
    if (r < toRemove.size() && toRemove[r].id < id) {
      Conflict(kind, toRemove[r].id, "to remove is not in " + model_.Path());
    }
    if (c < changed.size() && changed[c].id < id) {
      Conflict(kind, changed[c].id, "to change is not in " + model_.Path());
    }
    addUpTo(&id);
    if (a < toAdd.size() && toAdd[a].id == id) {
      Conflict(kind, id, "to add is already in " + model_.Path());
    }
    ReadRecord(kind, entries[first].element, record_, problem_);
    if (r < toRemove.size() && toRemove[r].id == id) {
      ReadRecord(kind, toRemove[r].element, other_, problem_);
      if (!SameContent(kind, record_, other_)) {
        Conflict(kind, id, "to remove differs in " + model_.Path() + " from the change's record");
      }
      for (size_t k = first; k < end; ++k) actions[entries[k].index] = kDrop;
      ++r;
      return;
    }
    if (c < changed.size() && changed[c].id == id) {
      Change(kind, changed[c], record_);
      actions[entries[first].index] = kChanged + static_cast<uint32_t>(c);
      ++c;
    }
    if (form != nullptr) form->Add(kind, record_);
  });
  if (r < toRemove.size()) Conflict(kind, toRemove[r].id, "to remove is not in " + model_.Path());
  if (c < changed.size()) Conflict(kind, changed[c].id, "to change is not in " + model_.Path());
  addUpTo(nullptr);
}

void Application::WriteChanged(const RecordKind& kind, simdjson::dom::element entry,
                               const ChangedElement& element, std::string& out) {
  ReadRecord(kind, entry, record_, problem_);
  Change(kind, element, record_);
  bool touched[kMostFields] = {};
  bool attributesTouched = false;
  const std::vector<vekzol_tool::Change>& changes = change_.Of(kind).changes;
  for (size_t i = element.first; i < element.first + element.count; ++i) {
    if (changes[i].field == kAttributeChange) {
      attributesTouched = true;
    } else {
      touched[changes[i].field] = true;
    }
  }
  const auto appendAttributes = [&] {
    out += "\"attributes\": {";
    for (const Attribute& attribute : record_.attributes) {
      if (&attribute != &record_.attributes.front()) out += ", ";
      AppendJsonString(out, attribute.key);
      out += ": ";
      AppendValueJson(out, attribute.value);
    }
    out += '}';
  };
  // The first member of each name is the one read: it is replaced in place
  // or dropped; any other member stays as it was.
  bool seen[kMostFields] = {};
  bool attributesSeen = false;
  bool first = true;
  out += '{';
  const simdjson::dom::object object = entry.get_object().value_unsafe();
  for (auto member : object) {
    int field = -1;
    for (int f = 0; f < kind.fieldCount; ++f) {
      if (member.key == kind.fieldNames[f]) field = f;
    }
    const bool attributes = kind.hasAttributes && member.key == "attributes" && !attributesSeen;
    if (field >= 0 && !seen[field] && touched[field]) {
      seen[field] = true;
      if (!record_.fields[field].present) continue;
      out += first ? "" : ", ";
      AppendJsonString(out, member.key);
      out += ": ";
      AppendJsonString(out, record_.fields[field].value);
    } else if (attributes && attributesTouched) {
      attributesSeen = true;
      if (record_.attributes.empty()) continue;
      out += first ? "" : ", ";
      appendAttributes();
    } else {
      if (field >= 0) seen[field] = true;
      if (attributes) attributesSeen = true;
      out += first ? "" : ", ";
      AppendJsonString(out, member.key);
      out += ": ";
      AppendElementJson(out, member.value);
    }
    first = false;
  }
  for (int field = 0; field < kind.fieldCount; ++field) {
    if (!touched[field] || seen[field] || !record_.fields[field].present) continue;
    out += ", ";
    AppendJsonString(out, kind.fieldNames[field]);
    out += ": ";
    AppendJsonString(out, record_.fields[field].value);
  }
  if (attributesTouched && !attributesSeen && !record_.attributes.empty()) {
    out += ", ";
    appendAttributes();
  }
  out += '}';
}

void Application::Write(const RecordKind& kind, std::string& out, Output& output) {
  const std::vector<uint32_t>& actions = actions_[KindIndex(kind)];
  bool first = true;
  const auto next = [&] {
    out += first ? "\n  " : ",\n  ";
    first = false;
  };
  if (model_.HasList(kind)) {
    size_t index = 0;
    for (simdjson::dom::element entry : model_.List(kind)) {
      const uint32_t action = actions[index++];
      if (action == kDrop) continue;
      next();
      if (action == kKeep) {
        AppendElementJson(out, entry);
      } else {
        WriteChanged(kind, entry, change_.Of(kind).changed[action - kChanged], out);
      }
      if (out.size() >= kWriteBytes) {
        output.Write(out);
        out.clear();
      }
    }
  }
  for (const ContentEntry& added : ToAdd(kind)) {
    next();
    ReadRecord(kind, added.element, record_, problem_);
    AppendRecordJson(out, kind, record_, true);
    if (out.size() >= kWriteBytes) {
      output.Write(out);
      out.clear();
    }
  }
}

}  // namespace

void ApplyChange(const ModelContent& model, const ChangeFile& change, const ApplyOptions& options,
                 Output& output) {
  const std::string& from = options.reverse ? change.NewDigest() : change.OldDigest();
  const std::string& to = options.reverse ? change.OldDigest() : change.NewDigest();
  if (!options.ignoreDigest && model.Digest() != from) {
    throw ToolError(model.Path() + " is not the model the change " + change.Path() +
                    (options.reverse ? " leads to" : " was made from") +
                    ": its content digest is " + model.Digest() + ", the change's " +
                    (options.reverse ? "new" : "old") + " digest is " + from +
                    " (--ignore-digest applies the change to any model in which what it "
                    "touches is as it expects)");
  }
  Application application(model, change, options);
  std::unique_ptr<CanonicalForm> form;
  if (!options.ignoreDigest) form = std::make_unique<CanonicalForm>();
  application.Walk(kObjectKind, form.get());
  application.Walk(kRelationKind, form.get());
  if (form) {
    const std::string digest = form->Finish();
    if (digest != to) {
      throw ToolError(change.Path() + ": applied to " + model.Path() +
                      ", the change does not give the model it " +
                      (options.reverse ? "was made from" : "leads to") +
                      ": the result's content digest is " + digest + ", the change's " +
                      (options.reverse ? "old" : "new") + " digest is " + to);
    }
  }
  std::string out = "{\"objects\": [";
  application.Write(kObjectKind, out, output);
  out += "\n], \"relations\": [";
  application.Write(kRelationKind, out, output);
  out += "\n]}\n";
  output.Write(out);
}

}  // namespace vekzol_tool

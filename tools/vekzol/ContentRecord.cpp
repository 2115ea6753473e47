// File: ContentRecord.cpp
#include "ContentRecord.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace vekzol_tool {

namespace {

constexpr std::string_view kObjectFieldNames[] = {"name", "refId", "sciid", "backupName",
                                                  "identPath"};
constexpr std::string_view kRelationFieldNames[] = {"type", "source", "target"};

bool HoldsNul(std::string_view text) { return text.find('\0') != std::string_view::npos; }

void AppendQuotedKey(std::string& out, std::string_view key, bool spaced) {
  AppendJsonString(out, key);
  out += spaced ? ": " : ":";
}

}  // namespace

const RecordKind kObjectKind{"objects", "object",          "an object", "Objects",
                             5,         kObjectFieldNames, true};
const RecordKind kRelationKind{"relations", "relation",          "a relation", "Relations",
                               3,           kRelationFieldNames, false};

bool operator==(const Value& left, const Value& right) {
  if (left.kind != right.kind) return false;
  switch (left.kind) {
    case ValueKind::kString:
      return left.text == right.text;
    case ValueKind::kInteger:
      return left.integer == right.integer;
    case ValueKind::kReal:
      // Bit for bit: 0.0 and -0.0 differ, as their texts do (JSON has no NaN).
      return std::memcmp(&left.real, &right.real, sizeof left.real) == 0;
    case ValueKind::kBoolean:
      return left.boolean == right.boolean;
  }
  return false;
}

const char* JsonTypeName(ValueKind kind) {
  switch (kind) {
    case ValueKind::kString:
      return "string";
    case ValueKind::kBoolean:
      return "boolean";
    default:
      return "number";
  }
}

void AppendJsonString(std::string& out, std::string_view text) {
  out += '"';
  size_t plain = 0;  // start of the run of bytes copied as they are
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c >= 0x20 && c != '"' && c != '\\' && c != 0x7F) continue;
    out.append(text.data() + plain, i - plain);
    plain = i + 1;
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\b':
        out += "\\b";
        break;
      case '\f':
        out += "\\f";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default: {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
        out += escaped;
      }
    }
  }
  out.append(text.data() + plain, text.size() - plain);
  out += '"';
}

void AppendValueJson(std::string& out, const Value& value) {
  char number[40];
  switch (value.kind) {
    case ValueKind::kString:
      AppendJsonString(out, value.text);
      return;
    case ValueKind::kInteger: {
      const auto end = std::to_chars(number, number + sizeof number, value.integer).ptr;
      out.append(number, static_cast<size_t>(end - number));
      return;
    }
    case ValueKind::kReal: {
      const auto end = std::to_chars(number, number + sizeof number, value.real).ptr;
      const std::string_view text(number, static_cast<size_t>(end - number));
      out += text;
      if (text.find_first_of(".e") == std::string_view::npos) out += ".0";
      return;
    }
    case ValueKind::kBoolean:
      out += value.boolean ? "true" : "false";
      return;
  }
}

const Attribute* Record::FindAttribute(std::string_view key) const {
  const auto found = std::lower_bound(
      attributes.begin(), attributes.end(), key,
      [](const Attribute& attribute, std::string_view k) { return attribute.key < k; });
  return found != attributes.end() && found->key == key ? &*found : nullptr;
}

bool SameContent(const RecordKind& kind, const Record& left, const Record& right) {
  for (int field = 0; field < kind.fieldCount; ++field) {
    const Text& a = left.fields[field];
    const Text& b = right.fields[field];
    if (a.present != b.present || a.value != b.value) return false;
  }
  if (left.attributes.size() != right.attributes.size()) return false;
  for (size_t i = 0; i < left.attributes.size(); ++i) {
    if (left.attributes[i].key != right.attributes[i].key ||
        left.attributes[i].value != right.attributes[i].value) {
      return false;
    }
  }
  return true;
}

bool ReadValue(simdjson::dom::element element, Value& value) {
  value = Value();
  switch (element.type()) {
    case simdjson::dom::element_type::STRING:
      value.text = element.get_string().value_unsafe();
      return !HoldsNul(value.text);
    case simdjson::dom::element_type::INT64:
      value.kind = ValueKind::kInteger;
      value.integer = element.get_int64().value_unsafe();
      return true;
    case simdjson::dom::element_type::UINT64:
      // Past the 64-bit integers: the reader makes it a double.
      value.kind = ValueKind::kReal;
      value.real = static_cast<double>(element.get_uint64().value_unsafe());
      return true;
    case simdjson::dom::element_type::DOUBLE:
      value.kind = ValueKind::kReal;
      value.real = element.get_double().value_unsafe();
      return true;
    case simdjson::dom::element_type::BOOL:
      value.kind = ValueKind::kBoolean;
      value.boolean = element.get_bool().value_unsafe();
      return true;
    default:
      return false;
  }
}

bool ReadRecord(const RecordKind& kind, simdjson::dom::element element, Record& record,
                EntryProblem& problem) {
  record.id = std::string_view();
  for (Text& text : record.fields) text = Text();
  record.attributes.clear();
  record.attributesGiven = false;
  simdjson::dom::object entry;
  if (element.get_object().get(entry) != simdjson::SUCCESS) {
    problem = {"", std::string("an entry of \"") + kind.list + "\" must be a JSON object"};
    return false;
  }
  // The first member of each name counts.
  constexpr int kIdSlot = kMostFields;
  constexpr int kAttributesSlot = kMostFields + 1;
  simdjson::dom::element found[kMostFields + 2];
  bool present[kMostFields + 2] = {};
  for (auto member : entry) {
    int slot = -1;
    if (member.key == "id") {
      slot = kIdSlot;
    } else if (kind.hasAttributes && member.key == "attributes") {
      slot = kAttributesSlot;
    } else {
      for (int field = 0; field < kind.fieldCount; ++field) {
        if (member.key == kind.fieldNames[field]) {
          slot = field;
          break;
        }
      }
    }
    if (slot >= 0 && !present[slot]) {
      present[slot] = true;
      found[slot] = member.value;
    }
  }
  const auto text = [&](int slot, std::string_view name, std::string_view& out) {
    if (found[slot].get_string().get(out) != simdjson::SUCCESS) {
      problem = {"/" + std::string(name), "\"" + std::string(name) + "\" must be a string"};
      return false;
    }
    if (HoldsNul(out)) {
      problem = {"/" + std::string(name),
                 "\"" + std::string(name) + "\" must not hold a NUL character"};
      return false;
    }
    return true;
  };
  if (!present[kIdSlot]) {
    problem = {"", std::string(kind.withArticle) + " must have an \"id\""};
    return false;
  }
  if (!text(kIdSlot, "id", record.id)) return false;
  for (int field = 0; field < kind.fieldCount; ++field) {
    if (!present[field]) continue;
    if (!text(field, kind.fieldNames[field], record.fields[field].value)) return false;
    record.fields[field].present = true;
  }
  if (present[kAttributesSlot]) {
    record.attributesGiven = true;
    simdjson::dom::object attributes;
    if (found[kAttributesSlot].get_object().get(attributes) != simdjson::SUCCESS) {
      problem = {"/attributes", "\"attributes\" must be a JSON object"};
      return false;
    }
    for (auto member : attributes) {
      const auto at = [&member] {
        // The key escaped as a JSON pointer's token.
        std::string pointer = "/attributes/";
        for (char c : member.key) {
          if (c == '~') {
            pointer += "~0";
          } else if (c == '/') {
            pointer += "~1";
          } else {
            pointer += c;
          }
        }
        return pointer;
      };
      if (member.key.empty()) {
        problem = {at(), "an attribute name must not be empty"};
        return false;
      }
      if (HoldsNul(member.key)) {
        problem = {at(), "an attribute name must not hold a NUL character"};
        return false;
      }
      Value value;
      if (!ReadValue(member.value, value)) {
        problem = {at(), member.value.is_string()
                             ? "an attribute value must not hold a NUL character"
                             : "an attribute value must be a string, a number or a boolean"};
        return false;
      }
      record.attributes.push_back({member.key, value});
    }
    // By key; of equal keys the last one given stays, as a map assigned in
    // turn keeps it.
    std::stable_sort(
        record.attributes.begin(), record.attributes.end(),
        [](const Attribute& left, const Attribute& right) { return left.key < right.key; });
    size_t kept = 0;
    for (size_t i = 0; i < record.attributes.size(); ++i) {
      if (kept > 0 && record.attributes[kept - 1].key == record.attributes[i].key) {
        record.attributes[kept - 1] = record.attributes[i];
      } else {
        record.attributes[kept++] = record.attributes[i];
      }
    }
    record.attributes.resize(kept);
  }
  return true;
}

void AppendRecordJson(std::string& out, const RecordKind& kind, const Record& record, bool spaced) {
  const char* const separator = spaced ? ", " : ",";
  out += '{';
  AppendQuotedKey(out, "id", spaced);
  AppendJsonString(out, record.id);
  for (int field = 0; field < kind.fieldCount; ++field) {
    if (!record.fields[field].present) continue;
    out += separator;
    AppendQuotedKey(out, kind.fieldNames[field], spaced);
    AppendJsonString(out, record.fields[field].value);
  }
  if (!record.attributes.empty()) {
    out += separator;
    AppendQuotedKey(out, "attributes", spaced);
    out += '{';
    bool first = true;
    for (const Attribute& attribute : record.attributes) {
      if (!first) out += separator;
      first = false;
      AppendQuotedKey(out, attribute.key, spaced);
      AppendValueJson(out, attribute.value);
    }
    out += '}';
  }
  out += '}';
}

void AppendElementJson(std::string& out, simdjson::dom::element element) {
  switch (element.type()) {
    case simdjson::dom::element_type::OBJECT: {
      out += '{';
      bool first = true;
      const simdjson::dom::object object = element.get_object().value_unsafe();
      for (auto member : object) {
        if (!first) out += ", ";
        first = false;
        AppendQuotedKey(out, member.key, true);
        AppendElementJson(out, member.value);
      }
      out += '}';
      return;
    }
    case simdjson::dom::element_type::ARRAY: {
      out += '[';
      bool first = true;
      const simdjson::dom::array array = element.get_array().value_unsafe();
      for (simdjson::dom::element item : array) {
        if (!first) out += ", ";
        first = false;
        AppendElementJson(out, item);
      }
      out += ']';
      return;
    }
    case simdjson::dom::element_type::UINT64: {
      char number[24];
      const auto end =
          std::to_chars(number, number + sizeof number, element.get_uint64().value_unsafe()).ptr;
      out.append(number, static_cast<size_t>(end - number));
      return;
    }
    case simdjson::dom::element_type::NULL_VALUE:
      out += "null";
      return;
    default: {
      // Strings, integers, reals and booleans as attribute values are.
      Value value;
      ReadValue(element, value);
      if (element.is_string()) value = Value::String(element.get_string().value_unsafe());
      AppendValueJson(out, value);
    }
  }
}

}  // namespace vekzol_tool

// File: ContentRecord.h
// The content of one entry of a model file, as `compare --content`, `diff`
// and `apply` see it: its id, its text fields, each absent or a string (an
// empty string is present), and, for an object, its attributes by key.
// The texts are views into a parsed JSON document, which outlives the
// record.
//
// An object's fields, in the fixed order of every output: name, refId,
// sciid, backupName, identPath, then its attributes by key (byte order). A
// relation's: type, source, target. Of a member given twice in an entry
// the first counts, of an attribute given twice the last, as the model
// reader reads them (ModelFile.cpp).
//
// Attribute values are compared as JSON values after the reader's reading
// of them: a string, an integer (a number written without fraction or
// exponent that fits 64 bits), a real (any other number, as the nearest
// double) or a boolean. Equal values are of the same kind and value: 12.5
// and 12.50 are equal, so are 1e2 and 100.0, but 30 (integer) and 30.0
// (real) are not, as the library's attribute variants VT_I4 and VT_R8 are
// not; of reals the bits count, so 0.0 and -0.0 differ. The JSON type of
// integers and reals alike is "number".
#ifndef VEKZOL_TOOLS_VEKZOL_CONTENTRECORD_H_
#define VEKZOL_TOOLS_VEKZOL_CONTENTRECORD_H_

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vekzol_tool {

enum class ValueKind : uint8_t { kString, kInteger, kReal, kBoolean };

// An attribute value, or a text field's string (kind kString).
struct Value {
  ValueKind kind = ValueKind::kString;
  bool boolean = false;
  std::string_view text;
  int64_t integer = 0;
  double real = 0.0;

  static Value String(std::string_view text) {
    Value value;
    value.text = text;
    return value;
  }
};

bool operator==(const Value& left, const Value& right);
inline bool operator!=(const Value& left, const Value& right) { return !(left == right); }

// "string", "number" or "boolean".
const char* JsonTypeName(ValueKind kind);

// Appends `text` as a JSON string literal, escaped as JsonString escapes
// (ComparisonReport.h).
void AppendJsonString(std::string& out, std::string_view text);
// Appends the value's JSON text: a string literal, an integer in decimal, a
// real as C++ std::to_chars writes a double without a format (the shortest
// text in printf's fixed or exponent notation that reads back as the same
// double, fixed on a tie, of equally short texts the nearest to the value:
// 11, 12.5, 1e-04, 1e+16, 18446744073709551616) with ".0" appended when it
// has neither "." nor "e", so that it reads back as a real; true or false.
void AppendValueJson(std::string& out, const Value& value);

// A text field: absent, or a string.
struct Text {
  std::string_view value;
  bool present = false;
};

struct Attribute {
  std::string_view key;
  Value value;
};

// What kind of entry a record is, and the fields it has.
struct RecordKind {
  const char* list;         // "objects", "relations": the model file's list
  const char* singular;     // "object", "relation"
  const char* withArticle;  // "an object", "a relation"
  const char* title;        // "Objects", "Relations"
  int fieldCount;
  const std::string_view* fieldNames;
  bool hasAttributes;
};
extern const RecordKind kObjectKind;
extern const RecordKind kRelationKind;
// The largest field count of a kind.
constexpr int kMostFields = 5;

struct Record {
  std::string_view id;
  Text fields[kMostFields];
  // By key, one per key; objects only.
  std::vector<Attribute> attributes;
  // The entry has an "attributes" member (possibly empty).
  bool attributesGiven = false;

  // The attribute of `key`, or null.
  const Attribute* FindAttribute(std::string_view key) const;
};

// The same fields and attributes (the ids are not compared).
bool SameContent(const RecordKind& kind, const Record& left, const Record& right);

// Where an entry is not as the model reader requires: the JSON pointer of
// the value at fault below the entry ("" for the entry itself, "/id",
// "/attributes/station") and the reader's message for it.
struct EntryProblem {
  std::string pointer;
  std::string message;
};

// Reads the entry `element` of a list of `kind` into `record` (its previous
// content is replaced, its attribute storage reused). False, with the
// problem, when the entry is not as the model reader requires: not an
// object, no string "id", a field that is not a string, a string holding
// U+0000, attributes that are not an object of non-empty keys with string,
// number or boolean values.
bool ReadRecord(const RecordKind& kind, simdjson::dom::element element, Record& record,
                EntryProblem& problem);

// Appends the value as the model reader reads it: false when it is no
// string, number or boolean, or a string holding U+0000.
bool ReadValue(simdjson::dom::element element, Value& value);

// Appends the record as one JSON object: "id", the fields given in their
// order, then "attributes" (by key) when there are any. `spaced` puts a
// blank after each ',' and ':' (files for people); without it the text is
// compact (the canonical form of the digest).
void AppendRecordJson(std::string& out, const RecordKind& kind, const Record& record, bool spaced);

// Appends a parsed JSON value as JSON text: members and elements in their
// order, strings escaped as above, integers in decimal, reals as above;
// with blanks after ',' and ':'.
void AppendElementJson(std::string& out, simdjson::dom::element element);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CONTENTRECORD_H_

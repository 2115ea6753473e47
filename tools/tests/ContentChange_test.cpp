// Tests of the pieces behind `compare --content`, `diff` and `apply` that
// need no process of their own: the JSON text of values, the reading of an
// entry's content as the model reader reads it, the order of changes, the
// SHA-256 and the canonical form of the content digest, and the model
// content read from a file.
#include <gtest/gtest.h>
#include <simdjson.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "ComparisonReport.h"
#include "ContentDifference.h"
#include "ContentRecord.h"
#include "ModelContent.h"
#include "ModelDigest.h"
#include "ModelFile.h"
#include "Phases.h"
#include "ToolError.h"

namespace vekzol_tool {
namespace {

std::string ValueText(const Value& value) {
  std::string text;
  AppendValueJson(text, value);
  return text;
}

Value Integer(int64_t number) {
  Value value;
  value.kind = ValueKind::kInteger;
  value.integer = number;
  return value;
}

Value Real(double number) {
  Value value;
  value.kind = ValueKind::kReal;
  value.real = number;
  return value;
}

Value Boolean(bool flag) {
  Value value;
  value.kind = ValueKind::kBoolean;
  value.boolean = flag;
  return value;
}

TEST(AppendJsonString, EscapesEveryByteAsJsonStringDoes) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text = "a" + std::string(1, static_cast<char>(byte)) + "b";
    std::string appended;
    AppendJsonString(appended, text);
    EXPECT_EQ(appended, JsonString(text.data(), text.size())) << "byte " << byte;
  }
  std::string appended = "x";
  AppendJsonString(appended, "Schwei\xc3\x9f\n\"q\"\\");
  EXPECT_EQ(appended, "x\"Schwei\xc3\x9f\\n\\\"q\\\"\\\\\"");
}

TEST(AppendValueJson, WritesIntegersInDecimal) {
  EXPECT_EQ(ValueText(Integer(0)), "0");
  EXPECT_EQ(ValueText(Integer(-30)), "-30");
  EXPECT_EQ(ValueText(Integer(std::numeric_limits<int64_t>::min())), "-9223372036854775808");
  EXPECT_EQ(ValueText(Integer(std::numeric_limits<int64_t>::max())), "9223372036854775807");
}

TEST(AppendValueJson, WritesRealsInTheirShortestFormThatReadsBackAsReal) {
  EXPECT_EQ(ValueText(Real(11.0)), "11.0");
  EXPECT_EQ(ValueText(Real(12.5)), "12.5");
  EXPECT_EQ(ValueText(Real(0.1)), "0.1");
  EXPECT_EQ(ValueText(Real(0.0001)), "1e-04");
  EXPECT_EQ(ValueText(Real(1e16)), "1e+16");
  EXPECT_EQ(ValueText(Real(123456.0)), "123456.0");
  EXPECT_EQ(ValueText(Real(-0.0)), "-0.0");
  EXPECT_EQ(ValueText(Real(18446744073709551616.0)), "18446744073709551616.0");
}

TEST(AppendValueJson, WritesStringsAndBooleansAsJson) {
  EXPECT_EQ(ValueText(Value::String("a\"b")), "\"a\\\"b\"");
  EXPECT_EQ(ValueText(Boolean(true)), "true");
  EXPECT_EQ(ValueText(Boolean(false)), "false");
}

TEST(Value, IsEqualOnlyInKindAndValue) {
  EXPECT_EQ(Integer(30), Integer(30));
  EXPECT_NE(Integer(30), Integer(31));
  EXPECT_NE(Integer(30), Real(30.0));
  EXPECT_NE(Integer(30), Value::String("30"));
  EXPECT_NE(Integer(1), Boolean(true));
  EXPECT_EQ(Real(12.5), Real(12.5));
  EXPECT_NE(Real(0.0), Real(-0.0));
  EXPECT_EQ(Value::String("a"), Value::String("a"));
  EXPECT_NE(Boolean(true), Boolean(false));
  EXPECT_STREQ(JsonTypeName(ValueKind::kInteger), "number");
  EXPECT_STREQ(JsonTypeName(ValueKind::kReal), "number");
  EXPECT_STREQ(JsonTypeName(ValueKind::kString), "string");
  EXPECT_STREQ(JsonTypeName(ValueKind::kBoolean), "boolean");
}

// Parses `json` and reads it as an entry of `kind`.
class RecordOf {
 public:
  RecordOf(const RecordKind& kind, const std::string& json) : text_(json) {
    simdjson::dom::element element;
    EXPECT_EQ(parser_.parse(text_).get(element), simdjson::SUCCESS);
    read_ = ReadRecord(kind, element, record_, problem_);
  }
  bool read() const { return read_; }
  const Record& record() const { return record_; }
  const EntryProblem& problem() const { return problem_; }

 private:
  simdjson::padded_string text_;
  simdjson::dom::parser parser_;
  Record record_;
  EntryProblem problem_;
  bool read_ = false;
};

TEST(ReadRecord, TakesTheFirstMemberOfANameAndTheLastOfAnAttributeKey) {
  const RecordOf entry(kObjectKind,
                       R"({"id": "A", "name": "first", "name": "second",
                           "attributes": {"k": 1, "k": 2}, "attributes": {"other": 3}})");
  ASSERT_TRUE(entry.read());
  EXPECT_EQ(entry.record().id, "A");
  EXPECT_EQ(entry.record().fields[0].value, "first");
  ASSERT_EQ(entry.record().attributes.size(), 1u);
  EXPECT_EQ(entry.record().attributes[0].key, "k");
  EXPECT_EQ(entry.record().attributes[0].value, Integer(2));
}

TEST(ReadRecord, TellsAnAbsentFieldFromAnEmptyOne) {
  const RecordOf entry(kObjectKind, R"({"id": "A", "name": ""})");
  ASSERT_TRUE(entry.read());
  EXPECT_TRUE(entry.record().fields[0].present);
  EXPECT_EQ(entry.record().fields[0].value, "");
  EXPECT_FALSE(entry.record().fields[1].present);
  EXPECT_FALSE(entry.record().attributesGiven);
}

TEST(ReadRecord, SortsAttributesByTheBytesOfTheirKeys) {
  const RecordOf entry(kObjectKind,
                       "{\"id\": \"A\", \"attributes\": {\"b\": 1, \"\xc3\xa9\": 2, \"Z\": 3, "
                       "\"a\": 4}}");
  ASSERT_TRUE(entry.read());
  std::vector<std::string> keys;
  for (const Attribute& attribute : entry.record().attributes) keys.emplace_back(attribute.key);
  EXPECT_EQ(keys, (std::vector<std::string>{"Z", "a", "b", "\xc3\xa9"}));
}

TEST(ReadRecord, ReadsNumbersAsTheModelReaderDoes) {
  const RecordOf entry(kObjectKind, R"({"id": "A", "attributes": {"a": 1e2, "b": 100,
      "c": 18446744073709551615, "d": -9223372036854775808, "e": 12.50}})");
  ASSERT_TRUE(entry.read());
  const auto& attributes = entry.record().attributes;
  ASSERT_EQ(attributes.size(), 5u);
  EXPECT_EQ(attributes[0].value, Real(100.0));
  EXPECT_EQ(attributes[1].value, Integer(100));
  EXPECT_EQ(attributes[2].value, Real(18446744073709551615.0));
  EXPECT_EQ(attributes[3].value, Integer(std::numeric_limits<int64_t>::min()));
  EXPECT_EQ(attributes[4].value, Real(12.5));
}

TEST(ReadRecord, ReadsOnlyTheFieldsOfItsKind) {
  const RecordOf relation(kRelationKind,
                          R"({"id": "R", "name": 5, "attributes": 7, "source": "A"})");
  ASSERT_TRUE(relation.read());
  EXPECT_FALSE(relation.record().fields[0].present);  // type
  EXPECT_EQ(relation.record().fields[1].value, "A");
  EXPECT_TRUE(relation.record().attributes.empty());
}

TEST(ReadRecord, NamesTheValueAtFaultAsTheModelReaderWordsIt) {
  const RecordOf missing(kRelationKind, R"({"source": "A"})");
  EXPECT_FALSE(missing.read());
  EXPECT_EQ(missing.problem().pointer, "");
  EXPECT_EQ(missing.problem().message, "a relation must have an \"id\"");
  const RecordOf number(kObjectKind, R"({"id": "A", "sciid": 5})");
  EXPECT_FALSE(number.read());
  EXPECT_EQ(number.problem().pointer, "/sciid");
  EXPECT_EQ(number.problem().message, "\"sciid\" must be a string");
  const RecordOf null(kObjectKind, R"({"id": "A", "attributes": {"a~/b": null}})");
  EXPECT_FALSE(null.read());
  EXPECT_EQ(null.problem().pointer, "/attributes/a~0~1b");
  EXPECT_EQ(null.problem().message, "an attribute value must be a string, a number or a boolean");
  const RecordOf list(kObjectKind, R"([])");
  EXPECT_FALSE(list.read());
  EXPECT_EQ(list.problem().message, "an entry of \"objects\" must be a JSON object");
}

TEST(CompareRecords, ListsTheFieldsInTheirOrderThenTheAttributesByKey) {
  const RecordOf before(kObjectKind, R"({"id": "A", "identPath": "/a", "name": "N",
      "attributes": {"z": 1, "m": "x", "a": true}})");
  const RecordOf after(kObjectKind, R"({"id": "A", "refId": "R", "name": "M",
      "attributes": {"z": 1.0, "b": "new", "a": true}})");
  std::vector<Change> changes;
  ASSERT_EQ(CompareRecords(kObjectKind, before.record(), after.record(), changes), 6u);
  std::vector<std::string> described;
  for (const Change& change : changes) {
    described.push_back(std::string(ChangeName(kObjectKind, change)) + " " + ChangeWord(change));
  }
  EXPECT_EQ(described, (std::vector<std::string>{"name changed", "refId added", "identPath removed",
                                                 "b added", "m removed", "z changed"}));
  std::string json;
  AppendChangeJson(json, kObjectKind, changes[5], true);
  EXPECT_EQ(json,
            "{\"attribute\": \"z\", \"change\": \"changed\", \"oldType\": \"number\", "
            "\"old\": 1, \"newType\": \"number\", \"new\": 1.0}");
  json.clear();
  AppendChangeJson(json, kObjectKind, changes[2], false);
  EXPECT_EQ(json, "{\"field\": \"identPath\", \"old\": \"/a\"}");
}

TEST(Sha256, GivesTheStandardDigests) {
  Sha256 empty;
  EXPECT_EQ(empty.Finish(),
            "sha256:e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  Sha256 abc;
  abc.Update("a");
  abc.Update("bc");
  EXPECT_EQ(abc.Finish(),
            "sha256:ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(CanonicalForm, OfAnEmptyModelIsTwoEmptyLists) {
  CanonicalForm form(true);
  form.BeginList(kObjectKind);
  form.BeginList(kRelationKind);
  // Digests computed apart with Python's hashlib.
  EXPECT_EQ(form.Finish(),
            "sha256:77ea82e14b0b3385c5eec71347adff8e8a52f51b200c87071c48dfb5d201764c");
  EXPECT_EQ(form.Text(), "{\"objects\":[],\"relations\":[]}");
}

TEST(CanonicalForm, WritesRecordsCompactInTheFixedOrder) {
  const RecordOf object(kObjectKind, R"({"attributes": {"d": "x\"y", "c": true, "b": 2.0,
      "a": 1}, "name": "N", "id": "A", "unknown": [1]})");
  const RecordOf relation(kRelationKind, R"({"source": "A", "id": "R", "type": "t"})");
  CanonicalForm form(true);
  form.BeginList(kObjectKind);
  form.Add(kObjectKind, object.record());
  form.BeginList(kRelationKind);
  form.Add(kRelationKind, relation.record());
  EXPECT_EQ(form.Finish(),
            "sha256:ca88e41064af522ea91a059e2f2b6e5016e9a1d8189da92bd7bcdbb63f2ec0fe");
  EXPECT_EQ(form.Text(),
            "{\"objects\":[{\"id\":\"A\",\"name\":\"N\",\"attributes\":{\"a\":1,\"b\":2.0,"
            "\"c\":true,\"d\":\"x\\\"y\"}}],\"relations\":[{\"id\":\"R\",\"type\":\"t\","
            "\"source\":\"A\"}]}");
}

// A file in the test's temporary directory.
std::string TempFile(const std::string& name, const std::string& text) {
  const char* directory = std::getenv("VEKZOL_TEST_TEMP");
  const std::string path = std::string(directory != nullptr ? directory : ".") + "/" + name;
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

std::string DigestOf(const std::string& path) {
  ModelContent model(path);
  PhaseTimes times;
  model.Load(times, true);
  return model.Digest();
}

TEST(ModelContent, DigestIgnoresLayoutOrderAndLaterEntriesOfAnId) {
  const std::string digest = DigestOf(TempFile(
      "first.json",
      R"({"objects": [{"id": "B", "name": "b"}, {"id": "A", "attributes": {"x": 1, "y": 2}}],
          "relations": [{"id": "R", "source": "A", "target": "B"}]})"));
  EXPECT_EQ(DigestOf(TempFile("reordered.json",
                              "{\"relations\":[{\"target\":\"B\",\"source\":\"A\",\"id\":\"R\"}],"
                              "\"objects\":[{\"attributes\":{\"y\":2,\"x\":1},\"id\":\"A\"},"
                              "{\"name\":\"b\",\"id\":\"B\",\"ignored\":null},"
                              "{\"id\":\"A\",\"name\":\"later\"}]}")),
            digest);
  EXPECT_NE(DigestOf(TempFile("changed.json",
                              R"({"objects": [{"id": "B", "name": "b"},
                                  {"id": "A", "attributes": {"x": 1, "y": 2.0}}],
                                  "relations": [{"id": "R", "source": "A", "target": "B"}]})")),
            digest);
}

TEST(ModelContent, ListsEntriesByIdThenByPlace) {
  const std::string path =
      TempFile("sorted.json", R"({"objects": [{"id": "b"}, {"id": "a"}, {"id": "b"}]})");
  ModelContent model(path);
  PhaseTimes times;
  model.Load(times, false);
  const auto& entries = model.Sorted(kObjectKind);
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].id, "a");
  EXPECT_EQ(entries[0].index, 1u);
  EXPECT_EQ(entries[1].index, 0u);
  EXPECT_EQ(entries[2].index, 2u);
  EXPECT_TRUE(model.HasList(kObjectKind));
  EXPECT_FALSE(model.HasList(kRelationKind));
}

TEST(ModelContent, RefusesAFileWithTheModelReadersMessage) {
  const std::string path = TempFile("refused.json", "{\"objects\": [\n  {\"id\": 5}\n]}\n");
  std::string message;
  try {
    ModelContent model(path);
    PhaseTimes times;
    model.Load(times, false);
  } catch (const ToolError& error) {
    message = error.what();
  }
  EXPECT_EQ(message, path + ":2:10: \"id\" must be a string");
}

}  // namespace
}  // namespace vekzol_tool

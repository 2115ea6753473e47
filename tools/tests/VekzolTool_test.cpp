// Tests of the vekzol tool's pieces that need no process of their own: the
// JSON escaping and the two renderings of a comparison, the positions of
// JSON errors, the output file that appears only on success, and the
// environment variables of the process.
#include <gtest/gtest.h>
#include <simdjson.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "ComparisonReport.h"
#include "FileIO.h"
#include "JsonLocation.h"
#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {
namespace {

std::string Escaped(const std::string& text) { return JsonString(text.data(), text.size()); }

TEST(JsonString, EscapesQuotesAndBackslashes) { EXPECT_EQ(Escaped("a\"b\\c"), "\"a\\\"b\\\\c\""); }

TEST(JsonString, EscapesEveryControlCharacter) {
  EXPECT_EQ(Escaped("\b\f\n\r\t"), "\"\\b\\f\\n\\r\\t\"");
  EXPECT_EQ(Escaped(std::string("\x01\x1f\x7f", 3)), "\"\\u0001\\u001f\\u007f\"");
  EXPECT_EQ(Escaped(std::string("a\0b", 3)), "\"a\\u0000b\"");
}

TEST(JsonString, KeepsUtf8AndSlashAsTheyAre) {
  EXPECT_EQ(Escaped("Schwei\xc3\x9f"
                    "en/\xe6\xba\xb6"),
            "\"Schwei\xc3\x9f"
            "en/\xe6\xba\xb6\"");
}

ComparisonReport SmallReport(bool withRoots) {
  ComparisonReport report;
  report.different = true;
  report.lists = {{"verticesToBeAdded", "Vertices to add", {"B", "C"}},
                  {"verticesToBeRemoved", "Vertices to remove", {}}};
  if (withRoots) {
    report.withRoots = true;
    report.roots = {{"rootEdgesToAdd", "Root edges to add", {"R\"1"}}};
  }
  return report;
}

TEST(RenderText, WritesSectionsWithCountsAndOneIdPerLine) {
  EXPECT_EQ(RenderText(SmallReport(true)),
            "Vertices to add (2):\n  B\n  C\nVertices to remove (0):\n"
            "Root edges to add (1):\n  R\"1\nOutcome: different\n");
}

TEST(RenderJson, WritesOneObjectWithOutcomeFirst) {
  EXPECT_EQ(
      RenderJson(SmallReport(true)),
      "{\n  \"outcome\": \"different\",\n  \"verticesToBeAdded\": [\n    \"B\",\n    \"C\"\n"
      "  ],\n  \"verticesToBeRemoved\": [],\n  \"rootEdgesToAdd\": [\n    \"R\\\"1\"\n  ]\n}\n");
}

TEST(RenderJson, ReportsIdenticalModels) {
  ComparisonReport report;
  EXPECT_EQ(RenderJson(report), "{\n  \"outcome\": \"identical\"\n}\n");
  EXPECT_EQ(RenderText(report), "Outcome: identical\n");
}

TEST(RenderJson, IsValidJsonThatReadsBackTheIds) {
  ComparisonReport report = SmallReport(false);
  report.lists[1].ids.push_back(CString("x\"\\\n\x01\xc3\xa9"));
  const std::string json = RenderJson(report);
  simdjson::dom::parser parser;
  simdjson::dom::element root;
  ASSERT_EQ(parser.parse(json).get(root), simdjson::SUCCESS);
  std::string_view id;
  ASSERT_EQ(root["verticesToBeRemoved"].at(0).get_string().get(id), simdjson::SUCCESS);
  EXPECT_EQ(id, "x\"\\\n\x01\xc3\xa9");
}

TEST(PositionOf, CountsLinesAndCharacters) {
  const std::string text = "ab\n\xc3\xa9x\ny";
  EXPECT_EQ(PositionOf(text.data(), text.size(), 0).line, 1u);
  EXPECT_EQ(PositionOf(text.data(), text.size(), 0).column, 1u);
  // "x" follows a two-byte character: column 2.
  EXPECT_EQ(PositionOf(text.data(), text.size(), 5).line, 2u);
  EXPECT_EQ(PositionOf(text.data(), text.size(), 5).column, 2u);
  EXPECT_EQ(PositionOf(text.data(), text.size(), 7).line, 3u);
  EXPECT_EQ(PositionOf(text.data(), text.size(), 7).column, 1u);
  EXPECT_EQ(PositionOf(text.data(), text.size(), 99).column, 2u);  // clamped to the end
}

TEST(FindSyntaxError, PointsAtTheOffendingCharacter) {
  const std::string json = "{\"a\": [1, 2,, 3]}";
  size_t offset = 0;
  std::string reason;
  ASSERT_TRUE(FindSyntaxError(json.data(), json.size(), offset, reason));
  EXPECT_EQ(offset, 12u);
  EXPECT_EQ(reason.rfind("syntax error", 0), 0u) << reason;
  EXPECT_FALSE(FindSyntaxError("{}", 2, offset, reason));
}

TEST(FindValue, FindsTheValueOfAPointer) {
  simdjson::padded_string json(std::string("{\"objects\": [{\"id\": 1}, {\"id\": 17}]}"));
  size_t offset = 0;
  ASSERT_TRUE(FindValue(json, "/objects/1/id", offset));
  EXPECT_EQ(offset, 31u);
  EXPECT_FALSE(FindValue(json, "/objects/2", offset));
}

// The parser's own rule, which FindNestingPast must agree with: the
// top-level value is level 1; a value past `deepest` is refused.
bool ParserTakes(const std::string& json) {
  simdjson::dom::parser parser;
  simdjson::dom::element root;
  return parser.parse(json).get(root) == simdjson::SUCCESS;
}

TEST(FindNestingPast, FindsTheFirstValuePastTheDeepestLevel) {
  // Two levels allowed: the number inside two arrays is level 3.
  size_t offset = 0;
  EXPECT_FALSE(FindNestingPast("[[]]", 4, 2, offset));
  EXPECT_FALSE(FindNestingPast("[1, {}]", 7, 2, offset));
  ASSERT_TRUE(FindNestingPast("[0, [1]]", 8, 2, offset));
  EXPECT_EQ(offset, 5u);
  ASSERT_TRUE(FindNestingPast("[[[]]]", 6, 2, offset));
  EXPECT_EQ(offset, 2u);
}

TEST(FindNestingPast, PointsAtTheValueNotAtTheMemberName) {
  const std::string json = "{\"a\": {\"b\": true}}";
  size_t offset = 0;
  ASSERT_TRUE(FindNestingPast(json.data(), json.size(), 2, offset));
  EXPECT_EQ(offset, json.find("true"));
}

TEST(FindNestingPast, SkipsBracketsAndQuotesInsideStrings) {
  const std::string json = "[\"[[\\\"{{\", [\"x\"]]";
  size_t offset = 0;
  ASSERT_TRUE(FindNestingPast(json.data(), json.size(), 2, offset));
  EXPECT_EQ(offset, json.find("\"x\""));
}

TEST(FindNestingPast, AgreesWithTheParserAtItsDeepestLevel) {
  const size_t deepest = 1024;
  const auto nested = [](size_t arrays, const std::string& inner) {
    return "{\"x\":" + std::string(arrays, '[') + inner + std::string(arrays, ']') + "}";
  };
  size_t offset = 0;
  // Level 1 is the object, level 2 the first array.
  for (const std::string& inner : {std::string(""), std::string("1")}) {
    const size_t arraysAtLimit = inner.empty() ? deepest - 1 : deepest - 2;
    const std::string atLimit = nested(arraysAtLimit, inner);
    EXPECT_TRUE(ParserTakes(atLimit));
    EXPECT_FALSE(FindNestingPast(atLimit.data(), atLimit.size(), deepest, offset));
    const std::string pastLimit = nested(arraysAtLimit + 1, inner);
    EXPECT_FALSE(ParserTakes(pastLimit));
    ASSERT_TRUE(FindNestingPast(pastLimit.data(), pastLimit.size(), deepest, offset));
    // The bracket or the number past the arrays at the limit.
    EXPECT_EQ(offset, 5 + arraysAtLimit + inner.size());
  }
}

TEST(PointerChild, EscapesTildeAndSlash) {
  EXPECT_EQ(PointerChild("/attributes", "a~b/c"), "/attributes/a~0b~1c");
  EXPECT_EQ(PointerChild("/objects", size_t{3}), "/objects/3");
}

std::string TempPath(const char* name) {
  const char* directory = std::getenv("VEKZOL_TEST_TEMP");
  return std::string(directory != nullptr ? directory : ".") + "/" + name;
}

std::string Content(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::stringstream content;
  content << file.rdbuf();
  return content.str();
}

bool Exists(const std::string& path) { return std::ifstream(path).good(); }

TEST(Output, ReplacesTheFileOnlyOnCommit) {
  const std::string path = TempPath("committed.txt");
  { std::ofstream(path) << "previous\n"; }
  {
    Output output(path);
    output.Write("new text\n");
    EXPECT_EQ(Content(path), "previous\n");
    EXPECT_TRUE(Exists(path + ".vekzol-tmp"));
    output.Commit();
  }
  EXPECT_EQ(Content(path), "new text\n");
  EXPECT_FALSE(Exists(path + ".vekzol-tmp"));
}

TEST(Output, LeavesTheFileAloneWithoutCommit) {
  const std::string path = TempPath("abandoned.txt");
  { std::ofstream(path) << "previous\n"; }
  {
    Output output(path);
    output.Write("half a result");
  }
  EXPECT_EQ(Content(path), "previous\n");
  EXPECT_FALSE(Exists(path + ".vekzol-tmp"));
}

TEST(ReadWholeInput, NamesAMissingFile) {
  try {
    ReadWholeInput(TempPath("missing.txt"));
    FAIL() << "no ToolError";
  } catch (const ToolError& error) {
    EXPECT_EQ(std::string(error.what()),
              TempPath("missing.txt") + ": cannot open: No such file or directory");
  }
}

// The variable the tool sets to switch the library's trace off must be
// seen as set afterwards, in the environment the library reads.
TEST(Environment, SetVariableIsSeenAsSet) {
  const char* const name = "VEKZOL_TOOL_TEST_SWITCH";
  EXPECT_FALSE(EnvironmentVariableIsSet(name));
  ASSERT_TRUE(SetEnvironmentVariableOfProcess(name, "FALSE"));
  EXPECT_TRUE(EnvironmentVariableIsSet(name));
}

#ifndef _WIN32
TEST(MappedFile, MapsAFileWhoseLastPageHasRoomAndReadsItsBytes) {
  const std::string path = TempPath("mapped.json");
  { std::ofstream(path, std::ios::binary) << "{\"objects\": []}"; }
  MappedFile mapped;
  ASSERT_TRUE(mapped.Map(path, 64));
  EXPECT_EQ(std::string(mapped.Data(), mapped.Size()), "{\"objects\": []}");
  // The room past the end reads as zeros.
  EXPECT_EQ(std::string(mapped.Data() + mapped.Size(), 64), std::string(64, '\0'));
}
#endif

TEST(MappedFile, LeavesEmptyMissingAndOtherFilesToBeRead) {
  const std::string empty = TempPath("empty.json");
  { std::ofstream(empty, std::ios::binary); }
  MappedFile emptyFile;
  EXPECT_FALSE(emptyFile.Map(empty, 64));
  MappedFile missing;
  EXPECT_FALSE(missing.Map(TempPath("missing.json"), 64));
  MappedFile directory;
  EXPECT_FALSE(directory.Map(TempPath(""), 64));
  // No page has room for more than a page past the end.
  const std::string small = TempPath("small.json");
  { std::ofstream(small, std::ios::binary) << "{}"; }
  MappedFile tooLittleRoom;
  EXPECT_FALSE(tooLittleRoom.Map(small, 1u << 20));
  EXPECT_EQ(nullptr, tooLittleRoom.Data());
}

}  // namespace
}  // namespace vekzol_tool

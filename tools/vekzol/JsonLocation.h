// File: JsonLocation.h
// Where in a JSON text a problem lies, as line and column. The model
// reader parses with a fast parser that reports no positions; these
// functions run only on the error path and find the position afterwards:
// a syntax error by parsing again with a position-aware parser, a value of
// the wrong kind by walking to it with its JSON pointer.
#ifndef VEKZOL_TOOLS_VEKZOL_JSONLOCATION_H_
#define VEKZOL_TOOLS_VEKZOL_JSONLOCATION_H_

#include <cstddef>
#include <string>

namespace simdjson {
struct padded_string;
}

namespace vekzol_tool {

struct TextPosition {
  size_t line = 1;    // from 1
  size_t column = 1;  // from 1, in characters (UTF-8 sequences count once)
};

// The line and column of byte `offset` of `text` (clamped to its end).
TextPosition PositionOf(const char* text, size_t size, size_t offset);

// Parses `json` again to describe its first syntax error: true with the
// byte offset of the offending character and the reason; false when this
// parser finds no error.
bool FindSyntaxError(const char* json, size_t size, size_t& offset, std::string& reason);

// The byte offset of the first value nested deeper than `deepest` levels:
// the top-level value is at level 1, the values inside an array or object
// one level deeper than it. False when there is none. Strings and
// brackets are followed as they come; the text is not checked otherwise.
bool FindNestingPast(const char* json, size_t size, size_t deepest, size_t& offset);

// The byte offset at which the value named by the JSON `pointer` (RFC 6901,
// "/objects/3/id") begins; false when it cannot be found.
bool FindValue(simdjson::padded_string& json, const std::string& pointer, size_t& offset);

// Appends one object key to a JSON pointer, escaping "~" and "/".
std::string PointerChild(const std::string& pointer, const std::string& key);
std::string PointerChild(const std::string& pointer, size_t index);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_JSONLOCATION_H_

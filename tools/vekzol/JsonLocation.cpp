// File: JsonLocation.cpp
#include "JsonLocation.h"

#include <simdjson.h>
#include <nlohmann/json.hpp>

#include <cstring>
#include <vector>

namespace vekzol_tool {

namespace {

// A SAX consumer that keeps nothing: the position-aware parser only has to
// find the first syntax error, not build a document.
class ErrorFinder : public nlohmann::json_sax<nlohmann::json> {
 public:
  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t&) override { return true; }
  bool string(string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override { return true; }
  bool key(string_t&) override { return true; }
  bool end_object() override { return true; }
  bool start_array(std::size_t) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t position, const std::string&,
                   const nlohmann::detail::exception& error) override {
    found = true;
    // `position` counts the characters read, the offending one included.
    offset = position > 0 ? position - 1 : 0;
    reason = error.what();
    // "[json.exception.parse_error.101] parse error at line 1, column 5:
    // syntax error ..." keeps only what follows the position.
    const size_t column = reason.find("column ");
    const size_t colon =
        column == std::string::npos ? reason.find(": ") : reason.find(": ", column);
    if (colon != std::string::npos) reason = reason.substr(colon + 2);
    return false;
  }

  bool found = false;
  size_t offset = 0;
  std::string reason;
};

}  // namespace

TextPosition PositionOf(const char* text, size_t size, size_t offset) {
  if (offset > size) offset = size;
  TextPosition position;
  for (size_t i = 0; i < offset; ++i) {
    const unsigned char byte = static_cast<unsigned char>(text[i]);
    if (byte == '\n') {
      ++position.line;
      position.column = 1;
    } else if ((byte & 0xC0) != 0x80) {
      ++position.column;
    }
  }
  return position;
}

bool FindSyntaxError(const char* json, size_t size, size_t& offset, std::string& reason) {
  ErrorFinder finder;
  nlohmann::json::sax_parse(json, json + size, &finder);
  if (!finder.found) return false;
  offset = finder.offset;
  reason = finder.reason;
  return true;
}

bool FindNestingPast(const char* json, size_t size, size_t deepest, size_t& offset) {
  std::vector<char> open;  // the brackets of the arrays and objects around
  bool name = false;       // the next string names a member
  for (size_t i = 0; i < size; ++i) {
    const char c = json[i];
    if (c == ' ' || c == '\t' || c == '\n' || c == '\r') continue;
    if (c == ',') {
      name = !open.empty() && open.back() == '{';
    } else if (c == ':') {
      name = false;
    } else if (c == ']' || c == '}') {
      if (!open.empty()) open.pop_back();
      name = false;
    } else if (!name && open.size() >= deepest) {
      // A value inside `deepest` arrays and objects.
      offset = i;
      return true;
    } else if (c == '"') {
      for (++i; i < size && json[i] != '"'; ++i) {
        if (json[i] == '\\') ++i;  // the escaped character, a quote among them
      }
    } else if (c == '[' || c == '{') {
      open.push_back(c);
      name = c == '{';
    } else {
      // A number or a literal: up to the next delimiter.
      while (i + 1 < size && std::strchr(" \t\n\r,:[]{}\"", json[i + 1]) == nullptr) ++i;
    }
  }
  return false;
}

bool FindValue(simdjson::padded_string& json, const std::string& pointer, size_t& offset) {
  simdjson::ondemand::parser parser;
  simdjson::ondemand::document document;
  if (parser.iterate(json).get(document) != simdjson::SUCCESS) return false;
  simdjson::ondemand::value value;
  if (pointer.empty()) {
    const char* location = nullptr;
    if (document.current_location().get(location) != simdjson::SUCCESS) return false;
    offset = static_cast<size_t>(location - json.data());
    return true;
  }
  if (document.at_pointer(pointer).get(value) != simdjson::SUCCESS) return false;
  const std::string_view token = value.raw_json_token();
  offset = static_cast<size_t>(token.data() - json.data());
  return offset <= json.size();
}

std::string PointerChild(const std::string& pointer, const std::string& key) {
  std::string child = pointer + "/";
  for (char c : key) {
    if (c == '~') {
      child += "~0";
    } else if (c == '/') {
      child += "~1";
    } else {
      child += c;
    }
  }
  return child;
}

std::string PointerChild(const std::string& pointer, size_t index) {
  return pointer + "/" + std::to_string(index);
}

}  // namespace vekzol_tool

// File: ComparisonReport.cpp
#include "ComparisonReport.h"

#include <cstdio>

namespace vekzol_tool {

namespace {

void AppendTextList(std::string& text, const ComparisonReport::List& list) {
  text += list.title;
  text += " (" + std::to_string(list.ids.size()) + "):\n";
  for (const CString& id : list.ids) {
    text += "  ";
    text.append(id.GetString(), static_cast<size_t>(id.GetLength()));
    text += '\n';
  }
}

void AppendJsonList(std::string& json, const ComparisonReport::List& list) {
  json += ",\n  \"";
  json += list.key;
  json += "\": [";
  bool first = true;
  for (const CString& id : list.ids) {
    json += first ? "\n    " : ",\n    ";
    json += JsonString(id.GetString(), static_cast<size_t>(id.GetLength()));
    first = false;
  }
  json += first ? "]" : "\n  ]";
}

}  // namespace

std::string RenderText(const ComparisonReport& report) {
  std::string text;
  for (const auto& list : report.lists) AppendTextList(text, list);
  for (const auto& list : report.roots) AppendTextList(text, list);
  text += report.different ? "Outcome: different\n" : "Outcome: identical\n";
  return text;
}

std::string RenderJson(const ComparisonReport& report) {
  std::string json = "{\n  \"outcome\": ";
  json += report.different ? "\"different\"" : "\"identical\"";
  for (const auto& list : report.lists) AppendJsonList(json, list);
  for (const auto& list : report.roots) AppendJsonList(json, list);
  json += "\n}\n";
  return json;
}

std::string JsonString(const char* text, size_t size) {
  std::string json;
  json.reserve(size + 2);
  json += '"';
  for (size_t i = 0; i < size; ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    switch (c) {
      case '"':
        json += "\\\"";
        break;
      case '\\':
        json += "\\\\";
        break;
      case '\b':
        json += "\\b";
        break;
      case '\f':
        json += "\\f";
        break;
      case '\n':
        json += "\\n";
        break;
      case '\r':
        json += "\\r";
        break;
      case '\t':
        json += "\\t";
        break;
      default:
        if (c < 0x20 || c == 0x7F) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          json += escaped;
        } else {
          json += static_cast<char>(c);
        }
    }
  }
  json += '"';
  return json;
}

}  // namespace vekzol_tool

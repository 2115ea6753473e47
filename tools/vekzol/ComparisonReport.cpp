// File: ComparisonReport.cpp
#include "ComparisonReport.h"

#include <vekzol/VEKZOLBase.h>

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

ComparisonReport CollectLists(VEKZOLGraphComparator& comparator, long outcome) {
  ComparisonReport report;
  report.different = outcome == S_OK;
  report.lists = {{"verticesToBeAdded", "Vertices to add", {}},
                  {"verticesToBeRemoved", "Vertices to remove", {}},
                  {"verticesToBeMoved", "Vertices to move", {}},
                  {"verticesToChangeName", "Vertices to rename", {}},
                  {"edgesToBeAdded", "Edges to add", {}},
                  {"edgesToBeRemoved", "Edges to remove", {}}};
  // The getters answer E_FAIL on their normal path: the lists are the result.
  comparator.GetVerticesToBeAdded(report.lists[0].ids);
  comparator.GetVerticesToBeRemoved(report.lists[1].ids);
  comparator.GetVerticesToBeMoved(report.lists[2].ids);
  comparator.GetVerticesToChangeName(report.lists[3].ids);
  comparator.GetEdgesToBeAdded(report.lists[4].ids);
  comparator.GetEdgesToBeRemoved(report.lists[5].ids);
  return report;
}

void CollectRoots(VEKZOLGraphComparator& comparator, ComparisonReport& report) {
  report.withRoots = true;
  report.roots = {{"rootVerticesToAdd", "Root vertices to add", {}},
                  {"rootEdgesToAdd", "Root edges to add", {}},
                  {"rootVerticesToRemove", "Root vertices to remove", {}},
                  {"rootEdgesToRemove", "Root edges to remove", {}}};
  comparator.GetRootsToAdd(report.roots[0].ids, report.roots[1].ids);
  comparator.GetRootsToRemove(report.roots[2].ids, report.roots[3].ids);
}

}  // namespace vekzol_tool

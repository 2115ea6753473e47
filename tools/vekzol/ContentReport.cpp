// File: ContentReport.cpp
#include "ContentReport.h"

#include <string_view>

namespace vekzol_tool {

namespace {

// What RenderText and RenderJson end with.
constexpr std::string_view kTextOutcomes[] = {"Outcome: identical\n", "Outcome: different\n"};
constexpr std::string_view kJsonEnd = "\n}\n";

bool EndsWith(const std::string& text, std::string_view end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

void AppendTextValue(std::string& text, const Change& change, const Value& value) {
  if (change.field == kAttributeChange) {
    text += JsonTypeName(value.kind);
    text += ' ';
  }
  AppendValueJson(text, value);
}

void AppendTextSection(std::string& text, const RecordKind& kind, const KindDifference& kinds) {
  text += kind.title;
  text += " with changed content (" + std::to_string(kinds.changed.size()) + "):\n";
  for (const ChangedElement& element : kinds.changed) {
    text += "  ";
    text += element.id;
    text += '\n';
    for (size_t i = element.first; i < element.first + element.count; ++i) {
      const Change& change = kinds.changes[i];
      text += "    ";
      if (change.field == kAttributeChange) {
        text += "attribute ";
        AppendJsonString(text, change.key);
      } else {
        text += kind.fieldNames[change.field];
      }
      text += ": ";
      text += ChangeWord(change);
      text += ' ';
      if (change.hasOld) AppendTextValue(text, change, change.oldValue);
      if (change.hasOld && change.hasNew) text += " to ";
      if (change.hasNew) AppendTextValue(text, change, change.newValue);
      text += '\n';
    }
  }
}

void AppendJsonSection(std::string& json, const RecordKind& kind, const KindDifference& kinds) {
  json += ",\n  \"";
  json += kind.singular;
  json += "sChanged\": [";
  bool first = true;
  for (const ChangedElement& element : kinds.changed) {
    json += first ? "\n    {\"id\": " : ",\n    {\"id\": ";
    first = false;
    AppendJsonString(json, element.id);
    json += ", \"changes\": [";
    for (size_t i = element.first; i < element.first + element.count; ++i) {
      json += i == element.first ? "\n      " : ",\n      ";
      AppendChangeJson(json, kind, kinds.changes[i], true);
    }
    json += "\n    ]}";
  }
  json += first ? "]" : "\n  ]";
}

}  // namespace

std::string RenderTextWithContent(ComparisonReport report, const ModelDifference& difference) {
  report.different = report.different || difference.ContentChanged();
  std::string text = RenderText(report);
  const std::string_view outcome = kTextOutcomes[report.different ? 1 : 0];
  if (EndsWith(text, outcome)) text.resize(text.size() - outcome.size());
  AppendTextSection(text, kObjectKind, difference.Of(kObjectKind));
  AppendTextSection(text, kRelationKind, difference.Of(kRelationKind));
  text += outcome;
  return text;
}

std::string RenderJsonWithContent(ComparisonReport report, const ModelDifference& difference) {
  report.different = report.different || difference.ContentChanged();
  std::string json = RenderJson(report);
  if (EndsWith(json, kJsonEnd)) json.resize(json.size() - kJsonEnd.size());
  AppendJsonSection(json, kObjectKind, difference.Of(kObjectKind));
  AppendJsonSection(json, kRelationKind, difference.Of(kRelationKind));
  json += kJsonEnd;
  return json;
}

}  // namespace vekzol_tool

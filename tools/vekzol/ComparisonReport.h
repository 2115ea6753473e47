// File: ComparisonReport.h
// The result of a comparison as the tool prints it: the comparator's six
// lists, optionally its root lists, and the outcome, rendered as text for
// people or as one JSON object for scripts. Lists keep the order in which
// the comparator gives them (ascending id).
#ifndef VEKZOL_TOOLS_VEKZOL_COMPARISONREPORT_H_
#define VEKZOL_TOOLS_VEKZOL_COMPARISONREPORT_H_

#include <deque>
#include <string>
#include <vector>

#include <vekzol/platform/CString.h>

class VEKZOLGraphComparator;

namespace vekzol_tool {

struct ComparisonReport {
  struct List {
    const char* key;    // JSON member name
    const char* title;  // text section heading
    std::deque<CString> ids;
  };
  bool different = false;
  bool withRoots = false;
  // verticesToBeAdded, verticesToBeRemoved, verticesToBeMoved,
  // verticesToChangeName, edgesToBeAdded, edgesToBeRemoved.
  std::vector<List> lists;
  // rootVerticesToAdd, rootEdgesToAdd, rootVerticesToRemove,
  // rootEdgesToRemove; empty unless withRoots.
  std::vector<List> roots;
};

// The report of a comparison whose RunComparison gave `outcome` (S_OK or
// S_FALSE): the outcome and the comparator's six lists.
ComparisonReport CollectLists(VEKZOLGraphComparator& comparator, long outcome);

// Adds the comparator's four root lists to `report`.
void CollectRoots(VEKZOLGraphComparator& comparator, ComparisonReport& report);

// Sections "Title (count):" with one id per line, indented by two blanks,
// then "Outcome: ...".
std::string RenderText(const ComparisonReport& report);

// {"outcome": "different"|"identical", "verticesToBeAdded": [...], ...}
std::string RenderJson(const ComparisonReport& report);

// `text` as a JSON string literal, quotes included: '"' and '\\' escaped,
// control characters as \b \f \n \r \t or \u00XX, everything else (UTF-8
// included) as it is.
std::string JsonString(const char* text, size_t size);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_COMPARISONREPORT_H_

// File: ContentReport.h
// The report of `compare --content`: the comparison's report
// (ComparisonReport.h) followed by what changed inside the elements both
// models have, in two more sections (text) or members (JSON), objects
// first, then relations; the outcome is "different" also when only content
// changed.
//
// Text, before the outcome line:
//
//   Objects with changed content (1):
//     PRC-0002
//       name: changed "Weld frame" to "Weld body"
//       backupName: removed "Weld frame"
//       attribute "duration": changed number 12.5 to number 11.0
//       attribute "colour": added string "red"
//   Relations with changed content (0):
//
// one line per change: the field's name or `attribute` and the key, then
// `added`, `removed` or `changed` with the value (strings as JSON string
// literals; attributes with their JSON type before the value).
//
// JSON, after the existing members: "objectsChanged" and
// "relationsChanged", each a list of {"id": ..., "changes": [...]} whose
// changes are {"field": NAME} or {"attribute": KEY} with "change", and for
// each side that has a value its JSON type ("oldType", "newType") and the
// value ("old", "new").
#ifndef VEKZOL_TOOLS_VEKZOL_CONTENTREPORT_H_
#define VEKZOL_TOOLS_VEKZOL_CONTENTREPORT_H_

#include <string>

#include "ComparisonReport.h"
#include "ContentDifference.h"

namespace vekzol_tool {

// `report` rendered by RenderText or RenderJson with the content changes of
// `difference` added; its outcome is "different" when the comparison or
// the content differs.
std::string RenderTextWithContent(ComparisonReport report, const ModelDifference& difference);
std::string RenderJsonWithContent(ComparisonReport report, const ModelDifference& difference);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CONTENTREPORT_H_

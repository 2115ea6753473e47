// File: ModelReader_fuzz.cpp
// libFuzzer target for the model reader of the vekzol tool. The input is
// the text of a model file. It is read (a refusal, which the reader reports
// as a ToolError, is a normal outcome), its graph built and compared with
// the graph of a small fixed model both ways (the input as the new state,
// then as the old one), with names checked and roots extracted, as
// `vekzol compare --check-names --roots` does. Both reports are rendered;
// the JSON one must parse back and hold the outcome and the same lists in
// the same order, or the target traps. Graphs of a few elements are also
// written out with Dump and ToString (the tree of a large graph can grow
// exponentially with its shared parts).
#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <vekzol/VEKZOLBase.h>

#include "ComparisonReport.h"
#include "ModelFile.h"
#include "Phases.h"
#include "ToolError.h"

namespace {

using vekzol_tool::ComparisonReport;
using vekzol_tool::ModelFile;
using vekzol_tool::PhaseTimes;
using vekzol_tool::ToolError;

// Graphs of at most this many objects and relations are written out.
constexpr size_t kMostElementsWritten = 64;

// The other side of each comparison: renamed and moved vertices, an
// unresolved end, a duplicate id, attributes of every kind.
constexpr std::string_view kFixedModel = R"({
  "objects": [
    {"id": "PRC-0001", "name": "Weld frame", "backupName": "Weld frame",
     "identPath": "/line/PRC-0001", "attributes": {"station": "S1", "cycle": 12.5,
     "automated": true, "count": 3, "big": 9000000000}},
    {"id": "PRC-0002", "name": "Paint body", "backupName": "Prime body"},
    {"id": "PRD-0100", "name": "Frame", "refId": "P-100", "sciid": "SCI-100"},
    {"id": "PRD-0101", "name": "Body"},
    {"id": "RES-0200", "name": "Robot"},
    {"id": "PRD-0101", "name": "Body again"}
  ],
  "relations": [
    {"id": "R-0001", "source": "PRC-0001", "target": "PRC-0002", "type": "precedes"},
    {"id": "R-0002", "source": "PRC-0001", "target": "PRD-0100", "type": "produces"},
    {"id": "R-0003", "source": "PRC-0002", "target": "PRD-0101", "type": "produces"},
    {"id": "R-0004", "source": "RES-0200", "target": "PRC-0001", "type": "executes"},
    {"id": "R-0005", "source": "PRC-0002", "target": "NOWHERE", "type": "uses"}
  ]
})";

void Check(bool condition) {
  if (!condition) __builtin_trap();
}

// Reads `text` into `model`; false when the reader refuses it.
bool Read(ModelFile& model, const char* text, size_t size) {
  // The reader may read up to the padding past the end: exactly the given
  // bytes and the padding on the heap, so that any read further is a heap
  // overflow the sanitizer reports.
  const simdjson::padded_string copy(text, size);
  PhaseTimes times;
  try {
    model.LoadText(copy.data(), copy.size(), times);
  } catch (const ToolError& error) {
    // Nesting past the parser's limit is found again to name its
    // position, or the syntax error behind the parser's complaint: its own
    // positionless message never comes out.
    const std::string message = error.what();
    Check(message.find(simdjson::error_message(simdjson::DEPTH_ERROR)) == std::string::npos);
    return false;
  }
  model.Build();
  return true;
}

bool Equal(std::string_view text, const CString& id) {
  return text == std::string_view(id.GetString(), static_cast<size_t>(id.GetLength()));
}

// The JSON report must parse and hold exactly the outcome and the lists of
// `report`.
void CheckJson(const ComparisonReport& report, const std::string& json) {
  simdjson::dom::parser parser;
  simdjson::dom::object top;
  Check(parser.parse(json).get_object().get(top) == simdjson::SUCCESS);
  std::string_view outcome;
  Check(top["outcome"].get_string().get(outcome) == simdjson::SUCCESS);
  Check(outcome == (report.different ? "different" : "identical"));
  Check(top.size() == 1 + report.lists.size() + report.roots.size());
  for (const std::vector<ComparisonReport::List>* lists : {&report.lists, &report.roots}) {
    for (const ComparisonReport::List& list : *lists) {
      simdjson::dom::array ids;
      Check(top[list.key].get_array().get(ids) == simdjson::SUCCESS);
      Check(ids.size() == list.ids.size());
      size_t index = 0;
      for (simdjson::dom::element element : ids) {
        std::string_view id;
        Check(element.get_string().get(id) == simdjson::SUCCESS);
        Check(Equal(id, list.ids[index++]));
      }
    }
  }
}

// The text report: every section, one line per id, then the outcome.
void CheckText(const ComparisonReport& report, const std::string& text) {
  std::string expected;
  for (const std::vector<ComparisonReport::List>* lists : {&report.lists, &report.roots}) {
    for (const ComparisonReport::List& list : *lists) {
      expected += std::string(list.title) + " (" + std::to_string(list.ids.size()) + "):\n";
      for (const CString& id : list.ids) {
        expected += "  ";
        expected.append(id.GetString(), static_cast<size_t>(id.GetLength()));
        expected += '\n';
      }
    }
  }
  expected += report.different ? "Outcome: different\n" : "Outcome: identical\n";
  Check(text == expected);
}

void Compare(VEKZOLGraph& newGraph, VEKZOLGraph& oldGraph) {
  VEKZOLGraphComparator comparator(&newGraph, &oldGraph);
  const long outcome = comparator.RunComparison(true);
  if (outcome < 0) return;
  ComparisonReport report = vekzol_tool::CollectLists(comparator, outcome);
  vekzol_tool::CollectRoots(comparator, report);
  CheckJson(report, vekzol_tool::RenderJson(report));
  CheckText(report, vekzol_tool::RenderText(report));
}

void WriteOut(ModelFile& model) {
  if (model.Elements() > kMostElementsWritten) return;
  try {
    (void)model.Graph().Dump();
  } catch (const CAtlException&) {
    // The tree walk stops on a cycle below a root.
  }
  try {
    (void)model.Graph().ToString();
  } catch (const CAtlException&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Every graph built writes trace lines: off unless the caller decided.
  setenv("VEK_ZOL_LOG_ENABLED", "FALSE", 0);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ModelFile input("input.json");
  if (!Read(input, reinterpret_cast<const char*>(data), size)) return 0;
  WriteOut(input);
  // The comparator gives the new graph's vertices the old ones' ident
  // paths: a fresh fixed model for each direction.
  for (int direction = 0; direction < 2; ++direction) {
    ModelFile fixed("fixed.json");
    Check(Read(fixed, kFixedModel.data(), kFixedModel.size()));
    if (direction == 0) {
      Compare(input.Graph(), fixed.Graph());
    } else {
      Compare(fixed.Graph(), input.Graph());
    }
  }
  return 0;
}

// File: GenerateCommand.cpp
// vekzol generate: two related model files from the comparison model
// generator, for trying the tool at scale, and optionally the comparison
// the generator states for them, in the form `compare --check-names
// --roots --format json` prints.
#include <string>
#include <unordered_map>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "ComparisonReport.h"
#include "FileIO.h"
#include "Phases.h"
#include "Platform.h"
#include "ToolError.h"
#include "comparison/testing/ComparisonModelGenerator.h"

namespace vekzol_tool {

namespace {

using vekzol::comparison_model::GeneratedModel;
using vekzol::comparison_model::ModelState;

void Append(std::string& json, const CString& text) {
  json += JsonString(text.GetString(), static_cast<size_t>(text.GetLength()));
}

// Writes one state; with `model` the old state's backup names and ident
// paths go with its objects, as a host sets them before comparing.
void WriteState(const ModelState& state, const GeneratedModel* model, Output& output) {
  // The element number of each object, for its backup name. The state made
  // its objects in the order of its elements; the id cannot tell, since a
  // GUID-shaped id does not spell the number out.
  std::unordered_map<const VEKIZOLObject*, int> elementOf;
  if (model != nullptr) {
    elementOf.reserve(state.objects.size());
    for (size_t i = 0; i < state.objects.size(); ++i) {
      elementOf.emplace(state.objects[i].get(), state.elements[i]);
    }
  }
  std::string json = "{\"objects\": [";
  bool first = true;
  for (VEKIZOLObject* object : state.objectList) {
    json += first ? "\n  {\"id\": " : ",\n  {\"id\": ";
    first = false;
    const CString id = object->GetID();
    Append(json, id);
    json += ", \"name\": ";
    Append(json, object->GetDisplayName());
    if (model != nullptr) {
      const int element = elementOf.at(object);
      json += ", \"backupName\": ";
      Append(json, CString(model->backupNames[static_cast<size_t>(element)].c_str()));
      json += ", \"identPath\": ";
      Append(json, "/" + id);
    }
    json += "}";
    if (json.size() > (1u << 20)) {
      output.Write(json);
      json.clear();
    }
  }
  json += "\n], \"relations\": [";
  first = true;
  for (VEKIZOLRelation* relation : state.relationList) {
    json += first ? "\n  {\"id\": " : ",\n  {\"id\": ";
    first = false;
    Append(json, relation->GetID());
    VEKIZOLObject* end = nullptr;
    relation->GetSourceObject(end);
    json += ", \"source\": ";
    Append(json, end->GetID());
    relation->GetTargetObject(end);
    json += ", \"target\": ";
    Append(json, end->GetID());
    CString type;
    relation->GetRelationType(type);
    json += ", \"type\": ";
    Append(json, type);
    json += "}";
    if (json.size() > (1u << 20)) {
      output.Write(json);
      json.clear();
    }
  }
  json += "\n]}\n";
  output.Write(json);
}

ComparisonReport::List ListOf(const char* key, const std::vector<std::string>& ids) {
  ComparisonReport::List list{key, key, {}};
  for (const std::string& id : ids) list.ids.emplace_back(id.c_str());
  return list;
}

void WriteExpected(const GeneratedModel& model, Output& output) {
  const auto& expected = model.expected;
  ComparisonReport report;
  report.withRoots = true;
  report.lists = {ListOf("verticesToBeAdded", expected.verticesAdded),
                  ListOf("verticesToBeRemoved", expected.verticesRemoved),
                  ListOf("verticesToBeMoved", expected.verticesMoved),
                  ListOf("verticesToChangeName", expected.verticesRenamed),
                  ListOf("edgesToBeAdded", expected.edgesAdded),
                  ListOf("edgesToBeRemoved", expected.edgesRemoved)};
  report.roots = {ListOf("rootVerticesToAdd", expected.rootVerticesToAdd),
                  ListOf("rootEdgesToAdd", expected.rootEdgesToAdd),
                  ListOf("rootVerticesToRemove", expected.rootVerticesToRemove),
                  ListOf("rootEdgesToRemove", expected.rootEdgesToRemove)};
  for (const auto& list : report.lists) report.different = report.different || !list.ids.empty();
  output.Write(RenderJson(report));
}

}  // namespace

int RunGenerate(const GenerateOptions& options, const CommonOptions& common) {
  if (options.vertices < 1) throw ToolError("--vertices must be at least 1");
  if (!(options.changes >= 0.0 && options.changes <= 100.0)) {
    throw ToolError("--changes must be a percentage from 0 to 100");
  }
  if (options.idBytes != 11 && options.idBytes != 40) {
    throw ToolError("--id-bytes must be 11 or 40");
  }
  if (options.oldModel == "-" || options.newModel == "-" || options.expected == "-") {
    throw ToolError("generate writes files, not standard output");
  }
  Phases phases(StandardErrorIsTerminal() && !common.quiet, common.timings);
  phases.NoteElements(static_cast<size_t>(options.vertices));
  vekzol::comparison_model::GeneratorOptions generator;
  generator.elements = options.vertices;
  generator.removed = generator.added = generator.moved = generator.renamed =
      options.changes / 100.0;
  generator.seed = options.seed;
  generator.guidIds = options.idBytes == 40;
  phases.Begin("generating");
  const auto model = vekzol::comparison_model::Generate(generator);
  phases.End("generate");
  // All files are complete before any of them takes its place.
  Output oldOutput(options.oldModel);
  Output newOutput(options.newModel);
  Output expectedOutput(options.expected);
  phases.Begin("writing " + options.oldModel);
  WriteState(model->oldState, model.get(), oldOutput);
  phases.End("write " + options.oldModel);
  phases.Begin("writing " + options.newModel);
  WriteState(model->newState, nullptr, newOutput);
  phases.End("write " + options.newModel);
  if (!options.expected.empty()) WriteExpected(*model, expectedOutput);
  oldOutput.Commit();
  newOutput.Commit();
  if (!options.expected.empty()) expectedOutput.Commit();
  phases.PrintTimings();
  return kExitSame;
}

}  // namespace vekzol_tool

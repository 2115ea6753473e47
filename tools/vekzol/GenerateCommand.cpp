// File: GenerateCommand.cpp
// vekzol generate: two related model files from the comparison model
// generator, for trying the tool at scale, and optionally the comparison
// the generator states for them, in the form `compare --check-names
// --roots --format json` prints.
#include <CLI/CLI.hpp>

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "ComparisonModelGenerator.h"
#include "ComparisonReport.h"
#include "FileIO.h"
#include "Phases.h"
#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

using vekzol::comparison_model::GeneratedModel;
using vekzol::comparison_model::ModelState;
using vekzol::comparison_model::ObjectContent;

struct GenerateOptions {
  int vertices = 0;
  double changes = 2.0;  // percent
  uint32_t seed = 12345;
  int idBytes = 11;             // 11: "PRD-0446620"; 40: a kind and a GUID
  double contentChanges = 0.0;  // percent; 0: no content beyond ids, names and ends
  std::string oldModel;
  std::string newModel;
  std::string expected;  // optional: the expected comparison, as JSON
};

void Append(std::string& json, const CString& text) {
  json += JsonString(text.GetString(), static_cast<size_t>(text.GetLength()));
}

// Writes one state; with `model` the old state's backup names and ident
// paths go with its objects, as a host sets them before comparing; with
// `content` (by element number) their ref ids, SCIIDs and attributes.
void WriteState(const ModelState& state, const GeneratedModel* model,
                const std::vector<ObjectContent>* content, Output& output) {
  // The element number of each object, for its backup name. The state made
  // its objects in the order of its elements; the id cannot tell, since a
  // GUID-shaped id does not spell the number out.
  std::unordered_map<const VEKIZOLObject*, int> elementOf;
  if (model != nullptr || content != nullptr) {
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
    if (content != nullptr) {
      const ObjectContent& carried = (*content)[static_cast<size_t>(elementOf.at(object))];
      if (carried.hasRefId) {
        json += ", \"refId\": ";
        Append(json, CString(carried.refId.c_str()));
      }
      if (carried.hasSciid) {
        json += ", \"sciid\": ";
        Append(json, CString(carried.sciid.c_str()));
      }
      json += ", \"attributes\": {";
      for (const auto& attribute : carried.attributes) {
        if (&attribute != &carried.attributes.front()) json += ", ";
        Append(json, CString(attribute.key.c_str()));
        json += ": " + attribute.json;
      }
      json += "}";
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

int RunGenerate(const GenerateOptions& options, const CommonOptions& common) {
  if (options.vertices < 1) throw ToolError("--vertices must be at least 1");
  if (!(options.changes >= 0.0 && options.changes <= 100.0)) {
    throw ToolError("--changes must be a percentage from 0 to 100");
  }
  if (options.idBytes != 11 && options.idBytes != 40) {
    throw ToolError("--id-bytes must be 11 or 40");
  }
  if (!(options.contentChanges >= 0.0 && options.contentChanges <= 100.0)) {
    throw ToolError("--content-changes must be a percentage from 0 to 100");
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
  generator.contentChanged = options.contentChanges / 100.0;
  phases.Begin("generating");
  const auto model = vekzol::comparison_model::Generate(generator);
  phases.End("generate");
  // All files are complete before any of them takes its place.
  Output oldOutput(options.oldModel);
  Output newOutput(options.newModel);
  Output expectedOutput(options.expected);
  phases.Begin("writing " + options.oldModel);
  const bool content = !model->oldContent.empty();
  WriteState(model->oldState, model.get(), content ? &model->oldContent : nullptr, oldOutput);
  phases.End("write " + options.oldModel);
  phases.Begin("writing " + options.newModel);
  WriteState(model->newState, nullptr, content ? &model->newContent : nullptr, newOutput);
  phases.End("write " + options.newModel);
  if (!options.expected.empty()) WriteExpected(*model, expectedOutput);
  oldOutput.Commit();
  newOutput.Commit();
  if (!options.expected.empty()) expectedOutput.Commit();
  phases.PrintTimings();
  return kExitSame;
}

}  // namespace

RegisteredCommand RegisterGenerate(CLI::App& app, const CommonOptions& common) {
  auto options = std::make_shared<GenerateOptions>();
  CLI::App* command = app.add_subcommand(
      "generate",
      "Write two related model files (a forest of processes, products and resources and a "
      "changed copy of it) for trying the tool at scale");
  command->add_option("--vertices", options->vertices, "Elements of the old state")->required();
  command
      ->add_option("--changes", options->changes,
                   "Percentage of elements removed, added, moved and renamed (each)")
      ->capture_default_str();
  command->add_option("--seed", options->seed, "Seed of the random choices")->capture_default_str();
  command
      ->add_option("--id-bytes", options->idBytes,
                   "Length of the ids: 11 (\"PRD-0446620\") or 40 (a kind and a GUID)")
      ->capture_default_str();
  command
      ->add_option("--content-changes", options->contentChanges,
                   "Also give every object a ref id, a SCIID and attributes, and change this "
                   "percentage of the elements both states have inside (a name, ref id, SCIID or "
                   "attribute, a relation's type or source); 0: none")
      ->capture_default_str();
  command
      ->add_option("--expected", options->expected,
                   "Also write the comparison that `compare --check-names --roots "
                   "--format json OLD NEW` must print")
      ->type_name("FILE");
  command->add_option("OLD", options->oldModel, "Old state to write")
      ->type_name("FILE")
      ->required();
  command->add_option("NEW", options->newModel, "New state to write")
      ->type_name("FILE")
      ->required();
  return {command, [options, &common] { return RunGenerate(*options, common); }};
}

}  // namespace vekzol_tool

// File: ComparisonModelGenerator.h
// A generator of two states of a host model, for the comparator's tests,
// the benchmarks and the tool's `generate` command; written against the
// library's public headers only. The old state is a forest of processes,
// products and resources ("PRC-0001234", "PRD-...", "RSC-...") in trees of
// a fixed size, with extra DAG links; every edge goes from a lower to a
// higher element number, so no state has a cycle. The new state is derived
// from the old one with chosen shares of removed, added, moved and renamed
// elements, and the generator states what the comparison has to find: the
// six lists and both root lists, computed from its own choices on plain
// standard containers, not through the graph.
#ifndef VEKZOL_TOOLS_GENERATOR_COMPARISONMODELGENERATOR_H_
#define VEKZOL_TOOLS_GENERATOR_COMPARISONMODELGENERATOR_H_

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>

namespace vekzol {
namespace comparison_model {

struct GeneratorOptions {
  int elements = 3000;        // elements of the old state
  int treeSize = 1000;        // elements per tree of the forest
  double extraLinks = 0.05;   // share of elements with a second parent
  double removed = 0.02;      // share of old elements gone in the new state
  double added = 0.02;        // new elements, as a share of the old count
  double addedAsRoots = 0.1;  // of the added: without any parent
  double moved = 0.02;        // share of old elements under another parent
  double renamed = 0.02;      // share of common elements with a changed name
  uint32_t seed = 12345;
  // Ids of 40 bytes shaped as product-lifecycle systems give them, a kind
  // and a GUID ("PRC-3f2504e0-4f89-11d3-9a0c-0305e82c3301"), instead of
  // the 11-byte "PRC-0001234".
  bool guidIds = false;
  // Changes inside elements that keep their id; 0, the default, leaves the
  // states as without this option (ids, names and ends only, every
  // relation "precedes"). Above 0 every object also carries a ref id, a
  // SCIID and attributes of each kind (GeneratedModel::oldContent), and
  // this share of the elements both states have changes one thing inside:
  // its name, ref id or SCIID, or an attribute added, removed, or changed
  // in value or in JSON type; this share of the relations both states
  // have changes its type; and every other moved element (by number) gets
  // its new parent edge under the id of its old tree edge, whose source so
  // changes, rather than under a new id. Drawn from a random sequence of
  // their own, so the other choices are those made without it.
  double contentChanged = 0.0;
};

// One relation as plain data.
struct EdgeData {
  std::string id;
  int parent;  // element numbers
  int child;
  std::string type = "precedes";
};

// An attribute as plain data: its key and its value as JSON text
// ("\"S1\"", "12", "3.25", "true").
struct AttributeData {
  std::string key;
  std::string json;
};

// What an object carries beyond its id and name, with content on; the
// attributes by key.
struct ObjectContent {
  bool hasRefId = false;
  bool hasSciid = false;
  std::string refId;
  std::string sciid;
  std::vector<AttributeData> attributes;
};

// One state: its elements and relations as plain data, and the host's
// objects and relations made from them, listed in a shuffled order.
struct ModelState {
  std::vector<int> elements;  // element numbers present
  std::vector<EdgeData> edges;
  std::vector<std::unique_ptr<VEKZOLObjectImpl>> objects;
  std::vector<std::unique_ptr<VEKZOLRelationImpl>> relations;
  std::deque<VEKIZOLObject*> objectList;
  std::deque<VEKIZOLRelation*> relationList;
};

// What a comparison of the new state with the old one, names checked, has
// to find; every list in ascending id order.
struct ExpectedDiff {
  std::vector<std::string> verticesAdded, verticesRemoved, verticesMoved, verticesRenamed;
  std::vector<std::string> edgesAdded, edgesRemoved;
  std::vector<std::string> rootVerticesToAdd, rootEdgesToAdd;
  std::vector<std::string> rootVerticesToRemove, rootEdgesToRemove;
};

struct GeneratedModel {
  ModelState oldState;
  ModelState newState;
  ExpectedDiff expected;
  // Per element number: the id, the display name of the object in the old
  // state (the new one's is "Name <id>") and the old vertex's backup name,
  // which differs from the display name for the renamed elements. Ident
  // paths of old vertices are "/<id>".
  std::vector<std::string> ids;
  std::vector<std::string> oldNames;
  std::vector<std::string> backupNames;
  // With content (GeneratorOptions::contentChanged above 0), per element
  // number, what its object carries beyond id and name in each state;
  // empty without. The states' objects hold ids and names only.
  std::vector<ObjectContent> oldContent;
  std::vector<ObjectContent> newContent;
};

// "PRC-0001234", "PRD-..." or "RSC-..." by the element number; with
// `guidShaped` the kind and a GUID made from the number (unique per
// number, scattered in order).
std::string ElementId(int element, bool guidShaped = false);

std::unique_ptr<GeneratedModel> Generate(const GeneratorOptions& options);

// Gives the vertices of a graph built from `model.oldState` their backup
// names and ident paths, as a host does before comparing.
void SetOldVertexTexts(const GeneratedModel& model, VEKZOLGraph& oldGraph);

}  // namespace comparison_model
}  // namespace vekzol

#endif  // VEKZOL_TOOLS_GENERATOR_COMPARISONMODELGENERATOR_H_

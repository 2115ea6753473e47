// File: ComparisonModelGenerator.cpp
// Two states of a model and what their comparison must find. The expected
// lists come from the generator's own choices, reasoned element by element
// on standard containers, so that they check the comparator rather than
// repeat it.
#include "ComparisonModelGenerator.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <set>
#include <utility>

#include <vekzol/graphs/VEKZOLGraphVertex.h>

namespace vekzol {
namespace comparison_model {

namespace {

// A GUID-shaped text after `kind` and a dash: 36 characters of which the
// last twelve hold `number`, so it is unique per kind and number, and the
// first twenty-four scatter numbers over the id order.
std::string GuidId(const char* kind, int number) {
  uint64_t mixed = static_cast<uint64_t>(number) * 0x9E3779B97F4A7C15ull + std::strlen(kind);
  mixed ^= mixed >> 31;
  mixed *= 0xBF58476D1CE4E5B9ull;
  mixed ^= mixed >> 29;
  char text[64];
  std::snprintf(text, sizeof text, "%s-%08x-%04x-%04x-%04x-%012llx", kind,
                static_cast<unsigned>(mixed >> 32), static_cast<unsigned>((mixed >> 16) & 0xFFFF),
                static_cast<unsigned>(mixed & 0xFFFF),
                static_cast<unsigned>((mixed >> 48) ^ 0x8000) & 0xFFFF,
                static_cast<unsigned long long>(number));
  return text;
}

std::string EdgeId(const char* kind, int child, bool guidShaped) {
  if (guidShaped) {
    const char* const name = kind[0] == 'R' ? "REL" : kind[0] == 'L' ? "LNK" : "MOV";
    return GuidId(name, child);
  }
  char text[32];
  std::snprintf(text, sizeof text, "%s-%07d", kind, child);
  return text;
}

std::vector<std::string> Sorted(std::vector<std::string> ids) {
  std::sort(ids.begin(), ids.end());
  return ids;
}

// Makes the host's objects and relations of `state`, with the display names
// given, and lists them shuffled: a host's export has no order.
void MakeObjects(ModelState& state, const std::vector<std::string>& ids,
                 const std::vector<std::string>& names, std::mt19937& random) {
  std::map<int, VEKZOLObjectImpl*> byElement;
  for (int element : state.elements) {
    state.objects.push_back(std::make_unique<VEKZOLObjectImpl>(CString(ids[element].c_str())));
    state.objects.back()->SetDisplayName(names[element].c_str());
    byElement[element] = state.objects.back().get();
  }
  for (const EdgeData& edge : state.edges) {
    state.relations.push_back(std::make_unique<VEKZOLRelationImpl>(
        byElement.at(edge.parent), byElement.at(edge.child), edge.type.c_str(), edge.id.c_str()));
  }
  for (auto& object : state.objects) state.objectList.push_back(object.get());
  for (auto& relation : state.relations) state.relationList.push_back(relation.get());
  std::shuffle(state.objectList.begin(), state.objectList.end(), random);
  std::shuffle(state.relationList.begin(), state.relationList.end(), random);
}

// The roots of the part made of `vertices` and `edges` alone: vertices that
// no listed edge enters, and edges whose parent is not listed.
void PartRoots(const std::set<int>& vertices, const std::vector<EdgeData>& edges,
               const std::vector<std::string>& ids, std::vector<std::string>& rootVertices,
               std::vector<std::string>& rootEdges) {
  std::set<int> entered;
  for (const EdgeData& edge : edges) {
    if (vertices.count(edge.child) != 0) entered.insert(edge.child);
    if (vertices.count(edge.parent) == 0) rootEdges.push_back(edge.id);
  }
  for (int vertex : vertices) {
    if (entered.count(vertex) == 0) rootVertices.push_back(ids[vertex]);
  }
  rootVertices = Sorted(rootVertices);
  rootEdges = Sorted(rootEdges);
}

// What the object of `element` carries beyond id and name, with content
// on: a ref id, a SCIID and an attribute of each kind, by key.
ObjectContent FirstContent(int element, const std::string& id) {
  ObjectContent content;
  content.hasRefId = content.hasSciid = true;
  content.refId = "P-" + id;
  content.sciid = "SCI-" + std::to_string(element);
  char weight[32];
  std::snprintf(weight, sizeof weight, "%.2f", (element % 1000) / 4.0 + 0.25);
  content.attributes = {{"automated", element % 3 == 0 ? "true" : "false"},
                        {"duration", std::to_string(element % 90 + 1)},
                        {"serial", std::to_string(5000000000LL + element)},
                        {"station", "\"S" + std::to_string(element % 12) + "\""},
                        {"weight", weight}};
  return content;
}

AttributeData* FindAttribute(ObjectContent& content, const std::string& key) {
  for (AttributeData& attribute : content.attributes) {
    if (attribute.key == key) return &attribute;
  }
  return nullptr;
}

// Changes one thing inside `content` or `name`, chosen by `kind` (0 to 8).
void ChangeContent(unsigned kind, int element, const std::string& id, ObjectContent& content,
                   std::string& name) {
  switch (kind) {
    case 0:
      name = "Renamed " + id;
      break;
    case 1:  // another integer
      FindAttribute(content, "duration")->json = std::to_string(element % 90 + 2);
      break;
    case 2:  // an integer becomes a string
      FindAttribute(content, "duration")->json = "\"" + std::to_string(element % 90 + 1) + " min\"";
      break;
    case 3: {  // another real
      char weight[32];
      std::snprintf(weight, sizeof weight, "%.2f", (element % 1000) / 4.0 + 0.75);
      FindAttribute(content, "weight")->json = weight;
      break;
    }
    case 4:  // added, between "automated" and "duration"
      content.attributes.insert(content.attributes.begin() + 1, {"colour", "\"red\""});
      break;
    case 5:  // removed
      content.attributes.erase(content.attributes.begin());
      break;
    case 6:
      content.refId += "-B";
      break;
    case 7:
      content.hasSciid = false;
      content.sciid.clear();
      break;
    default: {  // the other boolean
      AttributeData* automated = FindAttribute(content, "automated");
      automated->json = automated->json == "true" ? "false" : "true";
    }
  }
}

}  // namespace

std::string ElementId(int element, bool guidShaped) {
  static const char* const kKinds[] = {"PRC", "PRD", "RSC"};
  if (guidShaped) return GuidId(kKinds[element % 3], element);
  char text[32];
  std::snprintf(text, sizeof text, "%s-%07d", kKinds[element % 3], element);
  return text;
}

std::unique_ptr<GeneratedModel> Generate(const GeneratorOptions& options) {
  auto model = std::make_unique<GeneratedModel>();
  std::mt19937 random(options.seed);
  auto chance = [&random](double share) {
    return std::uniform_real_distribution<double>(0.0, 1.0)(random) < share;
  };
  const int n = options.elements;
  const int addedCount = static_cast<int>(n * options.added);
  const int total = n + addedCount;
  for (int element = 0; element < total; ++element) {
    model->ids.push_back(ElementId(element, options.guidIds));
    model->oldNames.push_back("Name " + model->ids.back());
    model->backupNames.push_back(model->oldNames.back());
  }

  // The old state: a forest with extra links, every edge from a lower to a
  // higher element number.
  ModelState& old = model->oldState;
  std::vector<std::vector<int>> oldParents(n);
  for (int element = 0; element < n; ++element) {
    old.elements.push_back(element);
    const int inTree = element % options.treeSize;
    if (inTree == 0) continue;
    const int parent = element - 1 - static_cast<int>(random() % static_cast<unsigned>(inTree));
    old.edges.push_back({EdgeId("R", element, options.guidIds), parent, element});
    oldParents[element].push_back(parent);
    if (inTree > 1 && chance(options.extraLinks)) {
      int second = element - 1 - static_cast<int>(random() % static_cast<unsigned>(inTree));
      if (second != parent) {
        old.edges.push_back({EdgeId("L", element, options.guidIds), second, element});
        oldParents[element].push_back(second);
      }
    }
  }

  // The changes. An element is at most one of removed, moved, renamed; an
  // element's new parent is never removed.
  std::vector<char> removed(n, 0);
  std::vector<char> moved(n, 0);
  for (int element = 0; element < n; ++element) {
    if (chance(options.removed)) {
      removed[element] = 1;
    } else if (element > 0 && chance(options.moved)) {
      moved[element] = 1;
    } else if (chance(options.renamed)) {
      model->backupNames[element] = "Old name " + model->ids[element];
    }
  }

  // The new state: survivors keep the edges between survivors, a moved
  // element loses all its parent edges and gets one from a parent that was
  // none of its old ones; added elements hang under a survivor or under an
  // earlier added element, or stand alone.
  ModelState& now = model->newState;
  std::vector<std::vector<int>> newParents(total);
  std::vector<EdgeData> addedEdges;
  std::vector<EdgeData> removedEdges;
  for (int element = 0; element < n; ++element) {
    if (!removed[element]) now.elements.push_back(element);
  }
  for (const EdgeData& edge : old.edges) {
    if (removed[edge.parent] || removed[edge.child] || moved[edge.child]) {
      removedEdges.push_back(edge);
    } else {
      now.edges.push_back(edge);
      newParents[edge.child].push_back(edge.parent);
    }
  }
  const size_t keptEdges = now.edges.size();
  // With content, every other moved element that had a tree edge keeps its
  // id for the edge from its new parent: neither removed nor added, but
  // another source.
  const bool content = options.contentChanged > 0.0;
  std::set<std::string> reusedIds;
  for (int element = 1; element < n; ++element) {
    if (!moved[element]) continue;
    int parent = -1;
    for (int attempt = 0; attempt < 32 && parent < 0; ++attempt) {
      const int candidate = static_cast<int>(random() % static_cast<unsigned>(element));
      const auto& before = oldParents[element];
      if (!removed[candidate] &&
          std::find(before.begin(), before.end(), candidate) == before.end()) {
        parent = candidate;
      }
    }
    if (parent < 0) continue;  // no other parent found: it loses its parents all the same
    const bool reused = content && element % 2 == 0 && element % options.treeSize != 0;
    const EdgeData edge{EdgeId(reused ? "R" : "M", element, options.guidIds), parent, element};
    now.edges.push_back(edge);
    if (reused) {
      reusedIds.insert(edge.id);
    } else {
      addedEdges.push_back(edge);
    }
    newParents[element].push_back(parent);
  }
  if (!reusedIds.empty()) {
    removedEdges.erase(std::remove_if(removedEdges.begin(), removedEdges.end(),
                                      [&reusedIds](const EdgeData& edge) {
                                        return reusedIds.count(edge.id) != 0;
                                      }),
                       removedEdges.end());
  }
  std::set<int> addedElements;
  for (int element = n; element < total; ++element) {
    now.elements.push_back(element);
    addedElements.insert(element);
    if (chance(options.addedAsRoots)) continue;
    int parent = static_cast<int>(random() % static_cast<unsigned>(element));
    while (parent < n && removed[parent]) --parent;
    if (parent < 0) continue;
    const EdgeData edge{EdgeId("R", element, options.guidIds), parent, element};
    now.edges.push_back(edge);
    addedEdges.push_back(edge);
    newParents[element].push_back(parent);
  }

  // What the comparison must find, from the choices above.
  ExpectedDiff& expected = model->expected;
  std::set<int> removedElements;
  for (int element = 0; element < n; ++element) {
    if (removed[element]) {
      removedElements.insert(element);
      expected.verticesRemoved.push_back(model->ids[element]);
      continue;
    }
    if (model->backupNames[element] != model->oldNames[element]) {
      expected.verticesRenamed.push_back(model->ids[element]);
    }
    // Moved: some side has parents and no parent is common. A moved
    // element's new parent was none of its old ones; any other element
    // keeps its surviving old parents, so it is moved only when it had
    // parents and all of them were removed.
    const auto& before = oldParents[element];
    const bool allParentsRemoved =
        !before.empty() && std::all_of(before.begin(), before.end(),
                                       [&removed](int parent) { return removed[parent] != 0; });
    if ((moved[element] && !(before.empty() && newParents[element].empty())) || allParentsRemoved) {
      expected.verticesMoved.push_back(model->ids[element]);
    }
  }
  for (int element : addedElements) expected.verticesAdded.push_back(model->ids[element]);
  for (const EdgeData& edge : addedEdges) expected.edgesAdded.push_back(edge.id);
  for (const EdgeData& edge : removedEdges) expected.edgesRemoved.push_back(edge.id);
  expected.verticesAdded = Sorted(expected.verticesAdded);
  expected.verticesRemoved = Sorted(expected.verticesRemoved);
  expected.verticesMoved = Sorted(expected.verticesMoved);
  expected.verticesRenamed = Sorted(expected.verticesRenamed);
  expected.edgesAdded = Sorted(expected.edgesAdded);
  expected.edgesRemoved = Sorted(expected.edgesRemoved);
  PartRoots(addedElements, addedEdges, model->ids, expected.rootVerticesToAdd,
            expected.rootEdgesToAdd);
  PartRoots(removedElements, removedEdges, model->ids, expected.rootVerticesToRemove,
            expected.rootEdgesToRemove);

  std::vector<std::string> newNames;
  for (int element = 0; element < total; ++element) {
    newNames.push_back("Name " + model->ids[element]);
  }
  if (content) {
    // A random sequence of its own: the choices above are those made
    // without content.
    std::mt19937 contentRandom(options.seed ^ 0x5EEDC0DEu);
    const auto contentChance = [&contentRandom](double share) {
      return std::uniform_real_distribution<double>(0.0, 1.0)(contentRandom) < share;
    };
    for (int element = 0; element < total; ++element) {
      model->oldContent.push_back(FirstContent(element, model->ids[element]));
    }
    model->newContent = model->oldContent;
    for (int element = 0; element < n; ++element) {
      if (removed[element] || !contentChance(options.contentChanged)) continue;
      ChangeContent(contentRandom() % 9, element, model->ids[element], model->newContent[element],
                    newNames[element]);
    }
    for (size_t i = 0; i < keptEdges; ++i) {
      if (contentChance(options.contentChanged)) now.edges[i].type = "follows";
    }
  }
  MakeObjects(old, model->ids, model->oldNames, random);
  MakeObjects(now, model->ids, newNames, random);
  return model;
}

void SetOldVertexTexts(const GeneratedModel& model, VEKZOLGraph& oldGraph) {
  for (int element : model.oldState.elements) {
    VEKZOLGraphVertex* vertex = nullptr;
    oldGraph.GetVertex(model.ids[element].c_str(), vertex);
    if (vertex == nullptr) continue;
    vertex->SetBackupName(model.backupNames[element].c_str());
    vertex->SetIdentPath(("/" + model.ids[element]).c_str());
  }
}

}  // namespace comparison_model
}  // namespace vekzol

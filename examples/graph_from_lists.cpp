// graph_from_lists: a small host program. It reads a model as two flat
// lists (objects and relations) from a tab-separated text file, builds a
// graph from them, prints the trace lines that the build wrote and then
// every vertex with its parents and children.
//
// Usage: graph_from_lists MODEL.txt
//
// Model file: one element per line, fields separated by tabs; '#' starts a
// comment line.
//   object    <id>  [<display name>]
//   relation  <id>  <source id>  <target id>  [<type>]
// A relation end that names no object stays unresolved in the graph.
#include <cstdio>
#include <deque>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <vekzol/VEKZOLBase.h>

namespace {

std::vector<std::string> SplitTabs(const std::string& line) {
  std::vector<std::string> fields;
  std::stringstream stream(line);
  std::string field;
  while (std::getline(stream, field, '\t')) fields.push_back(field);
  return fields;
}

// The host's side of the model: it owns the objects and relations and
// keeps them alive while the graph uses them.
struct Model {
  std::vector<std::unique_ptr<VEKZOLObjectImpl>> objects;
  std::vector<std::unique_ptr<VEKZOLRelationImpl>> relations;
  std::map<std::string, VEKZOLObjectImpl*> byId;
};

bool LoadModel(const char* path, Model& model) {
  std::ifstream in(path);
  if (!in) {
    std::cerr << "cannot open " << path << "\n";
    return false;
  }
  struct PendingRelation {
    std::string id, source, target, type;
  };
  std::vector<PendingRelation> pending;
  std::string line;
  int number = 0;
  while (std::getline(in, line)) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields = SplitTabs(line);
    if (fields[0] == "object" && fields.size() >= 2) {
      auto object = std::make_unique<VEKZOLObjectImpl>(CString(fields[1].c_str()));
      if (fields.size() >= 3) object->SetDisplayName(fields[2].c_str());
      model.byId.emplace(fields[1], object.get());
      model.objects.push_back(std::move(object));
    } else if (fields[0] == "relation" && fields.size() >= 4) {
      pending.push_back({fields[1], fields[2], fields[3], fields.size() >= 5 ? fields[4] : ""});
    } else {
      std::cerr << path << ":" << number << ": not an object or relation line\n";
      return false;
    }
  }
  // Relations point at the host's objects; an unknown id is a null end.
  auto find = [&model](const std::string& id) -> VEKIZOLObject* {
    auto it = model.byId.find(id);
    return it == model.byId.end() ? nullptr : it->second;
  };
  for (const PendingRelation& r : pending) {
    model.relations.push_back(std::make_unique<VEKZOLRelationImpl>(
        find(r.source), find(r.target), CString(r.type.c_str()), CString(r.id.c_str())));
  }
  return true;
}

std::string Join(const std::deque<VEKZOLGraphVertex*>& vertices) {
  if (vertices.empty()) return "-";
  std::string text;
  for (VEKZOLGraphVertex* vertex : vertices) {
    if (!text.empty()) text += ", ";
    text += vertex->GetID().GetString();
  }
  return text;
}

void PrintTrace() {
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  std::ifstream trace(path.GetString());
  if (!trace) {
    std::cout << "(no trace file: logging is off)\n";
    return;
  }
  std::cout << "Trace lines (" << path.GetString() << "):\n";
  std::string line;
  while (std::getline(trace, line)) std::cout << "  " << line << "\n";
}

void PrintVertices(VEKZOLGraph& graph, const Model& model) {
  std::cout << "Vertices:\n";
  for (const auto& entry : model.byId) {  // id order
    VEKZOLGraphVertex* vertex = nullptr;
    if (graph.GetVertex(entry.first.c_str(), vertex) != S_OK) continue;
    std::deque<VEKZOLGraphVertex*> parents, children;
    vertex->GetParents(parents);
    vertex->GetChildren(children);
    std::cout << "  " << vertex->GetID().GetString() << " \"" << vertex->GetName().GetString()
              << "\"" << (vertex->IsRoot() ? " root" : "") << (vertex->IsLeaf() ? " leaf" : "")
              << "\n    parents:  " << Join(parents) << "\n    children: " << Join(children)
              << "\n";
  }
  std::cout << "Unresolved relation ends:\n";
  bool any = false;
  for (const auto& relation : model.relations) {
    VEKZOLGraphEdge* edge = nullptr;
    if (graph.GetEdge(relation->GetID(), edge) != S_OK) continue;
    if (edge->GetParent() == nullptr || edge->GetChild() == nullptr) {
      any = true;
      std::cout << "  " << edge->GetID().GetString() << (edge->GetParent() ? "" : " (no source)")
                << (edge->GetChild() ? "" : " (no target)") << "\n";
    }
  }
  if (!any) std::cout << "  -\n";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: graph_from_lists MODEL.txt\n";
    return 2;
  }
  Model model;
  if (!LoadModel(argv[1], model)) return 2;

  std::deque<VEKIZOLObject*> objects;
  std::deque<VEKIZOLRelation*> relations;
  for (const auto& object : model.objects) objects.push_back(object.get());
  for (const auto& relation : model.relations) relations.push_back(relation.get());

  VEKZOLGraph graph("example");
  graph.Build(objects, relations);  // E_FAIL once done: the graph is the result

  std::cout << "Model " << argv[1] << ": " << objects.size() << " objects, " << relations.size()
            << " relations\n";
  PrintTrace();
  PrintVertices(graph, model);
  return 0;
}

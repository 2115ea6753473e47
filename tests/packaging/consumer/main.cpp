// A ten-line host: two objects, one relation, one graph.
#include <cstdio>
#include <deque>

#include <vekzol/VEKZOLBase.h>

int main() {
  VEKZOLObjectImpl weld("PRC-1"), paint("PRC-2");
  VEKZOLRelationImpl next(&weld, &paint, "next", "R-1");
  std::deque<VEKIZOLObject*> objects{&weld, &paint};
  std::deque<VEKIZOLRelation*> relations{&next};
  VEKZOLGraph graph("consumer");
  graph.Build(objects, relations);
  VEKZOLGraphVertex* first = nullptr;
  VEKZOLGraphVertex* second = nullptr;
  VEKZOLGraphEdge* edge = nullptr;
  if (graph.GetVertex("PRC-1", first) != S_OK || graph.GetVertex("PRC-2", second) != S_OK ||
      graph.GetEdge("R-1", edge) != S_OK || edge->GetParent() != first || edge->GetChild() != second) {
    std::printf("consumer: graph not as expected\n");
    return 1;
  }
  std::printf("consumer: 2 vertices, edge %s from %s to %s\n", edge->GetID().GetString(),
              first->GetID().GetString(), second->GetID().GetString());
  return 0;
}

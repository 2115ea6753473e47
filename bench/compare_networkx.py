#!/usr/bin/env python3
"""compare_networkx.py OLD NEW: the comparison of two model files with networkx.

Prints what `vekzol compare --check-names --roots --format json OLD NEW`
prints, in the same form, so that the outputs can be compared byte for
byte. It is written the way a script would do the job: both files are read
with the json module into a networkx MultiDiGraph each (a node per object
id, an edge per relation id, from source to target, keyed by the id), and
the lists come from set operations on nodes, edge keys and predecessors.

The rules are the tool's:
- of several objects (relations) with one id, the first counts;
- a relation end that names no object stays unresolved: here it becomes a
  node of its own, a tuple that no object id can equal, and counts as
  nothing but an end;
- a vertex's name is its "name", or its id where that is missing or empty;
  its backup name is "backupName", or "";
- renamed: in both states, and the old vertex's name differs from its
  backup name; moved: in both states, some side has a parent, and no parent
  id but "" is common to both sides;
- vertices and edges with an empty id are listed nowhere;
- the roots of what is added (removed): of the part made of the listed
  vertices and edges alone, the vertices that no listed edge enters and the
  edges whose source is not a listed vertex.

Exit status as the tool's: 0 no difference, 1 differences, 2 error.
"""

import json
import re
import sys

import networkx as nx


def load(path):
    with open(path, encoding="utf-8") as file:
        model = json.load(file)
    graph = nx.MultiDiGraph()
    for entry in model.get("objects", []):
        if entry["id"] not in graph:
            graph.add_node(entry["id"], name=entry.get("name") or entry["id"],
                           backup=entry.get("backupName", ""))
    seen = set()
    for entry in model.get("relations", []):
        key = entry["id"]
        if key in seen:
            continue
        seen.add(key)
        source = entry.get("source")
        target = entry.get("target")
        if not isinstance(source, str) or source not in graph:
            source = ("unresolved source", key)
        if not isinstance(target, str) or target not in graph:
            target = ("unresolved target", key)
        graph.add_edge(source, target, key=key)
    return graph


def vertex_ids(graph):
    return {node for node in graph if isinstance(node, str) and node}


def edge_ids(graph):
    return {key for _, _, key in graph.edges(keys=True) if key}


def parent_ids(graph, vertex):
    return {parent for parent in graph.predecessors(vertex) if isinstance(parent, str)}


def roots(graph, vertices, edges):
    """The roots of the part of `graph` made of `vertices` and `edges` alone."""
    part = nx.MultiDiGraph()
    part.add_nodes_from(vertices)
    listed_edges = set(edges)
    part.add_edges_from((u, v, key) for u, v, key in graph.edges(keys=True)
                        if key in listed_edges)
    listed = set(vertices)
    root_vertices = sorted(v for v in vertices if part.in_degree(v) == 0)
    root_edges = sorted(key for u, _, key in part.edges(keys=True) if u not in listed)
    return root_vertices, root_edges


def compare(old, new):
    old_vertices, new_vertices = vertex_ids(old), vertex_ids(new)
    old_edges, new_edges = edge_ids(old), edge_ids(new)
    common = sorted(old_vertices & new_vertices)
    lists = {
        "verticesToBeAdded": sorted(new_vertices - old_vertices),
        "verticesToBeRemoved": sorted(old_vertices - new_vertices),
        "verticesToBeMoved": [],
        "verticesToChangeName": [],
        "edgesToBeAdded": sorted(new_edges - old_edges),
        "edgesToBeRemoved": sorted(old_edges - new_edges),
    }
    for vertex in common:
        old_parents, new_parents = parent_ids(old, vertex), parent_ids(new, vertex)
        if (old_parents or new_parents) and not (old_parents & new_parents) - {""}:
            lists["verticesToBeMoved"].append(vertex)
        if old.nodes[vertex]["name"] != old.nodes[vertex]["backup"]:
            lists["verticesToChangeName"].append(vertex)
    different = any(lists.values())
    lists["rootVerticesToAdd"], lists["rootEdgesToAdd"] = roots(
        new, lists["verticesToBeAdded"], lists["edgesToBeAdded"])
    lists["rootVerticesToRemove"], lists["rootEdgesToRemove"] = roots(
        old, lists["verticesToBeRemoved"], lists["edgesToBeRemoved"])
    return different, lists


_ESCAPES = {'"': '\\"', "\\": "\\\\", "\b": "\\b", "\f": "\\f", "\n": "\\n", "\r": "\\r",
            "\t": "\\t"}
_SPECIAL = re.compile('[\x00-\x1f"\\\\\x7f]')


def json_string(text):
    """The tool's JSON string: only quotes, backslashes and control characters escaped."""
    return '"' + _SPECIAL.sub(
        lambda match: _ESCAPES.get(match.group(), "\\u%04x" % ord(match.group())), text) + '"'


def render(different, lists):
    parts = ['{\n  "outcome": ', '"different"' if different else '"identical"']
    for name, ids in lists.items():
        parts.append(',\n  "%s": [' % name)
        if ids:
            parts.append("\n    " + ",\n    ".join(json_string(i) for i in ids) + "\n  ]")
        else:
            parts.append("]")
    parts.append("\n}\n")
    return "".join(parts)


def main():
    if len(sys.argv) != 3:
        print("usage: compare_networkx.py OLD NEW", file=sys.stderr)
        return 2
    try:
        old, new = load(sys.argv[1]), load(sys.argv[2])
    except (OSError, ValueError, KeyError, TypeError, AttributeError) as error:
        print("compare_networkx.py: %s" % error, file=sys.stderr)
        return 2
    different, lists = compare(old, new)
    sys.stdout.buffer.write(render(different, lists).encode("utf-8"))
    sys.stdout.flush()
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())

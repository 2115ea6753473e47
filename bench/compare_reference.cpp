// File: compare_reference.cpp
// compare_reference OLD NEW: the result of `vekzol compare --check-names
// --roots --format json OLD NEW`, byte for byte, computed the leanest way we
// know, as the yardstick of bench/compare-models.sh.
//
// Both model files are parsed with simdjson into a document each, one
// parser per file, and every id and name stays a view into the document's
// texts; the input text is released once it is parsed. Nothing is built but
// flat arrays: each state's objects and relations are sorted by id (the
// first of an id wins, as in the graph), relation ends are resolved by one
// merge of the sorted ends with the sorted ids, and parents are kept as
// vertex positions in one array per state. The comparison is a merge of the
// two sorted id arrays; the roots come from marks in an array of bytes over
// the vertices.
//
// What it computes is what the library's comparator and root extraction
// report, on the graphs the tool builds from the files:
// - a vertex per object id, keeping the first object of an id; its name is
//   "name" or, where that is missing or empty, the id; its backup name is
//   "backupName" or empty;
// - an edge per relation id, keeping the first relation of an id; an end
//   that is missing or names no object is left unresolved;
// - vertices and edges with an empty id are reported nowhere, but a vertex
//   with an empty id still counts as a parent, which is never shared;
// - added, removed: ids of one side only; renamed: in both, and the old
//   vertex's name differs from its backup name; moved: in both, some side
//   has a parent vertex and no parent id but "" is common to both;
// - root vertices: listed vertices that no listed edge enters; root edges:
//   listed edges whose source is not a listed vertex.
// Ids compare as bytes. Members that play no part in the result (ident
// paths, attributes, types, refId, sciid) are skipped unchecked, so a file
// the tool refuses may well be compared here: the reference assumes valid
// models.
//
// Exit status as the tool's: 0 no difference, 1 differences, 2 error.
#include <simdjson.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

// A text with its first sixteen bytes as two big-endian numbers, so that
// most comparisons of a sort or a merge compare numbers and do not read the
// text: ids of up to 16 bytes never, longer ones only when their first 16
// bytes agree. Shorter texts are padded with zero bytes.
struct Key {
  uint64_t high;
  uint64_t low;
  const char* data;
  uint32_t size;
  uint32_t index;  // the entry's position in the file, or an edge's position

  std::string_view Text() const { return {data, size}; }
};

uint64_t BigEndian(const unsigned char* bytes) {
  uint64_t number = 0;
  for (int i = 0; i < 8; ++i) number = number << 8 | bytes[i];
  return number;
}

Key KeyOf(std::string_view text, uint32_t index) {
  unsigned char bytes[16] = {};
  if (!text.empty()) std::memcpy(bytes, text.data(), std::min<size_t>(text.size(), 16));
  return {BigEndian(bytes), BigEndian(bytes + 8), text.data(), static_cast<uint32_t>(text.size()),
          index};
}

// The byte order of the texts. Where the padded prefixes agree and a text
// is not longer than 16 bytes, it is the other text's beginning (what the
// padding covers can only be zero bytes in the other), so the shorter text
// comes first.
int Compare(const Key& left, const Key& right) {
  if (left.high != right.high) return left.high < right.high ? -1 : 1;
  if (left.low != right.low) return left.low < right.low ? -1 : 1;
  if (left.size <= 16 || right.size <= 16) {
    return left.size == right.size ? 0 : left.size < right.size ? -1 : 1;
  }
  return left.Text().substr(16).compare(right.Text().substr(16));
}

// Sorts by text, then by position: of equal texts the first in the file
// comes first.
void SortKeys(std::vector<Key>& keys) {
  std::sort(keys.begin(), keys.end(), [](const Key& left, const Key& right) {
    const int order = Compare(left, right);
    return order != 0 ? order < 0 : left.index < right.index;
  });
}

// Keeps the first key of each text.
void KeepFirst(std::vector<Key>& keys) {
  keys.erase(
      std::unique(keys.begin(), keys.end(),
                  [](const Key& left, const Key& right) { return Compare(left, right) == 0; }),
      keys.end());
}

struct Failure {
  std::string message;
};

// One state of the model.
struct State {
  std::string path;
  simdjson::dom::parser parser;  // holds the document whose texts the views below see

  // Vertices, sorted by id, one per id.
  std::vector<Key> vertices;              // index: the position of the object in the file
  std::vector<std::string_view> names;    // by vertex: the name, or the id where it has none
  std::vector<std::string_view> backups;  // by vertex: the backup name, "" where not given

  // Edges, sorted by id, one per id.
  std::vector<Key> edges;        // index: the position of the relation in the file
  std::vector<int32_t> sources;  // by edge: the vertex of its source, -1 when unresolved
  std::vector<int32_t> targets;  // by edge: the vertex of its target, -1 when unresolved

  // The parent vertices of vertex v, one per edge with both ends resolved:
  // parents[parentStart[v] .. parentStart[v + 1]).
  std::vector<uint32_t> parentStart;
  std::vector<uint32_t> parents;
};

// The members of the file that count, in file order.
struct Entries {
  std::vector<std::string_view> objectIds, objectNames, objectBackups;
  std::vector<std::string_view> relationIds;
  // Relation ends; a missing end is a null view, an empty one is not.
  std::vector<std::string_view> relationSources, relationTargets;
};

[[noreturn]] void Fail(const State& state, const std::string& what) {
  throw Failure{state.path + ": " + what};
}

template <typename T>
T Check(const State& state, simdjson::simdjson_result<T> result, const char* what) {
  T value;
  const simdjson::error_code error = std::move(result).get(value);
  if (error != simdjson::SUCCESS) {
    Fail(state, std::string(what) + ": " + simdjson::error_message(error));
  }
  return value;
}

void ReadObjects(const State& state, simdjson::dom::array objects, Entries& entries) {
  entries.objectIds.clear();
  entries.objectNames.clear();
  entries.objectBackups.clear();
  for (simdjson::dom::element element : objects) {
    const auto entry = Check(state, element.get_object(), "an entry of \"objects\"");
    std::string_view id, name, backup;
    bool hasId = false, hasName = false, hasBackup = false;
    for (const auto& [key, value] : entry) {
      // Of repeated members the first counts, as for the tool.
      if (key == "id" && !hasId) {
        id = Check(state, value.get_string(), "\"id\"");
        hasId = true;
      } else if (key == "name" && !hasName) {
        name = Check(state, value.get_string(), "\"name\"");
        hasName = true;
      } else if (key == "backupName" && !hasBackup) {
        backup = Check(state, value.get_string(), "\"backupName\"");
        hasBackup = true;
      }
    }
    if (!hasId) Fail(state, "an object without \"id\"");
    entries.objectIds.push_back(id);
    entries.objectNames.push_back(name.empty() ? id : name);
    entries.objectBackups.push_back(backup);
  }
}

void ReadRelations(const State& state, simdjson::dom::array relations, Entries& entries) {
  entries.relationIds.clear();
  entries.relationSources.clear();
  entries.relationTargets.clear();
  for (simdjson::dom::element element : relations) {
    const auto entry = Check(state, element.get_object(), "an entry of \"relations\"");
    std::string_view id;
    // A missing end stays a null view; a text, even an empty one, points
    // into the document.
    std::string_view source, target;
    bool hasId = false;
    for (const auto& [key, value] : entry) {
      if (key == "id" && !hasId) {
        id = Check(state, value.get_string(), "\"id\"");
        hasId = true;
      } else if (key == "source" && source.data() == nullptr) {
        source = Check(state, value.get_string(), "\"source\"");
      } else if (key == "target" && target.data() == nullptr) {
        target = Check(state, value.get_string(), "\"target\"");
      }
    }
    if (!hasId) Fail(state, "a relation without \"id\"");
    entries.relationIds.push_back(id);
    entries.relationSources.push_back(source);
    entries.relationTargets.push_back(target);
  }
}

// Gives each edge the vertex that one of its ends names: the ends sorted,
// then one merge with the sorted vertex ids.
void ResolveEnds(const std::vector<Key>& vertices, const std::vector<Key>& edges,
                 const std::vector<std::string_view>& endOf, std::vector<int32_t>& vertexOf) {
  std::vector<Key> ends;
  ends.reserve(edges.size());
  for (uint32_t e = 0; e < edges.size(); ++e) {
    const std::string_view end = endOf[edges[e].index];
    if (end.data() != nullptr) ends.push_back(KeyOf(end, e));
  }
  SortKeys(ends);
  vertexOf.assign(edges.size(), -1);
  size_t v = 0;
  for (const Key& end : ends) {
    int order = -1;
    while (v < vertices.size() && (order = Compare(vertices[v], end)) < 0) ++v;
    if (v == vertices.size()) break;
    if (order == 0) vertexOf[end.index] = static_cast<int32_t>(v);
  }
}

void Load(State& state) {
  Entries entries;
  {
    const auto text = Check(state, simdjson::padded_string::load(state.path), "cannot read");
    const auto top = Check(
        state, Check(state, state.parser.parse(text), "invalid JSON").get_object(), "the model");
    // Of repeated lists the last counts, as for the tool.
    for (const auto& [key, value] : top) {
      if (key == "objects") {
        ReadObjects(state, Check(state, value.get_array(), "\"objects\""), entries);
      } else if (key == "relations") {
        ReadRelations(state, Check(state, value.get_array(), "\"relations\""), entries);
      }
    }
  }  // the input text goes; the document keeps the texts read

  state.vertices.reserve(entries.objectIds.size());
  for (uint32_t i = 0; i < entries.objectIds.size(); ++i) {
    state.vertices.push_back(KeyOf(entries.objectIds[i], i));
  }
  SortKeys(state.vertices);
  KeepFirst(state.vertices);
  state.names.reserve(state.vertices.size());
  state.backups.reserve(state.vertices.size());
  for (const Key& vertex : state.vertices) {
    state.names.push_back(entries.objectNames[vertex.index]);
    state.backups.push_back(entries.objectBackups[vertex.index]);
  }

  state.edges.reserve(entries.relationIds.size());
  for (uint32_t i = 0; i < entries.relationIds.size(); ++i) {
    state.edges.push_back(KeyOf(entries.relationIds[i], i));
  }
  SortKeys(state.edges);
  KeepFirst(state.edges);
  ResolveEnds(state.vertices, state.edges, entries.relationSources, state.sources);
  ResolveEnds(state.vertices, state.edges, entries.relationTargets, state.targets);

  // Parents by child, counted, then placed.
  state.parentStart.assign(state.vertices.size() + 1, 0);
  for (size_t e = 0; e < state.edges.size(); ++e) {
    if (state.sources[e] >= 0 && state.targets[e] >= 0) ++state.parentStart[state.targets[e] + 1];
  }
  for (size_t v = 0; v < state.vertices.size(); ++v) {
    state.parentStart[v + 1] += state.parentStart[v];
  }
  state.parents.resize(state.parentStart.back());
  std::vector<uint32_t> next(state.parentStart.begin(), state.parentStart.end() - 1);
  for (size_t e = 0; e < state.edges.size(); ++e) {
    if (state.sources[e] >= 0 && state.targets[e] >= 0) {
      state.parents[next[state.targets[e]]++] = static_cast<uint32_t>(state.sources[e]);
    }
  }
}

// The comparison's lists, as positions in the state that holds them.
struct Lists {
  std::vector<uint32_t> added, renamed, moved;  // vertices of the new state
  std::vector<uint32_t> removed;                // vertices of the old state
  std::vector<uint32_t> edgesAdded;             // edges of the new state
  std::vector<uint32_t> edgesRemoved;           // edges of the old state
};

// Whether a non-empty parent id stands on both sides. `oldOf` maps a new
// vertex to the old vertex of its id (-1: none, and for the empty id).
bool ShareAParent(const uint32_t* newParents, size_t newCount, const uint32_t* oldParents,
                  size_t oldCount, const std::vector<int32_t>& oldOf) {
  if (newCount * oldCount <= 64) {
    for (size_t a = 0; a < newCount; ++a) {
      const int32_t mapped = oldOf[newParents[a]];
      if (mapped < 0) continue;
      for (size_t b = 0; b < oldCount; ++b) {
        if (static_cast<uint32_t>(mapped) == oldParents[b]) return true;
      }
    }
    return false;
  }
  std::vector<uint32_t> left;
  for (size_t a = 0; a < newCount; ++a) {
    if (oldOf[newParents[a]] >= 0) left.push_back(static_cast<uint32_t>(oldOf[newParents[a]]));
  }
  std::vector<uint32_t> right(oldParents, oldParents + oldCount);
  std::sort(left.begin(), left.end());
  std::sort(right.begin(), right.end());
  size_t a = 0, b = 0;
  while (a < left.size() && b < right.size()) {
    if (left[a] == right[b]) return true;
    if (left[a] < right[b]) {
      ++a;
    } else {
      ++b;
    }
  }
  return false;
}

Lists Diff(const State& now, const State& old) {
  Lists lists;
  std::vector<int32_t> oldOf(now.vertices.size(), -1);
  std::vector<std::pair<uint32_t, uint32_t>> common;  // (new, old) vertices of one id
  size_t n = 0, o = 0;
  while (n < now.vertices.size() || o < old.vertices.size()) {
    const int order = n == now.vertices.size()   ? 1
                      : o == old.vertices.size() ? -1
                                                 : Compare(now.vertices[n], old.vertices[o]);
    if (order < 0) {
      if (now.vertices[n].size != 0) lists.added.push_back(static_cast<uint32_t>(n));
      ++n;
    } else if (order > 0) {
      if (old.vertices[o].size != 0) lists.removed.push_back(static_cast<uint32_t>(o));
      ++o;
    } else {
      if (now.vertices[n].size != 0) {
        oldOf[n] = static_cast<int32_t>(o);
        common.emplace_back(static_cast<uint32_t>(n), static_cast<uint32_t>(o));
      }
      ++n;
      ++o;
    }
  }
  for (const auto& [newVertex, oldVertex] : common) {
    if (old.names[oldVertex] != old.backups[oldVertex]) lists.renamed.push_back(newVertex);
    const uint32_t* newParents = now.parents.data() + now.parentStart[newVertex];
    const size_t newCount = now.parentStart[newVertex + 1] - now.parentStart[newVertex];
    const uint32_t* oldParents = old.parents.data() + old.parentStart[oldVertex];
    const size_t oldCount = old.parentStart[oldVertex + 1] - old.parentStart[oldVertex];
    if (newCount == 0 && oldCount == 0) continue;  // a root on both sides
    if (!ShareAParent(newParents, newCount, oldParents, oldCount, oldOf)) {
      lists.moved.push_back(newVertex);
    }
  }
  n = 0;
  o = 0;
  while (n < now.edges.size() || o < old.edges.size()) {
    const int order = n == now.edges.size()   ? 1
                      : o == old.edges.size() ? -1
                                              : Compare(now.edges[n], old.edges[o]);
    if (order < 0) {
      if (now.edges[n].size != 0) lists.edgesAdded.push_back(static_cast<uint32_t>(n));
      ++n;
    } else if (order > 0) {
      if (old.edges[o].size != 0) lists.edgesRemoved.push_back(static_cast<uint32_t>(o));
      ++o;
    } else {
      ++n;
      ++o;
    }
  }
  return lists;
}

// The roots of the part made of the listed vertices and edges of `state`:
// vertices that no listed edge enters, edges whose source is not listed.
void Roots(const State& state, const std::vector<uint32_t>& vertices,
           const std::vector<uint32_t>& edges, std::vector<uint32_t>& rootVertices,
           std::vector<uint32_t>& rootEdges) {
  if (vertices.empty() && edges.empty()) return;
  enum : char { kOut = 0, kListed = 1, kEntered = 2 };
  std::vector<char> mark(state.vertices.size(), kOut);
  for (uint32_t v : vertices) mark[v] = kListed;
  for (uint32_t e : edges) {
    const int32_t target = state.targets[e];
    if (target >= 0 && mark[target] != kOut) mark[target] = kEntered;
    const int32_t source = state.sources[e];
    if (source < 0 || mark[source] == kOut) rootEdges.push_back(e);
  }
  for (uint32_t v : vertices) {
    if (mark[v] == kListed) rootVertices.push_back(v);
  }
}

// The tool's JSON string: '"' and '\' escaped, control characters as \b \f
// \n \r \t or \u00xx, DEL as \u007f, all other bytes as they are.
void AppendJsonString(std::string& json, std::string_view text) {
  json += '"';
  for (const char byte : text) {
    const unsigned char c = static_cast<unsigned char>(byte);
    switch (c) {
      case '"':
        json += "\\\"";
        break;
      case '\\':
        json += "\\\\";
        break;
      case '\b':
        json += "\\b";
        break;
      case '\f':
        json += "\\f";
        break;
      case '\n':
        json += "\\n";
        break;
      case '\r':
        json += "\\r";
        break;
      case '\t':
        json += "\\t";
        break;
      default:
        if (c < 0x20 || c == 0x7F) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", c);
          json += escaped;
        } else {
          json += byte;
        }
    }
  }
  json += '"';
}

void AppendList(std::string& json, const char* key, const std::vector<Key>& keys,
                const std::vector<uint32_t>& positions) {
  json += ",\n  \"";
  json += key;
  json += "\": [";
  for (size_t i = 0; i < positions.size(); ++i) {
    json += i == 0 ? "\n    " : ",\n    ";
    AppendJsonString(json, keys[positions[i]].Text());
  }
  json += positions.empty() ? "]" : "\n  ]";
}

int Run(const char* oldPath, const char* newPath) {
  auto old = std::make_unique<State>();
  auto now = std::make_unique<State>();
  old->path = oldPath;
  now->path = newPath;
  Load(*old);
  Load(*now);

  const Lists lists = Diff(*now, *old);
  std::vector<uint32_t> rootVerticesToAdd, rootEdgesToAdd, rootVerticesToRemove, rootEdgesToRemove;
  Roots(*now, lists.added, lists.edgesAdded, rootVerticesToAdd, rootEdgesToAdd);
  Roots(*old, lists.removed, lists.edgesRemoved, rootVerticesToRemove, rootEdgesToRemove);

  const bool different = !lists.added.empty() || !lists.removed.empty() || !lists.moved.empty() ||
                         !lists.renamed.empty() || !lists.edgesAdded.empty() ||
                         !lists.edgesRemoved.empty();
  std::string json = "{\n  \"outcome\": ";
  json += different ? "\"different\"" : "\"identical\"";
  AppendList(json, "verticesToBeAdded", now->vertices, lists.added);
  AppendList(json, "verticesToBeRemoved", old->vertices, lists.removed);
  AppendList(json, "verticesToBeMoved", now->vertices, lists.moved);
  AppendList(json, "verticesToChangeName", now->vertices, lists.renamed);
  AppendList(json, "edgesToBeAdded", now->edges, lists.edgesAdded);
  AppendList(json, "edgesToBeRemoved", old->edges, lists.edgesRemoved);
  AppendList(json, "rootVerticesToAdd", now->vertices, rootVerticesToAdd);
  AppendList(json, "rootEdgesToAdd", now->edges, rootEdgesToAdd);
  AppendList(json, "rootVerticesToRemove", old->vertices, rootVerticesToRemove);
  AppendList(json, "rootEdgesToRemove", old->edges, rootEdgesToRemove);
  json += "\n}\n";
  if (std::fwrite(json.data(), 1, json.size(), stdout) != json.size() || std::fflush(stdout) != 0) {
    throw Failure{"cannot write the result"};
  }
  // The states go with the process: freeing them would only add time.
  static_cast<void>(old.release());
  static_cast<void>(now.release());
  return different ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: compare_reference OLD NEW\n");
    return 2;
  }
  try {
    return Run(argv[1], argv[2]);
  } catch (const Failure& failure) {
    std::fprintf(stderr, "compare_reference: %s\n", failure.message.c_str());
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "compare_reference: out of memory\n");
  }
  return 2;
}

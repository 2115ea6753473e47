// File: ModelFile.h
// A model file: the JSON export of one state of a host model, read into
// the library's objects and relations and built into a graph.
//
//   {"objects": [{"id": "PRC-0001", "name": "Weld frame", "refId": "...",
//                 "sciid": "...", "attributes": {"station": "S1"},
//                 "backupName": "...", "identPath": "..."}],
//    "relations": [{"id": "R-0001", "source": "PRC-0001",
//                   "target": "PRC-0002", "type": "precedes"}]}
//
// Only "id" is required; both lists may be missing. Text fields are
// strings; attribute values are strings, numbers or booleans (integers that
// fit 32 bits become VT_I4, other integers VT_I8, the rest VT_R8). Unknown
// members are ignored. A string holding U+0000 is refused, since the
// library's ids and names end at the first NUL.
//
// What the graph tolerates, the reader tolerates too: duplicate ids (the
// first object or relation wins) and relation ends that name no object (a
// null end). Both are counted in Stats().
//
// Two limits come from the JSON parser, which takes one document of at
// most 4 GiB less one byte, whose values are nested at most 1024 levels
// deep (the top-level object is level 1, its lists level 2, their entries
// level 3). A file past either is refused with a message naming the limit.
#ifndef VEKZOL_TOOLS_VEKZOL_MODELFILE_H_
#define VEKZOL_TOOLS_VEKZOL_MODELFILE_H_

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <vekzol/VEKZOLBase.h>

#include "ModelObject.h"
#include "ModelRelation.h"
#include "Phases.h"

namespace vekzol_tool {

// The largest model file read, in bytes. A larger file is refused before it
// is mapped or read.
constexpr unsigned long long kLargestModelBytes = 0xFFFFFFFFull;
// The deepest level of a value in a model file; the top-level value is at
// level 1.
constexpr size_t kDeepestModelNesting = 1024;

struct ModelStats {
  size_t objects = 0;
  size_t relations = 0;
  size_t duplicateObjectIds = 0;    // objects whose id an earlier object has
  size_t duplicateRelationIds = 0;  // the same for relations
  size_t unknownEnds = 0;           // sources and targets that name no object
};

class ModelFile {
 public:
  // The graph is named after the file (its name without the directory),
  // which heads its Dump.
  explicit ModelFile(std::string path);
  ~ModelFile();
  ModelFile(const ModelFile&) = delete;
  ModelFile& operator=(const ModelFile&) = delete;

  // Reads and parses the file and makes the objects and relations. The
  // times of "read <path>", "parse <path>" (the JSON parser alone) and
  // "objects <path>" are appended to `times`. Throws ToolError naming the
  // file, and for JSON the line and column, on any problem; a file larger
  // than kLargestModelBytes is refused before it is mapped or read. Touches
  // nothing outside this model file, so two files load on two threads.
  void Load(PhaseTimes& times);

  // The same for a model held in memory, standing for the file's content
  // (messages still name the path given to the constructor): `size` bytes
  // at `text`, followed by at least the JSON parser's padding
  // (simdjson::SIMDJSON_PADDING, 64 bytes) of readable memory, whose
  // content does not matter; a simdjson::padded_string has it. Appends the
  // times of "parse <path>" and "objects <path>". Load calls it once the
  // file is in memory.
  void LoadText(const char* text, size_t size, PhaseTimes& times);

  // Builds the graph, then gives each vertex the backup name and ident path
  // of its object's entry. Counts duplicate ids.
  void Build();

  VEKZOLGraph& Graph() { return *graph_; }
  // The name the graph was made with.
  const CString& GraphName() const { return graphName_; }
  const ModelStats& Stats() const { return stats_; }
  const std::string& Path() const { return path_; }
  size_t Elements() const { return stats_.objects + stats_.relations; }

  // One line on standard error per kind of tolerated problem, naming the
  // file; nothing when there is none.
  void ReportTolerated() const;

 private:
  class Reader;

  std::string path_;
  ModelStats stats_;
  // Made in place and never moved once made: the graph and the relations
  // point to them.
  std::vector<ModelObject> objects_;
  std::vector<ModelRelation> relations_;
  // Declared last so that it goes first: the graph's vertices and edges
  // point to the objects and relations.
  CString graphName_;
  std::unique_ptr<VEKZOLGraph> graph_;
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_MODELFILE_H_

// File: Commands.h
// The commands of the vekzol tool. Each takes its parsed options, writes
// its result to its output and returns the exit status (0, 1 for a
// comparison that found differences); failures are thrown as ToolError.
#ifndef VEKZOL_TOOLS_VEKZOL_COMMANDS_H_
#define VEKZOL_TOOLS_VEKZOL_COMMANDS_H_

#include <cstdint>
#include <string>

namespace vekzol_tool {

struct CommonOptions {
  bool quiet = false;
  bool timings = false;
};

struct CompareOptions {
  std::string oldModel;
  std::string newModel;
  bool checkNames = false;
  bool roots = false;
  std::string format = "text";
  std::string output;
};
int RunCompare(const CompareOptions& options, const CommonOptions& common);

// `show`: the graph's ToString; `dump`: its Dump.
struct GraphTextOptions {
  std::string model;
  std::string output;
  bool full = false;  // ToString rather than Dump
  // The largest text written; a larger one is refused before it is made.
  uint64_t maxOutput = 1073741824;  // 1 GiB
};
int RunGraphText(const GraphTextOptions& options, const CommonOptions& common);

struct ZipOptions {
  std::string input;  // empty or "-": standard input
  std::string output;
};
int RunCompress(const ZipOptions& options);
int RunDecompress(const ZipOptions& options);

struct GenerateOptions {
  int vertices = 0;
  double changes = 2.0;  // percent
  uint32_t seed = 12345;
  int idBytes = 11;  // 11: "PRD-0446620"; 40: a kind and a GUID
  std::string oldModel;
  std::string newModel;
  std::string expected;  // optional: the expected comparison, as JSON
};
int RunGenerate(const GenerateOptions& options, const CommonOptions& common);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_COMMANDS_H_

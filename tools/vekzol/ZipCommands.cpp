// File: ZipCommands.cpp
// vekzol compress and vekzol decompress: a text to a blob and back, through
// VEKZOLZip. A blob carries its text only up to the first NUL byte, and a
// text shorter than 20 bytes does not come back from its blob; compress
// refuses both rather than write a blob that would not give the input back.
#include <CLI/CLI.hpp>

#include <cstring>
#include <memory>
#include <string>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "FileIO.h"
#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

struct ZipOptions {
  std::string input;  // empty or "-": standard input
  std::string output;
};

// Smallest text that VEKZOLZip gives back from its blob.
constexpr size_t kSmallestRestorableText = 20;

std::string InputName(const std::string& input) {
  return input.empty() || input == "-" ? std::string("<stdin>") : input;
}

// Owns a block handed out by VEKZOLZip.
struct Block {
  explicit Block(char* pointer) : data(pointer) {}
  ~Block() { UnicodeString::deleteStr(data); }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;
  char* data;
};

int RunCompress(const ZipOptions& options) {
  SetBinaryStandardStreams();
  Output output(options.output);
  const std::string text = ReadWholeInput(options.input);
  const std::string name = InputName(options.input);
  const size_t nul = text.find('\0');
  if (nul != std::string::npos) {
    throw ToolError(name + ": holds a NUL byte at offset " + std::to_string(nul) +
                    ", and a blob keeps text only up to the first NUL: not compressed");
  }
  if (text.size() < kSmallestRestorableText) {
    throw ToolError(name + ": " + std::to_string(text.size()) +
                    " bytes, and texts shorter than 20 bytes do not come back from a blob: not "
                    "compressed");
  }
  unsigned long length = 0;
  Block blob(VEKZOLZip::compressString(text.c_str(), length));
  if (blob.data == nullptr || length == 0) throw ToolError(name + ": compression failed");
  output.Write(blob.data, length);
  output.Commit();
  return kExitSame;
}

int RunDecompress(const ZipOptions& options) {
  SetBinaryStandardStreams();
  Output output(options.output);
  const std::string blob = ReadWholeInput(options.input);
  const std::string name = InputName(options.input);
  if (blob.empty()) throw ToolError(name + ": empty input is no blob");
  Block text(VEKZOLZip::decompressString(blob.data(), static_cast<unsigned long>(blob.size())));
  if (text.data == nullptr) {
    throw ToolError(name + ": not a blob, or a damaged one (or one of a text under 20 bytes)");
  }
  output.Write(text.data, std::strlen(text.data));
  output.Commit();
  return kExitSame;
}

// The input and output of `compress` and `decompress`; the app's footer,
// on model files, does not concern them.
void AddZipOptions(CLI::App& command, ZipOptions& options) {
  command.add_option("IN", options.input, "Input file; standard input when absent or -")
      ->type_name("FILE");
  command.add_option("-o,--output", options.output, "Write to FILE instead of standard output")
      ->type_name("FILE");
  command.footer("");
}

}  // namespace

RegisteredCommand RegisterCompress(CLI::App& app) {
  auto options = std::make_shared<ZipOptions>();
  CLI::App* command = app.add_subcommand(
      "compress",
      "Turn a text into a blob. Refuses input holding a NUL byte (a blob keeps text only up to "
      "the first NUL) and input under 20 bytes (it would not decompress).");
  AddZipOptions(*command, *options);
  return {command, [options] { return RunCompress(*options); }};
}

RegisteredCommand RegisterDecompress(CLI::App& app) {
  auto options = std::make_shared<ZipOptions>();
  CLI::App* command = app.add_subcommand(
      "decompress", "Turn a blob back into its text. A blob that does not decompress is an error.");
  AddZipOptions(*command, *options);
  return {command, [options] { return RunDecompress(*options); }};
}

}  // namespace vekzol_tool

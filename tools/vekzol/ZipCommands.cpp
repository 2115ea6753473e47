// File: ZipCommands.cpp
// vekzol compress and vekzol decompress: a text to a blob and back, through
// VEKZOLZip. A blob carries its text only up to the first NUL byte, and a
// text shorter than 20 bytes does not come back from its blob; compress
// refuses both rather than write a blob that would not give the input back.
#include <cstring>
#include <string>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "FileIO.h"
#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

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

}  // namespace

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

}  // namespace vekzol_tool

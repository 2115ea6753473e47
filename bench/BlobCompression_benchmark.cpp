// Blob compression against zlib called directly in the same run: the
// library's compressString and decompressString on texts of 1 KiB, 64 KiB
// and 4 MiB, XML-like (compresses well) and random printable bytes
// (compresses poorly), and as reference the same zlib calls into a block of
// the same size without header, padding or timers. At the end the program
// prints each library operation's processor time over its reference's
// ("ratio Compress/xml/64KiB: 1.010").
#include <zlib.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <vekzol/VEKZOLBase.h>

#include "RatioReporter.h"

namespace {

std::string XmlText(size_t length) {
  std::string text;
  char line[160];
  for (int i = 0; text.size() < length; ++i) {
    std::snprintf(line, sizeof line,
                  "<process id=\"PRC-%07d\" name=\"Weld frame %d\"><station>S%d</station>"
                  "<duration>%d.5</duration></process>\n",
                  i, i % 97, i % 13, i % 60);
    text += line;
  }
  text.resize(length);
  return text;
}

std::string RandomText(size_t length) {
  std::string text(length, ' ');
  uint32_t seed = 12345;
  for (char& c : text) {
    seed = seed * 1664525u + 1013904223u;
    c = static_cast<char>(33 + (seed >> 24) % 94);
  }
  return text;
}

// One call of each side. The library's blocks go back through its own
// release function; the reference allocates and zero-fills the same room.
void CompressOnce(const std::string& text) {
  unsigned long length = 0;
  char* blob = VEKZOLZip::compressString(text.c_str(), length);
  benchmark::DoNotOptimize(blob);
  UnicodeString::deleteStr(blob);
}

void ReferenceCompressOnce(const std::string& text) {
  uLongf length = compressBound(static_cast<uLong>(text.size()));
  char* block = new char[length]();
  compress(reinterpret_cast<Bytef*>(block), &length, reinterpret_cast<const Bytef*>(text.data()),
           static_cast<uLong>(text.size()));
  benchmark::DoNotOptimize(block);
  delete[] block;
}

// A text's blob and its bare zlib stream, made once per benchmark.
struct Compressed {
  explicit Compressed(const std::string& text) : size(text.size()) {
    char* block = VEKZOLZip::compressString(text.c_str(), blobLength);
    blob.assign(block, blobLength);
    UnicodeString::deleteStr(block);
    uLongf length = compressBound(static_cast<uLong>(text.size()));
    stream.resize(length);
    compress(reinterpret_cast<Bytef*>(&stream[0]), &length,
             reinterpret_cast<const Bytef*>(text.data()), static_cast<uLong>(text.size()));
    stream.resize(length);
  }
  size_t size;
  unsigned long blobLength = 0;
  std::string blob;
  std::string stream;
};

void DecompressOnce(const Compressed& compressed) {
  char* back = VEKZOLZip::decompressString(compressed.blob.data(), compressed.blobLength);
  benchmark::DoNotOptimize(back);
  UnicodeString::deleteStr(back);
}

void ReferenceDecompressOnce(const Compressed& compressed) {
  uLongf length = static_cast<uLongf>(compressed.size);
  char* block = new char[compressed.size + 1]();
  uncompress(reinterpret_cast<Bytef*>(block), &length,
             reinterpret_cast<const Bytef*>(compressed.stream.data()),
             static_cast<uLong>(compressed.stream.size()));
  benchmark::DoNotOptimize(block);
  delete[] block;
}

void Compress(benchmark::State& state, const std::string& text) {
  for (auto _ : state) CompressOnce(text);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void ReferenceCompress(benchmark::State& state, const std::string& text) {
  for (auto _ : state) ReferenceCompressOnce(text);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void Decompress(benchmark::State& state, const std::string& text) {
  const Compressed compressed(text);
  for (auto _ : state) DecompressOnce(compressed);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void ReferenceDecompress(benchmark::State& state, const std::string& text) {
  const Compressed compressed(text);
  for (auto _ : state) ReferenceDecompressOnce(compressed);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

// The library and the reference in turns, call after call, their order
// swapped at every iteration, so that drift of a shared machine falls on
// both alike. Reports the library's total time over the reference's as the
// counter "library_over_reference".
template <typename Library, typename Reference>
void Paired(benchmark::State& state, Library library, Reference reference) {
  using Clock = std::chrono::steady_clock;
  Clock::duration libraryTime{};
  Clock::duration referenceTime{};
  bool libraryFirst = true;
  for (auto _ : state) {
    for (int turn = 0; turn < 2; ++turn) {
      const bool runLibrary = (turn == 0) == libraryFirst;
      const Clock::time_point start = Clock::now();
      if (runLibrary) {
        library();
      } else {
        reference();
      }
      (runLibrary ? libraryTime : referenceTime) += Clock::now() - start;
    }
    libraryFirst = !libraryFirst;
  }
  state.counters["library_over_reference"] =
      static_cast<double>(libraryTime.count()) / static_cast<double>(referenceTime.count());
}

void PairedCompress(benchmark::State& state, const std::string& text) {
  Paired(
      state, [&] { CompressOnce(text); }, [&] { ReferenceCompressOnce(text); });
}

void PairedDecompress(benchmark::State& state, const std::string& text) {
  const Compressed compressed(text);
  Paired(
      state, [&] { DecompressOnce(compressed); }, [&] { ReferenceDecompressOnce(compressed); });
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;

  struct Size {
    const char* name;
    size_t bytes;
  };
  static std::vector<std::string> texts;  // kept alive for the registered lambdas
  texts.reserve(6);
  for (const Size& size : {Size{"1KiB", 1024}, Size{"64KiB", 65536}, Size{"4MiB", 4194304}}) {
    for (const char* kind : {"xml", "random"}) {
      texts.push_back(std::string(kind) == "xml" ? XmlText(size.bytes) : RandomText(size.bytes));
      const std::string& text = texts.back();
      const std::string suffix = std::string("/") + kind + "/" + size.name;
      benchmark::RegisterBenchmark(("Compress" + suffix).c_str(), Compress, text);
      benchmark::RegisterBenchmark(("ReferenceCompress" + suffix).c_str(), ReferenceCompress, text);
      benchmark::RegisterBenchmark(("Decompress" + suffix).c_str(), Decompress, text);
      benchmark::RegisterBenchmark(("ReferenceDecompress" + suffix).c_str(), ReferenceDecompress,
                                   text);
      benchmark::RegisterBenchmark(("PairedCompress" + suffix).c_str(), PairedCompress, text);
      benchmark::RegisterBenchmark(("PairedDecompress" + suffix).c_str(), PairedDecompress, text);
    }
  }

  vekzol_bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

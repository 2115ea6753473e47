// Blob compression against zlib called directly in the same run: the
// library's compressString and decompressString on texts of 1 KiB, 64 KiB
// and 4 MiB, XML-like (compresses well) and random printable bytes
// (compresses poorly), and as reference the same zlib calls into a block of
// the same size without header, padding or timers. At the end the program
// prints each library operation's processor time over its reference's
// ("ratio Compress/xml/64KiB: 1.010").
#include <zlib.h>

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

void Compress(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    unsigned long length = 0;
    char* blob = VEKZOLZip::compressString(text.c_str(), length);
    benchmark::DoNotOptimize(blob);
    UnicodeString::deleteStr(blob);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void ReferenceCompress(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    uLongf length = compressBound(static_cast<uLong>(text.size()));
    char* block = new char[length]();
    compress(reinterpret_cast<Bytef*>(block), &length, reinterpret_cast<const Bytef*>(text.data()),
             static_cast<uLong>(text.size()));
    benchmark::DoNotOptimize(block);
    delete[] block;
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void Decompress(benchmark::State& state, const std::string& text) {
  unsigned long length = 0;
  char* blob = VEKZOLZip::compressString(text.c_str(), length);
  for (auto _ : state) {
    char* back = VEKZOLZip::decompressString(blob, length);
    benchmark::DoNotOptimize(back);
    UnicodeString::deleteStr(back);
  }
  UnicodeString::deleteStr(blob);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void ReferenceDecompress(benchmark::State& state, const std::string& text) {
  uLongf streamLength = compressBound(static_cast<uLong>(text.size()));
  std::vector<Bytef> stream(streamLength);
  compress(stream.data(), &streamLength, reinterpret_cast<const Bytef*>(text.data()),
           static_cast<uLong>(text.size()));
  for (auto _ : state) {
    uLongf length = static_cast<uLongf>(text.size());
    char* block = new char[text.size() + 1]();
    uncompress(reinterpret_cast<Bytef*>(block), &length, stream.data(), streamLength);
    benchmark::DoNotOptimize(block);
    delete[] block;
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
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
    }
  }

  vekzol_bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

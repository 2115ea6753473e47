// File: RatioReporter.h
// The console report of a benchmark program, followed by each benchmark's
// processor time over that of its reference, the benchmark of the same name
// prefixed with "Reference" ("ratio <name>: <library / reference>"), and
// the counter "library_over_reference" of benchmarks named "Paired<name>",
// which time both sides in turns themselves ("paired ratio <name>: ..."). With
// repetitions the medians are compared. Processor time, since the machines
// that run this are shared.
#ifndef VEKZOL_BENCH_RATIOREPORTER_H_
#define VEKZOL_BENCH_RATIOREPORTER_H_

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace vekzol_bench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  // Plain text, so that the lines can be read from a file or a pipe.
  RatioReporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.run_type == Run::RT_Iteration || run.aggregate_name == "median") {
        times_[run.run_name.str()] = run.GetAdjustedCPUTime();
        const auto paired = run.counters.find("library_over_reference");
        if (paired != run.counters.end()) paired_[run.run_name.str()] = paired->second.value;
      }
    }
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    const std::string prefix = "Reference";
    for (const auto& entry : times_) {
      if (entry.first.compare(0, prefix.size(), prefix) == 0) continue;
      const auto reference = times_.find(prefix + entry.first);
      if (reference == times_.end() || reference->second <= 0.0) continue;
      std::printf("ratio %s: %.3f\n", entry.first.c_str(), entry.second / reference->second);
    }
    const std::string pairedPrefix = "Paired";
    for (const auto& entry : paired_) {
      std::printf("paired ratio %s: %.3f\n", entry.first.substr(pairedPrefix.size()).c_str(),
                  entry.second);
    }
  }

 private:
  std::map<std::string, double> times_;
  std::map<std::string, double> paired_;
};

}  // namespace vekzol_bench

#endif  // VEKZOL_BENCH_RATIOREPORTER_H_

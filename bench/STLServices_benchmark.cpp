// The three set operations of the string-list services against a reference
// measured in the same run: the same ids as std::string, copied into two
// vectors, sorted with std::sort and put through the standard algorithm into
// a result deque. The comparison calls the operations once per vertex with
// one or two ids, and now and then with a million, so both sizes are
// measured:
//   - large: two lists of 10^6 random ids each (2 x 10^6 ids), drawn from
//     1.5 x 10^6 possible ids, so both lists hold duplicates and share about
//     half of their ids;
//   - small: lists of one or two ids.
// At the end the program prints each operation's processor time as a ratio
// to its reference's ("ratio <operation>/<sizes>: <library / reference>"),
// the median's when the runs are repeated; processor time, since the
// machines that run this are shared.
#include <algorithm>
#include <cstdio>
#include <deque>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "RatioReporter.h"

#include <vekzol/VEKZOLBase.h>

namespace {

enum Operation { kIntersection, kDifference, kSymmetricDifference };

struct Lists {
  std::deque<CString> first;
  std::deque<CString> second;
  std::deque<std::string> firstStd;
  std::deque<std::string> secondStd;
};

void Add(Lists& lists, bool toFirst, const char* id) {
  (toFirst ? lists.first : lists.second).emplace_back(id);
  (toFirst ? lists.firstStd : lists.secondStd).emplace_back(id);
}

const Lists& LargeLists() {
  static const Lists lists = [] {
    Lists made;
    std::mt19937 random(12345);
    std::uniform_int_distribution<int> pick(0, 1499999);
    char id[32];
    for (int i = 0; i < 1000000; ++i) {
      std::snprintf(id, sizeof id, "PRC-%07d", pick(random));
      Add(made, true, id);
      std::snprintf(id, sizeof id, "PRC-%07d", pick(random));
      Add(made, false, id);
    }
    return made;
  }();
  return lists;
}

// One or two ids in each list; the lists share one id.
const Lists& SmallLists(int firstSize, int secondSize) {
  static std::map<std::pair<int, int>, Lists> cache;
  Lists& lists = cache[{firstSize, secondSize}];
  if (lists.first.empty()) {
    const char* const firstIds[] = {"PRC-0012345", "PRC-0000042"};
    const char* const secondIds[] = {"PRC-0000042", "PRC-0099999"};
    for (int i = 0; i < firstSize; ++i) Add(lists, true, firstIds[firstSize - 1 - i]);
    for (int i = 0; i < secondSize; ++i) Add(lists, false, secondIds[i]);
  }
  return lists;
}

const Lists& ListsOf(const benchmark::State& state) {
  if (state.range(0) == 0) return LargeLists();
  return SmallLists(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
}

template <Operation kOperation>
void BM_Library(benchmark::State& state) {
  const Lists& lists = ListsOf(state);
  std::deque<CString> first = lists.first;
  std::deque<CString> second = lists.second;
  for (auto _ : state) {
    std::deque<CString> result;
    switch (kOperation) {
      case kIntersection:
        VEKZOLSTLServices::Intersection(first, second, result);
        break;
      case kDifference:
        VEKZOLSTLServices::Difference(first, second, result);
        break;
      case kSymmetricDifference:
        VEKZOLSTLServices::SymmetricDifference(first, second, result);
        break;
    }
    benchmark::DoNotOptimize(result);
  }
}

template <Operation kOperation>
void BM_Reference(benchmark::State& state) {
  const Lists& lists = ListsOf(state);
  for (auto _ : state) {
    std::vector<std::string> left(lists.firstStd.begin(), lists.firstStd.end());
    std::vector<std::string> right(lists.secondStd.begin(), lists.secondStd.end());
    std::sort(left.begin(), left.end());
    std::sort(right.begin(), right.end());
    std::deque<std::string> result;
    switch (kOperation) {
      case kIntersection:
        std::set_intersection(left.begin(), left.end(), right.begin(), right.end(),
                              std::back_inserter(result));
        break;
      case kDifference:
        std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                            std::back_inserter(result));
        break;
      case kSymmetricDifference:
        std::set_symmetric_difference(left.begin(), left.end(), right.begin(), right.end(),
                                      std::back_inserter(result));
        break;
    }
    benchmark::DoNotOptimize(result);
  }
}

// Large lists are the argument pair (0, 0); small ones their two sizes.
void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Args({0, 0})->Args({1, 1})->Args({2, 1})->Args({2, 2});
}

BENCHMARK_TEMPLATE(BM_Library, kIntersection)->Name("Intersection")->Apply(Sizes);
BENCHMARK_TEMPLATE(BM_Reference, kIntersection)->Name("ReferenceIntersection")->Apply(Sizes);
BENCHMARK_TEMPLATE(BM_Library, kDifference)->Name("Difference")->Apply(Sizes);
BENCHMARK_TEMPLATE(BM_Reference, kDifference)->Name("ReferenceDifference")->Apply(Sizes);
BENCHMARK_TEMPLATE(BM_Library, kSymmetricDifference)->Name("SymmetricDifference")->Apply(Sizes);
BENCHMARK_TEMPLATE(BM_Reference, kSymmetricDifference)
    ->Name("ReferenceSymmetricDifference")
    ->Apply(Sizes);

}  // namespace

int main(int argc, char** argv) {
  // Meant to run with timers off (neither switch set), as hosts run: the
  // services' own timers then cost one test of a cached flag per call.
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  vekzol_bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

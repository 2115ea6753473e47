// File: Phases.cpp
#include "Phases.h"

#include <cstdio>

namespace vekzol_tool {

Phases::Phases(bool progressAllowed, bool printTimings)
    : progressAllowed_(progressAllowed),
      printTimings_(printTimings),
      start_(std::chrono::steady_clock::now()),
      phaseStart_(start_) {}

void Phases::NoteElements(size_t elements) {
  if (elements > kProgressThreshold) large_ = true;
}

void Phases::Begin(const std::string& label) {
  label_ = label;
  phaseStart_ = std::chrono::steady_clock::now();
  if (progressAllowed_ && large_) {
    std::fprintf(stderr, "vekzol: %s ...", label_.c_str());
    std::fflush(stderr);
    lineOpen_ = true;
  }
}

void Phases::End(const std::string& name, const std::string& detail) {
  const double seconds = Seconds(std::chrono::steady_clock::now() - phaseStart_);
  times_.emplace_back(name.empty() ? label_ : name, seconds);
  if (progressAllowed_ && large_) {
    // A phase that learnt the size of a large model shows its line at the
    // end, with what it found.
    if (!lineOpen_) std::fprintf(stderr, "vekzol: %s ...", label_.c_str());
    if (!detail.empty()) std::fprintf(stderr, " %s,", detail.c_str());
    std::fprintf(stderr, " %.2f s\n", seconds);
    std::fflush(stderr);
  }
  lineOpen_ = false;
}

void Phases::Record(const std::string& name, double seconds) { times_.emplace_back(name, seconds); }

void Phases::Record(const PhaseTimes& times) {
  times_.insert(times_.end(), times.begin(), times.end());
}

void Phases::PrintTimings() const {
  if (!printTimings_) return;
  for (const auto& [name, seconds] : times_) {
    std::fprintf(stderr, "vekzol: time %-28s %10.3f s\n", name.c_str(), seconds);
  }
  std::fprintf(stderr, "vekzol: time %-28s %10.3f s\n", "total",
               Seconds(std::chrono::steady_clock::now() - start_));
}

}  // namespace vekzol_tool

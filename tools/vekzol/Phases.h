// File: Phases.h
// Timing and progress of a command's phases. Every phase is timed; the
// times go to standard error with --timings. Progress lines go to standard
// error only when it is a terminal, --quiet is off and the models are
// large (over 100,000 elements), so pipes and scripts never see them.
#ifndef VEKZOL_TOOLS_VEKZOL_PHASES_H_
#define VEKZOL_TOOLS_VEKZOL_PHASES_H_

#include <chrono>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace vekzol_tool {

// Times of phases measured apart from a Phases (on another thread), to be
// recorded in order afterwards.
using PhaseTimes = std::vector<std::pair<std::string, double>>;

// Models with more elements than this show progress on a terminal.
constexpr size_t kProgressThreshold = 100000;

class Phases {
 public:
  // `progressAllowed`: standard error is a terminal and --quiet is off.
  Phases(bool progressAllowed, bool printTimings);

  // Tells the size of a model once it is known; progress starts with the
  // first model over the threshold.
  void NoteElements(size_t elements);

  // Starts a phase; `label` is what the progress line says ("building").
  void Begin(const std::string& label);
  // Ends the current phase, recording its time under `name` (the label when
  // empty); `detail` is shown behind it on the progress line.
  void End(const std::string& name = "", const std::string& detail = "");

  // Records a time measured elsewhere (a part of a phase).
  void Record(const std::string& name, double seconds);
  void Record(const PhaseTimes& times);

  // With --timings: one line per recorded phase and the whole run.
  void PrintTimings() const;

  static double Seconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
  }

 private:
  bool progressAllowed_;
  bool printTimings_;
  bool large_ = false;
  bool lineOpen_ = false;
  std::string label_;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point phaseStart_;
  std::vector<std::pair<std::string, double>> times_;
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_PHASES_H_

// Measures one piece of work in a child process: CPU time as the median of several
// runs, within a limit after which the child is killed. A crash or an endless loop
// costs one line of the table and nothing else. One result is one TSV line.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// What is measured: one run works through all parts. `work` alone is timed; `prepare`
/// comes before it, and `area` tells after it how large the answer is, so that a wrong
/// one is seen.
struct Job {
  std::size_t parts = 1;
  std::function<void(std::size_t part)> prepare;
  std::function<void(std::size_t part)> work;
  std::function<double(std::size_t part)> area;
  /// Peak heap bytes of one more run, where they can be counted.
  std::function<double()> peakBytes;
};

struct Outcome {
  std::string status = "ok";  ///< ok, limit, crash, refused or skipped
  double ms = 0.0;            ///< of one run, the median; or the limit
  int runs = 0;
  double area = 0.0;
  double bytes = 0.0;
};

/// In seconds.
struct Limits {
  double entry;  ///< of the clock on the wall, for one entry
  double runs;   ///< of CPU time: runs go on for so long, and until there are five
};

inline Limits LimitsFor(bool quick) {
  return {quick ? 5.0 : 15.0, 0.05};
}

/// Throws what ends a run as "refused".
void Require(bool good, const char* what);

/// Runs `job` in a child of this process.
Outcome Measure(const Job& job, const Limits& limits);

/// Runs a program with its arguments, which prints "ms runs area".
Outcome MeasureProgram(const std::vector<std::string>& command, const Limits& limits);

/// The sizes of one family, small ones first: once one of them was too
/// slow or crashed, and where the growth so far leads far beyond the limit, larger ones
/// are not tried.
class Ladder {
 public:
  explicit Ladder(const Limits& limits) : limits_(limits) {}

  bool Tries(double size) const;
  void Saw(double size, const Outcome& outcome);

 private:
  Limits limits_;
  bool failed_ = false;
  double size_ = 0.0;
  double ms_ = 0.0;
  double power_ = 1.0;
};

/// Where an answer's area must lie. `tolerance` zero: no area is expected, the
/// answers are compared among themselves.
struct Expected {
  double area = 0.0;
  double tolerance = 0.0;
};

/// Prints work, row, family, size, vertices, status, ms, runs, area, expected area,
/// tolerance, bytes.
void Print(const std::string& work, const std::string& row, const std::string& family, int size,
           double vertices, const Outcome& outcome, const Expected& expected);

}  // namespace bench

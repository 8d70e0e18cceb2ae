// The steps of a run: what is being done, on the terminal where it takes a while, and how long
// each step took.
#pragma once

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace tool {

class Steps {
 public:
  Steps();
  ~Steps() { Clear(); }
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  // Ends the step before. `total` is what Advance adds up to; 0 where the step cannot tell how
  // far it is.
  void Begin(std::string name, std::string detail = "", std::size_t total = 0);
  void Advance(std::size_t amount);
  void Clear();  // takes the line away, so that other text can be written

  // "time: reading 0.210 s, uniting 0.113 s"; ends the step that runs.
  void PrintTimes(std::ostream& out);

 private:
  using Clock = std::chrono::steady_clock;

  void End();
  void Show();

  std::vector<std::pair<std::string, double>> times_;  // in seconds, of what has ended
  std::string name_;
  std::string detail_;
  std::size_t total_ = 0;
  std::size_t done_ = 0;
  bool terminal_;
  std::size_t shown_ = 0;  // characters on the line
  Clock::time_point patient_until_;
  Clock::time_point next_;
  Clock::time_point start_;
};

}  // namespace tool

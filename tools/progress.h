// The steps of a run: what is being done, on the terminal where it takes a while, and how long
// each step took.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <iosfwd>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tool {

class Steps {
 public:
  Steps();
  ~Steps();
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  // Ends the step before. `total` is what Advance adds up to; for 0 the seconds are shown.
  void Begin(std::string name, std::string detail = "", std::size_t total = 0);
  void Advance(std::size_t amount);
  void Clear();  // takes the line away until the step advances, so that other text can be written

  // "time: reading 0.210 s, uniting 0.113 s"; ends the step that runs.
  void PrintTimes(std::ostream& out);

 private:
  using Clock = std::chrono::steady_clock;

  // What runs while the mutex is held.
  void End();
  void Show();
  void TakeAway();

  // Keeps the line true while a step that is one call goes on.
  void Tick();

  std::vector<std::pair<std::string, double>> times_;  // in seconds, of what has ended
  std::string name_;                                   // empty between steps
  std::string detail_;
  std::size_t total_ = 0;
  std::size_t done_ = 0;
  std::size_t shown_ = 0;  // characters on the line
  const bool terminal_;
  bool paused_ = false;
  bool over_ = false;
  Clock::time_point patient_until_;
  Clock::time_point next_;
  Clock::time_point start_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::thread ticker_;
};

}  // namespace tool

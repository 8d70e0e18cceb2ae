// A line of progress on the terminal for work that takes a while; silent
// otherwise.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace tool {

class Progress {
 public:
  Progress(std::string what, std::size_t total);
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Advance(std::size_t amount = 1);
  void Clear();  // takes the line away, so that other text can be written

 private:
  using Clock = std::chrono::steady_clock;

  std::string what_;
  std::size_t total_;
  std::size_t done_ = 0;
  bool terminal_;
  bool shown_ = false;
  Clock::time_point next_;
};

}  // namespace tool

#include "progress.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iostream>
#include <ostream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tool {
namespace {

bool ErrorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

constexpr std::chrono::milliseconds kPatience{500};  // from the first step on
constexpr std::chrono::milliseconds kPeriod{100};

}  // namespace

Steps::Steps()
    : terminal_(ErrorIsTerminal()),
      patient_until_(Clock::now() + kPatience),
      next_(patient_until_) {}

void Steps::Begin(std::string name, std::string detail, std::size_t total) {
  End();
  name_ = std::move(name);
  detail_ = std::move(detail);
  total_ = total;
  done_ = 0;
  start_ = Clock::now();
  if (terminal_ && start_ >= patient_until_) Show();
}

void Steps::End() {
  Clear();
  if (name_.empty()) return;
  const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  if (times_.empty() || times_.back().first != name_) times_.emplace_back(name_, 0);
  times_.back().second += seconds;
  name_.clear();
}

void Steps::Advance(std::size_t amount) {
  done_ += amount;
  if (terminal_ && Clock::now() >= next_) Show();
}

void Steps::Show() {
  Clear();
  std::string line = name_ + (detail_.empty() ? "" : " " + detail_);
  if (total_ > 0) line += ' ' + std::to_string(std::min(done_, total_) * 100 / total_) + '%';
  std::cerr << line << std::flush;
  shown_ = line.size();
  next_ = Clock::now() + kPeriod;
}

void Steps::Clear() {
  if (shown_ == 0) return;
  std::cerr << '\r' << std::string(shown_, ' ') << '\r' << std::flush;
  shown_ = 0;
}

void Steps::PrintTimes(std::ostream& out) {
  End();
  const char* separator = "time: ";
  for (const auto& [name, seconds] : times_) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), " %.3f s", seconds);
    out << std::exchange(separator, ", ") << name << text.data();
  }
  out << '\n';
}

}  // namespace tool

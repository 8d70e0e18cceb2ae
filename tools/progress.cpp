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
constexpr std::chrono::milliseconds kTick{1000};

}  // namespace

Steps::Steps()
    : terminal_(ErrorIsTerminal()),
      patient_until_(Clock::now() + kPatience),
      next_(patient_until_) {
  if (terminal_) ticker_ = std::thread(&Steps::Tick, this);
}

Steps::~Steps() {
  if (!terminal_) return;
  {
    const std::lock_guard lock(mutex_);
    over_ = true;
    TakeAway();
  }
  changed_.notify_one();
  ticker_.join();
}

void Steps::Tick() {
  std::unique_lock lock(mutex_);
  while (!changed_.wait_for(lock, kTick, [&] { return over_; })) {
    if (!paused_ && !name_.empty()) Show();
  }
}

void Steps::Begin(std::string name, std::string detail, std::size_t total) {
  const std::lock_guard lock(mutex_);
  End();
  name_ = std::move(name);
  detail_ = std::move(detail);
  total_ = total;
  done_ = 0;
  paused_ = false;
  start_ = Clock::now();
  if (start_ >= patient_until_) Show();
}

void Steps::End() {
  TakeAway();
  if (name_.empty()) return;
  const double seconds = std::chrono::duration<double>(Clock::now() - start_).count();
  if (times_.empty() || times_.back().first != name_) times_.emplace_back(name_, 0);
  times_.back().second += seconds;
  name_.clear();
}

void Steps::Advance(std::size_t amount) {
  const std::lock_guard lock(mutex_);
  done_ += amount;
  paused_ = false;
  if (Clock::now() >= next_) Show();
}

void Steps::Show() {
  if (!terminal_) return;
  TakeAway();
  const auto now = Clock::now();
  std::string line = name_ + (detail_.empty() ? "" : " " + detail_);
  if (total_ > 0) {
    line += ' ' + std::to_string(std::min(done_, total_) * 100 / total_) + '%';
  } else if (now - start_ >= kTick) {
    line += ", " + std::to_string((now - start_) / std::chrono::seconds(1)) + " s";
  }
  std::cerr << line << std::flush;
  shown_ = line.size();
  next_ = now + kPeriod;
}

void Steps::TakeAway() {
  if (shown_ == 0) return;
  std::cerr << '\r' << std::string(shown_, ' ') << '\r' << std::flush;
  shown_ = 0;
}

void Steps::Clear() {
  const std::lock_guard lock(mutex_);
  TakeAway();
  paused_ = true;
}

void Steps::PrintTimes(std::ostream& out) {
  const std::lock_guard lock(mutex_);
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

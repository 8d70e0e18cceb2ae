#include "progress.h"

#include <cstdio>
#include <iostream>
#include <utility>

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

constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kPeriod{100};

}  // namespace

Progress::Progress(std::string what, std::size_t total)
    : what_(std::move(what)),
      total_(total),
      terminal_(ErrorIsTerminal()),
      next_(Clock::now() + kPatience) {}

void Progress::Advance(std::size_t amount) {
  done_ += amount;
  if (!terminal_ || Clock::now() < next_) return;
  std::cerr << '\r' << what_ << ' ' << (total_ == 0 ? 100 : done_ * 100 / total_) << "% "
            << std::flush;
  shown_ = true;
  next_ = Clock::now() + kPeriod;
}

void Progress::Clear() {
  if (!shown_) return;
  std::cerr << '\r' << std::string(what_.size() + 8, ' ') << '\r' << std::flush;
  shown_ = false;
}

}  // namespace tool

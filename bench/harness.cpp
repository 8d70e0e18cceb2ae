#include "harness.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <stdexcept>
#include <vector>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kLongRun = 2.0;  // seconds; a run so long is not repeated
constexpr int kRefused = 3;       // exit status of a child

double CpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// One run in seconds. The answer's area is added to `area`, where it is wanted.
double TimedRun(const Job& job, double* area) {
  double seconds = 0.0;
  for (std::size_t part = 0; part < job.parts; ++part) {
    if (job.prepare) job.prepare(part);
    const double start = CpuSeconds();
    job.work(part);
    seconds += CpuSeconds() - start;
    if (area != nullptr) *area += job.area(part);
  }
  return seconds;
}

/// The times of a job's runs. None is begun that would end in the limit's second half:
/// that is left to a busy machine, and to the run that counts memory.
std::vector<double> TimedRuns(const Job& job, const Limits& limits, double& area) {
  const auto start = Clock::now();
  const auto end = start + std::chrono::duration<double>(limits.entry / 2);
  std::vector<double> runs{TimedRun(job, &area)};
  double total = runs.front();
  while (runs.front() < kLongRun && (runs.size() < 5 || total < limits.runs) &&
         Clock::now() + (Clock::now() - start) / runs.size() < end) {
    runs.push_back(TimedRun(job, nullptr));
    total += runs.back();
  }
  return runs;
}

[[noreturn]] void RunChild(const Job& job, const Limits& limits, int out) {
  try {
    double area = 0.0;
    const std::vector<double> runs = TimedRuns(job, limits, area);
    const double bytes = job.peakBytes ? job.peakBytes() : 0.0;
    dprintf(out, "%.9g %zu %.17g %.17g\n", 1e3 * Median(runs), runs.size(), area, bytes);
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    _exit(kRefused);
  }
  _exit(0);
}

/// The line that the child writes, or nothing when it writes none in time.
std::string ReadLine(int in, double seconds) {
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  std::string line;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    pollfd waiting{in, POLLIN, 0};
    if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) == 0) return "";
    char buffer[256];
    const ssize_t got = read(in, buffer, sizeof buffer);
    if (got <= 0) return line.empty() ? "end" : line;
    line.append(buffer, static_cast<std::size_t>(got));
  }
}

Outcome InChild(const std::function<void(int)>& run, const Limits& limits) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  std::fflush(stdout);
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) {
    close(ends[0]);
    run(ends[1]);
    _exit(127);
  }
  close(ends[1]);
  const std::string line = ReadLine(ends[0], limits.entry);
  close(ends[0]);
  if (line.empty()) kill(child, SIGKILL);
  int status = 0;
  waitpid(child, &status, 0);

  Outcome outcome;
  if (line.empty()) {
    outcome.status = "limit";
    outcome.ms = 1e3 * limits.entry;
  } else if (std::sscanf(line.c_str(), "%lf %d %lf %lf", &outcome.ms, &outcome.runs, &outcome.area,
                         &outcome.bytes) < 3) {
    const bool refused = WIFEXITED(status) && WEXITSTATUS(status) == kRefused;
    outcome.status = refused ? "refused" : "crash";
  }
  return outcome;
}

}  // namespace

void Require(bool good, const char* what) {
  if (!good) throw std::runtime_error(what);
}

Outcome Measure(const Job& job, const Limits& limits) {
  return InChild([&](int out) { RunChild(job, limits, out); }, limits);
}

Outcome MeasureProgram(const std::vector<std::string>& command, const Limits& limits) {
  std::vector<char*> arguments;
  for (const std::string& word : command) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  return InChild(
      [&](int out) {
        dup2(out, STDOUT_FILENO);
        execv(arguments[0], arguments.data());
      },
      limits);
}

bool Ladder::Tries(double size) const {
  if (failed_) return false;
  return size_ == 0.0 || ms_ * std::pow(size / size_, power_) < 1.5e3 * limits_.entry;
}

void Ladder::Saw(double size, const Outcome& outcome) {
  failed_ = outcome.status == "limit" || outcome.status == "crash";
  if (outcome.status != "ok") return;
  if (size_ > 0.0) power_ = std::max(1.0, std::log(outcome.ms / ms_) / std::log(size / size_));
  size_ = size;
  ms_ = outcome.ms;
}

void Print(const std::string& work, const std::string& row, const std::string& family, int size,
           double vertices, const Outcome& outcome, const Expected& expected) {
  std::printf("%s\t%s\t%s\t%d\t%.0f\t%s\t%.6g\t%d\t%.17g\t%.17g\t%.6g\t%.0f\n", work.c_str(),
              row.c_str(), family.c_str(), size, vertices, outcome.status.c_str(), outcome.ms,
              outcome.runs, outcome.area, expected.area, expected.tolerance, outcome.bytes);
  std::fflush(stdout);
}

}  // namespace bench

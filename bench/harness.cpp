#include "harness.h"

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <exception>
#include <sstream>
#include <string>
#include <vector>

namespace bench {
namespace {

constexpr std::size_t kLeastRuns = 5;
constexpr double kLeastTotal = 50;  // ms: short runs are repeated for as long

struct Result {
  std::string status = "ok";
  std::vector<double> times;
  double area = 0;
  double peak = 0;
};

// The child's side: each finding is a line in the pipe as soon as it is there.
void Work(Job& job, std::FILE* findings, double totalLimit) {
  const auto tell = [findings](const char* what, double value) {
    std::fprintf(findings, "%s %.17g\n", what, value);
    std::fflush(findings);
  };
  double total = 0;
  for (std::size_t runs = 0; runs < kLeastRuns || total < kLeastTotal; ++runs) {
    if (total > totalLimit) break;
    const double ms = job.Milliseconds();
    total += ms;
    tell("ms", ms);
  }
  tell("area", job.Area());
  tell("peak", static_cast<double>(job.PeakBytes()));
}

[[noreturn]] void Child(int pipe, const std::function<std::unique_ptr<Job>()>& make,
                        double totalLimit) {
  setpgid(0, 0);
  std::FILE* findings = fdopen(pipe, "w");
  try {
    Work(*make(), findings, totalLimit);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "  %s\n", error.what());
    _exit(1);
  }
  _exit(0);
}

void Note(Result& result, const std::string& line) {
  std::istringstream in(line);
  std::string what;
  double value = 0;
  in >> what >> value;
  if (what == "ms") result.times.push_back(value);
  if (what == "area") result.area = value;
  if (what == "peak") result.peak = value;
}

// Reads findings until the child ends, or is silent for longer than the limit.
bool Listen(int pipe, double limit, Result& result) {
  std::string line;
  for (;;) {
    pollfd waiting{pipe, POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(1000 * limit)) <= 0) return false;
    char bytes[4096];
    const ssize_t count = read(pipe, bytes, sizeof bytes);
    if (count <= 0) return true;
    for (ssize_t i = 0; i < count; ++i) {
      if (bytes[i] != '\n') {
        line += bytes[i];
        continue;
      }
      Note(result, line);
      line.clear();
    }
  }
}

Result RunChild(const std::function<std::unique_ptr<Job>()>& make, double limit) {
  Result result;
  int ends[2];
  if (pipe(ends) != 0) return {"crashed", {}, 0, 0};
  const pid_t child = fork();
  if (child == 0) {
    close(ends[0]);
    Child(ends[1], make, 600 * limit);
  }
  close(ends[1]);
  const bool ended = child > 0 && Listen(ends[0], limit, result);
  close(ends[0]);
  if (child < 0) return {"crashed", {}, 0, 0};
  if (!ended) {
    kill(child, SIGKILL);
    kill(-child, SIGKILL);  // and what it started
  }
  int status = 0;
  waitpid(child, &status, 0);
  if (!ended) {
    result.status = "limit";
  } else if (WIFSIGNALED(status)) {
    result.status = "crashed";
  } else if (WEXITSTATUS(status) != 0) {
    result.status = "refused";
  }
  return result;
}

double Median(std::vector<double> times) {
  if (times.empty()) return 0;
  std::sort(times.begin(), times.end());
  const std::size_t middle = times.size() / 2;
  return times.size() % 2 == 1 ? times[middle] : (times[middle - 1] + times[middle]) / 2;
}

}  // namespace

double CpuMilliseconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

double Job::Milliseconds() {
  Prepare();
  const double start = CpuMilliseconds();
  Run();
  return CpuMilliseconds() - start;
}

void Harness::Measure(const Entry& entry, const Expected& expected,
                      const std::function<std::unique_ptr<Job>()>& make) {
  if (entry.family.find(only_) == std::string::npos) return;
  const std::string key = entry.engine + '\t' + entry.family;
  const double vertices = static_cast<double>(entry.vertices);
  Result result;
  const auto tooLarge = tooLargeFrom_.find(key);
  if (tooLarge != tooLargeFrom_.end() && vertices >= tooLarge->second) {
    result.status = "skipped";
  } else {
    std::fflush(stdout);
    result = RunChild(make, limit_);
  }
  const double ms = Median(result.times);
  if (result.status == "limit") tooLargeFrom_[key] = vertices;
  // At linear growth, which nothing beats, this size would reach the limit.
  if (result.status == "ok") tooLargeFrom_[key] = vertices * 1000 * limit_ / std::max(ms, 1e-6);
  std::printf("%s\t%s\t%lld\t%zu\t%s\t%s\t%.6g\t%zu\t%.12g\t%.12g\t%.3g\t%.0f\n",
              entry.part.c_str(), entry.family.c_str(), entry.size, entry.vertices,
              entry.engine.c_str(), result.status.c_str(), ms, result.times.size(), result.area,
              expected.area, expected.tolerance, result.peak);
  std::fflush(stdout);
  std::fprintf(stderr, "%-14s %-26s %8lld  %-30s %-8s %12.3f ms\n", entry.part.c_str(),
               entry.family.c_str(), entry.size, entry.engine.c_str(), result.status.c_str(), ms);
}

}  // namespace bench

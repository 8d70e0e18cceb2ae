// Earcut, through the Python extension that Debian packages: see earcut.py, which
// takes the time.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <stdexcept>

#include "triangulators.h"

namespace bench {
namespace {

class EarcutJob : public Job {
 public:
  explicit EarcutJob(const TriangulationWork& work) {
    Start();
    Put(static_cast<std::int64_t>(work.polygons.size()));
    for (const Polygon& polygon : work.polygons) Send(polygon);
  }

  double Milliseconds() override { return Ask('r'); }
  double Area() override { return Ask('a'); }

 protected:
  void Run() override {}

 private:
  void Start() {
    int requests[2], answers[2];
    if (pipe(requests) != 0 || pipe(answers) != 0) throw std::runtime_error("no pipe");
    if (fork() == 0) {
      dup2(requests[0], STDIN_FILENO);
      dup2(answers[1], STDOUT_FILENO);
      close(requests[1]);
      execl(ZELVAN_BENCH_PYTHON, "python3", ZELVAN_BENCH_EARCUT, nullptr);
      _exit(1);
    }
    close(requests[0]);
    close(answers[1]);
    requests_ = fdopen(requests[1], "w");
    answers_ = fdopen(answers[0], "r");
  }

  template <class Number>
  void Put(Number number) {
    std::fwrite(&number, sizeof number, 1, requests_);
  }

  void Send(const Polygon& polygon) {
    std::vector<const Xyz*> rings{&polygon.outer};
    for (const Xyz& hole : polygon.holes) rings.push_back(&hole);
    Put(static_cast<std::int64_t>(rings.size()));
    std::size_t end = 0;
    for (const Xyz* ring : rings) Put(static_cast<std::int64_t>(end += VertexCount(*ring)));
    for (const Xyz* ring : rings) {
      for (std::size_t i = 0; i < ring->size(); i += 3) {
        Put((*ring)[i]);
        Put((*ring)[i + 1]);
      }
    }
  }

  double Ask(char request) {
    double answer = 0;
    std::fputc(request, requests_);
    std::fflush(requests_);
    if (std::fscanf(answers_, "%lf", &answer) != 1) throw std::runtime_error("earcut gave up");
    return answer;
  }

  std::FILE* requests_ = nullptr;
  std::FILE* answers_ = nullptr;
};

}  // namespace

std::unique_ptr<Job> EarcutTriangulation(const TriangulationWork& work) {
  return std::make_unique<EarcutJob>(work);
}

}  // namespace bench

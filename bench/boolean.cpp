#include "boolean.h"

#include <algorithm>
#include <cstdio>
#include <exception>

namespace bench {
namespace {

struct Family {
  std::string name;
  std::vector<int> sizes;
  std::function<Work(int)> work;
};

/// A coast and the same a little further on, which cross some hundred times.
Work MovedCoast(int n, Operation operation) {
  const Xyz coast = Coast(n);
  return {coast, {Moved(coast, 1e3, 2e3)}, operation};
}

/// A coast and the same with other small noise: one edge in ten is crossed.
Work OtherCoast(int n, Operation operation) {
  return {Coast(n), {Coast(n, 4)}, operation};
}

Work Stars(int n) {
  return {Star(n), {Turned(Star(n, 5), 0.5)}, Operation::kUnite};
}

/// The first contour, and the others with it.
Work Heap(std::vector<Xyz> contours, Operation operation) {
  Work work{contours[0], {}, operation};
  work.others.assign(contours.begin() + 1, contours.end());
  return work;
}

std::vector<Family> Families(bool quick) {
  constexpr auto kUnite = Operation::kUnite;
  constexpr auto kSubtract = Operation::kSubtract;
  std::vector<int> coasts{1000, 10000};
  std::vector<int> stars{10000};
  std::vector<int> sides{10, 30};
  if (!quick) {
    coasts.insert(coasts.end(), {100000, 1000000});
    stars.push_back(100000);
    sides.push_back(100);
  }
  return {
      {"coasts united, few crossings", coasts, [](int n) { return MovedCoast(n, kUnite); }},
      {"coasts subtracted, few crossings", coasts, [](int n) { return MovedCoast(n, kSubtract); }},
      {"coasts united, many crossings", coasts, [](int n) { return OtherCoast(n, kUnite); }},
      {"coasts subtracted, many crossings", coasts, [](int n) { return OtherCoast(n, kSubtract); }},
      {"stars united", stars, Stars},
      {"holes subtracted", sides, [](int k) { return Heap(SquareHoles(k), kSubtract); }},
      {"bars united", {100}, [](int k) { return Heap(Bars(k), kUnite); }},
      {"cells united", {55}, [](int k) { return Heap(Cells(k), kUnite); }},
  };
}

std::vector<Xyz> Contours(const Work& work) {
  std::vector<Xyz> contours = work.others;
  contours.push_back(work.main);
  return contours;
}

double Vertices(const Work& work) {
  double vertices = 0.0;
  for (const Xyz& contour : Contours(work)) vertices += static_cast<double>(contour.size() / 3);
  return vertices;
}

void RunFamily(const Family& family, const std::string& engine, const MakeJob& makeJob,
               const Limits& limits) {
  // Half a step when a contour is set, and a step of the box of both when it is combined.
  constexpr double kGridSteps = 1.5;
  Ladder ladder(limits);
  for (const int size : family.sizes) {
    const Work work = family.work(size);
    const double vertices = Vertices(work);
    Outcome outcome;
    if (ladder.Tries(vertices)) {
      outcome = Measure(makeJob(work), limits);
      ladder.Saw(vertices, outcome);
    } else {
      outcome.status = "skipped";
    }
    Print("booleans", engine, family.name, size, vertices, outcome,
          {0.0, GridTolerance(Contours(work), kGridSteps)});
  }
}

}  // namespace

int RunBooleans(int argc, char** argv, const std::string& engine, const MakeJob& makeJob,
                const std::vector<std::string>& families) try {
  const bool quick = argc > 1 && std::string(argv[1]) == "--quick";
  const Limits limits = LimitsFor(quick);
  for (const Family& family : Families(quick)) {
    const bool wanted = families.empty() ||
                        std::find(families.begin(), families.end(), family.name) != families.end();
    if (wanted) RunFamily(family, engine, makeJob, limits);
  }
  return 0;
} catch (const std::exception& problem) {
  std::fprintf(stderr, "%s: %s\n", argv[0], problem.what());
  return 2;
}

}  // namespace bench

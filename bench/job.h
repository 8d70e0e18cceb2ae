// What the comparison measures: one engine at one piece of work.
//
// An engine makes a Job for the work that it is given, in a process of its own, and
// may convert the coordinates to its own types there, outside of the time. To add an
// engine, write the Job and one line in the list of the program.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "contours.h"

namespace bench {

/// An outer contour and its holes.
struct Polygon {
  Xyz outer;
  std::vector<Xyz> holes;
};

inline std::size_t VertexCount(const Xyz& contour) {
  return contour.size() / 3;
}

class Job {
 public:
  virtual ~Job() = default;

  /// Does the work once more and returns what of it counts, in ms of CPU time.
  virtual double Milliseconds();

  /// The area of the last answer; a wrong one shows.
  virtual double Area() = 0;

  /// The most bytes that were held at once in one more run; 0 where nobody counted.
  virtual std::size_t PeakBytes() { return 0; }

 protected:
  /// What must be there before each run.
  virtual void Prepare() {}
  /// The work that is timed.
  virtual void Run() = 0;
};

template <class Work>
struct Engine {
  std::string name;
  std::function<std::unique_ptr<Job>(const Work&)> make;
};

/// CPU time of this process, in ms.
double CpuMilliseconds();

}  // namespace bench

// The contours that every engine triangulates, and the loop over them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "contours.h"
#include "harness.h"

namespace bench {

/// The polygons are triangulated one after the other.
using Scene = std::vector<Polygon>;

/// One row of the table: what is measured of one scene.
struct Row {
  std::string name;
  std::function<Outcome(const Scene&, const Limits&)> measure;
  /// The answer's area may differ by so many grid steps along the contours.
  double gridSteps = 0.0;
};

/// Measures `rows` on all families, smallest scenes first, and prints the lines.
/// The arguments of the program are the countries' file and, perhaps, --quick.
int RunTriangulation(int argc, char** argv, const std::vector<Row>& rows);

/// A row whose job is made of a scene.
template <class MakeJob>
Row JobRow(const std::string& name, MakeJob makeJob, double gridSteps = 0.0) {
  return {name,
          [makeJob](const Scene& scene, const Limits& limits) {
            return Measure(makeJob(scene), limits);
          },
          gridSteps};
}

}  // namespace bench

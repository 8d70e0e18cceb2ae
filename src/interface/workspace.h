// The workspace: the main polygon and the queue of further contours, and the
// operations of the flat interface on them (zelvan/zelvan.h documents each).
//
// What holds between two calls: every shape is in grid form against its own box
// and its tables name its own vertices. Operations throw; exports.cpp turns that
// into the result 0. No state is rolled back but where an operation says so.
#pragma once

#include <memory>

#include "polygon/shape.h"
#include "queue/shape_queue.h"

namespace zelvan {

class Workspace {
 public:
  int SetMainContour(int count, const double* xyz);
  int SetHole(int count, const double* xyz);
  int Triangulate();

  /// Add the queued contours to the main polygon, or take them from it, oldest
  /// first, and empty the queue. On failure what was combined before stays
  /// combined, and the whole queue stays.
  int Union();
  int Substruct();

  int GetCounts(int* vertexCount, int* edgeCount, int* faceCount) const noexcept;
  int GetVertices(double* out) const noexcept;
  int GetEdges(int* out) const noexcept;
  int GetFaces(int* out) const noexcept;

  [[nodiscard]] int GetContourCount() const noexcept;
  [[nodiscard]] int GetContourIndex(int contour) const noexcept;
  [[nodiscard]] int GetContourSize(int contour) const noexcept;

  /// The main polygon or null, for those inside the library.
  [[nodiscard]] const Shape* Main() const noexcept { return main_.get(); }

 private:
  using Operation = QueueWays (*)(Shape& shape, const ShapeQueue& others);
  int CombineQueue(Operation operation);

  // In this order, so that the main shape goes first when the library is unloaded.
  ShapeQueue holes_;             // oldest first
  std::unique_ptr<Shape> main_;  // or null
};

/// The one workspace of the process.
[[nodiscard]] Workspace& ProcessWorkspace() noexcept;

}  // namespace zelvan

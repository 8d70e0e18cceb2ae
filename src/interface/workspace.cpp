// The operations of the workspace (workspace.h).
#include "interface/workspace.h"

#include <cstddef>
#include <utility>

#include "interface/read_points.h"
#include "polygon/grid_mapping.h"
#include "queue/shape_queue.h"
#include "triangulation/mesh.h"
#include "triangulation/triangulate.h"

namespace zelvan {

int Workspace::SetMainContour(int count, const double* xyz) {
  holes_.clear();
  main_ = ReadPoints(count, xyz);
  return main_ != nullptr ? 1 : 0;
}

int Workspace::SetHole(int count, const double* xyz) {
  std::unique_ptr<Shape> hole = ReadPoints(count, xyz);
  if (hole == nullptr) return 0;
  holes_.push_back(std::move(hole));
  return 1;
}

int Workspace::Triangulate() {
  return main_ != nullptr && zelvan::Triangulate(*main_) ? 1 : 0;
}

int Workspace::CombineQueue(Operation operation) {
  if (holes_.empty()) return 1;
  if (main_ == nullptr) return 0;
  operation(*main_, holes_);
  holes_.clear();
  return 1;
}

int Workspace::Union() {
  return CombineQueue(UniteAll);
}

int Workspace::Substruct() {
  return CombineQueue(SubtractAll);
}

int Workspace::GetCounts(int* vertexCount, int* edgeCount, int* faceCount) const noexcept {
  const auto store = [](int* target, std::size_t number) {
    if (target != nullptr) *target = static_cast<int>(number);
  };
  if (main_ == nullptr) return 0;
  store(vertexCount, main_->vertexTable.size());
  if (main_->mesh == nullptr) return 0;
  store(edgeCount, main_->mesh->edges().size());
  store(faceCount, main_->mesh->faces().size());
  return vertexCount != nullptr && edgeCount != nullptr && faceCount != nullptr ? 1 : 0;
}

int Workspace::GetVertices(double* out) const noexcept {
  if (main_ == nullptr || out == nullptr) return 0;
  for (const VertexNode* v : main_->vertexTable) {
    const WorldPoint p = Unsnap(v->grid, main_->boxMin, main_->boxMax);
    *out++ = p.x;
    *out++ = p.y;
    *out++ = 0.0;
  }
  return 1;
}

int Workspace::GetEdges(int* out) const noexcept {
  if (main_ == nullptr || main_->mesh == nullptr || out == nullptr) return 0;
  constexpr int kOnContour = 0;
  constexpr int kDiagonal = 2;
  for (const VORNEX::MeshEdge& edge : main_->mesh->edges()) {
    *out++ = edge.first;
    *out++ = edge.second;
    *out++ = edge.onContour ? kOnContour : kDiagonal;
  }
  return 1;
}

int Workspace::GetFaces(int* out) const noexcept {
  if (main_ == nullptr || main_->mesh == nullptr || out == nullptr) return 0;
  for (const VORNEX::MeshFace& face : main_->mesh->faces()) {
    for (const std::uint32_t edge : face.edge) *out++ = static_cast<int>(edge);
  }
  return 1;
}

int Workspace::GetContourCount() const noexcept {
  return main_ != nullptr ? static_cast<int>(main_->contourStarts.size()) : 0;
}

int Workspace::GetContourIndex(int contour) const noexcept {
  if (contour < 0 || contour >= GetContourCount()) return -1;
  return main_->vertexTable.Find(main_->contourStarts[static_cast<std::size_t>(contour)]->grid);
}

int Workspace::GetContourSize(int contour) const noexcept {
  if (contour < 0 || contour >= GetContourCount()) return -1;
  return static_cast<int>(main_->contourSizes[static_cast<std::size_t>(contour)]);
}

}  // namespace zelvan

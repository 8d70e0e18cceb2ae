// The exported functions: the one workspace of the process, and the barrier that
// keeps every exception inside.
#include <zelvan/error.h>
#include <zelvan/zelvan.h>

#include "interface/workspace.h"

namespace {

// Made with the library's static objects at load, destroyed at unload.
zelvan::Workspace workspace;

// Whatever is thrown inside is disposed of and answered 0.
template <class Operation>
int Guarded(Operation operation) noexcept {
  try {
    return operation();
  } catch (...) {
    ERR::Clear();
    return 0;
  }
}

}  // namespace

zelvan::Workspace& zelvan::ProcessWorkspace() noexcept {
  return workspace;
}

int ZELVAN_CALL SetMainContour(int count, const double* xyz) {
  return Guarded([=] { return workspace.SetMainContour(count, xyz); });
}

int ZELVAN_CALL SetHole(int count, const double* xyz) {
  return Guarded([=] { return workspace.SetHole(count, xyz); });
}

int ZELVAN_CALL Triangulate() {
  return Guarded([] { return workspace.Triangulate(); });
}

int ZELVAN_CALL Union() {
  return Guarded([] { return workspace.Union(); });
}

int ZELVAN_CALL Substruct() {
  return Guarded([] { return workspace.Substruct(); });
}

int ZELVAN_CALL GetCounts(int* vertexCount, int* edgeCount, int* faceCount) {
  return workspace.GetCounts(vertexCount, edgeCount, faceCount);
}

int ZELVAN_CALL GetVertices(double* out) {
  return workspace.GetVertices(out);
}

int ZELVAN_CALL GetEdges(int* out) {
  return workspace.GetEdges(out);
}

int ZELVAN_CALL GetFaces(int* out) {
  return workspace.GetFaces(out);
}

int ZELVAN_CALL GetContourCount() {
  return workspace.GetContourCount();
}

int ZELVAN_CALL GetContourIndex(int contour) {
  return workspace.GetContourIndex(contour);
}

int ZELVAN_CALL GetContourSize(int contour) {
  return workspace.GetContourSize(contour);
}

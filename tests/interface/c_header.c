/* The public header, read by a C99 compiler, and every function taken at its type. */
#include <zelvan/zelvan.h>

typedef int(ZELVAN_CALL* Function)(void);

int CallsTheLibraryFromC(void);

int CallsTheLibraryFromC(void) {
  const double triangle[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
  int(ZELVAN_CALL * input[])(int, const double*) = {SetMainContour, SetHole};
  Function plain[] = {Union, Substruct, Triangulate, GetContourCount};
  int(ZELVAN_CALL * numbers[])(int*) = {GetEdges, GetFaces};
  int(ZELVAN_CALL * contour[])(int) = {GetContourIndex, GetContourSize};
  double vertices[9];
  int out[9];
  int vertexCount, edgeCount, faceCount;

  return input[0](9, triangle) && input[1](9, triangle) && plain[0]() && plain[1]() && plain[2]() &&
         plain[3]() == 1 && GetCounts(&vertexCount, &edgeCount, &faceCount) &&
         GetVertices(vertices) && numbers[0](out) && numbers[1](out) && contour[0](0) == 0 &&
         contour[1](0) == 3 && vertexCount == 3 && edgeCount == 3 && faceCount == 1;
}

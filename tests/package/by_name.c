/* A host that has the header alone, and takes the functions by their names. */
#include <dlfcn.h>
#include <stdio.h>
#include <zelvan/zelvan.h>

int main(int argc, char** argv) {
  const double triangle[] = {0, 0, 0, 4, 0, 0, 0, 3, 0};
  int (*set)(int, const double*);
  int (*triangulate)(void);
  int (*counts)(int*, int*, int*);
  int vertices = 0, edges = 0, faces = 0;
  void* library = argc > 1 ? dlopen(argv[1], RTLD_NOW) : NULL;
  if (!library) return 1;
  *(void**)&set = dlsym(library, "SetMainContour");
  *(void**)&triangulate = dlsym(library, "Triangulate");
  *(void**)&counts = dlsym(library, "GetCounts");
  if (!set || !triangulate || !counts) return 2;
  if (!set(9, triangle) || !triangulate() || !counts(&vertices, &edges, &faces)) return 3;
  printf("%d %d %d\n", vertices, edges, faces);
  return dlclose(library);
}

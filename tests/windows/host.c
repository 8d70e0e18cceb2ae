/* A host that knows nothing but LoadLibrary and GetProcAddress, compiled so that its
 * calls come with a stack aligned to 4 bytes alone, as those of many 32-bit programs do.
 *
 *     dll_host zelvan.dll
 *
 * Each life of the DLL runs a full session, on which the answers are checked, fails in
 * every way a contour can, and is unloaded with polygons in the workspace. After many
 * lives the process must hold as much memory and as many handles as after a few. */
#define WIN32_LEAN_AND_MEAN
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>

#define FUNCTIONS(OF)                      \
  OF(SetMainContour, (int, const double*)) \
  OF(SetHole, (int, const double*))        \
  OF(Triangulate, (void))                  \
  OF(Union, (void))                        \
  OF(Substruct, (void))                    \
  OF(GetCounts, (int*, int*, int*))        \
  OF(GetVertices, (double*))               \
  OF(GetEdges, (int*))                     \
  OF(GetFaces, (int*))                     \
  OF(GetContourCount, (void))              \
  OF(GetContourIndex, (int))               \
  OF(GetContourSize, (int))

#define MEMBER(name, arguments) int(__cdecl * name) arguments;
static struct { FUNCTIONS(MEMBER) } z;

static void fail(int line, const char* what) {
  printf("line %d: not so: %s\n", line, what);
  exit(1);
}
#define CHECK(condition)                          \
  do {                                            \
    if (!(condition)) fail(__LINE__, #condition); \
  } while (0)

/* A function pointer from GetProcAddress, without a cast between function types. */
static void look_up(HMODULE dll, const char* name, void* pointer) {
  const FARPROC found = GetProcAddress(dll, name);
  if (found == NULL) fail(__LINE__, name);
  memcpy(pointer, &found, sizeof found);
}
#define BIND(name, arguments) look_up(dll, #name, &z.name);

static HMODULE load(const char* path) {
  const HMODULE dll = LoadLibraryA(path);
  CHECK(dll != NULL);
  FUNCTIONS(BIND)
  return dll;
}

static void check_answer(int vertices, int holes) {
  static double xyz[300];
  static int edges[600], faces[300];
  int v = -1, e = -1, f = -1;
  CHECK(z.Triangulate() == 1);
  CHECK(z.GetCounts(&v, &e, &f) == 1);
  CHECK(v == vertices && f == vertices + 2 * holes - 2 && e == v + f + holes - 1);
  CHECK(z.GetContourCount() == 1 + holes);
  CHECK(z.GetContourIndex(1) == z.GetContourSize(0) && z.GetContourSize(1 + holes) == -1);
  CHECK(z.GetVertices(xyz) == 1 && z.GetEdges(edges) == 1 && z.GetFaces(faces) == 1);
}

static const double kOuter[] = {0, 0, 0, 100, 0, 0, 100, 100, 0, 0, 100, 0};
static const double kHole1[] = {10, 10, 0, 30, 10, 0, 30, 30, 0, 10, 30, 0};
static const double kHole2[] = {50, 50, 5, 90, 50, 5, 50, 90, 5};
static const double kCrossed[] = {0, 0, 0, 1, 1, 0, 1, 0, 0, 0, 1, 0};

static void session(unsigned turn) {
  int a = -7, b = -7, c = -7;
  CHECK(z.GetCounts(&a, &b, &c) == 0 && a == -7); /* a new workspace each time */
  CHECK(z.GetContourCount() == 0 && z.Triangulate() == 0);

  CHECK(z.SetMainContour(12, kOuter) == 1);
  CHECK(z.SetHole(12, kHole1) == 1 && z.SetHole(9, kHole2) == 1);
  CHECK(z.Substruct() == 1);
  check_answer(11, 2);
  CHECK(z.SetHole(9, kHole2) == 1 && z.Union() == 1);
  check_answer(8, 1);

  /* Refusals are exceptions inside. */
  CHECK(z.SetHole(12, kCrossed) == 0 && z.SetHole(6, kOuter) == 0 && z.SetHole(-1, NULL) == 0);
  if (turn % 2 == 0) CHECK(z.SetMainContour(12, kCrossed) == 0 && z.Triangulate() == 0);
  CHECK(z.SetHole(9, kHole2) == 1); /* stays in the queue */
}

static void life(const char* path, unsigned turn) {
  const HMODULE dll = load(path);
  session(turn);
  CHECK(FreeLibrary(dll));
  CHECK(GetModuleHandleA("zelvan.dll") == NULL);
}

/* What a process holds. Handles are given out from the lowest that is free. */
enum { IN_HEAPS, COMMITTED, TLS_SLOTS, NEXT_HANDLE, KINDS };

static SIZE_T in_use(HANDLE heap) {
  PROCESS_HEAP_ENTRY entry;
  SIZE_T sum = 0;
  memset(&entry, 0, sizeof entry);
  HeapLock(heap);
  while (HeapWalk(heap, &entry)) {
    if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) sum += entry.cbData;
  }
  HeapUnlock(heap);
  return sum;
}

static SIZE_T committed(void) {
  MEMORY_BASIC_INFORMATION info;
  const char* at = NULL;
  SIZE_T sum = 0;
  while (VirtualQuery(at, &info, sizeof info) != 0) {
    if (info.State == MEM_COMMIT && info.Type == MEM_PRIVATE) sum += info.RegionSize;
    at = (const char*)info.BaseAddress + info.RegionSize;
  }
  return sum;
}

static DWORD taken_slots(void) {
  static DWORD free_slots[2000];
  DWORD count = 0, i;
  while (count < 2000 && (free_slots[count] = TlsAlloc()) != TLS_OUT_OF_INDEXES) ++count;
  for (i = 0; i < count; ++i) TlsFree(free_slots[i]);
  return 2000 - count;
}

static void hold(unsigned long now[KINDS]) {
  HANDLE heaps[64], event;
  const DWORD count = GetProcessHeaps(64, heaps);
  DWORD i;
  CHECK(count > 0 && count <= 64);
  now[TLS_SLOTS] = taken_slots();
  now[IN_HEAPS] = 0;
  for (i = 0; i < count; ++i) now[IN_HEAPS] += in_use(heaps[i]);
  now[COMMITTED] = committed();
  event = CreateEventA(NULL, FALSE, FALSE, NULL);
  now[NEXT_HANDLE] = (unsigned long)(ULONG_PTR)event;
  CloseHandle(event);
}

int main(int argc, char** argv) {
  enum { kWarm = 20, kLives = 1500 };
  /* Room for what the system itself keeps; one byte of ours in each life is too much. */
  static const unsigned long kRoom[KINDS] = {kLives, 64 * kLives, 1, kLives};
  unsigned long before[KINDS], after[KINDS];
  unsigned i;
  if (argc != 2) fail(__LINE__, "usage: dll_host zelvan.dll");
  for (i = 0; i < kWarm; ++i) life(argv[1], i);
  hold(before);
  for (i = 0; i < kLives; ++i) life(argv[1], i);
  hold(after);
  for (i = 0; i < KINDS; ++i) {
    printf("after %d lives: %lu, was %lu\n", kLives, after[i], before[i]);
    CHECK(after[i] < before[i] + kRoom[i]);
  }
  return 0;
}

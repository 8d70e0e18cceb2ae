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

typedef int(__cdecl* Contour)(int, const double*);
typedef int(__cdecl* Plain)(void);
typedef int(__cdecl* Ints)(int*);
typedef int(__cdecl* Doubles)(double*);
typedef int(__cdecl* ThreeInts)(int*, int*, int*);
typedef int(__cdecl* OfContour)(int);

static struct {
  Contour SetMainContour, SetHole;
  Plain Triangulate, Union, Substruct, GetContourCount;
  Doubles GetVertices;
  Ints GetEdges, GetFaces;
  ThreeInts GetCounts;
  OfContour GetContourIndex, GetContourSize;
} z;

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
#define BIND(dll, name) look_up(dll, #name, &z.name)

static HMODULE load(const char* path) {
  const HMODULE dll = LoadLibraryA(path);
  CHECK(dll != NULL);
  BIND(dll, SetMainContour), BIND(dll, SetHole), BIND(dll, Triangulate), BIND(dll, Union);
  BIND(dll, Substruct), BIND(dll, GetContourCount), BIND(dll, GetVertices), BIND(dll, GetEdges);
  BIND(dll, GetFaces), BIND(dll, GetCounts), BIND(dll, GetContourIndex);
  BIND(dll, GetContourSize);
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

struct Holdings {
  SIZE_T heaps;   /* bytes in use in all heaps */
  SIZE_T memory;  /* bytes committed, heaps and all */
  DWORD slots;    /* of thread-local storage, that are still free */
  ULONG_PTR next; /* handles are given out from the lowest that is free */
};

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

static DWORD free_slots(void) {
  static DWORD taken[2000];
  DWORD count = 0, i;
  while (count < 2000 && (taken[count] = TlsAlloc()) != TLS_OUT_OF_INDEXES) ++count;
  for (i = 0; i < count; ++i) TlsFree(taken[i]);
  return count;
}

static struct Holdings held(void) {
  struct Holdings now = {0, 0, 0, 0};
  HANDLE heaps[64], event;
  const DWORD count = GetProcessHeaps(64, heaps);
  DWORD i;
  CHECK(count > 0 && count <= 64);
  now.slots = free_slots();
  for (i = 0; i < count; ++i) now.heaps += in_use(heaps[i]);
  now.memory = committed();
  event = CreateEventA(NULL, FALSE, FALSE, NULL);
  now.next = (ULONG_PTR)event;
  CloseHandle(event);
  return now;
}

int main(int argc, char** argv) {
  const unsigned kWarm = 20, kLives = 1500;
  struct Holdings before, after;
  unsigned i;
  if (argc != 2) fail(__LINE__, "usage: dll_host zelvan.dll");
  for (i = 0; i < kWarm; ++i) life(argv[1], i);
  before = held();
  for (i = 0; i < kLives; ++i) life(argv[1], i);
  after = held();
  printf(
      "before and after %u lives: %lu and %lu bytes in heaps, %lu and %lu committed, "
      "%lu and %lu free TLS slots, handles from %lu and %lu\n",
      kLives, (unsigned long)before.heaps, (unsigned long)after.heaps, (unsigned long)before.memory,
      (unsigned long)after.memory, before.slots, after.slots, (unsigned long)before.next,
      (unsigned long)after.next);
  /* Room for what the system itself keeps; one byte of ours in each life is too much. */
  CHECK(after.heaps < before.heaps + kLives);
  CHECK(after.memory < before.memory + 64 * kLives);
  CHECK(after.slots == before.slots);
  CHECK(after.next < before.next + kLives);
  return 0;
}

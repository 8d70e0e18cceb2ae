// What the compiler's runtime, which is linked into the DLL, asks of a thread library
// and of thread-local storage. The ones it would take else (winpthreads, libgcc's
// emulation) set memory, handles and a TLS slot aside in each life of the DLL and never
// give them back: after about a thousand loads a process can load it no more.
//
// What holds here: nothing is allocated, so nothing stays behind. One recursive lock
// stands for every mutex of the runtime. The state of exceptions in flight is one
// object, not one per thread: the library is called from one thread at a time, and no
// exception outlives a call.
#define WIN32_LEAN_AND_MEAN
#include <cxxabi.h>
#include <windows.h>

namespace {

using Mutex = INT_PTR;  // as the runtime lays them out; neither is read here
using Condition = INT_PTR;
using Once = long;

// As InitializeCriticalSection would leave it, without its record for debuggers.
CRITICAL_SECTION section = {
    reinterpret_cast<PCRITICAL_SECTION_DEBUG>(-1), -1, 0, nullptr, nullptr, 0};

}  // namespace

namespace __cxxabiv1 {

struct __cxa_eh_globals {
  void* caughtExceptions;
  unsigned int uncaughtExceptions;
};

namespace {
__cxa_eh_globals exceptions;
}

extern "C" __cxa_eh_globals* __cxa_get_globals() noexcept {
  return &exceptions;
}
extern "C" __cxa_eh_globals* __cxa_get_globals_fast() noexcept {
  return &exceptions;
}

}  // namespace __cxxabiv1

extern "C" {

int pthread_mutex_init(Mutex*, const unsigned*) noexcept {
  return 0;
}
int pthread_mutex_destroy(Mutex*) noexcept {
  return 0;
}
int pthread_mutex_lock(Mutex*) noexcept {
  EnterCriticalSection(&section);
  return 0;
}
int pthread_mutex_unlock(Mutex*) noexcept {
  LeaveCriticalSection(&section);
  return 0;
}

int pthread_once(Once* done, void (*run)()) {
  EnterCriticalSection(&section);
  if (*done == 0) {
    run();
    *done = 1;
  }
  LeaveCriticalSection(&section);
  return 0;
}

// Whoever waits asks again: that is a wait with many false alarms.
int pthread_cond_wait(Condition*, Mutex*) noexcept {
  LeaveCriticalSection(&section);
  Sleep(1);
  EnterCriticalSection(&section);
  return 0;
}
int pthread_cond_broadcast(Condition*) noexcept {
  return 0;
}

}  // extern "C"

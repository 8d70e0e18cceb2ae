// Load and unload of the DLL. The workspace needs nothing from here: it is made and
// destroyed with the library's static objects.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#ifdef __GLIBCXX__
namespace __gnu_cxx {
void __freeres();  // of the C++ runtime, for leak checkers; no header declares it
}
#endif

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID processEnds) {
  if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(library);
#ifdef __GLIBCXX__
  // The runtime linked into the DLL sets memory aside for exceptions thrown when there is
  // none, and would leave it behind with every unload.
  if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) __gnu_cxx::__freeres();
#else
  static_cast<void>(processEnds);
#endif
  return TRUE;
}

// File: DllMain.cpp
// The entry point of VEKZOLBase.dll. It has no logic of its own: the
// runtime has constructed the library's static objects (in the order of
// LibraryState.cpp) before it calls this on process attach, and destroys
// them in reverse after it on process detach. The library starts no thread
// and keeps no per-thread state, so thread notifications are turned off.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    DisableThreadLibraryCalls(instance);
  }
  return TRUE;
}

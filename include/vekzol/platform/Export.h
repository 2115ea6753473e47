// File: Export.h
// The one export macro of the library. Every exported class is declared
// `class VEKZOL_API Name` and exported whole; nothing else is visible.
//
// - VEKZOL_BUILDING_LIBRARY is defined while the library's own sources are
//   compiled: the macro exports (dllexport on Windows, default visibility
//   elsewhere, with -fvisibility=hidden for the rest).
// - VEKZOL_SHARED is defined for every consumer of the shared library (the
//   CMake target carries it): the macro imports on Windows.
// - With neither (a test that links the library's objects directly) the
//   macro is empty.
#ifndef VEKZOL_PLATFORM_EXPORT_H_
#define VEKZOL_PLATFORM_EXPORT_H_

#if defined(_WIN32)
#if defined(VEKZOL_BUILDING_LIBRARY)
#define VEKZOL_API __declspec(dllexport)
#elif defined(VEKZOL_SHARED)
#define VEKZOL_API __declspec(dllimport)
#else
#define VEKZOL_API
#endif
#else
#if defined(VEKZOL_BUILDING_LIBRARY) || defined(VEKZOL_SHARED)
#define VEKZOL_API __attribute__((visibility("default")))
#else
#define VEKZOL_API
#endif
#endif

#endif  // VEKZOL_PLATFORM_EXPORT_H_

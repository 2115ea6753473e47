// The public header of the small library that the ABI check's tests build
// in several variants, one macro each:
//   TINY_LAYOUT_CHANGED  TinyPoint gains a member before y (its offsets and
//                        size change);
//   TINY_FUNCTION_ADDED  TinyProduct is added;
//   TINY_PLAIN_SUM       TinySum no longer copies through a std::vector, so
//                        the vector's exported template instances go away.
#pragma once

#define TINY_API __attribute__((visibility("default")))

struct TINY_API TinyPoint {
  int x;
#ifdef TINY_LAYOUT_CHANGED
  int z;
#endif
  int y;
};

TINY_API int TinySum(const TinyPoint& point);

#ifdef TINY_FUNCTION_ADDED
TINY_API int TinyProduct(const TinyPoint& point);
#endif

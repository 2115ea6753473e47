// The small library of the ABI check's tests; Tiny.h lists its variants.
#include "include/Tiny.h"

#ifndef TINY_PLAIN_SUM
#include <vector>
#endif

int TinySum(const TinyPoint& point) {
#ifdef TINY_PLAIN_SUM
  return point.x + point.y;
#else
  // Copies through a vector so that the library exports some of the
  // vector's template instances, as the real library does with its own.
  std::vector<TinyPoint> points;
  points.push_back(point);
  return points.front().x + points.front().y;
#endif
}

#ifdef TINY_FUNCTION_ADDED
int TinyProduct(const TinyPoint& point) { return point.x * point.y; }
#endif

// Helpers of the frame tests: a frame read back as rows, and exact
// comparisons of doubles down to the sign of zero.
#ifndef VEKZOL_SRC_FRAMES_VEKZOLFRAME3DTESTSUPPORT_H_
#define VEKZOL_SRC_FRAMES_VEKZOLFRAME3DTESTSUPPORT_H_

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/services/VEKZOLFrame3D.h>

namespace frame3d_test {

// R row by row and T, as GetVectors hands them out.
struct Rows {
  double r[3][3];
  double t[3];
};

inline Rows RowsOf(const VEKZOLFrame3D& frame) {
  double u[3];
  double v[3];
  double w[3];
  Rows rows;
  frame.GetVectors(u, v, w, rows.t);
  for (int i = 0; i < 3; ++i) {
    rows.r[i][0] = u[i];
    rows.r[i][1] = v[i];
    rows.r[i][2] = w[i];
  }
  return rows;
}

// The bit pattern of a double: equal patterns are the same value, the same
// sign of zero and the same NaN.
inline uint64_t Bits(double value) {
  uint64_t bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// Success when `frame` holds exactly the rows `r` and the origin `t`, bit
// for bit (so the sign of every zero counts too); the failure message lists
// each value that differs, in hexadecimal floating point.
inline ::testing::AssertionResult FrameHasBits(const VEKZOLFrame3D& frame, const double (&r)[3][3],
                                               const double (&t)[3]) {
  const Rows actual = RowsOf(frame);
  std::string differences;
  char line[160];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      if (Bits(r[i][j]) != Bits(actual.r[i][j])) {
        std::snprintf(line, sizeof line, " R[%d][%d] is %a, expected %a;", i, j, actual.r[i][j],
                      r[i][j]);
        differences += line;
      }
    }
    if (Bits(t[i]) != Bits(actual.t[i])) {
      std::snprintf(line, sizeof line, " T[%d] is %a, expected %a;", i, actual.t[i], t[i]);
      differences += line;
    }
  }
  if (differences.empty()) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << "the frame differs:" << differences;
}

}  // namespace frame3d_test

#endif  // VEKZOL_SRC_FRAMES_VEKZOLFRAME3DTESTSUPPORT_H_

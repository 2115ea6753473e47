// Tests of VEKZOLFrame3D itself: the four constructors, the two read-outs,
// copies and Inverse.
#include <vekzol/services/VEKZOLFrame3D.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "frames/VEKZOLFrame3DTestSupport.h"

namespace {

using frame3d_test::Bits;
using frame3d_test::FrameHasBits;
using frame3d_test::RowsOf;

static_assert(!std::is_polymorphic_v<VEKZOLFrame3D>, "a plain value type");
static_assert(sizeof(VEKZOLFrame3D) == 12 * sizeof(double), "twelve doubles and nothing else");
static_assert(std::is_trivially_copyable_v<VEKZOLFrame3D>, "copied by value like its doubles");
static_assert(std::is_convertible_v<const double*, VEKZOLFrame3D>,
              "a host may write `VEKZOLFrame3D frame = values;`");

const double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(VEKZOLFrame3DTest, DefaultFrameHasTheIdentityAndAZeroOrigin) {
  const double r[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  const double t[3] = {0.0, 0.0, 0.0};
  EXPECT_TRUE(FrameHasBits(VEKZOLFrame3D(), r, t));
}

TEST(VEKZOLFrame3DTest, SixteenValueConstructorReadsTheColumnsAndIgnoresTheFourthRow) {
  double m[16];
  for (int k = 0; k < 16; ++k) m[k] = k + 1.0;
  m[3] = m[7] = m[11] = m[15] = kNaN;
  const VEKZOLFrame3D frame(m);
  // U = m[0..2], V = m[4..6], W = m[8..10] are the columns; T = m[12..14].
  const double r[3][3] = {{1.0, 5.0, 9.0}, {2.0, 6.0, 10.0}, {3.0, 7.0, 11.0}};
  const double t[3] = {13.0, 14.0, 15.0};
  EXPECT_TRUE(FrameHasBits(frame, r, t));
}

TEST(VEKZOLFrame3DTest, FourArrayConstructorTakesTheArraysAsColumnsWithoutNormalising) {
  const double u[3] = {2.0, 0.0, 0.0};
  const double v[3] = {0.0, 3.0, 4.0};
  const double w[3] = {1.0, 2.0, 2.0};
  const double o[3] = {-1.5, 0.25, 8.0};
  const VEKZOLFrame3D frame(u, v, w, o);
  double gu[3], gv[3], gw[3], go[3];
  frame.GetVectors(gu, gv, gw, go);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Bits(u[i]), Bits(gu[i]));
    EXPECT_EQ(Bits(v[i]), Bits(gv[i]));
    EXPECT_EQ(Bits(w[i]), Bits(gw[i]));
    EXPECT_EQ(Bits(o[i]), Bits(go[i]));
  }
  // The axis of length 2 keeps its length.
  EXPECT_EQ(2.0, gu[0]);
}

TEST(VEKZOLFrame3DTest, RowConstructorTakesRowsAndScalesEachRowToLengthOne) {
  const double rows[3][3] = {{2.0, 0.0, 0.0}, {0.0, 3.0, 4.0}, {1.0, 2.0, 2.0}};
  const double o[3] = {-1.5, 0.25, 8.0};
  const VEKZOLFrame3D frame(rows, o);
  // Lengths 2, 5 and 3; each quotient is one correctly rounded division.
  const double r[3][3] = {{1.0, 0.0, 0.0}, {0.0, 0.6, 0.8}, {1.0 / 3.0, 2.0 / 3.0, 2.0 / 3.0}};
  EXPECT_TRUE(FrameHasBits(frame, r, o));
  // Rows, not axes: the first axis is the first column of those rows.
  double u[3], v[3], w[3], t[3];
  frame.GetVectors(u, v, w, t);
  EXPECT_EQ(1.0, u[0]);
  EXPECT_EQ(0.0, u[1]);
  EXPECT_EQ(1.0 / 3.0, u[2]);
}

TEST(VEKZOLFrame3DTest, RowConstructorKeepsANonOrthogonalMatrixNonOrthogonal) {
  const double rows[3][3] = {{1.0, 1.0, 0.0}, {1.0, 1.0, 0.0}, {0.0, 0.0, 4.0}};
  const double o[3] = {0.0, 0.0, 0.0};
  const VEKZOLFrame3D frame(rows, o);
  // Both rows become 1/sqrt(2), rounded once by the square root and once
  // by the division; nothing separates them.
  const double s = 0x1.6a09e667f3bccp-1;
  const double r[3][3] = {{s, s, 0.0}, {s, s, 0.0}, {0.0, 0.0, 1.0}};
  EXPECT_TRUE(FrameHasBits(frame, r, o));
}

TEST(VEKZOLFrame3DTest, RowConstructorSumsTheSquaresFromTheFirstColumnToTheLast) {
  // (0.01 + 0.04) + 8.41 has its square root one unit above that of
  // 0.01 + (0.04 + 8.41), and the quotients follow.
  const double rows[3][3] = {{0.1, 0.2, 2.9}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  const double o[3] = {0.0, 0.0, 0.0};
  const double r[3][3] = {{0x1.19a5922bd1dfap-5, 0x1.19a5922bd1dfap-4, 0x1.fe7c18ef6c655p-1},
                          {0.0, 1.0, 0.0},
                          {0.0, 0.0, 1.0}};
  EXPECT_TRUE(FrameHasBits(VEKZOLFrame3D(rows, o), r, o));
}

TEST(VEKZOLFrame3DTest, RowConstructorTurnsAZeroRowIntoNotANumberWithoutFailing) {
  const double rows[3][3] = {{2.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 5.0}};
  const double o[3] = {1.0, 2.0, 3.0};
  const frame3d_test::Rows got = RowsOf(VEKZOLFrame3D(rows, o));
  for (int j = 0; j < 3; ++j) {
    EXPECT_TRUE(std::isnan(got.r[1][j])) << j;
  }
  EXPECT_EQ(1.0, got.r[0][0]);
  EXPECT_EQ(1.0, got.r[2][2]);
  EXPECT_EQ(2.0, got.t[1]);
}

TEST(VEKZOLFrame3DTest, RowConstructorDoesNotGuardTheSquaresAgainstUnderflowOrOverflow) {
  // The squares of (3e-200, 4e-200) underflow to 0: a length of 0 gives
  // infinities and 0/0. Those of (3e200, 4e200) overflow: a length of
  // infinity gives zeros.
  const double rows[3][3] = {{3e-200, 4e-200, 0.0}, {3e200, 4e200, 0.0}, {0.0, 0.0, 1.0}};
  const double o[3] = {0.0, 0.0, 0.0};
  const frame3d_test::Rows got = RowsOf(VEKZOLFrame3D(rows, o));
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(inf, got.r[0][0]);
  EXPECT_EQ(inf, got.r[0][1]);
  EXPECT_TRUE(std::isnan(got.r[0][2]));
  EXPECT_EQ(Bits(0.0), Bits(got.r[1][0]));
  EXPECT_EQ(Bits(0.0), Bits(got.r[1][1]));
  EXPECT_EQ(Bits(0.0), Bits(got.r[1][2]));
}

TEST(VEKZOLFrame3DTest, GetVectorsIntoSixteenValuesWritesColumnsAndZeroesTheFourthRow) {
  const double u[3] = {1.0, 2.0, 3.0};
  const double v[3] = {5.0, 6.0, 7.0};
  const double w[3] = {9.0, 10.0, 11.0};
  const double o[3] = {13.0, 14.0, 15.0};
  double m[16];
  for (double& value : m) value = kNaN;
  VEKZOLFrame3D(u, v, w, o).GetVectors(m);
  const double expected[16] = {1.0, 2.0,  3.0,  0.0, 5.0,  6.0,  7.0,  0.0,
                               9.0, 10.0, 11.0, 0.0, 13.0, 14.0, 15.0, 0.0};
  for (int k = 0; k < 16; ++k) {
    EXPECT_EQ(Bits(expected[k]), Bits(m[k])) << "index " << k;
  }
}

TEST(VEKZOLFrame3DTest, SixteenValueFormOfTheDefaultFrameEndsInZeroNotOne) {
  double m[16];
  for (double& value : m) value = 7.0;
  VEKZOLFrame3D().GetVectors(m);
  EXPECT_EQ(Bits(0.0), Bits(m[3]));
  EXPECT_EQ(Bits(0.0), Bits(m[7]));
  EXPECT_EQ(Bits(0.0), Bits(m[11]));
  EXPECT_EQ(Bits(0.0), Bits(m[15]));
  EXPECT_EQ(1.0, m[0]);
  EXPECT_EQ(1.0, m[5]);
  EXPECT_EQ(1.0, m[10]);
}

TEST(VEKZOLFrame3DTest, SixteenValuesOutAndBackGiveTheSameFrameBitForBit) {
  const double u[3] = {1.0 / 3.0, -0.0, 1e300};
  const double v[3] = {0x1p-1074, -2.5, 0.1};
  const double w[3] = {7.0, 0.0, -1e-300};
  const double o[3] = {123456.789, -0.0, 42.0};
  const VEKZOLFrame3D original(u, v, w, o);
  double m[16];
  original.GetVectors(m);
  const VEKZOLFrame3D back(m);
  const frame3d_test::Rows expected = RowsOf(original);
  EXPECT_TRUE(FrameHasBits(back, expected.r, expected.t));
}

TEST(VEKZOLFrame3DTest, CopiesAndAssignmentCarryAllTwelveValues) {
  const double u[3] = {1.0, 2.0, 3.0};
  const double v[3] = {4.0, 5.0, 6.0};
  const double w[3] = {7.0, 8.0, -0.0};
  const double o[3] = {10.0, 11.0, 12.0};
  const VEKZOLFrame3D original(u, v, w, o);
  const frame3d_test::Rows expected = RowsOf(original);

  const VEKZOLFrame3D copy(original);
  EXPECT_TRUE(FrameHasBits(copy, expected.r, expected.t));
  VEKZOLFrame3D assigned;
  VEKZOLFrame3D& result = (assigned = original);
  EXPECT_EQ(&assigned, &result);
  EXPECT_TRUE(FrameHasBits(assigned, expected.r, expected.t));
}

TEST(VEKZOLFrame3DTest, InverseOfTheDefaultFrameIsTheDefaultFrameWithNegativeZeroOrigin) {
  // T' = R^T·(-T): the components are negated before the product, so each
  // sum is (-0) + (-0) + (-0).
  const double r[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  const double t[3] = {-0.0, -0.0, -0.0};
  EXPECT_TRUE(FrameHasBits(VEKZOLFrame3D().Inverse(), r, t));
}

TEST(VEKZOLFrame3DTest, InverseNegatesTheOriginBeforeTheProduct) {
  // A half turn about Z with a zero origin: (-1)·(-0) + 0·(-0) + 0·(-0) is
  // +0, where negating the sum 0 afterwards would give -0; the third row
  // sums three -0.
  const double rows[3][3] = {{-1.0, 0.0, 0.0}, {0.0, -1.0, 0.0}, {0.0, 0.0, 1.0}};
  const double o[3] = {0.0, 0.0, 0.0};
  const double t[3] = {0.0, 0.0, -0.0};
  EXPECT_TRUE(FrameHasBits(VEKZOLFrame3D(rows, o).Inverse(), rows, t));
}

TEST(VEKZOLFrame3DTest, InverseTransposesTheRotationAndMovesTheOrigin) {
  // 90 degrees about Z, exactly: U = Y, V = -X, W = Z.
  const double rows[3][3] = {{0.0, -1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}};
  const double o[3] = {1.0, 2.0, 3.0};
  const VEKZOLFrame3D inverse = VEKZOLFrame3D(rows, o).Inverse();
  const double r[3][3] = {{0.0, 1.0, 0.0}, {-1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}};
  // T'[0] = 0·(-1) + 1·(-2) + 0·(-3) = (-0) + (-2) + (-0), and so on.
  const double t[3] = {-2.0, 1.0, -3.0};
  EXPECT_TRUE(FrameHasBits(inverse, r, t));
}

TEST(VEKZOLFrame3DTest, InverseNeitherChecksNorNormalisesTheRotation) {
  const double u[3] = {2.0, 0.0, 0.0};
  const double v[3] = {1.0, 2.0, 0.0};
  const double w[3] = {0.0, 0.0, 2.0};
  const double o[3] = {1.0, 2.0, 3.0};
  const VEKZOLFrame3D inverse = VEKZOLFrame3D(u, v, w, o).Inverse();
  // R = [[2, 1, 0], [0, 2, 0], [0, 0, 2]] transposed, T' = R^T·(-T).
  const double r[3][3] = {{2.0, 0.0, 0.0}, {1.0, 2.0, 0.0}, {0.0, 0.0, 2.0}};
  const double t[3] = {-2.0, -5.0, -6.0};
  EXPECT_TRUE(FrameHasBits(inverse, r, t));
}

}  // namespace

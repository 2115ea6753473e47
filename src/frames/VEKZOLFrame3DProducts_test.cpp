// Tests of the free functions on frames: composition, relative placement
// and the three products.
#include <vekzol/services/VEKZOLFrame3D.h>

#include <gtest/gtest.h>

#include <cmath>

#include "frames/VEKZOLFrame3DTestSupport.h"

namespace {

using frame3d_test::Bits;
using frame3d_test::FrameHasBits;
using frame3d_test::RowsOf;

// 90 degrees about Z, exactly (U = Y, V = -X, W = Z), and 90 degrees about
// X, exactly (V = Z, W = -Y), as rows.
const double kQuarterTurnZ[3][3] = {{0.0, -1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}};
const double kQuarterTurnX[3][3] = {{1.0, 0.0, 0.0}, {0.0, 0.0, -1.0}, {0.0, 1.0, 0.0}};
const double kIdentity[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};

// 1 + 2^-30 squares to 1 + 2^-29 + 2^-60; rounded, the last term is lost.
// A fused multiply-add would keep it and leave 2^-60 instead of 0 below.
const double kX = 0x1.00000004p+0;
const double kXSquaredRounded = 0x1.00000008p+0;

VEKZOLFrame3D ColumnsFrame(const double (&u)[3], const double (&v)[3], const double (&w)[3],
                           const double (&o)[3]) {
  return VEKZOLFrame3D(u, v, w, o);
}

TEST(VEKZOLFrame3DProductsTest, DefaultFrameAppliedToAPointReturnsThePoint) {
  const double p[3] = {1.5, -2.25, 3e10};
  double out[3];
  Product(VEKZOLFrame3D(), p, out);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Bits(p[i]), Bits(out[i])) << i;
  }
}

TEST(VEKZOLFrame3DProductsTest, FrameTimesPointIsRotationTimesPointPlusOriginUnnormalised) {
  const VEKZOLFrame3D f = ColumnsFrame({1, 2, 3}, {4, 5, 6}, {7, 8, 10}, {0.5, -1, 2});
  const double p[3] = {1.0, -1.0, 2.0};
  double out[3];
  Product(f, p, out);
  // Rows (1, 4, 7), (2, 5, 8), (3, 6, 10).
  EXPECT_EQ(11.5, out[0]);
  EXPECT_EQ(12.0, out[1]);
  EXPECT_EQ(19.0, out[2]);
}

TEST(VEKZOLFrame3DProductsTest, FrameTimesPointAddsTheOriginAfterTheRotatedPoint) {
  const VEKZOLFrame3D f = ColumnsFrame({1, 0, 0}, {1, 1, 0}, {0, 0, 1}, {-0.3, 0, 0});
  const double p[3] = {0.1, 0.2, 5.0};
  double out[3];
  Product(f, p, out);
  // ((0.1 + 0.2) + 0·5) + (-0.3); adding -0.3 earlier would give 2^-55.
  EXPECT_EQ(Bits(0x1p-54), Bits(out[0]));
  EXPECT_EQ(0.2, out[1]);
  EXPECT_EQ(5.0, out[2]);
}

TEST(VEKZOLFrame3DProductsTest, FrameTimesPointMayWriteOverThePoint) {
  const double rows[3][3] = {{0.0, -1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}};
  const double o[3] = {1.0, 2.0, 3.0};
  double p[3] = {1.0, 2.0, 3.0};
  Product(VEKZOLFrame3D(rows, o), p, p);
  EXPECT_EQ(-1.0, p[0]);
  EXPECT_EQ(3.0, p[1]);
  EXPECT_EQ(6.0, p[2]);
}

TEST(VEKZOLFrame3DProductsTest, FrameTimesPointRoundsEachProductBeforeAdding) {
  const VEKZOLFrame3D f = ColumnsFrame({kX, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0});
  const double p[3] = {kX, -kXSquaredRounded, 0.0};
  double out[3];
  Product(f, p, out);
  EXPECT_EQ(Bits(0.0), Bits(out[0]));
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesVectorIsNotNormalised) {
  const double m[3][3] = {{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 10.0}};
  const double v[3] = {1.0, -1.0, 2.0};
  double out[3];
  Product(m, v, out);
  EXPECT_EQ(5.0, out[0]);
  EXPECT_EQ(11.0, out[1]);
  EXPECT_EQ(19.0, out[2]);
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesVectorSumsFromTheFirstColumnToTheLast) {
  const double m[3][3] = {{1.0, 1.0, 1.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}};
  const double v[3] = {0.1, 0.2, 0.3};
  double out[3];
  Product(m, v, out);
  // (0.1 + 0.2) + 0.3; the other grouping gives 0x1.3333333333333p-1.
  EXPECT_EQ(Bits(0x1.3333333333334p-1), Bits(out[0]));
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesVectorRoundsEachProductBeforeAdding) {
  const double m[3][3] = {{kX, 1.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}};
  const double v[3] = {kX, -kXSquaredRounded, 0.0};
  double out[3];
  Product(m, v, out);
  EXPECT_EQ(Bits(0.0), Bits(out[0]));
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesVectorMayWriteOverTheVector) {
  double m[3][3] = {{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 10.0}};
  double v[3] = {1.0, -1.0, 2.0};
  Product(m, v, v);
  EXPECT_EQ(5.0, v[0]);
  EXPECT_EQ(11.0, v[1]);
  EXPECT_EQ(19.0, v[2]);
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesMatrixSumsRowOfTheFirstTimesColumnOfTheSecond) {
  const double a[3][3] = {{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 10.0}};
  const double b[3][3] = {{1.0, 0.0, 2.0}, {0.0, 1.0, 0.0}, {3.0, 0.0, 1.0}};
  double out[3][3];
  Product(a, b, out);
  const double expected[3][3] = {{10.0, 2.0, 5.0}, {22.0, 5.0, 14.0}, {37.0, 8.0, 24.0}};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      EXPECT_EQ(expected[i][j], out[i][j]) << i << "," << j;
    }
  }
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesMatrixRoundsEachProductBeforeAdding) {
  const double a[3][3] = {{kX, 1.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}};
  const double b[3][3] = {{kX, 0.0, 0.0}, {-kXSquaredRounded, 0.0, 0.0}, {0.0, 0.0, 0.0}};
  double out[3][3];
  Product(a, b, out);
  EXPECT_EQ(Bits(0.0), Bits(out[0][0]));
}

TEST(VEKZOLFrame3DProductsTest, MatrixTimesMatrixMayWriteOverEitherFactor) {
  const double expected[3][3] = {{10.0, 2.0, 5.0}, {22.0, 5.0, 14.0}, {37.0, 8.0, 24.0}};
  double a[3][3] = {{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 10.0}};
  double b[3][3] = {{1.0, 0.0, 2.0}, {0.0, 1.0, 0.0}, {3.0, 0.0, 1.0}};
  double a2[3][3];
  double b2[3][3];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      a2[i][j] = a[i][j];
      b2[i][j] = b[i][j];
    }
  }
  Product(a, b, a);
  Product(a2, b2, b2);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      EXPECT_EQ(expected[i][j], a[i][j]) << i << "," << j;
      EXPECT_EQ(expected[i][j], b2[i][j]) << i << "," << j;
    }
  }
}

TEST(VEKZOLFrame3DProductsTest, CompositionAppliesTheSecondFrameFirst) {
  const double ta[3] = {1.0, 2.0, 3.0};
  const double tb[3] = {4.0, 5.0, 6.0};
  const VEKZOLFrame3D a(kQuarterTurnZ, ta);
  const VEKZOLFrame3D b(kQuarterTurnX, tb);
  const VEKZOLFrame3D ab = a * b;
  const double r[3][3] = {{0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}};
  const double t[3] = {-4.0, 6.0, 9.0};
  EXPECT_TRUE(FrameHasBits(ab, r, t));

  const double p[3] = {1.0, 2.0, 3.0};
  double viaB[3];
  double viaBThenA[3];
  double viaAb[3];
  Product(b, p, viaB);
  Product(a, viaB, viaBThenA);
  Product(ab, p, viaAb);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(viaBThenA[i], viaAb[i]) << i;
  }
  EXPECT_EQ(-1.0, viaAb[0]);
  EXPECT_EQ(7.0, viaAb[1]);
  EXPECT_EQ(11.0, viaAb[2]);
}

TEST(VEKZOLFrame3DProductsTest, CompositionNormalisesRowsButMovesTheOriginWithTheRawRotation) {
  // Ra has the rows (3, 4, 0), (-4, 3, 0), (0, 0, 5): orthogonal, not unit.
  const VEKZOLFrame3D a = ColumnsFrame({3, -4, 0}, {4, 3, 0}, {0, 0, 5}, {0.5, 0, 0});
  const VEKZOLFrame3D b = ColumnsFrame({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1});
  const double r[3][3] = {{0.6, 0.8, 0.0}, {-0.8, 0.6, 0.0}, {0.0, 0.0, 1.0}};
  // Ra·Tb + Ta = (7, -1, 5) + (0.5, 0, 0); the normalised rows would have
  // given (1.9, -0.2, 1).
  const double t[3] = {7.5, -1.0, 5.0};
  EXPECT_TRUE(FrameHasBits(a * b, r, t));
}

TEST(VEKZOLFrame3DProductsTest, CompositionAddsTheOriginOfTheFirstFrameLast) {
  const VEKZOLFrame3D a = ColumnsFrame({1, 0, 0}, {1, 1, 0}, {0, 0, 1}, {-0.3, 0, 0});
  const VEKZOLFrame3D b = ColumnsFrame({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0.1, 0.2, 5});
  // ((0.1 + 0.2) + 0·5) + (-0.3); adding -0.3 earlier would give 2^-55.
  EXPECT_EQ(Bits(0x1p-54), Bits(RowsOf(a * b).t[0]));
}

TEST(VEKZOLFrame3DProductsTest, CompositionWithAZeroRowGivesNotANumberInThatRowOnly) {
  const VEKZOLFrame3D a = ColumnsFrame({1, 0, 0}, {0, 0, 0}, {0, 0, 1}, {0, 7, 0});
  const VEKZOLFrame3D b = ColumnsFrame({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, 3});
  const frame3d_test::Rows got = RowsOf(a * b);
  for (int j = 0; j < 3; ++j) {
    EXPECT_TRUE(std::isnan(got.r[1][j])) << j;
  }
  EXPECT_EQ(1.0, got.r[0][0]);
  EXPECT_EQ(1.0, got.r[2][2]);
  // The origin is no normalised quantity: 0·1 + 0·2 + 0·3 + 7.
  EXPECT_EQ(1.0, got.t[0]);
  EXPECT_EQ(7.0, got.t[1]);
  EXPECT_EQ(3.0, got.t[2]);
}

TEST(VEKZOLFrame3DProductsTest, CompositionRoundsEachProductOfTheOriginBeforeAdding) {
  const VEKZOLFrame3D a = ColumnsFrame({kX, 0, 0}, {1, 0, 0}, {0, 0, 1}, {0, 0, 0});
  const VEKZOLFrame3D b = ColumnsFrame({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {kX, -kXSquaredRounded, 0});
  EXPECT_EQ(Bits(0.0), Bits(RowsOf(a * b).t[0]));
}

TEST(VEKZOLFrame3DProductsTest, InverseThenCompositionOfAnExactQuarterTurnGivesTheIdentity) {
  const double o[3] = {1.0, 2.0, 3.0};
  const VEKZOLFrame3D f(kQuarterTurnZ, o);
  const double t[3] = {0.0, 0.0, 0.0};
  EXPECT_TRUE(FrameHasBits(f.Inverse() * f, kIdentity, t));
  EXPECT_TRUE(FrameHasBits(f * f.Inverse(), kIdentity, t));
}

TEST(VEKZOLFrame3DProductsTest,
     InverseThenCompositionOfAComputedQuarterTurnIsTheIdentityWithinRounding) {
  // cos(pi/2) is about 6.1e-17, not 0: the results differ from the identity
  // by rounding only. Tolerance: a few units in the last place of 1.
  const double angle = std::acos(-1.0) / 2.0;
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  const double rows[3][3] = {{c, -s, 0.0}, {s, c, 0.0}, {0.0, 0.0, 1.0}};
  const double o[3] = {1.0, 2.0, 3.0};
  const VEKZOLFrame3D f(rows, o);
  const double tolerance = 1e-15;
  for (const VEKZOLFrame3D& product : {f.Inverse() * f, f * f.Inverse()}) {
    const frame3d_test::Rows got = RowsOf(product);
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) {
        EXPECT_NEAR(kIdentity[i][j], got.r[i][j], tolerance) << i << "," << j;
      }
      EXPECT_NEAR(0.0, got.t[i], tolerance) << i;
    }
  }
}

TEST(VEKZOLFrame3DProductsTest, RelativeBfromAExpressesBInA) {
  const double ta[3] = {1.0, 2.0, 3.0};
  const double tc[3] = {4.0, 5.0, 6.0};
  const VEKZOLFrame3D a(kQuarterTurnZ, ta);
  const VEKZOLFrame3D c(kQuarterTurnX, tc);
  EXPECT_TRUE(FrameHasBits(RelativeBfromA(a, a * c), kQuarterTurnX, tc));
}

TEST(VEKZOLFrame3DProductsTest, RelativeBfromANormalisesTheRowsASecondTime) {
  // Rb has the first row (1, 1, 0). One pass makes it 1/sqrt(2) rounded
  // down in the last bit; a second pass over that rounds it up.
  const VEKZOLFrame3D a;
  const VEKZOLFrame3D b = ColumnsFrame({1, 0, 0}, {1, 1, 0}, {0, 0, 1}, {1, 2, 3});
  const double once = 0x1.6a09e667f3bccp-1;
  const double twice = 0x1.6a09e667f3bcdp-1;
  const double t[3] = {1.0, 2.0, 3.0};

  const double composedRows[3][3] = {{once, once, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  EXPECT_TRUE(FrameHasBits(a.Inverse() * b, composedRows, t));
  const double relativeRows[3][3] = {{twice, twice, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  EXPECT_TRUE(FrameHasBits(RelativeBfromA(a, b), relativeRows, t));
}

}  // namespace

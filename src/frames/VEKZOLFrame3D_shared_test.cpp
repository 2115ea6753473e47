// VEKZOLFrame3D and its free functions as a host sees them: this test links
// the shared library, so every operation used here must be exported.
#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(VEKZOLFrame3DSharedTest, EveryOperationIsReachableThroughTheSharedLibrary) {
  const double u[3] = {0.0, 1.0, 0.0};
  const double v[3] = {-1.0, 0.0, 0.0};
  const double w[3] = {0.0, 0.0, 1.0};
  const double o[3] = {1.0, 2.0, 3.0};
  const VEKZOLFrame3D columns(u, v, w, o);
  const double rows[3][3] = {{0.0, -1.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}};
  const VEKZOLFrame3D fromRows(rows, o);
  double m[16];
  fromRows.GetVectors(m);
  VEKZOLFrame3D fromSixteen = m;
  fromSixteen = columns;

  const VEKZOLFrame3D identity = fromSixteen.Inverse() * fromRows;
  const VEKZOLFrame3D relative = RelativeBfromA(columns, fromRows);
  const double p[3] = {1.0, 1.0, 1.0};
  double out[3];
  Product(identity, p, out);
  EXPECT_EQ(1.0, out[0]);
  Product(relative, p, out);
  EXPECT_EQ(1.0, out[1]);
  Product(rows, p, out);
  EXPECT_EQ(-1.0, out[0]);
  double square[3][3];
  Product(rows, rows, square);
  EXPECT_EQ(-1.0, square[0][0]);
  double gu[3], gv[3], gw[3], go[3];
  VEKZOLFrame3D().GetVectors(gu, gv, gw, go);
  EXPECT_EQ(1.0, gu[0]);
  testing::internal::CaptureStdout();
  VEKZOLFrame3D().Print();
  EXPECT_EQ("\t1\t0\t0\t0\n\t0\t1\t0\t0\n\t0\t0\t1\t0\n\t0\t0\t0\t1\n",
            testing::internal::GetCapturedStdout());
}

}  // namespace

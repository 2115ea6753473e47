// File: VEKZOLFrame3DProducts.cpp
// The free functions on frames: composition, relative placement, and the
// products of matrices, vectors and points.
//
// The composing functions read frames through GetVectors and build their
// results with the row constructor, whose normalisation is the one of the
// whole library; copying values in and out changes no bit.
#include <vekzol/services/VEKZOLFrame3D.h>

namespace {

// The rows of R and the origin of `frame`.
void ReadRows(VEKZOLFrame3D const& frame, double (*const rows)[3], double* const origin) {
  double u[3];
  double v[3];
  double w[3];
  frame.GetVectors(u, v, w, origin);
  for (int i = 0; i < 3; ++i) {
    rows[i][0] = u[i];
    rows[i][1] = v[i];
    rows[i][2] = w[i];
  }
}

}  // namespace

VEKZOLFrame3D operator*(VEKZOLFrame3D const& a, VEKZOLFrame3D const& b) {
  double ra[3][3];
  double ta[3];
  double rb[3][3];
  double tb[3];
  ReadRows(a, ra, ta);
  ReadRows(b, rb, tb);

  double rotation[3][3];
  Product(ra, rb, rotation);
  // T uses Ra as it stands, before any normalisation.
  double origin[3];
  Product(ra, tb, origin);
  for (int i = 0; i < 3; ++i) {
    origin[i] = origin[i] + ta[i];
  }
  return VEKZOLFrame3D(rotation, origin);
}

VEKZOLFrame3D RelativeBfromA(VEKZOLFrame3D const& a, VEKZOLFrame3D const& b) {
  const VEKZOLFrame3D composed = a.Inverse() * b;
  // The composition has normalised the rows already; they are normalised
  // once more, which may move the last bits, as hosts have always had it.
  double rows[3][3];
  double origin[3];
  ReadRows(composed, rows, origin);
  return VEKZOLFrame3D(rows, origin);
}

void Product(double const (*const m)[3], double const* const v, double* const out) {
  // Computed aside, so that `out` may be `v`.
  double result[3];
  for (int i = 0; i < 3; ++i) {
    result[i] = m[i][0] * v[0] + m[i][1] * v[1] + m[i][2] * v[2];
  }
  for (int i = 0; i < 3; ++i) {
    out[i] = result[i];
  }
}

void Product(double const (*const a)[3], double const (*const b)[3], double (*const out)[3]) {
  // Computed aside, so that `out` may be `a` or `b`.
  double result[3][3];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      result[i][j] = a[i][0] * b[0][j] + a[i][1] * b[1][j] + a[i][2] * b[2][j];
    }
  }
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      out[i][j] = result[i][j];
    }
  }
}

void Product(VEKZOLFrame3D const& f, double const* const p, double* const out) {
  double rows[3][3];
  double origin[3];
  ReadRows(f, rows, origin);
  double rotated[3];
  Product(rows, p, rotated);
  for (int i = 0; i < 3; ++i) {
    out[i] = rotated[i] + origin[i];
  }
}

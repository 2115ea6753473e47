// File: VEKZOLFrame3D.cpp
// Construction, read-out and inversion of a 3D frame.
#include <vekzol/services/VEKZOLFrame3D.h>

#include <cmath>

namespace {

// Divides each element of `row` by the row's Euclidean length. Deliberately
// unguarded: a zero row gives 0/0, not-a-number, as hosts have always seen.
void NormalizeRow(double* const row) {
  const double length = std::sqrt(row[0] * row[0] + row[1] * row[1] + row[2] * row[2]);
  row[0] = row[0] / length;
  row[1] = row[1] / length;
  row[2] = row[2] / length;
}

}  // namespace

VEKZOLFrame3D::VEKZOLFrame3D()
    : _Rotation{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}, _Origin{0.0, 0.0, 0.0} {}

VEKZOLFrame3D::VEKZOLFrame3D(double const* const m) {
  for (int i = 0; i < 3; ++i) {
    _Rotation[i][0] = m[i];
    _Rotation[i][1] = m[4 + i];
    _Rotation[i][2] = m[8 + i];
    _Origin[i] = m[12 + i];
  }
}

VEKZOLFrame3D::VEKZOLFrame3D(double const* const u, double const* const v, double const* const w,
                             double const* const o) {
  for (int i = 0; i < 3; ++i) {
    _Rotation[i][0] = u[i];
    _Rotation[i][1] = v[i];
    _Rotation[i][2] = w[i];
    _Origin[i] = o[i];
  }
}

VEKZOLFrame3D::VEKZOLFrame3D(double const (*const r)[3], double const* const o) {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      _Rotation[i][j] = r[i][j];
    }
    _Origin[i] = o[i];
  }
  for (int i = 0; i < 3; ++i) {
    NormalizeRow(_Rotation[i]);
  }
}

void VEKZOLFrame3D::GetVectors(double* const u, double* const v, double* const w,
                               double* const o) const {
  for (int i = 0; i < 3; ++i) {
    u[i] = _Rotation[i][0];
    v[i] = _Rotation[i][1];
    w[i] = _Rotation[i][2];
    o[i] = _Origin[i];
  }
}

void VEKZOLFrame3D::GetVectors(double* const m) const {
  for (int k = 0; k < 16; ++k) {
    m[k] = 0.0;
  }
  GetVectors(m, m + 4, m + 8, m + 12);
}

VEKZOLFrame3D VEKZOLFrame3D::Inverse() const {
  VEKZOLFrame3D inverse;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      inverse._Rotation[i][j] = _Rotation[j][i];
    }
  }
  // Negating T before the product, not the sums after it, decides the sign
  // of zero components: the inverse of the identity has T = (-0, -0, -0).
  const double minusOrigin[3] = {-_Origin[0], -_Origin[1], -_Origin[2]};
  Product(inverse._Rotation, minusOrigin, inverse._Origin);
  return inverse;
}

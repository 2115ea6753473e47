// File: VEKZOLFrame3D.h
// VEKZOLFrame3D: a rigid 3D placement in double precision, a rotation R and
// an origin T. The columns of R are the frame's axes U, V, W; a point p of
// the frame has the outer coordinates R·p + T (column vectors, multiplied
// from the right). A plain value type: no allocation, copied by value.
//
// Nothing enforces that R is orthonormal. Where an operation normalises, it
// divides each ROW of R by that row's Euclidean length, sqrt(r0·r0 + r1·r1 +
// r2·r2), with no tolerance: a zero row becomes not-a-number values and no
// failure is reported. Results are those of plain double arithmetic in the
// order written below, bit for bit, on every platform.
//
// The sixteen-value form is a 4x4 matrix stored column after column: U at
// indices 0-2, V at 4-6, W at 8-10, T at 12-14; indices 3, 7, 11 and 15 are
// written as 0 and ignored when read.
//
// Not synchronised; a frame has no shared state. Print shares standard
// output with the rest of the process.
#ifndef VEKZOL_SERVICES_VEKZOLFRAME3D_H_
#define VEKZOL_SERVICES_VEKZOLFRAME3D_H_

#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLFrame3D {
 public:
  // R is the identity, T is zero.
  VEKZOLFrame3D();
  // From the sixteen-value form. Not normalised. Implicit, so that a host
  // may write `VEKZOLFrame3D frame = values;`.
  VEKZOLFrame3D(double const* const m);  // NOLINT(google-explicit-constructor)
  // u, v and w become the columns of R, o becomes T. Not normalised.
  VEKZOLFrame3D(double const* const u, double const* const v, double const* const w,
                double const* const o);
  // The rows of `r` become the rows of R (they are not axes), o becomes T,
  // then each row of R is normalised.
  VEKZOLFrame3D(double const (*const r)[3], double const* const o);
  VEKZOLFrame3D(VEKZOLFrame3D const& other) = default;
  // Copies all twelve values; returns this frame.
  VEKZOLFrame3D& operator=(VEKZOLFrame3D const& other) = default;

  // The columns of R and T, three values each.
  void GetVectors(double* const u, double* const v, double* const w, double* const o) const;
  // The sixteen-value form: all sixteen are zeroed, then U, V, W and T are
  // written, so index 15 is 0, not 1.
  void GetVectors(double* const m) const;
  // R transposed, and T' = R^T·(-T) with the components of T negated
  // before the product. The true inverse only for an orthonormal R; no
  // check, no normalisation.
  VEKZOLFrame3D Inverse() const;
  // Four lines on standard output, one tab before each value, in the
  // stream's format: "\tR[i][0]\tR[i][1]\tR[i][2]\tT[i]" for i = 0..2, then
  // the fixed "\t0\t0\t0\t1".
  void Print() const;

 protected:
  double _Rotation[3][3];
  double _Origin[3];
};

// The composition a after b: R = Ra·Rb, then each row of R normalised;
// T = Ra·Tb + Ta with Ra as it stands. Applying the result to a point equals
// applying b, then a.
VEKZOL_API VEKZOLFrame3D operator*(VEKZOLFrame3D const& a, VEKZOLFrame3D const& b);
// b expressed in a: a.Inverse() * b, whose rows are then normalised once
// more (twice in all, which may change the last bits).
VEKZOL_API VEKZOLFrame3D RelativeBfromA(VEKZOLFrame3D const& a, VEKZOLFrame3D const& b);
// out = m·v; no normalisation. Each element sums its three products from
// the first column to the last. `out` may be `v`.
VEKZOL_API void Product(double const (*const m)[3], double const* const v, double* const out);
// out = a·b, element (i, j) being the sum over k of a[i][k]·b[k][j], k from
// 0 to 2; no normalisation. `out` may be `a` or `b`.
VEKZOL_API void Product(double const (*const a)[3], double const (*const b)[3],
                        double (*const out)[3]);
// out = R·p + T of f. `out` may be `p`.
VEKZOL_API void Product(VEKZOLFrame3D const& f, double const* const p, double* const out);

#endif  // VEKZOL_SERVICES_VEKZOLFRAME3D_H_

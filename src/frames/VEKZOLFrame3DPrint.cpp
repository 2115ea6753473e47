// File: VEKZOLFrame3DPrint.cpp
// The frame as a 4x4 matrix in row form on standard output.
#include <vekzol/services/VEKZOLFrame3D.h>

#include <iostream>

// Writes through std::cout without touching its format flags, so the values
// appear in the stream's own format (the default one unless the host set
// another). The bottom row is written as the integers 0, 0, 0, 1, although
// the sixteen-value form ends in 0.
void VEKZOLFrame3D::Print() const {
  for (int i = 0; i < 3; ++i) {
    std::cout << '\t' << _Rotation[i][0] << '\t' << _Rotation[i][1] << '\t' << _Rotation[i][2]
              << '\t' << _Origin[i] << std::endl;
  }
  std::cout << '\t' << 0 << '\t' << 0 << '\t' << 0 << '\t' << 1 << std::endl;
}

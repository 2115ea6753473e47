// File: VEKZOLErrType.h
// VEKZOLErrType: the kind of an entry of the error list, passed as a plain
// 32-bit integer. The kind chooses the prefix of the entry's text:
//
//   ErrTypeErrorA (1), ErrTypeErrorB (2)  "****** ERROR:\t "
//   ErrTypeWarning (3)                    "****** WARNING:\t "
//   ErrTypeInfo (4)                       "Info:\t "
//   any other value                       no prefix
//
// The two error kinds print alike and are both kept: nothing in the library
// tells them apart. The underlying type is fixed to `int`, so that every
// 32-bit value, zero and negatives included, is a valid value that is stored
// as it is.
#ifndef VEKZOL_DIAGNOSTICS_VEKZOLERRTYPE_H_
#define VEKZOL_DIAGNOSTICS_VEKZOLERRTYPE_H_

enum VEKZOLErrType : int {
  ErrTypeErrorA = 1,
  ErrTypeErrorB = 2,
  ErrTypeWarning = 3,
  ErrTypeInfo = 4,
};

#endif  // VEKZOL_DIAGNOSTICS_VEKZOLERRTYPE_H_

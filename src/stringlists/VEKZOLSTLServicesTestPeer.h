// File: VEKZOLSTLServicesTestPeer.h
// Test-only access to the string-list services' private state: whether the
// user's decimal separator has been fetched, so that each test of the
// number conversion can start as a fresh process does. Not installed.
#ifndef VEKZOL_SRC_STRINGLISTS_VEKZOLSTLSERVICESTESTPEER_H_
#define VEKZOL_SRC_STRINGLISTS_VEKZOLSTLSERVICESTESTPEER_H_

#include <vekzol/services/VEKZOLSTLServices.h>

class VEKZOLSTLServicesTestPeer {
 public:
  static bool DecimalSeparatorKnown() { return VEKZOLSTLServices::s_DecimalSeparatorKnown; }
  static void ForgetDecimalSeparator() { VEKZOLSTLServices::s_DecimalSeparatorKnown = false; }
};

#endif  // VEKZOL_SRC_STRINGLISTS_VEKZOLSTLSERVICESTESTPEER_H_

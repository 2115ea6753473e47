// File: TestClassBase.h
// TestClassBase: an empty exported class, kept in the interface for hosts
// that link to it. No data, no virtual operation; every operation does
// nothing. Nothing in the library uses it.
#ifndef VEKZOL_OBJECTS_TESTCLASSBASE_H_
#define VEKZOL_OBJECTS_TESTCLASSBASE_H_

#include <vekzol/platform/Export.h>

class VEKZOL_API TestClassBase {
 public:
  TestClassBase();
  ~TestClassBase();
  TestClassBase& operator=(const TestClassBase& other);

  void Foobar();
};

#endif  // VEKZOL_OBJECTS_TESTCLASSBASE_H_

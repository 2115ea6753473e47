// File: TestClassBase.cpp
// The empty exported class. Its operations are defined out of line, so the
// shared library carries them as real symbols for the hosts that link them.
#include <vekzol/objects/TestClassBase.h>

TestClassBase::TestClassBase() = default;

TestClassBase::~TestClassBase() = default;

TestClassBase& TestClassBase::operator=(const TestClassBase& /*other*/) { return *this; }

void TestClassBase::Foobar() {}

// File: CAtlException.cpp
#include <vekzol/platform/CAtlException.h>

void AtlThrow(HRESULT hr) { throw CAtlException(hr); }

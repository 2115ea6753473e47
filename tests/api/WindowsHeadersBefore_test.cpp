// A host that includes <windows.h> before the library's headers, in an
// ANSI build and without NOMINMAX: its macros (min, max, GetObject,
// CopyFile, CreateDirectory, interface, ...) are all defined when the
// library's headers are read. The library's headers must compile, its
// members that carry those names must work, and the host keeps every macro
// it asked for.
#include <windows.h>

// The MinGW headers define min and max for C only; the Windows SDK defines
// them for C++ too, as here. The GNU C++ library cannot be read with them
// defined, so a host built with it has its standard headers (and here the
// test framework) in first: the ones that the library's headers use.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <filesystem>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#ifndef min
#define min(a, b) (((a) < (b)) ? (a) : (b))
#endif
#ifndef max
#define max(a, b) (((a) > (b)) ? (a) : (b))
#endif

#include <vekzol/VEKZOLBase.h>

namespace {

#if !defined(min) || !defined(max)
#error "the library's headers took the min and max macros away from the host"
#endif
#if !defined(GetObject) || !defined(CopyFile) || !defined(CreateDirectory)
#error "<windows.h> did not define the macros this test is about"
#endif

TEST(WindowsHeadersBeforeTest, TheHostKeepsTheMacrosOfWindowsHeaders) {
  EXPECT_EQ(1, min(1, 2));
  EXPECT_EQ(2, max(1, 2));
  EXPECT_EQ(2, (std::max)(1, 2));
}

TEST(WindowsHeadersBeforeTest, GetObjectReachesTheVertexMemberThroughTheMacro) {
  VEKZOLObjectImpl object("PRC-1");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex.GetObjectA());
  // In an ANSI build GetObject is GetObjectA: host code written with the
  // plain name reaches the member.
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex.GetObject());
}

TEST(WindowsHeadersBeforeTest, TheSystemFunctionsOfTheSameNamesStillWork) {
  LOGPEN pen{};
  EXPECT_EQ(static_cast<int>(sizeof pen), GetObjectA(GetStockObject(BLACK_PEN), sizeof pen, &pen));
  char temp[MAX_PATH];
  ASSERT_NE(0u, GetEnvironmentVariableA("TEMP", temp, MAX_PATH));
  const std::string directory = std::string(temp) + "\\before";
  std::filesystem::remove_all(directory);
  EXPECT_TRUE(CreateDirectory(directory.c_str(), nullptr));
  EXPECT_TRUE(CreateDirectoryA((directory + "\\inner").c_str(), nullptr));
  const std::string file = directory + "\\file.txt";
  HANDLE handle = CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, handle);
  CloseHandle(handle);
  EXPECT_TRUE(CopyFile(file.c_str(), (directory + "\\copy.txt").c_str(), TRUE));
  EXPECT_TRUE(CopyFileA(file.c_str(), (directory + "\\copyA.txt").c_str(), TRUE));
}

TEST(WindowsHeadersBeforeTest, FileServicesKeepTheirNames) {
  char temp[MAX_PATH];
  ASSERT_NE(0u, GetEnvironmentVariableA("TEMP", temp, MAX_PATH));
  const std::string base = std::string(temp) + "\\services-before";
  std::filesystem::remove_all(base);
  CString directory((base + "\\made\\deeper").c_str());
  EXPECT_EQ(S_OK, VEKZOLFileSystemServices::CreateDirectoryA(directory, nullptr));
  // In an ANSI build the plain names reach the members through the macros.
  EXPECT_EQ(S_FALSE, VEKZOLFileSystemServices::CreateDirectory(directory, nullptr));
  CString source((base + "\\made\\source.txt").c_str());
  HANDLE handle =
      CreateFileA(source, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, handle);
  CloseHandle(handle);
  CString target((base + "\\made\\target.txt").c_str());
  EXPECT_EQ(S_OK, VEKZOLFileSystemServices::CopyFileA(source, target, false, nullptr));
  CString other((base + "\\made\\other.txt").c_str());
  EXPECT_EQ(S_OK, VEKZOLFileSystemServices::CopyFile(source, other, false, nullptr));
  EXPECT_NE(INVALID_FILE_ATTRIBUTES, GetFileAttributesA(other));
}

TEST(WindowsHeadersBeforeTest, VariantsAreTheSystemsOwn) {
  CComVariant number(42);
  VARIANT& plain = number;
  EXPECT_EQ(VT_I4, plain.vt);
  EXPECT_EQ(S_OK, number.ChangeType(VT_BSTR));
  EXPECT_EQ(2u, SysStringLen(number.bstrVal));
  EXPECT_EQ(0, lstrcmpW(L"42", number.bstrVal));
}

}  // namespace

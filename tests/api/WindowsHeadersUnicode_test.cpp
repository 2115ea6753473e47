// A host built for Unicode (UNICODE defined) that includes <windows.h>
// first: GetObject, CopyFile and CreateDirectory now stand for the W
// functions. The library's members carry the A in their names, so they
// are the same in this build as in an ANSI one, and the host calls them by
// those names.
#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#include <windows.h>

#include <vekzol/VEKZOLBase.h>

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(WindowsHeadersUnicodeTest, TheMembersKeepTheirNames) {
  VEKZOLObjectImpl object("PRC-1");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex.GetObjectA());
  EXPECT_STREQ("PRC-1", vertex.GetID().GetString());
}

TEST(WindowsHeadersUnicodeTest, FileServicesAreCalledByTheirNames) {
  char temp[MAX_PATH];
  ASSERT_NE(0u, GetEnvironmentVariableA("TEMP", temp, MAX_PATH));
  const std::string base = std::string(temp) + "\\services-unicode";
  std::filesystem::remove_all(base);
  CString directory((base + "\\made").c_str());
  EXPECT_EQ(S_OK, VEKZOLFileSystemServices::CreateDirectoryA(directory, nullptr));
  EXPECT_EQ(S_FALSE, VEKZOLFileSystemServices::CreateDirectoryA(directory, nullptr));
  CString missing((base + "\\none.txt").c_str());
  CString target((base + "\\made\\target.txt").c_str());
  EXPECT_EQ(E_FAIL, VEKZOLFileSystemServices::CopyFileA(missing, target, false, nullptr));
}

TEST(WindowsHeadersUnicodeTest, TheWideSystemFunctionsWork) {
  wchar_t temp[MAX_PATH];
  ASSERT_NE(0u, GetEnvironmentVariableW(L"TEMP", temp, MAX_PATH));
  const std::wstring directory = std::wstring(temp) + L"\\unicode";
  std::filesystem::remove_all(directory);
  EXPECT_TRUE(CreateDirectory(directory.c_str(), nullptr));
}

}  // namespace

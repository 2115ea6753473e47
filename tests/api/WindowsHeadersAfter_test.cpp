// A host that includes the library's headers first and <windows.h> after
// them. The library's headers bring in the system's VARIANT and with it
// <windows.h>, but not the min and max macros that the Windows SDK defines
// for C++ (the MinGW headers define them for C only): std::min, std::max
// and numeric_limits<T>::max() keep working in the host's code. Every other
// macro of <windows.h> is there as usual.
#include <vekzol/VEKZOLBase.h>

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

#if defined(min) || defined(max)
#error "the library's headers let the min and max macros of <windows.h> through"
#endif
#if !defined(GetObject) || !defined(CopyFile) || !defined(CreateDirectory)
#error "<windows.h> did not define the macros this test is about"
#endif

TEST(WindowsHeadersAfterTest, StandardMinAndMaxKeepWorking) {
  EXPECT_EQ(1, std::min(1, 2));
  EXPECT_EQ(2, std::max(1, 2));
  EXPECT_EQ(2147483647, std::numeric_limits<int>::max());
}

TEST(WindowsHeadersAfterTest, TheMembersWithSystemNamesWork) {
  VEKZOLObjectImpl object("PRC-1");
  VEKZOLGraphVertex vertex(&object);
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex.GetObjectA());
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&object), vertex.GetObject());
}

TEST(WindowsHeadersAfterTest, FileServicesKeepTheirNames) {
  char temp[MAX_PATH];
  ASSERT_NE(0u, GetEnvironmentVariableA("TEMP", temp, MAX_PATH));
  const std::string base = std::string(temp) + "\\services-after";
  std::filesystem::remove_all(base);
  CString directory((base + "\\made").c_str());
  EXPECT_EQ(S_OK, VEKZOLFileSystemServices::CreateDirectoryA(directory, nullptr));
  EXPECT_EQ(S_FALSE, VEKZOLFileSystemServices::CreateDirectory(directory, nullptr));
  CString source((base + "\\made\\source.txt").c_str());
  HANDLE handle =
      CreateFileA(source, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, handle);
  CloseHandle(handle);
  CString target((base + "\\made\\target.txt").c_str());
  EXPECT_EQ(S_OK, VEKZOLFileSystemServices::CopyFileA(source, target, false, nullptr));
  EXPECT_EQ(E_FAIL, VEKZOLFileSystemServices::CopyFile(source, target, false, nullptr));
}

TEST(WindowsHeadersAfterTest, TheSystemFunctionsOfTheSameNamesStillWork) {
  char temp[MAX_PATH];
  ASSERT_NE(0u, GetEnvironmentVariableA("TEMP", temp, MAX_PATH));
  const std::string directory = std::string(temp) + "\\after";
  std::filesystem::remove_all(directory);
  EXPECT_TRUE(CreateDirectory(directory.c_str(), nullptr));
  const std::string file = directory + "\\file.txt";
  HANDLE handle = CreateFileA(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(INVALID_HANDLE_VALUE, handle);
  CloseHandle(handle);
  EXPECT_TRUE(CopyFile(file.c_str(), (directory + "\\copy.txt").c_str(), TRUE));
}

}  // namespace

// Links the shared library as a host does: the class's statics and its
// operations must be exported for this program to link.
#include <deque>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(FileSystemServicesSharedTest, TheOperationsAreReachableThroughTheSharedLibrary) {
  CString path;
  CString name;
  CString empty;
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(empty), E_INVALIDARG);
  CString file = "dir/file.txt";
  EXPECT_EQ(VEKZOLFileSystemServices::GetFileNameFromPath(file, name), S_OK);
  EXPECT_STREQ(name, "file.txt");
  std::deque<CString> files;
  std::deque<CString> dirs;
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(empty, files, dirs), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), E_FAIL);

  // TEMP is the test program's own directory: the session goes there.
  const char* temp = std::getenv("TEMP");
  ASSERT_NE(temp, nullptr);
  CString id = "shared";
  VEKZOLFileSystemServices::ErrorHandler handler;
  EXPECT_EQ(VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory(id, path, &handler), S_OK);
  EXPECT_EQ(std::string(path).rfind(std::string(temp), 0), 0u);
  CString again;
  VEKZOLFileSystemServices::GetVZOLSessionDataDirectory(again);
  EXPECT_STREQ(again, path);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(&handler), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(path), S_FALSE);
  VEKZOLFileSystemServices::Cleanup();
}

}  // namespace

// File: Win32Paths_test.cpp
// The Windows answers on temporary directories and absolute paths.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/AbsolutePaths.h"
#include "platform/TempDirectories.h"

namespace {

using vekzol::platform::DirectoryScanStart;

TEST(Win32PathsTest, TemporaryDirectoriesComeFromTempAlone) {
  const std::vector<std::string> names(vekzol::platform::TempDirectoryVariables().begin(),
                                       vekzol::platform::TempDirectoryVariables().end());
  EXPECT_EQ(names, (std::vector<std::string>{"TEMP"}));
  EXPECT_STREQ(vekzol::platform::DefaultTraceDirectory(), "");
  EXPECT_STREQ(vekzol::platform::DefaultSessionBase(), "C:\\temp");
}

TEST(Win32PathsTest, DriveRootAndUncPathsAreAbsolute) {
  EXPECT_EQ(DirectoryScanStart("C:\\a\\b"), 4);
  EXPECT_EQ(DirectoryScanStart("C:/a/b"), 3);
  EXPECT_EQ(DirectoryScanStart("\\a"), 2);
  EXPECT_EQ(DirectoryScanStart("\\\\server\\share"), 2);
  EXPECT_EQ(DirectoryScanStart("//server/share"), 2);
  EXPECT_EQ(DirectoryScanStart("/a"), -1);
  EXPECT_EQ(DirectoryScanStart("a\\b"), -1);
  EXPECT_EQ(DirectoryScanStart(""), -1);
}

}  // namespace

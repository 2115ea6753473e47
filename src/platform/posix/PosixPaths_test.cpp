// File: PosixPaths_test.cpp
// The POSIX answers on temporary directories and absolute paths.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/AbsolutePaths.h"
#include "platform/TempDirectories.h"

namespace {

using vekzol::platform::DirectoryScanStart;

TEST(PosixPathsTest, TemporaryDirectoriesComeFromTempThenTmpdirThenSlashTmp) {
  const std::vector<std::string> names(vekzol::platform::TempDirectoryVariables().begin(),
                                       vekzol::platform::TempDirectoryVariables().end());
  EXPECT_EQ(names, (std::vector<std::string>{"TEMP", "TMPDIR"}));
  EXPECT_STREQ(vekzol::platform::DefaultTraceDirectory(), "/tmp");
  EXPECT_STREQ(vekzol::platform::DefaultSessionBase(), "/tmp");
}

TEST(PosixPathsTest, OnlyPathsBegunWithASlashAreAbsolute) {
  EXPECT_EQ(DirectoryScanStart("/a/b"), 2);
  EXPECT_EQ(DirectoryScanStart("/"), 2);
  EXPECT_EQ(DirectoryScanStart("a/b"), -1);
  EXPECT_EQ(DirectoryScanStart("C:\\a"), -1);
  EXPECT_EQ(DirectoryScanStart("\\a"), -1);
  EXPECT_EQ(DirectoryScanStart(""), -1);
}

}  // namespace

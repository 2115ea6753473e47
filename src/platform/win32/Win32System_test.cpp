// Tests of the Win32 backend of the platform seam against the real system:
// environment, clock, the runtime's time functions, files and directories
// with their system error codes, listings, system message texts and the
// locale. File tests work in a directory of their own below the test
// process's TEMP.
//
// The tests run with the user locale English (United States) and the ANSI
// code page 1252. System message texts are English; Wine words them
// differently from Windows, so those tests hold both texts and pick by the
// system they run on.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/System.h"

namespace {

using vekzol::platform::DefaultSystem;
using vekzol::platform::FindEntry;
using vekzol::platform::kAttributeArchive;
using vekzol::platform::kAttributeDirectory;
using vekzol::platform::kInvalidFileAttributes;
using vekzol::platform::System;

System& Win() { return *DefaultSystem(); }

bool RunningUnderWine() {
  HMODULE ntdll = GetModuleHandleA("ntdll.dll");
  return ntdll != nullptr && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

// The fixed moment of the time tests: Saturday 7 November 2026, 09:35:12
// UTC.
constexpr int64_t kMoment = 1794044112;
// The last second the runtime's time functions accept.
constexpr int64_t kLatest = 32535215999;

TEST(Win32SystemTest, IsTheBackendInUse) {
  EXPECT_EQ(&vekzol::platform::Sys(), DefaultSystem());
  EXPECT_EQ('\\', Win().PathSeparator());
}

// --- Environment -------------------------------------------------------------------------------

TEST(Win32SystemTest, EnvironmentTellsUnsetFromEmpty) {
  const char* name = "VEKZOL_WIN32_TEST_VALUE";
  ASSERT_TRUE(SetEnvironmentVariableA(name, nullptr));
  std::string value = "left over";
  EXPECT_FALSE(Win().GetEnv(name, &value));
  EXPECT_EQ("left over", value);

  ASSERT_TRUE(SetEnvironmentVariableA(name, ""));
  EXPECT_TRUE(Win().GetEnv(name, &value));
  EXPECT_EQ("", value);

  ASSERT_TRUE(SetEnvironmentVariableA(name, "C:\\temp"));
  EXPECT_TRUE(Win().GetEnv(name, &value));
  EXPECT_EQ("C:\\temp", value);
  EXPECT_TRUE(Win().GetEnv(name, nullptr));

  // Longer than the first buffer the backend tries.
  const std::string longValue = std::string(1000, 'x') + "end";
  ASSERT_TRUE(SetEnvironmentVariableA(name, longValue.c_str()));
  EXPECT_TRUE(Win().GetEnv(name, &value));
  EXPECT_EQ(longValue, value);

  EXPECT_FALSE(Win().GetEnv(nullptr, &value));
  SetEnvironmentVariableA(name, nullptr);
}

// --- Clock -------------------------------------------------------------------------------------

TEST(Win32SystemTest, TickCountIsTheSystemsMilliseconds) {
  const DWORD before = GetTickCount();
  const uint32_t ticks = Win().TickCountMs();
  const DWORD after = GetTickCount();
  // Unsigned differences, so a wrap between the calls does not matter.
  EXPECT_LE(static_cast<uint32_t>(ticks - before), static_cast<uint32_t>(after - before));
}

uint64_t Units(const FILETIME& time) {
  return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

TEST(Win32SystemTest, ProcessTimesAreTheSystemsIn100ns) {
  // Spend some processor time first, so that the user time is not zero.
  volatile uint64_t sink = 0;
  const DWORD start = GetTickCount();
  while (GetTickCount() - start < 100) {
    for (int i = 0; i < 100000; ++i) sink = sink + static_cast<uint64_t>(i);
  }
  FILETIME creation, exit, kernel, user;
  ASSERT_TRUE(GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernel, &user));
  uint64_t kernel100ns = 0;
  uint64_t user100ns = 0;
  ASSERT_TRUE(Win().ProcessTimes(&kernel100ns, &user100ns));
  FILETIME kernelAfter, userAfter;
  ASSERT_TRUE(GetProcessTimes(GetCurrentProcess(), &creation, &exit, &kernelAfter, &userAfter));
  EXPECT_LE(Units(kernel), kernel100ns);
  EXPECT_LE(kernel100ns, Units(kernelAfter));
  EXPECT_LE(Units(user), user100ns);
  EXPECT_LE(user100ns, Units(userAfter));
  EXPECT_GT(user100ns, 0u);
  EXPECT_FALSE(Win().ProcessTimes(nullptr, &user100ns));
  EXPECT_FALSE(Win().ProcessTimes(&kernel100ns, nullptr));
}

TEST(Win32SystemTest, NowIsTheRuntimesTime) {
  const __time64_t before = _time64(nullptr);
  const int64_t now = Win().Now();
  const __time64_t after = _time64(nullptr);
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

// The time tests run in UTC: the runtime reads TZ.
class Win32SystemTimeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(0, _putenv("TZ=UTC0"));
    _tzset();
  }
  void TearDown() override {
    _putenv("TZ=");
    _tzset();
  }
};

TEST_F(Win32SystemTimeTest, LocalTimeCoversTheRuntimesRangeOnly) {
  std::tm t{};
  ASSERT_TRUE(Win().LocalTime(kMoment, &t));
  EXPECT_EQ(2026 - 1900, t.tm_year);
  EXPECT_EQ(10, t.tm_mon);
  EXPECT_EQ(7, t.tm_mday);
  EXPECT_EQ(9, t.tm_hour);
  EXPECT_EQ(35, t.tm_min);
  EXPECT_EQ(12, t.tm_sec);
  EXPECT_EQ(6, t.tm_wday);
  EXPECT_EQ(310, t.tm_yday);
  EXPECT_EQ(0, t.tm_isdst);

  ASSERT_TRUE(Win().LocalTime(0, &t));
  EXPECT_EQ(70, t.tm_year);
  EXPECT_EQ(4, t.tm_wday);
  ASSERT_TRUE(Win().LocalTime(kLatest, &t));
  EXPECT_EQ(3000 - 1900, t.tm_year);
  EXPECT_EQ(11, t.tm_mon);
  EXPECT_EQ(31, t.tm_mday);
  EXPECT_EQ(23, t.tm_hour);

  t.tm_year = 42;
  EXPECT_FALSE(Win().LocalTime(-1, &t));
  EXPECT_FALSE(Win().LocalTime(kLatest + 1, &t));
  EXPECT_EQ(42, t.tm_year);
  EXPECT_FALSE(Win().LocalTime(kMoment, nullptr));
}

TEST_F(Win32SystemTimeTest, DateTextIsTheRuntimesTextWithTwoDigitDays) {
  EXPECT_EQ("Sat Nov 07 09:35:12 2026\n", Win().DateText(kMoment));
  EXPECT_EQ("Thu Jan 01 00:00:01 1970\n", Win().DateText(1));
  EXPECT_EQ("Wed Dec 31 23:59:59 3000\n", Win().DateText(kLatest));
  EXPECT_EQ("", Win().DateText(-1));
  EXPECT_EQ("", Win().DateText(kLatest + 1));
}

TEST_F(Win32SystemTimeTest, FormatTimeSpellsNamesAsTheCLocaleDoes) {
  std::tm t{};
  ASSERT_TRUE(Win().LocalTime(kMoment, &t));
  const char* stamp = "%a_%Y_%b_%d_hh%H_mm%M_ss%S";
  EXPECT_EQ("Sat_2026_Nov_07_hh09_mm35_ss12", Win().FormatTime(stamp, t, 1024));
  EXPECT_EQ("Saturday November AM %a 100%", Win().FormatTime("%A %B %p %%a 100%%", t, 1024));

  // The host's locale does not reach the names.
  ASSERT_NE(nullptr, std::setlocale(LC_ALL, "German"));
  EXPECT_EQ("Sat_2026_Nov_07_hh09_mm35_ss12", Win().FormatTime(stamp, t, 1024));
  EXPECT_EQ("Saturday November AM", Win().FormatTime("%A %B %p", t, 1024));
  std::setlocale(LC_ALL, "C");

  t.tm_hour = 21;
  EXPECT_EQ("PM", Win().FormatTime("%p", t, 1024));
}

TEST_F(Win32SystemTimeTest, FormatTimeFailsWhenTheTextDoesNotFit) {
  std::tm t{};
  ASSERT_TRUE(Win().LocalTime(kMoment, &t));
  EXPECT_EQ("2026", Win().FormatTime("%Y", t, 5));
  EXPECT_EQ("", Win().FormatTime("%Y", t, 4));
  EXPECT_EQ("", Win().FormatTime("%Y", t, 0));
  EXPECT_EQ("", Win().FormatTime(nullptr, t, 1024));
  EXPECT_EQ("", Win().FormatTime("", t, 1024));
}

TEST_F(Win32SystemTimeTest, NamesOutOfRangeGiveTheEmptyText) {
  std::tm t{};
  ASSERT_TRUE(Win().LocalTime(kMoment, &t));
  t.tm_wday = 7;
  EXPECT_EQ("", Win().FormatTime("%a", t, 1024));
  EXPECT_EQ("Nov", Win().FormatTime("%b", t, 1024));
  t.tm_mon = -1;
  EXPECT_EQ("", Win().FormatTime("%B", t, 1024));
}

// --- Files and directories ---------------------------------------------------------------------

class Win32SystemFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* base = std::getenv("VEKZOL_TEST_TEMP");
    if (base == nullptr) base = std::getenv("TEMP");
    ASSERT_NE(nullptr, base);
    dir_ =
        std::string(base) + "\\" + ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::error_code error;
    std::filesystem::remove_all(dir_, error);
    ASSERT_TRUE(CreateDirectoryA(dir_.c_str(), nullptr)) << dir_;
  }

  std::string Path(const std::string& name) const { return dir_ + "\\" + name; }

  void Write(const std::string& name, const std::string& contents) const {
    std::FILE* stream = std::fopen(Path(name).c_str(), "wb");
    ASSERT_NE(nullptr, stream) << name;
    std::fwrite(contents.data(), 1, contents.size(), stream);
    std::fclose(stream);
  }

  std::string Read(const std::string& name) const {
    std::string contents;
    std::FILE* stream = std::fopen(Path(name).c_str(), "rb");
    if (stream == nullptr) return "<missing>";
    char buffer[256];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, stream)) > 0) contents.append(buffer, got);
    std::fclose(stream);
    return contents;
  }

  bool Exists(const std::string& name) const {
    return GetFileAttributesA(Path(name).c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  std::string dir_;
};

TEST_F(Win32SystemFileTest, AttributesOfDirectoriesFilesAndMissingPaths) {
  Write("file.txt", "x");
  uint32_t attributes = 0;
  EXPECT_EQ(0u, Win().FileAttributes(dir_.c_str(), &attributes));
  EXPECT_EQ(kAttributeDirectory, attributes);
  EXPECT_EQ(0u, Win().FileAttributes(Path("file.txt").c_str(), &attributes));
  EXPECT_EQ(kAttributeArchive, attributes);

  EXPECT_EQ(2u, Win().FileAttributes(Path("none").c_str(), &attributes));
  EXPECT_EQ(kInvalidFileAttributes, attributes);
  attributes = 0;
  EXPECT_EQ(3u, Win().FileAttributes(Path("none\\none").c_str(), &attributes));
  EXPECT_EQ(kInvalidFileAttributes, attributes);
  EXPECT_EQ(87u, Win().FileAttributes(nullptr, &attributes));
  EXPECT_EQ(0u, Win().FileAttributes(dir_.c_str(), nullptr));
}

TEST_F(Win32SystemFileTest, MakeAndRemoveDirectories) {
  EXPECT_EQ(0u, Win().MakeDirectory(Path("a").c_str()));
  EXPECT_EQ(183u, Win().MakeDirectory(Path("a").c_str()));
  EXPECT_EQ(3u, Win().MakeDirectory(Path("b\\c").c_str()));
  EXPECT_EQ(0u, Win().MakeDirectory(Path("a\\c").c_str()));

  EXPECT_EQ(145u, Win().RemoveEmptyDirectory(Path("a").c_str()));
  EXPECT_EQ(0u, Win().RemoveEmptyDirectory(Path("a\\c").c_str()));
  EXPECT_EQ(0u, Win().RemoveEmptyDirectory(Path("a").c_str()));
  EXPECT_FALSE(Exists("a"));
  EXPECT_EQ(2u, Win().RemoveEmptyDirectory(Path("a").c_str()));
  Write("file", "x");
  EXPECT_EQ(267u, Win().RemoveEmptyDirectory(Path("file").c_str()));

  EXPECT_EQ(87u, Win().MakeDirectory(nullptr));
  EXPECT_EQ(87u, Win().RemoveEmptyDirectory(nullptr));
}

TEST_F(Win32SystemFileTest, CopyKeepsTheBytesAndRespectsFailIfExists) {
  const std::string contents("line\r\nnext\n\0end", 15);
  Write("source", contents);
  EXPECT_EQ(0u, Win().CopyOneFile(Path("source").c_str(), Path("copy").c_str(), true));
  EXPECT_EQ(contents, Read("copy"));

  Write("target", "old");
  EXPECT_EQ(80u, Win().CopyOneFile(Path("source").c_str(), Path("target").c_str(), true));
  EXPECT_EQ("old", Read("target"));
  EXPECT_EQ(0u, Win().CopyOneFile(Path("source").c_str(), Path("target").c_str(), false));
  EXPECT_EQ(contents, Read("target"));

  EXPECT_EQ(2u, Win().CopyOneFile(Path("none").c_str(), Path("other").c_str(), false));
  EXPECT_EQ(3u, Win().CopyOneFile(Path("source").c_str(), Path("none\\copy").c_str(), false));
  EXPECT_EQ(87u, Win().CopyOneFile(nullptr, Path("other").c_str(), false));
  EXPECT_FALSE(Exists("other"));
}

TEST_F(Win32SystemFileTest, MoveNeverReplaces) {
  Write("from", "moved");
  Write("taken", "stays");
  EXPECT_EQ(183u, Win().MoveOneFile(Path("from").c_str(), Path("taken").c_str()));
  EXPECT_EQ("stays", Read("taken"));
  EXPECT_EQ(0u, Win().MoveOneFile(Path("from").c_str(), Path("to").c_str()));
  EXPECT_FALSE(Exists("from"));
  EXPECT_EQ("moved", Read("to"));
  EXPECT_EQ(2u, Win().MoveOneFile(Path("from").c_str(), Path("again").c_str()));
  ASSERT_TRUE(CreateDirectoryA(Path("dir").c_str(), nullptr));
  EXPECT_EQ(0u, Win().MoveOneFile(Path("dir").c_str(), Path("renamed").c_str()));
  EXPECT_TRUE(Exists("renamed"));
  EXPECT_EQ(87u, Win().MoveOneFile(Path("to").c_str(), nullptr));
}

TEST_F(Win32SystemFileTest, DeleteTakesFilesOnly) {
  Write("file", "x");
  EXPECT_EQ(0u, Win().DeleteOneFile(Path("file").c_str()));
  EXPECT_FALSE(Exists("file"));
  EXPECT_EQ(2u, Win().DeleteOneFile(Path("file").c_str()));
  EXPECT_EQ(3u, Win().DeleteOneFile(Path("none\\file").c_str()));
  ASSERT_TRUE(CreateDirectoryA(Path("dir").c_str(), nullptr));
  EXPECT_EQ(5u, Win().DeleteOneFile(Path("dir").c_str()));
  EXPECT_TRUE(Exists("dir"));
  EXPECT_EQ(87u, Win().DeleteOneFile(nullptr));
}

std::vector<std::string> Names(const std::vector<FindEntry>& entries) {
  std::vector<std::string> names;
  for (const FindEntry& entry : entries) names.push_back(entry.name);
  return names;
}

TEST_F(Win32SystemFileTest, ListingsGiveNamesAndAttributesInTheSystemsOrder) {
  Write("b.txt", "");
  Write("A.txt", "");
  Write("c.log", "");
  ASSERT_TRUE(CreateDirectoryA(Path("sub").c_str(), nullptr));

  std::vector<FindEntry> entries;
  ASSERT_EQ(0u, Win().FindFiles(Path("*").c_str(), &entries));
  // The file systems in use sort names without regard to case.
  EXPECT_EQ((std::vector<std::string>{".", "..", "A.txt", "b.txt", "c.log", "sub"}),
            Names(entries));
  ASSERT_EQ(6u, entries.size());
  EXPECT_EQ(kAttributeDirectory, entries[0].attributes);
  EXPECT_EQ(kAttributeDirectory, entries[1].attributes);
  EXPECT_EQ(kAttributeArchive, entries[2].attributes);
  EXPECT_EQ(kAttributeDirectory, entries[5].attributes);

  // Results are appended.
  ASSERT_EQ(0u, Win().FindFiles(Path("*.txt").c_str(), &entries));
  EXPECT_EQ(8u, entries.size());
  EXPECT_EQ("A.txt", entries[6].name);
  EXPECT_EQ("b.txt", entries[7].name);

  std::vector<FindEntry> none;
  EXPECT_EQ(2u, Win().FindFiles(Path("*.zz").c_str(), &none));
  EXPECT_EQ(3u, Win().FindFiles(Path("missing\\*").c_str(), &none));
  EXPECT_TRUE(none.empty());
  EXPECT_EQ(87u, Win().FindFiles(nullptr, &none));
  EXPECT_EQ(87u, Win().FindFiles(Path("*").c_str(), nullptr));
}

TEST_F(Win32SystemFileTest, OpenFileOpensInTheModeAsked) {
  std::FILE* text = Win().OpenFile(Path("text").c_str(), "w+");
  ASSERT_NE(nullptr, text);
  std::fprintf(text, "a\n");
  std::fclose(text);
  EXPECT_EQ("a\r\n", Read("text"));

  std::FILE* binary = Win().OpenFile(Path("binary").c_str(), "wb");
  ASSERT_NE(nullptr, binary);
  std::fprintf(binary, "a\n");
  std::fclose(binary);
  EXPECT_EQ("a\n", Read("binary"));

  std::FILE* append = Win().OpenFile(Path("text").c_str(), "a+");
  ASSERT_NE(nullptr, append);
  std::fprintf(append, "b\n");
  std::fclose(append);
  EXPECT_EQ("a\r\nb\r\n", Read("text"));

  EXPECT_EQ(nullptr, Win().OpenFile(Path("none\\file").c_str(), "w+"));
  EXPECT_EQ(nullptr, Win().OpenFile(nullptr, "w+"));
  EXPECT_EQ(nullptr, Win().OpenFile(Path("text").c_str(), nullptr));
}

// --- Messages and locale -----------------------------------------------------------------------

TEST(Win32SystemTest, ErrorTextIsTheSystemsMessageWithItsLineEnd) {
  const bool wine = RunningUnderWine();
  EXPECT_EQ(wine ? "File not found.\r\n" : "The system cannot find the file specified.\r\n",
            Win().ErrorText(2));
  EXPECT_EQ(wine ? "Path not found.\r\n" : "The system cannot find the path specified.\r\n",
            Win().ErrorText(3));
  EXPECT_EQ(wine ? "File exists.\r\n" : "The file exists.\r\n", Win().ErrorText(80));
  EXPECT_EQ(
      wine ? "File already exists.\r\n" : "Cannot create a file when that file already exists.\r\n",
      Win().ErrorText(183));
  EXPECT_EQ("", Win().ErrorText(0xFFFFFFF0u));
}

TEST(Win32SystemTest, DecimalSeparatorIsTheUsersOne) {
  ASSERT_EQ(0x0409u, GetUserDefaultLCID());
  std::string separator = "left over";
  EXPECT_TRUE(Win().UserDecimalSeparator(&separator));
  EXPECT_EQ(".", separator);
  EXPECT_TRUE(Win().UserDecimalSeparator(nullptr));
}

TEST(Win32SystemTest, NumericLocaleIsTheRuntimes) {
  std::string current;
  EXPECT_TRUE(Win().SetNumericLocale(nullptr, &current));
  EXPECT_EQ("C", current);
  EXPECT_TRUE(Win().SetNumericLocale("German", &current));
  EXPECT_EQ("German_Germany.1252", current);
  EXPECT_STREQ("German_Germany.1252", std::setlocale(LC_NUMERIC, nullptr));
  current = "left over";
  EXPECT_FALSE(Win().SetNumericLocale("no such locale", &current));
  EXPECT_EQ("left over", current);
  EXPECT_STREQ("German_Germany.1252", std::setlocale(LC_NUMERIC, nullptr));
  EXPECT_TRUE(Win().SetNumericLocale("C", nullptr));
  EXPECT_STREQ("C", std::setlocale(LC_NUMERIC, nullptr));
}

}  // namespace

// Tests of the POSIX backend of the platform seam and of the seam itself.
// File tests work on real files in a private directory below $TEMP; the
// tests run as root, so permission failures are not provoked.
#include <dirent.h>
#include <fcntl.h>
#include <ftw.h>
#include <gtest/gtest.h>
#include <locale.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <set>
#include <string>
#include <vector>

#include "platform/System.h"

namespace vekzol {
namespace platform {
namespace {

// Taken while static objects are made, before main: Sys() must already work.
const char g_separatorAtStaticInit = Sys().PathSeparator();

System& Posix() { return *DefaultSystem(); }

// Sets or unsets an environment variable for one test and puts it back.
class ScopedEnv {
 public:
  explicit ScopedEnv(const char* name) : name_(name) {
    const char* old = std::getenv(name);
    had_ = old != nullptr;
    if (had_) old_ = old;
  }
  ScopedEnv(const char* name, const char* value) : ScopedEnv(name) { Set(value); }
  ~ScopedEnv() {
    if (had_) {
      setenv(name_.c_str(), old_.c_str(), 1);
    } else {
      unsetenv(name_.c_str());
    }
    tzset();
  }
  void Set(const char* value) {
    if (value == nullptr) {
      unsetenv(name_.c_str());
    } else {
      setenv(name_.c_str(), value, 1);
    }
    tzset();
  }

 private:
  std::string name_;
  bool had_ = false;
  std::string old_;
};

// Switches the global locale for one test and puts it back.
class ScopedGlobalLocale {
 public:
  ScopedGlobalLocale() : old_(std::setlocale(LC_ALL, nullptr)) {}
  ~ScopedGlobalLocale() { std::setlocale(LC_ALL, old_.c_str()); }

 private:
  std::string old_;
};

int RemoveEntry(const char* path, const struct stat*, int, struct FTW*) { return ::remove(path); }

void RemoveTree(const std::string& path) {
  ::nftw(path.c_str(), RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
}

// A fresh directory below `base`, removed with its contents at the end.
class ScratchDirectory {
 public:
  explicit ScratchDirectory(const std::string& base) {
    std::string pattern = base + "/PosixSystem_test-XXXXXX";
    if (::mkdtemp(&pattern[0]) != nullptr) path_ = pattern;
  }
  ~ScratchDirectory() {
    if (!path_.empty()) RemoveTree(path_);
  }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::string TempBase() {
  const char* temp = std::getenv("TEMP");
  return temp != nullptr && *temp != '\0' ? temp : "/tmp";
}

void WriteFile(const std::string& path, const std::string& contents) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  ASSERT_NE(file, nullptr) << path;
  ASSERT_EQ(std::fwrite(contents.data(), 1, contents.size(), file), contents.size());
  ASSERT_EQ(std::fclose(file), 0);
}

std::string ReadFile(const std::string& path) {
  std::string contents;
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) return "<missing>";
  char buffer[4096];
  size_t got;
  while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) contents.append(buffer, got);
  std::fclose(file);
  return contents;
}

bool Exists(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0;
}

mode_t ModeOf(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 ? (st.st_mode & 07777) : 0;
}

// The names in a directory, "." and ".." left out.
std::set<std::string> NamesIn(const std::string& directory) {
  std::set<std::string> names;
  DIR* stream = ::opendir(directory.c_str());
  if (stream == nullptr) return names;
  while (struct dirent* entry = ::readdir(stream)) {
    std::string name = entry->d_name;
    if (name != "." && name != "..") names.insert(name);
  }
  ::closedir(stream);
  return names;
}

class PosixSystemFileTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_FALSE(dir_.path().empty()) << "no scratch directory"; }
  std::string Path(const std::string& name) const { return dir_.path() + "/" + name; }
  const char* C(const std::string& name) {
    held_.push_back(Path(name));
    return held_.back().c_str();
  }

  ScratchDirectory dir_{TempBase()};
  std::deque<std::string> held_;
};

// ---------------------------------------------------------------- the seam

TEST(PosixSystemSeamTest, SysWorksFromStaticInitialisers) {
  EXPECT_EQ(g_separatorAtStaticInit, '/');
}

TEST(PosixSystemSeamTest, SysIsTheDefaultSystemUnlessReplaced) {
  EXPECT_EQ(&Sys(), DefaultSystem());
}

TEST(PosixSystemSeamTest, DefaultSystemIsOneProcessWideInstance) {
  EXPECT_EQ(DefaultSystem(), DefaultSystem());
}

TEST(PosixSystemSeamTest, PathSeparatorIsSlash) { EXPECT_EQ(Posix().PathSeparator(), '/'); }

// Answers every call with a value of its own and records how it was called.
class RecordingSystem : public System {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    last = std::string("GetEnv ") + name;
    *value = "env-value";
    return true;
  }
  uint32_t TickCountMs() override {
    last = "TickCountMs";
    return 4000000001u;
  }
  bool ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) override {
    last = "ProcessTimes";
    *kernel100ns = 11;
    *user100ns = 22;
    return true;
  }
  int64_t Now() override {
    last = "Now";
    return 1794044112;
  }
  bool LocalTime(int64_t seconds, std::tm* out) override {
    last = "LocalTime " + std::to_string(seconds);
    out->tm_mday = 7;
    return false;
  }
  std::string DateText(int64_t seconds) override {
    last = "DateText " + std::to_string(seconds);
    return "date-text";
  }
  std::string FormatTime(const char* format, const std::tm& time, size_t capacity) override {
    last = std::string("FormatTime ") + format + " " + std::to_string(time.tm_year) + " " +
           std::to_string(capacity);
    return "formatted";
  }
  uint32_t FileAttributes(const char* path, uint32_t* attributes) override {
    last = std::string("FileAttributes ") + path;
    *attributes = 0x21;
    return 7;
  }
  uint32_t MakeDirectory(const char* path) override {
    last = std::string("MakeDirectory ") + path;
    return 8;
  }
  uint32_t RemoveEmptyDirectory(const char* path) override {
    last = std::string("RemoveEmptyDirectory ") + path;
    return 9;
  }
  uint32_t CopyOneFile(const char* from, const char* to, bool failIfExists) override {
    last = std::string("CopyOneFile ") + from + " " + to + (failIfExists ? " fail" : " over");
    return 10;
  }
  uint32_t MoveOneFile(const char* from, const char* to) override {
    last = std::string("MoveOneFile ") + from + " " + to;
    return 11;
  }
  uint32_t DeleteOneFile(const char* path) override {
    last = std::string("DeleteOneFile ") + path;
    return 12;
  }
  uint32_t FindFiles(const char* pattern, std::vector<FindEntry>* entries) override {
    last = std::string("FindFiles ") + pattern;
    entries->push_back({"found", kAttributeDirectory});
    return 13;
  }
  std::FILE* OpenFile(const char* path, const char* mode) override {
    last = std::string("OpenFile ") + path + " " + mode;
    return stdout;
  }
  std::string ErrorText(uint32_t code) override {
    last = "ErrorText " + std::to_string(code);
    return "error-text";
  }
  bool UserDecimalSeparator(std::string* separator) override {
    last = "UserDecimalSeparator";
    *separator = ",";
    return true;
  }
  bool SetNumericLocale(const char* name, std::string* current) override {
    last = std::string("SetNumericLocale ") + (name != nullptr ? name : "(null)");
    *current = "numeric-locale";
    return false;
  }
  char PathSeparator() override {
    last = "PathSeparator";
    return '\\';
  }

  std::string last;
};

TEST(PosixSystemSeamTest, ForwardingSystemPassesEveryCallThrough) {
  RecordingSystem target;
  ForwardingSystem forwarding(&target);
  std::string text;
  EXPECT_TRUE(forwarding.GetEnv("NAME", &text));
  EXPECT_EQ(target.last, "GetEnv NAME");
  EXPECT_EQ(text, "env-value");
  EXPECT_EQ(forwarding.TickCountMs(), 4000000001u);
  EXPECT_EQ(target.last, "TickCountMs");
  uint64_t kernel = 0, user = 0;
  EXPECT_TRUE(forwarding.ProcessTimes(&kernel, &user));
  EXPECT_EQ(target.last, "ProcessTimes");
  EXPECT_EQ(kernel, 11u);
  EXPECT_EQ(user, 22u);
  EXPECT_EQ(forwarding.Now(), 1794044112);
  EXPECT_EQ(target.last, "Now");
  std::tm time{};
  EXPECT_FALSE(forwarding.LocalTime(42, &time));
  EXPECT_EQ(target.last, "LocalTime 42");
  EXPECT_EQ(time.tm_mday, 7);
  EXPECT_EQ(forwarding.DateText(43), "date-text");
  EXPECT_EQ(target.last, "DateText 43");
  time.tm_year = 126;
  EXPECT_EQ(forwarding.FormatTime("%Y", time, 128), "formatted");
  EXPECT_EQ(target.last, "FormatTime %Y 126 128");
  uint32_t attributes = 0;
  EXPECT_EQ(forwarding.FileAttributes("p", &attributes), 7u);
  EXPECT_EQ(target.last, "FileAttributes p");
  EXPECT_EQ(attributes, 0x21u);
  EXPECT_EQ(forwarding.MakeDirectory("d"), 8u);
  EXPECT_EQ(target.last, "MakeDirectory d");
  EXPECT_EQ(forwarding.RemoveEmptyDirectory("e"), 9u);
  EXPECT_EQ(target.last, "RemoveEmptyDirectory e");
  EXPECT_EQ(forwarding.CopyOneFile("a", "b", true), 10u);
  EXPECT_EQ(target.last, "CopyOneFile a b fail");
  EXPECT_EQ(forwarding.CopyOneFile("a", "b", false), 10u);
  EXPECT_EQ(target.last, "CopyOneFile a b over");
  EXPECT_EQ(forwarding.MoveOneFile("c", "d"), 11u);
  EXPECT_EQ(target.last, "MoveOneFile c d");
  EXPECT_EQ(forwarding.DeleteOneFile("f"), 12u);
  EXPECT_EQ(target.last, "DeleteOneFile f");
  std::vector<FindEntry> entries;
  EXPECT_EQ(forwarding.FindFiles("x/*", &entries), 13u);
  EXPECT_EQ(target.last, "FindFiles x/*");
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "found");
  EXPECT_EQ(entries[0].attributes, kAttributeDirectory);
  EXPECT_EQ(forwarding.OpenFile("g", "r"), stdout);
  EXPECT_EQ(target.last, "OpenFile g r");
  EXPECT_EQ(forwarding.ErrorText(183), "error-text");
  EXPECT_EQ(target.last, "ErrorText 183");
  EXPECT_TRUE(forwarding.UserDecimalSeparator(&text));
  EXPECT_EQ(target.last, "UserDecimalSeparator");
  EXPECT_EQ(text, ",");
  EXPECT_FALSE(forwarding.SetNumericLocale("C", &text));
  EXPECT_EQ(target.last, "SetNumericLocale C");
  EXPECT_EQ(text, "numeric-locale");
  EXPECT_FALSE(forwarding.SetNumericLocale(nullptr, &text));
  EXPECT_EQ(target.last, "SetNumericLocale (null)");
  EXPECT_EQ(forwarding.PathSeparator(), '\\');
  EXPECT_EQ(target.last, "PathSeparator");
}

TEST(PosixSystemSeamTest, SetSystemForTestingSwapsAndNullRestores) {
  RecordingSystem first;
  RecordingSystem second;
  EXPECT_EQ(SetSystemForTesting(&first), DefaultSystem());
  EXPECT_EQ(&Sys(), &first);
  EXPECT_EQ(Sys().PathSeparator(), '\\');
  EXPECT_EQ(SetSystemForTesting(&second), &first);
  EXPECT_EQ(&Sys(), &second);
  EXPECT_EQ(SetSystemForTesting(nullptr), &second);
  EXPECT_EQ(&Sys(), DefaultSystem());
  EXPECT_EQ(Sys().PathSeparator(), '/');
}

TEST(PosixSystemSeamTest, ForwardingSystemOverTheDefaultOverridesOneCall) {
  class FailingMakeDirectory : public ForwardingSystem {
   public:
    FailingMakeDirectory() : ForwardingSystem(DefaultSystem()) {}
    uint32_t MakeDirectory(const char*) override { return kErrorDiskFull; }
  } failing;
  System* previous = SetSystemForTesting(&failing);
  EXPECT_EQ(Sys().MakeDirectory("/never/made"), kErrorDiskFull);
  EXPECT_EQ(Sys().PathSeparator(), '/');
  SetSystemForTesting(previous);
  EXPECT_EQ(&Sys(), DefaultSystem());
}

// ------------------------------------------------------------- environment

TEST(PosixSystemEnvTest, GetEnvIsFalseForUnsetVariableAndLeavesValue) {
  ScopedEnv env("VEKZOL_POSIX_TEST_VARIABLE", nullptr);
  std::string value = "untouched";
  EXPECT_FALSE(Posix().GetEnv("VEKZOL_POSIX_TEST_VARIABLE", &value));
  EXPECT_EQ(value, "untouched");
}

TEST(PosixSystemEnvTest, GetEnvIsTrueWithEmptyTextForEmptyVariable) {
  ScopedEnv env("VEKZOL_POSIX_TEST_VARIABLE", "");
  std::string value = "untouched";
  EXPECT_TRUE(Posix().GetEnv("VEKZOL_POSIX_TEST_VARIABLE", &value));
  EXPECT_EQ(value, "");
}

TEST(PosixSystemEnvTest, GetEnvGivesTheValue) {
  ScopedEnv env("VEKZOL_POSIX_TEST_VARIABLE", "a b%sc");
  std::string value;
  EXPECT_TRUE(Posix().GetEnv("VEKZOL_POSIX_TEST_VARIABLE", &value));
  EXPECT_EQ(value, "a b%sc");
}

// ------------------------------------------------------------------ clocks

uint32_t MonotonicMs() {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint32_t>(static_cast<uint64_t>(now.tv_sec) * 1000u +
                               static_cast<uint64_t>(now.tv_nsec) / 1000000u);
}

TEST(PosixSystemClockTest, TickCountMsIsTheMonotonicClockInMillisecondsTruncatedTo32Bits) {
  uint32_t before = MonotonicMs();
  uint32_t tick = Posix().TickCountMs();
  uint32_t after = MonotonicMs();
  // Unsigned differences stay right across a wrap.
  EXPECT_LE(static_cast<uint32_t>(tick - before), static_cast<uint32_t>(after - before));
}

TEST(PosixSystemClockTest, TickCountMsAdvancesWithTime) {
  uint32_t first = Posix().TickCountMs();
  struct timespec pause = {0, 60 * 1000 * 1000};
  while (nanosleep(&pause, &pause) != 0) {
  }
  uint32_t second = Posix().TickCountMs();
  uint32_t elapsed = second - first;
  EXPECT_GE(elapsed, 60u);
  EXPECT_LT(elapsed, 60000u);
}

TEST(PosixSystemClockTest, ProcessTimesAdvanceAfterBusyWork) {
  uint64_t kernelBefore = 0, userBefore = 0;
  ASSERT_TRUE(Posix().ProcessTimes(&kernelBefore, &userBefore));
  uint64_t kernelAfter = 0, userAfter = 0;
  volatile uint64_t sink = 0;
  uint32_t start = Posix().TickCountMs();
  do {
    for (int i = 0; i < 1000000; ++i) sink = sink + static_cast<uint64_t>(i);
    ASSERT_TRUE(Posix().ProcessTimes(&kernelAfter, &userAfter));
  } while (kernelAfter + userAfter < kernelBefore + userBefore + 200000u &&
           Posix().TickCountMs() - start < 20000u);
  // At least 20 ms of processor time in 100 ns units, mostly user time.
  EXPECT_GE(kernelAfter + userAfter, kernelBefore + userBefore + 200000u);
  EXPECT_GT(userAfter, userBefore);
  EXPECT_GE(kernelAfter, kernelBefore);
}

TEST(PosixSystemClockTest, ProcessTimesRefuseNullResults) {
  uint64_t value = 5;
  EXPECT_FALSE(Posix().ProcessTimes(nullptr, &value));
  EXPECT_FALSE(Posix().ProcessTimes(&value, nullptr));
  EXPECT_EQ(value, 5u);
}

TEST(PosixSystemClockTest, NowIsTheCurrentEpochSecond) {
  int64_t before = static_cast<int64_t>(time(nullptr));
  int64_t now = Posix().Now();
  int64_t after = static_cast<int64_t>(time(nullptr));
  EXPECT_LE(before, now);
  EXPECT_LE(now, after);
}

TEST(PosixSystemClockTest, LocalTimeBreaksDownInTheTimeZone) {
  ScopedEnv tz("TZ", "UTC");
  std::tm t{};
  ASSERT_TRUE(Posix().LocalTime(1794044112, &t));
  EXPECT_EQ(t.tm_year, 126);
  EXPECT_EQ(t.tm_mon, 10);
  EXPECT_EQ(t.tm_mday, 7);
  EXPECT_EQ(t.tm_hour, 9);
  EXPECT_EQ(t.tm_min, 35);
  EXPECT_EQ(t.tm_sec, 12);
  EXPECT_EQ(t.tm_wday, 6);
  tz.Set("XYZ-3");
  ASSERT_TRUE(Posix().LocalTime(1794044112, &t));
  EXPECT_EQ(t.tm_hour, 12);
}

TEST(PosixSystemClockTest, LocalTimeRefusesTimesOutsideTheRuntimeRange) {
  ScopedEnv tz("TZ", "UTC");
  std::tm t{};
  t.tm_mday = 99;
  EXPECT_FALSE(Posix().LocalTime(-1, &t));
  EXPECT_FALSE(Posix().LocalTime(32535216000, &t));
  EXPECT_EQ(t.tm_mday, 99);
  EXPECT_TRUE(Posix().LocalTime(0, &t));
  EXPECT_TRUE(Posix().LocalTime(32535215999, &t));
  EXPECT_EQ(t.tm_year, 1100);
  EXPECT_FALSE(Posix().LocalTime(0, nullptr));
}

TEST(PosixSystemClockTest, DateTextHasTheDayAsTwoDigitsWithLeadingZero) {
  ScopedEnv tz("TZ", "UTC");
  EXPECT_EQ(Posix().DateText(1794044112), "Sat Nov 07 09:35:12 2026\n");
}

TEST(PosixSystemClockTest, DateTextHasEnglishNamesForEveryDayAndMonth) {
  ScopedEnv tz("TZ", "UTC");
  ScopedGlobalLocale locale;
  std::setlocale(LC_ALL, "C.UTF-8");
  const struct {
    int64_t seconds;
    const char* text;
  } cases[] = {
      {1767229261, "Thu Jan 01 01:01:01 2026\n"}, {1769997722, "Mon Feb 02 02:02:02 2026\n"},
      {1772506983, "Tue Mar 03 03:03:03 2026\n"}, {1775275444, "Sat Apr 04 04:04:04 2026\n"},
      {1777957505, "Tue May 05 05:05:05 2026\n"}, {1780725606, "Sat Jun 06 06:00:06 2026\n"},
      {1783407667, "Tue Jul 07 07:01:07 2026\n"}, {1786176128, "Sat Aug 08 08:02:08 2026\n"},
      {1788944589, "Wed Sep 09 09:03:09 2026\n"}, {1791626640, "Sat Oct 10 10:04:00 2026\n"},
      {1794395101, "Wed Nov 11 11:05:01 2026\n"}, {1797076802, "Sat Dec 12 12:00:02 2026\n"},
      {1772370855, "Sun Mar 01 13:14:15 2026\n"}, {1778284799, "Fri May 08 23:59:59 2026\n"},
      {0, "Thu Jan 01 00:00:00 1970\n"},          {32535215999, "Wed Dec 31 23:59:59 3000\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(Posix().DateText(c.seconds), c.text) << c.seconds;
}

TEST(PosixSystemClockTest, DateTextFollowsTheTimeZone) {
  ScopedEnv tz("TZ", "XYZ-3");
  EXPECT_EQ(Posix().DateText(1794044112), "Sat Nov 07 12:35:12 2026\n");
}

TEST(PosixSystemClockTest, DateTextIsEmptyOutsideTheRuntimeRange) {
  ScopedEnv tz("TZ", "UTC");
  EXPECT_EQ(Posix().DateText(-1), "");
  EXPECT_EQ(Posix().DateText(32535216000), "");
}

// A locale other than "C" to switch the global one to: a named one if
// installed, else C.UTF-8.
const char* SwitchGlobalLocale() {
  static const char* const kCandidates[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "es_ES.UTF-8",
                                            "it_IT.UTF-8", "C.UTF-8",     "C.utf8"};
  for (const char* name : kCandidates) {
    if (std::setlocale(LC_ALL, name) != nullptr) return name;
  }
  return nullptr;
}

std::tm NovemberSeventh() {
  std::tm t{};
  t.tm_year = 126;
  t.tm_mon = 10;
  t.tm_mday = 7;
  t.tm_hour = 9;
  t.tm_min = 35;
  t.tm_sec = 12;
  t.tm_wday = 6;
  t.tm_yday = 310;
  return t;
}

TEST(PosixSystemClockTest, FormatTimeGivesEnglishNamesWhateverTheGlobalLocale) {
  ScopedGlobalLocale restore;
  ASSERT_NE(SwitchGlobalLocale(), nullptr);
  EXPECT_EQ(Posix().FormatTime("%a_%Y_%b_%d_hh%H_mm%M_ss%S", NovemberSeventh(), 1024),
            "Sat_2026_Nov_07_hh09_mm35_ss12");
  EXPECT_EQ(Posix().FormatTime("%A %B %p", NovemberSeventh(), 1024), "Saturday November AM");
}

TEST(PosixSystemClockTest, FormatTimeIsEmptyWhenTheTextDoesNotFitWithItsNul) {
  EXPECT_EQ(Posix().FormatTime("%Y_%b", NovemberSeventh(), 9), "2026_Nov");
  EXPECT_EQ(Posix().FormatTime("%Y_%b", NovemberSeventh(), 8), "");
  EXPECT_EQ(Posix().FormatTime("%Y_%b", NovemberSeventh(), 0), "");
}

// ---------------------------------------------------------------- locale

TEST(PosixSystemLocaleTest, UserDecimalSeparatorComesFromLcAllFirst) {
  ScopedEnv all("LC_ALL", "C");
  ScopedEnv numeric("LC_NUMERIC", "no_SUCH.locale");
  ScopedEnv lang("LANG", "no_SUCH.locale");
  std::string separator;
  EXPECT_TRUE(Posix().UserDecimalSeparator(&separator));
  EXPECT_EQ(separator, ".");
  all.Set("no_SUCH.locale");
  numeric.Set("C");
  separator = "untouched";
  EXPECT_FALSE(Posix().UserDecimalSeparator(&separator));
  EXPECT_EQ(separator, "untouched");
}

TEST(PosixSystemLocaleTest, UserDecimalSeparatorComesFromLcNumericBeforeLang) {
  ScopedEnv all("LC_ALL", nullptr);
  ScopedEnv numeric("LC_NUMERIC", "C");
  ScopedEnv lang("LANG", "no_SUCH.locale");
  std::string separator;
  EXPECT_TRUE(Posix().UserDecimalSeparator(&separator));
  EXPECT_EQ(separator, ".");
  numeric.Set("no_SUCH.locale");
  lang.Set("C");
  EXPECT_FALSE(Posix().UserDecimalSeparator(&separator));
  numeric.Set(nullptr);
  EXPECT_TRUE(Posix().UserDecimalSeparator(&separator));
  lang.Set("no_SUCH.locale");
  EXPECT_FALSE(Posix().UserDecimalSeparator(&separator));
}

TEST(PosixSystemLocaleTest, UserDecimalSeparatorIsThePointWithNoLocaleSet) {
  ScopedEnv all("LC_ALL", nullptr);
  ScopedEnv numeric("LC_NUMERIC", nullptr);
  ScopedEnv lang("LANG", nullptr);
  std::string separator;
  EXPECT_TRUE(Posix().UserDecimalSeparator(&separator));
  EXPECT_EQ(separator, ".");
}

TEST(PosixSystemLocaleTest, UserDecimalSeparatorIsACommaInALocaleThatUsesOne) {
  static const char* const kCommaLocales[] = {"de_DE.UTF-8", "fr_FR.UTF-8", "es_ES.UTF-8",
                                              "it_IT.UTF-8", "nl_NL.UTF-8", "ru_RU.UTF-8"};
  const char* installed = nullptr;
  for (const char* name : kCommaLocales) {
    locale_t probe = newlocale(LC_NUMERIC_MASK, name, static_cast<locale_t>(0));
    if (probe != static_cast<locale_t>(0)) {
      freelocale(probe);
      installed = name;
      break;
    }
  }
  if (installed == nullptr) GTEST_SKIP() << "no locale with a decimal comma is installed";
  ScopedEnv all("LC_ALL", installed);
  std::string separator;
  EXPECT_TRUE(Posix().UserDecimalSeparator(&separator));
  EXPECT_EQ(separator, ",");
}

TEST(PosixSystemLocaleTest, UserDecimalSeparatorLeavesTheGlobalLocaleAlone) {
  ScopedEnv all("LC_ALL", "C.UTF-8");
  ScopedGlobalLocale restore;
  std::setlocale(LC_ALL, "C");
  std::string before = std::setlocale(LC_ALL, nullptr);
  std::string separator;
  EXPECT_TRUE(Posix().UserDecimalSeparator(&separator));
  EXPECT_EQ(std::string(std::setlocale(LC_ALL, nullptr)), before);
}

TEST(PosixSystemLocaleTest, SetNumericLocaleSwitchesOnlyTheNumericCategory) {
  ScopedGlobalLocale restore;
  ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
  std::string current;
  EXPECT_TRUE(Posix().SetNumericLocale(nullptr, &current));
  EXPECT_EQ(current, "C.UTF-8");
  EXPECT_TRUE(Posix().SetNumericLocale("C", &current));
  EXPECT_EQ(current, "C");
  EXPECT_EQ(std::string(std::setlocale(LC_NUMERIC, nullptr)), "C");
  EXPECT_EQ(std::string(std::setlocale(LC_CTYPE, nullptr)), "C.UTF-8");
  EXPECT_TRUE(Posix().SetNumericLocale("C.UTF-8", nullptr));
  EXPECT_EQ(std::string(std::setlocale(LC_NUMERIC, nullptr)), "C.UTF-8");
}

TEST(PosixSystemLocaleTest, SetNumericLocaleRefusesAnUnknownNameAndKeepsTheLocale) {
  ScopedGlobalLocale restore;
  ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
  std::string current = "untouched";
  EXPECT_FALSE(Posix().SetNumericLocale("no_SUCH.locale", &current));
  EXPECT_EQ(current, "untouched");
  EXPECT_EQ(std::string(std::setlocale(LC_NUMERIC, nullptr)), "C.UTF-8");
}

// --------------------------------------------------------------- messages

TEST(PosixSystemErrorTextTest, ErrorTextIsThePlatformDescriptionWithALineEnd) {
  EXPECT_EQ(Posix().ErrorText(kErrorFileNotFound), "No such file or directory\n");
  EXPECT_EQ(Posix().ErrorText(kErrorPathNotFound), "No such file or directory\n");
  EXPECT_EQ(Posix().ErrorText(kErrorAccessDenied), "Permission denied\n");
  EXPECT_EQ(Posix().ErrorText(kErrorFileExists), "File exists\n");
  EXPECT_EQ(Posix().ErrorText(kErrorAlreadyExists), "File exists\n");
  EXPECT_EQ(Posix().ErrorText(kErrorDirNotEmpty), "Directory not empty\n");
}

TEST(PosixSystemErrorTextTest, ErrorTextMatchesStrerrorOfTheEquivalentErrno) {
  const struct {
    uint32_t code;
    int err;
  } cases[] = {{kErrorDirectory, ENOTDIR},
               {kErrorDiskFull, ENOSPC},
               {kErrorHandleDiskFull, ENOSPC},
               {kErrorFilenameExcedRange, ENAMETOOLONG},
               {kErrorBusy, EBUSY},
               {kErrorSharingViolation, ETXTBSY},
               {kErrorNotSameDevice, EXDEV},
               {kErrorTooManyOpenFiles, EMFILE},
               {kErrorNotEnoughMemory, ENOMEM},
               {kErrorInvalidParameter, EINVAL},
               {kErrorInvalidName, EINVAL},
               {kErrorWriteFault, EIO},
               {kErrorNotSupported, EOPNOTSUPP},
               {kErrorInvalidFunction, ENOSYS},
               {6, EBADF},
               {19, EROFS},
               {31, EIO},
               {223, EFBIG},
               {1921, ELOOP}};
  for (const auto& c : cases) {
    EXPECT_EQ(Posix().ErrorText(c.code), std::string(std::strerror(c.err)) + "\n") << c.code;
  }
}

TEST(PosixSystemErrorTextTest, ErrorTextIsEmptyForCodesWithoutEquivalent) {
  EXPECT_EQ(Posix().ErrorText(13), "");
  EXPECT_EQ(Posix().ErrorText(9999), "");
  EXPECT_EQ(Posix().ErrorText(0xFFFFFFFFu), "");
}

// ----------------------------------------------------------- attributes

TEST_F(PosixSystemFileTest, FileAttributesOfDirectoryIsDirectory) {
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(dir_.path().c_str(), &attributes), kErrorSuccess);
  EXPECT_EQ(attributes, kAttributeDirectory);
}

TEST_F(PosixSystemFileTest, FileAttributesOfFileIsArchive) {
  WriteFile(Path("f.txt"), "x");
  chmod(C("f.txt"), 0644);
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("f.txt"), &attributes), kErrorSuccess);
  EXPECT_EQ(attributes, kAttributeArchive);
  WriteFile(Path(".hidden"), "x");
  EXPECT_EQ(Posix().FileAttributes(C(".hidden"), &attributes), kErrorSuccess);
  EXPECT_EQ(attributes, kAttributeArchive);
}

TEST_F(PosixSystemFileTest, FileAttributesWithoutOwnerWriteBitAddReadOnly) {
  WriteFile(Path("ro.txt"), "x");
  chmod(C("ro.txt"), 0444);
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("ro.txt"), &attributes), kErrorSuccess);
  EXPECT_EQ(attributes, kAttributeReadOnly | kAttributeArchive);
  mkdir(C("rodir"), 0555);
  EXPECT_EQ(Posix().FileAttributes(C("rodir"), &attributes), kErrorSuccess);
  EXPECT_EQ(attributes, kAttributeReadOnly | kAttributeDirectory);
}

TEST_F(PosixSystemFileTest, FileAttributesFollowSymbolicLinks) {
  mkdir(C("real"), 0777);
  symlink(C("real"), C("link"));
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("link"), &attributes), kErrorSuccess);
  EXPECT_EQ(attributes, kAttributeDirectory);
}

TEST_F(PosixSystemFileTest, FileAttributesOfMissingNameIsFileNotFound) {
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("missing"), &attributes), kErrorFileNotFound);
  EXPECT_EQ(attributes, kInvalidFileAttributes);
  EXPECT_EQ(Posix().FileAttributes(C("missing/"), &attributes), kErrorFileNotFound);
}

TEST_F(PosixSystemFileTest, FileAttributesBelowMissingDirectoryIsPathNotFound) {
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("missing/name"), &attributes), kErrorPathNotFound);
  EXPECT_EQ(attributes, kInvalidFileAttributes);
}

TEST_F(PosixSystemFileTest, FileAttributesBelowFileIsPathNotFound) {
  WriteFile(Path("file"), "x");
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("file/name"), &attributes), kErrorPathNotFound);
  EXPECT_EQ(Posix().FileAttributes(C("file/"), &attributes), kErrorPathNotFound);
  EXPECT_EQ(attributes, kInvalidFileAttributes);
}

TEST_F(PosixSystemFileTest, FileAttributesOfEmptyPathIsPathNotFound) {
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes("", &attributes), kErrorPathNotFound);
  EXPECT_EQ(attributes, kInvalidFileAttributes);
}

TEST_F(PosixSystemFileTest, FileAttributesOfTooLongNameIsFilenameExcedRange) {
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C(std::string(300, 'n')), &attributes),
            kErrorFilenameExcedRange);
}

TEST_F(PosixSystemFileTest, FileAttributesOfSymbolicLinkLoopIsCantResolveFilename) {
  symlink(C("loop"), C("loop"));
  uint32_t attributes = 0;
  EXPECT_EQ(Posix().FileAttributes(C("loop"), &attributes), 1921u);
}

// ------------------------------------------------------------ directories

TEST_F(PosixSystemFileTest, MakeDirectoryMakesOneLevelWithUmaskApplied) {
  mode_t old = umask(022);
  uint32_t code = Posix().MakeDirectory(C("made"));
  umask(old);
  EXPECT_EQ(code, kErrorSuccess);
  EXPECT_EQ(ModeOf(Path("made")), 0755u);
}

TEST_F(PosixSystemFileTest, MakeDirectoryOnExistingNameIsAlreadyExists) {
  mkdir(C("dir"), 0777);
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().MakeDirectory(C("dir")), kErrorAlreadyExists);
  EXPECT_EQ(Posix().MakeDirectory(C("file")), kErrorAlreadyExists);
}

TEST_F(PosixSystemFileTest, MakeDirectoryWithMissingParentIsPathNotFound) {
  EXPECT_EQ(Posix().MakeDirectory(C("missing/child")), kErrorPathNotFound);
  EXPECT_FALSE(Exists(Path("missing")));
  EXPECT_EQ(Posix().MakeDirectory(""), kErrorPathNotFound);
}

TEST_F(PosixSystemFileTest, MakeDirectoryBelowFileIsPathNotFound) {
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().MakeDirectory(C("file/child")), kErrorPathNotFound);
}

TEST_F(PosixSystemFileTest, MakeDirectoryWithTooLongNameIsFilenameExcedRange) {
  EXPECT_EQ(Posix().MakeDirectory(C(std::string(300, 'n'))), kErrorFilenameExcedRange);
}

TEST_F(PosixSystemFileTest, RemoveEmptyDirectoryRemovesIt) {
  mkdir(C("empty"), 0777);
  EXPECT_EQ(Posix().RemoveEmptyDirectory(C("empty")), kErrorSuccess);
  EXPECT_FALSE(Exists(Path("empty")));
}

TEST_F(PosixSystemFileTest, RemoveEmptyDirectoryOfNonEmptyIsDirNotEmpty) {
  mkdir(C("full"), 0777);
  WriteFile(Path("full/f"), "x");
  EXPECT_EQ(Posix().RemoveEmptyDirectory(C("full")), kErrorDirNotEmpty);
  EXPECT_TRUE(Exists(Path("full/f")));
}

TEST_F(PosixSystemFileTest, RemoveEmptyDirectoryOfFileIsDirectoryError) {
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().RemoveEmptyDirectory(C("file")), kErrorDirectory);
  EXPECT_TRUE(Exists(Path("file")));
}

TEST_F(PosixSystemFileTest, RemoveEmptyDirectoryOfMissingNames) {
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().RemoveEmptyDirectory(C("missing")), kErrorFileNotFound);
  EXPECT_EQ(Posix().RemoveEmptyDirectory(C("missing/child")), kErrorPathNotFound);
  EXPECT_EQ(Posix().RemoveEmptyDirectory(C("file/child")), kErrorPathNotFound);
}

TEST(PosixSystemDirectoryTest, RemoveEmptyDirectoryOfTheRootIsBusy) {
  // The root can never be removed, so asking is harmless.
  EXPECT_EQ(Posix().RemoveEmptyDirectory("/"), kErrorBusy);
}

// ------------------------------------------------------------------ copy

TEST_F(PosixSystemFileTest, CopyOneFileCopiesContentsModeAndTimeWithoutTemporaryLeft) {
  std::string contents;
  for (int i = 0; i < 200000; ++i) contents.push_back(static_cast<char>((i * 7) % 256));
  WriteFile(Path("source.bin"), contents);
  chmod(C("source.bin"), 0640);
  struct timespec times[2] = {{1000000000, 0}, {1234567890, 0}};
  utimensat(AT_FDCWD, C("source.bin"), times, 0);

  EXPECT_EQ(Posix().CopyOneFile(C("source.bin"), C("copy.bin"), true), kErrorSuccess);
  EXPECT_EQ(ReadFile(Path("copy.bin")), contents);
  EXPECT_EQ(ModeOf(Path("copy.bin")), 0640u);
  struct stat st;
  ASSERT_EQ(stat(C("copy.bin"), &st), 0);
  EXPECT_EQ(st.st_mtim.tv_sec, 1234567890);
  EXPECT_EQ(NamesIn(dir_.path()), (std::set<std::string>{"copy.bin", "source.bin"}));
}

TEST_F(PosixSystemFileTest, CopyOneFileKeepsReadOnlyModeAndEmptyContents) {
  WriteFile(Path("empty"), "");
  chmod(C("empty"), 0444);
  EXPECT_EQ(Posix().CopyOneFile(C("empty"), C("copy"), false), kErrorSuccess);
  EXPECT_EQ(ReadFile(Path("copy")), "");
  EXPECT_EQ(ModeOf(Path("copy")), 0444u);
}

TEST_F(PosixSystemFileTest, CopyOneFileWithoutOverwriteOntoExistingFileIsFileExists) {
  WriteFile(Path("source"), "new");
  WriteFile(Path("target"), "old");
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("target"), true), kErrorFileExists);
  EXPECT_EQ(ReadFile(Path("target")), "old");
  EXPECT_EQ(NamesIn(dir_.path()), (std::set<std::string>{"source", "target"}));
}

TEST_F(PosixSystemFileTest, CopyOneFileWithOverwriteReplacesExistingFile) {
  WriteFile(Path("source"), "new contents");
  chmod(C("source"), 0600);
  WriteFile(Path("target"), "old");
  chmod(C("target"), 0644);
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("target"), false), kErrorSuccess);
  EXPECT_EQ(ReadFile(Path("target")), "new contents");
  EXPECT_EQ(ModeOf(Path("target")), 0600u);
  EXPECT_EQ(NamesIn(dir_.path()), (std::set<std::string>{"source", "target"}));
}

TEST_F(PosixSystemFileTest, CopyOneFileOntoDirectoryIsAccessDeniedOrFileExists) {
  WriteFile(Path("source"), "x");
  mkdir(C("dir"), 0777);
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("dir"), false), kErrorAccessDenied);
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("dir"), true), kErrorFileExists);
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("dir/"), false), kErrorAccessDenied);
  EXPECT_EQ(NamesIn(Path("dir")), std::set<std::string>{});
}

TEST_F(PosixSystemFileTest, CopyOneFileOfDirectoryIsAccessDenied) {
  mkdir(C("dir"), 0777);
  EXPECT_EQ(Posix().CopyOneFile(C("dir"), C("copy"), false), kErrorAccessDenied);
  EXPECT_FALSE(Exists(Path("copy")));
}

TEST_F(PosixSystemFileTest, CopyOneFileOfMissingSourceIsFileOrPathNotFound) {
  EXPECT_EQ(Posix().CopyOneFile(C("missing"), C("copy"), false), kErrorFileNotFound);
  EXPECT_EQ(Posix().CopyOneFile(C("missing/name"), C("copy"), false), kErrorPathNotFound);
  EXPECT_EQ(Posix().CopyOneFile("", C("copy"), false), kErrorPathNotFound);
  EXPECT_EQ(NamesIn(dir_.path()), std::set<std::string>{});
}

TEST_F(PosixSystemFileTest, CopyOneFileIntoMissingDirectoryIsPathNotFound) {
  WriteFile(Path("source"), "x");
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("missing/copy"), false), kErrorPathNotFound);
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("file/copy"), false), kErrorPathNotFound);
  EXPECT_EQ(Posix().CopyOneFile(C("source"), C("newdir/"), false), kErrorPathNotFound);
  EXPECT_EQ(NamesIn(dir_.path()), (std::set<std::string>{"file", "source"}));
}

TEST_F(PosixSystemFileTest, CopyOneFileOntoItselfIsSharingViolation) {
  WriteFile(Path("same"), "keep");
  EXPECT_EQ(Posix().CopyOneFile(C("same"), C("same"), false), kErrorSharingViolation);
  EXPECT_EQ(Posix().CopyOneFile(C("same"), C("same"), true), kErrorFileExists);
  EXPECT_EQ(ReadFile(Path("same")), "keep");
}

TEST_F(PosixSystemFileTest, CopyOneFileThatCannotReadLeavesNothingBehind) {
  // Reading /proc/self/mem at offset 0 fails: the process has no page there.
  if (!Exists("/proc/self/mem")) GTEST_SKIP() << "no /proc/self/mem";
  EXPECT_EQ(Posix().CopyOneFile("/proc/self/mem", C("copy"), false), kErrorWriteFault);
  EXPECT_EQ(NamesIn(dir_.path()), std::set<std::string>{});
}

// ------------------------------------------------------------------ move

TEST_F(PosixSystemFileTest, MoveOneFileRenamesFile) {
  WriteFile(Path("old"), "contents");
  EXPECT_EQ(Posix().MoveOneFile(C("old"), C("new")), kErrorSuccess);
  EXPECT_EQ(ReadFile(Path("new")), "contents");
  EXPECT_FALSE(Exists(Path("old")));
}

TEST_F(PosixSystemFileTest, MoveOneFileMovesDirectoryWithContents) {
  mkdir(C("dir"), 0777);
  mkdir(C("other"), 0777);
  WriteFile(Path("dir/f"), "x");
  EXPECT_EQ(Posix().MoveOneFile(C("dir"), C("other/moved")), kErrorSuccess);
  EXPECT_EQ(ReadFile(Path("other/moved/f")), "x");
  EXPECT_FALSE(Exists(Path("dir")));
}

TEST_F(PosixSystemFileTest, MoveOneFileNeverReplacesAnExistingName) {
  WriteFile(Path("a"), "a");
  WriteFile(Path("b"), "b");
  mkdir(C("emptydir"), 0777);
  mkdir(C("dir2"), 0777);
  EXPECT_EQ(Posix().MoveOneFile(C("a"), C("b")), kErrorAlreadyExists);
  EXPECT_EQ(Posix().MoveOneFile(C("dir2"), C("emptydir")), kErrorAlreadyExists);
  EXPECT_EQ(Posix().MoveOneFile(C("a"), C("emptydir")), kErrorAlreadyExists);
  EXPECT_EQ(ReadFile(Path("a")), "a");
  EXPECT_EQ(ReadFile(Path("b")), "b");
  EXPECT_EQ(NamesIn(dir_.path()), (std::set<std::string>{"a", "b", "dir2", "emptydir"}));
}

TEST_F(PosixSystemFileTest, MoveOneFileOfMissingSourceIsFileOrPathNotFound) {
  EXPECT_EQ(Posix().MoveOneFile(C("missing"), C("new")), kErrorFileNotFound);
  EXPECT_EQ(Posix().MoveOneFile(C("missing/x"), C("new")), kErrorPathNotFound);
}

TEST_F(PosixSystemFileTest, MoveOneFileIntoMissingDirectoryIsPathNotFound) {
  WriteFile(Path("a"), "a");
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().MoveOneFile(C("a"), C("missing/a")), kErrorPathNotFound);
  EXPECT_EQ(Posix().MoveOneFile(C("a"), C("file/a")), kErrorPathNotFound);
  EXPECT_EQ(ReadFile(Path("a")), "a");
}

// A scratch directory on another file system than $TEMP, or empty.
std::string OtherFileSystemBase() {
  struct stat temp, shm;
  if (stat(TempBase().c_str(), &temp) != 0 || stat("/dev/shm", &shm) != 0) return "";
  if (!S_ISDIR(shm.st_mode) || temp.st_dev == shm.st_dev) return "";
  return "/dev/shm";
}

TEST_F(PosixSystemFileTest, MoveOneFileAcrossFileSystemsCopiesThenDeletes) {
  std::string base = OtherFileSystemBase();
  if (base.empty()) GTEST_SKIP() << "no second file system beside $TEMP";
  ScratchDirectory other(base);
  ASSERT_FALSE(other.path().empty());
  std::string from = other.path() + "/far";
  WriteFile(from, "far away");
  chmod(from.c_str(), 0604);
  EXPECT_EQ(Posix().MoveOneFile(from.c_str(), C("near")), kErrorSuccess);
  EXPECT_EQ(ReadFile(Path("near")), "far away");
  EXPECT_EQ(ModeOf(Path("near")), 0604u);
  EXPECT_FALSE(Exists(from));
  EXPECT_EQ(NamesIn(dir_.path()), std::set<std::string>{"near"});
}

TEST_F(PosixSystemFileTest, MoveOneFileOfDirectoryAcrossFileSystemsIsNotSameDevice) {
  std::string base = OtherFileSystemBase();
  if (base.empty()) GTEST_SKIP() << "no second file system beside $TEMP";
  ScratchDirectory other(base);
  ASSERT_FALSE(other.path().empty());
  std::string from = other.path() + "/dir";
  mkdir(from.c_str(), 0777);
  EXPECT_EQ(Posix().MoveOneFile(from.c_str(), C("dir")), kErrorNotSameDevice);
  EXPECT_TRUE(Exists(from));
  EXPECT_FALSE(Exists(Path("dir")));
}

// ---------------------------------------------------------------- delete

TEST_F(PosixSystemFileTest, DeleteOneFileRemovesFile) {
  WriteFile(Path("f"), "x");
  chmod(C("f"), 0444);
  EXPECT_EQ(Posix().DeleteOneFile(C("f")), kErrorSuccess);
  EXPECT_FALSE(Exists(Path("f")));
}

TEST_F(PosixSystemFileTest, DeleteOneFileOfDirectoryIsAccessDenied) {
  mkdir(C("dir"), 0777);
  EXPECT_EQ(Posix().DeleteOneFile(C("dir")), kErrorAccessDenied);
  EXPECT_TRUE(Exists(Path("dir")));
}

TEST_F(PosixSystemFileTest, DeleteOneFileOfMissingNames) {
  WriteFile(Path("file"), "x");
  EXPECT_EQ(Posix().DeleteOneFile(C("missing")), kErrorFileNotFound);
  EXPECT_EQ(Posix().DeleteOneFile(C("missing/x")), kErrorPathNotFound);
  EXPECT_EQ(Posix().DeleteOneFile(C("file/x")), kErrorPathNotFound);
  EXPECT_EQ(Posix().DeleteOneFile(C(std::string(300, 'n'))), kErrorFilenameExcedRange);
}

// -------------------------------------------------------------- listings

class PosixSystemFindTest : public PosixSystemFileTest {
 protected:
  void SetUp() override {
    PosixSystemFileTest::SetUp();
    for (const char* name : {"a.txt", "ab.txt", "b.log", "readme", "x.tar.gz", "[ab].txt", "A.TXT",
                             "z", "\xC3\xA9t\xC3\xA9"}) {
      WriteFile(Path(name), "x");
    }
    mkdir(C("sub"), 0777);
  }

  // The names found for `pattern` below the scratch directory, in order;
  // the code goes to `*code`.
  std::vector<std::string> Find(const std::string& pattern, uint32_t* code) {
    std::vector<FindEntry> entries;
    *code = Posix().FindFiles(C(pattern), &entries);
    std::vector<std::string> names;
    for (const FindEntry& entry : entries) names.push_back(entry.name);
    return names;
  }

  std::vector<std::string> Find(const std::string& pattern) {
    uint32_t code = 0;
    std::vector<std::string> names = Find(pattern, &code);
    EXPECT_EQ(code, names.empty() ? kErrorFileNotFound : kErrorSuccess) << pattern;
    return names;
  }

  const std::vector<std::string> all_ = {".",     "..",       "A.TXT", "[ab].txt",
                                         "a.txt", "ab.txt",   "b.log", "readme",
                                         "sub",   "x.tar.gz", "z",     "\xC3\xA9t\xC3\xA9"};
};

TEST_F(PosixSystemFindTest, StarListsEveryNameSortedByUnsignedBytes) { EXPECT_EQ(Find("*"), all_); }

TEST_F(PosixSystemFindTest, StarDotStarListsEveryNameToo) { EXPECT_EQ(Find("*.*"), all_); }

TEST_F(PosixSystemFindTest, EntriesCarryTheirAttributes) {
  chmod(C("z"), 0444);
  std::vector<FindEntry> entries;
  ASSERT_EQ(Posix().FindFiles(C("*"), &entries), kErrorSuccess);
  ASSERT_EQ(entries.size(), all_.size());
  for (const FindEntry& entry : entries) {
    uint32_t expected = kAttributeArchive;
    if (entry.name == "." || entry.name == ".." || entry.name == "sub") {
      expected = kAttributeDirectory;
    } else if (entry.name == "z") {
      expected = kAttributeReadOnly | kAttributeArchive;
    }
    EXPECT_EQ(entry.attributes, expected) << entry.name;
  }
}

TEST_F(PosixSystemFindTest, StarMatchesAnyRunCaseSensitively) {
  EXPECT_EQ(Find("*.txt"), (std::vector<std::string>{"[ab].txt", "a.txt", "ab.txt"}));
  EXPECT_EQ(Find("*.TXT"), (std::vector<std::string>{"A.TXT"}));
  EXPECT_EQ(Find("*.gz"), (std::vector<std::string>{"x.tar.gz"}));
  EXPECT_EQ(Find("x.*"), (std::vector<std::string>{"x.tar.gz"}));
  EXPECT_EQ(Find("*ea*"), (std::vector<std::string>{"readme"}));
  EXPECT_EQ(Find("s*"), (std::vector<std::string>{"sub"}));
}

TEST_F(PosixSystemFindTest, QuestionMarkMatchesOneCharacter) {
  EXPECT_EQ(Find("?.txt"), (std::vector<std::string>{"a.txt"}));
  EXPECT_EQ(Find("??.txt"), (std::vector<std::string>{"a.txt", "ab.txt"}));
  EXPECT_EQ(Find("b.?og"), (std::vector<std::string>{"b.log"}));
  EXPECT_EQ(Find("re?dme"), (std::vector<std::string>{"readme"}));
}

TEST_F(PosixSystemFindTest, QuestionMarkMatchesNothingAtADotOrTheEnd) {
  EXPECT_EQ(Find("a?.txt"), (std::vector<std::string>{"a.txt", "ab.txt"}));
  EXPECT_EQ(Find("z??"), (std::vector<std::string>{"z"}));
  EXPECT_EQ(Find("readme?"), (std::vector<std::string>{"readme"}));
  EXPECT_EQ(Find("read?"), (std::vector<std::string>{}));
}

TEST_F(PosixSystemFindTest, DotBeforeWildcardMatchesTheEndOfAName) {
  EXPECT_EQ(Find("readme.*"), (std::vector<std::string>{"readme"}));
  EXPECT_EQ(Find("b.*"), (std::vector<std::string>{"b.log"}));
  EXPECT_EQ(Find("z.?"), (std::vector<std::string>{"z"}));
}

TEST_F(PosixSystemFindTest, FinalStarDotMatchesNamesWithoutExtension) {
  EXPECT_EQ(Find("*."), (std::vector<std::string>{"readme", "sub", "z", "\xC3\xA9t\xC3\xA9"}));
  EXPECT_EQ(Find("r*."), (std::vector<std::string>{"readme"}));
}

TEST_F(PosixSystemFindTest, OtherCharactersAreLiteral) {
  EXPECT_EQ(Find("[ab].txt"), (std::vector<std::string>{"[ab].txt"}));
  EXPECT_EQ(Find("a.txt"), (std::vector<std::string>{"a.txt"}));
  EXPECT_EQ(Find("sub"), (std::vector<std::string>{"sub"}));
}

TEST_F(PosixSystemFindTest, NoMatchIsFileNotFoundAndAppendsNothing) {
  std::vector<FindEntry> entries = {{"kept", kAttributeArchive}};
  EXPECT_EQ(Posix().FindFiles(C("*.doc"), &entries), kErrorFileNotFound);
  EXPECT_EQ(Posix().FindFiles(C("a.TXT"), &entries), kErrorFileNotFound);
  EXPECT_EQ(Posix().FindFiles(C(""), &entries), kErrorFileNotFound);
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "kept");
}

TEST_F(PosixSystemFindTest, ResultsAreAppended) {
  std::vector<FindEntry> entries = {{"kept", kAttributeArchive}};
  EXPECT_EQ(Posix().FindFiles(C("*.log"), &entries), kErrorSuccess);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].name, "kept");
  EXPECT_EQ(entries[1].name, "b.log");
  EXPECT_EQ(entries[1].attributes, kAttributeArchive);
}

TEST_F(PosixSystemFindTest, MissingDirectoryIsPathNotFound) {
  uint32_t code = 0;
  EXPECT_EQ(Find("missing/*", &code), std::vector<std::string>{});
  EXPECT_EQ(code, kErrorPathNotFound);
  EXPECT_EQ(Find("a.txt/*", &code), std::vector<std::string>{});
  EXPECT_EQ(code, kErrorPathNotFound);
  EXPECT_EQ(Find("missing/", &code), std::vector<std::string>{});
  EXPECT_EQ(code, kErrorPathNotFound);
}

TEST_F(PosixSystemFindTest, EmptyDirectoryListsDotAndDotDot) {
  EXPECT_EQ(Find("sub/*"), (std::vector<std::string>{".", ".."}));
}

TEST_F(PosixSystemFindTest, PatternWithoutDirectoryListsTheWorkingDirectory) {
  char previous[4096];
  ASSERT_NE(getcwd(previous, sizeof previous), nullptr);
  ASSERT_EQ(chdir(dir_.path().c_str()), 0);
  std::vector<FindEntry> entries;
  uint32_t code = Posix().FindFiles("*.log", &entries);
  ASSERT_EQ(chdir(previous), 0);
  EXPECT_EQ(code, kErrorSuccess);
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_EQ(entries[0].name, "b.log");
}

// ------------------------------------------------------------------ open

TEST_F(PosixSystemFileTest, OpenFileOpensAStreamWithTheMode) {
  std::FILE* file = Posix().OpenFile(C("f.txt"), "w+");
  ASSERT_NE(file, nullptr);
  std::fputs("line 100%\n", file);
  std::fclose(file);
  file = Posix().OpenFile(C("f.txt"), "a+");
  ASSERT_NE(file, nullptr);
  std::fputs("more\n", file);
  std::fclose(file);
  EXPECT_EQ(ReadFile(Path("f.txt")), "line 100%\nmore\n");
}

TEST_F(PosixSystemFileTest, OpenFileIsNullOnFailure) {
  EXPECT_EQ(Posix().OpenFile(C("missing/f.txt"), "w"), nullptr);
  EXPECT_EQ(Posix().OpenFile(C("missing.txt"), "r"), nullptr);
}

}  // namespace
}  // namespace platform
}  // namespace vekzol

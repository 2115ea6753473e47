// File: VEKZOLFileSystemServicesTestSupport.h
// Shared pieces of the file-system services' tests: the peer that reaches
// the private statics and helpers, a platform backend that fakes the
// environment and the clock and makes chosen calls fail, and a fixture that
// gives each test an empty directory of its own below the test program's
// private TEMP. Not installed.
#ifndef VEKZOL_SRC_FILESYSTEM_VEKZOLFILESYSTEMSERVICESTESTSUPPORT_H_
#define VEKZOL_SRC_FILESYSTEM_VEKZOLFILESYSTEMSERVICESTESTSUPPORT_H_

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "platform/System.h"

class VEKZOLFileSystemServicesTestPeer {
 public:
  static CString SessionPath() { return VEKZOLFileSystemServices::_VZOLSessionDataDirPath; }
  static bool SessionDirCreated() { return VEKZOLFileSystemServices::_bSessionDirCreated; }
  static void SetSessionDirCreated(bool created) {
    VEKZOLFileSystemServices::_bSessionDirCreated = created;
  }
  static CString GetErrorMsg(unsigned long code) {
    return VEKZOLFileSystemServices::GetErrorMsg(code);
  }
  static long GenerateName(CString& id, CString& name) {
    return VEKZOLFileSystemServices::GenerateVZOLSessionDataDirectoryName(id, name);
  }
};

namespace vekzol_fs_test {

using Handler = VEKZOLFileSystemServices::ErrorHandler;
using Strings = std::deque<CString>;

// The platform's separator as a string, for building expected paths.
inline std::string Sep() {
  return std::string(1, vekzol::platform::DefaultSystem()->PathSeparator());
}

inline std::string Join(const std::string& directory, const std::string& name) {
  return directory + Sep() + name;
}

// The fixed moment of the fake clock: Saturday 7 November 2026, 09:35:12.
inline std::tm FixedLocalTime() {
  std::tm fixed{};
  fixed.tm_year = 2026 - 1900;
  fixed.tm_mon = 10;
  fixed.tm_mday = 7;
  fixed.tm_hour = 9;
  fixed.tm_min = 35;
  fixed.tm_sec = 12;
  fixed.tm_wday = 6;
  fixed.tm_yday = 310;
  return fixed;
}

// The real backend, with a fake environment, a fixed clock, recorded
// attribute reads and creates, and failures chosen per path.
class FakeSystem : public vekzol::platform::ForwardingSystem {
 public:
  FakeSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}

  bool GetEnv(const char* name, std::string* value) override {
    auto found = env.find(name);
    if (found == env.end()) {
      return false;
    }
    if (value != nullptr) {
      *value = found->second;
    }
    return true;
  }
  bool LocalTime(int64_t, std::tm* out) override {
    if (failLocalTime) {
      return false;
    }
    *out = FixedLocalTime();
    return true;
  }
  std::string FormatTime(const char* format, const std::tm& time, size_t capacity) override {
    formats.emplace_back(format);
    capacities.push_back(capacity);
    return ForwardingSystem::FormatTime(format, time, capacity);
  }
  uint32_t FileAttributes(const char* path, uint32_t* attributes) override {
    attributeReads.emplace_back(path);
    auto forced = attributeFailures.find(path);
    if (forced != attributeFailures.end()) {
      *attributes = vekzol::platform::kInvalidFileAttributes;
      return forced->second;
    }
    auto fake = fakeDirectories.find(path);
    if (fake != fakeDirectories.end()) {
      *attributes = vekzol::platform::kAttributeDirectory;
      return 0;
    }
    return ForwardingSystem::FileAttributes(path, attributes);
  }
  uint32_t MakeDirectory(const char* path) override {
    makes.emplace_back(path);
    auto forced = makeFailures.find(path);
    if (forced != makeFailures.end()) {
      return forced->second;
    }
    return ForwardingSystem::MakeDirectory(path);
  }
  uint32_t RemoveEmptyDirectory(const char* path) override {
    auto forced = removeFailures.find(path);
    if (forced != removeFailures.end()) {
      return forced->second;
    }
    return ForwardingSystem::RemoveEmptyDirectory(path);
  }
  uint32_t DeleteOneFile(const char* path) override {
    auto forced = deleteFailures.find(path);
    if (forced != deleteFailures.end()) {
      return forced->second;
    }
    return ForwardingSystem::DeleteOneFile(path);
  }
  uint32_t CopyOneFile(const char* from, const char* to, bool failIfExists) override {
    auto forced = copyFailures.find(to);
    if (forced != copyFailures.end()) {
      return forced->second;
    }
    return ForwardingSystem::CopyOneFile(from, to, failIfExists);
  }

  std::map<std::string, std::string> env;
  bool failLocalTime = false;
  std::map<std::string, uint32_t> attributeFailures;
  std::map<std::string, bool> fakeDirectories;
  std::map<std::string, uint32_t> makeFailures;
  std::map<std::string, uint32_t> removeFailures;
  std::map<std::string, uint32_t> deleteFailures;
  std::map<std::string, uint32_t> copyFailures;

  std::vector<std::string> attributeReads;
  std::vector<std::string> makes;
  std::vector<std::string> formats;
  std::vector<size_t> capacities;
};

class ScopedSystem {
 public:
  explicit ScopedSystem(vekzol::platform::System* system)
      : previous_(vekzol::platform::SetSystemForTesting(system)) {}
  ~ScopedSystem() { vekzol::platform::SetSystemForTesting(previous_); }
  ScopedSystem(const ScopedSystem&) = delete;
  ScopedSystem& operator=(const ScopedSystem&) = delete;

 private:
  vekzol::platform::System* previous_;
};

// The test program's private directory (VEKZOL_TEST_TEMP, else TEMP).
inline std::string TestTempDir() {
  for (const char* name : {"VEKZOL_TEST_TEMP", "TEMP"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') {
      return value;
    }
  }
  return std::filesystem::temp_directory_path().string();
}

inline void WriteFile(const std::string& path, const std::string& contents) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << contents;
}

inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

inline bool IsDir(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

inline void MakeDir(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(path, error);
}

// The names in `directory`, sorted.
inline std::vector<std::string> Names(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

inline std::vector<std::string> ToStrings(const Strings& list) {
  std::vector<std::string> out;
  for (const CString& s : list) {
    out.emplace_back(s.GetString());
  }
  return out;
}

// A handler with recognisable contents, to show that a call left it alone.
inline Handler UntouchedHandler() {
  Handler handler;
  handler._ErrorCode = 4242;
  handler._ErrorMessage = "before";
  handler._ErrorContext = "before";
  return handler;
}

inline void ExpectUntouched(const Handler& handler) {
  EXPECT_EQ(handler._ErrorCode, 4242u);
  EXPECT_STREQ(handler._ErrorMessage, "before");
  EXPECT_STREQ(handler._ErrorContext, "before");
}

// A fresh, empty directory per test: <TEMP>/<test name>, the session
// statics and the trace log's stamp cleared around it.
class FileSystemTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
    root_ = Join(TestTempDir(), info->name());
    std::error_code error;
    std::filesystem::remove_all(root_, error);
    MakeDir(root_);
    VEKZOLFileSystemServices::Cleanup();
    VEKZOLLog::_CreationTimeStamp.Empty();
  }
  void TearDown() override {
    VEKZOLFileSystemServices::Cleanup();
    VEKZOLLog::_CreationTimeStamp.Empty();
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }
  // A path below the test's directory.
  std::string At(const std::string& relative) const { return Join(root_, relative); }

  std::string root_;
};

}  // namespace vekzol_fs_test

#endif  // VEKZOL_SRC_FILESYSTEM_VEKZOLFILESYSTEMSERVICESTESTSUPPORT_H_

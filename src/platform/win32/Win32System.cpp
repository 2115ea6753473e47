// File: Win32System.cpp
// The Win32 backend of the platform seam: each operation is the Windows
// call that System.h names, and its result goes back as the system gives it
// (GetLastError codes, FILE_ATTRIBUTE_* bits, FormatMessageA texts, the
// runtime's date text). What is settled here:
//
// - Environment: GetEnvironmentVariableA answers 0 both for a variable that
//   is not set and for one that is set to "". The last error tells them
//   apart (ERROR_ENVVAR_NOT_FOUND for the first), so it is cleared before
//   each call.
// - strftime: the runtime formats with the thread's locale, which the host
//   may have changed with setlocale, and this runtime has no strftime that
//   takes a locale. The locale-dependent names (%a, %A, %b, %B, %p) are
//   therefore put into the format as the "C" locale spells them before the
//   runtime sees it; every other directive is the runtime's own.
// - Times: _localtime64_s and _ctime64_s accept 1970-01-01 00:00:00 UTC to
//   3000-12-31 23:59:59 UTC. The range is checked here before the runtime
//   is asked, so that a runtime which checks less (or fails worse) outside
//   it still gives the documented failure.
// - Listings keep the system's order and report "." and ".." as the system
//   does.
// - Copies: CopyFileA truncates an existing target before it writes, and
//   deletes what it wrote when the copy fails, so a disk that fills during
//   an overwriting copy would lose the old file. The copy is therefore
//   written here, to a fresh file beside the target, and only a complete
//   copy is moved onto the target's name (MoveFileExA). CopyFileA's answers are kept: 80 for an
//   existing target without overwrite, 5 for a directory on either side,
//   32 for a copy of a file onto itself.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <clocale>
#include <cstdio>
#include <ctime>
#include <new>
#include <string>
#include <vector>

#include "platform/FaultInjectionTesting.h"
#include "platform/System.h"

namespace vekzol {
namespace platform {

namespace {

// The names of the "C" locale.
constexpr const char* kShortDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr const char* kLongDays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};
constexpr const char* kShortMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr const char* kLongMonths[] = {"January",   "February", "March",    "April",
                                       "May",       "June",     "July",     "August",
                                       "September", "October",  "November", "December"};

// `format` with %a, %A, %b, %B and %p replaced by the "C" locale's texts for
// `time`. False when a name is asked for a weekday or month out of range
// (the runtime would stop the process on such a value).
bool WithCLocaleNames(const char* format, const std::tm& time, std::string* out) {
  const bool dayKnown = time.tm_wday >= 0 && time.tm_wday <= 6;
  const bool monthKnown = time.tm_mon >= 0 && time.tm_mon <= 11;
  for (const char* p = format; *p != '\0'; ++p) {
    if (*p != '%' || p[1] == '\0') {
      out->push_back(*p);
      continue;
    }
    const char directive = *++p;
    switch (directive) {
      case 'a':
      case 'A':
        if (!dayKnown) return false;
        out->append(directive == 'a' ? kShortDays[time.tm_wday] : kLongDays[time.tm_wday]);
        break;
      case 'b':
      case 'B':
        if (!monthKnown) return false;
        out->append(directive == 'b' ? kShortMonths[time.tm_mon] : kLongMonths[time.tm_mon]);
        break;
      case 'p':
        // The runtime refuses hours out of range; so does this.
        if (time.tm_hour < 0 || time.tm_hour > 23) return false;
        out->append(time.tm_hour < 12 ? "AM" : "PM");
        break;
      default:
        // "%%" and every other directive (flags included) stay for the
        // runtime.
        out->push_back('%');
        out->push_back(directive);
        break;
    }
  }
  return true;
}

// 0 when a call that reports by BOOL succeeded, else its last error.
uint32_t CodeOf(BOOL succeeded) {
  return succeeded ? static_cast<uint32_t>(kErrorSuccess) : static_cast<uint32_t>(::GetLastError());
}

// The last second the runtime's time functions accept (_MAX__TIME64_T).
constexpr int64_t kLatestTime = 32535215999;

bool InRuntimeRange(int64_t seconds) { return seconds >= 0 && seconds <= kLatestTime; }

// True when the test seam fails the call at `site`; the last error then
// holds the injected code, as if the call had failed with it.
bool FailedByTest(FaultSite site, const char* path) {
  const uint32_t code = InjectedFault(site, path);
  if (code == kErrorSuccess) return false;
  ::SetLastError(code);
  return true;
}

// The directory that holds the last component of `path`, or "." for a bare
// name; both separators count.
std::string DirectoryPart(const std::string& path) {
  const size_t separator = path.find_last_of("\\/");
  if (separator == std::string::npos) return ".";
  return path.substr(0, separator == 0 ? 1 : separator);
}

// Whether `a` and `b` name the same file (its volume and index).
bool SameFile(const char* a, const char* b) {
  HANDLE first = ::CreateFileA(a, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (first == INVALID_HANDLE_VALUE) return false;
  HANDLE second = ::CreateFileA(b, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  bool same = false;
  if (second != INVALID_HANDLE_VALUE) {
    BY_HANDLE_FILE_INFORMATION one;
    BY_HANDLE_FILE_INFORMATION two;
    same = ::GetFileInformationByHandle(first, &one) &&
           ::GetFileInformationByHandle(second, &two) &&
           one.dwVolumeSerialNumber == two.dwVolumeSerialNumber &&
           one.nFileIndexHigh == two.nFileIndexHigh && one.nFileIndexLow == two.nFileIndexLow;
    ::CloseHandle(second);
  }
  ::CloseHandle(first);
  return same;
}

// Closes a handle on every path out of a scope.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (valid()) ::CloseHandle(handle_);
  }
  bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  // Closes now; 0 or the close's own error.
  uint32_t Close(const char* path) {
    uint32_t code = kErrorSuccess;
    if (FailedByTest(FaultSite::kFinishCopy, path)) code = ::GetLastError();
    if (!::CloseHandle(handle_) && code == kErrorSuccess) code = ::GetLastError();
    handle_ = INVALID_HANDLE_VALUE;
    return code;
  }
  // Closes now, if still open, on a path that has already failed.
  void Discard() {
    if (valid()) ::CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_;
};

// Copies the rest of `source` into `target`; 0 or the failing call's code.
uint32_t CopyContents(HANDLE source, const char* from, HANDLE target, const char* to) {
  std::vector<char> buffer(64 * 1024);
  for (;;) {
    DWORD got = 0;
    if (FailedByTest(FaultSite::kReadCopy, from) ||
        !::ReadFile(source, buffer.data(), static_cast<DWORD>(buffer.size()), &got, nullptr)) {
      return ::GetLastError();
    }
    if (got == 0) return kErrorSuccess;
    for (DWORD done = 0; done < got;) {
      DWORD put = 0;
      if (FailedByTest(FaultSite::kWriteCopy, to) ||
          !::WriteFile(target, buffer.data() + done, got - done, &put, nullptr)) {
        return ::GetLastError();
      }
      done += put;
    }
  }
}

// Copies `from` (attributes `attributes`) to a new file beside `to`, whose
// name goes to `*tempPath`: contents, last write time and attributes, as
// CopyFileA copies them. 0 or the system's code; on failure nothing is left
// behind.
uint32_t WriteTemporaryCopy(const char* from, DWORD attributes, const char* to,
                            std::string* tempPath) {
  Handle source(::CreateFileA(from, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  if (!source.valid()) return ::GetLastError();
  const std::string directory = DirectoryPart(to);
  static unsigned serial = 0;
  std::string candidate;
  HANDLE created = INVALID_HANDLE_VALUE;
  for (int attempt = 0; attempt < 100 && created == INVALID_HANDLE_VALUE; ++attempt) {
    candidate = directory + "\\.vekzol-copy-" + std::to_string(::GetCurrentProcessId()) + "-" +
                std::to_string(++serial) + ".tmp";
    if (FailedByTest(FaultSite::kCreateCopy, directory.c_str())) return ::GetLastError();
    created = ::CreateFileA(candidate.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
    if (created == INVALID_HANDLE_VALUE && ::GetLastError() != ERROR_FILE_EXISTS &&
        ::GetLastError() != ERROR_ALREADY_EXISTS) {
      return ::GetLastError();
    }
  }
  if (created == INVALID_HANDLE_VALUE) return ERROR_FILE_EXISTS;
  Handle temp(created);
  uint32_t code = CopyContents(source.get(), from, temp.get(), candidate.c_str());
  if (code == kErrorSuccess) {
    FILETIME lastWrite;
    if (::GetFileTime(source.get(), nullptr, nullptr, &lastWrite)) {
      ::SetFileTime(temp.get(), nullptr, nullptr, &lastWrite);
    }
    code = temp.Close(candidate.c_str());
  }
  if (code == kErrorSuccess) {
    const DWORD kept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                       FILE_ATTRIBUTE_ARCHIVE;
    if ((attributes & kept) != 0) ::SetFileAttributesA(candidate.c_str(), attributes & kept);
    *tempPath = candidate;
    return kErrorSuccess;
  }
  temp.Discard();
  ::DeleteFileA(candidate.c_str());
  return code;
}

uint64_t In100ns(const FILETIME& time) {
  return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

class Win32System : public System {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    if (name == nullptr) return false;
    std::vector<char> buffer(256);
    for (;;) {
      ::SetLastError(ERROR_SUCCESS);
      const DWORD length =
          ::GetEnvironmentVariableA(name, buffer.data(), static_cast<DWORD>(buffer.size()));
      if (length == 0) {
        if (::GetLastError() == ERROR_ENVVAR_NOT_FOUND) return false;
        if (value != nullptr) value->clear();
        return true;
      }
      if (length < buffer.size()) {
        if (value != nullptr) value->assign(buffer.data(), length);
        return true;
      }
      // Too small: `length` is the size needed, NUL included. The value
      // may change between the calls, so the loop asks again.
      buffer.resize(length);
    }
  }

  uint32_t TickCountMs() override { return static_cast<uint32_t>(::GetTickCount()); }

  bool ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) override {
    if (kernel100ns == nullptr || user100ns == nullptr) return false;
    FILETIME creation;
    FILETIME exit;
    FILETIME kernel;
    FILETIME user;
    if (!::GetProcessTimes(::GetCurrentProcess(), &creation, &exit, &kernel, &user)) {
      return false;
    }
    *kernel100ns = In100ns(kernel);
    *user100ns = In100ns(user);
    return true;
  }

  int64_t Now() override { return static_cast<int64_t>(::_time64(nullptr)); }

  bool LocalTime(int64_t seconds, std::tm* out) override {
    if (out == nullptr || !InRuntimeRange(seconds)) return false;
    const __time64_t value = static_cast<__time64_t>(seconds);
    std::tm result;
    if (::_localtime64_s(&result, &value) != 0) return false;
    *out = result;
    return true;
  }

  std::string DateText(int64_t seconds) override {
    if (!InRuntimeRange(seconds)) return std::string();
    const __time64_t value = static_cast<__time64_t>(seconds);
    char buffer[1024] = {0};
    if (::_ctime64_s(buffer, sizeof buffer, &value) != 0) return std::string();
    return std::string(buffer);
  }

  std::string FormatTime(const char* format, const std::tm& time, size_t capacity) override {
    if (format == nullptr || capacity == 0) return std::string();
    std::string cFormat;
    if (!WithCLocaleNames(format, time, &cFormat)) return std::string();
    std::vector<char> text(capacity, '\0');
    const size_t length = std::strftime(text.data(), capacity, cFormat.c_str(), &time);
    return std::string(text.data(), length);
  }

  uint32_t FileAttributes(const char* path, uint32_t* attributes) override {
    uint32_t found = kInvalidFileAttributes;
    uint32_t code = kErrorSuccess;
    if (path == nullptr) {
      code = kErrorInvalidParameter;
    } else {
      found = ::GetFileAttributesA(path);
      if (found == INVALID_FILE_ATTRIBUTES) code = ::GetLastError();
    }
    if (attributes != nullptr) *attributes = found;
    return code;
  }

  uint32_t MakeDirectory(const char* path) override {
    if (path == nullptr) return kErrorInvalidParameter;
    return CodeOf(::CreateDirectoryA(path, nullptr));
  }

  uint32_t RemoveEmptyDirectory(const char* path) override {
    if (path == nullptr) return kErrorInvalidParameter;
    return CodeOf(::RemoveDirectoryA(path));
  }

  uint32_t CopyOneFile(const char* from, const char* to, bool failIfExists) override {
    if (from == nullptr || to == nullptr) return kErrorInvalidParameter;
    const DWORD sourceAttributes = ::GetFileAttributesA(from);
    if (sourceAttributes == INVALID_FILE_ATTRIBUTES) return ::GetLastError();
    if ((sourceAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ERROR_ACCESS_DENIED;
    const DWORD targetAttributes = ::GetFileAttributesA(to);
    if (targetAttributes != INVALID_FILE_ATTRIBUTES) {
      if (failIfExists) return ERROR_FILE_EXISTS;
      if ((targetAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return ERROR_ACCESS_DENIED;
      if ((targetAttributes & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN)) != 0) {
        return ERROR_ACCESS_DENIED;
      }
      if (SameFile(from, to)) return ERROR_SHARING_VIOLATION;
    }
    std::string tempPath;
    const uint32_t code = WriteTemporaryCopy(from, sourceAttributes, to, &tempPath);
    if (code != kErrorSuccess) return code;
    // Without overwrite the move refuses a name that has appeared since the
    // test above, as CopyFileA refuses it.
    const DWORD flags = failIfExists ? 0 : MOVEFILE_REPLACE_EXISTING;
    if (!FailedByTest(FaultSite::kPublishCopy, to) && ::MoveFileExA(tempPath.c_str(), to, flags)) {
      return kErrorSuccess;
    }
    DWORD failure = ::GetLastError();
    if (failIfExists && failure == ERROR_ALREADY_EXISTS) failure = ERROR_FILE_EXISTS;
    // The copy carries the source's attributes, read-only among them.
    ::SetFileAttributesA(tempPath.c_str(), FILE_ATTRIBUTE_NORMAL);
    ::DeleteFileA(tempPath.c_str());
    return failure;
  }

  uint32_t MoveOneFile(const char* from, const char* to) override {
    if (from == nullptr || to == nullptr) return kErrorInvalidParameter;
    if (FailedByTest(FaultSite::kRename, to)) return ::GetLastError();
    return CodeOf(::MoveFileA(from, to));
  }

  uint32_t DeleteOneFile(const char* path) override {
    if (path == nullptr) return kErrorInvalidParameter;
    return CodeOf(::DeleteFileA(path));
  }

  uint32_t FindFiles(const char* pattern, std::vector<FindEntry>* entries) override {
    if (pattern == nullptr || entries == nullptr) return kErrorInvalidParameter;
    WIN32_FIND_DATAA data;
    HANDLE find = ::FindFirstFileA(pattern, &data);
    if (find == INVALID_HANDLE_VALUE) return ::GetLastError();
    uint32_t code = kErrorSuccess;
    try {
      do {
        FindEntry entry;
        entry.name = data.cFileName;
        entry.attributes = data.dwFileAttributes;
        entries->push_back(entry);
      } while (::FindNextFileA(find, &data));
      const DWORD last = ::GetLastError();
      if (last != ERROR_NO_MORE_FILES) code = last;
    } catch (...) {
      ::FindClose(find);
      throw;
    }
    ::FindClose(find);
    return code;
  }

  std::FILE* OpenFile(const char* path, const char* mode) override {
    if (path == nullptr || mode == nullptr) return nullptr;
    std::FILE* stream = nullptr;
    if (::fopen_s(&stream, path, mode) != 0) return nullptr;
    return stream;
  }

  std::string ErrorText(uint32_t code) override {
    char* buffer = nullptr;
    const DWORD length = ::FormatMessageA(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, MAKELANGID(LANG_NEUTRAL, SUBLANG_DEFAULT), reinterpret_cast<LPSTR>(&buffer),
        0, nullptr);
    std::string text;
    if (length != 0 && buffer != nullptr) {
      try {
        text.assign(buffer, length);
      } catch (...) {
        ::LocalFree(buffer);
        throw;
      }
    }
    if (buffer != nullptr) ::LocalFree(buffer);
    return text;
  }

  bool UserDecimalSeparator(std::string* separator) override {
    // LOCALE_SDECIMAL holds at most three characters and the NUL.
    char buffer[16] = {0};
    const int length = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buffer,
                                        static_cast<int>(sizeof buffer));
    if (length <= 1) return false;
    if (separator != nullptr) separator->assign(buffer, static_cast<size_t>(length - 1));
    return true;
  }

  bool SetNumericLocale(const char* name, std::string* current) override {
    const char* result = std::setlocale(LC_NUMERIC, name);
    if (result == nullptr) return false;
    if (current != nullptr) *current = result;
    return true;
  }

  char PathSeparator() override { return '\\'; }
};

}  // namespace

System* DefaultSystem() {
  // Made on first use and never destroyed, so that static objects of other
  // translation units may use it in their constructors and destructors.
  alignas(Win32System) static unsigned char storage[sizeof(Win32System)];
  static Win32System* const instance = new (storage) Win32System();
  return instance;
}

}  // namespace platform
}  // namespace vekzol

// File: System.h
// The library's one seam to the operating system. Every subsystem asks the
// operating system for something through `vekzol::platform::Sys()` (or the
// pure text functions of MbString.h and TextConversion.h) and never calls
// POSIX or Win32 itself. One backend per platform implements `System`:
// src/platform/posix/ and src/platform/win32/, chosen by CMake.
//
// Conventions of the interface:
// - Results speak the Windows vocabulary on every platform: file operations
//   return a Windows system error code (0 for success, 2 file not found,
//   3 path not found, 5 access denied, 80 file exists, 183 already exists,
//   145 directory not empty, ...), attributes are FILE_ATTRIBUTE_* bits,
//   times are milliseconds and 100-nanosecond units.
// - Paths and texts are narrow strings in the narrow code page (UTF-8 on
//   POSIX), passed as data: nothing here treats '%' specially.
// - Tests replace the backend with SetSystemForTesting, usually with a
//   ForwardingSystem that overrides the one call to make fail.
// - Method names avoid the names that <windows.h> turns into macros
//   (CreateDirectory, CopyFile, ...), so the Win32 backend can include it.
// - Not synchronised, like the rest of the library.
#ifndef VEKZOL_SRC_PLATFORM_SYSTEM_H_
#define VEKZOL_SRC_PLATFORM_SYSTEM_H_

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace vekzol {
namespace platform {

// Windows system error codes that the library tests for by number.
enum SystemError : uint32_t {
  kErrorSuccess = 0,
  kErrorInvalidFunction = 1,
  kErrorFileNotFound = 2,
  kErrorPathNotFound = 3,
  kErrorTooManyOpenFiles = 4,
  kErrorAccessDenied = 5,
  kErrorNotEnoughMemory = 8,
  kErrorNotSameDevice = 17,
  kErrorWriteFault = 29,
  kErrorSharingViolation = 32,
  kErrorHandleDiskFull = 39,
  kErrorNotSupported = 50,
  kErrorFileExists = 80,
  kErrorInvalidParameter = 87,
  kErrorDiskFull = 112,
  kErrorInvalidName = 123,
  kErrorDirNotEmpty = 145,
  kErrorBusy = 170,
  kErrorAlreadyExists = 183,
  kErrorFilenameExcedRange = 206,
  kErrorDirectory = 267,
};

// FILE_ATTRIBUTE_* bits and INVALID_FILE_ATTRIBUTES.
constexpr uint32_t kAttributeReadOnly = 0x1;
constexpr uint32_t kAttributeHidden = 0x2;
constexpr uint32_t kAttributeDirectory = 0x10;
constexpr uint32_t kAttributeArchive = 0x20;
constexpr uint32_t kAttributeNormal = 0x80;
constexpr uint32_t kInvalidFileAttributes = 0xFFFFFFFFu;

// One entry of a directory listing, as FindFirstFileA/FindNextFileA give
// it: the bare name (no directory part) and its attributes.
struct FindEntry {
  std::string name;
  uint32_t attributes = 0;
};

class System {
 public:
  virtual ~System();

  // Environment (GetEnvironmentVariableA). False when the variable is not
  // set; an empty value is set and gives true with "".
  virtual bool GetEnv(const char* name, std::string* value) = 0;

  // Clock and process times.
  // Milliseconds from a monotonic clock, wrapping at 2^32 (GetTickCount).
  virtual uint32_t TickCountMs() = 0;
  // Kernel and user processor time of this process in 100-nanosecond
  // units (GetProcessTimes). False when the system cannot tell.
  virtual bool ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) = 0;
  // Seconds since the epoch (_time64).
  virtual int64_t Now() = 0;
  // Local broken-down time of `seconds` (_localtime64_s). False on failure,
  // and for times the Windows runtime refuses: before 1970 or after 3000.
  virtual bool LocalTime(int64_t seconds, std::tm* out) = 0;
  // The runtime's date text of `seconds` (_ctime64_s): English weekday and
  // month, day of month as two digits, time, year and a newline:
  // "Sat Nov 07 09:35:12 2026\n". Empty on failure.
  virtual std::string DateText(int64_t seconds) = 0;
  // strftime of `format` under the "C" locale whatever the global locale:
  // English names. Empty when the text does not fit `capacity` bytes with
  // its NUL (as strftime reports 0).
  virtual std::string FormatTime(const char* format, const std::tm& time,
                                 size_t capacity) = 0;

  // Files and directories. Each returns 0 or the Windows error code.
  // Attributes of `path` (GetFileAttributesA); on failure `*attributes` is
  // kInvalidFileAttributes.
  virtual uint32_t FileAttributes(const char* path, uint32_t* attributes) = 0;
  // One level, default permissions (CreateDirectoryA).
  virtual uint32_t MakeDirectory(const char* path) = 0;
  // An empty directory (RemoveDirectoryA).
  virtual uint32_t RemoveEmptyDirectory(const char* path) = 0;
  // Contents, mode and modification time; with `failIfExists` an existing
  // target gives 80. A partial copy never stands under the target name
  // (CopyFileA).
  virtual uint32_t CopyOneFile(const char* from, const char* to, bool failIfExists) = 0;
  // A file or directory to a new name; an existing target gives 183
  // (MoveFileA).
  virtual uint32_t MoveOneFile(const char* from, const char* to) = 0;
  // A file, not a directory (DeleteFileA).
  virtual uint32_t DeleteOneFile(const char* path) = 0;
  // The entries that match the last component of `pattern`, with '*' and
  // '?' as Windows has them, "." and ".." included where the directory
  // listing has them (FindFirstFileA/FindNextFileA/FindClose). No match
  // gives 2, a missing directory 3; `entries` is appended to.
  virtual uint32_t FindFiles(const char* pattern, std::vector<FindEntry>* entries) = 0;
  // Opens a stream as fopen_s does; null on failure.
  virtual std::FILE* OpenFile(const char* path, const char* mode) = 0;

  // The system's message text for a Windows error code (FormatMessageA
  // with FORMAT_MESSAGE_FROM_SYSTEM), as the system gives it, line end
  // included. Empty when the system has no text.
  virtual std::string ErrorText(uint32_t code) = 0;

  // The user's decimal separator (GetLocaleInfoA with LOCALE_USER_DEFAULT
  // and LOCALE_SDECIMAL; LC_NUMERIC of the environment on POSIX), asked
  // without changing the process's locale. False when it cannot be told.
  virtual bool UserDecimalSeparator(std::string* separator) = 0;

  // The numeric category of the C runtime's locale, as setlocale with
  // LC_NUMERIC handles it: a null `name` only asks, any other name switches
  // the process's numeric locale to it ("C", "" for the user's settings, a
  // name the runtime gave before). True with the name of the locale then
  // in force in `*current` (when not null); false when the runtime refuses
  // the name, which leaves the locale as it was. Process-wide: every thread
  // sees the switch.
  virtual bool SetNumericLocale(const char* name, std::string* current) = 0;

  // The separator that joins a directory and a name: '\\' on Windows, '/'
  // elsewhere.
  virtual char PathSeparator() = 0;
};

// The backend in use: the platform's own unless a test has set another.
System& Sys();

// Makes `system` the backend in use and returns the one it replaces; null
// restores the platform's own. For tests only.
System* SetSystemForTesting(System* system);

// A System that passes every call to another one, so that a test overrides
// only the calls it wants to fail.
class ForwardingSystem : public System {
 public:
  explicit ForwardingSystem(System* target) : target_(target) {}

  bool GetEnv(const char* name, std::string* value) override;
  uint32_t TickCountMs() override;
  bool ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) override;
  int64_t Now() override;
  bool LocalTime(int64_t seconds, std::tm* out) override;
  std::string DateText(int64_t seconds) override;
  std::string FormatTime(const char* format, const std::tm& time, size_t capacity) override;
  uint32_t FileAttributes(const char* path, uint32_t* attributes) override;
  uint32_t MakeDirectory(const char* path) override;
  uint32_t RemoveEmptyDirectory(const char* path) override;
  uint32_t CopyOneFile(const char* from, const char* to, bool failIfExists) override;
  uint32_t MoveOneFile(const char* from, const char* to) override;
  uint32_t DeleteOneFile(const char* path) override;
  uint32_t FindFiles(const char* pattern, std::vector<FindEntry>* entries) override;
  std::FILE* OpenFile(const char* path, const char* mode) override;
  std::string ErrorText(uint32_t code) override;
  bool UserDecimalSeparator(std::string* separator) override;
  bool SetNumericLocale(const char* name, std::string* current) override;
  char PathSeparator() override;

 private:
  System* target_;
};

// The platform's own backend (defined by the backend's source file).
System* DefaultSystem();

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_SYSTEM_H_

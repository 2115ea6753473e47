// File: PosixSystem.cpp
// The POSIX backend of the platform seam. It answers in the Windows
// vocabulary that System.h fixes: Windows error codes, FILE_ATTRIBUTE_* bits,
// the runtime's date text, so that the rest of the library reads the same on
// every platform.
//
// errno to Windows code. One table serves both directions: a failing call
// takes the first row with its errno, ErrorText takes the first row with the
// code. Some rows therefore only serve one direction.
//
//   errno          code  Windows name                 notes
//   0                 0  ERROR_SUCCESS
//   ENOENT            2  ERROR_FILE_NOT_FOUND         3 instead when the
//   ENOENT            3  ERROR_PATH_NOT_FOUND           directory that should
//                                                       hold the name is missing
//   ENOTDIR           3  ERROR_PATH_NOT_FOUND         a file on the way
//   ENOTDIR         267  ERROR_DIRECTORY              RemoveEmptyDirectory of a
//                                                       file
//   EACCES, EPERM     5  ERROR_ACCESS_DENIED
//   EISDIR            5  ERROR_ACCESS_DENIED          DeleteOneFile of a
//                                                       directory, copy onto one
//   EROFS            19  ERROR_WRITE_PROTECT
//   EEXIST          183  ERROR_ALREADY_EXISTS         MakeDirectory, MoveOneFile
//   EEXIST           80  ERROR_FILE_EXISTS            CopyOneFile without
//                                                       overwrite
//   ENOTEMPTY       145  ERROR_DIR_NOT_EMPTY          also EEXIST from rmdir
//   ENOSPC, EDQUOT  112  ERROR_DISK_FULL
//   ENOSPC           39  ERROR_HANDLE_DISK_FULL       text only
//   ENAMETOOLONG    206  ERROR_FILENAME_EXCED_RANGE
//   EBUSY           170  ERROR_BUSY
//   ETXTBSY          32  ERROR_SHARING_VIOLATION      also a copy onto itself
//   EXDEV            17  ERROR_NOT_SAME_DEVICE        moving a directory across
//                                                       file systems
//   EMFILE, ENFILE    4  ERROR_TOO_MANY_OPEN_FILES
//   ENOMEM            8  ERROR_NOT_ENOUGH_MEMORY
//   EINVAL           87  ERROR_INVALID_PARAMETER
//   EINVAL          123  ERROR_INVALID_NAME           text only
//   EIO              29  ERROR_WRITE_FAULT
//   EIO              31  ERROR_GEN_FAILURE            any errno not listed here
//   EFBIG           223  ERROR_FILE_TOO_LARGE
//   ELOOP          1921  ERROR_CANT_RESOLVE_FILENAME
//   EOPNOTSUPP       50  ERROR_NOT_SUPPORTED
//   ENOSYS            1  ERROR_INVALID_FUNCTION
//   EBADF             6  ERROR_INVALID_HANDLE
// A code without a row has no text: ErrorText gives "".
//
// Attributes. A directory is DIRECTORY; anything else is a file and carries
// ARCHIVE, the bit every newly written Windows file has, so NORMAL is never
// reported. No write bit for the owner adds READONLY (a read-only file is
// READONLY|ARCHIVE, as Windows shows it). HIDDEN is never set: a leading dot
// is a naming habit of listings, not an attribute, and "." and ".." would
// otherwise turn hidden too. Symbolic links are followed.
//
// Replacing and deleting. Whether a file may be replaced or deleted is left
// to POSIX permissions (those of its directory): the READONLY bit does not
// refuse DeleteOneFile or an overwriting CopyOneFile as Windows would.
// MoveOneFile looks for an existing target before it renames; the library is
// single-threaded, so only another process could slip in between.
//
// Listings. Names come sorted by unsigned bytes, so results do not depend on
// the file system's order. "." and ".." are reported as readdir gives them.
#include <dirent.h>
#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "platform/FaultInjectionTesting.h"
#include "platform/System.h"

namespace vekzol {
namespace platform {

namespace {

// Windows codes this backend reports but the library never tests for.
constexpr uint32_t kErrorInvalidHandle = 6;
constexpr uint32_t kErrorWriteProtect = 19;
constexpr uint32_t kErrorGenFailure = 31;
constexpr uint32_t kErrorFileTooLarge = 223;
constexpr uint32_t kErrorCantResolveFilename = 1921;

struct ErrnoAndCode {
  int err;
  uint32_t code;
};

// See the table at the top of the file; order matters.
constexpr ErrnoAndCode kErrnoCodes[] = {
    {0, kErrorSuccess},
    {ENOENT, kErrorFileNotFound},
    {ENOENT, kErrorPathNotFound},
    {ENOTDIR, kErrorPathNotFound},
    {ENOTDIR, kErrorDirectory},
    {EACCES, kErrorAccessDenied},
    {EPERM, kErrorAccessDenied},
    {EISDIR, kErrorAccessDenied},
    {EROFS, kErrorWriteProtect},
    {EEXIST, kErrorAlreadyExists},
    {EEXIST, kErrorFileExists},
    {ENOTEMPTY, kErrorDirNotEmpty},
    {ENOSPC, kErrorDiskFull},
    {EDQUOT, kErrorDiskFull},
    {ENOSPC, kErrorHandleDiskFull},
    {ENAMETOOLONG, kErrorFilenameExcedRange},
    {EBUSY, kErrorBusy},
    {ETXTBSY, kErrorSharingViolation},
    {EXDEV, kErrorNotSameDevice},
    {EMFILE, kErrorTooManyOpenFiles},
    {ENFILE, kErrorTooManyOpenFiles},
    {ENOMEM, kErrorNotEnoughMemory},
    {EINVAL, kErrorInvalidParameter},
    {EINVAL, kErrorInvalidName},
    {EIO, kErrorWriteFault},
    {EIO, kErrorGenFailure},
    {EFBIG, kErrorFileTooLarge},
    {ELOOP, kErrorCantResolveFilename},
    {EOPNOTSUPP, kErrorNotSupported},
    {ENOTSUP, kErrorNotSupported},
    {ENOSYS, kErrorInvalidFunction},
    {EBADF, kErrorInvalidHandle},
};

uint32_t CodeOfErrno(int err) {
  for (const ErrnoAndCode& row : kErrnoCodes) {
    if (row.err == err) return row.code;
  }
  return kErrorGenFailure;
}

bool ErrnoOfCode(uint32_t code, int* err) {
  for (const ErrnoAndCode& row : kErrnoCodes) {
    if (row.code == code) {
      *err = row.err;
      return true;
    }
  }
  return false;
}

// The directory that holds the last component of `path`: "." for a bare
// name, "/" for a name in the root.
std::string DirectoryPart(const std::string& path) {
  size_t end = path.find_last_not_of('/');
  if (end == std::string::npos) return "/";
  size_t slash = path.rfind('/', end);
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool IsDirectory(const std::string& path) {
  struct stat st;
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

// ENOENT means "file not found" when only the last component is missing,
// "path not found" when the directory on the way is. Windows also calls an
// empty path a missing path.
uint32_t MissingCode(const char* path) {
  std::string text(path);
  if (text.empty() || !IsDirectory(DirectoryPart(text))) return kErrorPathNotFound;
  return kErrorFileNotFound;
}

// The code of a failed call on `path`, with the errno values whose meaning
// depends on the path settled here; call sites settle the rest.
uint32_t CodeOf(int err, const char* path) {
  if (err == ENOENT) return MissingCode(path);
  if (err == ENOTDIR) return kErrorPathNotFound;
  return CodeOfErrno(err);
}

uint32_t AttributesOf(const struct stat& st) {
  uint32_t attributes = S_ISDIR(st.st_mode) ? kAttributeDirectory : kAttributeArchive;
  if ((st.st_mode & S_IWUSR) == 0) attributes |= kAttributeReadOnly;
  return attributes;
}

// strerror_r is the XSI one (int) or the GNU one (char*) depending on the C
// library; these pick the text out of either.
[[maybe_unused]] const char* StrerrorText(int result, const char* buffer) {
  return result == 0 ? buffer : nullptr;
}
[[maybe_unused]] const char* StrerrorText(const char* result, const char*) { return result; }

// True when the test seam fails the call at `site`; errno then holds the
// injected error, as if the call had failed with it.
bool FailedByTest(FaultSite site, const char* path) {
  const uint32_t code = InjectedFault(site, path);
  if (code == kErrorSuccess) return false;
  int err = EIO;
  ErrnoOfCode(code, &err);
  errno = err;
  return true;
}

// Closes a descriptor on every path out of a scope.
class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }
  // Closes now and reports the close's own failure (delayed write errors
  // show up here on some file systems); 0 or an errno.
  int Close(const char* path) {
    int result = 0;
    if (FailedByTest(FaultSite::kFinishCopy, path)) {
      result = errno;
      ::close(fd_);
    } else if (::close(fd_) != 0) {
      result = errno;
    }
    fd_ = -1;
    return result;
  }

 private:
  int fd_;
};

// Copies the rest of `from` into `to`; 0 or an errno, and which side failed.
// The errno is taken as the failing call left it.
int CopyContents(int from, const char* fromPath, int to, const char* toPath, bool* readFailed) {
  std::vector<char> buffer(64 * 1024);
  for (;;) {
    ssize_t got = FailedByTest(FaultSite::kReadCopy, fromPath)
                      ? -1
                      : ::read(from, buffer.data(), buffer.size());
    if (got < 0) {
      if (errno == EINTR) continue;
      *readFailed = true;
      return errno;
    }
    if (got == 0) return 0;
    for (ssize_t done = 0; done < got;) {
      ssize_t put = FailedByTest(FaultSite::kWriteCopy, toPath)
                        ? -1
                        : ::write(to, buffer.data() + done, static_cast<size_t>(got - done));
      if (put < 0) {
        if (errno == EINTR) continue;
        *readFailed = false;
        return errno;
      }
      done += put;
    }
  }
}

// Writes the copy of `source` to a fresh temporary file in `directory` and
// returns its path in `*tempPath`; 0 or a Windows code. On failure nothing
// is left behind.
uint32_t WriteTemporaryCopy(int source, const struct stat& sourceStat, const char* from,
                            const std::string& directory, std::string* tempPath) {
  std::string pattern = directory + "/.vekzol-copy-XXXXXX";
  Descriptor temp(FailedByTest(FaultSite::kCreateCopy, directory.c_str()) ? -1
                                                                          : ::mkstemp(&pattern[0]));
  if (temp.get() < 0) return CodeOf(errno, directory.c_str());
  bool readFailed = false;
  int err = CopyContents(source, from, temp.get(), pattern.c_str(), &readFailed);
  if (err == 0) {
    // Mode and time are carried over where the file system keeps them; a
    // file system without modes still gets its copy.
    (void)::fchmod(temp.get(), sourceStat.st_mode & 0777);
    struct timespec times[2];
    times[0].tv_sec = 0;
    times[0].tv_nsec = UTIME_OMIT;
    times[1] = sourceStat.st_mtim;
    (void)::futimens(temp.get(), times);
    err = temp.Close(pattern.c_str());
  }
  if (err != 0) {
    ::unlink(pattern.c_str());
    return readFailed ? CodeOf(err, from) : CodeOfErrno(err);
  }
  *tempPath = pattern;
  return kErrorSuccess;
}

// Gives the finished copy its final name. Without overwrite the name must
// not exist at that moment: link() fails on an existing name where rename()
// would replace it; file systems without hard links fall back to a check.
uint32_t PublishCopy(const std::string& tempPath, const char* to, bool failIfExists) {
  uint32_t code = kErrorSuccess;
  if (failIfExists) {
    if (FailedByTest(FaultSite::kPublishCopy, to) || ::link(tempPath.c_str(), to) != 0) {
      int err = errno;
      struct stat st;
      bool noHardLinks =
          err == EPERM || err == EOPNOTSUPP || err == ENOTSUP || err == EMLINK || err == ENOSYS;
      if (err == EEXIST || (noHardLinks && ::lstat(to, &st) == 0)) {
        code = kErrorFileExists;
      } else if (noHardLinks) {
        if (FailedByTest(FaultSite::kPublishCopy, to) || ::rename(tempPath.c_str(), to) != 0) {
          code = CodeOf(errno, to);
        }
      } else {
        code = CodeOf(err, to);
      }
    }
  } else if (FailedByTest(FaultSite::kPublishCopy, to) || ::rename(tempPath.c_str(), to) != 0) {
    code = CodeOf(errno, to);
  }
  ::unlink(tempPath.c_str());
  return code;
}

// The last component of a listing pattern, matched as FindFirstFileA does.
// Windows rewrites the pattern before matching, for the sake of old 8.3
// names, and this keeps those rules:
// - "*" and "*.*" match every name, "." and ".." included;
// - '?' matches one character, but none at a '.' or at the end of the name,
//   so "a?.txt" matches "a.txt" and "a??" matches "a";
// - a '.' before '?' or '*' matches a '.' or the end of the name, so
//   "readme.*" matches "readme";
// - a final "*." matches any run that does not hold the name's last '.',
//   that is names without an extension.
// Every other character matches itself, case-sensitively.
class WildcardPattern {
 public:
  explicit WildcardPattern(const std::string& pattern) {
    if (pattern == "*" || pattern == "*.*") {
      tokens_.push_back({Kind::kStar, '*'});
      return;
    }
    for (size_t i = 0; i < pattern.size(); ++i) {
      char c = pattern[i];
      bool last = i + 1 == pattern.size();
      if (c == '?') {
        tokens_.push_back({Kind::kOneOrEnd, c});
      } else if (c == '*') {
        tokens_.push_back({Kind::kStar, c});
      } else if (c == '.' && last && i > 0 && pattern[i - 1] == '*') {
        tokens_.back().kind = Kind::kStarBeforeLastDot;
      } else if (c == '.' && !last && (pattern[i + 1] == '?' || pattern[i + 1] == '*')) {
        tokens_.push_back({Kind::kDotOrEnd, c});
      } else {
        tokens_.push_back({Kind::kLiteral, c});
      }
    }
  }

  // An empty pattern matches nothing.
  bool Matches(const std::string& name) const {
    if (tokens_.empty()) return false;
    const size_t count = tokens_.size();
    const size_t length = name.size();
    const size_t lastDot = name.rfind('.');
    // matched[t][n]: tokens from t on match the name from n on. Filled
    // backwards, so each cell reads only cells already known.
    std::vector<std::vector<char>> matched(count + 1, std::vector<char>(length + 1, 0));
    matched[count][length] = 1;
    for (size_t t = count; t-- > 0;) {
      const Token& token = tokens_[t];
      for (size_t n = length + 1; n-- > 0;) {
        bool atEnd = n == length;
        bool result = false;
        switch (token.kind) {
          case Kind::kLiteral:
            result = !atEnd && name[n] == token.c && matched[t + 1][n + 1];
            break;
          case Kind::kStar:
            result = matched[t + 1][n] || (!atEnd && matched[t][n + 1]);
            break;
          case Kind::kStarBeforeLastDot:
            result = matched[t + 1][n] || (!atEnd && n != lastDot && matched[t][n + 1]);
            break;
          case Kind::kOneOrEnd:
            result = (atEnd || name[n] == '.') ? matched[t + 1][n] : matched[t + 1][n + 1];
            break;
          case Kind::kDotOrEnd:
            result = atEnd ? matched[t + 1][n] : (name[n] == '.' && matched[t + 1][n + 1]);
            break;
        }
        matched[t][n] = result ? 1 : 0;
      }
    }
    return matched[0][0] != 0;
  }

 private:
  enum class Kind { kLiteral, kStar, kStarBeforeLastDot, kOneOrEnd, kDotOrEnd };
  struct Token {
    Kind kind;
    char c;
  };
  std::vector<Token> tokens_;
};

// "C" locale object for formatting, made on first use and kept.
locale_t CLocale() {
  static locale_t c = ::newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
  return c;
}

// The range _localtime64_s and _ctime64_s accept: 1970-01-01 00:00:00 UTC to
// 3000-12-31 23:59:59 UTC. Refusing what lies outside keeps both backends
// failing on the same values.
constexpr int64_t kLatestTime = 32535215999;

class PosixSystem : public System {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    const char* found = name != nullptr ? std::getenv(name) : nullptr;
    if (found == nullptr) return false;
    if (value != nullptr) *value = found;
    return true;
  }

  uint32_t TickCountMs() override {
    struct timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    uint64_t ms =
        static_cast<uint64_t>(now.tv_sec) * 1000u + static_cast<uint64_t>(now.tv_nsec) / 1000000u;
    return static_cast<uint32_t>(ms);
  }

  bool ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) override {
    struct rusage usage;
    if (kernel100ns == nullptr || user100ns == nullptr) return false;
    if (::getrusage(RUSAGE_SELF, &usage) != 0) return false;
    *kernel100ns = In100ns(usage.ru_stime);
    *user100ns = In100ns(usage.ru_utime);
    return true;
  }

  int64_t Now() override { return static_cast<int64_t>(std::time(nullptr)); }

  bool LocalTime(int64_t seconds, std::tm* out) override {
    if (out == nullptr || seconds < 0 || seconds > kLatestTime) return false;
    time_t value = static_cast<time_t>(seconds);
    if (static_cast<int64_t>(value) != seconds) return false;
    // localtime_r need not look at TZ again; tzset makes a changed TZ count,
    // as localtime does.
    ::tzset();
    std::tm result;
    if (::localtime_r(&value, &result) == nullptr) return false;
    *out = result;
    return true;
  }

  std::string DateText(int64_t seconds) override {
    static const char* const kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* const kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                          "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm t;
    if (!LocalTime(seconds, &t)) return std::string();
    if (t.tm_wday < 0 || t.tm_wday > 6 || t.tm_mon < 0 || t.tm_mon > 11) return std::string();
    char text[64];
    int length = std::snprintf(text, sizeof text, "%s %s %02d %02d:%02d:%02d %d\n",
                               kDays[t.tm_wday], kMonths[t.tm_mon], t.tm_mday, t.tm_hour, t.tm_min,
                               t.tm_sec, t.tm_year + 1900);
    if (length < 0 || static_cast<size_t>(length) >= sizeof text) return std::string();
    return std::string(text, static_cast<size_t>(length));
  }

  std::string FormatTime(const char* format, const std::tm& time, size_t capacity) override {
    locale_t c = CLocale();
    if (format == nullptr || capacity == 0 || c == static_cast<locale_t>(0)) return std::string();
    std::string text(capacity, '\0');
    size_t length = ::strftime_l(&text[0], capacity, format, &time, c);
    text.resize(length);
    return text;
  }

  uint32_t FileAttributes(const char* path, uint32_t* attributes) override {
    uint32_t found = kInvalidFileAttributes;
    uint32_t code = kErrorSuccess;
    struct stat st;
    if (path == nullptr) {
      code = kErrorInvalidParameter;
    } else if (::stat(path, &st) != 0) {
      code = CodeOf(errno, path);
    } else {
      found = AttributesOf(st);
    }
    if (attributes != nullptr) *attributes = found;
    return code;
  }

  uint32_t MakeDirectory(const char* path) override {
    if (path == nullptr) return kErrorInvalidParameter;
    if (::mkdir(path, 0777) == 0) return kErrorSuccess;
    // A missing parent is always a missing path here: the new name itself
    // is not expected to exist.
    if (errno == EEXIST) return kErrorAlreadyExists;
    if (errno == ENOENT) return kErrorPathNotFound;
    return CodeOf(errno, path);
  }

  uint32_t RemoveEmptyDirectory(const char* path) override {
    if (path == nullptr) return kErrorInvalidParameter;
    if (::rmdir(path) == 0) return kErrorSuccess;
    int err = errno;
    if (err == ENOTEMPTY || err == EEXIST) return kErrorDirNotEmpty;
    struct stat st;
    if (err == ENOTDIR && ::stat(path, &st) == 0 && !S_ISDIR(st.st_mode)) return kErrorDirectory;
    return CodeOf(err, path);
  }

  uint32_t CopyOneFile(const char* from, const char* to, bool failIfExists) override {
    if (from == nullptr || to == nullptr) return kErrorInvalidParameter;
    Descriptor source(::open(from, O_RDONLY | O_CLOEXEC));
    if (source.get() < 0) return CodeOf(errno, from);
    struct stat sourceStat;
    if (::fstat(source.get(), &sourceStat) != 0) return CodeOf(errno, from);
    if (S_ISDIR(sourceStat.st_mode)) return kErrorAccessDenied;

    struct stat targetStat;
    if (::stat(to, &targetStat) == 0) {
      if (failIfExists) return kErrorFileExists;
      if (S_ISDIR(targetStat.st_mode)) return kErrorAccessDenied;
      // Windows cannot open the source for writing while it reads it.
      if (targetStat.st_dev == sourceStat.st_dev && targetStat.st_ino == sourceStat.st_ino) {
        return kErrorSharingViolation;
      }
    } else if (errno != ENOENT) {
      return CodeOf(errno, to);
    } else if (MissingCode(to) != kErrorFileNotFound || std::string(to).back() == '/') {
      // No directory to hold the copy, or a name that is only a directory.
      return kErrorPathNotFound;
    }

    std::string tempPath;
    uint32_t code =
        WriteTemporaryCopy(source.get(), sourceStat, from, DirectoryPart(to), &tempPath);
    if (code != kErrorSuccess) return code;
    return PublishCopy(tempPath, to, failIfExists);
  }

  uint32_t MoveOneFile(const char* from, const char* to) override {
    if (from == nullptr || to == nullptr) return kErrorInvalidParameter;
    struct stat sourceStat;
    if (::lstat(from, &sourceStat) != 0) return CodeOf(errno, from);
    // rename() would replace a file or an empty directory; MoveFileA never
    // replaces anything.
    struct stat targetStat;
    if (::lstat(to, &targetStat) == 0) return kErrorAlreadyExists;
    if (errno != ENOENT) return CodeOf(errno, to);
    if (!FailedByTest(FaultSite::kRename, to) && ::rename(from, to) == 0) return kErrorSuccess;
    int err = errno;
    if (err == EXDEV && !S_ISDIR(sourceStat.st_mode)) return MoveAcrossDevices(from, to);
    if (err == EEXIST || err == ENOTEMPTY) return kErrorAlreadyExists;
    if (err == ENOENT) return kErrorPathNotFound;
    return CodeOf(err, to);
  }

  uint32_t DeleteOneFile(const char* path) override {
    if (path == nullptr) return kErrorInvalidParameter;
    if (::unlink(path) == 0) return kErrorSuccess;
    // Linux says EISDIR for a directory, other systems EPERM: both 5.
    return CodeOf(errno, path);
  }

  uint32_t FindFiles(const char* pattern, std::vector<FindEntry>* entries) override {
    if (pattern == nullptr || entries == nullptr) return kErrorInvalidParameter;
    std::string text(pattern);
    size_t slash = text.rfind('/');
    std::string directory =
        slash == std::string::npos ? "." : (slash == 0 ? "/" : text.substr(0, slash));
    std::string last = slash == std::string::npos ? text : text.substr(slash + 1);

    std::vector<std::string> names;
    uint32_t code = ListDirectory(directory, &names);
    if (code != kErrorSuccess) return code;
    WildcardPattern wildcard(last);
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&](const std::string& name) { return !wildcard.Matches(name); }),
                names.end());
    if (names.empty()) return kErrorFileNotFound;
    // std::string compares through char_traits<char>, which orders bytes
    // as unsigned char.
    std::sort(names.begin(), names.end());

    std::string prefix = directory == "/" ? directory : directory + "/";
    for (const std::string& name : names) {
      FindEntry entry;
      entry.name = name;
      struct stat st;
      std::string full = prefix + name;
      if (::stat(full.c_str(), &st) == 0 || ::lstat(full.c_str(), &st) == 0) {
        entry.attributes = AttributesOf(st);
      } else {
        entry.attributes = kAttributeArchive;  // gone since it was listed
      }
      entries->push_back(entry);
    }
    return kErrorSuccess;
  }

  std::FILE* OpenFile(const char* path, const char* mode) override {
    if (path == nullptr || mode == nullptr) return nullptr;
    return std::fopen(path, mode);
  }

  std::string ErrorText(uint32_t code) override {
    int err = 0;
    if (!ErrnoOfCode(code, &err)) return std::string();
    char buffer[256] = {0};
    const char* text = StrerrorText(::strerror_r(err, buffer, sizeof buffer), buffer);
    if (text == nullptr || *text == '\0') return std::string();
    // System message texts end with a line end.
    return std::string(text) + "\n";
  }

  bool UserDecimalSeparator(std::string* separator) override {
    // The name "" asks for the environment's choice: LC_ALL, then
    // LC_NUMERIC, then LANG. The global locale is not touched.
    locale_t user = ::newlocale(LC_NUMERIC_MASK, "", static_cast<locale_t>(0));
    if (user == static_cast<locale_t>(0)) return false;
    const char* point = ::nl_langinfo_l(RADIXCHAR, user);
    bool known = point != nullptr && *point != '\0';
    if (known && separator != nullptr) *separator = point;
    ::freelocale(user);
    return known;
  }

  bool SetNumericLocale(const char* name, std::string* current) override {
    const char* result = std::setlocale(LC_NUMERIC, name);
    if (result == nullptr) return false;
    if (current != nullptr) *current = result;
    return true;
  }

  char PathSeparator() override { return '/'; }

 private:
  static uint64_t In100ns(const struct timeval& time) {
    return static_cast<uint64_t>(time.tv_sec) * 10000000u +
           static_cast<uint64_t>(time.tv_usec) * 10u;
  }

  // MoveFileA moves a file to another volume by copying it and deleting the
  // original; a directory cannot go (ERROR_NOT_SAME_DEVICE, from the table).
  uint32_t MoveAcrossDevices(const char* from, const char* to) {
    uint32_t code = CopyOneFile(from, to, true);
    if (code != kErrorSuccess) return code;
    if (FailedByTest(FaultSite::kRemoveSource, from) || ::unlink(from) != 0) {
      code = CodeOf(errno, from);
      ::unlink(to);  // one of the two names, not both
    }
    return code;
  }

  // All names in `directory`; 0, or 3 for a missing directory.
  static uint32_t ListDirectory(const std::string& directory, std::vector<std::string>* names) {
    DIR* stream = ::opendir(directory.c_str());
    if (stream == nullptr) {
      if (errno == ENOENT || errno == ENOTDIR) return kErrorPathNotFound;
      return CodeOfErrno(errno);
    }
    uint32_t code = kErrorSuccess;
    for (;;) {
      errno = 0;
      struct dirent* entry = ::readdir(stream);
      if (entry == nullptr) {
        if (errno != 0) code = CodeOfErrno(errno);
        break;
      }
      names->emplace_back(entry->d_name);
    }
    ::closedir(stream);
    return code;
  }
};

}  // namespace

System* DefaultSystem() {
  // Made on first use and never destroyed, so that static objects of other
  // translation units may use it in their constructors and destructors.
  alignas(PosixSystem) static unsigned char storage[sizeof(PosixSystem)];
  static PosixSystem* const instance = new (storage) PosixSystem();
  return instance;
}

}  // namespace platform
}  // namespace vekzol

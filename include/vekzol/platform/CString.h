// File: CString.h
// CString: the value-semantic byte string of the whole library. Every id,
// name, path and message is one. Text is in the process's narrow code page
// (UTF-8 on POSIX). The operations carry the names and meanings of ATL's
// CStringT for `char`, so host code written against ATL compiles unchanged.
//
// Contract:
// - Never null, empty by default; copies are independent values. A copy
//   shares the text of its source and counts references to it (the count is
//   atomic); the first change to a shared text gives the changed string a
//   text of its own. So copying never allocates, and a copy made on one
//   thread may be read or dropped on another while the source lives on.
//   Pointers from GetString stay valid until their own string changes.
// - Order and equality (Compare, ==, <, ...) follow the multi-byte compare
//   `_mbscmp`: case-sensitive, unsigned byte order, up to the first NUL.
//   CompareNoCase follows `_mbsicmp`.
// - Positions and lengths are `int` byte counts, as in ATL.
// - Out-of-range arguments raise CAtlException(E_INVALIDARG), failed
//   allocations CAtlException(E_OUTOFMEMORY). Where ATL clamps an argument
//   (Left, Right, Mid, Find with a start past the end) this class clamps too.
// - Format and AppendFormat follow printf rules. A CString passed as a
//   format argument is passed as its `const char*`, so `Format("%s", s)`
//   works as it does with ATL.
// - Not synchronised: one object is used from one thread at a time.
#ifndef VEKZOL_PLATFORM_CSTRING_H_
#define VEKZOL_PLATFORM_CSTRING_H_

#include <atomic>
#include <cstddef>
#include <string>
#include <type_traits>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API CString {
 public:
  typedef char XCHAR;
  typedef const char* PCXSTR;
  typedef char* PXSTR;

  CString();
  CString(const CString& other);
  CString(CString&& other) noexcept;
  // A null pointer gives the empty string.
  CString(const char* text);  // NOLINT(google-explicit-constructor): ATL converts implicitly
  // `length` bytes from `text`; embedded NULs are kept. A negative length
  // raises E_INVALIDARG; a null `text` with a non-zero length too.
  CString(const char* text, int length);
  // `count` copies of `ch`; a count below 1 gives the empty string.
  explicit CString(char ch, int count = 1);
  explicit CString(const std::string& text);
  ~CString();

  CString& operator=(const CString& other);
  CString& operator=(CString&& other) noexcept;
  CString& operator=(const char* text);
  CString& operator=(char ch);

  CString& operator+=(const CString& other);
  CString& operator+=(const char* text);
  CString& operator+=(char ch);

  // Size and access.
  int GetLength() const noexcept { return HeaderOf(m_Text)->length; }
  bool IsEmpty() const noexcept { return GetLength() == 0; }
  void Empty() noexcept;
  const char* GetString() const noexcept { return m_Text; }
  operator const char*() const noexcept { return m_Text; }  // NOLINT
  // Index 0 .. GetLength() (the closing NUL included); else E_INVALIDARG.
  char GetAt(int index) const;
  char operator[](int index) const;
  // Index 0 .. GetLength() - 1; else E_INVALIDARG.
  void SetAt(int index, char ch);

  // Comparison: negative, 0 or positive as `_mbscmp` / `_mbsicmp`.
  int Compare(const char* other) const;
  int CompareNoCase(const char* other) const;

  // Parts. Negative counts and starts are taken as 0, counts past the end
  // are cut at the end.
  CString Left(int count) const;
  CString Right(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;
  CString SpanIncluding(const char* charSet) const;
  CString SpanExcluding(const char* charSet) const;

  // Search: byte index of the hit or -1. A start outside 0 .. GetLength()
  // gives -1.
  int Find(char ch, int start = 0) const;
  int Find(const char* sub, int start = 0) const;
  int ReverseFind(char ch) const;
  int FindOneOf(const char* charSet) const;

  // Changes. Replace and Remove return the number of replacements/removals;
  // Insert and Delete the new length.
  int Replace(char oldCh, char newCh);
  int Replace(const char* oldText, const char* newText);
  int Remove(char ch);
  int Insert(int index, char ch);
  int Insert(int index, const char* text);
  int Delete(int index, int count = 1);

  // The next token after `start`, skipping leading delimiters; `start` moves
  // past the token, or to -1 when no token is left (the result is then
  // empty). A negative `start` raises E_INVALIDARG.
  CString Tokenize(const char* tokens, int& start) const;

  // Trimming: without argument the white space " \t\n\v\f\r".
  CString& Trim();
  CString& Trim(char target);
  CString& Trim(const char* targets);
  CString& TrimLeft();
  CString& TrimLeft(char target);
  CString& TrimLeft(const char* targets);
  CString& TrimRight();
  CString& TrimRight(char target);
  CString& TrimRight(const char* targets);

  // Case: ASCII letters only, as the narrow code page's `_mbslwr_s` does on
  // POSIX; other bytes stay.
  CString& MakeLower();
  CString& MakeUpper();
  CString& MakeReverse();

  // printf-style composition. The format is passed as data to the C
  // runtime's formatter; a CString argument is passed as `const char*`.
  template <typename... Args>
  void Format(const char* format, const Args&... args) {
    FormatRaw(format, PassArg(args)...);
  }
  template <typename... Args>
  void AppendFormat(const char* format, const Args&... args) {
    AppendFormatRaw(format, PassArg(args)...);
  }
  // The C-style forms behind Format and AppendFormat.
  void FormatRaw(const char* format, ...);
  void AppendFormatRaw(const char* format, ...);

  // Direct buffer access, as ATL has it. GetBuffer(n) gives a writable
  // buffer of at least n bytes plus a NUL; ReleaseBuffer(-1) takes the
  // length up to the first NUL, ReleaseBuffer(n) takes n bytes. A negative
  // size raises E_INVALIDARG. Between GetBuffer and ReleaseBuffer the text
  // is this string's alone: a copy made then gets a text of its own, so
  // writes through the buffer never reach it.
  char* GetBuffer();
  char* GetBuffer(int minLength);
  char* GetBufferSetLength(int length);
  void ReleaseBuffer(int newLength = -1);
  // Makes room for `length` bytes without changing the text, so that
  // appending up to that length allocates no more. A negative length
  // raises E_INVALIDARG.
  void Preallocate(int length);
  // Appends `length` bytes from `text` (embedded NULs kept); `text` may
  // point into this string. A negative length raises E_INVALIDARG.
  void Append(const char* text, int length);

  // A copy of the bytes as a standard string (for the library's own code
  // and hosts written in plain C++).
  std::string str() const { return std::string(m_Text, static_cast<size_t>(GetLength())); }

 private:
  // The text lives in one heap block behind this header. `refs` counts the
  // strings that share the block; kUnshared marks a block whose buffer was
  // handed out by GetBuffer, which a copy never shares. The empty string of
  // every CString is one static block that is never counted nor freed. The
  // block's text area is padded with NULs to a multiple of eight bytes, so
  // order and equality can read the text eight bytes at a time.
  struct Header {
    std::atomic<int> refs;
    int length;
    int capacity;
    int reserved;
  };
  static constexpr int kUnshared = -1;

  static const Header* HeaderOf(const char* text) noexcept {
    return reinterpret_cast<const Header*>(text) - 1;
  }
  static Header* HeaderOf(char* text) noexcept { return reinterpret_cast<Header*>(text) - 1; }
  static char* EmptyText() noexcept;
  static char* Allocate(int capacity);
  static void Release(char* text) noexcept;
  // The text of `other` for a new owner: shared, or copied when unshared.
  static char* Share(const CString& other);
  bool IsShared() const noexcept;
  // Makes the text this string's own, with room for `capacity` bytes; the
  // first min(length, capacity) bytes are kept. Returns the writable text.
  char* MakeWritable(int capacity);
  // Sets the length and writes the closing NUL; the text must be writable.
  void SetLength(int length) noexcept;
  void AssignBytes(const char* bytes, int length);
  void AppendBytes(const char* bytes, int length);
  // Grows or cuts the text to `length`, new bytes NUL.
  void Resize(int length);
  // Removes the first `count` bytes.
  void DropFront(int count);
  // Marks the text as handed out for writing (see GetBuffer).
  void MarkUnshared() noexcept;
  int Insert(int index, const char* text, int length);

  template <typename T>
  static auto PassArg(const T& arg) {
    if constexpr (std::is_same_v<T, CString>) {
      return arg.GetString();
    } else {
      return arg;
    }
  }

  char* m_Text;
};

VEKZOL_API CString operator+(const CString& left, const CString& right);
VEKZOL_API CString operator+(const CString& left, const char* right);
VEKZOL_API CString operator+(const char* left, const CString& right);
VEKZOL_API CString operator+(const CString& left, char right);
VEKZOL_API CString operator+(char left, const CString& right);

VEKZOL_API bool operator==(const CString& left, const CString& right);
VEKZOL_API bool operator==(const CString& left, const char* right);
VEKZOL_API bool operator==(const char* left, const CString& right);
VEKZOL_API bool operator!=(const CString& left, const CString& right);
VEKZOL_API bool operator!=(const CString& left, const char* right);
VEKZOL_API bool operator!=(const char* left, const CString& right);
VEKZOL_API bool operator<(const CString& left, const CString& right);
VEKZOL_API bool operator<(const CString& left, const char* right);
VEKZOL_API bool operator<(const char* left, const CString& right);
VEKZOL_API bool operator>(const CString& left, const CString& right);
VEKZOL_API bool operator>(const CString& left, const char* right);
VEKZOL_API bool operator>(const char* left, const CString& right);
VEKZOL_API bool operator<=(const CString& left, const CString& right);
VEKZOL_API bool operator<=(const CString& left, const char* right);
VEKZOL_API bool operator<=(const char* left, const CString& right);
VEKZOL_API bool operator>=(const CString& left, const CString& right);
VEKZOL_API bool operator>=(const CString& left, const char* right);
VEKZOL_API bool operator>=(const char* left, const CString& right);

#endif  // VEKZOL_PLATFORM_CSTRING_H_

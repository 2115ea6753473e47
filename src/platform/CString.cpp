// File: CString.cpp
// CString over std::string. The operations follow the algorithms of ATL's
// CStringT<char> step by step, so that edge cases (clamped arguments,
// embedded NULs, where a search stops) come out as host code expects. A
// "character" is what platform::Mbsinc steps over: one whole UTF-8 sequence
// on POSIX. The functions that ATL builds on the C runtime's NUL-terminated
// multi-byte routines stop at the first NUL as those do.
#include <vekzol/platform/CString.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/MbString.h"

namespace {

using vekzol::platform::Mbsinc;

// Runs an allocating step and turns the standard library's allocation
// failures into the exception the library's types raise. The try block
// costs nothing on the path that does not throw.
template <typename F>
auto Guarded(F&& step) -> decltype(step()) {
  try {
    return step();
  } catch (const std::bad_alloc&) {
    AtlThrow(E_OUTOFMEMORY);
  } catch (const std::length_error&) {
    AtlThrow(E_OUTOFMEMORY);
  }
}

inline size_t CharLength(const char* p) { return static_cast<size_t>(Mbsinc(p) - p); }

// The white space of TrimLeft/TrimRight without argument.
inline bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// Whether `set` holds `c` as a one-byte character (`_mbschr` with a byte):
// the lead byte of a multi-byte character never matches.
bool SetHasByte(const char* set, char c) {
  if (static_cast<unsigned char>(c) < 0x80) return std::strchr(set, c) != nullptr;
  for (const char* p = set; *p != '\0'; p = Mbsinc(p)) {
    if (*p == c && CharLength(p) == 1) return true;
  }
  return false;
}

// Whether `set` holds the character of `length` bytes at `ch`.
bool SetHasChar(const char* set, const char* ch, size_t length) {
  if (length == 1) return SetHasByte(set, *ch);
  for (const char* p = set; *p != '\0'; p = Mbsinc(p)) {
    if (CharLength(p) == length && std::memcmp(p, ch, length) == 0) return true;
  }
  return false;
}

// Byte length of the leading characters of `text` that are (`inSet` true)
// or are not (false) in `set`, up to the first NUL: `_mbsspn` / `_mbscspn`.
size_t SpanOf(const char* text, const char* set, bool inSet) {
  const char* p = text;
  while (*p != '\0') {
    const size_t length = CharLength(p);
    if (SetHasChar(set, p, length) != inSet) break;
    p += length;
  }
  return static_cast<size_t>(p - text);
}

// vsnprintf in two passes: the length, then the text. Returns false when
// the formatter reports an error (the text is then left as it was); may
// throw std::bad_alloc.
bool FormatTo(std::string& out, const char* format, va_list args) {
  va_list sizing;
  va_copy(sizing, args);
  const int length = std::vsnprintf(nullptr, 0, format, sizing);
  va_end(sizing);
  if (length < 0) return false;
  std::string text(static_cast<size_t>(length), '\0');
  // The closing NUL goes into the string's own terminator slot.
  std::vsnprintf(&text[0], text.size() + 1, format, args);
  out.swap(text);
  return true;
}

// Formats into `out`; returns S_OK, `formatError` or E_OUTOFMEMORY. Throws
// nothing, so the caller can close its va_list before raising.
HRESULT FormatStatus(std::string& out, const char* format, va_list args, HRESULT formatError) {
  try {
    return FormatTo(out, format, args) ? S_OK : formatError;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::length_error&) {
    return E_OUTOFMEMORY;
  }
}

// Throws E_FAIL for a null text, as ATL's ATLENSURE in Compare does.
inline const char* EnsureText(const char* text) {
  if (text == nullptr) AtlThrow(E_FAIL);
  return text;
}

}  // namespace

// --- Construction and assignment ---------------------------------------------------------------

CString::CString() = default;

CString::CString(const CString& other) {
  Guarded([&] { m_Text = other.m_Text; });
}

CString::CString(CString&& other) noexcept : m_Text(std::move(other.m_Text)) {
  other.m_Text.clear();
}

CString::CString(const char* text) {
  if (text != nullptr) Guarded([&] { m_Text.assign(text); });
}

CString::CString(const char* text, int length) {
  if (length < 0 || (text == nullptr && length != 0)) AtlThrow(E_INVALIDARG);
  if (length > 0) Guarded([&] { m_Text.assign(text, static_cast<size_t>(length)); });
}

CString::CString(char ch, int count) {
  if (count > 0) Guarded([&] { m_Text.assign(static_cast<size_t>(count), ch); });
}

CString::CString(const std::string& text) {
  Guarded([&] { m_Text = text; });
}

CString::~CString() = default;

CString& CString::operator=(const CString& other) {
  Guarded([&] { m_Text = other.m_Text; });
  return *this;
}

CString& CString::operator=(CString&& other) noexcept {
  if (this != &other) {
    m_Text = std::move(other.m_Text);
    other.m_Text.clear();
  }
  return *this;
}

CString& CString::operator=(const char* text) {
  // assign() copes with a text that points into this string.
  Guarded([&] { text != nullptr ? m_Text.assign(text) : m_Text.assign(""); });
  return *this;
}

CString& CString::operator=(char ch) {
  Guarded([&] { m_Text.assign(1, ch); });
  return *this;
}

CString& CString::operator+=(const CString& other) {
  Guarded([&] { m_Text.append(other.m_Text); });
  return *this;
}

CString& CString::operator+=(const char* text) {
  if (text != nullptr) Guarded([&] { m_Text.append(text); });
  return *this;
}

CString& CString::operator+=(char ch) {
  Guarded([&] { m_Text.push_back(ch); });
  return *this;
}

// --- Size and access ---------------------------------------------------------------------------

void CString::Empty() noexcept { m_Text.clear(); }

char CString::GetAt(int index) const {
  if (index < 0 || index > GetLength()) AtlThrow(E_INVALIDARG);
  return m_Text.c_str()[index];
}

char CString::operator[](int index) const { return GetAt(index); }

void CString::SetAt(int index, char ch) {
  if (index < 0 || index >= GetLength()) AtlThrow(E_INVALIDARG);
  m_Text[static_cast<size_t>(index)] = ch;
}

// --- Comparison --------------------------------------------------------------------------------

int CString::Compare(const char* other) const {
  return vekzol::platform::Mbscmp(GetString(), EnsureText(other));
}

int CString::CompareNoCase(const char* other) const {
  return vekzol::platform::Mbsicmp(GetString(), EnsureText(other));
}

// --- Parts -------------------------------------------------------------------------------------

CString CString::Left(int count) const {
  if (count < 0) count = 0;
  if (count >= GetLength()) return *this;
  return CString(GetString(), count);
}

CString CString::Right(int count) const {
  if (count < 0) count = 0;
  const int length = GetLength();
  if (count >= length) return *this;
  return CString(GetString() + (length - count), count);
}

CString CString::Mid(int first) const {
  // As ATL: the count is what lies from `first` to the end, so a negative
  // start gives the whole string. Computed wide so INT_MIN cannot overflow.
  const long long count = static_cast<long long>(GetLength()) - first;
  return Mid(first, static_cast<int>(std::max<long long>(
                        std::min<long long>(count, std::numeric_limits<int>::max()), 0)));
}

CString CString::Mid(int first, int count) const {
  if (first < 0) first = 0;
  if (count < 0) count = 0;
  const int length = GetLength();
  if (first > length) return CString();
  // Computed wide: a count up to INT_MAX is cut at the end instead of
  // overflowing.
  if (static_cast<long long>(first) + count > length) count = length - first;
  if (first == 0 && count == length) return *this;
  return CString(GetString() + first, count);
}

CString CString::SpanIncluding(const char* charSet) const {
  if (charSet == nullptr) AtlThrow(E_INVALIDARG);
  return Left(static_cast<int>(SpanOf(GetString(), charSet, true)));
}

CString CString::SpanExcluding(const char* charSet) const {
  if (charSet == nullptr) AtlThrow(E_INVALIDARG);
  return Left(static_cast<int>(SpanOf(GetString(), charSet, false)));
}

// --- Search ------------------------------------------------------------------------------------

int CString::Find(char ch, int start) const {
  // ATL refuses a start at the end here (unlike the text search), so a
  // search for NUL there gives -1.
  if (start < 0 || start >= GetLength()) return -1;
  const char* begin = GetString();
  const char* hit = nullptr;
  if (static_cast<unsigned char>(ch) < 0x80) {
    // An ASCII byte is never part of a multi-byte character, so a byte
    // search is a character search; NUL finds the terminator.
    hit = std::strchr(begin + start, ch);
  } else {
    for (const char* p = begin + start; *p != '\0'; p = Mbsinc(p)) {
      if (*p == ch && CharLength(p) == 1) {
        hit = p;
        break;
      }
    }
  }
  return hit == nullptr ? -1 : static_cast<int>(hit - begin);
}

int CString::Find(const char* sub, int start) const {
  if (sub == nullptr) return -1;
  if (start < 0 || start > GetLength()) return -1;
  const char* begin = GetString();
  const char* hit = vekzol::platform::Mbsstr(begin + start, sub);
  return hit == nullptr ? -1 : static_cast<int>(hit - begin);
}

int CString::ReverseFind(char ch) const {
  const char* begin = GetString();
  const char* hit = nullptr;
  if (static_cast<unsigned char>(ch) < 0x80) {
    hit = std::strrchr(begin, ch);
  } else {
    for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
      if (*p == ch && CharLength(p) == 1) hit = p;
    }
  }
  return hit == nullptr ? -1 : static_cast<int>(hit - begin);
}

int CString::FindOneOf(const char* charSet) const {
  if (charSet == nullptr) return -1;
  const char* begin = GetString();
  const size_t span = SpanOf(begin, charSet, false);
  return begin[span] == '\0' ? -1 : static_cast<int>(span);
}

// --- Changes -----------------------------------------------------------------------------------

int CString::Replace(char oldCh, char newCh) {
  if (oldCh == newCh) return 0;
  int count = 0;
  // Every character up to the length, embedded NULs included; the lead
  // byte decides, and the step is taken after the change, as in ATL.
  size_t i = 0;
  while (i < m_Text.size()) {
    if (m_Text[i] == oldCh) {
      m_Text[i] = newCh;
      ++count;
    }
    i += CharLength(m_Text.c_str() + i);
  }
  return count;
}

int CString::Replace(const char* oldText, const char* newText) {
  const size_t oldLength = oldText != nullptr ? std::strlen(oldText) : 0;
  if (oldLength == 0) return 0;
  if (newText == nullptr) newText = "";
  // The search runs over each NUL-separated piece of the string, as ATL's
  // does; the new text is built aside, so `newText` may point into this.
  const char* begin = m_Text.c_str();
  const char* end = begin + m_Text.size();
  int count = 0;
  std::string result;
  Guarded([&] {
    size_t copied = 0;
    for (const char* piece = begin; piece < end; piece += std::strlen(piece) + 1) {
      for (const char* hit = piece; (hit = vekzol::platform::Mbsstr(hit, oldText)) != nullptr;
           hit += oldLength) {
        const size_t at = static_cast<size_t>(hit - begin);
        result.append(m_Text, copied, at - copied);
        result.append(newText);
        copied = at + oldLength;
        ++count;
      }
    }
    if (count > 0) result.append(m_Text, copied, std::string::npos);
  });
  if (count > 0) m_Text.swap(result);
  return count;
}

int CString::Remove(char ch) {
  // Whole characters whose lead byte is `ch` go, as in ATL; the result is
  // the number of bytes removed.
  const size_t length = m_Text.size();
  size_t source = 0;
  size_t dest = 0;
  while (source < length) {
    const size_t step = CharLength(m_Text.c_str() + source);
    if (m_Text[source] != ch) {
      std::memmove(&m_Text[dest], &m_Text[source], step);
      dest += step;
    }
    source += step;
  }
  m_Text.resize(dest);
  return static_cast<int>(length - dest);
}

int CString::Insert(int index, char ch) {
  index = std::clamp(index, 0, GetLength());
  Guarded([&] { m_Text.insert(static_cast<size_t>(index), 1, ch); });
  return GetLength();
}

int CString::Insert(int index, const char* text) {
  index = std::clamp(index, 0, GetLength());
  // insert() copes with a text that points into this string.
  if (text != nullptr) Guarded([&] { m_Text.insert(static_cast<size_t>(index), text); });
  return GetLength();
}

int CString::Delete(int index, int count) {
  if (index < 0) index = 0;
  if (count < 0) count = 0;
  const int length = GetLength();
  if (static_cast<long long>(index) + count > length) count = length - index;
  if (count > 0) m_Text.erase(static_cast<size_t>(index), static_cast<size_t>(count));
  return GetLength();
}

CString CString::Tokenize(const char* tokens, int& start) const {
  if (start < 0) AtlThrow(E_INVALIDARG);
  const int length = GetLength();
  if (tokens == nullptr || *tokens == '\0') {
    // No delimiters: the rest of the text (to its first NUL), with `start`
    // left where it is.
    if (start < length) return CString(GetString() + start);
  } else if (start < length) {
    const char* place = GetString() + start;
    const int including = static_cast<int>(SpanOf(place, tokens, true));
    if (start + including < length) {
      const int excluding = static_cast<int>(SpanOf(place + including, tokens, false));
      const int from = start + including;
      start = from + excluding + 1;
      return Mid(from, excluding);
    }
  }
  start = -1;
  return CString();
}

// --- Trimming ----------------------------------------------------------------------------------
// The right-hand trims scan from the front up to the first NUL, as ATL's
// do, and cut at the start of the last run of matching characters.

CString& CString::Trim() { return TrimRight().TrimLeft(); }
CString& CString::Trim(char target) { return TrimRight(target).TrimLeft(target); }
CString& CString::Trim(const char* targets) { return TrimRight(targets).TrimLeft(targets); }

CString& CString::TrimLeft() {
  size_t first = 0;
  while (IsSpace(m_Text[first])) first += CharLength(m_Text.c_str() + first);
  m_Text.erase(0, first);
  return *this;
}

CString& CString::TrimLeft(char target) {
  size_t first = 0;
  while (first < m_Text.size() && m_Text[first] == target) {
    first += CharLength(m_Text.c_str() + first);
  }
  m_Text.erase(0, std::min(first, m_Text.size()));
  return *this;
}

CString& CString::TrimLeft(const char* targets) {
  if (targets == nullptr || *targets == '\0') return *this;
  size_t first = 0;
  while (m_Text[first] != '\0' && SetHasByte(targets, m_Text[first])) {
    first += CharLength(m_Text.c_str() + first);
  }
  m_Text.erase(0, first);
  return *this;
}

CString& CString::TrimRight() {
  const char* begin = m_Text.c_str();
  const char* last = nullptr;
  for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
    if (!IsSpace(*p)) {
      last = nullptr;
    } else if (last == nullptr) {
      last = p;
    }
  }
  if (last != nullptr) m_Text.resize(static_cast<size_t>(last - begin));
  return *this;
}

CString& CString::TrimRight(char target) {
  const char* begin = m_Text.c_str();
  const char* last = nullptr;
  for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
    if (*p != target) {
      last = nullptr;
    } else if (last == nullptr) {
      last = p;
    }
  }
  if (last != nullptr) m_Text.resize(static_cast<size_t>(last - begin));
  return *this;
}

CString& CString::TrimRight(const char* targets) {
  if (targets == nullptr || *targets == '\0') return *this;
  const char* begin = m_Text.c_str();
  const char* last = nullptr;
  for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
    if (!SetHasByte(targets, *p)) {
      last = nullptr;
    } else if (last == nullptr) {
      last = p;
    }
  }
  if (last != nullptr) m_Text.resize(static_cast<size_t>(last - begin));
  return *this;
}

// --- Case and order ----------------------------------------------------------------------------
// Like `_mbslwr_s`, `_mbsupr_s` and `_mbsrev`, these stop at the first NUL.

CString& CString::MakeLower() {
  vekzol::platform::Mbslwr(&m_Text[0], std::strlen(m_Text.c_str()));
  return *this;
}

CString& CString::MakeUpper() {
  vekzol::platform::Mbsupr(&m_Text[0], std::strlen(m_Text.c_str()));
  return *this;
}

CString& CString::MakeReverse() {
  char* begin = &m_Text[0];
  char* end = begin + std::strlen(begin);
  // Reverse the bytes of each multi-byte character first, then the whole
  // run: the characters change places and each keeps its byte order.
  for (char* p = begin; p < end;) {
    char* next = const_cast<char*>(Mbsinc(p));
    std::reverse(p, next);
    p = next;
  }
  std::reverse(begin, end);
  return *this;
}

// --- Formatting --------------------------------------------------------------------------------
// The text is built aside and then swapped in or appended, so an argument
// that points into this string stays valid while it is read.

void CString::FormatRaw(const char* format, ...) {
  if (format == nullptr) AtlThrow(E_INVALIDARG);
  std::string text;
  va_list args;
  va_start(args, format);
  // A formatter error is E_INVALIDARG here, as ATL's buffer request with
  // the length -1 raises.
  const HRESULT status = FormatStatus(text, format, args, E_INVALIDARG);
  va_end(args);
  if (status != S_OK) AtlThrow(status);
  m_Text.swap(text);
}

void CString::AppendFormatRaw(const char* format, ...) {
  if (format == nullptr) AtlThrow(E_INVALIDARG);
  std::string text;
  va_list args;
  va_start(args, format);
  // ATL's AppendFormat raises E_FAIL for a formatter error.
  const HRESULT status = FormatStatus(text, format, args, E_FAIL);
  va_end(args);
  if (status != S_OK) AtlThrow(status);
  Guarded([&] { m_Text.append(text); });
}

// --- Buffer access -----------------------------------------------------------------------------
// A std::string has no room past its size that may be written, so a
// request for a longer buffer grows the string (with NULs) at once;
// ReleaseBuffer then sets the length that counts.

char* CString::GetBuffer() { return &m_Text[0]; }

char* CString::GetBuffer(int minLength) {
  if (minLength < 0) AtlThrow(E_INVALIDARG);
  if (static_cast<size_t>(minLength) > m_Text.size()) {
    Guarded([&] { m_Text.resize(static_cast<size_t>(minLength)); });
  }
  return &m_Text[0];
}

char* CString::GetBufferSetLength(int length) {
  if (length < 0) AtlThrow(E_INVALIDARG);
  Guarded([&] { m_Text.resize(static_cast<size_t>(length)); });
  return &m_Text[0];
}

void CString::ReleaseBuffer(int newLength) {
  if (newLength == -1) {
    newLength = static_cast<int>(std::strlen(m_Text.c_str()));
  }
  // The length must lie within the buffer handed out.
  if (newLength < 0 || newLength > GetLength()) AtlThrow(E_INVALIDARG);
  m_Text.resize(static_cast<size_t>(newLength));
}

// --- Free operators ----------------------------------------------------------------------------

CString operator+(const CString& left, const CString& right) {
  CString result(left);
  result += right;
  return result;
}

CString operator+(const CString& left, const char* right) {
  CString result(left);
  result += right;
  return result;
}

CString operator+(const char* left, const CString& right) {
  CString result(left);
  result += right;
  return result;
}

CString operator+(const CString& left, char right) {
  CString result(left);
  result += right;
  return result;
}

CString operator+(char left, const CString& right) {
  CString result(left, 1);
  result += right;
  return result;
}

// Comparison goes straight to the multi-byte compare on the two buffers:
// no copy, no allocation (these sit on the hot path of ordered maps).
bool operator==(const CString& left, const CString& right) {
  return vekzol::platform::Mbscmp(left.GetString(), right.GetString()) == 0;
}
bool operator==(const CString& left, const char* right) { return left.Compare(right) == 0; }
bool operator==(const char* left, const CString& right) { return right.Compare(left) == 0; }
bool operator!=(const CString& left, const CString& right) { return !(left == right); }
bool operator!=(const CString& left, const char* right) { return left.Compare(right) != 0; }
bool operator!=(const char* left, const CString& right) { return right.Compare(left) != 0; }

bool operator<(const CString& left, const CString& right) {
  return vekzol::platform::Mbscmp(left.GetString(), right.GetString()) < 0;
}
bool operator<(const CString& left, const char* right) { return left.Compare(right) < 0; }
bool operator<(const char* left, const CString& right) { return right.Compare(left) > 0; }
bool operator>(const CString& left, const CString& right) { return right < left; }
bool operator>(const CString& left, const char* right) { return left.Compare(right) > 0; }
bool operator>(const char* left, const CString& right) { return right.Compare(left) < 0; }
bool operator<=(const CString& left, const CString& right) { return !(right < left); }
bool operator<=(const CString& left, const char* right) { return left.Compare(right) <= 0; }
bool operator<=(const char* left, const CString& right) { return right.Compare(left) >= 0; }
bool operator>=(const CString& left, const CString& right) { return !(left < right); }
bool operator>=(const CString& left, const char* right) { return left.Compare(right) >= 0; }
bool operator>=(const char* left, const CString& right) { return right.Compare(left) <= 0; }

// File: CString.cpp
// CString over a shared, reference-counted text block (see CString.h). The operations follow the
// algorithms of ATL's CStringT<char> step by step, so that edge cases (clamped arguments, embedded
// NULs, where a search stops) come out as host code expects. A "character" is what platform::Mbsinc
// steps over: one whole UTF-8 sequence on POSIX. The functions that ATL builds on the C runtime's
// NUL-terminated multi-byte routines stop at the first NUL as those do.
#include <vekzol/platform/CString.h>

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include "platform/MbString.h"
#include "platform/TextOrder.h"

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

// The length of a text as a CString length; longer texts cannot be held.
inline int CheckedLength(size_t length) {
  if (length > static_cast<size_t>(std::numeric_limits<int>::max() - 64)) AtlThrow(E_OUTOFMEMORY);
  return static_cast<int>(length);
}

// Throws E_FAIL for a null text, as ATL's ATLENSURE in Compare does.
inline const char* EnsureText(const char* text) {
  if (text == nullptr) AtlThrow(E_FAIL);
  return text;
}

}  // namespace

// --- The shared text block --------------------------------------------------------------------

namespace {

// The empty text of every CString: a header and eight NUL bytes, never
// counted, never written, never freed.
struct EmptyBlock {
  std::atomic<int> refs;
  int length;
  int capacity;
  int reserved;
  alignas(8) char text[8];
};
EmptyBlock g_emptyBlock = {{0}, 0, 0, 0, {}};

// Bytes of text area for `capacity` bytes and the NUL, padded to eight.
inline size_t TextAreaSize(int capacity) {
  return (static_cast<size_t>(capacity) + 8) & ~static_cast<size_t>(7);
}

}  // namespace

char* CString::EmptyText() noexcept { return g_emptyBlock.text; }

char* CString::Allocate(int capacity) {
  static_assert(sizeof(Header) == 16, "the text must start eight-byte aligned");
  static_assert(offsetof(EmptyBlock, text) == sizeof(Header), "the empty block is a block");
  if (capacity < 0 || capacity > std::numeric_limits<int>::max() - 64) AtlThrow(E_OUTOFMEMORY);
  const size_t area = TextAreaSize(capacity);
  void* block = nullptr;
  try {
    block = ::operator new(sizeof(Header) + area);
  } catch (const std::bad_alloc&) {
    AtlThrow(E_OUTOFMEMORY);
  }
  Header* header = new (block) Header;
  header->refs.store(1, std::memory_order_relaxed);
  header->length = 0;
  header->capacity = capacity;
  header->reserved = 0;
  char* text = reinterpret_cast<char*>(header + 1);
  // The padding is read, eight bytes at a time, by order and equality.
  std::memset(text, 0, area);
  return text;
}

void CString::Release(char* text) noexcept {
  if (text == EmptyText()) return;
  Header* header = HeaderOf(text);
  // An unshared block has this string as its only owner.
  if (header->refs.load(std::memory_order_relaxed) == kUnshared ||
      header->refs.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    header->~Header();
    ::operator delete(header);
  }
}

char* CString::Share(const CString& other) {
  char* text = other.m_Text;
  if (text == EmptyText()) return text;
  Header* header = HeaderOf(text);
  if (header->refs.load(std::memory_order_relaxed) == kUnshared) {
    // Its buffer is out with a writer: the copy gets a text of its own.
    char* copy = Allocate(header->length);
    std::memcpy(copy, text, static_cast<size_t>(header->length));
    HeaderOf(copy)->length = header->length;
    return copy;
  }
  header->refs.fetch_add(1, std::memory_order_relaxed);
  return text;
}

bool CString::IsShared() const noexcept {
  return m_Text == EmptyText() || HeaderOf(m_Text)->refs.load(std::memory_order_acquire) > 1;
}

char* CString::MakeWritable(int capacity) {
  Header* header = HeaderOf(m_Text);
  if (!IsShared() && header->capacity >= capacity) return m_Text;
  char* text = Allocate(capacity);
  const int kept = std::min(header->length, capacity);
  std::memcpy(text, m_Text, static_cast<size_t>(kept));
  HeaderOf(text)->length = kept;
  Release(m_Text);
  m_Text = text;
  return text;
}

void CString::SetLength(int length) noexcept {
  HeaderOf(m_Text)->length = length;
  m_Text[length] = '\0';
}

void CString::AssignBytes(const char* bytes, int length) {
  if (length == 0) {
    Empty();
    return;
  }
  Header* header = HeaderOf(m_Text);
  if (!IsShared() && header->capacity >= length) {
    // `bytes` may lie inside this text.
    std::memmove(m_Text, bytes, static_cast<size_t>(length));
    SetLength(length);
    return;
  }
  // The old text stays alive until the new one holds the bytes, which may
  // come from it.
  char* text = Allocate(length);
  std::memcpy(text, bytes, static_cast<size_t>(length));
  Release(m_Text);
  m_Text = text;
  SetLength(length);
}

void CString::AppendBytes(const char* bytes, int length) {
  if (length <= 0) return;
  const int old = GetLength();
  if (length > std::numeric_limits<int>::max() - 64 - old) AtlThrow(E_OUTOFMEMORY);
  const int needed = old + length;
  Header* header = HeaderOf(m_Text);
  if (!IsShared() && header->capacity >= needed) {
    std::memmove(m_Text + old, bytes, static_cast<size_t>(length));
    SetLength(needed);
    return;
  }
  // Room grows by half, so a run of appends costs linear time.
  const long long grown = static_cast<long long>(old) + old / 2;
  const int capacity = static_cast<int>(std::min<long long>(std::max<long long>(needed, grown),
                                                            std::numeric_limits<int>::max() - 64));
  char* text = Allocate(capacity);
  std::memcpy(text, m_Text, static_cast<size_t>(old));
  std::memcpy(text + old, bytes, static_cast<size_t>(length));
  Release(m_Text);
  m_Text = text;
  SetLength(needed);
}

void CString::DropFront(int count) {
  if (count > 0) AssignBytes(m_Text + count, GetLength() - count);
}

void CString::Resize(int length) {
  const int old = GetLength();
  if (length == old && !IsShared()) return;
  char* text = MakeWritable(length);
  if (length > old) std::memset(text + old, 0, static_cast<size_t>(length - old));
  SetLength(length);
}

// --- Construction and assignment ---------------------------------------------------------------

CString::CString() : m_Text(EmptyText()) {}

CString::CString(const CString& other) : m_Text(Share(other)) {}

CString::CString(CString&& other) noexcept : m_Text(other.m_Text) { other.m_Text = EmptyText(); }

CString::CString(const char* text) : m_Text(EmptyText()) {
  if (text != nullptr) AssignBytes(text, CheckedLength(std::strlen(text)));
}

CString::CString(const char* text, int length) : m_Text(EmptyText()) {
  if (length < 0 || (text == nullptr && length != 0)) AtlThrow(E_INVALIDARG);
  if (length > 0) AssignBytes(text, length);
}

CString::CString(char ch, int count) : m_Text(EmptyText()) {
  if (count > 0) {
    MakeWritable(count);
    std::memset(m_Text, ch, static_cast<size_t>(count));
    SetLength(count);
  }
}

CString::CString(const std::string& text) : m_Text(EmptyText()) {
  AssignBytes(text.data(), CheckedLength(text.size()));
}

CString::~CString() { Release(m_Text); }

CString& CString::operator=(const CString& other) {
  // Shared first, so that assigning a string to itself keeps its text.
  char* text = Share(other);
  Release(m_Text);
  m_Text = text;
  return *this;
}

CString& CString::operator=(CString&& other) noexcept {
  if (this != &other) {
    Release(m_Text);
    m_Text = other.m_Text;
    other.m_Text = EmptyText();
  }
  return *this;
}

CString& CString::operator=(const char* text) {
  // AssignBytes copes with a text that points into this string.
  if (text == nullptr) {
    Empty();
  } else {
    AssignBytes(text, CheckedLength(std::strlen(text)));
  }
  return *this;
}

CString& CString::operator=(char ch) {
  AssignBytes(&ch, 1);
  return *this;
}

CString& CString::operator+=(const CString& other) {
  AppendBytes(other.GetString(), other.GetLength());
  return *this;
}

CString& CString::operator+=(const char* text) {
  if (text != nullptr) AppendBytes(text, CheckedLength(std::strlen(text)));
  return *this;
}

CString& CString::operator+=(char ch) {
  AppendBytes(&ch, 1);
  return *this;
}

// --- Size and access ---------------------------------------------------------------------------

void CString::Empty() noexcept {
  Release(m_Text);
  m_Text = EmptyText();
}

char CString::GetAt(int index) const {
  if (index < 0 || index > GetLength()) AtlThrow(E_INVALIDARG);
  return m_Text[index];
}

char CString::operator[](int index) const { return GetAt(index); }

void CString::SetAt(int index, char ch) {
  if (index < 0 || index >= GetLength()) AtlThrow(E_INVALIDARG);
  MakeWritable(GetLength())[index] = ch;
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
  // byte decides, and the step is taken after the change, as in ATL. The
  // text is made this string's own at the first hit only.
  const int length = GetLength();
  char* text = m_Text;
  int i = 0;
  while (i < length) {
    if (text[i] == oldCh) {
      if (count == 0) text = MakeWritable(length);
      text[i] = newCh;
      ++count;
    }
    i += static_cast<int>(CharLength(text + i));
  }
  return count;
}

int CString::Replace(const char* oldText, const char* newText) {
  const size_t oldLength = oldText != nullptr ? std::strlen(oldText) : 0;
  if (oldLength == 0) return 0;
  if (newText == nullptr) newText = "";
  // The search runs over each NUL-separated piece of the string, as ATL's
  // does; the new text is built aside, so `newText` may point into this.
  const char* begin = m_Text;
  const char* end = begin + GetLength();
  int count = 0;
  std::string result;
  Guarded([&] {
    size_t copied = 0;
    for (const char* piece = begin; piece < end; piece += std::strlen(piece) + 1) {
      for (const char* hit = piece; (hit = vekzol::platform::Mbsstr(hit, oldText)) != nullptr;
           hit += oldLength) {
        const size_t at = static_cast<size_t>(hit - begin);
        result.append(begin + copied, at - copied);
        result.append(newText);
        copied = at + oldLength;
        ++count;
      }
    }
    if (count > 0) result.append(begin + copied, static_cast<size_t>(end - begin) - copied);
  });
  if (count > 0) AssignBytes(result.data(), CheckedLength(result.size()));
  return count;
}

int CString::Remove(char ch) {
  // Whole characters whose lead byte is `ch` go, as in ATL; the result is
  // the number of bytes removed.
  const int length = GetLength();
  if (std::memchr(m_Text, ch, static_cast<size_t>(length)) == nullptr) return 0;
  char* text = MakeWritable(length);
  int source = 0;
  int dest = 0;
  while (source < length) {
    const int step = static_cast<int>(CharLength(text + source));
    if (text[source] != ch) {
      std::memmove(text + dest, text + source, static_cast<size_t>(step));
      dest += step;
    }
    source += step;
  }
  SetLength(dest);
  return length - dest;
}

int CString::Insert(int index, char ch) {
  const char text[1] = {ch};
  return Insert(index, text, 1);
}

int CString::Insert(int index, const char* text) {
  if (text == nullptr) return GetLength();
  return Insert(index, text, CheckedLength(std::strlen(text)));
}

int CString::Insert(int index, const char* text, int length) {
  index = std::clamp(index, 0, GetLength());
  // Built aside: `text` may point into this string.
  std::string result;
  Guarded([&] {
    result.reserve(static_cast<size_t>(GetLength()) + static_cast<size_t>(length));
    result.append(m_Text, static_cast<size_t>(index));
    result.append(text, static_cast<size_t>(length));
    result.append(m_Text + index, static_cast<size_t>(GetLength() - index));
  });
  AssignBytes(result.data(), CheckedLength(result.size()));
  return GetLength();
}

int CString::Delete(int index, int count) {
  if (index < 0) index = 0;
  if (count < 0) count = 0;
  const int length = GetLength();
  if (static_cast<long long>(index) + count > length) count = length - index;
  if (count > 0) {
    char* text = MakeWritable(length);
    std::memmove(text + index, text + index + count, static_cast<size_t>(length - index - count));
    SetLength(length - count);
  }
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
  int first = 0;
  while (IsSpace(m_Text[first])) first += static_cast<int>(CharLength(m_Text + first));
  DropFront(first);
  return *this;
}

CString& CString::TrimLeft(char target) {
  int first = 0;
  while (first < GetLength() && m_Text[first] == target) {
    first += static_cast<int>(CharLength(m_Text + first));
  }
  DropFront(std::min(first, GetLength()));
  return *this;
}

CString& CString::TrimLeft(const char* targets) {
  if (targets == nullptr || *targets == '\0') return *this;
  int first = 0;
  while (m_Text[first] != '\0' && SetHasByte(targets, m_Text[first])) {
    first += static_cast<int>(CharLength(m_Text + first));
  }
  DropFront(first);
  return *this;
}

CString& CString::TrimRight() {
  const char* begin = m_Text;
  const char* last = nullptr;
  for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
    if (!IsSpace(*p)) {
      last = nullptr;
    } else if (last == nullptr) {
      last = p;
    }
  }
  if (last != nullptr) Resize(static_cast<int>(last - begin));
  return *this;
}

CString& CString::TrimRight(char target) {
  const char* begin = m_Text;
  const char* last = nullptr;
  for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
    if (*p != target) {
      last = nullptr;
    } else if (last == nullptr) {
      last = p;
    }
  }
  if (last != nullptr) Resize(static_cast<int>(last - begin));
  return *this;
}

CString& CString::TrimRight(const char* targets) {
  if (targets == nullptr || *targets == '\0') return *this;
  const char* begin = m_Text;
  const char* last = nullptr;
  for (const char* p = begin; *p != '\0'; p = Mbsinc(p)) {
    if (!SetHasByte(targets, *p)) {
      last = nullptr;
    } else if (last == nullptr) {
      last = p;
    }
  }
  if (last != nullptr) Resize(static_cast<int>(last - begin));
  return *this;
}

// --- Case and order ----------------------------------------------------------------------------
// Like `_mbslwr_s`, `_mbsupr_s` and `_mbsrev`, these stop at the first NUL.

CString& CString::MakeLower() {
  const size_t length = std::strlen(m_Text);
  if (length > 0) vekzol::platform::Mbslwr(MakeWritable(GetLength()), length);
  return *this;
}

CString& CString::MakeUpper() {
  const size_t length = std::strlen(m_Text);
  if (length > 0) vekzol::platform::Mbsupr(MakeWritable(GetLength()), length);
  return *this;
}

CString& CString::MakeReverse() {
  if (std::strlen(m_Text) < 2) return *this;
  char* begin = MakeWritable(GetLength());
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
  AssignBytes(text.data(), CheckedLength(text.size()));
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
  AppendBytes(text.data(), CheckedLength(text.size()));
}

// --- Buffer access -----------------------------------------------------------------------------
// As before this string shared its text, a request for a longer buffer
// grows the string (with NULs) at once; ReleaseBuffer then sets the length
// that counts. While the buffer is out the block is marked unshared, so a
// copy made in between gets its own text.

char* CString::GetBuffer() { return GetBuffer(0); }

char* CString::GetBuffer(int minLength) {
  if (minLength < 0) AtlThrow(E_INVALIDARG);
  if (minLength > GetLength()) {
    Resize(minLength);
  } else {
    MakeWritable(GetLength());
  }
  MarkUnshared();
  return m_Text;
}

char* CString::GetBufferSetLength(int length) {
  if (length < 0) AtlThrow(E_INVALIDARG);
  Resize(length);
  MarkUnshared();
  return m_Text;
}

void CString::ReleaseBuffer(int newLength) {
  if (newLength == -1) {
    newLength = static_cast<int>(std::strlen(m_Text));
  }
  // The length must lie within the buffer handed out.
  if (newLength < 0 || newLength > GetLength()) AtlThrow(E_INVALIDARG);
  if (m_Text == EmptyText()) return;
  if (newLength != GetLength() || IsShared()) Resize(newLength);
  HeaderOf(m_Text)->refs.store(1, std::memory_order_release);
}

void CString::Append(const char* text, int length) {
  if (length < 0 || (text == nullptr && length != 0)) AtlThrow(E_INVALIDARG);
  AppendBytes(text, length);
}

void CString::Preallocate(int length) {
  if (length < 0) AtlThrow(E_INVALIDARG);
  if (length > GetLength()) MakeWritable(length);
}

void CString::MarkUnshared() noexcept {
  HeaderOf(m_Text)->refs.store(kUnshared, std::memory_order_release);
}

// --- Free operators ----------------------------------------------------------------------------
// Each sum is made in one block of the right size.

namespace {

CString Concat(const char* left, int leftLength, const char* right, int rightLength) {
  CString result;
  if (rightLength > std::numeric_limits<int>::max() - 64 - leftLength) AtlThrow(E_OUTOFMEMORY);
  result.Preallocate(leftLength + rightLength);
  result.Append(left, leftLength);
  result.Append(right, rightLength);
  return result;
}

inline int LengthOf(const char* text) {
  return text == nullptr ? 0 : CheckedLength(std::strlen(text));
}

}  // namespace

CString operator+(const CString& left, const CString& right) {
  return Concat(left.GetString(), left.GetLength(), right.GetString(), right.GetLength());
}

CString operator+(const CString& left, const char* right) {
  return Concat(left.GetString(), left.GetLength(), right, LengthOf(right));
}

CString operator+(const char* left, const CString& right) {
  return Concat(left, LengthOf(left), right.GetString(), right.GetLength());
}

CString operator+(const CString& left, char right) {
  return Concat(left.GetString(), left.GetLength(), &right, 1);
}

CString operator+(char left, const CString& right) {
  return Concat(&left, 1, right.GetString(), right.GetLength());
}

// Two CStrings are ordered inline, eight bytes at a time (TextOrder.h): no
// copy, no allocation, no call per byte (these sit on the hot path of
// ordered maps). Against a plain character pointer, which carries no
// padding, the multi-byte compare of the platform decides.
bool operator==(const CString& left, const CString& right) {
  return vekzol::platform::TextEqual(left, right);
}
bool operator==(const CString& left, const char* right) { return left.Compare(right) == 0; }
bool operator==(const char* left, const CString& right) { return right.Compare(left) == 0; }
bool operator!=(const CString& left, const CString& right) { return !(left == right); }
bool operator!=(const CString& left, const char* right) { return left.Compare(right) != 0; }
bool operator!=(const char* left, const CString& right) { return right.Compare(left) != 0; }

bool operator<(const CString& left, const CString& right) {
  return vekzol::platform::TextCompare(left, right) < 0;
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

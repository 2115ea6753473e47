// File: UnicodeString.h
// UnicodeString: one text held in two forms at once, a narrow `char` form in
// the ANSI code page (UTF-8 on POSIX) and a 16-bit BSTR form, both made
// eagerly at construction and at assignment.
//
// Contract:
// - The BSTR's prefix length depends on the source: from a narrow `char*`
//   it counts the closing NUL (the text "abc" gives length 4); from a BSTR
//   it is that BSTR's own length; from a CString it is the text's length
//   without a NUL.
// - Assignment from another UnicodeString copies the two pointers only:
//   both objects then hold the same blocks and both destructors release
//   them, so at most one of them may be destroyed. Nothing reference-counts.
// - Construction from a CString leaves its temporary BSTR behind (one block
//   per construction), a known leak kept for the host's sake.
// - ConvertToBSTR and ConvertToCharPtr hand out copies owned by the caller,
//   released with deleteBstr and deleteStr; deleteStr also releases the
//   blocks of VEKZOLZip. A caller in another module uses these two so that a
//   block goes back to the allocator that made it.
// - The comparisons answer false while the form they compare is null; their
//   argument must not be null. A null text given to a constructor or an
//   assignment gives both forms null, as the empty constructor does; print
//   without a narrow form writes "_Str is " and the end of line.
// - Nothing reports failure: a failed BSTR allocation leaves the 16-bit form
//   null; a failure of operator new passes through as std::bad_alloc.
// - Objects are not shared between threads; nothing static is used.
#ifndef VEKZOL_SERVICES_UNICODESTRING_H_
#define VEKZOL_SERVICES_UNICODESTRING_H_

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API UnicodeString {
 public:
  // Both forms null.
  UnicodeString();
  // Copies the NUL-terminated narrow text and converts it, closing NUL
  // included, to the 16-bit form.
  UnicodeString(char const* text);  // NOLINT(google-explicit-constructor)
  // `text` must be a true BSTR: its length prefix is read. The narrow form
  // is its text up to the first NUL unit.
  UnicodeString(unsigned short* text);  // NOLINT(google-explicit-constructor)
  UnicodeString(CString const& text);   // NOLINT(google-explicit-constructor)
  // Copying would let two objects release the same blocks; assignment
  // below shares them knowingly, a copy is refused.
  UnicodeString(UnicodeString const& other) = delete;
  ~UnicodeString();

  // Replace both forms as the matching constructor builds them, releasing
  // the old ones.
  UnicodeString const& operator=(char* text);
  UnicodeString const& operator=(unsigned short* text);
  // Copies the two pointers and nothing else (see the contract above).
  UnicodeString const& operator=(UnicodeString const& other);

  // Byte-wise, case-sensitive comparison of whole strings.
  bool operator==(char* text);
  // Unit by unit up to the first NUL; the prefix length is not looked at.
  bool operator==(unsigned short* text);

  // `*out` gets a new copy of the 16-bit form with the same prefix length,
  // or null when there is none.
  void ConvertToBSTR(unsigned short** out);
  // A new copy of the narrow form, or null when there is none.
  char* ConvertToCharPtr();
  // Writes "_Str is <narrow text>" and an end of line to standard output.
  void print();

  // Release a BSTR (SysFreeString) and a narrow block (delete[]).
  static void deleteBstr(unsigned short* p);
  static void deleteStr(char* p);

 private:
  friend class UnicodeStringTestPeer;

  void SetFromNarrow(char const* text);
  void SetFromWide(unsigned short* text);
  void Release();

  char* _NarrowText;
  unsigned short* _WideText;
};

#endif  // VEKZOL_SERVICES_UNICODESTRING_H_

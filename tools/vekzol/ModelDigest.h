// File: ModelDigest.h
// The digest of a model's content, by which a change file names the state
// it was made from and the state it leads to: SHA-256 (OpenSSL's libcrypto)
// over the model's canonical form, written "sha256:" and 64 lowercase hex
// digits.
//
// The canonical form is one compact JSON text, with no blank anywhere:
//
//   {"objects":[O,O,...],"relations":[R,R,...]}
//
// Each O and R is the content of the first entry of an id (ContentRecord.h),
// the entries in ascending id order (byte order): {"id":...} followed by the
// fields given, in their fixed order (objects: name, refId, sciid,
// backupName, identPath; relations: type, source, target), then for an
// object with attributes "attributes":{...} with its attributes by key.
// Strings are escaped as the tool writes JSON ('"', '\\', \b \f \n \r \t,
// other control characters and U+007F as \u00xx, everything else as UTF-8
// bytes), numbers as ContentRecord.h writes them (integers in decimal, reals
// in their shortest form with ".0" when it would read as an integer). So the
// digest does not change when the file is formatted otherwise, its members
// or entries are reordered, or an entry with an id used before is added or
// dropped; it changes with any field, attribute, id or end.
#ifndef VEKZOL_TOOLS_VEKZOL_MODELDIGEST_H_
#define VEKZOL_TOOLS_VEKZOL_MODELDIGEST_H_

#include <memory>
#include <string>
#include <string_view>

#include "ContentRecord.h"

namespace vekzol_tool {

// SHA-256 of the bytes given in turn.
class Sha256 {
 public:
  Sha256();
  ~Sha256();
  Sha256(const Sha256&) = delete;
  Sha256& operator=(const Sha256&) = delete;

  void Update(std::string_view bytes);
  // "sha256:" and the digest in lowercase hex; ends the hash.
  std::string Finish();

 private:
  struct Context;
  std::unique_ptr<Context> context_;
};

// The canonical form of a model, written record by record and hashed as it
// goes: the objects' records first, then the relations', each list in id
// order.
class CanonicalForm {
 public:
  // `keepText`: also keep the whole text (for tests).
  explicit CanonicalForm(bool keepText = false);

  // Starts the list of `kind`: the objects first, then the relations.
  void BeginList(const RecordKind& kind);
  void Add(const RecordKind& kind, const Record& record);
  // Closes the form and answers its digest.
  std::string Finish();
  const std::string& Text() const { return text_; }

 private:
  void Flush();

  Sha256 hash_;
  std::string buffer_;
  std::string text_;
  bool keepText_;
  bool firstInList_ = true;
  int lists_ = 0;
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_MODELDIGEST_H_

// File: ModelDigest.cpp
#include "ModelDigest.h"

#include <openssl/evp.h>

#include <new>

#include "ToolError.h"

namespace vekzol_tool {

namespace {

// The buffer is hashed whenever it holds this much.
constexpr size_t kFlushBytes = 1 << 16;

}  // namespace

struct Sha256::Context {
  EVP_MD_CTX* context = nullptr;
  ~Context() { EVP_MD_CTX_free(context); }
};

Sha256::Sha256() : context_(std::make_unique<Context>()) {
  context_->context = EVP_MD_CTX_new();
  if (context_->context == nullptr) throw std::bad_alloc();
  if (EVP_DigestInit_ex(context_->context, EVP_sha256(), nullptr) != 1) {
    throw ToolError("SHA-256 is not available from the crypto library");
  }
}

Sha256::~Sha256() = default;

void Sha256::Update(std::string_view bytes) {
  if (EVP_DigestUpdate(context_->context, bytes.data(), bytes.size()) != 1) {
    throw ToolError("the SHA-256 digest failed");
  }
}

std::string Sha256::Finish() {
  unsigned char digest[EVP_MAX_MD_SIZE];
  unsigned int size = 0;
  if (EVP_DigestFinal_ex(context_->context, digest, &size) != 1 || size != 32) {
    throw ToolError("the SHA-256 digest failed");
  }
  static const char kHex[] = "0123456789abcdef";
  std::string text = "sha256:";
  for (unsigned int i = 0; i < size; ++i) {
    text += kHex[digest[i] >> 4];
    text += kHex[digest[i] & 15];
  }
  return text;
}

CanonicalForm::CanonicalForm(bool keepText) : keepText_(keepText) {
  buffer_.reserve(kFlushBytes + 4096);
}

void CanonicalForm::BeginList(const RecordKind& kind) {
  buffer_ += lists_ == 0 ? "{\"" : "],\"";
  buffer_ += kind.list;
  buffer_ += "\":[";
  firstInList_ = true;
  ++lists_;
}

void CanonicalForm::Add(const RecordKind& kind, const Record& record) {
  if (!firstInList_) buffer_ += ',';
  firstInList_ = false;
  AppendRecordJson(buffer_, kind, record, false);
  if (buffer_.size() >= kFlushBytes) Flush();
}

std::string CanonicalForm::Finish() {
  buffer_ += "]}";
  Flush();
  return hash_.Finish();
}

void CanonicalForm::Flush() {
  hash_.Update(buffer_);
  if (keepText_) text_ += buffer_;
  buffer_.clear();
}

}  // namespace vekzol_tool

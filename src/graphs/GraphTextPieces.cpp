// File: GraphTextPieces.cpp
#include "graphs/GraphTextPieces.h"

#include <climits>
#include <cstdint>
#include <cstring>
#include <string>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/CComVariant.h>
#include <vekzol/platform/Status.h>
#include <vekzol/platform/Variant.h>

#include "graphs/MemoryFailure.h"
#include "platform/TextConversion.h"

namespace vekzol {
namespace graphs {

CString CountText(std::size_t count) {
  const CComVariant number(static_cast<int>(static_cast<std::uint32_t>(count)));
  CComVariant text;
  const HRESULT status = VariantChangeType(&text, &number, 0, VT_BSTR);
  if (FAILED(status)) {
    AtlThrow(status);
  }
  // OLECHAR is a 16-bit unit on every platform (wchar_t on Windows). The
  // narrowed text is a standard string: its allocation failure leaves as
  // the library's own.
  return RaiseMemoryFailure([&text] {
    const std::string narrow = platform::WideToNarrow(
        reinterpret_cast<const char16_t*>(text.bstrVal), SysStringLen(text.bstrVal));
    return CString(narrow);
  });
}

void AppendBlanks(CString& text, std::size_t count) {
  const int length = text.GetLength();
  if (count > static_cast<std::size_t>(INT_MAX - length)) {
    AtlThrow(E_OUTOFMEMORY);
  }
  const int newLength = length + static_cast<int>(count);
  char* buffer = text.GetBufferSetLength(newLength);
  std::memset(buffer + length, ' ', count);
  text.ReleaseBuffer(newLength);
}

}  // namespace graphs
}  // namespace vekzol

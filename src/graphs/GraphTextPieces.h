// File: GraphTextPieces.h
// Pieces shared by the text forms of vertices, edges and graphs.
#ifndef VEKZOL_SRC_GRAPHS_GRAPHTEXTPIECES_H_
#define VEKZOL_SRC_GRAPHS_GRAPHTEXTPIECES_H_

#include <cstddef>

#include <vekzol/platform/CString.h>

namespace vekzol {
namespace graphs {

// The decimal text of a count, made as every number of the text forms is
// made: the count as a 32-bit integer (wrapping, as a count beyond that
// range always has) in a VT_I4 variant, VariantChangeType to VT_BSTR with
// flags 0, narrowed. A failed conversion raises CAtlException with its code.
CString CountText(std::size_t count);

// Appends `count` blanks in one step (tree lines are indented by up to
// millions of blanks). Raises CAtlException(E_OUTOFMEMORY) when the text
// would exceed what a CString can hold.
void AppendBlanks(CString& text, std::size_t count);

}  // namespace graphs
}  // namespace vekzol

#endif  // VEKZOL_SRC_GRAPHS_GRAPHTEXTPIECES_H_

// File: JsonPatch.h
// The change from one model to another as a JSON Patch (RFC 6902) against
// the old model's file as it stands, for `diff --format json-patch`: any
// JSON Patch implementation turns that file into one whose content is the
// new model's. One array of operations, one a line, in three groups:
//
// - the changes of ids both have, in id order, on the first entry of the
//   id: {"op": "test"} of its "id", then per field or attribute "add",
//   "replace" or "remove" at /objects/I/NAME or /objects/I/attributes/KEY
//   (JSON Pointer escaping: "~" as "~0", "/" as "~1"), a "test" of the old
//   value before each text field is replaced or removed. An entry without
//   "attributes" gets the new attributes in one "add" of the member;
// - the entries of removed ids, every entry of such an id, from the highest
//   position of each list down (so that no removal moves another), each
//   after a "test" of its "id";
// - the added records, "add" at /objects/- (or the whole list at /objects
//   when the file has none), in id order.
//
// Positions are those of the file's lists; like the model reader, a JSON
// Patch implementation takes the last member "objects" of the top-level
// object. Within an entry, the reader takes the first member of a name,
// most JSON libraries the last: the patch assumes the entries give each
// member once.
#ifndef VEKZOL_TOOLS_VEKZOL_JSONPATCH_H_
#define VEKZOL_TOOLS_VEKZOL_JSONPATCH_H_

#include "ContentDifference.h"
#include "FileIO.h"
#include "ModelContent.h"

namespace vekzol_tool {

// Writes the patch that turns the file of `before` into a file with the
// content of the model `difference` compares it with, which is still
// loaded (the added records are read from it).
void WriteJsonPatch(const ModelContent& before, const ModelDifference& difference, Output& output);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_JSONPATCH_H_

// File: ChangeApplication.h
// Applying a change file to a model: forwards, from the state it was made
// from to the state it leads to, or backwards (NEW to OLD, `--reverse`).
//
// The model's digest must be the one the change starts from (forwards the
// old digest, backwards the new one), unless the check is waived; then the
// change applies to any model in which every element it touches is as the
// change expects. In both cases each step checks what it touches: an id to
// remove must be there with exactly the recorded content, an id to add must
// be absent, a field or attribute to change must have the value the change
// starts from. The first step that does not hold is an error naming the
// element and field. Unless waived, the result's digest must be the one
// the change leads to.
//
// The model written keeps the entries of the input in their order, each as
// it was (members it does not know included, rewritten as JSON), but for:
// the entries of a removed id, all of them (a duplicate left behind would
// take the id's place); the first entry of a changed id, whose changed
// members are replaced in place, dropped, or added at its end (the
// attributes rewritten by key when one changes); the added records, after
// the existing entries, in id order. Duplicates of an id the change
// touches otherwise stay as they were.
#ifndef VEKZOL_TOOLS_VEKZOL_CHANGEAPPLICATION_H_
#define VEKZOL_TOOLS_VEKZOL_CHANGEAPPLICATION_H_

#include "ChangeFile.h"
#include "FileIO.h"
#include "ModelContent.h"

namespace vekzol_tool {

struct ApplyOptions {
  bool reverse = false;
  bool ignoreDigest = false;
};

// Applies `change` to `model` (loaded with its digest) and writes the
// resulting model to `output`. Throws ToolError when the model is not the
// state the change starts from, when a step does not hold, and when the
// result is not the state the change leads to; nothing is written then.
void ApplyChange(const ModelContent& model, const ChangeFile& change, const ApplyOptions& options,
                 Output& output);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CHANGEAPPLICATION_H_

"""Applies a JSON Patch (RFC 6902) to a JSON file with python3-jsonpatch, an
implementation independent of vekzol: ApplyJsonPatch.py IN PATCH OUT.
Prints "SKIPPED: ..." and exits 0 when the module is missing."""
import json
import sys

try:
    import jsonpatch
except ImportError:
    print("SKIPPED: python3 cannot import jsonpatch (Debian package python3-jsonpatch)")
    sys.exit(0)

source, patch, target = sys.argv[1:4]
with open(source, encoding="utf-8") as stream:
    document = json.load(stream)
with open(patch, encoding="utf-8") as stream:
    operations = json.load(stream)
result = jsonpatch.apply_patch(document, operations)
with open(target, "w", encoding="utf-8") as stream:
    json.dump(result, stream)

#!/usr/bin/env python3
"""Checks that every #include in the tree follows the layering of the
library's components.

Each file belongs to one component, by its path. A component may include
its own files and the files of every component below it, that is, every
component it reaches through the dependencies written in COMPONENTS. An
include of a component above (one that reaches back to the includer) is an
upward include; an include of a component that neither reaches the other is
a sideways include. Both fail the check, with the file, the line and the two
components named.

Three further rules:
- Programs outside the library (the tool, the benchmarks, the fuzz targets,
  the examples, the API and packaging tests) include only the installed
  headers under include/, never a file of src/.
- A test that links the shared library (a file named *_shared_test.cpp) is
  written as a host would write it, with the umbrella header; it may include
  that header whatever its component.
- A component's tests (*_test.cpp and the *TestSupport.h, *TestPeer.h and
  *Testing.h headers) may also use the components in its test_deps, which
  its library code may not.

Usage: check-layering.py [ROOT]   (ROOT defaults to the repository)
Exit status 0 when every include follows the layering, 1 otherwise, 2 when a
file belongs to no component or the layering itself has a cycle.
"""

import os
import re
import sys

# The components, from the bottom up. `paths` are path prefixes relative to
# the root (a prefix ending in ".h" is one file); the longest prefix that
# matches a file decides its component. `deps` are the components directly
# below; `test_deps` are usable by tests only; `public_only` components are
# outside the library and see only include/.
COMPONENTS = {
    "platform-types": dict(paths=["include/vekzol/platform/"], deps=[]),
    "platform": dict(paths=["src/platform/"], deps=["platform-types"]),
    "state": dict(paths=["src/state/"], deps=["platform"]),
    "objects": dict(paths=["include/vekzol/objects/", "src/objects/"], deps=["platform"]),
    "diagnostics": dict(
        paths=["include/vekzol/diagnostics/", "src/diagnostics/"], deps=["state", "objects"]),
    "frames": dict(
        paths=["include/vekzol/services/VEKZOLFrame3D.h", "src/frames/"], deps=["platform"]),
    "unicode": dict(
        paths=["include/vekzol/services/UnicodeString.h", "src/unicode/"], deps=["platform"]),
    "stringlists": dict(
        paths=["include/vekzol/services/VEKZOLSTLServices.h", "src/stringlists/"],
        deps=["diagnostics"]),
    "options": dict(
        paths=["include/vekzol/diagnostics/VEKZOLOptionsMgr.h", "src/options/"],
        deps=["diagnostics", "stringlists"]),
    "filesystem": dict(
        paths=["include/vekzol/services/VEKZOLFileSystemServices.h", "src/filesystem/"],
        deps=["diagnostics"]),
    "blobs": dict(
        paths=["include/vekzol/services/VEKZOLZip.h", "src/blobs/"],
        deps=["unicode", "filesystem"]),
    "context": dict(paths=["include/vekzol/context/", "src/context/"], deps=["diagnostics"]),
    "graphs": dict(paths=["include/vekzol/graphs/", "src/graphs/"], deps=["diagnostics"]),
    "generator": dict(paths=["tools/generator/"], deps=["graphs"], public_only=True),
    "comparison": dict(
        paths=["include/vekzol/comparison/", "src/comparison/"],
        deps=["graphs", "stringlists"],
        test_deps=["generator"]),
    # The umbrella header: everything a host can include.
    "library": dict(
        paths=["include/vekzol/VEKZOLBase.h"],
        deps=["comparison", "context", "options", "frames", "blobs"]),
    # Tests of the library as a whole, which reach into every layer.
    "library-tests": dict(paths=["tests/library/"], deps=["library"]),
    # The command-line tool and its tests.
    "cli": dict(paths=["tools/vekzol/", "tools/tests/"], deps=["library", "generator"],
                public_only=True),
    # The small libraries that the ABI check's tests compare: programs of
    # their own, apart from the library.
    "abi-tests": dict(paths=["tests/abi/"], deps=[]),
    # Host programs.
    "hosts": dict(
        paths=["bench/", "fuzz/", "examples/", "tests/api/", "tests/packaging/"],
        deps=["library", "generator", "cli"],
        public_only=True),
}

# One file may include upward, and only the headers listed: the library's load
# order. C++ constructs the statics of one translation unit in the order of
# their definitions, and leaves the order between translation units open, so
# the statics of the public classes that need construction at load are all
# defined in this one file, which therefore sees those classes.
LOAD_ORDER_FILE = "src/state/LibraryState.cpp"
LOAD_ORDER_INCLUDES = {
    "include/vekzol/diagnostics/VEKZOLErrorServices.h",
    "include/vekzol/diagnostics/VEKZOLLog.h",
    "include/vekzol/diagnostics/VEKZOLOptionsMgr.h",
    "include/vekzol/diagnostics/VEKZOLTimer.h",
    "include/vekzol/services/VEKZOLFileSystemServices.h",
    "include/vekzol/services/VEKZOLSTLServices.h",
    "include/vekzol/services/VEKZOLZip.h",
}

UMBRELLA = "include/vekzol/VEKZOLBase.h"
# The directories that the build puts on the include path of one target or
# another, where a quoted include is looked for after the including file's
# own folder. A quoted include found nowhere is an error: the check cannot
# place what it cannot find.
QUOTED_INCLUDE_DIRS = ["src", "tools/generator", "tools/vekzol"]
SCANNED_ROOTS = ["include", "src", "tools", "bench", "fuzz", "examples", "tests"]
SOURCE_SUFFIXES = (".h", ".hpp", ".cpp", ".cc")
TEST_FILE = re.compile(r"(_test\.cpp|TestSupport\.h|TestPeer\.h|Testing\.h)$")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def component_of(path):
    best, best_length = None, -1
    for name, component in COMPONENTS.items():
        for prefix in component["paths"]:
            matches = path == prefix if prefix.endswith(".h") else path.startswith(prefix)
            if matches and len(prefix) > best_length:
                best, best_length = name, len(prefix)
    return best


def reachable(start, key):
    """The components below `start` through `key` edges, then `deps` edges."""
    seen, stack = set(), list(COMPONENTS[start].get(key, []))
    while stack:
        name = stack.pop()
        if name not in seen:
            seen.add(name)
            stack.extend(COMPONENTS[name]["deps"])
    return seen


def find_cycle():
    for name in COMPONENTS:
        if name in reachable(name, "deps"):
            return name
    return None


def resolve(root, including, bracket, target):
    """The root-relative path that an include names, or None for a header
    outside the tree (the standard library, gtest, zlib, ...)."""
    candidates = []
    if bracket == '"':
        candidates.append(os.path.join(os.path.dirname(including), target))
        candidates.extend(os.path.join(directory, target) for directory in QUOTED_INCLUDE_DIRS)
    candidates.append(os.path.join("include", target))
    for candidate in candidates:
        candidate = os.path.normpath(candidate)
        if os.path.isfile(os.path.join(root, candidate)):
            return candidate.replace(os.sep, "/")
    return None


def source_files(root):
    for top in SCANNED_ROOTS:
        for directory, _, files in os.walk(os.path.join(root, top)):
            for name in sorted(files):
                if name.endswith(SOURCE_SUFFIXES):
                    path = os.path.join(directory, name)
                    yield os.path.relpath(path, root).replace(os.sep, "/")


def check_include(path, line_number, target, source, destination, is_test):
    """An error message for one include, or None when it follows the layering."""
    where = "%s:%d" % (path, line_number)
    if destination == source:
        return None
    if COMPONENTS[source].get("public_only") and target.startswith("src/"):
        return "%s: %s includes %s, inside the library; only include/ is public" % (
            where, source, target)
    if path == LOAD_ORDER_FILE and target in LOAD_ORDER_INCLUDES:
        return None
    if target == UMBRELLA and path.endswith("_shared_test.cpp"):
        return None
    allowed = reachable(source, "deps")
    if is_test:
        allowed |= reachable(source, "test_deps")
    if destination in allowed:
        return None
    if source in reachable(destination, "deps"):
        return "%s: %s includes %s of %s, which is above it (upward)" % (
            where, source, target, destination)
    return "%s: %s includes %s of %s, which is beside it: neither is below the other " \
           "(sideways)" % (where, source, target, destination)


def main():
    root = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else
                           os.path.join(os.path.dirname(__file__), ".."))
    cycle = find_cycle()
    if cycle:
        print("the layering has a cycle through %s" % cycle)
        return 2
    errors, unplaced, files, includes = [], [], 0, 0
    for path in source_files(root):
        source = component_of(path)
        if source is None:
            unplaced.append(path)
            continue
        files += 1
        is_test = bool(TEST_FILE.search(path))
        with open(os.path.join(root, path), encoding="utf-8", errors="replace") as text:
            for line_number, line in enumerate(text, 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                target = resolve(root, path, match.group(1), match.group(2))
                if target is None:
                    if match.group(1) == '"':
                        errors.append("%s:%d: cannot find \"%s\" in the tree" % (
                            path, line_number, match.group(2)))
                    continue
                destination = component_of(target)
                if destination is None:
                    unplaced.append(target)
                    continue
                includes += 1
                error = check_include(path, line_number, target, source, destination, is_test)
                if error:
                    errors.append(error)
    for path in sorted(set(unplaced)):
        print("%s: belongs to no component; add its folder to the layering" % path)
    for error in errors:
        print(error)
    if unplaced:
        return 2
    if errors:
        print("%d include(s) against the layering" % len(errors))
        return 1
    print("layering holds: %d includes in %d files across %d components" % (
        includes, files, len(COMPONENTS)))
    return 0


if __name__ == "__main__":
    sys.exit(main())

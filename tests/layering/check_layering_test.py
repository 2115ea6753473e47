#!/usr/bin/env python3
"""The layering check on small trees made for the purpose: one include of
each kind it must refuse, the ones it must let pass, and a file that belongs
to no component. Each case compares the check's whole output and its exit
status."""

import os
import subprocess
import sys
import tempfile
import unittest

CHECK = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts",
                     "check-layering.py")


def run_check(files):
    """Writes `files` (path: text) into a fresh root and runs the check on it."""
    with tempfile.TemporaryDirectory() as root:
        for path, text in files.items():
            full = os.path.join(root, path)
            os.makedirs(os.path.dirname(full), exist_ok=True)
            with open(full, "w", encoding="utf-8") as out:
                out.write(text)
        result = subprocess.run([sys.executable, CHECK, root], capture_output=True, text=True)
        return result.returncode, result.stdout


# Headers that the cases include.
TARGETS = {
    "include/vekzol/platform/Status.h": "",
    "include/vekzol/diagnostics/VEKZOLLog.h": "",
    "src/platform/System.h": "",
    "src/stringlists/Sort.h": "",
    "src/unicode/Wide.h": "",
    "tools/generator/ComparisonModelGenerator.h": "",
}


class CheckLayeringTest(unittest.TestCase):
    def test_downward_includes_pass(self):
        files = dict(TARGETS)
        files["src/diagnostics/Log.cpp"] = (
            '#include <vekzol/platform/Status.h>\n#include "platform/System.h"\n'
            "#include <string>\n")
        files["src/blobs/Zip.cpp"] = '#include "unicode/Wide.h"\n'
        self.assertEqual(run_check(files),
                         (0, "layering holds: 3 includes in 8 files across 20 components\n"))

    def test_upward_include_fails(self):
        files = dict(TARGETS)
        files["src/diagnostics/Log.cpp"] = '#include <string>\n#include "stringlists/Sort.h"\n'
        self.assertEqual(run_check(files), (1, (
            "src/diagnostics/Log.cpp:2: diagnostics includes src/stringlists/Sort.h of "
            "stringlists, which is above it (upward)\n"
            "1 include(s) against the layering\n")))

    def test_sideways_include_fails(self):
        files = dict(TARGETS)
        files["src/frames/Frame.cpp"] = '#include "unicode/Wide.h"\n'
        self.assertEqual(run_check(files), (1, (
            "src/frames/Frame.cpp:1: frames includes src/unicode/Wide.h of unicode, which is "
            "beside it: neither is below the other (sideways)\n"
            "1 include(s) against the layering\n")))

    def test_program_outside_the_library_sees_only_installed_headers(self):
        files = dict(TARGETS)
        files["tools/vekzol/Command.cpp"] = '#include "platform/System.h"\n'
        self.assertEqual(run_check(files), (1, (
            "tools/vekzol/Command.cpp:1: cli includes src/platform/System.h, inside the "
            "library; only include/ is public\n"
            "1 include(s) against the layering\n")))

    def test_test_dependencies_serve_tests_only(self):
        files = dict(TARGETS)
        files["src/comparison/Run_test.cpp"] = '#include "ComparisonModelGenerator.h"\n'
        files["src/comparison/Run.cpp"] = '#include "ComparisonModelGenerator.h"\n'
        self.assertEqual(run_check(files), (1, (
            "src/comparison/Run.cpp:1: comparison includes "
            "tools/generator/ComparisonModelGenerator.h of generator, which is beside it: "
            "neither is below the other (sideways)\n"
            "1 include(s) against the layering\n")))

    def test_only_the_load_order_file_includes_upward(self):
        files = dict(TARGETS)
        files["src/state/LibraryState.cpp"] = "#include <vekzol/diagnostics/VEKZOLLog.h>\n"
        files["src/state/Switches.cpp"] = "#include <vekzol/diagnostics/VEKZOLLog.h>\n"
        self.assertEqual(run_check(files), (1, (
            "src/state/Switches.cpp:1: state includes include/vekzol/diagnostics/VEKZOLLog.h "
            "of diagnostics, which is above it (upward)\n"
            "1 include(s) against the layering\n")))

    def test_include_that_cannot_be_found_fails(self):
        files = dict(TARGETS)
        files["src/graphs/Graph.cpp"] = '#  include "graphs/Missing.h"\n'
        self.assertEqual(run_check(files), (1, (
            'src/graphs/Graph.cpp:1: cannot find "graphs/Missing.h" in the tree\n'
            "1 include(s) against the layering\n")))

    def test_file_outside_every_component_fails(self):
        files = dict(TARGETS)
        files["src/newfolder/New.cpp"] = ""
        self.assertEqual(run_check(files), (2, (
            "src/newfolder/New.cpp: belongs to no component; add its folder to the layering\n")))


if __name__ == "__main__":
    unittest.main()

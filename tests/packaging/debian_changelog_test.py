#!/usr/bin/python3
"""Tests of packaging/debian/debian-changelog.py on made-up CHANGELOG.md files:
the exact Debian changelog it writes, and its refusals."""
import os
import subprocess
import sys
import tempfile
import unittest

SCRIPT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "packaging",
                      "debian", "debian-changelog.py")
MAINTAINER = "Makers <makers@example.org>"

CHANGELOG = """# Changelog

Opening words, not a release.

## [Unreleased]

### Added

- Something not released yet.

## [1.1.0] - 2026-11-23

Hosts must relink:
the layout changed.

### Added

- A new function, `Foo`, whose description is long enough to be wrapped onto a second line of
  the Debian changelog.

### Fixed

- A crash.

## [1.0.0] - 2026-11-21

### Added

- Everything.
"""

EXPECTED = """pkg (1.1.0) unstable; urgency=medium

  * Hosts must relink: the layout changed.
  * Added: A new function, `Foo`, whose description is long enough to be
    wrapped onto a second line of the Debian changelog.
  * Fixed: A crash.

 -- Makers <makers@example.org>  Mon, 23 Nov 2026 00:00:00 +0000

pkg (1.0.0) unstable; urgency=medium

  * Added: Everything.

 -- Makers <makers@example.org>  Sat, 21 Nov 2026 00:00:00 +0000
"""


def run(text, version):
    with tempfile.TemporaryDirectory() as directory:
        path = os.path.join(directory, "CHANGELOG.md")
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        result = subprocess.run([sys.executable, SCRIPT, path, "pkg", version, MAINTAINER],
                                capture_output=True, text=True, check=False)
        return result.returncode, result.stdout, result.stderr.replace(path, "CHANGELOG.md")


class DebianChangelogTest(unittest.TestCase):
    def test_each_release_becomes_one_entry_newest_first(self):
        self.assertEqual(run(CHANGELOG, "1.1.0"), (0, EXPECTED, ""))

    def test_a_version_that_is_not_the_newest_release_is_refused(self):
        self.assertEqual(run(CHANGELOG, "1.2.0"), (1, "", (
            "debian-changelog.py: the newest release in CHANGELOG.md is 1.1.0, not 1.2.0: "
            "give the release its section first\n")))

    def test_a_changelog_without_releases_is_refused(self):
        self.assertEqual(run("# Changelog\n\n## [Unreleased]\n\n- Soon.\n", "1.0.0"), (1, "", (
            "debian-changelog.py: CHANGELOG.md has no released section\n")))


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/python3
"""Writes the Debian changelog of the packages from CHANGELOG.md.

    debian-changelog.py CHANGELOG.md SOURCE VERSION MAINTAINER > changelog

Each released section of CHANGELOG.md ("## [x.y.z] - yyyy-mm-dd") becomes one
entry, newest first: its opening text and each item of its "### Added",
"### Changed", ... lists become one bullet, wrapped at 78 columns. The
"Unreleased" section is not a release and is left out. The newest release
must be VERSION, so that a package cannot carry a changelog that does not
describe it.
"""
import datetime
import email.utils
import re
import sys
import textwrap

RELEASE = re.compile(r"^## \[(?P<version>[^\]]+)\] - (?P<date>\d{4}-\d{2}-\d{2})\s*$")


def releases(lines):
    """Yields (version, date, [bullet texts]) for each released section."""
    release = None
    kind = None
    paragraph = []  # lines of the opening text being read

    def end_paragraph():
        if release and paragraph:
            release[2].append(" ".join(paragraph))
        paragraph.clear()

    for line in lines + ["## end"]:
        text = line.strip()
        if line.startswith("## "):
            end_paragraph()
            if release:
                yield release
            match = RELEASE.match(line)
            release = (match["version"], match["date"], []) if match else None
            kind = None
        elif release is None:
            continue
        elif line.startswith("### "):
            end_paragraph()
            kind = text[4:]
        elif line.startswith("- "):
            release[2].append(f"{kind}: {text[2:]}" if kind else text[2:])
        elif line.startswith("  ") and text and release[2] and not paragraph:
            release[2][-1] += " " + text  # an item's next line
        elif text:
            paragraph.append(text)
        else:
            end_paragraph()


def entry(source, version, date, bullets, maintainer):
    day = datetime.datetime.strptime(date, "%Y-%m-%d").replace(tzinfo=datetime.timezone.utc)
    out = [f"{source} ({version}) unstable; urgency=medium", ""]
    for bullet in bullets:
        out += textwrap.wrap(bullet, width=78, initial_indent="  * ",
                             subsequent_indent="    ", break_on_hyphens=False)
    out += ["", f" -- {maintainer}  {email.utils.format_datetime(day)}", ""]
    return "\n".join(out)


def main(arguments):
    if len(arguments) != 4:
        sys.exit("usage: debian-changelog.py CHANGELOG.md SOURCE VERSION MAINTAINER")
    path, source, version, maintainer = arguments
    with open(path, encoding="utf-8") as file:
        found = list(releases(file.read().splitlines()))
    if not found:
        sys.exit(f"debian-changelog.py: {path} has no released section")
    if found[0][0] != version:
        sys.exit(f"debian-changelog.py: the newest release in {path} is {found[0][0]}, "
                 f"not {version}: give the release its section first")
    sys.stdout.write("\n".join(entry(source, v, d, b, maintainer) for v, d, b in found))


if __name__ == "__main__":
    main(sys.argv[1:])

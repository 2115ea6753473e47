#!/usr/bin/env python3
"""Runs the vekzol tool for an SVG drawing and checks the drawing.

The tool runs twice with the same arguments: with --format svg (written with
-o into the work directory) and with --format dot. The test checks the exit
status and standard error of the SVG run; that the SVG is well-formed XML
whose root is an SVG element; that its nodes are exactly the visible nodes of
the DOT text (their titles are the DOT node names); that the texts drawn include
every text given with --texts and none given with --absent; and, with
--max-nodes, that it draws at most that many nodes besides the legend's.

Usage: SvgDrawing.py --tool TOOL --data DIR --work DIR --exit STATUS
           [--stderr TEXT | --stderr-file FILE] [--generate N]
           [--texts A|B|... | --texts-file FILE] [--absent A|B|...]
           [--max-nodes N] -- ARGUMENTS...
A texts file holds one text a line (UTF-8).
ARGUMENTS are the tool's, without --format and -o; @WORK@ stands for the
work directory. --generate N first writes @WORK@/old.json and
@WORK@/new.json with `vekzol generate --vertices N`. The tool runs in the
data directory. Prints the time of the SVG run.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import time
import xml.etree.ElementTree as ElementTree

SVG = "{http://www.w3.org/2000/svg}"
DOT_NODE = re.compile(r'^\s*"([^"]*)" \[(.*)\];$', re.MULTILINE)


def split(text):
    return [item for item in text.split("|") if item] if text else []


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tool", required=True)
    parser.add_argument("--data", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--exit", type=int, required=True)
    parser.add_argument("--stderr", default=None)
    parser.add_argument("--stderr-file", default=None)
    parser.add_argument("--texts-file", default=None)
    parser.add_argument("--generate", type=int, default=0)
    parser.add_argument("--texts", default="")
    parser.add_argument("--absent", default="")
    parser.add_argument("--max-nodes", type=int, default=0)
    parser.add_argument("arguments", nargs="*")
    options = parser.parse_args()
    if options.stderr_file:
        with open(options.stderr_file, encoding="utf-8") as file:
            options.stderr = file.read()
    expected_texts = split(options.texts)
    if options.texts_file:
        with open(options.texts_file, encoding="utf-8") as file:
            expected_texts += file.read().split("\n")[:-1]

    shutil.rmtree(options.work, ignore_errors=True)
    os.makedirs(options.work)
    # The library's switches must not come from the caller.
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith("VEK_ZOL_") and name != "JBM_RQT_IN"}
    environment["TEMP"] = options.work
    arguments = [argument.replace("@WORK@", options.work) for argument in options.arguments]
    failures = []

    if options.generate:
        subprocess.run([options.tool, "generate", "--vertices", str(options.generate),
                        os.path.join(options.work, "old.json"),
                        os.path.join(options.work, "new.json")],
                       cwd=options.data, env=environment, check=True)

    svg_path = os.path.join(options.work, "drawing.svg")
    started = time.monotonic()
    run = subprocess.run([options.tool] + arguments + ["--format", "svg", "-o", svg_path],
                         cwd=options.data, env=environment, capture_output=True)
    seconds = time.monotonic() - started
    print("vekzol %s --format svg: %.2f s" % (" ".join(arguments), seconds))
    errors = run.stderr.decode("utf-8", "replace")
    if run.returncode != options.exit:
        failures.append("exit status %d, expected %d" % (run.returncode, options.exit))
    if options.stderr is not None and errors != options.stderr:
        failures.append("standard error:\n[%s]\nexpected:\n[%s]" % (errors, options.stderr))
    if run.stdout:
        failures.append("standard output is not empty: %r" % run.stdout[:200])

    dot = subprocess.run([options.tool, "--quiet"] + arguments + ["--format", "dot"],
                         cwd=options.data, env=environment, capture_output=True)
    # Invisible nodes (the legend's edge samples end in them) are not in an
    # SVG.
    dot_names = [name for name, attributes in DOT_NODE.findall(dot.stdout.decode("utf-8"))
                 if "style=invis" not in attributes]

    try:
        root = ElementTree.parse(svg_path).getroot()
    except (OSError, ElementTree.ParseError) as error:
        print("FAILED: %s is no well-formed XML: %s" % (svg_path, error))
        return 1
    if root.tag != SVG + "svg":
        failures.append("the root element is %s, not svg" % root.tag)
    titles = []
    for group in root.iter(SVG + "g"):
        if group.get("class") == "node":
            title = group.find(SVG + "title")
            titles.append(title.text if title is not None else None)
    if sorted(titles) != sorted(dot_names):
        failures.append("the SVG's nodes are not the DOT's: only in the SVG %s, only in the DOT %s"
                        % (sorted(set(titles) - set(dot_names)), sorted(set(dot_names) - set(titles))))
    texts = {element.text for element in root.iter(SVG + "text")}
    for text in expected_texts:
        if text not in texts:
            failures.append("no text %r is drawn" % text)
    for text in split(options.absent):
        if text in texts:
            failures.append("the text %r is drawn" % text)
    if options.max_nodes:
        drawn = [title for title in titles if not title.startswith("^legend:")]
        if len(drawn) > options.max_nodes:
            failures.append("%d nodes drawn, more than %d" % (len(drawn), options.max_nodes))
        print("%d nodes drawn" % len(drawn))

    if failures:
        print("FAILED:\n" + "\n".join(failures))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

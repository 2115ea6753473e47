#!/usr/bin/env python3
"""Checks the manual page of the vekzol tool against the tool's own help:

    ManualPage.py VEKZOL PAGE

Runs `VEKZOL --help` and `VEKZOL COMMAND --help` for every command that help
lists, and reads from them the commands and every option: its names (-x,
--xxx), its choices ({a,b}), its default (=VALUE) and whether it is
REQUIRED. The page (man(7) source) must then have:

- for every command, a line of the SYNOPSIS that starts with `vekzol` and
  names it, and a subsection `.SS COMMAND` in COMMANDS;
- for every option of a command, a .TP item in that command's subsection
  whose tag names each of the option's names, written as the page source
  writes them (\\-x, \\-\\-xxx, every hyphen escaped), and whose text names its
  choices and its default and, for a required option, says "required";
  -h,--help, which every command has, and the tool's own options are items
  of GLOBAL OPTIONS instead;
- no subsection of COMMANDS for a command, and no long option anywhere, that
  the tool does not have, and no option of the tool written with plain
  hyphens (-x, --xxx) outside comments;
- on its .TH line, as the version, exactly the text `VEKZOL --version`
  prints;
- no warning from `groff -man -ww -z PAGE`, nor from man-db's check as
  Debian's lintian runs it (each skipped, with a note, when the program is
  missing).

Exits 0 when all holds, 1 naming everything that does not, 2 when the help
cannot be read as expected (so that a change of its layout does not pass
unchecked)."""
import os
import re
import shutil
import subprocess
import sys

GLOBAL = "GLOBAL OPTIONS"


def run(arguments, environment=None):
    result = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                            env=environment)
    return result.returncode, result.stdout.decode("utf-8", "replace"), \
        result.stderr.decode("utf-8", "replace")


def help_of(tool, *command):
    status, out, err = run([tool, *command, "--help"])
    if status != 0 or err:
        sys.exit("ManualPage.py: `vekzol %s --help` exits %d, standard error %r"
                 % (" ".join(command), status, err))
    return out


def section(text, heading):
    """The lines of a help section ("Options:"), up to the next blank line."""
    lines = text.split("\n")
    if heading not in lines:
        return None
    rest = lines[lines.index(heading) + 1:]
    return rest[:rest.index("")] if "" in rest else rest


def options_of(text, where):
    """The options of a help text: dicts of names, choices, default, required."""
    lines = section(text, "Options:")
    if lines is None:
        sys.exit("ManualPage.py: no \"Options:\" in the help of %s" % where)
    options = []
    for line in lines:
        # An option's line starts with two blanks and a hyphen; a description
        # that did not fit beside it continues further in.
        if not re.match(r"^  -", line):
            continue
        first = re.split(r"\s{2,}", line.strip())[0]
        names, _, value = first.partition(" ")
        choices = re.search(r"\{([^}]*)\}", value)
        default = re.search(r"=(\S+)$", value)
        options.append(dict(names=names.split(","),
                            choices=choices.group(1).split(",") if choices else [],
                            default=default.group(1) if default else None,
                            required="REQUIRED" in value.split()))
    if not any(option["names"] == ["-h", "--help"] for option in options):
        sys.exit("ManualPage.py: no -h,--help among the options read from the help of %s: %r"
                 % (where, options))
    return options


def escaped(name):
    """An option name as the page source writes it: every hyphen as \\-."""
    return name.replace("-", "\\-")


def names_option(text, name):
    """Whether the man source text names the option (not a longer one)."""
    pattern = re.escape(escaped(name)) + r"(?![A-Za-z0-9_]|\\-)"
    if not name.startswith("--"):
        pattern = r"(?<!\\-)" + pattern
    return re.search(pattern, text) is not None


def plain(text):
    """The words of man source: escapes of fonts dropped, \\- as -."""
    text = re.sub(r"\\f(\[[^]]*\]|\(..|.)", "", text)
    text = text.replace("\\-", "-").replace("\\ ", " ").replace("\\&", "")
    return re.sub(r"\\\(..", " ", text)


def names_word(text, word):
    return re.search(r"(?<![\w.\-])" + re.escape(word) + r"(?![\w\-]|\.\w)", text) is not None


def sections_of(page):
    """{".SH" heading: lines}, and {".SS" heading: lines} of COMMANDS."""
    sections, subsections = {}, {}
    current, sub = None, None
    for line in page.split("\n"):
        heading = re.match(r'^\.SH\s+"?([^"]*)"?\s*$', line)
        if heading:
            current, sub = heading.group(1), None
            sections[current] = []
            continue
        subheading = re.match(r'^\.SS\s+"?([^"]*)"?\s*$', line)
        if subheading and current == "COMMANDS":
            sub = subheading.group(1)
            subsections[sub] = []
            continue
        if current is not None:
            sections[current].append(line)
        if sub is not None:
            subsections[sub].append(line)
    return sections, subsections


def items_of(lines):
    """The .TP items of some lines: (tag line, the tag and the text after it)."""
    items, current = [], None
    for line in lines:
        if re.match(r"^\.(TP|SS|SH|PP|P|LP|IP|HP)\b", line):
            if current:
                items.append((current[0], "\n".join(current)))
            current = [] if line.startswith(".TP") else None
            continue
        if current is not None:
            current.append(line)
    if current:
        items.append((current[0], "\n".join(current)))
    return [item for item in items if item[0]]


def check_option(option, where, items, problems):
    shown = ",".join(option["names"])
    tagged = [item for item in items
              if any(names_option(item[0], name) for name in option["names"])]
    if not tagged:
        problems.append("%s: the option %s has no .TP item whose tag names it as %s"
                        % (where, shown, " or ".join(escaped(n) for n in option["names"])))
        return
    tag, text = tagged[0]
    for name in option["names"]:
        if not names_option(tag, name):
            problems.append("%s: the .TP item of %s does not name %s (as %s) in its tag: %s"
                            % (where, shown, name, escaped(name), tag))
    words = plain(text)
    for choice in option["choices"]:
        if not names_word(words, choice):
            problems.append("%s: the .TP item of %s does not name its choice %r"
                            % (where, shown, choice))
    if option["default"] is not None and not names_word(words, option["default"]):
        problems.append("%s: the .TP item of %s does not name its default %r"
                        % (where, shown, option["default"]))
    if option["required"] and not re.search(r"\brequired\b", words, re.IGNORECASE):
        problems.append("%s: the .TP item of %s does not say that it is required"
                        % (where, shown))


def check_lint(page_path, problems):
    groff = shutil.which("groff")
    if groff is None:
        print("note: groff is missing: the page's groff warnings are not checked")
    else:
        status, out, err = run([groff, "-man", "-ww", "-z", page_path])
        if status != 0 or out or err:
            problems.append("groff -man -ww -z exits %d and prints:\n%s%s" % (status, out, err))
    man = shutil.which("man")
    if man is None:
        print("note: man is missing: the page's man-db warnings are not checked")
    else:
        environment = dict(os.environ, LC_ALL="C.UTF-8", MANROFFSEQ="", MANWIDTH="80")
        status, _, err = run([man, "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z",
                              page_path], environment)
        if status != 0 or err:
            problems.append("man --warnings -E UTF-8 -l -Tutf8 -Z exits %d and prints:\n%s"
                            % (status, err))


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    tool, page_path = sys.argv[1], sys.argv[2]
    with open(page_path, encoding="utf-8") as file:
        page = file.read()
    sections, subsections = sections_of(page)
    problems = []

    top = help_of(tool)
    lines = section(top, "Subcommands:")
    commands = [line.split()[0] for line in lines or [] if re.match(r"^  \S", line)]
    if not commands:
        sys.exit("ManualPage.py: no commands read from the \"Subcommands:\" of --help:\n" + top)
    global_options = options_of(top, "vekzol")
    command_options = {command: options_of(help_of(tool, command), command)
                       for command in commands}

    # The commands: a line of the SYNOPSIS and a subsection each.
    synopsis = [plain(line) for line in sections.get("SYNOPSIS", [])]
    for command in commands:
        if not any(re.match(r"^vekzol\b.*\b%s\b" % re.escape(command), line)
                   for line in synopsis):
            problems.append("SYNOPSIS: no line starts with vekzol and names the command %s"
                            % command)
        if command not in subsections:
            problems.append("COMMANDS: the command %s has no subsection (.SS %s)"
                            % (command, command))
    for described in subsections:
        if described not in commands:
            problems.append("COMMANDS: the subsection .SS %s is no command of the tool"
                            % described)

    # The options, in their command's subsection or under GLOBAL OPTIONS.
    global_items = items_of(sections.get(GLOBAL, []))
    for option in global_options:
        check_option(option, GLOBAL, global_items, problems)
    for command in commands:
        items = items_of(subsections.get(command, []))
        for option in command_options[command]:
            if option["names"] == ["-h", "--help"]:
                continue
            check_option(option, "COMMANDS, .SS " + command, items, problems)

    # No long option the tool does not have.
    known = {name for option in global_options for name in option["names"]}
    known |= {name for options in command_options.values() for option in options
              for name in option["names"]}
    for named in sorted(set(re.findall(r"\\-\\-[A-Za-z0-9](?:[A-Za-z0-9_]|\\-)*", page))):
        if named.replace("\\-", "-") not in known:
            problems.append("the page names %s, which is no option of the tool" % named)

    # Options written with plain hyphens, which groff may print as the
    # typographic hyphen U+2010 rather than the ASCII one a shell needs
    # (comments aside).
    for number, line in enumerate(page.split("\n"), 1):
        if line.startswith('.\\"'):
            continue
        for named in re.findall(r"(?<![\\\w-])--?[A-Za-z0-9][\w-]*", line):
            if named in known:
                problems.append("line %d writes %s with plain hyphens, not as %s"
                                % (number, named, escaped(named)))

    # The version.
    status, out, err = run([tool, "--version"])
    version = out.strip()
    if status != 0 or err or not version:
        sys.exit("ManualPage.py: `vekzol --version` exits %d, prints %r, standard error %r"
                 % (status, out, err))
    th = [line for line in page.split("\n") if re.match(r"^\.TH\s", line)]
    if len(th) != 1:
        problems.append("the page has %d .TH lines, not one" % len(th))
    else:
        fields = re.findall(r'"([^"]*)"|(\S+)', th[0])
        fields = [quoted or bare for quoted, bare in fields]
        page_version = fields[4] if len(fields) > 4 else None
        if page_version != version:
            problems.append("the .TH line gives the version %r, vekzol --version prints %r"
                            % (page_version, version))

    check_lint(page_path, problems)

    if problems:
        print("%s does not match the tool %s:" % (page_path, tool))
        for problem in problems:
            print("- " + problem)
        return 1
    print("%s names the %d commands and %d option names of %s"
          % (page_path, len(commands),
             len(known), version))
    return 0


if __name__ == "__main__":
    sys.exit(main())

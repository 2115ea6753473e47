"""Checks the content digests that `vekzol diff` writes against the canonical
form as the README documents it, computed here from the model files by
Python's json and hashlib alone:

    CanonicalDigest.py VEKZOL OLD NEW [OLD NEW ...]

For each pair, runs `vekzol diff OLD NEW` and compares its "oldDigest" and
"newDigest" with the SHA-256 of the canonical form of each file. Exits 1 on
a difference, naming the file and both canonical texts' digests."""
import decimal
import hashlib
import json
import subprocess
import sys

OBJECT_FIELDS = ["name", "refId", "sciid", "backupName", "identPath"]
RELATION_FIELDS = ["type", "source", "target"]
SHORT_ESCAPES = {'"': '\\"', "\\": "\\\\", "\b": "\\b", "\f": "\\f", "\n": "\\n", "\r": "\\r",
                 "\t": "\\t"}


def string(text):
    out = ['"']
    for character in text:
        if character in SHORT_ESCAPES:
            out.append(SHORT_ESCAPES[character])
        elif ord(character) < 0x20 or ord(character) == 0x7F:
            out.append("\\u%04x" % ord(character))
        else:
            out.append(character)
    out.append('"')
    return "".join(out)


def real(value):
    """The shortest text that reads back as the value, in fixed or exponent
    notation as C's printf writes them, fixed on a tie; of equally short
    texts the nearest to the value (so a whole number in fixed notation has
    all its digits); ".0" when there is neither "." nor "e". Python's repr
    finds the shortest digits."""
    sign, digits, exponent = decimal.Decimal(repr(value)).as_tuple()
    digits = "".join(map(str, digits)).lstrip("0") or "0"
    if digits == "0":
        exponent = 0
    else:
        # repr may keep trailing zeros ("100.0"): drop them into the exponent.
        stripped = digits.rstrip("0")
        exponent += len(digits) - len(stripped)
        digits = stripped
    prefix = "-" if sign else ""
    point = len(digits) + exponent  # digits before the decimal point
    if exponent >= 0:
        fixed = str(int(abs(value)))  # as long as the digits padded, and exact
    elif point > 0:
        fixed = digits[:point] + "." + digits[point:]
    else:
        fixed = "0." + "0" * (-point) + digits
    scientific_exponent = point - 1
    mantissa = digits[0] + ("." + digits[1:] if len(digits) > 1 else "")
    scientific = "%se%s%02d" % (mantissa, "-" if scientific_exponent < 0 else "+",
                                abs(scientific_exponent))
    text = fixed if len(fixed) <= len(scientific) else scientific
    if "." not in text and "e" not in text:
        text += ".0"
    return prefix + text


def value(item):
    if isinstance(item, bool):
        return "true" if item else "false"
    if isinstance(item, int):
        # Past the 64-bit integers the reader makes a real of it.
        return str(item) if -2**63 <= item < 2**64 and item < 2**63 else real(float(item))
    if isinstance(item, float):
        return real(item)
    return string(item)


def pairs_last_wins(members):
    return dict(members)


def canonical(path):
    with open(path, encoding="utf-8") as stream:
        model = json.load(stream, object_pairs_hook=list)
    lists = {}
    for key, item in model:  # the last member of a name, as the reader takes it
        lists[key] = item
    parts = []
    for kind, fields in (("objects", OBJECT_FIELDS), ("relations", RELATION_FIELDS)):
        first = {}
        for entry in lists.get(kind, []):
            members = {}
            for key, item in entry:  # the first member of a name counts
                members.setdefault(key, item)
            first.setdefault(members["id"], members)
        records = []
        for identifier in sorted(first, key=lambda text: text.encode("utf-8")):
            members = first[identifier]
            record = ['"id":' + string(identifier)]
            record += [string(field) + ":" + string(members[field])
                       for field in fields if field in members]
            attributes = pairs_last_wins(members.get("attributes", [])) if kind == "objects" else {}
            if attributes:
                keys = sorted(attributes, key=lambda text: text.encode("utf-8"))
                record.append('"attributes":{' + ",".join(
                    string(key) + ":" + value(attributes[key]) for key in keys) + "}")
            records.append("{" + ",".join(record) + "}")
        parts.append('"%s":[%s]' % (kind, ",".join(records)))
    text = "{" + ",".join(parts) + "}"
    return "sha256:" + hashlib.sha256(text.encode("utf-8")).hexdigest()


def main():
    tool, files = sys.argv[1], sys.argv[2:]
    failures = 0
    for old, new in zip(files[0::2], files[1::2]):
        result = subprocess.run([tool, "-q", "diff", old, new], capture_output=True, check=False)
        if result.returncode not in (0, 1):
            print("vekzol diff %s %s: exit status %d\n%s" % (old, new, result.returncode,
                                                            result.stderr.decode()))
            return 1
        change = json.loads(result.stdout)
        for path, member in ((old, "oldDigest"), (new, "newDigest")):
            expected = canonical(path)
            if change[member] != expected:
                print("%s: vekzol's digest %s, the documented canonical form's %s" % (
                    path, change[member], expected))
                failures += 1
    print("%d digests checked, %d differ" % (len(files), failures))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())

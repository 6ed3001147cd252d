#!/usr/bin/env python3
"""Reads LAS files in the plainest way there is and compares every sample with what a program prints.

    plain_reader.py PRINT_CHANNELS FOLDER...

PRINT_CHANNELS is the test program of that name. Every *.las below the folders is read by both. Tells per file what came of
it and at the end how many files, channels and samples were compared; status 1 when a sample or a name differs.
"""

import collections
import os
import re
import subprocess
import sys

NUMBER = re.compile(r"[+-]?(\d+\.?\d*|\.\d+)([eEdD][+-]?\d+)?\Z")


def text_of(path):
    data = open(path, "rb").read()
    if data[:2] in (b"\xff\xfe", b"\xfe\xff"):
        return data.decode("utf-16")
    if data[1:2] == b"\0":
        return data.decode("utf-16-le")
    if data[:1] == b"\0":
        return data.decode("utf-16-be")
    if data[:3] == b"\xef\xbb\xbf":
        data = data[3:]
    return data.decode("latin-1")


def title_of(line):
    """The section that a title begins, as one letter; "?" for one that the standard does not have."""
    name = re.match(r"[A-Za-z]*", line[1:]).group()[:3].upper()
    for section in ("VERSION", "WELL", "CURVE", "PARAMETER", "OTHER", "ASCII"):
        if name and section.startswith(name):
            return section[0]
    return "?"


def sections_of(text):
    sections = collections.defaultdict(list)
    section = None
    for line in re.split("\r\n|\n|\r", text):
        if line.strip(" \t").startswith("~"):
            if section == "A":
                break
            section = title_of(line.strip())
            if section in sections and section != "A":
                section = "?"  # the first of its name counts
            sections[section]
        elif section and line.strip(" \t\x1a") and not line.strip(" \t").startswith("#"):
            sections[section].append(line)
    return sections


def value_of(lines, mnemonic):
    for line in lines:
        head, dot, rest = line.partition(".")
        if dot and ":" in rest and head.strip().upper() == mnemonic:
            words = rest.rpartition(":")[0]
            return words.strip() if words[:1] in (" ", "\t", "") else " ".join(words.split()[1:])
    return None


def names_of(lines, columns):
    proper = [line for line in lines if 0 <= line.find(".") < line.find(":")]
    use = proper if len(proper) == columns else lines
    names = []
    for line in use:
        dot, colon = line.find("."), line.find(":")
        end = dot if dot >= 0 and (colon < 0 or dot < colon) else colon if colon >= 0 else len(line)
        names.append(line[:end].replace("\t", " ").strip())
    names += [""] * (columns - len(names))
    return [name or "CH%d" % (number + 1) for number, name in enumerate(names)]


def number_of(word):
    return float(word.replace("D", "E").replace("d", "e")) if NUMBER.match(word) else None


def read(path):
    """Names and records of a file: lists of floats, None for null."""
    text = text_of(path)
    sections = sections_of(text)
    lines = sections["A"]
    curves = [line for line in sections["C"]]
    proper = sum(1 for line in curves if 0 <= line.find(".") < line.find(":"))
    expected = proper or len(curves)
    commas = lines and "," in lines[0] and lines[0].count(",") + 1 == expected and len(lines[0].split()) != expected
    rows = [[word.strip() for word in line.split(",")] if commas else line.split() for line in lines]
    lengths = {len(row) for row in rows}
    if not commas and rows and len(rows[0]) < expected and len(lengths) > 1:
        words = [word for row in rows for word in row]
        rows = [words[place : place + expected] for place in range(0, len(words), expected)]
    told = value_of(sections["W"], "NULL")
    null = number_of(told) if told and NUMBER.match(told) else -999.25
    columns = max(map(len, rows), default=0)
    records = []
    for row in rows:
        values = [number_of(word) for word in row] + [None] * (columns - len(row))
        records.append(values[:1] + [None if value is not None and abs(value - null) <= abs(null) * 3e-8 else value for value in values[1:]])
    return names_of(curves, columns)[:columns], records


def compare(program, path, total):
    printed = subprocess.run([program, path], capture_output=True)
    errors = printed.stderr.decode("latin-1").splitlines()
    if printed.returncode != 0:
        return "refused: " + errors[-1].replace("refused: ", "")
    for line in errors:
        total["notes", line.split(":")[0]] += 1
    lines = printed.stdout.decode("latin-1").split("\n")[:-1]
    names, records = read(path)
    if lines[0].encode("latin-1").decode("utf-8", "replace").split("\t") != names and lines[0].split("\t") != names:
        return "NAMES DIFFER: %s here, %s there" % (names, lines[0].split("\t"))
    if len(lines) - 1 != len(records):
        return "RECORDS DIFFER: %d here, %d there" % (len(records), len(lines) - 1)
    for number, (line, values) in enumerate(zip(lines[1:], records)):
        found = [None if word == "." else float(word) for word in line.split("\t")]
        if found != values:
            return "SAMPLES DIFFER in record %d: %s here, %s there" % (number + 1, values, found)
    total["channels"] += len(names)
    total["samples"] += len(records) * len(names)
    return "same" + (", with notes" if errors else "")


def main():
    program, folders = sys.argv[1], sys.argv[2:]
    total = collections.Counter()
    for folder in folders:
        for place, _, files in sorted(os.walk(folder)):
            for name in sorted(files):
                if name.lower().endswith(".las"):
                    verdict = compare(program, os.path.join(place, name), total)
                    total[verdict.split(":")[0].split(" in ")[0]] += 1
                    print("%s: %s" % (name, verdict))
    for what, count in sorted(total.items(), key=str):
        print("%8d  %s" % (count, what if isinstance(what, str) else "notes of kind " + what[1]))
    sys.exit(1 if any("DIFFER" in str(what) for what in total) or not total["samples"] else 0)


main()

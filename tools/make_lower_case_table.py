#!/usr/bin/env python3
"""Writes the table by which letters outside code page 932 are made small, from Python's character data.

    make_lower_case_table.py src/text

lower_case_table.inc   runs of letters that become small alike: first, last, every which one, what is added.

One character becomes one character. Run it only to go to a later version of Unicode; the result is committed.
"""
import sys
import unicodedata

# The only letter whose small form Python gives as two characters.
DOTTED_I = {0x130: 0x69}


def small_letters():
    for value in range(0x110000):
        small = chr(value).lower()
        becomes = DOTTED_I.get(value, ord(small) if len(small) == 1 else value)
        if becomes != value:
            yield value, becomes - value


def runs():
    found = []
    for value, added in small_letters():
        if found and found[-1][3] == added:
            first, last, step, _ = found[-1]
            if value - last == step or (first == last and value - last == 2):
                found[-1] = (first, value, value - last, added)
                continue
        found.append((value, value, 1, added))
    return found


def main():
    with open(sys.argv[1] + "/lower_case_table.inc", "w", encoding="ascii") as out:
        out.write("// Made by tools/make_lower_case_table.py from Unicode %s; not to be edited by hand.\n"
                  % unicodedata.unidata_version)
        line = ""
        for first, last, step, added in runs():
            item = "{0x%04X, 0x%04X, %d, %d}, " % (first, last, step, added)
            if len(line) + len(item) > 110:
                out.write(line.rstrip() + "\n")
                line = ""
            line += item
        out.write(line.rstrip() + "\n")


if __name__ == "__main__":
    main()

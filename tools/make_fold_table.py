#!/usr/bin/env python3
"""Writes the two tables that text/text.h needs, from the measured table of code page 932.

    make_fold_table.py cp932_fold.tsv src/text

cp932_table.inc   the double-byte characters, one string of 188 a lead byte; a blank is "no character".
fold_table.inc    what the search fold changes: character, first and second character that it becomes.

Run it only when the facts change; both results are committed. The user-defined rows F0 to F9 follow a rule and
are not in the table. Of several codes for one character the reader of the table finds the one to write by rule;
this script stops when the facts do not obey the same rule.
"""
import sys

TRAILS = [b for b in range(0x40, 0xFD) if b != 0x7F]
USER_DEFINED = range(0xF0, 0xFA)


def is_lead(byte):
    return 0x81 <= byte <= 0x9F or 0xE0 <= byte <= 0xFC


def read(path):
    decoded, folded = {}, {}
    with open(path, encoding="ascii") as file:
        for line in file:
            if line.startswith("#") or not line.strip():
                continue
            code, character, fold = line.rstrip("\n").split("\t")
            decoded[int(code, 16)] = int(character, 16)
            folded[int(code, 16)] = bytes.fromhex(fold)
    return decoded, folded


def characters(decoded, text):
    result, at = [], 0
    while at < len(text):
        if is_lead(text[at]):
            result.append(decoded[text[at] << 8 | text[at + 1]])
            at += 2
        else:
            result.append(decoded[text[at]])
            at += 1
    return result


def check_rules(decoded):
    for code, character in decoded.items():
        if code < 0x81:
            assert code == character, hex(code)
        elif code < 0x100:
            assert character == code - 0xA1 + 0xFF61, hex(code)
        elif code >> 8 in USER_DEFINED:
            assert character == 0xE000 + ((code >> 8) - 0xF0) * 188 + TRAILS.index(code & 0xFF), hex(code)


def write_code_page(decoded, path):
    with open(path, "w", encoding="utf-8") as out:
        out.write("// Made by tools/make_fold_table.py; not to be edited by hand.\n")
        for lead in range(0x81, 0xFD):
            if not is_lead(lead) or lead in USER_DEFINED:
                continue
            row = "".join(chr(decoded.get(lead << 8 | trail, 0x20)) for trail in TRAILS)
            if not row.strip(" "):
                continue
            out.write("{0x%02X,\n" % lead)
            for at in range(0, 188, 47):
                out.write(' u"%s"%s\n' % (row[at:at + 47], "}," if at == 141 else ""))


def write_fold(decoded, folded, path):
    changes = {}
    for code, fold in folded.items():
        character, becomes = decoded[code], characters(decoded, fold)
        if becomes != [character]:
            assert changes.setdefault(character, becomes) == becomes and len(becomes) <= 2
    with open(path, "w", encoding="ascii") as out:
        out.write("// Made by tools/make_fold_table.py; not to be edited by hand.\n")
        line = ""
        for character in sorted(changes):
            becomes = changes[character]
            item = "{0x%04X, 0x%04X, %s}, " % (
                character, becomes[0], "0x%04X" % becomes[1] if len(becomes) == 2 else "0")
            if len(line) + len(item) > 110:
                out.write(line.rstrip() + "\n")
                line = ""
            line += item
        out.write(line.rstrip() + "\n")


def main():
    decoded, folded = read(sys.argv[1])
    check_rules(decoded)
    write_code_page(decoded, sys.argv[2] + "/cp932_table.inc")
    write_fold(decoded, folded, sys.argv[2] + "/fold_table.inc")


if __name__ == "__main__":
    main()

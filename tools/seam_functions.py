#!/usr/bin/env python3
"""Prints what a platform must write, by header of src/platform/: the list that is in docs/contributing.md.

  tools/seam_functions.py [HEADER...]     by default all headers of the seam

Counted is every function and member function that is declared and not written in its header; of an abstract class the
members that it leaves open. Constructors and destructors are not named.
"""

import glob
import os
import re
import sys

PROJECT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
# Classes that the program writes and hands over to the platform.
HANDED_OVER = {"PreviewReader"}
COMMENT = re.compile(r"//[^\n]*|/\*[\s\S]*?\*/|^[ \t]*#[^\n]*", re.MULTILINE)
LITERAL = re.compile(r'"(?:[^"\\\n]|\\.)*"|\'(?:[^\'\\\n]|\\.)*\'')
SCOPE = re.compile(r"\b(namespace|class|struct|enum(?:\s+class)?)\s+([\w:]+)?[^;(){}=]*$")


def statements(text):
    """(scope, statement) for everything that ends with a semicolon outside of function bodies and values."""
    text = LITERAL.sub('""', COMMENT.sub("", text))
    scope, piece, at = [], "", 0
    while at < len(text):
        char = text[at]
        if char == "{":
            opened = SCOPE.search(piece)
            if opened and not opened.group(1).startswith("enum"):
                scope.append(opened.groups())
                piece = ""
            else:  # a body, a value or a list of names: over it
                depth = 1
                while depth:
                    at += 1
                    depth += {"{": 1, "}": -1}.get(text[at], 0)
                piece = piece + "{}" if "=" in piece or opened or not re.search(r"\)[\s\w]*$", piece) else ""
        elif char == "}":
            scope.pop()
            piece = ""
        elif char == ";":
            yield list(scope), " ".join(piece.split())
            piece = ""
        elif char == ":" and re.fullmatch(r"\s*(public|protected|private)\s*", piece):
            piece = ""
        else:
            piece += char
        at += 1


def functions(text):
    names = []
    for scope, statement in statements(text):
        head = re.match(r"[^({=]*?([\w~]+)\s*\(", statement)
        written_elsewhere = re.search(r"=\s*(default|delete)$", statement)
        if not head or written_elsewhere or re.match(r"(using|typedef|friend|static_assert|return)\b", statement):
            continue
        if re.search(r"\boperator\b|std::function<", statement[:head.end()]):
            continue
        classes = [name for kind, name in scope if kind != "namespace" and name]
        name = head.group(1)
        if name.startswith("~") or name in classes or HANDED_OVER & set(classes):
            continue
        name = "::".join(classes + [name])
        if name not in names:
            names.append(name)
    return names


def read(header):
    with open(header, encoding="utf-8") as file:
        return file.read()


def rows(headers):
    for header in headers:
        names = functions(read(header))
        if names:
            yield os.path.basename(header), names


def all_headers():
    return sorted(glob.glob(os.path.join(PROJECT, "src", "platform", "*.h")))


def lines(headers):
    for header, names in rows(headers):
        line = f"- `{header}`:"
        for place, name in enumerate(names):
            word = f" `{name}`" + ("," if place + 1 < len(names) else "")
            if len(line) + len(word) > 118:
                yield line
                line = " "
            line += word
        yield line


def main(arguments):
    for line in lines(arguments or all_headers()):
        print(line)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))

"""Checks the documents against what they describe: settings keys, files of the project, anchors."""

import os
import re
import sys
import unittest

PROJECT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


sys.path.insert(0, os.path.join(PROJECT, "tools"))
sys.dont_write_bytecode = True

import seam_functions  # noqa: E402


def read(*path):
    with open(os.path.join(PROJECT, *path), encoding="utf-8") as file:
        return file.read()


def documents():
    yield "README.md"
    for name in sorted(os.listdir(os.path.join(PROJECT, "docs"))):
        if name.endswith(".md"):
            yield "docs/" + name


def anchors(text):
    """The anchors of a page, made of its headings as the usual viewers make them."""
    for heading in re.findall(r"^#+ +(.*)$", text, re.MULTILINE):
        yield re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


class Documents(unittest.TestCase):
    def test_the_guide_has_a_row_for_each_settings_key(self):
        table = read("src", "store", "settings_keys.cpp")
        written = set(re.findall(r'^    \{"(?:\[\w+\])?", "([^"]+)", ', table, re.MULTILINE))
        read_keys = set(re.findall(r'^    \{"([^="]+)=\d?", ', table, re.MULTILINE))
        self.assertGreater(len(written), 100)
        self.assertGreater(len(read_keys), 100)
        chapter = read("docs", "users-guide.md").split("\n## Settings\n")[1].split("\n## ")[0]
        listed = re.findall(r"^\| `([^`]+)` \|", chapter, re.MULTILINE)
        self.assertEqual(len(listed), len(set(listed)), "a key has two rows")
        # Spellings that differ between the reader and the writer are one key.
        plain = lambda keys: {key.lower().replace("%%", "%") for key in keys}
        self.assertEqual(plain(listed), plain(written) | plain(read_keys))

    def test_the_paths_in_the_guide_go_through_the_code(self):
        guide = read("docs", "contributing.md")
        for title in ("The path of a key press", "The path of a photo, from card to cell"):
            page = guide.split(f"\n### {title}\n")[1].split("\n### ")[0]
            steps = re.findall(r"((?:`[^`]+`(?:,\s+|\s+and\s+|\s+or\s+)?)+)\s+\(`([\w/]+\.(?:cpp|h))`\)", page)
            self.assertGreater(len(steps), 6, title)
            for names, file in steps:
                code = read("src", *file.split("/"))
                for name in re.findall(r"`([\w:]+)`", names):
                    with self.subTest(page=title, name=name, file=file):
                        self.assertRegex(code, rf"\b{name.split('::')[-1]}\b")
            for file in re.findall(r"`([\w/]+\.(?:cpp|h))`", page):
                with self.subTest(page=title, file=file):
                    self.assertTrue(os.path.exists(os.path.join(PROJECT, "src", file)))

    def test_links_lead_somewhere(self):
        for document in documents():
            text = read(document)
            for link in re.findall(r"\]\(([^)\s]+)\)", text):
                if link.startswith(("http:", "https:")):
                    continue
                with self.subTest(document=document, link=link):
                    path, _, anchor = link.partition("#")
                    target = os.path.normpath(os.path.join(os.path.dirname(document), path)) if path else document
                    self.assertTrue(os.path.exists(os.path.join(PROJECT, target)))
                    if anchor:
                        self.assertIn(anchor, set(anchors(read(target))))

    def test_the_contributors_guide_names_all_that_a_platform_must_write(self):
        chapter = read("docs", "contributing.md").split("\n### What a second platform must write\n")[1].split("\n#")[0]
        listed = [line for line in chapter.splitlines() if line.startswith(("- `", "  `"))]
        self.assertEqual(listed, list(seam_functions.lines(seam_functions.all_headers())),
                         "put in what tools/seam_functions.py prints")

    def test_what_a_platform_must_write_is_what_a_header_leaves_open(self):
        self.assertEqual(seam_functions.functions(
            """// A comment; with Words(of, code);
            namespace a { struct Plain { int x = 0; int Get() const { return x; } };
            enum class E { One, Two };
            inline int Written() { return 1; }
            int Open(const std::string& path, E e = E::One);
            class Shape { public: virtual ~Shape() = default; static std::unique_ptr<Shape> Create();
              virtual void Draw(int x) = 0;  // (always)
              bool Is() const { return is_; }
              void Later(); private: bool is_ = false; std::function<void()> hook_; };
            Shape* TheShape(); }"""), ["Open", "Shape::Create", "Shape::Draw", "Shape::Later", "TheShape"])

    def test_lines_fit_a_page(self):
        for document in documents():
            for number, line in enumerate(read(document).splitlines(), 1):
                with self.subTest(document=document, line=number):
                    self.assertLessEqual(len(line), 120)


if __name__ == "__main__":
    unittest.main()

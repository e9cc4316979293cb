"""Runs tools/check-includes on small trees of made-up sources: good ones, and one for each kind of fault."""

import os
import subprocess
import sys
import tempfile
import unittest

PROJECT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOL = os.path.join(PROJECT, "tools", "check-includes")

GOOD = {
    "base/log.h": "#include <string>\nnamespace kalmora {\nvoid WriteLog(const std::string& line);\n}\n",
    "base/log.cpp": '#include "base/log.h"\nnamespace kalmora {\nvoid WriteLog(const std::string& line) {}\n}\n',
    "media/photo.h": '#include "base/log.h"\nnamespace kalmora {\nstruct PhotoName {\n    std::string text;\n};\n}\n',
}


class CheckIncludes(unittest.TestCase):
    def said(self, files):
        with tempfile.TemporaryDirectory() as src:
            for name, text in {**GOOD, **files}.items():
                path = os.path.join(src, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8") as file:
                    file.write(text)
            run = subprocess.run([sys.executable, TOOL, src], capture_output=True, text=True, check=False)
            self.assertEqual(run.returncode, 1 if " without " in run.stdout else 0, run.stdout + run.stderr)
            return [line for line in run.stdout.splitlines() if " without " in line]

    def test_a_good_tree_has_no_faults(self):
        self.assertEqual(self.said({}), [])

    def test_a_standard_name_needs_its_header(self):
        self.assertEqual(self.said({"app/a.cpp": "int a;\nstd::vector<int> all;\n"}),
                         ["app/a.cpp:2: std::vector without <vector>"])

    def test_a_header_of_the_project_may_bring_the_standard_one(self):
        self.assertEqual(self.said({"app/a.cpp": '#include "media/photo.h"\nstd::string text;\n'}), [])

    def test_a_function_of_the_project_needs_its_header(self):
        self.assertEqual(self.said({"app/a.cpp": 'void F() { WriteLog(""); }\n'}),
                         ['app/a.cpp:1: WriteLog without "base/log.h"'])

    def test_a_type_of_the_project_needs_its_header_or_a_declaration(self):
        self.assertEqual(self.said({"app/a.h": "void F(const PhotoName& name);\n"}),
                         ['app/a.h:1: PhotoName without "media/photo.h"'])
        self.assertEqual(self.said({"app/a.h": "struct PhotoName;\nvoid F(const PhotoName& name);\n"}), [])

    def test_words_in_comments_and_texts_are_no_code(self):
        self.assertEqual(self.said({"app/a.cpp": '// std::vector of PhotoName\nconst char* a = "std::map WriteLog(";\n'}),
                         [])

    def test_a_name_that_two_headers_declare_is_left_to_the_compiler(self):
        self.assertEqual(self.said({"app/b.h": "struct PhotoName {\n};\n", "app/a.cpp": "PhotoName* name;\n"}), [])

    def test_a_member_of_the_same_name_is_no_use(self):
        self.assertEqual(self.said({"app/a.h": "class Other {\n    void WriteLog(int line);\n};\n"}), [])

    def test_wrong_use_is_said(self):
        run = subprocess.run([sys.executable, TOOL, "a", "b"], capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 2)


if __name__ == "__main__":
    unittest.main()

"""Runs tools/check-floors on small trees of made-up sources: good ones, and one for each kind of fault."""

import os
import subprocess
import sys
import tempfile
import unittest

PROJECT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOL = os.path.join(PROJECT, "tools", "check-floors")

# A tree of each floor's rooms that is as it should be; cases add to it.
GOOD = {
    "floors": "# highest first\ncli\napp\nslideshow filter\nviews/bar\nviews/model input\nsearch\nindex\nmedia\nstore\n"
              "state\ntext\nbase + platform\n",
    "base/geometry.h": "#include <cstdint>\n",
    "base/log.h": '#include "platform/files.h"\n',
    "platform/files.h": '#include <string>\n#include "base/geometry.h"\n',
    "platform/posix/files.cpp": '#include "platform/files.h"\n#include <unistd.h>\n#include "platform/posix/names.h"\n'
                                '#include "text/fold.h"\n',
    "platform/posix/names.h": "#include <sys/stat.h>\n",
    "text/fold.h": "",
    "state/app_state.h": '#include "base/geometry.h"\n',
    "store/settings.cpp": '#include "state/app_state.h"\n#include "platform/files.h"\n',
    "store/settings_file.h": "",
    "media/photo.h": '#include "store/settings_file.h"\n',
    "index/day_index.h": '#include "media/photo.h"\n',
    "search/query.h": '#include "index/day_index.h"\n',
    "views/model/grid.h": '#include "search/query.h"\n',
    "views/bar/button.h": '#include "views/model/grid.h"\n#include "input/keys.h"\n',
    "input/keys.h": "",
    "slideshow/slide_show.h": '#include "input/keys.h"\n',
    "filter/filter_window.h": '#include "views/bar/button.h"\n',
    "app/dispatch.cpp": '#include "slideshow/slide_show.h"\n#include "filter/filter_window.h"\n',
    "cli/show.cpp": "#include <CLI/CLI.hpp>\n#include <nlohmann/json.hpp>\n",
}


class CheckFloors(unittest.TestCase):
    def faults(self, files):
        """The tool's lines for GOOD and these files, less the closing one; [] when it is content."""
        tree = {**GOOD, **files}
        with tempfile.TemporaryDirectory() as folder:
            src = os.path.join(folder, "src")
            for path, text in tree.items():
                full = os.path.join(src, path)
                os.makedirs(os.path.dirname(full), exist_ok=True)
                with open(full, "w", encoding="utf-8") as file:
                    file.write(text)
            result = subprocess.run([sys.executable, TOOL, src], capture_output=True, text=True, check=False)
            lines = [line.replace(os.path.relpath(src) + "/", "").replace(os.path.relpath(folder) + "/", "") for line in result.stdout.splitlines()]
        self.assertEqual(result.stderr, "")
        self.assertEqual(result.returncode, 1 if len(lines) > 1 else 0)
        return lines[:-1]

    def assertFault(self, files, beginning, part=""):
        lines = self.faults(files)
        self.assertEqual(len(lines), 1, lines)
        self.assertTrue(lines[0].startswith(beginning + ": "), lines)
        self.assertIn(part, lines[0])

    def test_a_tree_on_its_floors_is_accepted(self):
        self.assertEqual(self.faults({}), [])

    def test_each_step_upwards_is_a_fault(self):
        steps = [
            ("base/dates.h", "state/app_state.h", "base", "state"),
            ("platform/clock.h", "store/settings_file.h", "platform", "store"),
            ("state/other.h", "media/photo.h", "state", "media"),
            ("media/exif.h", "index/day_index.h", "media", "index"),
            ("index/update.cpp", "views/model/grid.h", "index", "views/model"),
            ("views/model/cell.cpp", "views/bar/button.h", "views/model", "views/bar"),
            ("input/log.cpp", "slideshow/slide_show.h", "input", "slideshow"),
            ("slideshow/player.cpp", "app/dispatch.h", "slideshow", "app"),
            ("app/start.cpp", "cli/progress.h", "app", "cli"),
        ]
        for path, included, room, other in steps:
            with self.subTest(path=path, included=included):
                files = {"app/dispatch.h": "", "cli/progress.h": ""}
                files[path] = f'#include <string>\n\n#include "{included}"\n'
                self.assertFault(files, f"{path}:3",
                                 f"{room} must not include {included}: {other} is not on a lower floor")

    def test_rooms_on_one_floor_do_not_know_each_other(self):
        self.assertFault({"slideshow/a.h": '#include "filter/filter_window.h"\n'}, "slideshow/a.h:1",
                         "filter is not on a lower floor")
        self.assertFault({"input/a.h": '#include "views/model/grid.h"\n'}, "input/a.h:1",
                         "views/model is not on a lower floor")

    def test_rooms_that_are_joined_know_each_other(self):
        self.assertEqual(self.faults({"base/worker.h": '#include "platform/files.h"\n',
                                      "platform/clock.h": '#include "base/geometry.h"\n'}), [])

    def test_a_room_is_the_longest_folder_of_the_table(self):
        self.assertEqual(self.faults({"views/bar/deep/a.h": '#include "views/bar/button.h"\n'}), [])
        self.assertFault({"views/a.h": ""}, "views/a.h:1", "stands on no floor")

    def test_a_room_includes_its_own_files(self):
        self.assertEqual(self.faults({"media/exif.cpp": '#include "media/photo.h"\n'}), [])

    def test_without_a_table_there_is_no_answer(self):
        with tempfile.TemporaryDirectory() as src:
            result = subprocess.run([sys.executable, TOOL, src], capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 2)
        self.assertIn("no table of floors", result.stderr)

    def test_a_folder_without_a_floor_is_told(self):
        self.assertFault({"helpers/misc.h": ""}, "helpers/misc.h:1", "stands on no floor")

    def test_a_file_that_includes_itself_is_a_cycle(self):
        self.assertFault({"media/exif.h": '#include "media/exif.h"\n'}, "media/exif.h:1",
                         "media/exif -> media/exif")

    def test_a_cycle_over_three_files_is_told_once_with_its_way(self):
        files = {
            "media/a.h": '#include "media/b.h"\n',
            "media/b.h": '\n#include "media/c.h"\n',
            "media/c.h": '\n\n#include "media/a.h"\n',
        }
        self.assertFault(files, "media/c.h:3", "media/a -> media/b -> media/c -> media/a")

    def test_a_header_and_its_source_are_one(self):
        files = {
            "media/a.h": "",
            "media/a.cpp": '#include "media/a.h"\n#include "media/b.h"\n',
            "media/b.h": "",
            "media/b.cpp": '#include "media/b.h"\n#include "media/a.h"\n',
        }
        self.assertFault(files, "media/b.cpp:2", "media/a -> media/b -> media/a")

    def test_a_source_of_its_own_name_is_a_subject_of_its_own(self):
        files = {
            "media/a.h": "",
            "media/a.cpp": '#include "media/a.h"\n#include "media/b.h"\n',
            "media/b.h": "",
            "media/b_more.cpp": '#include "media/b.h"\n#include "media/a.h"\n',
        }
        self.assertEqual(self.faults(files), [])

    def test_two_ways_to_one_file_are_no_cycle(self):
        files = {
            "media/a.h": '#include "media/b.h"\n#include "media/c.h"\n',
            "media/b.h": '#include "media/d.h"\n',
            "media/c.h": '#include "media/d.h"\n',
            "media/d.h": "",
        }
        self.assertEqual(self.faults(files), [])

    def test_a_chain_of_two_thousand_files_is_walked(self):
        files = {f"media/n{i}.h": f'#include "media/n{i + 1}.h"\n' for i in range(2000)}
        files["media/n2000.h"] = ""
        self.assertEqual(self.faults(files), [])

    def test_the_machine_is_known_to_the_platform_only(self):
        for header in ("windows.h", "unistd.h", "sys/stat.h", "QString", "QtGui/QImage", "xcb/xcb.h", "jpeglib.h",
                       "stdio.h"):
            with self.subTest(header=header):
                self.assertFault({"media/exif.cpp": f"#include <{header}>\n"}, "media/exif.cpp:1", f"<{header}>")
                self.assertFault({"platform/clock.h": f"#include <{header}>\n"}, "platform/clock.h:1", f"<{header}>")
                self.assertEqual(self.faults({"platform/qt/exif.cpp": f"#include <{header}>\n"}), [])

    def test_standard_headers_are_for_everybody(self):
        files = {"base/all.h": "#include <vector>\n#include <cstring>\n# include <stop_token>\n#include<span>\n"}
        self.assertEqual(self.faults(files), [])

    def test_guests_stay_in_their_rooms(self):
        self.assertEqual(self.faults({"cli/main.cpp": "#include <CLI/App.hpp>\n"}), [])
        self.assertFault({"app/window.cpp": "#include <CLI/CLI.hpp>\n"}, "app/window.cpp:1", "<CLI/CLI.hpp> is for")
        self.assertFault({"app/run.cpp": "#include <nlohmann/json.hpp>\n"}, "app/run.cpp:1", "is for cli/")
        self.assertFault({"store/cache.cpp": "#include <nlohmann/json.hpp>\n"}, "store/cache.cpp:1", "is for cli/")

    def test_tests_know_the_machine_in_their_own_places_only(self):
        for header in ("unistd.h", "sys/stat.h", "QWidget", "xcb/xcb.h"):
            with self.subTest(header=header):
                self.assertFault({"../tests/media/exif_test.cpp": f"#include <gtest/gtest.h>\n#include <{header}>\n"},
                                 "tests/media/exif_test.cpp:2", f"<{header}> is for tests/platform/ only")
                for place in ("platform/qt", "platform/support", "faults", "scenario"):
                    self.assertEqual(self.faults({f"../tests/{place}/a.cpp": f"#include <{header}>\n"}), [])
        self.assertFault({"../tests/media/a.cpp": '#include "platform/posix/names.h"\n'}, "tests/media/a.cpp:1",
                         "is for tests/platform/ only")
        self.assertEqual(self.faults({"../tests/media/a.cpp": '#include "platform/files.h"\n#include <vector>\n'
                                                              "#include <nlohmann/json.hpp>\n"}), [])

    def test_a_platform_folder_belongs_to_itself(self):
        files = {"media/exif.cpp": '#include "platform/posix/names.h"\n'}
        self.assertFault(files, "media/exif.cpp:1", "belongs to platform/posix/ alone")
        files = {"platform/qt/window.cpp": '#include "platform/posix/names.h"\n'}
        self.assertFault(files, "platform/qt/window.cpp:1", "belongs to platform/posix/ alone")
        files = {"platform/canvas.h": '#include "platform/posix/names.h"\n'}
        self.assertFault(files, "platform/canvas.h:1", "belongs to platform/posix/ alone")

    def test_a_platform_folder_knows_nothing_of_the_program(self):
        files = {"platform/qt/window.cpp": '#include "state/app_state.h"\n#include "base/geometry.h"\n'}
        self.assertFault(files, "platform/qt/window.cpp:1", "may include only platform, base, text, formats")

    def test_asking_for_the_machine_is_the_platforms_business(self):
        for line in ("#ifdef _WIN32", "#ifndef __linux__", "#if defined(_MSC_VER) && X", "#  elif defined __APPLE__",
                     "#if X && \\\n  defined(__unix__)"):
            with self.subTest(line=line):
                self.assertFault({"media/exif.cpp": f"\n{line}\n"}, "media/exif.cpp:2", "only src/platform/")
                self.assertEqual(self.faults({"platform/files.h": f"{line}\n#endif\n"}), [])
        self.assertFault({"base/log.h": "#if defined(__GNUC__)\n#endif\n"}, "base/log.h:1", "__GNUC__")
        self.assertEqual(self.faults({"media/exif.cpp": "#ifdef NDEBUG\n#endif\n#if __cplusplus > 1\n#endif\n"}), [])

    def test_a_pragma_for_one_compiler_is_the_platforms_business(self):
        self.assertFault({"media/exif.cpp": "#pragma GCC diagnostic push\n"}, "media/exif.cpp:1", "one compiler's")
        self.assertEqual(self.faults({"media/exif.h": "#pragma once\n", "platform/qt/a.h": "#pragma pack(1)\n"}), [])

    def test_what_the_compiler_can_do_is_the_platforms_business(self):
        for code in ("#if __has_include(<span>)", "#if defined(__has_builtin)", "void F() { __builtin_prefetch(0); }"):
            with self.subTest(code=code):
                self.assertFault({"media/exif.cpp": f"\n{code}\n"}, "media/exif.cpp:2", "asks for __")
                self.assertFault({"../tests/media/a.cpp": f"\n{code}\n"}, "tests/media/a.cpp:2", "asks for __")
                self.assertEqual(self.faults({"platform/files.h": f"{code}\n", "../tests/platform/a.cpp": code}), [])
        self.assertEqual(self.faults({"media/exif.cpp": '// __builtin_trap\nconst char* a = "__builtin_trap";\n'}), [])

    def test_tests_ask_for_the_machine_in_their_own_places_only(self):
        for line in ("#ifdef _WIN32", "#if defined(__GNUC__)", "#pragma GCC diagnostic push"):
            with self.subTest(line=line):
                self.assertFault({"../tests/media/a.cpp": f"\n{line}\n"}, "tests/media/a.cpp:2", "only src/platform/")
                self.assertEqual(self.faults({"../tests/scenario/a.cpp": f"{line}\n"}), [])

    def test_an_include_of_nothing_is_told(self):
        self.assertFault({"media/exif.cpp": '#include "media/exif.h"\n'}, "media/exif.cpp:1", "does not exist")
        self.assertFault({"media/exif.cpp": "#include HEADER\n"}, "media/exif.cpp:1", "cannot be followed")
        self.assertFault({"media/exif.cpp": "#include <media/photo.h>\n"}, "media/exif.cpp:1",
                         'include it as "media/photo.h"')

    def test_an_include_beside_the_file_is_found(self):
        self.assertEqual(self.faults({"media/exif.cpp": '#include "photo.h"\n#include "../store/settings_file.h"\n'}), [])
        self.assertFault({"media/exif.cpp": '#include "../views/model/grid.h"\n'}, "media/exif.cpp:1",
                         "views/model is not on a lower floor")

    def test_what_only_looks_like_an_include_is_left_alone(self):
        text = """
// #include <windows.h>
// a comment that goes on \\
#include <windows.h>
/* #include <windows.h>
#include "views/painting.h"
*/
const char* a = "/*";
#include <string>
const char* b = R"(
#include <windows.h>
)";
const char c = '"';
const int d = 1'000'000;
/* open to the end
#include <windows.h>
"""
        self.assertEqual(self.faults({"media/exif.cpp": text}), [])

    def test_faults_after_literals_and_comments_keep_their_line(self):
        text = '/* one\n two */ const char* a = "// no comment";\n#include <windows.h>\n'
        self.assertFault({"media/exif.cpp": text}, "media/exif.cpp:3")

    def test_bytes_that_are_no_text_do_not_stop_it(self):
        with tempfile.TemporaryDirectory() as src:
            os.makedirs(os.path.join(src, "media"))
            with open(os.path.join(src, "floors"), "w", encoding="utf-8") as file:
                file.write(GOOD["floors"])
            with open(os.path.join(src, "media", "exif.cpp"), "wb") as file:
                file.write(b"\xff\xfe\x00// \x83\n#include <windows.h>\r\n")
            result = subprocess.run([sys.executable, TOOL, src], capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 1)
        self.assertIn("media/exif.cpp:2:", result.stdout)

    def test_wrong_use_has_a_status_of_its_own(self):
        for arguments in (["/no/such/folder"], ["a", "b"], ["--what"]):
            with self.subTest(arguments=arguments):
                result = subprocess.run([sys.executable, TOOL, *arguments], capture_output=True, text=True, check=False)
                self.assertEqual(result.returncode, 2)
                self.assertNotEqual(result.stderr, "")


if __name__ == "__main__":
    unittest.main()

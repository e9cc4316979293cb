#!/usr/bin/env python3
"""What `cmake --install` puts where, and that the manual page knows all that the program's help knows.

  installed_tree_test.py BUILD-FOLDER
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

BUILD = sys.argv.pop(1)

FILES = [
    "bin/kalmora",
    "share/applications/org.kalmora.Kalmora.desktop",
    "share/metainfo/org.kalmora.Kalmora.metainfo.xml",
    "share/icons/hicolor/scalable/apps/kalmora.svg",
    "share/man/man1/kalmora.1",
    "share/kalmora/users-guide.md",
    "share/kalmora/formats.md",
    "share/kalmora/back.jpg",
    "share/kalmora/Res/help.png",
    "share/kalmora/Res/help@2x.png",
    "share/kalmora/Res/kalmora.png",
]


class InstalledTree(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="kalmora-installed-")
        cls.root = cls.folder.name
        cls.installing = subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.root], capture_output=True,
                                        text=True, check=False)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def read(self, name):
        with open(os.path.join(self.root, name), encoding="utf-8") as file:
            return file.read()

    def test_everything_is_there(self):
        self.assertEqual(self.installing.returncode, 0, self.installing.stderr)
        missing = [name for name in FILES if not os.path.exists(os.path.join(self.root, name))]
        self.assertEqual(missing, [])

    def test_the_window_is_found_from_the_installed_program(self):
        shot = subprocess.run([os.path.join(self.root, "bin/kalmora"), "--home", os.path.join(self.root, "home"), "shot",
                               "--size", "1x", "--out", "x.png"], capture_output=True, text=True, check=False)
        self.assertEqual(shot.returncode, 2, shot.stderr)
        self.assertIn("WIDTHxHEIGHT", shot.stderr)

    def test_the_menu_entry_starts_the_installed_program(self):
        entry = self.read("share/applications/org.kalmora.Kalmora.desktop")
        started = re.search(r'^Exec="([^"]+)"', entry, re.MULTILINE).group(1)
        self.assertEqual(started, os.path.join(self.root, "bin/kalmora"))
        self.assertIn("Icon=kalmora\n", entry)

    def test_the_installed_program_keeps_its_files_out_of_its_folder(self):
        with tempfile.TemporaryDirectory(prefix="kalmora-user-") as user:
            note = os.path.join(user, "note.txt")
            with open(note, "w", encoding="utf-8") as file:
                file.write("x")
            environment = {name: value for name, value in os.environ.items()
                           if name not in ("KALMORA_HOME", "XDG_DATA_HOME")}
            shown = subprocess.run([os.path.join(self.root, "bin/kalmora"), "show", note], capture_output=True,
                                   text=True, check=True, env={**environment, "HOME": user})
            home = os.path.join(user, ".local/share/kalmora")
            self.assertIn(os.path.join(home, "files"), shown.stderr)
            self.assertTrue(os.path.exists(os.path.join(home, "extension.dat")))
            self.assertEqual(os.listdir(os.path.join(self.root, "bin")), ["kalmora"])

    def test_the_manual_page_has_every_verb_and_option_of_the_help(self):
        page = self.read("share/man/man1/kalmora.1").replace("\\-", "-")
        program = os.path.join(self.root, "bin/kalmora")

        def help_of(*verb):
            return subprocess.run([program, *verb, "--help"], capture_output=True, text=True, check=True).stdout

        verbs = re.findall(r"^  ([a-z]+)  ", help_of(), re.MULTILINE)
        self.assertIn("search", verbs)
        for verb in [[]] + [[verb] for verb in verbs]:
            if verb:
                self.assertIn(f".SS {verb[0]}\n", page)
            for option in re.findall(r"--[a-z][a-z-]*", help_of(*verb)):
                self.assertIn(f"\\fB{option}\\fR", page, verb)

    def test_the_manual_page_is_sound(self):
        page = self.read("share/man/man1/kalmora.1")
        for heading in ("NAME", "SYNOPSIS", "OPTIONS", "VERBS", "EXIT STATUS", "ENVIRONMENT", "FILES"):
            self.assertIn(f".SH {heading}\n", page)
        for line in page.splitlines():
            if line.startswith("."):
                self.assertRegex(line, r'^\.(\\"|TH|SH|SS|TP|B|br)( |$)', "a text that would be taken for a command")


if __name__ == "__main__":
    unittest.main()

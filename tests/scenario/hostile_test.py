"""Files beside the program with content that no program writes."""

import os
import random
import time
import unittest

from desktop import wait_until
from program import Program
from scenario import Scenario

KEY_FILES = ("KeyConfig.dat", "KeyConfig4SS.dat", "KeyConfig4Editor.dat")


class Hostile(Scenario):
    def lives(self, settings=None, keys=None):
        """Starts with these files, and answers a key that no key file of these tests takes away."""
        with Program(self.desktop, self.life, settings, keys) as program:
            program.start()
            program.press_button("Next")
            program.wait_title("Kalmora [2008/12]")
            self.assertEqual(program.end(), 0)
            return {name: program.read(name) for name in KEY_FILES}, program.commands(), program.settings()

    def test_garbage(self):
        noise = random.Random(1).randbytes(60000)
        self.lives(keys={name: noise for name in KEY_FILES})

    def test_ten_megabytes(self):
        line = b"Reload\tC+A+S+END\n" + b"x" * 983 + b"\n"
        self.lives(keys={name: line * 10000 for name in KEY_FILES})

    def test_one_line_without_an_end(self):
        self.lives(keys={name: b"Reload\t" + b"C+" * 2000000 for name in KEY_FILES})

    def test_two_commands_on_one_key(self):
        keys, _, _ = self.lives(keys={"KeyConfig.dat": "Reload\tF6\nGo Today\tF6\n"})
        self.assertIn("Reload\tF6\nGo Today\tF6\n", keys["KeyConfig.dat"].replace("\r", ""))
        with Program(self.desktop, self.life, keys={"KeyConfig.dat": "Reload\tF6\nGo Today\tF6\n"}) as program:
            program.start()
            program.key("F6", "F3")
            program.wait_command(1041)
            self.assertEqual(program.commands(), [1014, 1041], "the later one in the list has the key")

    def test_keys_that_run_past_their_row(self):
        self.lives(keys={"KeyConfig.dat": "Reload\tC+A+S+END\nGo Today\tC+A+S+HOME\nSearch\tS+END\n",
                         "KeyConfig4SS.dat": "Hide Slide Show\tC+A+S+END\n",
                         "KeyConfig4Editor.dat": "Close\tC+A+S+HOME\n"})

    def test_settings_of_any_kind(self):
        for settings in ({"WindowRect": "900,700,100,50"}, {"WindowRect": "-30000,-30000,30000,30000"},
                         {"TimingOfPopup(sec)": 2147483647}, {"TimingOfPopup(sec)": -5},
                         {"ButtonFontHeight": 5000}, {"ButtonFontHeight": -3}, {"DayNumberOfLine": 10**9},
                         {"ThumbnailMaxSize": -100}, {"UseJapanese": 7}):
            with self.subTest(settings=settings), Program(self.desktop, self.life, settings) as program:
                program.start()
                self.assertTrue(program.is_running())
                self.assertEqual(program.end(), 0)

    def test_a_rectangle_smaller_than_its_frame_leaves_a_window_to_be_seen(self):
        with Program(self.desktop, self.life, {"WindowRect": "900,700,900,700"}) as program:
            program.start()
            # The frame is taken off the rectangle some moments after the window has been shown.
            end = time.monotonic() + 1
            wait_until(lambda: time.monotonic() > end or not program.is_shown(), "a second")
            self.assertTrue(program.is_shown())
            self.assertEqual(program.end(), 0)

    def test_a_home_that_cannot_be_written_does_not_hold_up_the_end(self):
        if os.geteuid() == 0:
            self.skipTest("root may write everywhere")
        with Program(self.desktop, self.life) as program:
            os.chmod(program.home, 0o500)
            self.addCleanup(os.chmod, program.home, 0o700)
            program.start()
            self.assertEqual(program.end(), 0)
            os.chmod(program.home, 0o700)


if __name__ == "__main__":
    unittest.main()

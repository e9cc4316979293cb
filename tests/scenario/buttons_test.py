"""The buttons along the lower edge: each can be pressed by mouse and by keyboard, and says what it is."""

import os
import stat
import time
import unittest

from desktop import wait_until
from program import BUTTONS
from scenario import Scenario


class Buttons(Scenario):
    @classmethod
    def fill(cls, life):
        life.add_month(2008, 11)
        for year, month in ((2007, 11), (2008, 10), (2008, 12), (2009, 11)):
            life.add(year, month, 5, "p.txt", b"a note")

    def test_each_button_runs_its_command(self):
        program = self.program()
        expected = {"Import": 1200, "Search": 1041, "Slide show": 1051, "All": 1022, "Pause": 1027,
                    "Next 2": 1010, "Next": 1011, "Auto": 1023, "Prev": 1012, "Prev 2": 1013}
        self.assertEqual({name for name, _ in BUTTONS} - set(expected), {"Help", "Filter"})
        for name, command in expected.items():
            with self.subTest(button=name):
                wait_until(lambda: self.reaches(program, name, command), f"command {command} of {name}")

    def reaches(self, program, name, command):
        self.desktop.key("Escape")  # closes what the last button may have opened
        program.press_button(name)
        end = time.monotonic() + 3
        while command not in program.commands() and time.monotonic() < end:
            time.sleep(0.02)
        return command in program.commands()

    def test_the_period_follows_the_arrows(self):
        program = self.program()
        for name, title in (("Next", "Kalmora [2008/12]"), ("Prev", "Kalmora [2008/11]"),
                            ("Next 2", "Kalmora [2009/11]"), ("Prev 2", "Kalmora [2008/11]")):
            program.press_button(name)
            program.wait_title(title)

    def test_the_level_label_goes_up(self):
        program = self.program()
        _, _, _, height = program.geometry()
        program.click(LEVEL_LABEL_X, height - GAP_TO_LABEL)
        program.wait_title("Kalmora [2008]")

    def opened_by(self, press):
        """What the desktop was asked to open."""
        folder = self.desktop.folder
        seen = os.path.join(folder, "opened")
        opener = os.path.join(folder, "xdg-open")
        with open(opener, "w", encoding="utf-8") as file:
            file.write(f'#!/bin/sh\necho "$1" > {seen}.new && mv {seen}.new {seen}\n')
        os.chmod(opener, stat.S_IRWXU)
        path = self.desktop.environment["PATH"]
        self.desktop.environment["PATH"] = folder + ":" + path
        self.addCleanup(self.desktop.environment.__setitem__, "PATH", path)
        press(self.program())
        wait_until(lambda: os.path.exists(seen), "something opened")
        with open(seen, encoding="utf-8") as file:
            opened = file.read().strip()
        os.remove(seen)
        return opened

    def test_help_opens_the_guide(self):
        guide = self.opened_by(lambda program: program.press_button("Help"))
        self.assertEqual(os.path.basename(guide), "users-guide.md")
        self.assertTrue(os.path.exists(guide), guide)

    def test_the_date_label_opens_the_folder(self):
        folder = self.opened_by(lambda program: program.click(20, program.geometry()[3] - GAP_TO_LABEL))
        self.assertEqual(folder, os.path.join(self.life.folder, "2008", "200811"))

    def test_a_held_button_looks_pressed(self):
        program = self.program()
        x, y = program.button("Next")
        program.move(x, y)
        program.wait_drawn()
        corner = (x - 14, y - 14)
        loose = program.pixel(*corner)
        self.desktop.hand("mousedown", 1)
        program.wait_pixel(*corner, lambda pixel: pixel != loose, "a darker button")
        self.desktop.hand("mouseup", 1)
        program.wait_pixel(*corner, lambda pixel: pixel == loose, "the button as it was")

    def test_a_resting_cursor_is_seen_name_and_key(self):
        program = self.program()
        before = set(self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "kalmora").split())
        program.move(*program.button("Next"))
        self.desktop.hand("mousemove_relative", 1, 1)

        def tips():
            now = self.desktop.output("xdotool", "search", "--onlyvisible", "--class", "kalmora").split()
            return [window for window in now if window not in before]

        wait_until(tips, "a tip")

    def test_the_keyboard_reaches_every_button(self):
        program = self.program()
        # From the left: date, level, then the pictures.
        order = ["date", "level"] + [name for name, _ in reversed(BUTTONS)]
        self.desktop.key(*["Tab"] * (order.index("Next") + 1))
        self.desktop.key("Return")
        program.wait_title("Kalmora [2008/12]")
        self.desktop.key("shift+Tab", "shift+Tab", "space")  # by way of Auto to Prev
        program.wait_title("Kalmora [2008/11]")
        self.desktop.key("Escape", "Return")  # no button has the focus any more
        self.desktop.key("Right")
        program.wait_title("Kalmora [2008/12]")

    def test_pause_stops_what_moves_and_starts_it_again(self):
        program = self.program(settings={"TimingOfPopup(sec)": 1})
        program.press_button("Pause")
        program.wait_command(1027)
        program.press_button("Pause")
        program.wait_command(1027, times=2)
        self.assertTrue(program.is_running())


GAP_TO_LABEL = 5 + 19
LEVEL_LABEL_X = 150


if __name__ == "__main__":
    unittest.main()

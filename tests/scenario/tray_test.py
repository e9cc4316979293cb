"""Hiding the window and calling it back: with a tray, without one, and without a window manager."""

import re
import unittest

from desktop import Desktop, end_process, wait_until
from program import LifeLog, Program
from scenario import Scenario


def find_icon(desktop):
    # The tray has taken the window in, where searches by name do not look.
    for line in desktop.output("xwininfo", "-root", "-tree").splitlines():
        found = re.search(r'"Kalmora": \("Kalmora".* (\d+)x(\d+)\+\S+\s+\+(\d+)\+(\d+)', line)
        if found:
            width, height, x, y = map(int, found.groups())
            return x + width // 2, y + height // 2
    return None


class WithATray(Scenario):
    DESKTOP = {"tray": True}

    def setUp(self):
        self.shown = self.program()
        self.icon = wait_until(lambda: find_icon(self.desktop), "the icon in the tray")

    def wait_hidden(self):
        wait_until(lambda: not self.shown.is_shown(), "the window's end")

    def wait_shown(self):
        wait_until(self.shown.is_shown, "the window")

    def test_a_key_hides_it_and_the_icon_brings_it_back(self):
        where = self.shown.geometry()
        self.shown.key("F11")
        self.wait_hidden()
        self.assertTrue(self.shown.is_running())
        self.desktop.click(*self.icon)
        self.wait_shown()
        self.shown.wait_command(1001)
        self.assertEqual(self.shown.wait_steady(), where)
        self.shown.key("Right")
        self.shown.wait_title("Kalmora [2008/12]")

    def test_minimising_hides_it_too(self):
        self.desktop.hand("windowminimize", self.shown.window)
        self.wait_hidden()
        self.assertEqual(self.desktop.windows(r"^Kalmora \[", visible=True), [])
        self.desktop.click(*self.icon)
        self.wait_shown()

    def test_a_dialog_and_its_minimised_window_come_back_together(self):
        self.shown.key("F3")
        dialog = wait_until(lambda: self.desktop.windows("^Search"), "the dialog")[0]
        self.desktop.hand("windowminimize", self.shown.window)
        wait_until(lambda: not self.shown.is_shown() and not self.desktop.windows("^Search"), "both to go")
        self.desktop.click(*self.icon)
        self.wait_shown()
        wait_until(lambda: self.desktop.windows("^Search"), "the dialog again")
        wait_until(lambda: self.desktop.output("xdotool", "getwindowfocus").strip() == dialog, "its focus")
        self.desktop.key("Escape")
        wait_until(lambda: not self.desktop.windows("^Search"), "the end of the dialog")
        self.desktop.hand("windowminimize", self.shown.window)
        self.wait_hidden()

    def test_the_menu_shows_and_ends(self):
        self.shown.key("F11")
        self.wait_hidden()
        for keys, times in ((("Down", "Return"), 1), (("Down", "Down", "Return"), 2)):
            self.open_menu(times)
            self.desktop.key(*keys)
            self.shown.wait_command(1001, times)
            self.wait_shown()
        self.open_menu(3)
        self.desktop.key("x")
        self.assertEqual(self.shown.wait_end(), 0)

    def open_menu(self, times):
        # Each press has its own end of the icon: two at one place in a moment would be a double click, which
        # opens no menu.
        x, y = self.icon
        self.desktop.click(x, y + (8 if times % 2 else -8), button=3)
        wait_until(self.menu, "the menu")

    def menu(self):
        """A window of the program that is neither the main one nor the icon."""
        for window in self.desktop.windows_of_class("kalmora"):
            place = self.desktop.geometry(window)
            if window != self.shown.window and place and place[2] > 70 and 70 < place[3] < 400:
                return window
        return None

    def test_a_hidden_program_ends_with_its_window_where_it_was(self):
        self.shown.key("F11")
        self.wait_hidden()
        self.assertEqual(self.shown.end(), 0)
        self.assertEqual(self.shown.settings()["WindowRect"], Program.SETTINGS["WindowRect"])


class WithoutATray(unittest.TestCase):
    def setUp(self):
        self.life = LifeLog().add_month(2008, 11)
        self.addCleanup(self.life.remove)

    def test_the_hidden_window_comes_back_when_the_tray_goes_away(self):
        with Desktop(tray=True) as desktop, Program(desktop, self.life) as program:
            tray = desktop.processes[-1]
            program.start()
            wait_until(lambda: find_icon(desktop), "the icon in the tray")
            program.key("F11")
            wait_until(lambda: not program.is_shown(), "the window's end")
            end_process(tray)
            wait_until(program.is_shown, "the window")
            program.key("Right")
            program.wait_title("Kalmora [2008/12]")
            self.assertEqual(program.end(), 0)

    def test_the_window_is_minimised_instead_of_hidden(self):
        with Desktop() as desktop, Program(desktop, self.life) as program:
            program.start()
            program.key("F11")
            wait_until(lambda: "Iconic" in desktop.output("xprop", "-id", program.window, "WM_STATE"),
                       "a minimised window")
            desktop.hand("windowactivate", program.window)
            wait_until(lambda: "Normal" in desktop.output("xprop", "-id", program.window, "WM_STATE"),
                       "the window as it was")
            program.key("Right")
            program.wait_title("Kalmora [2008/12]")
            self.assertEqual(program.end(), 0)

    def test_without_a_window_manager_it_stays(self):
        with Desktop(window_manager=False) as desktop, Program(desktop, self.life) as program:
            program.start()
            desktop.focus(program.window)
            program.key("F11")
            program.wait_command(1020)
            program.key("Right")
            program.wait_title("Kalmora [2008/12]")
            self.assertTrue(program.is_shown())
            program.click(*program.button("Prev"))
            program.wait_title("Kalmora [2008/11]")
            program.key("alt+F4")  # only the program itself knows it here
            self.assertEqual(program.wait_end(), 0)
            self.assertEqual(program.settings()["WindowRect"], Program.SETTINGS["WindowRect"])


if __name__ == "__main__":
    unittest.main()

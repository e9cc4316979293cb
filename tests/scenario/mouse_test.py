"""Presses on the calendar: short and long, single and double, with Ctrl, and the wheel; and the window's edges."""

import time
import unittest

from desktop import wait_until
from program import Program
from scenario import Scenario

NOVEMBER_2008 = 5  # begins on a Saturday
LONG_PRESS = 2.0


class Mouse(Scenario):
    def program(self, **more):
        self.addCleanup(self.desktop.hand, "mouseup", 1)
        return super().program(**more)

    def middle(self, program, day):
        x, y, width, height = program.cell(day, NOVEMBER_2008)
        return x + width // 2, y + height // 2

    def number(self, program, day):
        x, y, _, _ = program.cell(day, NOVEMBER_2008)
        return x + 20, y + 20

    def test_a_press_on_a_number_opens_the_day(self):
        program = self.program()
        program.click(*self.number(program, 13))
        program.wait_title("Kalmora [2008/11/13]")

    def test_a_short_press_on_a_cell_stays_in_the_month(self):
        program = self.program()
        program.click(*self.middle(program, 13))
        program.click(*self.number(program, 14))  # what comes after it has been served
        program.wait_title("Kalmora [2008/11/14]")

    def test_a_press_held_for_two_seconds_opens_the_day(self):
        program = self.program()
        program.move(*self.middle(program, 18))
        pressed = time.monotonic()
        self.desktop.hand("mousedown", 1)
        program.wait_title("Kalmora [2008/11/18]")
        self.assertGreaterEqual(time.monotonic() - pressed, LONG_PRESS - 0.1)

    def test_a_press_held_on_a_button_opens_no_day(self):
        program = self.program(keys={"KeyConfig.dat": "Reload\tF5\n"})
        program.move(*program.button("Pause"))
        pressed = time.monotonic()
        self.desktop.hand("mousedown", 1)
        program.wait_command(1027)
        wait_until(lambda: time.monotonic() > pressed + LONG_PRESS + 0.3, "the time of a long press")
        self.desktop.hand("mouseup", 1)
        program.key("F5")
        program.wait_command(1021)
        self.assertEqual(program.title(), "Kalmora [2008/11]")

    def test_a_press_that_was_let_go_opens_no_day_later(self):
        program = self.program()
        pressed = time.monotonic()
        program.click(*self.middle(program, 18))
        wait_until(lambda: time.monotonic() > pressed + LONG_PRESS + 0.3, "the time of a long press")
        program.key("F5")
        program.wait_command(1021)
        self.assertEqual(program.title(), "Kalmora [2008/11]")

    def test_ctrl_and_a_press_open_the_day(self):
        program = self.program()
        program.move(*self.middle(program, 20))
        self.desktop.hand("keydown", "ctrl", "click", 1, "keyup", "ctrl")
        program.wait_title("Kalmora [2008/11/20]")

    def test_a_double_click_on_a_number_ends_in_the_day(self):
        program = self.program()
        program.double_click(*self.number(program, 13))
        program.wait_title("Kalmora [2008/11/13]")
        program.key("Up")
        program.wait_title("Kalmora [2008/11]")

    def test_a_press_on_a_month_of_the_year_opens_it(self):
        program = self.program(settings={"ViewType": 1})
        _, _, width, _ = program.geometry()
        for month in (7, 12):
            program.wait_title("Kalmora [2008]")
            x = (month - 1) % 4 * (width // 4) + 12
            y = (month - 1) // 4 * (width // 4 * 6 // 7) + 8
            program.click(x, y)
            program.wait_title(f"Kalmora [2008/{month:02}]")
            program.key("Up")

    def test_the_wheel_sizes_the_pictures_of_all_and_nothing_else(self):
        program = self.program()
        program.click(*self.middle(program, 20), button=4)
        program.wait_command(1120)
        program.press_button("All")
        program.wait_command(1022)
        for _ in range(3):
            program.click(*self.middle(program, 20), button=4)
        program.click(*self.middle(program, 20), button=5)
        program.wait_command(1121)
        self.assertEqual(program.end(), 0)
        self.assertEqual(program.settings()["ThumbnailMaxSize"], str(240 + 3 * 10 - 10))

    def test_the_window_may_have_any_size(self):
        program = self.program()
        for width, height in ((1, 1), (80, 40), (3000, 2000), (300, 200), (960, 700)):
            self.desktop.hand("windowsize", program.window, width, height)
            program.wait_steady()
            program.key("F5")
            times = program.commands().count(1021) + 1
            wait_until(lambda: program.commands().count(1021) >= times - 1, "an answer")
            self.assertTrue(program.is_running(), f"{width}x{height}")
        program.press_button("Next")
        program.wait_title("Kalmora [2008/12]")

    def test_the_window_comes_back_where_it_was(self):
        program = self.program()
        self.desktop.hand("windowsize", "--sync", program.window, 800, 600)
        self.desktop.hand("windowmove", "--sync", program.window, 100, 90)
        where = program.wait_steady()
        self.assertEqual(program.end(), 0)
        program.start()
        self.assertEqual(program.wait_steady(), where)

    def test_a_maximised_window_leaves_the_normal_rectangle_for_the_next_start(self):
        program = self.program()
        before = program.wait_steady()
        self.desktop.double_click(before[0] + 200, before[1] - 8)  # on the title bar
        wait_until(lambda: program.geometry()[2] > before[2], "a larger window")
        self.assertEqual(program.end(), 0)
        self.assertEqual(program.settings()["WindowRect"], Program.SETTINGS["WindowRect"])


if __name__ == "__main__":
    unittest.main()

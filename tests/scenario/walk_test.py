"""Through year, month and day and back, with keys."""

import datetime
import unittest

from desktop import wait_until
from program import colour_of_day
from scenario import Scenario


class Walk(Scenario):
    @classmethod
    def fill(cls, life):
        life.add_month(2008, 11).add_month(2008, 12)
        life.add(2008, 11, 13, "second.txt", b"lunch")

    def test_year_month_day_and_back(self):
        program = self.program()
        self.desktop.key("Up")
        program.wait_title("Kalmora [2008]")
        self.desktop.key("Right")
        program.wait_title("Kalmora [2009]")
        self.desktop.key("Left")
        program.wait_title("Kalmora [2008]")
        self.desktop.key("ctrl+Left")
        program.wait_title("Kalmora [2006]")
        self.desktop.key("ctrl+Right")
        program.wait_title("Kalmora [2008]")
        self.desktop.key("Down")  # some month of the year
        wait_until(lambda: program.title().startswith("Kalmora [2008/") and len(program.title()) == 17, "a month")
        self.desktop.key("Up")
        program.wait_title("Kalmora [2008]")

    def test_month_to_day_takes_the_first_day_that_there_is(self):
        program = self.program()
        self.desktop.key("Down")
        program.wait_title("Kalmora [2008/11/01]")
        self.desktop.key("Left")
        program.wait_title("Kalmora [2008/10/31]")
        self.desktop.key("Right")
        program.wait_title("Kalmora [2008/11/01]")
        self.desktop.key("ctrl+Right")
        program.wait_title("Kalmora [2008/12/01]")
        self.desktop.key("Up")
        program.wait_title("Kalmora [2008/12]")

    def test_the_pictures_of_the_month_stand_in_their_cells(self):
        program = self.program()
        for day in (3, 13, 30):
            x, y, width, height = program.cell(day, first_column=5)
            red, green, blue = colour_of_day(day)

            def is_right(pixel):
                return abs(pixel[0] - red) + abs(pixel[1] - green) + abs(pixel[2] - blue) < 24

            if day == 13:
                continue  # takes turns with a note
            program.wait_pixel(x + width // 2, y + height * 3 // 4, is_right, f"the picture of day {day}")

    def test_one_key_leads_to_today(self):
        program = self.program(keys={"KeyConfig.dat": "Go Today\tF9\n"})
        today = datetime.date.today()
        self.desktop.key("F9")
        wait_until(lambda: program.title() in (today.strftime("Kalmora [%Y/%m/%d]"),
                                               datetime.date.today().strftime("Kalmora [%Y/%m/%d]")), "today")

    def test_a_typed_date_is_gone_to(self):
        program = self.program(keys={"KeyConfig.dat": "Jump To\tC+J\n"})
        for typed, title in (("2008/12/24", "Kalmora [2008/12/24]"), ("200711", "Kalmora [2007/11]"),
                             ("2010", "Kalmora [2010]")):
            self.desktop.key("ctrl+j")
            dialog = wait_until(lambda: self.desktop.windows("^Jump To$"), "the dialog")[0]
            wait_until(lambda: self.desktop.output("xdotool", "getwindowfocus").strip() == dialog, "its focus")
            self.desktop.key("Return")  # nothing typed: it waits
            self.desktop.type(typed)
            self.desktop.key("Return")
            program.wait_title(title)
            self.assertFalse(self.desktop.windows("^Jump To$"))
        self.desktop.key("ctrl+j")
        wait_until(lambda: self.desktop.windows("^Jump To$"), "the dialog")
        self.desktop.key("Escape")
        wait_until(lambda: not self.desktop.windows("^Jump To$"), "the dialog's end")
        self.assertEqual(program.title(), "Kalmora [2010]")

    def test_a_key_without_a_command_does_nothing(self):
        program = self.program()
        before = len(program.commands())
        self.desktop.key("F8", "ctrl+z", "a", "Home")
        self.desktop.key("F5")
        program.wait_command(1021)
        self.assertEqual(len(program.commands()), before + 1)
        self.assertEqual(program.title(), "Kalmora [2008/11]")

    def test_the_view_is_kept_for_the_next_start(self):
        program = self.program()
        self.desktop.key("Right", "Up")
        program.wait_title("Kalmora [2008]")
        self.assertEqual(program.end(), 0)
        settings = program.settings()
        self.assertEqual((settings["ViewType"], settings["TargetYear"], settings["TargetMonth"]), ("1", "2008", "12"))


if __name__ == "__main__":
    unittest.main()

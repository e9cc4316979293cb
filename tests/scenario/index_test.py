"""The index in the window: loaded ahead at the start, updated by command, without one when the user is away, and
stopped by its button."""

import datetime
import os
import unittest

from desktop import wait_until
from scenario import ScenarioOfEachTest


class Index(ScenarioOfEachTest):
    @classmethod
    def fill(cls, life):
        life.add(2008, 11, 13, "note.txt", b"Hanami")

    def program(self, **settings):
        return super().program(settings=settings)

    def index(self, year, month, day):
        path = os.path.join(self.life.day(year, month, day), "$calendar.cidx")
        try:
            with open(path, encoding="cp932") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    def test_the_months_of_late_are_loaded_ahead(self):
        today = datetime.date.today()
        self.life.add(today.year, today.month, today.day, "today.txt", b"Today")
        self.program(LoadIndexInitially=1, NumberOfLoadIndex=1, **{"TimingOfPopup(sec)": 1})
        wait_until(lambda: "FILE=today.txt\n" in self.index(today.year, today.month, today.day), "today's index")
        self.assertEqual(self.index(2008, 11, 13), "")

    def test_the_key_updates_the_month_in_view(self):
        program = self.program()
        program.key("F4")
        program.wait_command(1043)
        wait_until(lambda: "COMM=hanami\n" in self.index(2008, 11, 13), "the index")
        self.life.add(2008, 11, 13, "later.txt", b"Later")
        program.key("F4")
        wait_until(lambda: "FILE=later.txt\n" in self.index(2008, 11, 13), "the file in the index")

    def test_the_button_lets_the_program_work_while_the_user_is_away(self):
        # Less than no minute away is away: the look every ten seconds comes soon enough.
        program = self.program(ShowButtonIndexing=1, MinutesToSleep=-1, **{"TimingOfPopup(sec)": 1})
        log = program.log
        self.assertNotIn("[Update]", log())
        button = program.button("Search")  # the indexing button has moved that one out of its place
        program.click(*button)
        wait_until(lambda: "[Update] ok. Elapsed Time = 360000 > 43200 (2008/11)" in log(), "the update", seconds=40)
        wait_until(lambda: "COMM=hanami\n" in self.index(2008, 11, 13), "the index")
        program.click(*button)
        wait_until(lambda: "[Stop Indexing] stop by user" in log(), "the stop")


if __name__ == "__main__":
    unittest.main(verbosity=2)

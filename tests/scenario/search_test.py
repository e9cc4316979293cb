"""Asking for a word in the search dialog, seeing what is found, and ending the search."""

import unittest

from desktop import wait_until
from program import GAP, colour_of_day
from scenario import Scenario

LABEL = (200, 200, 225)  # behind the query on its label


class Search(Scenario):
    @classmethod
    def fill(cls, life):
        life.add_month(2008, 11).add_month(2008, 12)
        life.add(2008, 11, 13, "note.txt", b"hanami")

    def open_dialog(self, program, title="^Search$"):
        program.press_button("Search")
        dialog = wait_until(lambda: self.desktop.windows(title), "the dialog")[0]
        self.desktop.focus(dialog)
        return dialog

    def wait_closed(self, title="^Search$"):
        wait_until(lambda: not self.desktop.windows(title), "the end of the dialog")

    def shows_day(self, program, day):
        x, y, width, height = program.cell(day, first_column=5)
        seen = program.pixel(x + width // 2, y + height * 3 // 4)
        return sum(abs(a - b) for a, b in zip(seen, colour_of_day(day))) < 24

    def wait_days(self, program, shown, hidden):
        wait_until(lambda: all(self.shows_day(program, day) for day in shown) and
                   not any(self.shows_day(program, day) for day in hidden), f"days {shown} and not {hidden}")

    def label(self, program):
        """The middle of the label with the query."""
        _, _, width, height = program.geometry()
        y = height - GAP - 8

        def find():
            shown = [x for x in range(0, width, 2) if program.pixel(x, y) == LABEL]
            return len(shown) > 3 and (shown[len(shown) // 2], height - GAP - 19)

        return wait_until(find, "the label")

    def test_a_word_is_searched_for_and_the_label_ends_it(self):
        program = self.program()
        self.wait_days(program, shown=(3, 20), hidden=())
        self.open_dialog(program)
        self.desktop.type("2008_1120")
        self.desktop.key("Return")
        program.wait_title("Kalmora [2008/11] Searched by 2008_1120")
        self.wait_days(program, shown=(20,), hidden=(3, 30))
        # The search goes along to another month, and finds nothing there.
        self.desktop.key("Right")
        program.wait_title("Kalmora [2008/12] Searched by 2008_1120")
        self.desktop.key("Left")
        program.wait_title("Kalmora [2008/11] Searched by 2008_1120")
        self.wait_days(program, shown=(20,), hidden=(3, 30))
        program.click(*self.label(program))
        program.wait_title("Kalmora [2008/11]")
        self.wait_days(program, shown=(3, 20, 30), hidden=())

    def test_the_dialog_stands_in_the_middle_of_the_screen(self):
        program = self.program()
        x, y, width, height = self.desktop.geometry(self.open_dialog(program))
        self.assertLess(abs(x + width / 2 - 640), 40)
        self.assertLess(abs(y + height / 2 - 450), 60)
        self.desktop.key("Escape")
        self.wait_closed()
        program.wait_title("Kalmora [2008/11]")

    def test_boxes_and_hours_are_reached_by_keys(self):
        program = self.program()
        self.open_dialog(program)
        self.desktop.key(*["Tab"] * 5, "space", "Return")
        program.wait_title("Kalmora [2008/11] Searched by flash:9")
        self.open_dialog(program)
        self.desktop.type("cat")
        self.desktop.key("Tab")
        self.desktop.type("22")
        self.desktop.key("Tab")
        self.desktop.type("26")
        self.desktop.key("Tab", "space", "Return")
        program.wait_title("Kalmora [2008/11] Searched by cat tag:face time:22-26")

    def test_an_empty_query_ends_the_search(self):
        program = self.program()
        self.open_dialog(program)
        self.desktop.type("2008_1120")
        self.desktop.key("Return")
        self.wait_days(program, shown=(20,), hidden=(3, 30))
        self.open_dialog(program)
        self.desktop.key("Return")
        program.wait_title("Kalmora [2008/11]")
        self.wait_days(program, shown=(3, 20, 30), hidden=())

    def test_everything_that_is_loaded_is_shown_as_a_scatter(self):
        program = self.program()
        for query in ("hanami", "no such word"):  # the second search finds the month in memory
            self.open_dialog(program)
            self.desktop.type(query)
            self.desktop.key("Return")
            program.wait_title(f"Kalmora [2008/11] Searched by {query}")
        self.wait_days(program, shown=(), hidden=(3, 13, 30))
        self.open_dialog(program)
        self.desktop.type("p0.png")
        self.desktop.key(*["Tab"] * 6, "space", "Return")
        program.wait_title("Kalmora [2008/11] Searched by p0.png")
        program.wait_drawn()
        self.assertEqual(program.end(), 0)
        self.assertEqual(program.settings()["AllViewMode"], "1")

    def test_the_japanese_dialog_is_asked_in_japanese(self):
        program = self.program(settings={"UseJapanese": 1})
        self.open_dialog(program, "^検索ボックス$")
        self.desktop.type("hanami")
        self.desktop.key("Return")
        program.wait_title("Kalmora [2008/11] Searched by hanami")
        self.wait_days(program, shown=(), hidden=(3, 13, 20))


if __name__ == "__main__":
    unittest.main(verbosity=2)

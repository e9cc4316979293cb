"""Files that another program drags onto the window, and the answer that program gets."""

import os
import shutil
import tempfile
import unittest

from drag import DragSource
from program import Program, dated_png
from scenario import Scenario

SATURDAY = 5  # the column of 1 November 2008


class Drop(Scenario):
    @classmethod
    def fill(cls, life):
        pass

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.shown = Program(cls.desktop, cls.life).start()
        cls.addClassCleanup(cls.shown.__exit__)

    def setUp(self):
        self.folder = tempfile.mkdtemp(prefix="kalmora-other-")
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)

    def offer(self, name, content=None):
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content or dated_png("2008:11:13 10:15:00"))
        return path

    def drag(self, offers, deletes, paths, day):
        """The last answer that the other program gets."""
        source = DragSource(self.desktop, self.folder, offers, deletes, paths)
        left, top, width, height = self.shown.cell(day, SATURDAY)
        source.drag_to(*self.shown.to_screen(left + width // 2, top + height // 2))
        answer = source.answer()
        source.end()
        self.assertNotIn("1 XdndActionMove", source.answers("over"), "many programs take this for a finished move")
        return answer

    def arrived(self, day, name):
        path = os.path.join(self.life.day(2008, 11, day), name)
        if not os.path.exists(path):
            return None
        with open(path, "rb") as file:
            return file.read()

    def test_a_file_moves_and_its_program_gets_that_answer_when_it_is_done(self):
        content = dated_png("2008:11:13 10:15:00") + b"x" * 3_000_000
        path = self.offer("moved.png", content)
        self.assertEqual(self.drag("both", "always", [path], 3), "1 XdndActionMove")
        self.assertEqual(self.arrived(3, "moved.png"), content)
        self.assertFalse(os.path.exists(path))

    def test_a_file_that_is_not_taken_stays_with_the_program_that_proposed_to_move_it(self):
        # The same moment, other bytes: it is passed over.
        self.life.add(2008, 11, 4, "other.png", dated_png("2008:11:13 10:15:00") + b"longer")
        path = self.offer("other.png")
        self.assertTrue(self.drag("both", "moved", [path], 4).startswith("0"))
        self.assertTrue(os.path.exists(path))

    def test_one_file_of_two_that_is_not_taken_costs_nothing_either(self):
        self.life.add(2008, 11, 5, "other.png", dated_png("2008:11:13 10:15:00") + b"longer")
        taken, left = self.offer("taken.png"), self.offer("other.png")
        self.assertEqual(self.drag("both", "moved", [taken, left], 5), "1 XdndActionCopy")
        self.assertTrue(self.arrived(5, "taken.png"))
        self.assertTrue(os.path.exists(left))

    def test_a_program_that_offers_nothing_but_a_move_loses_nothing(self):
        path = self.offer("only.png")
        self.drag("move", "moved", [path], 6)
        self.assertTrue(self.arrived(6, "only.png"))
        self.life.add(2008, 11, 6, "stays.png", dated_png("2008:11:13 10:15:00") + b"longer")
        path = self.offer("stays.png")
        self.drag("move", "moved", [path], 6)
        self.assertTrue(os.path.exists(path))

    def test_a_program_that_offers_a_copy_keeps_its_file(self):
        path = self.offer("kept.png")
        self.assertEqual(self.drag("copy", "never", [path], 7), "1 XdndActionCopy")
        self.assertTrue(os.path.exists(path))
        self.assertTrue(self.arrived(7, "kept.png"))

    def test_a_folder_is_imported_each_file_into_its_day(self):
        self.offer("card/a/one.png", dated_png("2008:11:20 09:00:00"))
        self.offer("card/two.png", dated_png("2008:11:21 09:00:00"))
        folder = os.path.join(self.folder, "card")
        self.assertEqual(self.drag("both", "moved", [folder], 8), "1 XdndActionCopy")
        self.assertTrue(self.arrived(20, "one.png"))
        self.assertTrue(self.arrived(21, "two.png"))

    def test_where_the_user_pressed_last_makes_no_rating_of_it(self):
        self.life.add(2008, 11, 10, "pressed.png", dated_png("2008:11:10 10:15:00"))
        self.shown.key("F5")
        cell = self.shown.cell(10, SATURDAY)
        self.shown.wait_drawn()
        self.shown.click(cell[0] + cell[2] // 2, cell[1] + cell[3] // 2)
        path = self.offer("beside.png")
        self.assertEqual(self.drag("both", "moved", [path], 10), "1 XdndActionMove")
        self.assertTrue(self.arrived(10, "beside.png"))


if __name__ == "__main__":
    unittest.main(verbosity=2)

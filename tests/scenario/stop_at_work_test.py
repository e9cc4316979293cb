"""The end of the program while its workers are at work, also on a disk that is slow or does not answer."""

import os
import random
import shutil
import tempfile
import time
import unittest

from desktop import LONGEST_WAIT, wait_until
from drag import DragSource
from program import dated_png
from scenario import ScenarioOfEachTest

BAD_DISK = os.environ["KALMORA_BAD_DISK"]
LONGEST_END = 3.0  # seconds; 2.2 and what a machine with much else to do takes


class StopAtWork(ScenarioOfEachTest):
    @classmethod
    def fill(cls, life):
        pass

    def setUp(self):
        super().setUp()
        self.card = tempfile.mkdtemp(prefix="kalmora-card-")
        self.addCleanup(shutil.rmtree, self.card, ignore_errors=True)
        self.dead_while = self.life.folder + "-is-dead"
        self.addCleanup(lambda: os.path.exists(self.dead_while) and os.remove(self.dead_while))

    def start(self, dead, slow_us=0, **settings):
        """The program over a slow life-log. dead: what does not answer any more after `die`."""
        program = self.prepare(settings=settings)
        before = self.desktop.environment
        self.desktop.environment = {
            **before, "LD_PRELOAD": BAD_DISK, "SLOW_DISK": self.life.folder, "SLOW_DISK_US": str(slow_us),
            "DEAD_DISK": self.life.folder if dead == "life" else os.path.join(program.home, dead),
            "DEAD_DISK_WHILE": self.dead_while,
            "ASAN_OPTIONS": "verify_asan_link_order=0:" + os.environ.get("ASAN_OPTIONS", "")}
        try:
            return program.start()
        finally:
            self.desktop.environment = before

    def die(self):
        with open(self.dead_while, "w", encoding="ascii"):
            pass

    def wait_held(self, thread):
        """Until this thread is in a call that does not return."""
        def is_held():
            with open(self.dead_while, encoding="ascii") as file:
                return thread in file.read().splitlines()

        wait_until(is_held, f"{thread} in a call to the dead disk")

    def close(self, program):
        """Seconds from the closing of the window, which goes at once, to the end of the program."""
        begun = time.monotonic()
        self.desktop.key("alt+F4")
        wait_until(lambda: not program.is_shown(), "the window has gone", seconds=1.5)
        end = wait_until(lambda: not program.is_running() or time.monotonic() > begun + LONGEST_WAIT, "its end")
        self.assertTrue(end)
        self.assertIn(program.process.returncode, (0, None))
        return time.monotonic() - begun

    def fill_card(self, files):
        """The day in November 2008 of each picture."""
        days = {f"p{number:03}.png": 1 + number % 28 for number in range(files)}
        for name, day in days.items():
            with open(os.path.join(self.card, name), "wb") as file:
                file.write(dated_png(f"2008:11:{day:02} 10:15:00"))
        return days

    def arrived(self):
        """The day folder of each picture of the life-log."""
        return {name: os.path.basename(folder) for folder, _, names in os.walk(self.life.folder)
                for name in names if name.endswith(".png")}

    def start_import(self, program):
        program.press_button("Import")
        wait_until(lambda: self.desktop.windows("^Import"), "the dialog")
        program.key("Return")

    # ---- what is written while the program ends

    def test_an_import_that_is_cut_off_puts_no_photo_into_a_wrong_day(self):
        days = self.fill_card(300)
        program = self.start("kalmora.ini", slow_us=500, ImportDirectory=self.card, RemoveImportFiles=1)
        self.start_import(program)
        aim = random.Random().randrange(1, 40)
        wait_until(lambda: len(self.arrived()) >= aim, f"{aim} files")
        self.die()
        seconds = self.close(program)
        arrived = self.arrived()
        self.assertEqual(arrived, {name: f"2008_11{days[name]:02}" for name in arrived})
        left = os.listdir(self.card) if os.path.exists(self.card) else []
        self.assertEqual(len(arrived) + len(left), len(days), "each is there once")
        self.assertLess(seconds, LONGEST_END)

    def test_an_update_that_is_cut_off_leaves_no_record_without_a_size(self):
        for number in range(150):
            self.life.add(2008, 11, 13, f"p{number:03}.png", dated_png("2008:11:13 10:15:00"))
        program = self.start("kalmora.ini", slow_us=500)
        program.key("F4")
        wait_until(lambda: "[IndexManager] Update (2008/11)" in program.log(), "the update")
        self.die()
        seconds = self.close(program)
        index = os.path.join(self.life.day(2008, 11, 13), "$calendar.cidx")
        if os.path.exists(index):
            with open(index, encoding="cp932") as file:
                self.assertNotIn("SIZE=-1,-1\n", file.read())
        self.assertLess(seconds, LONGEST_END)

    # ---- what does not come back

    def test_a_beat_that_does_not_come_back_holds_up_nothing(self):
        self.life.add_month(2008, 11)
        program = self.start("life", AutoNavigate=1, **{"TimingOfPopup(sec)": 1, "TimingOfAutoNavigate(num)": 1})
        program.wait_drawn()
        self.die()
        self.wait_held("timer")
        self.assertLess(self.close(program), LONGEST_END)
        self.assertEqual(program.process.returncode, 0)
        self.assertIn("TargetMonth", program.settings())

    def test_a_note_that_does_not_come_back_holds_up_nothing(self):
        self.fill_card(100)
        program = self.start("life", slow_us=500, ImportDirectory=self.card, InsertOriginalPathToExif=1)
        self.start_import(program)
        wait_until(self.arrived, "a file")
        self.die()
        self.wait_held("Import")
        self.assertLess(self.close(program), LONGEST_END)
        self.assertEqual(program.process.returncode, 0)
        self.assertEqual(program.settings()["InsertOriginalPathToExif"], "1")

    def test_a_view_that_does_not_come_back_holds_up_nothing(self):
        program = self.start("life", ViewType=4)
        program.wait_drawn()
        self.die()
        program.key("Right")
        self.wait_held("ObjectLoader")
        program.key("Right")  # waits for the one before
        self.assertLess(self.close(program), LONGEST_END)
        self.assertEqual(program.process.returncode, 0)
        self.assertIn("TargetMonth", program.settings())

    def test_a_paint_that_does_not_come_back_holds_up_nothing(self):
        self.life.add_month(2008, 11)
        program = self.start("life")
        program.wait_drawn()
        self.die()
        self.desktop.hand("windowsize", program.window, 800, 600)
        self.wait_held("Paint")
        self.assertLess(self.close(program), LONGEST_END)
        self.assertEqual(program.process.returncode, 0)

    def test_a_search_that_does_not_come_back_holds_up_nothing(self):
        self.life.add_month(2008, 11)
        program = self.start("life", ViewType=4)
        program.wait_drawn()
        program.press_button("Search")
        self.desktop.focus(wait_until(lambda: self.desktop.windows("^Search$"), "the dialog")[0])
        self.die()
        self.desktop.hand("type", "cat")
        program.key("Return")
        self.wait_held("ObjectLoader")
        self.desktop.hand("windowactivate", "--sync", program.window)
        self.assertLess(self.close(program), LONGEST_END)
        self.assertEqual(program.process.returncode, 0)

    def test_a_drop_that_does_not_come_back_holds_up_nothing_and_costs_nothing(self):
        self.fill_card(1)
        path = os.path.join(self.card, "p000.png")
        program = self.start("life")
        source = DragSource(self.desktop, self.card, "both", "moved", [path])
        self.addCleanup(source.end)
        left, top, width, height = program.cell(13, 5)
        self.die()
        source.drag_to(*program.to_screen(left + width // 2, top + height // 2))
        self.wait_held("Import")
        self.assertEqual(source.answers("finished"), [], "nothing is done")
        self.desktop.hand("windowactivate", "--sync", program.window)
        self.assertLess(self.close(program), LONGEST_END)
        self.assertTrue(os.path.exists(path))
        self.assertNotIn("1 XdndActionMove", source.answers("finished"))


if __name__ == "__main__":
    unittest.main(verbosity=2)

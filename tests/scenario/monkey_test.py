"""A monkey on mouse and keys, while the program moves on by its timer.

KALMORA_MONKEY_SECONDS (15) says for how long, KALMORA_MONKEY_SEED makes a run come again.
"""

import os
import random
import shutil
import time
import unittest

from desktop import Desktop, wait_until
from program import LifeLog, Program

SECONDS = float(os.environ.get("KALMORA_MONKEY_SECONDS", "15"))
SEED = int(os.environ.get("KALMORA_MONKEY_SEED", str(random.randrange(1 << 30))))
KEYS = ["Up", "Down", "Left", "Right", "Home", "End", "Pause", "Escape", "space", "Tab", "shift+Tab", "Return",
        "F1", "F2", "F3", "F4", "F5", "F6", "F7", "F8", "F9", "F10", "F12", "a", "m", "z", "5"]
MODIFIERS = ["", "", "", "ctrl+", "shift+", "ctrl+shift+", "ctrl+alt+"]


class Monkey(unittest.TestCase):
    def test_it_plays_and_the_program_stays(self):
        dice = random.Random(SEED)
        life = LifeLog()
        self.addCleanup(life.remove)
        for month in (10, 11, 12):
            life.add_month(2008, month, pictures_a_day=2)
        life.add(2009, 1, 1, "note.txt", "[Schedule]\n[2009/01/01 10:00]\nvisit\n".encode("cp932"))
        with Desktop() as desktop, Program(desktop, life, settings={
                "TimingOfPopup(sec)": 1, "AutoNavigate": 1, "TimingOfAutoNavigate(num)": 1,
                "TimingOfChangeImage(msec)": 1, "ShowButtonIndexing": 1}) as program:
            self.addCleanup(self.keep_what_is_left, program.home)
            program.start()
            end = time.monotonic() + SECONDS
            strokes = 0
            while time.monotonic() < end:
                desktop.hand(*self.play(dice, program))
                strokes += 1
                self.assertIn(program.process.poll(), (None, 0), f"seed {SEED}, after {strokes} strokes: "
                              f"{program.read('stderr')}\n{program.log()[-3000:]}")
                if not program.is_running():
                    program.start()
                elif strokes % 20 == 0:
                    self.call_back(desktop, program)
            desktop.hand("mouseup", 1, "mouseup", 3)
            self.assertEqual(program.end(), 0, f"seed {SEED}: {program.read('stderr')}")
            self.assertIn("ViewType", program.settings())

    @staticmethod
    def call_back(desktop, program):
        """Closes any open dialog or menu, so that the window has the focus again."""
        desktop.key("Escape", "Escape")
        wait_until(lambda: desktop.windows(r"^Kalmora \[", visible=False) or not program.is_running(), "the window")
        desktop.hand("windowactivate", program.window)

    def play(self, dice, program):
        words = []
        for _ in range(dice.randrange(3, 12)):
            x, y = dice.randrange(0, 1280), dice.randrange(0, 900)
            if dice.random() < 0.4:  # the buttons are where most happens
                x, y = dice.randrange(20, 980), dice.randrange(690, 740)
            words += dice.choice([
                ["key", dice.choice(MODIFIERS) + dice.choice(KEYS)],
                ["key", dice.choice(MODIFIERS) + dice.choice(KEYS)],
                ["mousemove", x, y, "click", dice.choice([1, 1, 1, 3, 4, 5])],
                ["mousemove", x, y, "click", "--repeat", 2, "--delay", 30, dice.choice([1, 3])],
                ["mousemove", x, y, "mousedown", 1, "mousemove", dice.randrange(1280), dice.randrange(900),
                 "mouseup", 1],
                ["windowsize", program.window, dice.randrange(1, 1400), dice.randrange(1, 1000)]
                if dice.random() < 0.1 else ["sleep", dice.choice(["0.01", "0.1", "0.4"])],
            ])
        return words

    @staticmethod
    def keep_what_is_left(folder):
        shutil.rmtree(folder, ignore_errors=True)


if __name__ == "__main__":
    unittest.main()

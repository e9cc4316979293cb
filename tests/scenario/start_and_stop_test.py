"""How the program comes and goes: the first start, a second one beside it, and every way to its end."""

import random
import signal
import time
import unittest

from desktop import Desktop, end_process, wait_until
from program import Program
from scenario import Scenario

LONGEST_END = 2.5  # seconds
QUESTION = "^Kalmora$"


class StartAndStop(Scenario):
    @classmethod
    def fill(cls, life):
        life.add_month(2008, 11, pictures_a_day=3, size=(600, 450))

    def question(self, program):
        """The window that asks; not the main one."""
        found = [w for w in self.desktop.windows_of_class("kalmora")
                 if w != program.window and self.desktop.title(w) == "Kalmora"]
        return found[0] if found else None

    def test_the_first_start_asks_once(self):
        program = self.program(settings=False)
        wait_until(lambda: self.question(program), "the question")
        self.desktop.key("Escape")  # No
        wait_until(lambda: not self.question(program), "its end")
        self.assertEqual(program.end(), 0)
        self.assertNotIn(1200, program.commands())
        program.start()
        program.key("F5")
        program.wait_command(1021)
        self.assertIsNone(self.question(program))

    def test_yes_imports(self):
        program = self.program(settings=False)
        asked = wait_until(lambda: self.question(program), "the question")
        self.desktop.focus(asked)
        self.desktop.key("alt+y")
        program.wait_command(1200)

    def test_the_end_of_the_session_ends_the_question_too(self):
        program = self.program(settings=False)
        wait_until(lambda: self.question(program), "the question")
        self.assertEqual(program.end(), 0)
        self.assertIn("ViewType", program.settings())

    def test_each_way_to_the_end_saves_settings_and_keys(self):
        ways = {
            "the end of the session": lambda program: program.process.send_signal(signal.SIGTERM),
            "a hang-up": lambda program: program.process.send_signal(signal.SIGHUP),
            "the window manager's key": lambda program: self.desktop.key("alt+F4"),
        }
        for name, end in ways.items():
            with self.subTest(way=name):
                program = self.program()
                program.key("Right")
                program.wait_title("Kalmora [2008/12]")
                end(program)
                self.assertEqual(program.wait_end(), 0)
                self.assertEqual(program.settings()["TargetMonth"], "12")
                self.assertIn("Reload\tF5", program.read("KeyConfig.dat"))
                self.assertIn("Hide Slide Show\tESCAPE", program.read("KeyConfig4SS.dat"))
                self.assertIn("Close\tESCAPE", program.read("KeyConfig4Editor.dat"))

    def test_a_second_start_beside_it_does_no_harm(self):
        first = self.program()
        second = Program(self.desktop, self.life, settings=False)
        own_home, second.home = second.home, first.home
        self.addCleanup(lambda: end_process(second.process))
        second.log_path += ".second"
        second.start(wait=False)
        wait_until(lambda: "started in" in second.log(), "the second start")
        self.desktop.hand("windowactivate", "--sync", first.window)
        first.key("Right")
        first.wait_title("Kalmora [2008/12]")
        self.assertEqual(second.end(), 0)
        self.assertEqual(first.settings()["TargetMonth"], "11")
        self.assertEqual(first.end(), 0)
        self.assertEqual(first.settings()["TargetMonth"], "12", "the last writer wins whole")
        second.home = own_home
        second.__exit__()

    def test_it_ends_at_any_moment_of_a_load(self):
        moments = random.Random(7)
        for _ in range(8):
            moment = moments.uniform(0, 0.6)
            # A machine with other things to do may be late with the best program; it is not so every time.
            self.assertTrue(any(self.seconds_to_end(moment) < LONGEST_END for _ in range(3)), f"{moment} s")

    def seconds_to_end(self, moment):
        with self.prepare() as program:
            program.start(wait=False)
            wait_until(lambda: self.desktop.windows(r"^Kalmora \["), "the window")
            time.sleep(moment)
            begun = time.monotonic()
            self.assertEqual(program.end(), 0)
            taken = time.monotonic() - begun
            self.assertIn("TargetMonth", program.settings())
            return taken

    def test_it_ends_when_its_display_goes_away(self):
        for settings in ({}, False):
            with Desktop() as desktop:
                program = Program(desktop, self.life, settings=settings)
                self.addCleanup(program.__exit__)
                program.start()
                if settings is not False:
                    program.key("Right")
                    program.wait_title("Kalmora [2008/12]")
                desktop.lose()
                self.assertEqual(program.wait_end(), 0)
                if settings is not False:
                    self.assertEqual(program.settings()["TargetMonth"], "12")
                else:
                    self.assertIn("TargetMonth", program.settings())

    def test_without_a_display_it_says_so(self):
        program = self.prepare()
        display = self.desktop.environment.pop("DISPLAY")
        try:
            program.start(wait=False)
        finally:
            self.desktop.environment["DISPLAY"] = display
        self.assertEqual(program.wait_end(), 1)
        self.assertIn("no display", program.read("stderr"))


if __name__ == "__main__":
    unittest.main()

"""Keys for the whole desktop: they arrive while another program has the focus, and are missed aloud."""

import unittest

from desktop import Desktop, wait_until
from scenario import Scenario


SHOW = {"KeyConfig.dat": "Show Window\tC+F1\n"}  # the one command whose key works everywhere


class HotKeys(Scenario):
    @classmethod
    def setUpClass(cls):
        pass

    def setUp(self):
        # Of each test: what one has registered must not reach the next.
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.life = self.new_life(self.addCleanup)

    def other_program(self):
        self.desktop.start(["xterm", "-title", "other", "-e", "cat"])
        window = wait_until(lambda: self.desktop.windows("^other$"), "the other program")[0]
        self.desktop.hand("windowactivate", "--sync", window)
        wait_until(lambda: self.desktop.output("xdotool", "getwindowfocus").strip() == window, "its focus")
        return window

    def test_they_arrive_while_another_program_has_the_focus(self):
        program = self.program(keys=SHOW)
        other = self.other_program()
        self.desktop.key("Right", "F5")  # no hot keys: they are the other program's
        self.desktop.key("ctrl+F1")
        program.wait_command(1001)
        self.desktop.hand("windowactivate", "--sync", other)
        self.desktop.key("ctrl+F1")
        program.wait_command(1001, times=2)
        self.assertNotIn(1011, program.commands())
        self.assertNotIn(1021, program.commands())

    def test_locks_do_not_matter(self):
        program = self.program(keys=SHOW)
        self.other_program()
        for times, lock in enumerate(("Num_Lock", "Caps_Lock"), 1):
            self.desktop.hand("key", lock)
            self.desktop.hand("key", "ctrl+F1")
            program.wait_command(1001, times=times)

    def test_a_key_that_is_held_down_fires_once(self):
        program = self.program(keys=SHOW)
        self.desktop.hand("keydown", "ctrl", "keydown", "F1", "sleep", "1.2", "keyup", "F1", "keyup", "ctrl")
        program.wait_command(1001)
        self.desktop.key("F5")
        program.wait_command(1021)
        self.assertEqual(program.commands().count(1001), 1)

    def test_show_window_calls_the_hidden_window(self):
        program = self.program(keys={"KeyConfig.dat": "Show Window\tC+A+K\n"})
        self.other_program()
        self.desktop.hand("windowminimize", program.window)
        wait_until(lambda: not program.is_shown(), "the window's end")
        self.desktop.key("ctrl+alt+k")
        wait_until(program.is_shown, "the window")
        wait_until(lambda: self.desktop.output("xdotool", "getwindowfocus").strip() == program.window, "its focus")

    def test_what_another_program_holds_is_reported(self):
        first = self.program(keys=SHOW)
        second = self.prepare(keys=SHOW)
        second.start(wait=False)
        wait_until(lambda: "started in" in second.log(), "the second start")
        self.assertIn("[HotKey] 1001: another program has it", second.log())
        self.assertIn("[HotKey] not registered: [Ctrl+F1]", second.log())
        self.assertNotIn("not registered", first.log())
        self.desktop.key("ctrl+F1")
        first.wait_command(1001)
        self.assertNotIn(1001, second.commands())

    def test_keys_that_would_do_nothing_are_left_to_other_programs(self):
        self.program()  # by its defaults Ctrl+F1 is a screenshot's
        other = self.prepare(keys=SHOW)
        other.start(wait=False)
        wait_until(lambda: "started in" in other.log(), "the second start")
        self.assertNotIn("not registered", other.log())
        self.desktop.key("ctrl+F1")
        other.wait_command(1001)

    def test_a_hot_key_is_free_again_when_the_program_has_ended(self):
        program = self.program(keys=SHOW)
        self.assertEqual(program.end(), 0)
        program.start()
        self.assertNotIn("not registered", program.log())

    def test_a_changed_keyboard_is_followed(self):
        program = self.program(keys={"KeyConfig.dat": "Show Window\tC+Y\n"})
        self.other_program()
        self.desktop.output("setxkbmap", "de")  # Y and Z change places
        self.desktop.key("ctrl+y")
        program.wait_command(1001)

    def test_an_unbound_key_with_alt_is_typed_without_it(self):
        program = self.program()
        before = len(program.commands())
        self.desktop.hand("key", "alt+F5")  # free; F5 is not
        program.wait_command(1021)
        self.assertEqual(program.commands()[before:], [1021])


if __name__ == "__main__":
    unittest.main()

"""Holds what `run` and `check` say and answer, without building anything: their use, and the phases they work in."""

import os
import re
import signal
import subprocess
import tempfile
import time
import unittest

PROJECT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
PHASES = os.path.join(PROJECT, "tools", "phases.sh")


def command(name, *arguments, cwd="/"):
    return subprocess.run([os.path.join(PROJECT, name), *arguments], cwd=cwd, capture_output=True, text=True,
                          check=False)


class WrongUse(unittest.TestCase):
    def test_help_is_told_and_is_no_failure(self):
        for name in ("run", "check", ".ci/run"):
            with self.subTest(name=name):
                result = command(name, "--help")
                self.assertEqual(result.returncode, 0)
                self.assertIn("./" + ("run" if name == "run" else "check"), result.stdout)
                self.assertNotIn("set -u", result.stdout)

    def test_what_is_not_understood_has_a_status_of_its_own(self):
        for name, arguments in (("run", ["--what"]), ("run", ["a", "b"]), ("check", ["fast"])):
            with self.subTest(name=name, arguments=arguments):
                self.assertEqual(command(name, *arguments).returncode, 2)

    def test_run_wants_a_folder_that_stands_seen_from_where_it_was_called(self):
        with tempfile.TemporaryDirectory() as here:
            result = command("run", "my-life", cwd=here)
        self.assertEqual(result.returncode, 2)
        self.assertEqual(result.stderr, f"run: {os.path.realpath(here)}/my-life is no folder\n")


class Phases(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.logs = os.path.join(folder.name, "logs")

    def script(self, text):
        return subprocess.run(["bash", "-uc", f"logs={self.logs}; . {PHASES}\n{text}"], stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, check=False)

    def test_a_phase_that_goes_well_is_one_line_with_its_seconds(self):
        result = self.script("phase Building 'the program' echo much to say")
        self.assertEqual(result.returncode, 0)
        self.assertRegex(result.stdout, r"^Building +the program \.\.\. \d+\.\d s *\n$")
        with open(os.path.join(self.logs, "building.log"), encoding="utf-8") as log:
            self.assertEqual(log.read(), "much to say\n")

    def test_a_phase_that_fails_shows_the_end_of_its_log_and_ends_everything(self):
        result = self.script("f() { seq 100; echo last words >&2; return 7; }; phase 'Unit tests' all f; echo unreached")
        self.assertEqual(result.returncode, 1)
        self.assertIn("FAILED", result.stdout)
        self.assertIn("\n100\nlast words\n", result.stdout)
        self.assertNotIn("\n50\n", result.stdout)
        self.assertIn("status 7", result.stdout)
        self.assertIn(os.path.join(self.logs, "unit-tests.log"), result.stdout)
        self.assertNotIn("unreached", result.stdout)

    def test_what_matters_of_a_failure_begins_at_its_mark(self):
        result = self.script("f() { echo noise; echo '---- the fault'; echo it broke; return 1; }; phase Tests all f")
        self.assertNotIn("noise", result.stdout)
        self.assertIn("\n---- the fault\nit broke\n", result.stdout)

    def test_times_are_kept_in_order_for_the_closing_lines(self):
        result = self.script("phase One 1 true; phase Two 2 true; printf '%s\\n' \"${phase_times[@]}\"")
        self.assertEqual(re.findall(r"^ +\d+\.\d s  (\w+)$", result.stdout, re.MULTILINE), ["One", "Two"])

    def test_a_phase_has_nobody_at_the_keyboard(self):
        self.assertEqual(self.script("phase Reading input bash -c '! read -r line'").returncode, 0)

    def test_what_a_phase_has_started_does_not_outlive_the_script(self):
        result = self.script("f() { sleep 600 >/dev/null & phase_children+=($!); echo $! >$logs/child; return 1; }\n"
                             "phase Starting it f")
        self.assertEqual(result.returncode, 1)
        with open(os.path.join(self.logs, "child"), encoding="utf-8") as file:
            child = int(file.read())
        # It has been asked to end; it may take a moment until it is gone.
        deadline = time.monotonic() + 10
        while os.path.exists(f"/proc/{child}") and self.state(child) != "Z":
            if time.monotonic() > deadline:
                os.kill(child, signal.SIGKILL)
                self.fail("still there")
            time.sleep(0.01)

    @staticmethod
    def state(process):
        try:
            with open(f"/proc/{process}/stat", encoding="utf-8") as file:
                return file.read().rpartition(") ")[2][0]
        except (FileNotFoundError, ProcessLookupError):
            return "Z"


if __name__ == "__main__":
    unittest.main()

"""Runs tools/install-packages with a made-up apt beside it: what it asks for, and how it speaks when that fails."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest

PROJECT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
TOOL = os.path.join(PROJECT, "tools", "install-packages")
PLAIN_COMMANDS = ["bash", "cat", "env", "mktemp", "rm", "sed", "tail", "tr"]

# It answers for the packages named in the file `there`, as the real one does: absent ones go to standard error.
DPKG_QUERY = """#!/bin/bash
for package in "${@:3}"; do
    grep -qx "$package" HERE/there && echo "installed $package" || echo "no $package" >&2
done
grep -qx half HERE/there && echo "config-files xvfb"
true
"""
# It notes how it was called and fails for as many calls as the file `failures` says.
APT_GET = """#!/bin/bash
echo "$@" >>HERE/calls
echo "front end $DEBIAN_FRONTEND"
left=$(cat HERE/failures)
[ "$left" -gt 0 ] || exit 0
echo $((left - 1)) >HERE/failures
echo "E: the mirror does not answer"
exit 100
"""


class InstallPackages(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.here = folder.name
        for command in [*PLAIN_COMMANDS, "grep"]:
            os.symlink(shutil.which(command), os.path.join(self.here, command))
        self.command("dpkg-query", DPKG_QUERY)
        self.command("apt-get", APT_GET)
        self.command("id", "#!/bin/bash\necho 0\n")
        self.note("there", "")
        self.note("calls", "")
        self.note("failures", "0\n")

    def note(self, name, text):
        with open(os.path.join(self.here, name), "w", encoding="utf-8") as file:
            file.write(text)

    def command(self, name, text):
        self.note(name, text.replace("HERE", self.here))
        os.chmod(os.path.join(self.here, name), 0o755)

    def run_tool(self, *arguments):
        environment = {"PATH": self.here, "TMPDIR": self.here}
        return subprocess.run([TOOL, *arguments], env=environment, capture_output=True, text=True, check=False)

    def calls(self):
        with open(os.path.join(self.here, "calls"), encoding="utf-8") as file:
            return [re.sub(r"(-q|-y|-o \S+) ", "", line.strip()) for line in file]

    def packages(self, group):
        return self.run_tool("--missing", group).stdout.split()

    def test_nothing_missing_asks_nobody_and_says_nothing(self):
        self.note("there", "\n".join(self.packages("--test")) + "\n")
        result = self.run_tool("--test")
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertEqual(self.calls(), [])

    def test_only_what_is_missing_is_installed_and_named_in_one_line(self):
        everything = self.packages("--build")
        self.note("there", "\n".join(everything[2:]) + "\n")
        result = self.run_tool("--build")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stdout, f"installing 2 packages: {everything[0]} {everything[1]}\n")
        self.assertEqual(self.calls(), ["update", f"install --no-install-recommends {everything[0]} {everything[1]}"])

    def test_a_package_of_two_groups_is_named_once(self):
        both = self.run_tool("--missing", "--build", "--run").stdout.split()
        self.assertEqual(len(both), len(set(both)))
        self.assertEqual(set(both), set(self.packages("--build")) | set(self.packages("--run")))

    def test_the_test_group_holds_the_other_groups(self):
        test = set(self.packages("--test"))
        for group in ("--build", "--run", "--headless"):
            self.assertLessEqual(set(self.packages(group)), test)

    def test_a_package_of_which_only_the_configuration_is_left_is_missing(self):
        self.note("there", "half\n")
        self.assertIn("xvfb", self.packages("--headless"))

    def test_missing_installs_nothing(self):
        self.assertNotEqual(self.packages("--run"), [])
        self.assertEqual(self.calls(), [])

    def test_a_mirror_that_stumbles_once_is_asked_again(self):
        for failures, expected in ((1, ["update", "update", "install"]), (2, None)):
            with self.subTest(failures=failures):
                self.note("calls", "")
                self.note("failures", f"{failures}\n")
                result = self.run_tool("--headless")
                if expected:
                    self.assertEqual(result.returncode, 0)
                    self.assertEqual([call.split()[0] for call in self.calls()], expected)
                else:
                    self.assertEqual(result.returncode, 1)

    def test_a_failure_shows_its_end_and_where_the_rest_is(self):
        self.note("failures", "9\n")
        result = self.run_tool("--headless")
        self.assertEqual(result.returncode, 1)
        self.assertIn("E: the mirror does not answer", result.stderr)
        log = re.search(r"all it said is in (\S+)", result.stderr).group(1)
        with open(log, encoding="utf-8") as file:
            self.assertIn("front end noninteractive", file.read())
        self.assertEqual(self.calls(), ["update", "update"])

    def test_success_leaves_no_log_behind(self):
        before = set(os.listdir(self.here))
        self.assertEqual(self.run_tool("--headless").returncode, 0)
        self.assertEqual(set(os.listdir(self.here)), before)

    def test_somebody_who_is_not_root_goes_through_sudo(self):
        self.command("id", "#!/bin/bash\necho 1000\n")
        self.command("sudo", '#!/bin/bash\necho "sudo" >>HERE/calls\nexec "$@"\n')
        self.assertEqual(self.run_tool("--headless").returncode, 0)
        self.assertEqual([call.split()[0] for call in self.calls()], ["sudo", "update", "sudo", "install"])

    def test_without_root_and_sudo_it_says_what_root_would_have_to_do(self):
        self.command("id", "#!/bin/bash\necho 1000\n")
        result = self.run_tool("--headless")
        self.assertEqual(result.returncode, 1)
        self.assertIn("As root: apt-get install xvfb", result.stderr)

    def test_without_apt_it_says_what_is_wanted(self):
        os.remove(os.path.join(self.here, "apt-get"))
        result = self.run_tool("--headless")
        self.assertEqual(result.returncode, 1)
        self.assertIn("xvfb", result.stderr)

    def test_wrong_use_has_a_status_of_its_own(self):
        for arguments in ([], ["--missing"], ["--all"], ["xvfb"]):
            with self.subTest(arguments=arguments):
                self.assertEqual(self.run_tool(*arguments).returncode, 2)
                self.assertEqual(self.calls(), [])

    def test_the_document_gives_a_reason_for_each_package_and_for_no_other(self):
        sections = {"--build": "Building", "--run": "Running", "--headless": "Without a screen", "--test": "Testing"}
        with open(os.path.join(PROJECT, "docs", "dependencies.md"), encoding="utf-8") as file:
            text = file.read()
        lower = set()
        for group, title in sections.items():
            with self.subTest(group=group):
                section = re.search(rf"^## {title}\n(.*?)(?=^## |\Z)", text, re.MULTILINE | re.DOTALL).group(1)
                listed = set(re.findall(r"^\| `([^`]+)` \| \S", section, re.MULTILINE))
                if group == "--test":
                    self.assertEqual(listed, set(self.packages(group)) - lower)
                else:
                    self.assertEqual(listed, set(self.packages(group)))
                lower |= listed


if __name__ == "__main__":
    unittest.main()

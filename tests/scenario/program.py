"""The program as its user meets it: a life-log made to order, a window, mouse and keys."""

import datetime
import os
import re
import shutil
import signal
import struct
import tempfile
import time
import zlib

from desktop import LONGEST_WAIT, end_process, wait_until

KALMORA = os.environ["KALMORA_PROGRAM"]
RES = os.path.join(os.path.dirname(KALMORA), "Res")

# The picture buttons that are shown as the program comes, from the right edge to the left, and their pictures.
BUTTONS = [("Help", "help"), ("Filter", "show_filter"), ("Import", "import"), ("Search", "search"),
           ("Slide show", "show_slide"), ("All", "all_on"), ("Pause", "pause_on"), ("Next 2", "last"),
           ("Next", "next"), ("Auto", "auto_on"), ("Prev", "prev"), ("Prev 2", "first")]
GAP = 5


def png(width, height, colour, texts=None):
    """A picture of one colour; texts: its descriptions."""

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    line = b"\0" + bytes(colour) * width
    said = b"".join(chunk(b"tEXt", key.encode() + b"\0" + text.encode()) for key, text in (texts or {}).items())
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)) + said +
            chunk(b"IDAT", zlib.compress(line * height, 1)) + chunk(b"IEND", b""))


def dated_png(taken):
    """Taken at such a moment, as "2008:11:13 10:15:00"."""
    return png(64, 48, (200, 120, 40), {"Creation Time": taken})


def png_size(path):
    with open(path, "rb") as file:
        return struct.unpack(">II", file.read(24)[16:])


def colour_of_day(day):
    return 40 + day * 6, 220 - day * 5, (day * 37) % 200 + 30


class LifeLog:
    """A data folder in a temporary place."""

    def __init__(self):
        self.folder = tempfile.mkdtemp(prefix="kalmora-life-")

    def day(self, year, month, day):
        path = os.path.join(self.folder, f"{year:04}", f"{year:04}{month:02}", f"{year:04}_{month:02}{day:02}")
        os.makedirs(path, exist_ok=True)
        return path

    def add(self, year, month, day, name, content):
        path = os.path.join(self.day(year, month, day), name)
        with open(path, "wb") as file:
            file.write(content)
        return path

    def add_month(self, year, month, pictures_a_day=1, size=(64, 48)):
        first = datetime.date(year, month, 1)
        day = first
        while day.month == month:
            for number in range(pictures_a_day):
                self.add(year, month, day.day, f"p{number}.png", png(*size, colour_of_day(day.day)))
            day += datetime.timedelta(days=1)
        return self

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


class Program:
    """One run after the other over the same home; `with Program(desktop, life) as program:` ends the last one."""

    SETTINGS = {"UseJapanese": 0, "ViewType": 2, "TargetYear": 2008, "TargetMonth": 11, "TargetDay": 13,
                "TimingOfPopup(sec)": 3, "WindowRect": "20,40,980,740", "ShowFolderPath": 0, "SoundMode": 0}

    def __init__(self, desktop, life, settings=None, keys=None):
        self.desktop = desktop
        self.life = life
        self.home = tempfile.mkdtemp(prefix="kalmora-home-")
        self.log_path = os.path.join(self.home, "the.log")
        self.process = None
        self.window = None
        self.starts = 0
        if settings is not False:
            self.write_settings({**self.SETTINGS, **(settings or {})})
        for name, content in (keys or {}).items():
            self.write(name, content)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process:
            end_process(self.process)
        shutil.rmtree(self.home, ignore_errors=True)

    # ---- its files

    def write(self, name, content):
        with open(os.path.join(self.home, name), "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode("cp932"))

    def read(self, name):
        with open(os.path.join(self.home, name), "rb") as file:
            return file.read().decode("cp932", "replace")

    def write_settings(self, settings):
        self.write("kalmora.ini", "".join(f"{key}={value}\n" for key, value in settings.items()))

    def settings(self):
        pairs = (line.split("=", 1) for line in self.read("kalmora.ini").splitlines() if "=" in line)
        return dict(pairs)

    def log(self):
        try:
            with open(self.log_path, encoding="utf-8", errors="replace") as file:
                return file.read()
        except FileNotFoundError:
            return ""

    def commands(self):
        """The numbers of all commands that have arrived."""
        return [int(number) for number in re.findall(r"\[Command\] (\d+)", self.log())]

    def wait_command(self, number, times=1):
        wait_until(lambda: self.commands().count(number) >= times, f"command {number}; there were "
                   f"{self.commands()}")

    # ---- starting and ending

    def start(self, wait=True, **options):
        self.starts += 1
        with open(os.path.join(self.home, "stderr"), "wb") as said:
            self.process = self.desktop.start(
                [KALMORA, "--home", self.home, "--data", self.life.folder, "--log", self.log_path],
                stderr=said, **options)
        if wait:
            self.wait_window()
        return self

    def wait_window(self):
        found = wait_until(lambda: self.process.poll() is not None or self.desktop.windows(r"^Kalmora \["),
                           "the main window")
        if found is True:
            raise AssertionError(f"the program ended with {self.process.returncode}: {self.read('stderr')}")
        self.window = found[0]
        starts = self.starts
        wait_until(lambda: self.log().count("started in") == starts, "the end of the start")
        self.wait_steady()

    def geometry(self):
        return self.desktop.geometry(self.window)

    def wait_steady(self):
        """The window is where it was a moment ago, and has the focus if a window manager gives it."""
        last = [None]

        def is_steady():
            now = self.geometry()
            same, last[0] = now == last[0], now
            time.sleep(0.1)
            return same and now

        return wait_until(is_steady, "a window that does not move")

    def end(self, how=signal.SIGTERM):
        """The exit status, None when it had to be killed."""
        return end_process(self.process, how)

    def wait_end(self):
        """The exit status of a program that ends without a signal."""
        return self.process.wait(LONGEST_WAIT)

    def is_running(self):
        return self.process.poll() is None

    # ---- looking

    def title(self):
        return self.desktop.title(self.window)

    def wait_title(self, text):
        wait_until(lambda: self.title() == text, f"the title {text!r} instead of {self.title()!r}")

    def is_shown(self):
        return self.window in self.desktop.windows(r"^Kalmora \[")

    def pixel(self, x, y):
        left, top, _, _ = self.geometry()
        return self.desktop.screen.pixel(left + x, top + y)

    def picture(self):
        return self.desktop.screen.area(*self.geometry())

    def wait_drawn(self):
        """Nothing on the window has changed for a moment."""
        last = [None]

        def is_still():
            now = self.picture()
            same, last[0] = now == last[0], now
            time.sleep(0.1)
            return same and now

        wait_until(is_still, "a picture that does not change")

    def wait_pixel(self, x, y, is_right, what):
        wait_until(lambda: is_right(self.pixel(x, y)), f"{what} at {x},{y}, where {self.pixel(x, y)} is")

    # ---- the hand; coordinates of the drawing area

    def to_screen(self, x, y):
        left, top, _, _ = self.geometry()
        return left + x, top + y

    def click(self, x, y, button=1):
        self.desktop.click(*self.to_screen(x, y), button)

    def double_click(self, x, y, button=1):
        self.desktop.double_click(*self.to_screen(x, y), button)

    def move(self, x, y):
        self.desktop.move(*self.to_screen(x, y))

    def key(self, *names):
        self.desktop.key(*names)

    def button(self, name):
        """The middle of a picture button."""
        _, _, right, height = self.geometry()
        for label, picture in BUTTONS:
            width, tall = png_size(os.path.join(RES, picture + ".png"))
            right -= width + GAP
            if label == name:
                return right + width // 2, height - GAP - tall // 2
        raise KeyError(name)

    def press_button(self, name):
        self.click(*self.button(name))

    def cell(self, day, first_column):
        """The rectangle (x, y, width, height) of a day in the month grid; first_column: of the first, Monday 0."""
        _, _, width, _ = self.geometry()
        cell_width = width // 7
        cell_height = cell_width * 3 // 4
        place = first_column + day - 1
        return place % 7 * cell_width, cell_width // 5 + place // 7 * cell_height, cell_width, cell_height

"""A desktop in memory: an X server, a window manager, a tray, and a hand on its mouse and keyboard.

Everything is waited for with a bound; nothing sleeps for a fixed time and hopes.
"""

import ctypes
import ctypes.util
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time

LONGEST_WAIT = float(os.environ.get("KALMORA_PATIENCE", "30"))  # seconds until something that must happen has failed


def wait_until(condition, what, seconds=None):
    """The first true answer of the condition, asked again and again."""
    end = time.monotonic() + (LONGEST_WAIT if seconds is None else seconds)
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"did not happen in time: {what}")
        time.sleep(0.02)


def end_process(process, how=signal.SIGTERM, seconds=LONGEST_WAIT):
    if process.poll() is None:
        process.send_signal(how)
    try:
        return process.wait(seconds)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()
        return None


class Desktop:
    """`with Desktop() as desktop:`; everything that was started on it ends with it."""

    def __init__(self, window_manager=True, tray=False, size="1280x900"):
        self.processes = []
        self.folder = tempfile.mkdtemp(prefix="kalmora-desktop-")
        read_end, write_end = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", size + "x24", "-nolisten", "tcp"],
            pass_fds=[write_end], stderr=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            self.name = ":" + answer.readline().strip()
        if self.name == ":":
            raise RuntimeError("Xvfb does not start")
        self.environment = dict(os.environ, DISPLAY=self.name, HOME=self.folder, XDG_RUNTIME_DIR=self.folder,
                                DBUS_SESSION_BUS_ADDRESS="disabled:", LC_ALL="C.UTF-8")
        self.environment.pop("QT_QPA_PLATFORM", None)
        self.environment.pop("WAYLAND_DISPLAY", None)
        self.screen = Screen(self.name)
        if window_manager:
            self.start(["openbox", "--sm-disable"])
            wait_until(lambda: "window id" in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                       "the window manager")
        if tray:
            self.start(["trayer", "--edge", "top", "--width", "20", "--height", "32", "--iconspacing", "0"])
            wait_until(lambda: self.output("xdotool", "search", "--class", "^trayer$"), "the tray")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        for process in reversed(self.processes):
            end_process(process)
        self.screen.close()
        end_process(self.server)
        shutil.rmtree(self.folder, ignore_errors=True)

    def lose(self):
        """The display goes away under everything that is on it."""
        self.screen.close()
        end_process(self.server, signal.SIGKILL)

    def start(self, command, **options):
        options.setdefault("stdout", subprocess.DEVNULL)
        options.setdefault("stderr", subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.environment, **options)
        self.processes.append(process)
        return process

    def output(self, *command):
        return subprocess.run(command, env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              check=False).stdout.decode("utf-8", "replace")

    # ---- the hand

    def hand(self, *words):
        """A chain of xdotool's commands."""
        subprocess.run(["xdotool", *map(str, words)], env=self.environment, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, check=False)

    def key(self, *names):
        self.hand("key", "--clearmodifiers", *names)

    def type(self, text):
        self.hand("type", "--clearmodifiers", text)

    def move(self, x, y):
        self.hand("mousemove", x, y)

    def click(self, x, y, button=1):
        self.hand("mousemove", x, y, "click", button)

    def double_click(self, x, y, button=1):
        self.hand("mousemove", x, y, "click", "--repeat", 2, "--delay", 60, button)

    # ---- what is on it

    def windows(self, pattern, visible=True):
        only = ["--onlyvisible"] if visible else []
        return self.output("xdotool", "search", *only, "--name", pattern).split()

    def windows_of_class(self, name):
        return self.output("xdotool", "search", "--onlyvisible", "--class", name).split()

    def title(self, window):
        return self.output("xdotool", "getwindowname", window).strip()

    def focus(self, window):
        self.hand("windowfocus", "--sync", window)

    def geometry(self, window):
        """(x, y, width, height) of its drawing area on the screen."""
        answer = self.output("xwininfo", "-id", window)
        numbers = [re.search(word + r":\s+(-?\d+)", answer) for word in
                   ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(number.group(1)) for number in numbers) if all(numbers) else None


class XImage(ctypes.Structure):
    _fields_ = [("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int),
                ("format", ctypes.c_int), ("data", ctypes.POINTER(ctypes.c_ubyte)), ("byte_order", ctypes.c_int),
                ("bitmap_unit", ctypes.c_int), ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int),
                ("depth", ctypes.c_int), ("bytes_per_line", ctypes.c_int)]


class Screen:
    """What can be seen: the pixels of the root window."""

    ALL_PLANES = 0xFFFFFFFF
    Z_PIXMAP = 2

    def __init__(self, name):
        x11 = self.x11 = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
        x11.XOpenDisplay.restype = ctypes.c_void_p
        x11.XOpenDisplay.argtypes = [ctypes.c_char_p]
        x11.XDefaultRootWindow.restype = ctypes.c_ulong
        x11.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
        x11.XGetImage.restype = ctypes.POINTER(XImage)
        x11.XGetImage.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_int, ctypes.c_uint,
                                  ctypes.c_uint, ctypes.c_ulong, ctypes.c_int]
        x11.XDestroyImage.argtypes = [ctypes.POINTER(XImage)]
        x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
        self.display = x11.XOpenDisplay(name.encode())
        self.root = x11.XDefaultRootWindow(self.display)

    def close(self):
        if self.display:
            self.x11.XCloseDisplay(self.display)
        self.display = None

    def area(self, x, y, width, height):
        """The rows of an area of the screen as bytes, four a pixel: blue, green, red, nothing."""
        image = self.x11.XGetImage(self.display, self.root, x, y, width, height, self.ALL_PLANES, self.Z_PIXMAP)
        if not image:
            return None
        content = image.contents
        data = ctypes.string_at(content.data, content.bytes_per_line * height)
        rows = [data[i * content.bytes_per_line:][:width * 4] for i in range(height)]
        self.x11.XDestroyImage(image)
        return rows

    def pixel(self, x, y):
        blue, green, red = self.area(x, y, 1, 1)[0][:3]
        return red, green, blue

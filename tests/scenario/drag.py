"""Another program from which files are dragged, and the answers it gets (drag_source.cpp)."""

import os

from desktop import end_process, wait_until

SOURCE = os.environ["KALMORA_DRAG_SOURCE"]


class DragSource:
    """offers: "copy", "move" or "both"; deletes: "never", when the answer is that they were "moved", or "always"."""

    def __init__(self, desktop, folder, offers, deletes, paths):
        self.desktop = desktop
        self.said = os.path.join(folder, "said")
        with open(self.said, "wb") as said:
            self.process = desktop.start([SOURCE, offers, deletes, *paths], stdout=said)
        window = wait_until(lambda: desktop.windows("^Drag source$"), "the other program")[0]
        self.geometry = wait_until(lambda: desktop.geometry(window), "its place")

    def end(self):
        end_process(self.process)

    def answers(self, kind):
        """The answers of a kind: "over", "result" or "finished"."""
        with open(self.said, encoding="ascii") as file:
            return [line.removeprefix(kind + " ") for line in file.read().splitlines() if line.startswith(kind)]

    def drag_to(self, x, y):
        """To a point of the screen, where it is dropped."""
        left, top, width, height = self.geometry
        from_x, from_y = left + width // 2, top + height // 2
        self.desktop.hand("mousemove", from_x, from_y, "mousedown", 1, "mousemove", from_x + 10, from_y + 10,
                          "mousemove", from_x - 20, from_y + 20)
        for step in range(4, -1, -1):
            self.desktop.hand("mousemove", x + 8 * step, y, "sleep", 0.02)
        wait_until(lambda: any(answer.startswith("1") for answer in self.answers("over")), "that it may be dropped")
        self.desktop.hand("mouseup", 1)

    def answer(self):
        """The last one, once both the drag and the other program's wait for the answer are over."""
        wait_until(lambda: self.answers("result"), "the end of the drag")
        return wait_until(lambda: self.answers("finished"), "the answer")[-1]

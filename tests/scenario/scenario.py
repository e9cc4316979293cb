"""What every scenario uses: a desktop, a life-log on it, and programs that end with their test."""

import unittest

from desktop import Desktop
from program import LifeLog, Program


class Scenario(unittest.TestCase):
    """One desktop and one life-log for all tests of a class.

    DESKTOP  options of the desktop
    fill     puts into the life-log what the tests want to find there
    """

    DESKTOP = {}

    @classmethod
    def fill(cls, life):
        life.add_month(2008, 11)

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(**cls.DESKTOP)
        cls.addClassCleanup(cls.desktop.close)
        cls.life = cls.new_life(cls.addClassCleanup)

    @classmethod
    def new_life(cls, cleanup):
        life = LifeLog()
        cleanup(life.remove)
        cls.fill(life)
        return life

    def prepare(self, **more):
        """A program that has yet to be started."""
        program = Program(self.desktop, self.life, **more)
        self.addCleanup(program.__exit__)
        return program

    def program(self, **more):
        return self.prepare(**more).start()


class ScenarioOfEachTest(Scenario):
    """A life-log for each test of the class."""

    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop(**cls.DESKTOP)
        cls.addClassCleanup(cls.desktop.close)

    def setUp(self):
        self.life = self.new_life(self.addCleanup)

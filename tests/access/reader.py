"""A program as a screen reader knows it: names, roles, states, and what is announced. No mouse, no coordinates."""
import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402
import pyatspi  # noqa: E402

PATIENCE = 120  # seconds, with the sanitizers on a busy machine


class Reader:
    def __init__(self, program):
        # No longer for a program that has just started either: a press answers once what it opened is closed.
        Atspi.set_timeout(800, 800)
        self.program = program
        self.heard = []
        self.window = None
        pyatspi.Registry.registerEventListener(self._hear, "object:state-changed:showing")

    def _hear(self, event):
        if event.source and event.detail1 and event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
            self.heard.append(event.source.name)

    def wait(self, what, look):
        """What `look` finds, as soon as it finds something."""
        late = []
        GLib.timeout_add_seconds(PATIENCE, late.append, True)
        tick = GLib.timeout_add(50, lambda: True)
        try:
            while not (found := look()):
                if late:
                    where, self.window = self.window, None
                    raise TimeoutError(f"{what} in {where}; heard {self.heard}; there is\n" + "\n".join(self.outline()))
                GLib.MainContext.default().iteration(True)
        finally:
            GLib.source_remove(tick)
        return found

    def enter(self, window):
        """From now on it looks in the windows whose names begin so alone."""
        self.window = window

    def all(self):
        """Every object of the window."""
        waiting = [each for each in pyatspi.Registry.getDesktop(0) if each and each.name == self.program]
        if self.window:
            waiting = [each for program in waiting for each in program if each and each.name.startswith(self.window)]
        while waiting:
            each = waiting.pop(0)
            yield each
            try:
                waiting.extend(child for child in each if child)
            except (GLib.Error, LookupError):
                pass  # It has gone meanwhile.

    def outline(self):
        return [f"{each.getRoleName()} {each.name!r}" for each in self.all() if is_(each, pyatspi.STATE_SHOWING)]

    def find(self, role, name, *states):
        def look():
            for each in self.all():
                try:
                    if each.getRoleName() == role and each.name == name and all(is_(each, state) for state in states):
                        return each
                except GLib.Error:
                    pass  # It has gone meanwhile.
            return None
        return self.wait(f'no {role} "{name}"', look)

    def press(self, role, name):
        """Does the first thing that can be done with it, as soon as it can be."""
        action = self.find(role, name, pyatspi.STATE_ENABLED).queryAction()
        try:
            action.doAction(0)
        except GLib.Error:
            pass  # What it opened holds the answer back.

    def type(self, name, text):
        self.find("text", name, pyatspi.STATE_SHOWING).queryEditableText().setTextContents(text)

    def hear(self, text):
        """Waits until that is announced, and forgets all of before."""
        self.wait(f'"{text}" was not said', lambda: any(text in each for each in self.heard))
        self.heard.clear()


def is_(each, state):
    return each.getState().contains(state)

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
            waiting = [each for each in children(waiting) if asked(lambda: each.name.startswith(self.window))]
        while waiting:
            yield waiting[0]
            waiting += children([waiting.pop(0)])

    def outline(self):
        return [f"{each.getRoleName()} {each.name!r}" for each in self.all() if is_(each, pyatspi.STATE_SHOWING)]

    def find(self, role, name, *states):
        def fits(each):
            return each.getRoleName() == role and each.name == name and all(is_(each, state) for state in states)
        return self.wait(f'no {role} "{name}"',
                         lambda: next((each for each in self.all() if asked(lambda: fits(each))), None))

    def press(self, role, name):
        """Does the first thing that can be done with it, as soon as it can be."""
        action = self.find(role, name, pyatspi.STATE_ENABLED).queryAction()
        # What it opened may hold the answer back.
        asked(lambda: action.doAction(0))

    def leave(self, name):
        """Closes the window by that button: until it has gone, what lies behind it cannot be pressed."""
        self.press("push button", name)
        self.wait(f"{self.window} stays", lambda: not list(self.all()))

    def type(self, name, text):
        self.find("text", name, pyatspi.STATE_SHOWING).queryEditableText().setTextContents(text)

    def hear(self, text):
        """Waits until that is announced, and forgets all of before."""
        self.wait(f'"{text}" was not said', lambda: any(text in each for each in self.heard))
        self.heard.clear()


def asked(question):
    """The answer; none of what has gone meanwhile, or lets wait for it."""
    try:
        return question()
    except (GLib.Error, LookupError):
        return None


def children(parents):
    return [child for each in parents for child in asked(lambda: [child for child in each if child]) or ()]


def is_(each, state):
    return each.getState().contains(state)

"""Chromium without a window, driven as a person would through its debugging protocol, on a pipe."""
import json
import shutil
import subprocess

KEYS = {"Enter": 13, "Escape": 27, "End": 35, "ArrowUp": 38, "ArrowRight": 39, "/": 191}


class Browser:
    """Keeps what it needs in `folder`."""

    def __init__(self, folder, size="1200,800"):
        # It speaks on 3 and 4. Root needs it without its sandbox.
        self.process = subprocess.Popen(
            ["sh", "-c", 'exec "$@" 3<&0 4>&1 </dev/null >/dev/null 2>&1', "sh", shutil.which("chromium"), "--headless",
             "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", f"--user-data-dir={folder}/profile",
             f"--window-size={size}", "--remote-debugging-pipe"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.session = {}
        self.sent = 0
        self.events = set()
        page = self.call("Target.createTarget", url="about:blank")["targetId"]
        self.session = {"sessionId": self.call("Target.attachToTarget", targetId=page, flatten=True)["sessionId"]}
        self.call("Page.enable")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait()

    def call(self, method, **parameters):
        """What the browser answers."""
        self.sent += 1
        message = {"id": self.sent, "method": method, "params": parameters, **self.session}
        self.process.stdin.write(json.dumps(message).encode() + b"\0")
        self.process.stdin.flush()
        while (answer := self._next()).get("id") != self.sent:
            self.events.add(answer.get("method"))
        if "error" in answer:
            raise RuntimeError(f"{method}: {answer['error']}")
        return answer["result"]

    def open(self, address):
        """Opens a page and waits until all of it is there."""
        self.events.clear()
        self.call("Page.navigate", url=address)
        while "Page.loadEventFired" not in self.events:
            self.events.add(self._next().get("method"))

    def run(self, script):
        """What a script of the page's gives."""
        found = self.call("Runtime.evaluate", expression=script, awaitPromise=True, returnByValue=True)
        if "exceptionDetails" in found:
            raise RuntimeError(f"{script}: {found['result'].get('description')}")
        return found["result"].get("value")

    def press(self, *keys):
        """Presses keys one after the other."""
        for key in keys:
            text = {"Enter": {"text": "\r"}, "/": {"text": "/"}}.get(key, {})
            for what in ("keyDown", "keyUp"):
                self.call("Input.dispatchKeyEvent", type=what, key=key, windowsVirtualKeyCode=KEYS[key],
                          **(text if what == "keyDown" else {}))

    def _next(self):
        message = bytearray()
        while (byte := self.process.stdout.read(1)) != b"\0":
            if not byte:
                raise RuntimeError("the browser has ended")
            message += byte
        return json.loads(message)

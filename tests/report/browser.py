"""A headless Chromium, driven through the pipe of its DevTools protocol."""

import base64
import json
import os
import shutil
import subprocess
import tempfile

NAMES = ("chromium-headless-shell", "chromium", "google-chrome")


class Browser:
    """One page at a time. What the page asks of the network and what it complains about is kept."""

    def __init__(self):
        program = next(filter(None, map(shutil.which, NAMES)), None)
        if program is None:
            raise SystemExit(f"no browser: none of {', '.join(NAMES)} is installed")
        self.folder = tempfile.TemporaryDirectory()
        to_browser, self.output = os.pipe()
        self.input, from_browser = os.pipe()

        def connect():  # the browser reads descriptor 3 and writes 4
            first, second = os.dup(to_browser), os.dup(from_browser)
            os.dup2(first, 3)
            os.dup2(second, 4)

        words = [program, "--headless", "--remote-debugging-pipe", "--disable-gpu", "--no-first-run",
                 "--hide-scrollbars", "--disable-dev-shm-usage", f"--user-data-dir={self.folder.name}"]
        if os.geteuid() == 0:
            words.append("--no-sandbox")  # which is not to be had as root
        self.process = subprocess.Popen(words, preexec_fn=connect, close_fds=False, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.number, self.rest, self.events = 0, b"", []
        target = self.ask("Target.createTarget", url="about:blank")["targetId"]
        self.session = self.ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Network", "Runtime", "Log"):
            self.ask(f"{domain}.enable")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self.output)
        try:
            self.process.wait(timeout=20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        os.close(self.input)
        self.folder.cleanup()

    def read(self):
        while b"\0" not in self.rest:
            piece = os.read(self.input, 1 << 16)
            if not piece:
                raise RuntimeError("the browser has ended")
            self.rest += piece
        message, _, self.rest = self.rest.partition(b"\0")
        return json.loads(message)

    def ask(self, method, **words):
        self.number += 1
        message = {"id": self.number, "method": method, "params": words}
        if hasattr(self, "session"):
            message["sessionId"] = self.session
        os.write(self.output, json.dumps(message).encode() + b"\0")
        while True:
            answer = self.read()
            if answer.get("id") == self.number:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']}")
                return answer["result"]
            self.events.append(answer)

    def open(self, path, width):
        """Loads a file into a window of so many pixels."""
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1, mobile=False)
        self.events.clear()
        self.ask("Page.navigate", url=path.resolve().as_uri())
        while not any(event.get("method") == "Page.loadEventFired" for event in self.events):
            self.events.append(self.read())

    def requests(self):
        return [event["params"]["request"]["url"] for event in self.events
                if event.get("method") == "Network.requestWillBeSent"]

    def complaints(self):
        kinds = ("Runtime.consoleAPICalled", "Runtime.exceptionThrown", "Log.entryAdded")
        return [event["params"] for event in self.events if event.get("method") in kinds]

    def value(self, expression):
        """What a JavaScript expression gives in the page, as JSON can say it."""
        result = self.ask("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise RuntimeError(result["exceptionDetails"])
        return result["result"].get("value")

    def screenshot(self, path):
        """The whole page as a .png file."""
        taken = self.ask("Page.captureScreenshot", format="png", captureBeyondViewport=True)
        path.write_bytes(base64.b64decode(taken["data"]))

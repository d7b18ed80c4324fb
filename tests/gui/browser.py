"""A real Chromium without a screen, driven over its DevTools pipe: JSON messages, each ended by a NUL byte."""

import base64
import fcntl
import itertools
import json
import os
import select
import subprocess
import time

PATIENCE = 30  # seconds

# The visible element that a user would mean by a text: the shortest one that holds it.
FIND = """(text => {
  const all = [...document.querySelectorAll('a, button, label, summary, input, textarea')];
  const found = all.filter(e => (e.textContent || '').includes(text) && e.getClientRects().length);
  found.sort((a, b) => a.textContent.length - b.textContent.length);
  let e = found[0];
  if (!e) return null;
  e = e.querySelector('input, textarea') || e;
  e.scrollIntoView({block: 'center'});
  const box = e.getClientRects()[0];  // a link over two lines has two
  return [box.x + box.width / 2, box.y + box.height / 2];
})(%s)"""


class Browser:
    def __init__(self, profile):
        to_browser, self.write = os.pipe()
        self.read, from_browser = os.pipe()
        ends = [fcntl.fcntl(end, fcntl.F_DUPFD, 20) for end in (to_browser, from_browser)]
        words = ["chromium", "--headless=new", "--remote-debugging-pipe", "--no-first-run", "--disable-gpu",
                 "--disable-dev-shm-usage", "--disable-background-networking", "--disable-component-update",
                 "--lang=zh-TW", "--hide-scrollbars", f"--user-data-dir={profile}"]
        if os.geteuid() == 0:  # in a container of the tests; Chromium refuses its sandbox there
            words.append("--no-sandbox")
        self.process = subprocess.Popen(
            words, pass_fds=(3, 4), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            preexec_fn=lambda: (os.dup2(ends[0], 3), os.dup2(ends[1], 4)))
        for end in (to_browser, from_browser, *ends):
            os.close(end)
        self.numbers = itertools.count(1)
        self.events = []
        self.rest = b""
        self.page = None
        target = self.ask("Target.createTarget", url="about:blank")["targetId"]
        self.page = self.ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        self.ask("Page.enable")
        self.resize(1280, 800)

    def close(self):
        self.process.terminate()
        self.process.wait(PATIENCE)

    def receive(self, end):
        while b"\0" not in self.rest:
            if not select.select([self.read], [], [], max(0, end - time.monotonic()))[0]:
                raise TimeoutError("the browser does not answer")
            piece = os.read(self.read, 1 << 16)
            if not piece:
                raise EOFError("the browser has ended")
            self.rest += piece
        message, self.rest = self.rest.split(b"\0", 1)
        return json.loads(message)

    def ask(self, method, **parameters):
        message = {"id": next(self.numbers), "method": method, "params": parameters}
        if self.page:
            message["sessionId"] = self.page
        os.write(self.write, json.dumps(message).encode() + b"\0")
        end = time.monotonic() + PATIENCE
        while True:
            answer = self.receive(end)
            if answer.get("id") != message["id"]:
                self.events.append(answer.get("method"))
            elif "error" in answer:
                raise RuntimeError(f"{method}: {answer['error']['message']}")
            else:
                return answer["result"]

    def wait_for_load(self):
        end = time.monotonic() + PATIENCE
        while "Page.loadEventFired" not in self.events:
            self.events.append(self.receive(end).get("method"))
        self.events.clear()

    def evaluate(self, expression):
        return self.ask("Runtime.evaluate", expression=expression, returnByValue=True)["result"].get("value")

    def resize(self, width, height):
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                 mobile=False)

    def open(self, address):
        self.events.clear()
        self.ask("Page.navigate", url=address)
        self.wait_for_load()

    def click(self, text):
        """Clicks what shows the text, or the field that the text labels."""
        point = self.evaluate(FIND % json.dumps(text))
        if not point:
            raise AssertionError(f"nothing to click says {text!r} on:\n{self.text()}")
        for kind in ("mousePressed", "mouseReleased"):
            self.ask("Input.dispatchMouseEvent", type=kind, x=point[0], y=point[1], button="left", clickCount=1)

    def follow(self, text):
        """Clicks and waits for the page that this opens."""
        self.events.clear()
        self.click(text)
        self.wait_for_load()

    def type(self, label, text):
        self.click(label)
        self.ask("Input.insertText", text=text)

    def choose_file(self, path):
        field = self.ask("Runtime.evaluate", expression="document.querySelector('input[type=file]')")
        self.ask("DOM.setFileInputFiles", files=[path], objectId=field["result"]["objectId"])

    def text(self):
        return self.evaluate("document.body.innerText")

    def must_say(self, *texts):
        shown = self.text()
        for text in texts:
            if text not in shown:
                raise AssertionError(f"{text!r} is missing on:\n{shown}")

    def picture(self, file):
        size = self.ask("Page.getLayoutMetrics")["cssContentSize"]
        shot = self.ask("Page.captureScreenshot", captureBeyondViewport=True,
                        clip={"x": 0, "y": 0, "width": size["width"], "height": size["height"], "scale": 1})
        with open(file, "wb") as out:
            out.write(base64.b64decode(shot["data"]))

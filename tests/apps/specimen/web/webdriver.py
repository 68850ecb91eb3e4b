"""A client of ChromeDriver that needs nothing but Python: a headless browser, commands over HTTP.

    with Browser(profile_folder) as browser:
        browser.open("file:///tmp/page.html")
        title = browser.run("return document.title")
"""

import base64
import json
import re
import subprocess
import urllib.error
import urllib.request

FLAGS = [
    "--headless",
    "--no-sandbox",
    "--disable-gpu",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
]


class Browser:
    def __init__(self, profile):
        self._flags = FLAGS + [f"--user-data-dir={profile}"]

    def __enter__(self):
        self._driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        try:
            self._address = f"http://127.0.0.1:{self._read_port()}"
            self._session = self._start_session()
        except BaseException:
            self._stop_driver()
            raise
        return self

    def __exit__(self, *ignored):
        try:
            self._send("DELETE", self._session)
        finally:
            self._stop_driver()

    def open(self, address):
        self._post("/url", {"url": address})

    def run(self, script, *arguments):
        """The value that the body of a function returns, a promise's when it is fulfilled."""
        return self._post("/execute/sync", {"script": script, "args": list(arguments)})

    def type(self, selector, keys):
        """Types into an element as a user does."""
        element = self._post("/element", {"using": "css selector", "value": selector})
        self._post(f"/element/{next(iter(element.values()))}/value", {"text": keys})

    def press(self, *keys):
        """Presses keys one after the other, wherever the focus is."""
        actions = [{"type": kind, "value": key} for key in keys for kind in ("keyDown", "keyUp")]
        self._post("/actions", {"actions": [{"type": "key", "id": "keyboard", "actions": actions}]})

    def devtools(self, command, parameters):
        return self._post("/goog/cdp/execute", {"cmd": command, "params": parameters})

    def take_log(self, kind):
        """What a log ("browser" or "performance") has gathered since it was last taken."""
        return self._post("/se/log", {"type": kind})

    def save_screenshot(self, path, is_whole_page=False):
        options = {"captureBeyondViewport": is_whole_page}
        if is_whole_page:
            size = self.devtools("Page.getLayoutMetrics", {})["cssContentSize"]
            options["clip"] = {"x": 0, "y": 0, "width": size["width"], "height": size["height"], "scale": 1}
        picture = self.devtools("Page.captureScreenshot", options)
        path.write_bytes(base64.b64decode(picture["data"]))

    def _read_port(self):
        for line in self._driver.stdout:
            match = re.search(r"started successfully on port (\d+)", line)
            if match:
                return match[1]
        raise RuntimeError("chromedriver did not start")

    def _start_session(self):
        wishes = {
            "browserName": "chrome",
            "goog:chromeOptions": {"args": self._flags, "binary": "/usr/bin/chromium"},
            "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"},
        }
        answer = self._send("POST", "/session", {"capabilities": {"alwaysMatch": wishes}})
        return "/session/" + answer["sessionId"]

    def _stop_driver(self):
        self._driver.terminate()
        self._driver.wait(timeout=20)

    def _post(self, path, content):
        return self._send("POST", self._session + path, content)

    def _send(self, method, path, content=None):
        body = None if content is None else json.dumps(content).encode()
        request = urllib.request.Request(self._address + path, body, {"Content-Type": "application/json"},
                                         method=method)
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))  # never through a proxy
        try:
            with opener.open(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

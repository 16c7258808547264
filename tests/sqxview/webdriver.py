"""Controls a headless Chromium through the WebDriver protocol of chromedriver (W3C, 2018)."""

import base64
import json
import os
import re
import subprocess
import time
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # the key of an element reference


class Browser:
    """A browser, which ends with its `with` block."""

    def __init__(self, width=1280, height=900):
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True,
                                       start_new_session=True)
        try:
            self.base = self._driver_address()
            arguments = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--hide-scrollbars",
                         f"--window-size={width},{height}"]
            if os.geteuid() == 0:
                arguments.append("--no-sandbox")  # Chromium needs it to run as root
            options = {"args": arguments}
            session = self._call("POST", "/session", {
                "capabilities": {"alwaysMatch": {"browserName": "chrome", "goog:chromeOptions": options}}})
            self.base += "/session/" + session["sessionId"]
        except BaseException:
            self._kill()
            raise

    def _driver_address(self):
        for line in self.driver.stdout:
            found = re.search(r"started successfully on port (\d+)", line)
            if found:
                return "http://127.0.0.1:" + found.group(1)
        raise RuntimeError("chromedriver did not start")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self._call("DELETE", "")
        finally:
            self._kill()

    def _kill(self):
        self.driver.terminate()
        self.driver.wait(10)
        self.driver.stdout.close()

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, {"Content-Type": "application/json"}, method=method)
        try:
            with urllib.request.urlopen(request, timeout=60) as response:
                return json.load(response)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)["value"]["message"]) from None

    def open(self, address):
        self._call("POST", "/url", {"url": address})

    def run(self, script, *arguments):
        """Runs `script`, the body of a function that may use `await`, in the page. Returns its result."""
        return self._call("POST", "/execute/sync", {"script": script, "args": list(arguments)})

    def find(self, selector):
        return self._call("POST", "/element", {"using": "css selector", "value": selector})[ELEMENT]

    def click(self, selector):
        self._call("POST", f"/element/{self.find(selector)}/click", {})

    def type(self, selector, text):
        self._call("POST", f"/element/{self.find(selector)}/value", {"text": text})

    def command(self, name, parameters):
        """Sends a command of the Chrome DevTools Protocol and returns its result."""
        return self._call("POST", "/goog/cdp/execute", {"cmd": name, "params": parameters})

    def screenshot(self, path):
        with open(path, "wb") as file:
            file.write(base64.b64decode(self._call("GET", "/screenshot")))

    def wait(self, what, script, *arguments, seconds=20):
        """Runs the function body until its result is true, and returns the result. Raises AssertionError
        if it is not true within `seconds`."""
        end = time.monotonic() + seconds
        while True:
            result = self.run(script, *arguments)
            if result:
                return result
            if time.monotonic() > end:
                raise AssertionError(f"Not within {seconds} s: {what}")
            time.sleep(0.02)

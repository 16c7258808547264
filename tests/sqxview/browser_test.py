"""Tests the page of sqxview in a headless browser.

usage: SLC_TEST_BROWSER=1 browser_test.py PROGRAM_DIRECTORY
Status 77: skipped, because the test was not requested or there is no browser; the output says why.
"""

import contextlib
import http.server
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import unittest

from webdriver import Browser

SKIPPED = 77
GOOD = """surface flat(float Kd = 0.5; color tint = color(1, 0.5, 0); string mode = "plain";
             point middle = 0; float weights[2] = {1, 2}; varying float across = s;
             output float amount = 0)
{
    amount = Kd * weights[0];
    Oi = Os;
    Ci = Oi * amount * tint * diffuse(normalize(N));
}
"""
BAD = GOOD.replace("amount * tint", "amount * tinted")

# The start of scripts: a function that returns the pixels of the picture, scaled to 32 by 32, as a text.
PIXELS = """const pixels = () => {
    const picture = document.getElementById("picture");
    const canvas = document.createElement("canvas");
    canvas.width = canvas.height = 32;
    const context = canvas.getContext("2d");
    context.drawImage(picture, 0, 0, 32, 32);
    return [...context.getImageData(0, 0, 32, 32).data].join(",");
};
"""

# A script that returns the visible elements whose text has too little contrast (WCAG 2.1, 1.4.3).
DIM_TEXTS = """
const channel = (v) => (v /= 255) <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4;
const numbers = (color) => color.match(/[0-9.]+/g).map(Number);
const luminance = ([r, g, b]) => 0.2126 * channel(r) + 0.7152 * channel(g) + 0.0722 * channel(b);
const ground = (element) => {
    for (let e = element; e; e = e.parentElement) {
        const color = numbers(getComputedStyle(e).backgroundColor);
        if (color[3] !== 0) return color;
    }
    return [255, 255, 255];
};
const contrast = (a, b) => (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
const dim = [];
for (const element of document.body.querySelectorAll("*")) {
    const hasText = [...element.childNodes].some((n) => n.nodeType === 3 && n.textContent.trim());
    if (!(hasText || element.matches("input, select")) || !element.checkVisibility() || element.disabled) continue;
    const ratio = contrast(luminance(numbers(getComputedStyle(element).color)), luminance(ground(element)));
    if (ratio < 4.5) dim.push(`${element.tagName} ${element.textContent.slice(0, 30)}: ${ratio.toFixed(2)}`);
}
return dim;
"""


class PageTest(unittest.TestCase):
    programs = None

    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        folder = stack.enter_context(tempfile.TemporaryDirectory())
        self.source = pathlib.Path(folder, "flat.sl")
        self.source.write_text(GOOD)
        command = [self.programs / "sqxview", "--size", "64x64", "--time-limit", "2", "flat.sl"]
        self.view = subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE, text=True)
        stack.callback(self.end_view)
        self.address = re.search(r"http://\S+/", self.view.stdout.readline()).group()
        self.browser = stack.enter_context(Browser())
        self.browser.open(self.address)
        self.wait_for_picture()

    def end_view(self):
        self.view.terminate()
        self.assertEqual(self.view.wait(20), 0)
        self.view.stdout.close()

    def wait_for_picture(self, before=""):
        """Waits for a complete picture that differs from `before`, and returns its pixels."""
        return self.browser.wait("another picture", PIXELS + """
            const isWhole = document.getElementById("status").textContent.startsWith("Whole");
            return isWhole && document.getElementById("picture").complete && pixels() !== arguments[0] && pixels();
            """, before)

    def wait_for_text(self, selector, text):
        self.browser.wait(f"{text} in {selector}", """
            return [...document.querySelectorAll(arguments[0])].some((e) => e.textContent.includes(arguments[1]));
            """, selector, text)

    def value(self, label):
        return self.browser.run("return document.querySelector(`input[aria-label='${arguments[0]}']`).value", label)

    def test_values_change_the_picture(self):
        first = self.wait_for_picture()
        self.browser.type("input[aria-label='Kd, slider']", "\ue012" * 20)  # the left arrow key
        darker = self.wait_for_picture(first)
        self.assertLess(float(self.value("Kd")), 0.5)
        self.wait_for_text("#command", "--param Kd=0.")

        self.browser.run("""
            const field = document.querySelector("input[aria-label='tint']");
            field.value = "#00ff00";
            field.dispatchEvent(new Event("input"));""")
        green = self.wait_for_picture(darker)
        self.assertEqual([self.value(f"tint, {part}") for part in ("red", "green", "blue")], ["0", "1", "0"])
        self.wait_for_text("#command", "tint=0,1,0")

        self.browser.run("document.querySelector(\"input[aria-label='weights[0]']\").select()")
        self.browser.type("input[aria-label='weights[0]']", "3")
        self.wait_for_picture(green)
        self.wait_for_text("#command", "weights=3,2")

        self.browser.click(".reset")
        self.browser.wait("the first picture again", PIXELS + "return pixels() === arguments[0];", first)
        self.assertEqual(self.value("Kd"), "0.5")

    def test_settings_change_the_picture(self):
        before = self.wait_for_picture()
        self.browser.run("""
            const shape = document.querySelector("select[aria-label='Shape']");
            shape.value = "torus";
            shape.dispatchEvent(new Event("change"));""")
        before = self.wait_for_picture(before)
        self.browser.click("#add-light")
        before = self.wait_for_picture(before)
        self.browser.type("input[aria-label='Light 1, intensity, slider']", "\ue012" * 20)
        self.wait_for_picture(before)
        self.wait_for_text("#command", "--torus")
        self.wait_for_text("#command", "point:from=-2.5,3,-4:intensity=0.")

    def test_unfit_values_are_reported(self):
        self.browser.run("document.querySelector(\"input[aria-label='Samples']\").select()")
        self.browser.type("input[aria-label='Samples']", "99")
        self.wait_for_text("#refusal", "The number of samples must be from 1 to 16, but is '99'")
        self.browser.run("""
            const field = document.querySelector("input[aria-label='mode']");
            field.value = "x".repeat(50000);
            field.dispatchEvent(new Event("input"));""")
        self.wait_for_text("#refusal", "The value is too long")

    def test_nothing_is_cut_off_on_a_narrow_screen(self):
        for width in (400, 1280):
            self.browser.command("Emulation.setDeviceMetricsOverride",
                                 {"width": width, "height": 900, "deviceScaleFactor": 1, "mobile": False})
            self.assertEqual(self.browser.run("""
                return [...document.querySelectorAll("#values *")].filter((e) =>
                    e.getBoundingClientRect().right > innerWidth).map((e) => e.outerHTML)"""), [])

    def test_faults_stay_beside_the_last_picture(self):
        good = self.wait_for_picture()
        self.source.write_text(BAD)
        self.wait_for_text(".report.is-fault pre", "flat.sl:7: ERROR")
        self.wait_for_text(".excerpt .marked", "> 7      Ci = Oi * amount * tinted * diffuse(normalize(N));")
        self.assertEqual(self.browser.run(PIXELS + "return pixels()"), good)
        opacity = "return getComputedStyle(document.getElementById('picture')).opacity"
        self.assertLess(float(self.browser.run(opacity)), 0.5)
        self.assertEqual(self.value("Kd"), "0.5")

        self.source.write_text(GOOD.replace("amount * tint", "amount * (1 - tint)"))
        self.wait_for_picture(good)
        self.assertEqual(float(self.browser.run(opacity)), 1)
        self.assertEqual(self.browser.run("return document.querySelectorAll('.report').length"), 0)

    def test_a_shader_without_end_is_ended(self):
        self.source.write_text("surface flat() { float x = 0; while (x < 1) x *= 1; Ci = x; }")
        self.wait_for_text(".report.is-fault pre", "not whole after 2 s")

    def test_code_and_listing(self):
        self.browser.type("#tab-values", "\ue014")  # the right arrow key
        self.wait_for_text("#code-text", "BEGIN_PARALLEL")
        counts = self.browser.run("return [...document.querySelectorAll('#counts tr')].map((r) => r.textContent)")
        self.assertEqual([row[:3] for row in counts], ["-O0", "-O1", "-O2", "-O3"])
        before = self.browser.run("return document.getElementById('code-text').textContent")
        self.browser.run("""
            const level = document.getElementById("code-level");
            level.value = "0";
            level.dispatchEvent(new Event("change"));""")
        self.browser.wait("the code of another level",
                          "return document.getElementById('code-text').textContent !== arguments[0]", before)
        self.browser.click("#tab-listing")
        self.wait_for_text("#listing pre", "surface flat")

    def test_the_command_line_is_copied(self):
        self.browser.command("Browser.grantPermissions", {"permissions": ["clipboardReadWrite", "clipboardSanitizedWrite"]})
        self.browser.click("#copy")
        self.wait_for_text("#status", "copied")
        self.assertEqual(self.browser.run("return navigator.clipboard.readText()"), "sqxshade --size 64x64 flat.sl")

    def test_everything_has_a_name_and_stands_out(self):
        self.browser.click("#add-light")
        self.browser.wait("the light", "return document.querySelector('#lights fieldset')")
        for tab in ("values", "code", "listing"):
            self.browser.click("#tab-" + tab)
            roles = {"button", "slider", "spinbutton", "textbox", "combobox", "tab", "link", "ColorWell", "image", "group"}
            nodes = self.browser.command("Accessibility.getFullAXTree", {})["nodes"]
            controls = [n for n in nodes if n.get("role", {}).get("value") in roles]
            self.assertGreater(len(controls), 5)
            nameless = [n for n in controls if not n.get("name", {}).get("value")]
            self.assertEqual(nameless, [])
            for scheme in ("light", "dark"):
                self.browser.command("Emulation.setEmulatedMedia",
                                     {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
                self.assertEqual(self.browser.run(DIM_TEXTS), [], f"{tab}, {scheme}")
        self.browser.click("#tab-values")
        self.browser.type("#tab-values", "\ue004")  # the tab key
        self.assertEqual(self.browser.run("""
            const focused = document.activeElement;
            return focused.matches(":focus-visible") && getComputedStyle(focused).outlineStyle"""), "solid")

    def test_other_sites_are_refused(self):
        """A form that a page of another site sends changes nothing."""
        send = """
            const form = new URLSearchParams([["param.0.Kd", "0.125"]]);
            try {
                await fetch(arguments[0] + "change", {method: "POST", mode: "no-cors", body: form});
            } catch {
                // The response cannot be read, but the request was sent.
            }
            try {
                return (await fetch(arguments[0] + "state")).status;
            } catch {
                return "nothing to read";
            }"""
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), EmptyPage)
        threading.Thread(target=server.serve_forever, daemon=True).start()
        self.browser.open(f"http://127.0.0.1:{server.server_port}/")
        self.assertEqual(self.browser.run(send, self.address), "nothing to read")
        server.shutdown()
        server.server_close()
        self.browser.open(self.address)
        self.wait_for_picture()
        self.assertEqual(self.value("Kd"), "0.5")
        self.assertEqual(self.browser.run(send, self.address), 200)
        self.wait_for_text("#command", "Kd=0.125")


class EmptyPage(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.end_headers()

    def log_message(self, *_):
        pass


def reason_to_skip():
    if os.environ.get("SLC_TEST_BROWSER") != "1":
        return "SLC_TEST_BROWSER=1 asks for the tests in a browser"
    for program in ("chromium", "chromedriver"):
        if not shutil.which(program):
            return f"There is no {program} here"
    return None


if __name__ == "__main__":
    if reason := reason_to_skip():
        print("Skipped:", reason)
        sys.exit(SKIPPED)
    PageTest.programs = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)

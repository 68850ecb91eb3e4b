#!/usr/bin/env python3
"""Opens specimen pages in a headless browser, as a user does: from a file, without a network.

    specimen_page_test.py FONTENGINE SCREENSHOT_FOLDER
"""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from webdriver import Browser

SCHEMES = ("light", "dark")
PHONE = (360, 740)
DESKTOP = (1100, 900)
ENTER = "\ue007"
ARROW_RIGHT = "\ue014"

tool = ""
screenshots = pathlib.Path()

COUNT_BROKEN_IMAGES = """
return [...document.images].filter((image) => !image.complete || image.naturalWidth === 0).length"""

COUNT_BROKEN_SHEETS = """
const sheets = JSON.parse(document.getElementById("glyph-data").textContent).sheets;
return Promise.all(sheets.map((sheet) => {
  const image = new Image();
  image.src = sheet;
  return image.decode().then(() => 0, () => 1);
})).then((failures) => failures.reduce((sum, failure) => sum + failure, 0))"""

# Samples of scripts that are shown smaller than they were drawn, or that do not fit their box.
COUNT_BAD_SAMPLES = """
const isWhole = (image) => image.getBoundingClientRect().width === image.naturalWidth / 2
  && image.parentNode.scrollWidth <= image.parentNode.clientWidth;
return [...document.querySelectorAll(".script img")].filter((image) => !isWhole(image)).length"""

# The mean grey of an element's picture, 0 to 255; 255 means that nothing is drawn.
MEASURE_GLYPH = """
const glyph = document.querySelector(arguments[0]);
const style = getComputedStyle(glyph);
const image = new Image();
image.src = style.backgroundImage.slice(5, -2);
return image.decode().then(() => {
  const [x, y] = style.backgroundPosition.split(" ").map(parseFloat);
  const scale = image.naturalWidth / parseFloat(style.backgroundSize);
  const side = glyph.offsetWidth * scale;
  const canvas = new OffscreenCanvas(side, side).getContext("2d");
  canvas.drawImage(image, x * scale, y * scale);
  const bytes = canvas.getImageData(0, 0, side, side).data;
  return bytes.reduce((sum, byte) => sum + byte, 0) / bytes.length;
})"""


def make_page(font, folder):
    subprocess.run([tool, "specimen", font, "-o", folder], check=True)
    return (pathlib.Path(folder) / "index.html").as_uri()


class SpecimenPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="fontengine-specimen-")
        cls.addClassCleanup(shutil.rmtree, cls.folder, ignore_errors=True)
        cls.page = make_page("DejaVu Serif", cls.folder)
        cls.browser = cls.enterClassContext(Browser(cls.folder + "/profile"))

    def setUp(self):
        self.show(DESKTOP, "light")

    def show(self, size, scheme, page=None):
        width, height = size
        self.browser.devtools("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 1, "mobile": size == PHONE})
        self.browser.devtools("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})
        self.browser.open(page or self.page)

    def get_results(self):
        return self.browser.run(
            "return [...document.querySelectorAll('#results li')].map((item) => Number(item.dataset.code))")

    def find(self, query):
        self.browser.run("document.getElementById('query').value = ''")
        self.browser.type("#query", query)
        return self.get_results()

    def test_loads_every_picture_and_nothing_else(self):
        self.browser.take_log("performance")
        self.browser.take_log("browser")
        self.browser.open(self.page)
        self.assertGreater(self.browser.run("return document.images.length"), 50)
        self.assertEqual(self.browser.run(COUNT_BROKEN_IMAGES), 0)
        self.assertEqual(self.browser.run(COUNT_BROKEN_SHEETS), 0)
        self.assertEqual(self.browser.take_log("browser"), [])
        messages = [json.loads(entry["message"])["message"] for entry in self.browser.take_log("performance")]
        addresses = [message["params"]["request"]["url"] for message in messages
                     if message["method"] == "Network.requestWillBeSent"]
        self.assertIn(self.page, addresses)
        self.assertEqual([address[:80] for address in addresses
                          if not address.startswith(("file:", "data:"))], [])

    def test_stays_within_the_window_in_both_schemes(self):
        backgrounds = set()
        for size, name in ((PHONE, "phone"), (DESKTOP, "desktop")):
            for scheme in SCHEMES:
                with self.subTest(size=name, scheme=scheme):
                    self.show(size, scheme)
                    self.browser.save_screenshot(screenshots / f"{name}-{scheme}.png", is_whole_page=True)
                    width = self.browser.run("return document.documentElement.scrollWidth")
                    self.assertLessEqual(width, size[0])
                    backgrounds.add(
                        (scheme, self.browser.run("return getComputedStyle(document.body).backgroundColor")))
        self.assertEqual(len(backgrounds), 2)
        self.assertEqual(len({color for _, color in backgrounds}), 2)

    def test_shows_samples_of_scripts_as_large_as_they_are_drawn(self):
        for size in ((320, 740), PHONE, DESKTOP):
            with self.subTest(size=size):
                self.show(size, "light")
                self.assertGreater(self.browser.run(
                    "return document.querySelectorAll('.script img').length"), 20)
                self.assertEqual(self.browser.run(COUNT_BAD_SAMPLES), 0)

    def test_finds_a_character_by_itself_its_code_and_its_number(self):
        for query in ("é", "U+00E9", "u+e9", "0xE9", "233", "&#233;"):
            with self.subTest(query=query):
                self.assertEqual(self.find(query), [0xE9])
                self.assertLess(self.browser.run(MEASURE_GLYPH, "#results .glyph"), 250)
        self.assertEqual(self.find("Añ"), [0x41, 0xF1])

    def test_says_that_a_character_is_missing(self):
        self.assertEqual(self.find("中"), [])
        self.assertEqual(self.browser.run("return document.getElementById('status').textContent"),
                         "This font has no 中")

    def test_is_used_by_the_keyboard_alone(self):
        self.browser.press("/")
        self.browser.press("U", "+", "4", "2", "F", ENTER)
        self.assertEqual(self.browser.run("return document.activeElement.textContent"), "Show in table")
        self.browser.press(ENTER)
        self.assertEqual(self.browser.run("return document.activeElement.dataset.code"), str(0x42F))
        self.browser.press(ARROW_RIGHT)
        self.assertEqual(self.browser.run("return document.activeElement.dataset.code"), str(0x430))
        self.assertEqual(self.browser.run(
            "return getComputedStyle(document.activeElement).outlineStyle"), "solid")

    def test_names_everything_for_those_who_do_not_see_it(self):
        self.assertEqual(self.browser.run(
            "return [...document.images].filter((image) => !image.alt).length"), 0)
        self.assertEqual(self.browser.run("return document.querySelectorAll('h1').length"), 1)
        self.assertEqual(self.browser.run("""
return [...document.querySelectorAll("button, [role=region], [role=group]")]
  .filter((element) => !element.hidden)
  .filter((element) => !element.textContent.trim() && !element.getAttribute("aria-label")).length"""), 0)
        self.assertEqual(self.browser.run("return document.querySelector('#query').labels.length"), 1)

    def test_lists_every_character_of_the_font(self):
        listing = subprocess.run([tool, "info", "DejaVu Serif"], check=True, capture_output=True, text=True)
        line = next(line for line in listing.stdout.splitlines() if line.startswith("mapped characters:"))
        shown = self.browser.run("""
for (const block of document.querySelectorAll(".block")) block.open = true;
return new Promise((resolve) => setTimeout(() => {
  for (let more; (more = document.querySelector(".block .action:not([hidden])")) !== null;) more.click();
  resolve(document.querySelectorAll(".cell").length);
}, 100))""")
        self.assertEqual(shown, int(line.split()[2]))


def main(arguments):
    global tool, screenshots
    tool = arguments[0]
    screenshots = pathlib.Path(arguments[1])
    screenshots.mkdir(parents=True, exist_ok=True)
    unittest.main(argv=["specimen_page_test.py", *arguments[2:]])


main(sys.argv[1:])

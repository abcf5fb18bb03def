#!/usr/bin/env python3
"""Opens the page of `play --report` in Chromium: check_page.py WITH-SIMULATOR PLAY [unittest's options]."""
import base64
import json
import os
import struct
import subprocess
import sys
import tempfile
import time
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

PLAY = sys.argv[1:3]
PHONE, DESK = 390, 1280


def length_bytes(number):
    """A number as MIDI files have their delta times."""
    digits = [number & 127]
    while number > 127:
        number >>= 7
        digits.append(128 | number & 127)
    return bytes(reversed(digits))


def midi_file(events):
    """events: (pulse, bytes), 960 pulses a second."""
    track, now = b"", 0
    for pulse, message in sorted(events, key=lambda event: event[0]):
        track += length_bytes(pulse - now) + message
        now = pulse
    track += b"\0\xff\x2f\0"
    return b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480) + b"MTrk" + struct.pack(">I", len(track)) + track


def note(part, pitch, start, length):
    return [(start, bytes([0x90 | part, pitch, 100])), (start + length, bytes([0x80 | part, pitch, 0]))]


def crowded_song():
    """Sixty notes on part 1. After a second 101 note-ons in one block on part 4, of which the plug-in's queue
    drops a hundred; their note-offs come one by one. On part 10 the note-ons come one by one, and after six
    seconds 101 note-offs in one block."""
    events = []
    for i in range(60):
        events += note(0, 60 + i % 12, i * 120 + 40, 60)
    for pitch in range(101):
        events += note(3, pitch, 960, 960 + 20 * pitch)
        events += note(9, pitch, 3000 + 20 * pitch, 2760 - 20 * pitch)
    return midi_file(events)


def many_notes():
    """Thirty thousand in ten minutes, on all parts."""
    events = []
    for i in range(30000):
        events += note(i % 16, 30 + i * 7 % 60, i * 19, 60 + i * 13 % 420)
    return midi_file(events)


def colour_of(words):
    """Red, green and blue of "#rrggbb" or "rgb(...)"."""
    if words.startswith("#"):
        return tuple(int(words[i:i + 2], 16) for i in (1, 3, 5))
    return tuple(int(float(part)) for part in words[words.index("(") + 1:-1].split(",")[:3])


def luminance(colour):
    parts = [part / 255 for part in colour]
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(first, second):
    light, dark = sorted((luminance(first), luminance(second)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


class Page(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        options = webdriver.ChromeOptions()
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        cls.browser = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
        cls.folder = tempfile.TemporaryDirectory()

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.folder.cleanup()

    def setUp(self):
        self.show(DESK)

    def file(self, name, content):
        path = os.path.join(self.folder.name, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as stream:
            stream.write(content)
        return path

    def command(self, name, value):
        return self.browser.execute_cdp_cmd(name, value)

    def show(self, width, scheme="light"):
        self.command("Emulation.setDeviceMetricsOverride",
                     {"width": width, "height": 900, "deviceScaleFactor": 1, "mobile": width == PHONE})
        self.command("Emulation.setEmulatedMedia",
                     {"features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def script(self, text, *arguments):
        return self.browser.execute_script(text, *arguments)

    def text(self, selector):
        return self.script("return document.querySelector(arguments[0]).textContent", selector)

    def wait_for_pictures(self):
        """Two frames: the page draws in the next one."""
        self.browser.execute_async_script(
            "const done = arguments[0]; requestAnimationFrame(() => requestAnimationFrame(done))")

    def play(self, song, *options):
        """Plays and opens the page. The report in JSON is of the same run."""
        self.page = os.path.join(self.folder.name, "page.html")
        done = subprocess.run([*PLAY, song, "--report", self.page, "--json", *options], check=True,
                              capture_output=True)
        self.browser.get_log("browser")  # of the page before
        self.browser.get("file://" + self.page)
        self.wait_for_pictures()
        self.assertEqual(self.browser.get_log("browser"), [])
        return json.loads(done.stdout)

    def crowd(self, *options):
        return self.play(self.file("crowd.mid", crowded_song()), *options)

    def rows(self, place):
        return self.script(
            "return [...document.querySelectorAll(arguments[0] + ' tbody tr')]"
            ".map((row) => [...row.cells].map((cell) => cell.textContent))", place)

    def pixels_of(self, canvas, colour):
        """The x of every pixel of a canvas that has a colour of the style."""
        return self.script("""
            const canvas = document.getElementById(arguments[0]);
            const { data, width } = canvas.getContext("2d").getImageData(0, 0, canvas.width, canvas.height);
            const hex = getComputedStyle(document.documentElement).getPropertyValue(arguments[1]).trim();
            const wanted = [1, 3, 5].map((at) => parseInt(hex.slice(at, at + 2), 16));
            const found = [];
            for (let i = 0; i < data.length; i += 4)
              if (data[i + 3] === 255 && wanted.every((value, k) => data[i + k] === value))
                found.push((i / 4) % width);
            return found;""", canvas, colour)

    def x_of(self, seconds):
        """The x of a time in the pictures of the song."""
        return self.script("const { canvas, figure } = pictures.all[0];"
                           "return new Plot(canvas.getContext('2d'), figure.clientWidth, 100, {})"
                           ".x(arguments[0])", seconds)

    def test_shows_the_numbers_of_the_json_report(self):
        report = self.crowd()
        notes, process = report["notes"], report["process"]
        total = lambda counts: sum(counts["noteOns"]) + sum(counts["noteOffs"])
        self.assertEqual(total(notes["sent"]), 524)
        self.assertEqual(self.text("#figure-sent"), "524")
        self.assertEqual(self.text("#figure-left"), str(total(notes["midiOut"])))
        self.assertEqual(self.text("#figure-lost"), str(notes["lost"]))
        self.assertEqual(self.text("#figure-queue"), str(report["queue"]["longest"]))
        # Once an event of each of the three parts falls into one block; of 101 at once one is left.
        self.assertEqual(report["queue"]["longest"], 3)
        self.assertEqual(self.script("return Math.max(...readData().spans.map((span) => span.mostSent))"), 101)
        for part, row in zip((0, 3, 9), self.rows("#counts"), strict=True):
            pair = lambda counts, part=part: f"{counts['noteOns'][part]} / {counts['noteOffs'][part]}"
            self.assertEqual(row[:4], [str(part + 1), pair(notes["sent"]), pair(notes["editor"]),
                                       pair(notes["midiOut"])])
        self.assertEqual([row[4] for row in self.rows("#counts")], ["0 / 0", "100 / 0", "0 / 100"])
        blocks = sum(int(row[2].replace(",", "")) for row in self.rows("#times details"))
        self.assertEqual(blocks, process["blocks"])
        units = {"s": 1, "ms": 1e-3, "\u00b5s": 1e-6, "ns": 1e-9}
        names = ("medianSeconds", "within99PercentSeconds", "within999PermilleSeconds", "longestSeconds")
        for name, row in zip(names, self.rows("#times > .scroll"), strict=True):
            number, unit = row[1].split()
            self.assertAlmostEqual(float(number) * units[unit] / process[name], 1, delta=0.006, msg=name)

    def test_marks_each_lost_event_where_it_was_lost_and_no_other(self):
        report = self.crowd()
        # The hundred lower notes; of the highest one nothing is lost.
        self.assertEqual([report["notes"][name] for name in ("lostNoteOns", "lostNoteOffs", "lost")],
                         [100, 100, 200])
        self.assertEqual(self.text("#verdict"), "100 note-ons and 100 note-offs lost.")
        marks = [self.script("return document.getElementById(arguments[0]).dataset.marks", f"part-{part}")
                 for part in (1, 4, 10)]
        self.assertEqual(marks, ["0", "100", "100"])
        self.assertEqual(self.pixels_of("part-1", "--lost"), [])
        # Crosses reach to the left of where the notes begin; hollow bars do not.
        begin = self.x_of(1)
        marked = self.pixels_of("part-4", "--lost")
        self.assertLess(min(marked), begin - 2)
        self.assertGreater(min(marked), begin - 8)
        # Triangles begin where the notes end; nothing else has their colour.
        self.assertGreaterEqual(min(self.pixels_of("part-10", "--lost")), self.x_of(6) - 1)
        self.assertIn("100 note-ons lost", self.script("return document.getElementById('part-4').ariaLabel"))
        # Twenty stand in the list, the others below it.
        self.assertEqual([len(self.rows("#lost > .scroll")), len(self.rows("#lost"))], [20, 200])
        self.assertEqual(self.rows("#lost")[0], ["0:01.000", "4", "C-2", "note-on lost"])

    def test_says_when_nothing_was_lost(self):
        self.play(self.file("small.mid", midi_file(note(0, 60, 0, 480))))
        self.assertEqual(self.text("#verdict"), "Every note that was sent came back.")
        self.assertTrue(self.script("return document.getElementById('lost-section').hidden"))

    def test_draws_a_lane_for_each_automated_parameter(self):
        report = self.crowd("--automate", "Pan 1", "--automate", "Volume 1")
        titles = self.script("return [...document.querySelectorAll('#curves h3')]"
                             ".map((title) => title.textContent)")
        self.assertEqual(titles, ["Automation of \u201cPan 1\u201d", "Automation of \u201cVolume 1\u201d"])
        points = report["automation"][0]["points"]
        self.assertIn(f"{points:,} values sent", self.text("#curves figcaption"))
        highest = self.script("return Math.max(...readData().curves[0].points.map((point) => point.value))")
        self.assertGreater(highest, 0.99)

    def test_stays_sound_with_hostile_names(self):
        name = "\"'><img src=x onerror=throw>&lt; @DATA@ \u97f3\u697d \u0645\u0648 " + "long" * 30 + ".mid"
        song = self.file(name, midi_file(note(0, 60, 0, 480)))
        out = os.path.join(self.folder.name, "a<", "script><b>.mid")
        os.makedirs(os.path.dirname(out))
        self.play(song, "--midi-out", out)
        self.assertEqual(self.text("h1"), name)
        self.assertIn(out, self.text("#run"))
        self.assertEqual(self.script("return document.querySelectorAll('img, b').length"), 0)
        self.assertEqual(self.script("return document.scripts.length"), 2)
        self.show(PHONE)
        self.assertLessEqual(self.script("return document.documentElement.scrollWidth"), PHONE)
        opening = "<!--<script>.mid"  # a comment and a script
        self.play(self.file(opening, midi_file(note(0, 60, 0, 480))))
        self.assertEqual(self.text("h1"), opening)

    def test_fits_a_phone(self):
        self.show(PHONE)
        self.crowd("--automate", "Pan 1")
        self.assertLessEqual(self.script("return document.documentElement.scrollWidth"), PHONE)

    def test_needs_nothing_from_elsewhere(self):
        self.crowd()
        self.assertEqual(self.script("return performance.getEntriesByType('resource').map((one) => one.name)"
                                     ".filter((name) => !name.startsWith('data:'))"), [])
        with open(self.page, encoding="utf-8") as page:
            self.assertNotRegex(page.read(), r"https?://|@import|<link[^>]*href=\"[^d]")

    def test_has_enough_contrast_in_both_schemes(self):
        for scheme in ("light", "dark"):
            self.show(DESK, scheme)
            self.crowd()
            colours = self.script("const style = getComputedStyle(document.documentElement);"
                                  "const colour = (name) => style.getPropertyValue(name).trim();"
                                  "return { ...readColours(), page: colour('--page'), good: colour('--good') }")
            for name in ("text", "quiet", "lost", "good", "limit"):
                for ground in ("card", "page"):
                    found = contrast(colour_of(colours[name]), colour_of(colours[ground]))
                    self.assertGreaterEqual(found, 4.5, f"{scheme}: {name} on {ground}")
            for name in ("back", "lost", "extra", "time"):  # what is drawn
                self.assertGreaterEqual(contrast(colour_of(colours[name]), colour_of(colours["card"])), 3, name)
            self.assertEqual(colours["page"] > "#8", scheme == "light")

    def test_says_every_picture_in_words(self):
        self.crowd("--automate", "Pan 1")
        labels = self.script("return [...document.querySelectorAll('canvas')]"
                             ".map((one) => [one.getAttribute('role'), one.ariaLabel])")
        self.assertEqual(len(labels), 8)  # in and out, three parts, a lane, process, queue, distribution
        for role, label in labels:
            self.assertEqual(role, "img")
            self.assertGreater(len(label), 20)

    def test_shows_the_chosen_part_of_the_song(self):
        self.crowd()
        whole = self.text("#shown")
        self.script("document.getElementById('closer').click()")
        self.wait_for_pictures()
        self.assertNotEqual(self.text("#shown"), whole)
        # The middle of eight seconds: the lost note-ons after one second are out of sight.
        self.assertEqual([x for x in self.pixels_of("part-4", "--lost") if x < 60], [])
        self.script("document.getElementById('whole').click()")
        self.assertEqual(self.text("#shown"), whole)

    def test_prints_in_the_light_scheme(self):
        self.show(DESK, "dark")
        self.crowd()
        self.script("window.printed = []; addEventListener('beforeprint', () =>"
                    "printed.push(readColours().card, document.querySelector('canvas').width))")
        pdf = base64.b64decode(self.command("Page.printToPDF", {})["data"])
        self.assertTrue(pdf.startswith(b"%PDF"))
        card, width = self.script("return window.printed")
        self.assertEqual(card, "#ffffff")
        self.assertEqual(width, 3 * 682)
        self.assertEqual(self.script("return document.documentElement.className"), "")

    def test_stays_small_with_thirty_thousand_notes(self):
        begin = time.monotonic()
        song = self.file("many.mid", many_notes())
        report = self.play(song, "--automate", "Pan 1")
        self.assertEqual(sum(report["notes"]["sent"]["noteOns"]), 30000)
        size = os.path.getsize(self.page)
        self.assertLess(size, 2_000_000)
        opening = self.script("const { loadEventEnd, startTime } = performance.getEntriesByType('navigation')[0];"
                              "const begin = performance.now(); pictures.drawAll();"
                              "return [loadEventEnd - startTime, performance.now() - begin]")
        print(f"30,000 notes: {size:,} bytes, loaded after {opening[0]:.0f} ms, drawn in {opening[1]:.0f} ms "
              f"({time.monotonic() - begin:.1f} s with playing)", file=sys.stderr)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])

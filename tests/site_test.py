"""The site in a browser, served and from the disk, on a desktop and on a phone, in light and in dark.

usage: site_test.py TREE [TEST...]

`./dev site` has made the site. Screenshots go to build/site/screenshots.
"""

import csv
import functools
import http.server
import pathlib
import re
import sys
import threading
import time
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

TREE = pathlib.Path(sys.argv.pop(1)).resolve()
SITE = TREE / "build/site/html"
SCREENSHOTS = TREE / "build/site/screenshots"
DATA = TREE / "docs/figures"
GROUP = "reference/zvxgDFTFwd_CToC_N_32fc.html"
KERNEL = "zvxgDFTFwd_CToC_12_32fc"
PAGES = ("index.html", "guide.html", "figures.html", GROUP, "reference/complex.html", "reference/many.html",
         "reference/cpp.html", "reference/python.html", "examples/spectrogram.cpp.html", f"kernels/{KERNEL}.html", f"search.html?q={KERNEL}")


class Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


def setUpModule():
    global server, browser, served
    SCREENSHOTS.mkdir(exist_ok=True)
    server = http.server.ThreadingHTTPServer(("localhost", 0), functools.partial(Quiet, directory=SITE))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    served = f"http://localhost:{server.server_port}/"
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in ("headless=new", "no-sandbox", "hide-scrollbars"):  # no sandbox for root
        options.add_argument("--" + argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    browser = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
    browser.implicitly_wait(10)


def tearDownModule():
    browser.quit()
    server.shutdown()


def screen(width, height, scheme):
    browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
        "width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 600})
    browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
        "features": [{"name": "prefers-color-scheme", "value": scheme}]})


def find(selector):
    return browser.find_element(By.CSS_SELECTOR, selector)


def count(selector):
    return len(browser.find_elements(By.CSS_SELECTOR, selector))


def curves():
    return [path.get_attribute("d") for path in browser.find_elements(By.CSS_SELECTOR, "#chart .curve")]


def fetched():
    """Bytes and addresses of the page and of all that it asked for."""
    return browser.execute_script("""
        const all = [...performance.getEntriesByType('navigation'), ...performance.getEntriesByType('resource')];
        return [all.reduce((sum, entry) => sum + entry.decodedBodySize, 0), all.map((entry) => entry.name)];""")


def measured(file, **wanted):
    with open(DATA / file, encoding="utf-8") as lines:
        return [row for row in csv.DictReader(line for line in lines if not line.startswith("#"))
                if all(row[name] == value for name, value in wanted.items())]


class Browser(unittest.TestCase):
    def setUp(self):
        screen(1280, 900, "light")
        browser.get("about:blank")  # the same page with another fragment would not be loaded again

    def tearDown(self):
        self.assertEqual(browser.get_log("browser"), [])


class Pages(Browser):
    def test_pages_fit_the_screen_and_show_what_is_declared(self):
        for kind, width, height, scheme in ("desktop", 1280, 900, "light"), ("phone", 390, 844, "dark"):
            screen(width, height, scheme)
            for page in PAGES:
                with self.subTest(page=page, kind=kind):
                    browser.get(served + page)
                    self.assertEqual(browser.execute_script("return document.documentElement.scrollWidth"), width)
                    hidden = ("return [...document.querySelectorAll('dl.function > dt')]"
                              ".filter((one) => !one.offsetHeight).map((one) => one.id)")
                    self.assertEqual(browser.execute_script(hidden), [])
                    name = page.split("?")[0].replace("/", "-").removesuffix(".html")
                    browser.save_screenshot(str(SCREENSHOTS / f"{name}-{kind}.png"))

    def test_nothing_is_large_or_from_another_host(self):
        for page, limit in ("index.html", 300_000), ("figures.html", 1_000_000):
            with self.subTest(page=page):
                browser.get(served + page)
                size, addresses = fetched()
                print(f"{page}: {size} bytes in {len(addresses)} files")
                self.assertLess(size, limit)
                self.assertEqual([one for one in addresses if not one.startswith(served)], [])

    def test_search_finds_a_kernel_from_the_disk(self):
        browser.get(f"{SITE.as_uri()}/search.html?q={KERNEL}")
        link = find("#search-results li a")
        self.assertIn(f"{GROUP}#{KERNEL}", link.get_attribute("href"))
        link.click()
        self.assertEqual(browser.execute_script("return document.querySelector(':target').id"), KERNEL)


class Figures(Browser):
    def open(self, choice="", base=None):
        browser.get(f"{base or served}figures.html#{choice}")
        find("#chart .curve")

    def choose(self, name, value):
        find(f'input[name="{name}"][value="{value}"]').click()

    def test_choosing_changes_the_curves(self):
        for base in served, SITE.as_uri() + "/":
            self.open(base=base)
            before = curves()
            self.choose("family", "hartley")
            after = curves()
            self.assertEqual((len(before), len(after), len({*before, *after})), (2, 2, 4))
            self.choose("bits", "64")
            self.assertEqual(count("#chart .curve"), 1)
            self.choose("show", "time")
            self.assertEqual(count("#chart .dashed"), 1)
            self.choose("show", "error")
            self.assertEqual((count("#chart .curve"), count("#chart .dashed")), (1, 0))
            self.assertEqual(browser.get_log("browser"), [])

    def test_the_table_has_what_was_measured(self):
        single = [(path.name, "single", "", "ratio") for path in DATA.glob("speed*.csv")]
        for file, batch, of, ratio in *single, ("many.csv", "rows-L1", "many-rows-L1-", "second_ratio"):
            with self.subTest(file=file):
                variant = re.search(r"^# library: .*variant (\w+)", (DATA / file).read_text(encoding="utf-8"), re.M)[1]
                self.open("show=ratio&family=real&direction=forward&layout=pack&bits=64&peer=FFTW"
                          f"&variant={variant}&batch={batch}")
                rows = measured(file, family=f"{of}real-forward-pack", bits="64")
                shown = [row.text.split()
                         for row in browser.find_elements(By.CSS_SELECTOR, "#chart-table tbody tr")]
                self.assertEqual([n for n, _ in shown], [row["n"] for row in rows])
                for (_, value), row in zip(shown, rows):
                    self.assertAlmostEqual(float(value) / float(row[ratio]), 1, delta=0.006)
                browser.get("about:blank")

    def test_what_was_not_measured_is_said(self):
        self.open("show=ratio&family=real&direction=inverse&layout=perm&bits=32&batch=single,rows-L1&peer=FFTW")
        self.assertEqual(count("#chart .curve"), 1)
        self.assertEqual(find("#missing").text, "Not measured: inverse, Perm, single, many, element-major.")

    def test_a_length_shows_its_numbers_by_pointer_and_by_key(self):
        self.open("family=complex&bits=32&n=2")
        chart = find("#chart")
        ActionChains(browser).move_to_element_with_offset(chart, chart.size["width"] // 2 - 12, 0).perform()
        self.assertTrue(find("#numbers").text.startswith("64 points"))
        slider = find("#length")
        slider.send_keys(Keys.HOME)
        slider.send_keys(Keys.ARROW_RIGHT * 10)
        row, = measured("speed.csv", symbol=KERNEL, family="complex-forward")
        numbers = find("#numbers").text
        for text in ("12 points", "ratio", KERNEL, "GT(4,3), 128 bits", f"{float(row['bound_cycles']):g} cycles"):
            self.assertIn(text, numbers)
        self.assertIn("n=12", browser.current_url)
        self.assertEqual(slider.get_attribute("aria-valuetext"), "12 points")
        self.assertIn("12", find("#chart-table .chosen").text)
        find("#numbers a").click()
        self.assertIn(f"// {KERNEL}: GT(4,3), 128 bits", find("pre").text)


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/python3
"""The panel in a real browser: each tile follows the unit, each control commands it, faults are shown.

Usage: panel_test.py BUILD_DIRECTORY [SCREENSHOT_DIRECTORY]
"""
import json
import pathlib
import re
import sys
import time
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.wait import WebDriverWait

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from processes import BUILD, PANEL, PATIENCE, SIMULATOR, ended, started, unit

PICTURES = pathlib.Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else BUILD / "panel-pictures"

# What a screen reader cannot name, and texts with less contrast than 4.5 to 1 against what lies behind them.
ACCESSIBILITY = """
  const luminance = (color) => color.match(/[0-9.]+/g).slice(0, 3).map((part) => part / 255)
    .map((part) => part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4)
    .reduce((sum, part, i) => sum + part * [0.2126, 0.7152, 0.0722][i], 0);
  const behind = (element) => {
    for (; element; element = element.parentElement) {
      const color = getComputedStyle(element).backgroundColor;
      if (!color.endsWith(" 0)")) return color;
    }
    return "rgb(255, 255, 255)";
  };
  const problems = [];
  for (const field of document.querySelectorAll("input, select, button, canvas, svg[role], ol, progress, a"))
    if (!(field.labels?.length || field.ariaLabel || field.textContent.trim() || field.closest("label"))) problems.push("no name: " + field.outerHTML.slice(0, 80));
  const ids = [...document.querySelectorAll("[id]")].map((element) => element.id);
  ids.filter((id, i) => ids.indexOf(id) !== i).forEach((id) => problems.push("twice: " + id));
  const texts = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
  const seen = new Set();
  while (texts.nextNode()) {
    const element = texts.currentNode.parentElement;
    if (!texts.currentNode.data.trim() || !element.checkVisibility() || element.closest("svg, option, datalist")) continue;
    const [dark, light] = [getComputedStyle(element).color, behind(element)].map(luminance).sort((a, b) => a - b);
    const what = element.tagName + "." + element.className;
    if ((light + 0.05) / (dark + 0.05) < 4.5 && !seen.has(what)) problems.push("contrast: " + what + " " + texts.currentNode.data.trim().slice(0, 30));
    seen.add(what);
  }
  return problems;
"""


def browser():
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for flag in ("headless=new", "no-sandbox", "disable-gpu", "disable-dev-shm-usage", "no-first-run", "disable-sync",
                 "disable-background-networking", "disable-component-update", "user-data-dir=/tmp/browser"):
        options.add_argument(f"--{flag}")
    driver = webdriver.Chrome(options=options, service=Service("/usr/bin/chromedriver"))
    driver.set_window_size(1920, 1080)
    return driver


# How far down, of 1, the first line of the plot is at its right edge, which is now; -1: there is none.
LINE_AT_THE_EDGE = """
const canvas = document.querySelector("#plot canvas");
const color = getComputedStyle(document.querySelector("#plot li")).color.match(/\\d+/g).map(Number);
const pixels = canvas.getContext("2d").getImageData(canvas.width - 3, 0, 1, canvas.height).data;
for (let row = 0; row < canvas.height; ++row) {
  const off = color.map((part, i) => Math.abs(part - pixels[4 * row + i])).reduce((a, b) => a + b);
  if (off < 60 && pixels[4 * row + 3] > 200) return row / canvas.height;
}
return -1;
"""


class Panel(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        PICTURES.mkdir(exist_ok=True)
        cls.simulator, _ = started([SIMULATOR], "ready")
        cls.panel, line = started([PANEL], "open")
        cls.address = re.search(r"http://\S+", line).group()
        cls.page = browser()
        cls.page.get(cls.address)
        WebDriverWait(cls.page, PATIENCE).until(lambda page: page.find_elements(By.CSS_SELECTOR, "#controls form"))

    @classmethod
    def tearDownClass(cls):
        cls.page.quit()
        for process in (cls.panel, cls.simulator):
            ended(process)

    def until(self, condition, what):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            try:
                if condition():
                    return
            except Exception as problem:  # the page is being drawn anew
                what = f"{what} ({problem})"
            time.sleep(0.05)
        self.fail(f"never: {what}")

    def tile(self, name):
        return self.page.find_element(By.CSS_SELECTOR, f'#values dd[data-name="{name}"]').text

    def shows(self, name, text):
        self.until(lambda: self.tile(name) == text, f"{name} shows {text!r}")

    def command(self, name, *words):
        """Fills the form of a command, sends it, and gives what was said of it."""
        form = self.page.find_element(By.CSS_SELECTOR, f'form[data-command="{name}"]')
        self.page.execute_script("arguments[0].closest('details').open = true", form)
        for index, word in enumerate(words):
            field = form.find_element(By.NAME, f"p{index}")
            self.page.execute_script("arguments[0].value = arguments[1]; arguments[0].dispatchEvent(new Event('input'))",
                                     field, word)
        form.find_element(By.CSS_SELECTOR, "button[type=submit]").click()
        said = form.find_element(By.CSS_SELECTOR, "output.said")
        self.until(lambda: said.text not in ("", "…"), f"{name} is answered")
        return said.text

    def test_the_token_leaves_the_address_bar_and_nothing_is_refused(self):
        self.until(lambda: "connected" in self.page.find_element(By.ID, "panel-state").text, "connected")
        self.assertNotIn("token", self.page.current_url)
        severe = [entry for entry in self.page.get_log("browser") if entry["level"] == "SEVERE"]
        self.assertEqual([], severe)

    def test_tiles_follow_the_unit(self):
        for name, words, text in (("power.acc", ("off",), "off"), ("power.acc", ("on",), "on"),
                                  ("misc.door_trunk", ("open",), "open"), ("misc.car_speed", ("87",), "87"),
                                  ("misc.outside_temperature", ("-3.5",), "-3.5 °")):
            unit("set", name, *words)
            self.shows(name, text)
        self.until(lambda: "87" in self.page.find_element(By.CSS_SELECTOR, "#cluster .number").text, "the dial")
        self.assertIn("trunk", self.page.find_element(By.CSS_SELECTOR, "#car .said").text)

    def test_the_plot_draws_what_changes_and_pauses(self):
        pause = self.page.find_element(By.CSS_SELECTOR, "#plot button[name=pause]")
        now = lambda: self.page.execute_script(LINE_AT_THE_EDGE)
        for speed, low in (("100", False), ("0", True)):
            unit("set", "misc.car_speed", speed)
            self.until(lambda: (now() > 0.7) == low and now() >= 0, f"the line at {speed}")
        pause.click()
        unit("set", "misc.car_speed", "100")
        self.shows("misc.car_speed", "100")
        self.assertGreater(now(), 0.7)
        pause.click()
        self.until(lambda: 0 <= now() < 0.3, "the line goes on")

    def test_events_and_calls_are_listed(self):
        unit("emit", "KeyStateChangeSignal", "0x12", "1")
        self.until(lambda: "OnKeyStateChange" in self.page.find_element(By.CSS_SELECTOR, "#events .log").text, "the event")
        self.command("misc source", "3")
        self.until(lambda: "SetOnSourceChange" in self.page.find_element(By.CSS_SELECTOR, "#calls .log").text, "the call")

    def test_controls_command_the_unit_and_tell_the_event_that_followed(self):
        self.assertRegex(self.command("power brightness", "day", "33"), r"ok in .*, OnScreenLightLevelChanged after")
        self.shows("power.brightness_day", "33")
        self.assertRegex(self.command("time zone", "Asia/Tokyo"), r"^ok")

    def drive(self, title, button, **fields):
        """Fills a form of the simulated unit's part, presses its button, and gives what was said."""
        part = self.page.find_element(By.XPATH, f"//section[@id='unit']/fieldset[legend[starts-with(., '{title}')]]")
        for name, word in fields.items():
            field = part.find_element(By.NAME, name)
            self.page.execute_script("arguments[0].value = arguments[1]; arguments[0].dispatchEvent(new Event('change'))", field, word)
        said = part.find_element(By.CSS_SELECTOR, "output.said")
        self.page.execute_script("arguments[0].textContent = ''", said)  # what was said before
        part.find_element(By.XPATH, f".//button[.='{button}']").click()
        self.until(lambda: said.text, f"{title} is answered")
        return said.text

    def test_the_simulated_unit_is_driven(self):
        self.assertRegex(self.drive("Set a value", "Set", value="misc.car_speed", to="63"), "^ok")
        self.shows("misc.car_speed", "63")
        self.assertRegex(self.drive("Play a scenario", "Play", file="parking", speed="0"), "^ok")
        part = self.page.find_element(By.XPATH, "//section[@id='unit']/fieldset[legend[.='Play a scenario']]")
        self.until(lambda: "done: Parked" in part.text, "the scenario has ended")
        self.assertEqual(1, part.find_element(By.TAG_NAME, "progress").get_property("value"))
        self.drive("Press a key", "Press", code="0x21")
        self.until(lambda: "key: 0x21" in self.page.find_element(By.CSS_SELECTOR, "#events .log").text, "the key's event")
        self.assertRegex(self.drive("Inject a fault", "Inject", words="SetOnSourceChange error"), "^ok")
        self.assertIn("fault", self.command("misc source", "4"))
        self.assertIn("no fault", self.drive("Inject a fault", "Inject", words="SetOnSourceChange explode"))
        self.drive("Inject a fault", "Clear all")
        self.until(lambda: self.command("misc source", "5").startswith("ok"), "the fault is gone")
        self.assertRegex(self.drive("Update stick", "can-file"), "^ok")
        self.shows("update.package", "inserted")
        self.drive("Update stick", "remove")
        self.shows("update.package", "removed")
        self.assertRegex(self.drive("Reboot", "acc"), "^ok")
        self.until(lambda: "there" in self.page.find_element(By.ID, "service-state").text, "the unit is back")

    def test_every_command_of_the_catalogue_has_a_form(self):
        forms = self.page.find_elements(By.CSS_SELECTOR, "#controls form")
        self.assertGreater(len(forms), 50)
        for form in forms:
            for field in form.find_elements(By.CSS_SELECTOR, "input, select"):
                self.assertTrue(field.get_dom_attribute("name"))
                self.assertEqual("label", self.page.execute_script("return arguments[0].closest('label')?.localName", field))

    def test_every_field_has_a_name_and_every_text_enough_contrast(self):
        for scheme in ("light", "dark"):
            self.page.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            self.assertEqual([], self.page.execute_script(ACCESSIBILITY), scheme)

    def test_service_lost_and_back(self):
        simulator = type(self).simulator
        ended(simulator)
        self.until(lambda: "lost" in self.page.find_element(By.ID, "service-state").text, "the service is lost")
        self.assertIn("stale", self.page.find_element(By.TAG_NAME, "body").get_attribute("class"))
        self.until(lambda: not self.page.find_element(By.ID, "unit").is_displayed(), "nothing to drive is offered")
        type(self).simulator, _ = started([SIMULATOR], "ready")
        self.until(lambda: "there" in self.page.find_element(By.ID, "service-state").text, "the service is back")
        unit("set", "misc.car_speed", "12")
        self.shows("misc.car_speed", "12")

    def test_reload_shows_everything_again(self):
        unit("set", "misc.car_speed", "41")
        self.page.refresh()
        self.shows("misc.car_speed", "41")

    def test_pictures_and_no_sideways_scrolling(self):
        for name, word in (("power.acc", "on"), ("power.head_lights", "on"), ("misc.door_front_left", "open"), ("misc.parking", "off"),
                           ("misc.rear_radar_left", "30"), ("misc.rear_radar_middle_left", "70"), ("misc.reverse", "on")):
            unit("set", name, word)
        for step in range(30):
            unit("set", "misc.car_speed", 20 + 2 * step)
            unit("set", "misc.engine_speed", 1000 + 400 * (step % 10))
        self.page.execute_script("scrollTo(0, 0)")
        for name, width, height, scheme in (("desk", 1920, 1080, "light"), ("phone", 360, 780, "light"), ("dark", 1920, 1080, "dark")):
            self.page.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                                      {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False})
            self.page.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                      {"features": [{"name": "prefers-color-scheme", "value": scheme}]})
            time.sleep(0.5)
            self.page.save_screenshot(str(PICTURES / f"{name}.png"))
            over = self.page.execute_script("return document.documentElement.scrollWidth - innerWidth")
            self.assertLessEqual(over, 0, f"{name}: wider than the window by {over}")
        self.page.execute_cdp_cmd("Emulation.clearDeviceMetricsOverride", {})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)

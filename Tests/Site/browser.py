"""A headless Chromium that tests ask what it sees. Everything that it asks for and says is kept."""

import base64
import json
import os
import pathlib
import shutil
import time

from selenium import webdriver
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By

# Of WCAG 2.2 AA and what it is built on.
AXE_TAGS = ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa"]
WIDTHS = (390, 820, 1440)


class Browser:
    """One browser for many tests. After each, `complaints` says what it should not have said or asked for."""

    def __init__(self):
        options = Options()
        options.binary_location = shutil.which("chromium")
        # Root may use no sandbox; containers have little shared memory.
        for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--hide-scrollbars",
                         "--force-prefers-reduced-motion", "--lang=en-US"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(options=options, service=Service(shutil.which("chromedriver")))
        self.driver.set_script_timeout(60)
        self.width_set(1280)
        self.allowed = []

    def quit(self):
        self.driver.quit()

    def command(self, name, **values):
        return self.driver.execute_cdp_cmd(name, values)

    def width_set(self, width, height=900):
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    def mode_prefer(self, mode):
        """What the system wishes: "light" or "dark"."""
        self.command("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": mode}])

    def scripts_permit(self, permitted):
        self.command("Emulation.setScriptExecutionDisabled", value=not permitted)

    def open(self, folder, path):
        """Opens a page of the site in that folder from the file system."""
        root = pathlib.Path(folder).resolve().as_uri() + "/"
        self.allow(root)
        self.driver.get(root + path)

    def allow(self, root):
        """Addresses that begin so are the site's own."""
        if root not in self.allowed:
            self.allowed.append(root)

    def run(self, script, *values):
        return self.driver.execute_script(script, *values)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def keys(self, *keys):
        """Typed where the focus is."""
        webdriver.ActionChains(self.driver).send_keys(*keys).perform()

    def wait(self, script, *values, seconds=10):
        """What the script says as soon as that is something; an error when it never is."""
        end = time.monotonic() + seconds
        while True:
            found = self.run(script, *values)
            if found:
                return found
            if time.monotonic() > end:
                raise AssertionError(f"not within {seconds} s: {script}")
            time.sleep(0.02)

    def path(self):
        """Which page it is at, below the folder of the site."""
        url = self.driver.current_url
        return next((url[len(root):] for root in self.allowed if url.startswith(root)), url)

    def search(self, text):
        """What the search says to a text that is put into its box, each result as [name, place, kind, address]."""
        self.run("document.getElementById('search').focus()")
        return self.driver.execute_async_script("""
            const [text, done] = arguments;
            const box = document.getElementById("search");
            const read = () => [...document.querySelectorAll("#results a")].map((link) =>
                [...[".name", ".place", ".kind"].map((part) => link.querySelector(part).textContent), link.getAttribute("href")]);
            box.value = text;
            box.dispatchEvent(new Event("input", { bubbles: true }));
            const end = performance.now() + 5000;
            // Until MiniSearch has read the names, "Searching" is shown where there is nothing else.
            const look = () => {
                const waits = document.querySelector("#results .none")?.textContent.startsWith("Searching");
                if (!document.getElementById("results").hidden && !waits || performance.now() > end)
                    done(read());
                else
                    setTimeout(look, 10);
            };
            look();""", text)

    def screenshot(self, file):
        """The whole page, up to a height that one still looks at."""
        size = self.command("Page.getLayoutMetrics")["cssContentSize"]
        clip = {"x": 0, "y": 0, "width": size["width"], "height": min(size["height"], 2400), "scale": 1}
        image = self.command("Page.captureScreenshot", captureBeyondViewport=True, clip=clip)["data"]
        os.makedirs(os.path.dirname(file), exist_ok=True)
        with open(file, "wb") as output:
            output.write(base64.b64decode(image))

    def axe(self, source, part="html"):
        """What axe-core finds on a part of the page: a line for each element."""
        self.run(source)
        violations = self.driver.execute_async_script("""
            const [tags, part, done] = arguments;
            axe.run(part, { preload: false, runOnly: { type: "tag", values: tags }, resultTypes: ["violations"] })
                .then((result) => done(result.violations), (error) => done([{ id: String(error), nodes: [] }]));""", AXE_TAGS, part)
        return [f"{violation['id']}: {node['html'][:160]} {node.get('failureSummary', '')[:300]}"
                for violation in violations for node in (violation["nodes"] or [{"html": ""}])[:5]]

    def complaints(self):
        """Messages of the console, and requests to anywhere but the site, since this was asked last."""
        said = [entry["message"] for entry in self.driver.get_log("browser")]
        for entry in self.driver.get_log("performance"):
            message = json.loads(entry["message"])["message"]
            if message["method"] != "Network.requestWillBeSent":
                continue
            url = message["params"]["request"]["url"]
            if not url.startswith(("data:", "about:", "chrome:", *self.allowed)):
                said.append(f"asks for {url[:200]}")
        return said

#!/usr/bin/env python3
"""Opens the HTML report of the example comparison in headless Chromium and
checks it as a reader would see it.

The tool writes the report of `compare --check-names --roots --format html`
of the example models. Chromium opens it from its file:// address, driven
through its DevTools protocol over a WebSocket (python3-websocket). The test
asserts that the page loads without a console error or an uncaught
exception and requests nothing but its own file; that the outcome and the
counts are shown, with their exact text; that the drawing is there, an
<svg> element whose nodes are the drawn vertices; and that typing into the
filter box (its value set and an 'input' event sent) narrows the lists to
the items that contain the text, with exact counts before and after. It
saves a PNG screenshot of the whole page to the path given with
--screenshot and prints that path.

Chromium runs with a profile of its own in a temporary folder; both are
gone when the test ends, also when it fails. Exit status 0 when every check
holds, 1 when one does not, 77 (skipped) when chromium is not installed.

Usage: BrowserReport.py --tool VEKZOL --examples DIR --work DIR
           --screenshot FILE.png
"""

import argparse
import base64
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77

# What the page must show for the example comparison.
EXPECTED_OUTCOME = "Outcome: different"
EXPECTED_COUNTS = [
    ["Vertices to add", "3"],
    ["Vertices to remove", "2"],
    ["Vertices to move", "1"],
    ["Vertices to rename", "1"],
    ["Edges to add", "4"],
    ["Edges to remove", "3"],
    ["Root vertices to add", "0"],
    ["Root edges to add", "1"],
    ["Root vertices to remove", "0"],
    ["Root edges to remove", "3"],
]
EXPECTED_VERTICES = ["PRC-0001", "PRC-0003", "PRC-0004", "PRC-0005", "PRC-0006", "PRD-0104",
                     "PRD-0105", "RSC-0202", "RSC-0203", "RSC-0204"]
EXPECTED_HEADINGS = [
    "Vertices to add (3)", "Vertices to remove (2)", "Vertices to move (1)",
    "Vertices to rename (1)", "Edges to add (4)", "Edges to remove (3)",
    "Root vertices to add (0)", "Root edges to add (1)", "Root vertices to remove (0)",
    "Root edges to remove (3)",
]
# Typed into the filter: the items shown, and the headings after it.
FILTERED = [
    ("prd", ["PRD-0105", "PRD-0104"], [
        "Vertices to add (1 of 3)", "Vertices to remove (0 of 2)", "Vertices to move (1 of 1)",
        "Vertices to rename (0 of 1)", "Edges to add (0 of 4)", "Edges to remove (0 of 3)",
        "Root vertices to add (0 of 0)", "Root edges to add (0 of 1)",
        "Root vertices to remove (0 of 0)", "Root edges to remove (0 of 3)"]),
    ("R-01", ["R-0105", "R-0106", "R-0104", "R-0104"], [
        "Vertices to add (0 of 3)", "Vertices to remove (0 of 2)", "Vertices to move (0 of 1)",
        "Vertices to rename (0 of 1)", "Edges to add (2 of 4)", "Edges to remove (1 of 3)",
        "Root vertices to add (0 of 0)", "Root edges to add (0 of 1)",
        "Root vertices to remove (0 of 0)", "Root edges to remove (1 of 3)"]),
]
ALL_ITEMS = 18

SHOWN_ITEMS = ("Array.from(document.querySelectorAll('section.list li'))"
               ".filter(item => !item.hidden && item.offsetParent !== null)"
               ".map(item => item.textContent)")
HEADINGS = ("Array.from(document.querySelectorAll('section.list h3'))"
            ".map(heading => heading.textContent)")


class Failure(Exception):
    pass


class DevTools:
    """One WebSocket to the browser; pages are reached through sessions."""

    def __init__(self, websocket_module, url):
        self.socket = websocket_module.create_connection(url, timeout=30, suppress_origin=True)
        self.next_id = 0
        self.events = []

    def call(self, method, params=None, session=None):
        self.next_id += 1
        message = {"id": self.next_id, "method": method, "params": params or {}}
        if session:
            message["sessionId"] = session
        self.socket.send(json.dumps(message))
        while True:
            reply = json.loads(self.socket.recv())
            if reply.get("id") == self.next_id:
                if "error" in reply:
                    raise Failure("%s failed: %s" % (method, reply["error"]))
                return reply.get("result", {})
            self.events.append(reply)

    def wait_for(self, method, seconds):
        deadline = time.monotonic() + seconds
        while True:
            for event in self.events:
                if event.get("method") == method:
                    return event
            if time.monotonic() > deadline:
                raise Failure("no %s within %d s" % (method, seconds))
            self.events.append(json.loads(self.socket.recv()))

    def close(self):
        self.socket.close()


def evaluate(devtools, session, expression):
    result = devtools.call("Runtime.evaluate",
                           {"expression": expression, "returnByValue": True}, session)
    if "exceptionDetails" in result:
        raise Failure("%s threw: %s" % (expression, result["exceptionDetails"]))
    return result["result"].get("value")


def check(failures, what, actual, expected):
    if actual != expected:
        failures.append("%s:\n  %r\nexpected:\n  %r" % (what, actual, expected))


def read_port(profile, process, seconds):
    """The port and browser path Chromium writes once it listens."""
    path = os.path.join(profile, "DevToolsActivePort")
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if process.poll() is not None:
            raise Failure("chromium ended with status %d before it listened" % process.returncode)
        try:
            with open(path) as file:
                lines = file.read().split("\n")
            if len(lines) >= 2 and lines[0] and lines[1]:
                return int(lines[0]), lines[1]
        except OSError:
            pass
        time.sleep(0.05)
    raise Failure("chromium wrote no %s within %d s" % (path, seconds))


def run_checks(devtools, address, screenshot):
    failures = []
    target = devtools.call("Target.createTarget", {"url": "about:blank"})["targetId"]
    session = devtools.call("Target.attachToTarget",
                            {"targetId": target, "flatten": True})["sessionId"]
    for domain in ("Runtime", "Log", "Page", "Network"):
        devtools.call(domain + ".enable", {}, session)
    devtools.call("Emulation.setDeviceMetricsOverride",
                  {"width": 1280, "height": 900, "deviceScaleFactor": 1, "mobile": False},
                  session)
    devtools.events.clear()
    devtools.call("Page.navigate", {"url": address}, session)
    devtools.wait_for("Page.loadEventFired", 20)

    check(failures, "outcome", evaluate(devtools, session,
          "document.getElementById('outcome').textContent"), EXPECTED_OUTCOME)
    check(failures, "counts", evaluate(devtools, session,
          "Array.from(document.querySelectorAll('#counts tr'))"
          ".map(row => [row.cells[0].textContent, row.cells[1].textContent])"), EXPECTED_COUNTS)
    check(failures, "counts shown", evaluate(devtools, session,
          "document.getElementById('counts').getBoundingClientRect().height > 0"), True)
    check(failures, "drawn vertices", evaluate(devtools, session,
          "Array.from(document.querySelectorAll('#drawing svg g.node > title'))"
          ".map(title => title.textContent).filter(name => !name.startsWith('^legend:')).sort()"),
          EXPECTED_VERTICES)
    check(failures, "drawing shown", evaluate(devtools, session,
          "(() => { const box = document.querySelector('#drawing svg')"
          ".getBoundingClientRect(); return box.width > 100 && box.height > 100; })()"), True)

    check(failures, "items before filtering",
          len(evaluate(devtools, session, SHOWN_ITEMS)), ALL_ITEMS)
    check(failures, "headings before filtering",
          evaluate(devtools, session, HEADINGS), EXPECTED_HEADINGS)
    for text, items, headings in FILTERED + [("", None, EXPECTED_HEADINGS)]:
        evaluate(devtools, session,
                 "(() => { const box = document.getElementById('filter'); box.value = %s; "
                 "box.dispatchEvent(new Event('input', {bubbles: true})); })()" % json.dumps(text))
        shown = evaluate(devtools, session, SHOWN_ITEMS)
        if items is None:
            check(failures, "items after clearing the filter", len(shown), ALL_ITEMS)
        else:
            check(failures, "items shown for %r" % text, shown, items)
        check(failures, "headings for %r" % text, evaluate(devtools, session, HEADINGS), headings)

    # The whole page, as a reader scrolls through it.
    height = evaluate(devtools, session, "document.documentElement.scrollHeight")
    devtools.call("Emulation.setDeviceMetricsOverride",
                  {"width": 1280, "height": int(height), "deviceScaleFactor": 1,
                   "mobile": False}, session)
    image = devtools.call("Page.captureScreenshot", {"format": "png"}, session)["data"]
    with open(screenshot, "wb") as file:
        file.write(base64.b64decode(image))
    print("screenshot: %s" % screenshot)

    # Errors and exceptions of the whole run, and every request made.
    for event in devtools.events:
        method = event.get("method")
        params = event.get("params", {})
        if method == "Runtime.exceptionThrown":
            failures.append("exception: %s" % params.get("exceptionDetails"))
        elif method == "Runtime.consoleAPICalled" and params.get("type") in ("error", "assert"):
            failures.append("console %s: %s" % (params.get("type"), params.get("args")))
        elif method == "Log.entryAdded" and params.get("entry", {}).get("level") == "error":
            failures.append("log error: %s" % params["entry"].get("text"))
        elif method == "Network.requestWillBeSent":
            url = params.get("request", {}).get("url")
            if url != address:
                failures.append("the page requested %s" % url)
    devtools.call("Target.closeTarget", {"targetId": target})
    return failures


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tool", required=True)
    parser.add_argument("--examples", required=True)
    parser.add_argument("--work", required=True)
    parser.add_argument("--screenshot", required=True)
    options = parser.parse_args()

    chromium = shutil.which("chromium")
    if chromium is None:
        print("SKIPPED: chromium is not installed (scripts/install-deps.sh installs it)")
        return SKIPPED
    import websocket  # python3-websocket; a missing module fails the test

    shutil.rmtree(options.work, ignore_errors=True)
    os.makedirs(options.work)
    report = os.path.join(options.work, "line-change.html")
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith("VEK_ZOL_") and name != "JBM_RQT_IN"}
    environment["TEMP"] = options.work
    run = subprocess.run(
        [options.tool, "compare", "--check-names", "--roots", "--format", "html",
         os.path.join(options.examples, "line-old.json"),
         os.path.join(options.examples, "line-new.json"), "-o", report],
        env=environment, capture_output=True)
    if run.returncode != 1 or run.stdout or run.stderr:
        print("FAILED: vekzol exited with %d, stdout %r, stderr %r"
              % (run.returncode, run.stdout, run.stderr))
        return 1
    address = "file://" + os.path.abspath(report)

    started = time.monotonic()
    profile = tempfile.mkdtemp(prefix="vekzol-chromium-", dir=options.work)
    process = subprocess.Popen(
        [chromium, "--headless=new", "--no-sandbox", "--disable-gpu", "--no-first-run",
         "--no-default-browser-check", "--disable-extensions", "--remote-debugging-port=0",
         "--user-data-dir=" + profile, "about:blank"],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        start_new_session=True)
    devtools = None
    try:
        port, path = read_port(profile, process, 30)
        devtools = DevTools(websocket, "ws://127.0.0.1:%d%s" % (port, path))
        failures = run_checks(devtools, address, options.screenshot)
    except Failure as failure:
        failures = [str(failure)]
    finally:
        if devtools is not None:
            try:
                devtools.call("Browser.close")
            except Exception:  # the browser may close the socket first
                pass
            devtools.close()
        try:
            process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.wait()
        shutil.rmtree(profile, ignore_errors=True)
    print("browser checks took %.1f s" % (time.monotonic() - started))
    if failures:
        print("FAILED:\n" + "\n".join(failures))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

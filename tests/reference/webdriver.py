"""A browser for tests: headless Chromium, driven through chromedriver's HTTP interface.

The programs chromium and chromedriver must be on the path. Everything the browser writes lies in a folder of its own.
"""

from __future__ import annotations

import base64
import json
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import urllib.error
import urllib.request
from types import TracebackType
from typing import Any

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class WebDriverError(Exception):
    """The browser refused a command, or could not be started."""


def _send(method: str, url: str, body: dict[str, Any] | None) -> Any:
    data = None if body is None else json.dumps(body).encode()
    request = urllib.request.Request(url, data, {"Content-Type": "application/json"}, method=method)
    try:
        with urllib.request.urlopen(request, timeout=60) as answer:
            return json.load(answer)["value"]
    except urllib.error.HTTPError as fault:
        raise WebDriverError(fault.read().decode(errors="replace")) from fault


def _program(name: str) -> str:
    path = shutil.which(name)
    if path is None:
        raise WebDriverError(f"{name} is not installed: run scripts/install_dependencies.sh")
    return path


class Browser:
    """One browser window, to be used with `with`."""

    def __init__(self) -> None:
        self._folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        # Port 0 lets the system choose, so that tests can run side by side; the program tells which.
        self._driver = subprocess.Popen(
            [_program("chromedriver"), "--port=0"],
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
        )
        try:
            self._session = f"http://127.0.0.1:{self._port()}/session"
            self._session += "/" + self._open()
        except BaseException:
            self._end()
            raise

    def _port(self) -> str:
        assert self._driver.stdout is not None
        for line in self._driver.stdout:
            found = re.search(r"started successfully on port (\d+)", line)
            if found:
                return found[1]
        raise WebDriverError("chromedriver ended before it was ready")

    def _open(self) -> str:
        arguments = [
            "--headless=new",
            "--no-sandbox",
            "--disable-gpu",
            "--disable-dev-shm-usage",
            "--disable-background-networking",
            "--no-first-run",
            f"--user-data-dir={self._folder.name}",
        ]
        wanted = {
            "goog:chromeOptions": {"args": arguments, "binary": _program("chromium")},
            "goog:loggingPrefs": {"browser": "ALL"},
        }
        answer = _send("POST", self._session, {"capabilities": {"alwaysMatch": wanted}})
        return str(answer["sessionId"])

    def _end(self) -> None:
        self._driver.terminate()
        self._driver.wait(timeout=30)
        if self._driver.stdout is not None:
            self._driver.stdout.close()
        self._folder.cleanup()

    def __enter__(self) -> Browser:
        return self

    def __exit__(
        self, kind: type[BaseException] | None, fault: BaseException | None, trace: TracebackType | None
    ) -> None:
        try:
            self._call("DELETE", "")
        finally:
            self._end()

    def _call(self, method: str, command: str, **body: Any) -> Any:
        return _send(method, self._session + command, body if method == "POST" else None)

    def open(self, address: str) -> None:
        self._call("POST", "/url", url=address)

    def address(self) -> str:
        return str(self._call("GET", "/url"))

    def run(self, script: str, *arguments: Any) -> Any:
        """The value that the body of a function returns, run in the page."""
        return self._call("POST", "/execute/sync", script=script, args=list(arguments))

    def emulate(self, width: int, height: int) -> None:
        """The size of the page, whatever the smallest window is."""
        parameters = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 600}
        self.devtools("Emulation.setDeviceMetricsOverride", parameters)

    def prefer_dark(self, dark: bool) -> None:
        feature = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self.devtools("Emulation.setEmulatedMedia", {"features": [feature]})

    def devtools(self, command: str, parameters: dict[str, Any]) -> Any:
        return self._call("POST", "/goog/cdp/execute", cmd=command, params=parameters)

    def find(self, selector: str) -> str:
        answer = self._call("POST", "/element", using="css selector", value=selector)
        return str(answer[ELEMENT])

    def click(self, selector: str) -> None:
        self._call("POST", f"/element/{self.find(selector)}/click")

    def type(self, selector: str, text: str) -> None:
        self._call("POST", f"/element/{self.find(selector)}/value", text=text)

    def press(self, key: str) -> None:
        """A key pressed where the focus is."""
        strokes = [{"type": "keyDown", "value": key}, {"type": "keyUp", "value": key}]
        self._call("POST", "/actions", actions=[{"type": "key", "id": "keyboard", "actions": strokes}])

    def console(self) -> list[dict[str, Any]]:
        """What was written to the console since the last call."""
        return list(self._call("POST", "/se/log", type="browser"))

    def wait_for(self, script: str, *arguments: Any, seconds: float = 15) -> Any:
        """The first value of the script that counts as true."""
        end = time.monotonic() + seconds
        while True:
            value = self.run(script, *arguments)
            if value:
                return value
            if time.monotonic() > end:
                raise WebDriverError(f"waited {seconds} s in vain at {self.address()}: {script}")
            time.sleep(0.05)

    def screenshot(self, path: pathlib.Path) -> None:
        path.write_bytes(base64.b64decode(self._call("GET", "/screenshot")))

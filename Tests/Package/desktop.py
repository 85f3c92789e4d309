"""A desktop of its own: a display, a window manager, a session bus with the accessibility bus, and the
part of the desktop portal that says whether the user wants it dark."""
import os
import struct
import subprocess
import threading
import time
import zlib

from gi.repository import Gio, GLib

SETTINGS = """<node><interface name="org.freedesktop.portal.Settings">
  <method name="Read"><arg direction="in" type="s"/><arg direction="in" type="s"/>
    <arg direction="out" type="v"/></method></interface></node>"""


def wait_until(holds, seconds=20):
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            return False
        time.sleep(0.02)
    return True


class Picture:
    """Rows of pixels, four bytes each: blue, green, red, nothing."""

    def __init__(self, rows):
        self.rows = rows

    def part(self, left, top, width, height):
        return Picture([row[4 * max(left, 0):4 * (left + width)]
                        for row in self.rows[max(top, 0):top + height]])

    def _greens(self):
        return b"".join(row[1::4] for row in self.rows)

    def brightness(self):
        greens = self._greens()
        return sum(greens) / max(len(greens), 1)

    def contrast(self):
        greens = self._greens()
        return max(greens) - min(greens) if greens else 0

    def write(self, path):
        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
        lines = b"".join(b"\0" + b"".join(row[i + 2:i + 3] + row[i + 1:i + 2] + row[i:i + 1]
                                          for i in range(0, len(row), 4)) for row in self.rows)
        size = struct.pack(">IIBBBBB", len(self.rows[0]) // 4, len(self.rows), 8, 2, 0, 0, 0)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", size) +
                         chunk(b"IDAT", zlib.compress(lines, 1)) + chunk(b"IEND", b""))


class Desktop:
    def __init__(self, home):
        self.is_dark = False
        self._home = home
        self._processes = []
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(home), "GDK_BACKEND": "x11",
                            "XDG_RUNTIME_DIR": str(home), "GSETTINGS_BACKEND": "memory",
                            "XDG_DATA_DIRS": "/usr/share", "LIBGL_ALWAYS_SOFTWARE": "1"}
        display = self._start(["Xvfb", "-displayfd", "1", "-screen", "0", "800x600x24", "-nolisten", "tcp",
                               "-noreset", "-fbdir", str(home)])
        self.environment["DISPLAY"] = ":" + display
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._start(
            ["dbus-daemon", "--session", "--nofork", "--print-address=1"])
        self._start(["openbox", "--startup", "echo started"])
        self._serve_settings()
        self.accessibility_address = self._bus.call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
            Gio.DBusCallFlags.NONE, -1, None).unpack()[0]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._loop.quit()
        for process in reversed(self._processes):
            process.terminate()
            process.wait()

    def _start(self, command):
        """The first line that the program writes."""
        process = subprocess.Popen(command, env=self.environment, stdout=subprocess.PIPE,
                                   stderr=subprocess.DEVNULL, text=True)
        self._processes.append(process)
        return process.stdout.readline().strip()

    def _serve_settings(self):
        context = GLib.MainContext.new()
        self._loop = GLib.MainLoop.new(context, False)
        flags = Gio.DBusConnectionFlags
        address = self.environment["DBUS_SESSION_BUS_ADDRESS"]
        context.push_thread_default()
        self._bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self._bus.set_exit_on_close(False)
        interface = Gio.DBusNodeInfo.new_for_xml(SETTINGS).interfaces[0]
        self._bus.register_object("/org/freedesktop/portal/desktop", interface, self._answer, None, None)
        context.pop_thread_default()
        self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                            "RequestName", GLib.Variant("(su)", ("org.freedesktop.portal.Desktop", 0)),
                            None, Gio.DBusCallFlags.NONE, -1, None)
        threading.Thread(target=self._loop.run, daemon=True).start()

    def _answer(self, _bus, _sender, _path, _interface, _method, arguments, call):
        if arguments.unpack() == ("org.freedesktop.appearance", "color-scheme"):
            scheme = GLib.Variant("u", 1 if self.is_dark else 2)
            call.return_value(GLib.Variant("(v)", (GLib.Variant("v", scheme),)))
        else:
            call.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")

    def set_dark(self, is_dark):
        self.is_dark = is_dark

    def _ask(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=self.environment, capture_output=True,
                              text=True, check=False).stdout

    def press(self, key):
        self._ask("key", key)

    def active_window(self):
        """Left, top, width and height."""
        values = dict(line.split("=") for line in self._ask("getactivewindow", "getwindowgeometry",
                                                            "--shell").splitlines())
        return [int(values[key]) for key in ("X", "Y", "WIDTH", "HEIGHT")]

    def screenshot(self):
        """Of the display's memory, a file in the format of xwd (X11/XWDFile.h)."""
        data = (self._home / "Xvfb_screen0").read_bytes()
        header = struct.unpack(">25I", data[:100])
        size, width, height, stride, colors = header[0], header[4], header[5], header[12], header[19]
        begin = size + 12 * colors
        return Picture([data[begin + y * stride:begin + y * stride + 4 * width] for y in range(height)])

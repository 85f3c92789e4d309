"""How soon a program has a window on the screen, of an X server that nothing else uses."""
import ctypes
import os
import select
import subprocess
import time

substructure_notify, map_notify = 1 << 19, 19


class Display:
    def __init__(self, folder):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x800x24", "-noreset"],
                                       pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as answer:
            self.name = ":" + answer.readline().strip()
        self.folder = folder
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.x11.XDefaultRootWindow.restype = ctypes.c_ulong
        self.connection = ctypes.c_void_p(self.x11.XOpenDisplay(self.name.encode()))
        if not self.connection:
            raise SystemExit(f"the X server {self.name} does not answer")
        root = ctypes.c_ulong(self.x11.XDefaultRootWindow(self.connection))
        self.x11.XSelectInput(self.connection, root, ctypes.c_long(substructure_notify))
        self.x11.XFlush(self.connection)

    def is_mapped(self):
        event = (ctypes.c_long * 24)()
        while self.x11.XPending(self.connection):
            self.x11.XNextEvent(self.connection, ctypes.byref(event))
            if event[0] & 0xFFFFFFFF == map_notify:
                return True
        return False

    def close(self):
        self.x11.XCloseDisplay(self.connection)
        self.server.terminate()
        self.server.wait()


class FirstWindow:
    """From the start of the program, without a session bus, until its window is mapped."""

    def __init__(self, display, program):
        self.display, self.program = display, program

    def __call__(self):
        environment = {"PATH": os.environ["PATH"], "HOME": str(self.display.folder), "DISPLAY": self.display.name,
                       "XDG_RUNTIME_DIR": str(self.display.folder), "GDK_BACKEND": "x11", "GSK_RENDERER": "cairo",
                       "DBUS_SESSION_BUS_ADDRESS": "disabled:", "CORBEL_LOCAL_LIBRARY": str(self.display.folder)}
        start = time.perf_counter()
        with subprocess.Popen([self.program], env=environment, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL) as process:
            while not self.display.is_mapped():
                select.select([self.display.x11.XConnectionNumber(self.display.connection)], [], [], 10)
                if process.poll() is not None:
                    raise SystemExit(f"{self.program} shows no window")
            seconds = time.perf_counter() - start
            process.terminate()
        self.display.is_mapped()
        return seconds

"""What a screen reader finds of a program, over the accessibility bus (AT-SPI 2)."""
import dataclasses

from gi.repository import Gio, GLib

PREFIX = "org.a11y.atspi."
ROOT = "/org/a11y/atspi/accessible/root"
FOCUSABLE, FOCUSED, VISIBLE = 11, 12, 30 # of AtspiStateType
WINDOW = 1 # of AtspiCoordType


@dataclasses.dataclass(frozen=True)
class Element:
    name: str
    role_name: str
    states: int
    extents: tuple # left, top, width and height within the window
    path: str

    def _has(self, state):
        return bool(self.states >> state & 1)

    @property
    def is_focused(self):
        return self._has(FOCUSED)

    @property
    def is_focusable(self):
        return self._has(FOCUSABLE)

    @property
    def is_shown(self):
        return self._has(VISIBLE) and self.extents[2] > 0 and self.extents[3] > 0

    def __eq__(self, other):
        return isinstance(other, Element) and self.path == other.path

    def __str__(self):
        return f"{self.role_name} {self.name!r} at {self.extents}"


def elements(tree):
    """All that the tree holds, in its order."""
    found = []
    for element, children in tree:
        found += [element, *elements(children)]
    return found


class Accessibility:
    """The accessibility tree of the process."""

    def __init__(self, address, process_id):
        flags = Gio.DBusConnectionFlags
        self._bus = Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
        self._bus.set_exit_on_close(False)
        self._process_id = process_id

    def _call(self, owner, path, interface, method, arguments=None):
        return self._bus.call_sync(owner, path, interface, method, arguments, None,
                                   Gio.DBusCallFlags.NONE, 5000, None).unpack()

    def _children(self, owner, path):
        return self._call(owner, path, PREFIX + "Accessible", "GetChildren")[0]

    def _property(self, owner, path, interface, name):
        return self._call(owner, path, "org.freedesktop.DBus.Properties", "Get",
                          GLib.Variant("(ss)", (PREFIX + interface, name)))[0]

    def _is_of_process(self, owner):
        driver = "org.freedesktop.DBus"
        return self._process_id == self._call(driver, "/org/freedesktop/DBus", driver,
                                              "GetConnectionUnixProcessID",
                                              GLib.Variant("(s)", (owner,)))[0]

    def _branch(self, owner, path):
        low, high = self._call(owner, path, PREFIX + "Accessible", "GetState")[0]
        try:
            extents = self._call(owner, path, PREFIX + "Component", "GetExtents",
                                 GLib.Variant("(u)", (WINDOW,)))[0]
        except GLib.Error: # an object without a place
            extents = (0, 0, 0, 0)
        element = Element(self._property(owner, path, "Accessible", "Name"),
                          self._call(owner, path, PREFIX + "Accessible", "GetRoleName")[0],
                          low | high << 32, extents, path)
        return element, [self._branch(*child) for child in self._children(owner, path)]

    def tree(self):
        """The branches of the program's windows; none while it has none."""
        try:
            return [self._branch(*window)
                    for owner, path in self._children(PREFIX + "Registry", ROOT)
                    if self._is_of_process(owner) for window in self._children(owner, path)]
        except GLib.Error: # it changes meanwhile
            return []

"""The storyboard is compiled on a Mac alone; what can be checked of it here is that it connects."""
import pathlib
import re
import unittest
import xml.etree.ElementTree as ElementTree

TREE = pathlib.Path(__file__).resolve().parents[3]
STORYBOARD = TREE / "CorbelKit/Resources/AllowBackgroundItem.storyboard"
CONTROLLERS = TREE / "CorbelKitInterface/macOS/AllowBackgroundItemControllers.mm"

# Interface Builder's words for the kinds of views that the outlets have.
KINDS = {"textField": "NSTextField", "button": "NSButton", "imageView": "NSImageView", "box": "NSBox"}


class Storyboard(unittest.TestCase):
    def setUp(self):
        self.document = ElementTree.parse(STORYBOARD).getroot()
        self.source = CONTROLLERS.read_text(encoding="utf-8")
        self.objects = {}
        for element in self.document.iter():
            if "id" in element.attrib:
                self.assertNotIn(element.get("id"), self.objects)
                self.objects[element.get("id")] = element

    def test_begins_with_the_window_controller_and_leads_to_the_view_controller(self):
        first = self.objects[self.document.get("initialViewController")]
        self.assertEqual((first.tag, first.get("customClass")),
                         ("windowController", "AllowBackgroundItemWindowController"))
        content = self.objects[first.find("connections/segue").get("destination")]
        self.assertEqual((content.tag, content.get("customClass")),
                         ("viewController", "AllowBackgroundItemViewController"))

    def test_connects_every_outlet_to_a_view_of_its_kind(self):
        wanted = {name: kind for kind, name in re.findall(r"IBOutlet (\w+)\* (\w+);", self.source)}
        connected = {outlet.get("property"): KINDS[self.objects[outlet.get("destination")].tag]
                     for outlet in self.document.iter("outlet")}
        self.assertEqual(len(wanted), 7)
        self.assertEqual(connected, wanted)

    def test_sends_every_action_to_the_view_controller(self):
        wanted = set(re.findall(r"\(IBAction\)(\w+:)", self.source))
        sent = {action.get("selector") for action in self.document.iter("action")}
        self.assertEqual(sent, wanted)
        self.assertEqual({self.objects[action.get("target")].get("customClass")
                          for action in self.document.iter("action")},
                         {"AllowBackgroundItemViewController"})

    def test_lays_out_views_that_are_there(self):
        for constraint in self.document.iter("constraint"):
            for item in ("firstItem", "secondItem"):
                if item in constraint.attrib:
                    self.assertIn(constraint.get(item), self.objects)


if __name__ == "__main__":
    unittest.main()

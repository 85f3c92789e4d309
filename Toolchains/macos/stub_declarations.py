"""What the stub headers declare, as clang reads it."""
import json
import pathlib
import subprocess

import toolchain


def syntax_tree(headers):
    """clang's tree of a file that includes every framework header under the folder."""
    names = sorted(str(path.relative_to(headers)) for path in pathlib.Path(headers).glob("*/*.h"))
    source = "".join(f"#import <{name}>\n" for name in names)
    command = ["clang-14", "-target", "arm64-apple-macos13.0", "-x", "objective-c", "-fobjc-arc",
               "-fblocks", "-nostdlibinc", "-isystem", toolchain.system_headers(),
               "-I", str(headers), "-Werror", "-fsyntax-only", "-Xclang", "-ast-dump=json", "-"]
    result = subprocess.run(command, input=source, capture_output=True, text=True, check=False)
    if result.returncode != 0:
        raise ValueError(result.stderr)
    return json.loads(result.stdout)


class StubDeclarations:
    """The top-level declarations that stand in the stub headers, and the names of types that any
    header declares."""

    def __init__(self, headers):
        self._folder = str(headers)
        self._file = ""
        self.nodes = []
        self.typedefs = {}
        self.enums = set()
        self.type_parameters = set()
        for node in syntax_tree(headers).get("inner", []):
            self._follow_file(node.get("loc", {}))
            if self._folder in self._file:
                self.nodes.append(node)
            self._follow_file(node.get("range", {}))
            self._visit(node)

    def _visit(self, node):
        self._collect_type(node)
        for child in node.get("inner", []):
            self._follow_file(child.get("loc", {}))
            self._follow_file(child.get("range", {}))
            self._visit(child)

    def _collect_type(self, node):
        kind, name = node.get("kind"), node.get("name")
        if kind == "TypedefDecl":
            self.typedefs[name] = node["type"].get("desugaredQualType", node["type"]["qualType"])
        elif kind == "ObjCTypeParamDecl":
            self.type_parameters.add(name)
        elif kind == "EnumDecl" and name:
            self.enums.add(name)

    def _follow_file(self, location):
        """clang names a file only where it differs from the one before, in the order of its dump."""
        if not isinstance(location, dict):
            return
        for key, value in location.items():
            if key == "file":
                self._file = value
            elif key not in ("includedFrom", "inner"):
                self._follow_file(value)

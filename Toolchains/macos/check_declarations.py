#!/usr/bin/env python3
"""Compares every declaration of the stub headers with the public table of the frameworks'
declarations: classes and superclasses, selectors, the kinds of arguments down into blocks, the
values of constants, functions and variables. Prints a line for each difference.
Usage: check_declarations.py [folder of stub headers]

The table cannot tell: since which system a thing exists, nullability, generics, ownership, macros,
the fixed arguments of variadic functions, an enum's width, BOOL on x86_64, and which library
exports a name. Those are for the eye."""
import collections
import pathlib
import re
import sys

import declaration_table
import stub_declarations
import toolchain

SCALARS = {
    "unsigned long": "u64", "unsigned long long": "u64", "long": "i64", "long long": "i64",
    "int": "int", "unsigned int": "uint", "short": "short", "unsigned short": "ushort",
    "char": "char", "signed char": "char", "unsigned char": "u8", "bool": "bool", "_Bool": "bool",
    "float": "float", "double": "double", "void": "void", "SEL": "SEL", "id": "object",
    "instancetype": "object", "Class": "object",
}
OBJECTS = {"id", "proto", "class", "instancetype", "NSString", "NSMutableString", "Class"}
INTEGERS = {"i64", "u64", "int", "uint"}
QUALIFIERS = re.compile(r"\b(const|volatile|_Nullable|_Nonnull|__strong|__weak|__autoreleasing"
                        r"|__unsafe_unretained)\b")
BLOCK = re.compile(r"(.*?)\(\^\s*\)\((.*)\)")
COMMA_OUTSIDE_BRACKETS = re.compile(r",(?![^(<]*[)>])")


def agree(ours, theirs):
    """Whether a declared kind may stand for the recorded one."""
    if isinstance(ours, tuple) and isinstance(theirs, tuple):
        return len(ours) == len(theirs) and all(map(agree, ours, theirs))
    if ours == theirs or {ours, theirs} == {"bool", "u8"}:
        return True
    if ours == "enum":
        return theirs in INTEGERS  # the table widens every enum
    # References of Core Foundation are recorded as objects, and a Protocol* as a plain pointer.
    return (ours, theirs) in {("ptr", "object"), ("voidptr", "object"), ("object", "voidptr"),
                              ("ptr", "voidptr"), ("voidptr", "ptr")}


class Check:
    def __init__(self, table, stubs):
        self._table = table
        self._stubs = stubs
        self.counts = collections.Counter()
        self.differences = []

    def run(self):
        checks = {
            "ObjCInterfaceDecl": self._class, "ObjCCategoryDecl": self._category,
            "ObjCProtocolDecl": self._protocol, "EnumDecl": self._enum,
            "FunctionDecl": self._function, "VarDecl": self._variable,
        }
        for node in self._stubs.nodes:
            if node["kind"] in checks:
                checks[node["kind"]](node, node.get("name"))
        return self.differences

    def _differ(self, text):
        self.differences.append(text)

    # Kinds of types.

    def declared_kind(self, spelling):
        """The kind of a C type as clang spells it; for a block, what it returns and takes."""
        if re.match(r"(const )?enum \w", spelling):
            return "enum"
        spelling = re.sub(r"\s+", " ", QUALIFIERS.sub(" ", spelling)).strip()
        block = BLOCK.fullmatch(spelling)
        if block:
            arguments = [argument for argument in COMMA_OUTSIDE_BRACKETS.split(block[2])
                         if argument.strip() not in ("void", "")]
            return ("block", *map(self.declared_kind, [block[1], *arguments]))
        if "(*" in spelling:
            return "fnptr"
        if spelling in SCALARS:
            return SCALARS[spelling]
        if spelling.startswith("id<") or spelling in self._stubs.type_parameters:
            return "object"
        if spelling.endswith("]"):
            return "ptr"
        if spelling.endswith("*"):
            return self._pointer_kind(spelling)
        meaning = self._stubs.typedefs.get(spelling, spelling)
        if meaning != spelling:
            return self.declared_kind(meaning)
        return "enum" if spelling in self._stubs.enums else "struct"

    def _pointer_kind(self, spelling):
        target = spelling[:-1].replace("struct ", "").split("<")[0].strip()
        if target in self._table.classes or target == "NSObject":
            return "object"
        return {"char": "cstr", "void": "voidptr"}.get(target, "ptr")

    def recorded_kind(self, kind):
        if not isinstance(kind, tuple):
            return "object" if kind in OBJECTS else kind
        if kind[0] == "block":
            returned, arguments = self._table.signature(kind[1])
            return ("block", *map(self.recorded_kind, [returned, *(arguments or [])]))
        return kind[0] if kind[0] in ("fnptr", "struct") else "ptr"

    def _compare_signature(self, where, spellings, signature):
        returned, arguments = signature
        if arguments is None:
            return
        ours = list(map(self.declared_kind, spellings))
        theirs = list(map(self.recorded_kind, [returned, *arguments]))
        if len(ours) != len(theirs):
            self._differ(f"{where}: {len(ours) - 1} arguments, the table has {len(arguments)}")
        elif not all(map(agree, ours, theirs)):
            self._differ(f"{where}: {ours}, the table has {theirs}")

    # Kinds of declarations.

    def _class(self, node, name):
        superclass = node.get("super", {}).get("name")
        if not superclass and not node.get("inner"):
            return  # a forward mention
        self.counts["classes"] += 1
        entry = self._table.classes.get(name)
        if not entry:
            self._differ(f"class {name}: unknown")
            return
        recorded = self._table.superclass_name(entry)
        if recorded and superclass != recorded:
            self._differ(f"class {name}: superclass {superclass}, the table has {recorded}")
        self._members(node, name, self._table.class_member)

    def _category(self, node, _):
        self._members(node, node["interface"]["name"], self._table.class_member)

    def _protocol(self, node, name):
        if not node.get("inner"):
            return
        self.counts["protocols"] += 1
        if name not in self._table.protocols:
            self._differ(f"protocol {name}: unknown")
            return
        self._members(node, name, self._table.protocol_member)

    def _members(self, node, owner, look_up):
        for method in node.get("inner", []):
            if method["kind"] != "ObjCMethodDecl":
                continue  # a property appears as its accessors, too
            self.counts["selectors"] += 1
            member = ("-" if method.get("instance") else "+") + method["name"]
            signature = look_up(owner, member)
            if signature:
                spellings = [method["returnType"]["qualType"], *parameter_types(method)]
                self._compare_signature(f"{owner} {member}", spellings, signature)
            else:
                self._differ(f"{owner} {member}: no such selector")

    def _enum(self, node, name):
        for constant in node.get("inner", []):
            if constant["kind"] == "EnumConstantDecl":
                self.counts["constants"] += 1
                self._constant(name, constant)

    def _constant(self, enum, constant):
        name, value = constant["name"], constant_value(constant)
        recorded = self._recorded_value(enum, name)
        if value is None:
            self._differ(f"{name}: write the value explicitly")
        elif not isinstance(recorded, int):
            self._differ(f"{name}: not in the table")
        elif (recorded - value) % 2**64:
            self._differ(f"{name} = {value}, the table has {recorded}")

    def _recorded_value(self, enum, name):
        """Constants of a named enum are recorded without the part of the name they share."""
        if enum not in self._table.enums:
            return self._table.constants.get(name)
        values = self._table.enums[enum]
        candidates = [short for short in values if name.endswith(short)] or [
            short for short in values if short in name]
        return values[max(candidates, key=len)] if candidates else None

    def _function(self, node, name):
        self.counts["functions"] += 1
        signature = self._table.functions.get(name)
        if signature:
            returned = node["type"]["qualType"].split("(")[0]
            self._compare_signature(name, [returned, *parameter_types(node)], signature)
        else:
            self._differ(f"function {name}: unknown")

    def _variable(self, node, name):
        self.counts["variables"] += 1
        recorded = self._table.constants.get(name)
        ours = self.declared_kind(node["type"]["qualType"])
        if recorded is None:
            self._differ(f"variable {name}: unknown")
        elif not isinstance(recorded, (int, float)) and not agree(ours, self.recorded_kind(recorded)):
            self._differ(f"variable {name}: {ours}, the table has {recorded}")


def parameter_types(node):
    return [child["type"]["qualType"] for child in node.get("inner", [])
            if child["kind"] == "ParmVarDecl"]


def constant_value(node):
    for child in node.get("inner", []):
        return int(child["value"]) if child["kind"] == "ConstantExpr" else constant_value(child)
    return None


def main():
    headers = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else toolchain.stub_headers()
    check = Check(declaration_table.Table(toolchain.declaration_table()),
                  stub_declarations.StubDeclarations(headers))
    differences = check.run()
    print("\n".join(differences), file=sys.stderr, end="\n" if differences else "")
    print("Checked:", ", ".join(f"{count} {what}" for what, count in check.counts.items()))
    return 1 if differences else 0


if __name__ == "__main__":
    sys.exit(main())

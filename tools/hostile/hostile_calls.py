#!/usr/bin/env python3
"""hostile_calls.py OUTPUT HEADER...: writes a C++ table of calls of every function that the headers export.

Each row names a function and makes its arguments, and the object that it is a member of, of what a Feed (feed.h)
hands out, which puts hostile numbers into each of their places. A function with an argument that is not known
below stops the build. So a new function is either called, or stands below with the reason why not.

The headers are read as the house writes them: one declaration at a time, without macros but the export ones,
and templates are nobody's exports."""

import pathlib
import re
import sys

# Not called, by class and name: why.
LEFT_OUT = {
    "FitStretch": "its arc has to be finite, which the caller sees to; the converter is called with every number",
    "TreeWalk": "walks objects and reads no numbers; the functions over groups call it",
    "CITechnicsSerialize": "is implemented by others",
    "CTechnics": "has no numbers but types",
    "CCadObject::AddTechnics": "takes no numbers",
    "CCadPolyline::Reserve": "takes as much memory as it is told to",
    "CCadGroup::PopBack": "gives a member back, and takes no numbers",
    "CCadGroup::PickOffAll": "gives the members back, and takes no numbers",
    "CollectObject": "leaves two groups with one object, whose owner the caller settles",
    "CPosCalculator::_SelectObject": "fills a group that must not delete what it holds, and takes no numbers",
    "CPosCalculator::_SelectClosedObject": "fills a group that must not delete what it holds, and takes no numbers",
    "CCadObject::Cloned": "is a step of Clone",
    "CCadObject::HandOver": "is a step of the destructor",
    "CCadObject::DeleteOwned": "is a step of the destructor",
    "CCadGroup::HandOver": "is a step of the destructor",
    "CCadText::HandOver": "is a step of the destructor",
    "CCadPolylineBase::StartOfSegments": "is called by all that polylines answer",
    "CCadPolylineBase::MoveStart": "is called by SetStartPoint",
    "CCadPolylineBase::DropIndex": "is called by all that changes a polyline",
    "Doomed": "is a step of the destructor",
}
MAKES = {"Clone", "Convert2Polyline", "GetMultiSementsByRange", "GetPolylineByRange", "GetMultiSementsByRangeRound",
         "CutStretch", "Make_RectPlane", "CreateTopoMultiPolyline"}  # what they answer is the caller's
TAKES_OVER = {"PushBack", "Insert", "SetInnerObject"}  # the object that they get is theirs
POINT = "feed.Point(3, 2)"
POSITION = "POLYPOS{feed.Int(1), feed.Number(0.5)}"
RANGE = f"PosRange({POSITION}, POLYPOS{{feed.Int(2), feed.Number(0.25)}})"
BEZIER = "{feed.Point(0, 0), feed.Point(3, 4), feed.Point(5, 1), feed.Point(9, 0)}"
# How a value of each type is made: an expression, or statements that name it @.
VALUES = {
    "bool": "feed.Flag()", "double": "feed.Number(0.5)", "int": "feed.Int(1)", "unsigned int": "feed.Int(1)",
    "cad_t": "static_cast<cad_t>(feed.Int(1))", "std::string_view": "feed.Text()", "DPOINT2": POINT,
    "gp_Vec2d": "gp_Vec2d(feed.Number(3), feed.Number(2))",
    "gp_Trsf2d": "gp_Trsf2d @; @.SetTranslationPart({feed.Number(1), feed.Number(2)})",
    "POLYPOS": POSITION, "PosRange": RANGE,
    "CadRect": "CadRect{feed.Number(0), feed.Number(0), feed.Number(9), feed.Number(9)}",
    "BulgeArc": "BulgeArc{feed.Point(0, 0), feed.Point(3, 4), feed.Number(0.5)}", "CubicBezier": f"CubicBezier{BEZIER}",
    "EllipticArc": f"EllipticArc({POINT}, {', '.join(f'feed.Number({n})' for n in (5, 2, 0.3, 1, 2))})",
    "FootEquation": f"FootEquation{{feed.Number(1), {POINT}}}",
    "SEGMENT": f"feed.Flag() ? SEGMENT{BEZIER} : SEGMENT(feed.Point(0, 0), feed.Point(3, 4), feed.Number(0.5))",
    "CConvexHelper::Point": "CConvexHelper::Point{feed.Number(1), feed.Number(2), 0}",
    "CRangeSet": f"CRangeSet(feed.Object<CCadObject>(true), {{{RANGE}, {RANGE}, {RANGE}}})",
    "PosInfo": "PosInfo()", "CZoneManager": "CZoneManager()", "ContourNesting": "ContourNesting()",
    "CConvertCadObjectToCadPolyline": "CConvertCadObjectToCadPolyline @(feed.Text())",
    "CPosCalculator": f"OpenCPosCalculator @; const DPOINT2 p@ = {POINT}; @.Init(feed.Object<CCadGroup>(true), &p@, feed.Number(1))",
    "CTopoMultiPolyline": "*std::unique_ptr<CTopoMultiPolyline>(CTopoMultiPolyline::CreateTopoMultiPolyline(feed.Object<CCadPolyline>(false)))",
    "Adobe": "const std::unique_ptr<Adobe> p@(Make_RectPlane(feed.Number(9), feed.Number(5), feed.Number(2))); Adobe& @ = *p@",
    "CGroupIndex": "CGroupIndex @(feed.Object<CCadGroup>(true))",
    "CCadObject*": "feed.Object<CCadObject>(true)",
    "std::list<CCadObject*>": "std::list<CCadObject*>{feed.Object<CCadObject>(true), feed.Object<CCadMultiSegments>(false), feed.Object<CCadGroup>(false)}",
    "std::list<cad_t>": "std::list<cad_t>{static_cast<cad_t>(feed.Int(1)), kCadLine}",
}
# The kinds of objects.
KINDS = (
    "new CCadLine(feed.Point(0, 0), feed.Point(3, 4))", f"new CCadCircle({POINT}, feed.Number(5), feed.Flag())",
    f"new CCadArc({POINT}, feed.Number(5), feed.Number(1), feed.Number(2), feed.Flag())",
    f"new CCadEllipse({POINT}, feed.Number(5), feed.Number(3), feed.Number(1), feed.Flag())",
    f"new CCadEllipseArc({POINT}, feed.Number(5), feed.Number(3), feed.Number(1), feed.Number(1), feed.Number(2), feed.Flag())",
    f"new CCadRectangle({POINT}, feed.Number(5), feed.Number(3), feed.Number(1))", f"new CCadDot({POINT})",
    "Drawn<CCadPolyline>(feed, 0)", "Drawn<CCadPolylineEx>(feed, 0)", "Drawn<CCadPolyline>(feed, 60)",
    "Drawn<CCadPolylineEx>(feed, 60)", "new CCadPolyline", "test::RelationTo(nullptr)",
    f"new OwnKind({VALUES['SEGMENT']})", "test::TextOf(Drawn<CCadPolyline>(feed, 0))",
    f"[&] {{ auto* group = new CCadGroup; test::Fill(*group, {{Drawn<CCadPolyline>(feed, 0), new CCadCircle({POINT}, feed.Number(1))}}); return group; }}()",
)
API = r"QEV(?:MATH|DATA|COMMON)_API"


def code_of(header):
    text = re.sub(r"/\*.*?\*/|//[^\n]*", "", pathlib.Path(header).read_text(), flags=re.S)
    text = re.sub(r'"(?:\\.|[^"\\])*"', '""', text)
    return re.sub(r"^\s*#(?:[^\n]*\\\n)*[^\n]*", "", text, flags=re.M)


class Scope:
    def __init__(self, name="", is_class=False, access="public", exported=False):
        self.name, self.is_class, self.access, self.exported = name, is_class, access, exported
        self.types = set()  # that are declared in the class


def closing(text, start):
    """The place behind the brace that closes the one at start."""
    depth = 0
    for place in range(start, len(text)):
        depth += {"{": 1, "}": -1}.get(text[place], 0)
        if depth == 0:
            return place + 1
    raise SystemExit("a brace is not closed")


def declarations(text):
    """Each function's declaration, with the scopes round it."""
    scopes, start, place = [Scope()], 0, 0
    while place < len(text):
        letter = text[place]
        head = " ".join(text[start:place].split())
        top = scopes[-1]
        if letter == ":" and top.is_class and head in ("public", "protected", "private"):
            top.access = head
            start = place + 1
        elif letter == ";":
            if "(" in head and not re.match(r"using|friend|template|static_assert", head):
                yield scopes, head
            start = place + 1
        elif letter == "}":
            scopes.pop()
            start = place + 1
        elif letter == "{":
            named = re.fullmatch(rf"(namespace|class|struct)\s+(?:({API})\s+)?([\w:]+)?(?:\s+final)?(?:\s*:(?!:).*)?", head)
            if named and named[1] == "namespace":
                scopes.append(Scope(named[3] or ""))
            elif named:
                top.types.add(named[3])
                exported = bool(named[2]) or (top.is_class and top.exported)
                # what is nested in private is private, whatever it says
                access = "public" if named[1] == "struct" else "private"
                scopes.append(Scope(named[3], True, access, exported))
            else:
                if enum := re.match(r"enum\s+(?:class\s+)?(\w+)", head):
                    top.types.add(enum[1])
                place = closing(text, place) - 1
                if "(" in head and not re.match(r"enum|friend|template", head):
                    yield scopes, head
                elif text[place + 1:].lstrip().startswith((";", ",", "=")) or re.match(r"\s*\w+\s*;", text[place + 1:]):
                    place = text.index(";", place)
            start = place + 1
        place += 1


def split(arguments):
    """The arguments between the commas that stand in no bracket."""
    parts, depth, part = [], 0, ""
    for letter in arguments:
        depth += {"<": 1, "(": 1, "{": 1, ">": -1, ")": -1, "}": -1}.get(letter, 0)
        if letter == "," and depth == 0:
            parts.append(part)
            part = ""
        else:
            part += letter
    return [part.strip() for part in parts + [part] if part.strip()]


def type_of(argument):
    argument = re.sub(r"\s*=.*", "", argument)
    named = re.fullmatch(r"(.*[&*>\s])\s*(\w+)", argument)
    if named and named[1].strip() not in ("const", "unsigned", "enum"):
        argument = named[1]
    return argument.strip()


class Function:
    """What the headers say of one function."""

    def __init__(self, scopes, head):
        self.scopes = [scope for scope in scopes if scope.is_class]
        self.space = "".join(f"{scope.name}::" for scope in scopes if scope.name and not scope.is_class)
        self.owner = "::".join(scope.name for scope in self.scopes)
        self.types = {name: f"{self.owner}::{name}" for scope in self.scopes for name in scope.types}
        self.is_exported = bool(re.search(API, head)) or any(scope.exported for scope in self.scopes)
        self.access = "private" if any(s.access == "private" for s in self.scopes) else ("protected" if any(s.access == "protected" for s in self.scopes) else "public")
        self.is_static = bool(re.match(r"(?:\w+\s+)*static\b", head))
        head = re.sub(rf"\b(?:{API}|static|virtual|explicit|constexpr|inline)\b\s*", "", head)
        match = re.match(r"(.*?)((?:operator\s*\(\)|operator\W+|~?\w+))\s*\(", head)
        if not match:
            raise SystemExit(f"hostile_calls.py cannot read: {head}")
        self.name = match[2].replace(" ", "")
        depth, end = 1, match.end()
        while depth:
            depth += {"(": 1, ")": -1}.get(head[end], 0)
            end += 1
        self.arguments = [type_of(argument) for argument in split(head[match.end():end - 1]) if argument != "void"]
        self.head, self.answer, tail = head, match[1].strip(), head[end:]
        own = self.owner.rpartition("::")[2]
        self.is_constructor = bool(own) and self.name == own
        copies = self.is_constructor and [re.sub(r"\bconst\b|&|\s", "", a) for a in self.arguments] == [own]
        self.is_counted = (self.is_exported and self.access != "private" and not copies
                           and not (self.is_constructor and self.access == "protected")
                           and "delete" not in tail and not self.name.startswith("~") and self.name != "operator=")

    def left_out(self):
        full = f"{self.owner}::{self.name}" if self.owner else self.name
        return any(key in (full, self.owner, self.owner.rpartition("::")[2]) for key in LEFT_OUT)

    def signature(self):
        return f"{self.owner + '::' if self.owner else ''}{self.name}({', '.join(self.arguments)})"

    def made(self, name, type_text):
        """The statements that make an argument or the object of a member, and how it is handed over."""
        pointer, value = type_text.endswith("*"), re.sub(r"\bconst\b ?|[&*]$|\bmath::", "", type_text).strip()
        value = self.types.get(value, value)
        value = re.sub(r"(?<=<)(\w+)(?=>)", lambda m: self.types.get(m[1], m[1]), value)
        if value == "char" and pointer:
            return "", "feed.Text()"
        if value == "void":
            return "", "nullptr"
        if type_text.endswith("*&"):
            return f"{type_text[:-1]} {name} = nullptr;", name
        if value.startswith("CCad") and value not in VALUES:
            make = f"auto* {name} = feed.Object<{value}>({'true' if pointer else 'false'});"
            use = f"feed.Release({name})" if self.name in TAKES_OVER else name
            return make, use if pointer else f"*{name}"
        element = re.fullmatch(r"std::vector<(.*)>", value)
        make = f"std::vector<{element[1]}>{{{', '.join([VALUES[element[1]]] * 5)}}}" if element and element[1] in VALUES else VALUES.get(value)
        if make is None:
            raise SystemExit(f"hostile_calls.py does not know how to make a {value} for {self.signature()}")
        make = make.replace("@", name) + ";" if "@" in make else f"{value} {name} = {make};"
        return make, f"&{name}" if pointer else name

    def row(self):
        made = [self.made(f"a{number}", text) for number, text in enumerate(self.arguments)]
        arguments = ", ".join(use for _, use in made)
        if self.is_constructor:
            call = f"{self.owner} made{{{arguments}}}" if not made else f"{self.owner} made({arguments})"
        elif self.is_static or not self.owner:
            call = f"{self.owner + '::' if self.owner else self.space}{self.name}({arguments})"
        else:
            made.insert(0, self.made("object", self.owner))
            call = f"{'(' + made[0][1] + ')'}.{self.name}({arguments})"
        if self.name in MAKES:
            call = f"delete {call}"
        elif not self.is_constructor and self.answer != "void":
            call = f"(void){call}"
        # an object that is answered by way of an argument is the caller's, unless it is constant
        call += "".join(f"; delete a{number}" for number, text in enumerate(self.arguments) if text == "CCadPolyline*&")
        lines = "".join(f"         {make}\n" for make, _ in made if make)
        return f'    {{"{self.signature()}", []([[maybe_unused]] Feed& feed) {{\n{lines}         {call};\n     }}}},\n'


def main():
    output, headers = sys.argv[1], sorted(sys.argv[2:])
    functions = [Function(scopes[:], head) for header in headers for scopes, head in declarations(code_of(header))]
    counted = {function.signature(): function for function in functions if function.is_counted}
    names = {name for f in functions for name in (f.owner.rpartition("::")[2], f.name, f"{f.owner}::{f.name}")}
    if unknown := [name for name in LEFT_OUT if name not in names]:
        raise SystemExit(f"hostile_calls.py leaves out what there is not: {', '.join(unknown)}")
    called = [function for function in counted.values() if not function.left_out()]
    opened = {}
    for function in called:
        if function.access == "protected":
            opened.setdefault(function.owner, {})[f"using {function.owner}::{function.name};"] = True
    includes = "".join(f"#include <{re.sub(r'.*include/', '', header)}>\n" for header in headers)
    opens = "".join(f"struct Open{owner} : {owner} {{ {' '.join(uses)} }};\n" for owner, uses in opened.items())
    kinds = "".join(f"    []([[maybe_unused]] Feed& feed) -> CCadObject* {{ return {kind}; }},\n" for kind in KINDS)
    text = (f"// Written by tools/hostile/hostile_calls.py at build time.\n{includes}\n#include <gp_Trsf2d.hxx>\n#include <gp_Vec2d.hxx>\n\n#include \"hostile/feed.h\"\n\n"
            f"namespace hostile {{\nusing namespace math;\nusing namespace qev;\n{opens}\n"
            f"const std::vector<Maker>& Makers() {{\n    static const std::vector<Maker> makers{{\n{kinds}    }};\n    return makers;\n}}\n\n"
            f"const std::vector<Row>& Rows() {{\n    static const std::vector<Row> rows{{\n{''.join(f.row() for f in called)}    }};\n    return rows;\n}}\n\n}} // namespace hostile\n")
    path = pathlib.Path(output)
    path.write_text(text, newline="\n")
    print(f"{len(called)} functions called, {len(counted) - len(called)} left out")


if __name__ == "__main__":
    main()

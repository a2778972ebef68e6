#!/usr/bin/env python3
"""unmeasured.py EXPORTS SUBJECT.cpp...: which exported functions that go by a contour, a list or a group have no subject.

EXPORTS is the list that tools/check_exports keeps: of each function that takes such a thing there have to be as many
subjects as overloads, and of each method of one, one. Those that need none are named below with the reason. Prints what is
left over and exits with 1, also when a name below is no longer exported: then it would hide a new function."""

import collections
import re
import sys

NOT_MEASURED = {
    "what they take is one place, one piece or nothing, whatever the object holds": """
        _Arc _Circle _Ellipse _EllipseArc _Line _MultiSegments BeginOf GetAt GetMembers GetPiece GetSegment GetType Init
        IsPointInArc IsPointInLine IsPointInRectangle SetInnerObject SetStartPoint""",
    "called back, and empty unless a host writes them": """
        CadMultipleModifyEventTenchnicsCollect IncrementalAdd Refresh""",
    "the list is a setting or what a host reads of a table": "CollectFields SetIgnoreList",
    "they make what they put into the group": "AddToZoneManager MakeSectionData_RectPlane Reserve",
    "parts of those that are measured, which hosts do not call": """
        Add AddArcs AddCurve AddLines AllMembers Append Box CloneInner CloneMembers Cloned ContourOf DropIndex Emit
        EmitAllButLast EmitLast FindNear FitStretch Forget HandOver Index IsOpen Leave MadeFor MergeIntoFirst MoveSegments
        MoveStart Next ObjectWatch Pick PickedMembers PresentEnd Push Retrieve ReverseSegments StartOf TreeWalk""",
    "by the class that has nothing to copy": "CCadEllipseBase CCadObject CCadPolylineBase",
}
CONTOURS_AND_GROUPS = {
    "CCadGroup", "CCadMultiSegments", "CCadPolyline", "CCadPolylineBase", "CCadPolylineEx", "CCadRelationGroup", "CGroupIndex",
    "CRangeSet", "CTopoMultiPolyline", "TreeWalk",
}
TAKES = re.compile(r"qev::(CCad\w+|CTopo\w+|CGroupIndex|CRangeSet)( const)?[*&]|std::(vector|__cxx11::list)<")
FUNCTION = re.compile(r"(?P<scope>(?:\w+::)*)(?P<name>operator(?:\(\)|[^(]+)|~?\w+)(?:\[abi:\w+\])?\((?P<parameters>.*)\)")


def needed(exports):
    """How many subjects each name needs, and every name."""
    overloads, names = collections.Counter(), set()
    for line in exports:
        function = FUNCTION.fullmatch(line.split(" ", 1)[1].strip().removesuffix(" const"))
        if not function:
            continue # data
        name, owner = function["name"], function["scope"].split("::")[-2:][0]
        names.add(name)
        if TAKES.search(function["parameters"]):
            overloads[name] += 1
        elif owner in CONTOURS_AND_GROUPS and name.lstrip("~") != owner:
            overloads[name] += 0 # a method is named like others
    return {name: max(count, 1) for name, count in overloads.items()}, names


def main():
    with open(sys.argv[1], encoding="ascii") as exports:
        needs, names = needed(exports)
    measured = collections.Counter()
    for source in sys.argv[2:]:
        with open(source, encoding="ascii") as text:
            measured.update(re.findall(r'^    \{"([^" ]+)', text.read(), re.MULTILINE))
    excused = {name for group in NOT_MEASURED.values() for name in group.split()}
    left = [f"{name}: {measured[name]} of {count}" for name, count in sorted(needs.items())
            if name not in excused and measured[name] < count]
    gone = sorted(excused - names)
    for title, found in (("exported and not measured", left), ("not exported any more", gone)):
        if found:
            print(f"{title}: {', '.join(found)}")
    return 1 if left or gone else 0


if __name__ == "__main__":
    sys.exit(main())

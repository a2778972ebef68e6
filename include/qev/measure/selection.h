/// \file
/// Questions about objects and whole selections, which are lists of objects in drawing order: where they lie,
/// whether they are closed, what they are marked as. A walk into groups throws std::bad_alloc when memory is
/// refused.
#pragma once

#include <list>

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

class CCadObject;

/// A corner of the box round a selection: "TL", "TR", "BL" or "BR" (T is the larger y); any other key, null
/// included, gives the lower left corner. (0, 0) for an empty or null selection.
QEVCOMMON_API math::DPOINT2 GetCornerPoint(const std::list<CCadObject*>* selection, const char* corner);

/// Whether an object is closed: 1 closed, 0 open; a text is closed, null is open. A plain group answers what
/// its members agree on, -1 when they do not agree, -2 when it holds nothing. An empty group in front of the
/// other members is passed over, behind them it does not agree with them: hosts rely on that.
QEVCOMMON_API int IsClose(const CCadObject* object);

/// Whether no object of a selection is closed, the members of plain groups included; a text counts as closed.
/// True for an empty selection, false for null.
QEVCOMMON_API bool IsAllUnClosed(const std::list<CCadObject*>* selection);
/// Whether every object of a selection is closed, the members of plain groups included. What follows the
/// first text is not looked at: the answer is true when all before it is closed, as hosts rely on. True for
/// an empty selection, false for null.
QEVCOMMON_API bool IsAllClosed(const std::list<CCadObject*>* selection);
/// Whether every object of a selection is a dot, the members of plain groups included. True for an empty
/// selection, false for null.
QEVCOMMON_API bool IsAllDot(const std::list<CCadObject*>* selection);
/// Whether every object of a selection is a text, the members of plain groups included. False for an empty
/// selection, for one with an empty group at any depth, and for null.
QEVCOMMON_API bool IsAllText(const std::list<CCadObject*>* selection);

/// Whether an object is marked as a co-edge group: a plain group whose attribute "GroupType" is exactly "1".
/// False for null.
QEVCOMMON_API bool IsCoEdgeGroup(const CCadObject* object);
/// Whether an object is marked as a co-edge: its attribute "CoEdge" is exactly "true". False for null.
QEVCOMMON_API bool IsCoEdgeObject(const CCadObject* object);
/// Whether an object is marked as a co-edge of a tube: its attribute "TubeTrucateCoedge" (the key's own
/// spelling) or "IsCoedgeEdge" is exactly "1". False for null.
QEVCOMMON_API bool IsCoEdgeObject_Tube(const CCadObject* object);

/// Number of texts in an object, those in plain groups at any depth included: 1 for a text itself; 0 for
/// null.
QEVCOMMON_API int GetTextCount(const CCadObject* object);
/// Number of texts in a selection, those in plain groups at any depth included; 0 for null.
QEVCOMMON_API int GetTextCount(const std::list<CCadObject*>* selection);

} // namespace qev

/// \file
/// Questions about whole selections: lists of objects in drawing order.
#pragma once

#include <list>

#include <qev/export.h>
#include <qevmath/point.h>

namespace qev {

class CCadObject;

/// A corner of the box round a selection: "TL", "TR", "BL" or "BR" (T is the larger y); any other key, null
/// included, gives the lower left corner. (0, 0) for an empty or null selection.
QEVCOMMON_API math::DPOINT2 GetCornerPoint(const std::list<CCadObject*>* selection, const char* corner);

/// 1 closed, 0 open; a text is closed. A plain group answers what its members agree on, -1 when they do not,
/// -2 when it holds nothing. An empty group before the others is passed over, behind them it disagrees: kept
/// so.
QEVCOMMON_API int IsClose(const CCadObject* object);

/// Whether no contour of the selection is closed (a text counts as closed), plain groups searched. True for
/// an empty selection, false for null; so for the next two.
QEVCOMMON_API bool IsAllUnClosed(const std::list<CCadObject*>* selection);
/// Whether every contour is closed. A text ends the scan with true, whatever follows it: kept so.
QEVCOMMON_API bool IsAllClosed(const std::list<CCadObject*>* selection);
/// Whether every object is a dot.
QEVCOMMON_API bool IsAllDot(const std::list<CCadObject*>* selection);
/// Whether every object is a text. Unlike the others, an empty selection or nested group gives false.
QEVCOMMON_API bool IsAllText(const std::list<CCadObject*>* selection);

/// Number of texts in an object, plain groups searched: 1 for a text itself; 0 for null.
QEVCOMMON_API int GetTextCount(const CCadObject* object);
/// The same for all objects of a selection.
QEVCOMMON_API int GetTextCount(const std::list<CCadObject*>* selection);

} // namespace qev

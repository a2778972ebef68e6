/// \file
/// The co-edge marks that objects carry as attributes. Values are compared exactly; false for null.
#pragma once

#include <qev/export.h>

namespace qev {

class CCadObject;

/// A plain group whose "GroupType" is "1".
QEVCOMMON_API bool IsCoEdgeGroup(const CCadObject* object);
/// An object whose "CoEdge" is "true".
QEVCOMMON_API bool IsCoEdgeObject(const CCadObject* object);
/// An object whose "TubeTrucateCoedge" (the key's own spelling) or "IsCoedgeEdge" is "1".
QEVCOMMON_API bool IsCoEdgeObject_Tube(const CCadObject* object);

} // namespace qev

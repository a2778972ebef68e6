/// \file
/// Which technics an object carries.
///
/// Searches go through the object's list from its front and stop at the first match. A null object carries
/// none.
#pragma once

#include <qev/export.h>

namespace qev {

class CCadObject;
class CTechnics;

/// Whether the object carries any technics.
QEVCOMMON_API bool HasTechnics(const CCadObject* object);
/// Whether the object carries a technics of a type. Only its own list counts: the flag is there for callers
/// of old and changes nothing, tool paths are never searched.
QEVCOMMON_API bool HasTechnics(const CCadObject* object, int type, bool recursive);
/// Whether the object carries a technics of a type and a sub-type. A sub-type of -1 is a number like any
/// other.
QEVCOMMON_API bool HasTechnics(const CCadObject* object, int type, int subType);

/// The technics of a type and a sub-type, null when there is none; it stays the object's. A sub-type of -1
/// asks for the type's default technics, whose sub-type is the type's own number; only this function and
/// RefreshCadObject take it so.
QEVCOMMON_API CTechnics* GetTechnics(const CCadObject* object, int type, int subType);

/// Takes the first technics of a type off the object and hands it over to the caller; null when there is
/// none.
QEVCOMMON_API CTechnics* PickOffTechnics(CCadObject* object, int type);
/// Takes the first technics of a type and a sub-type off the object and hands it over to the caller; null
/// when there is none. A sub-type of -1 is a number like any other.
QEVCOMMON_API CTechnics* PickOffTechnics(CCadObject* object, int type, int subType);

/// Has the technics of a type and a sub-type refresh itself (a sub-type of -1 means the type's default), or
/// with a negative type every technics of the object; `data` is passed on as it is. True when one of them
/// says that it has changed, false for a null object and when there is none. A technics that is taken off the
/// object meanwhile is not refreshed any more. Throws std::bad_alloc when memory is refused.
QEVCOMMON_API bool RefreshCadObject(const CCadObject* object, int type, int subType, void* data);

} // namespace qev

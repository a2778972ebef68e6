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
/// Whether it carries one of a type. The flag changes nothing, tool paths are never searched: kept so.
QEVCOMMON_API bool HasTechnics(const CCadObject* object, int type, bool recursive);
/// Whether it carries one of a type and a sub-type. A sub-type of -1 is a number like any other.
QEVCOMMON_API bool HasTechnics(const CCadObject* object, int type, int subType);

/// The technics of a type and a sub-type, null when there is none; it stays the object's. A sub-type of -1
/// stands for the type itself, which marks a type's default technics; only here and in RefreshCadObject.
QEVCOMMON_API CTechnics* GetTechnics(const CCadObject* object, int type, int subType);

/// Takes the first technics of a type off the object and hands it over to the caller; null when there is
/// none.
QEVCOMMON_API CTechnics* PickOffTechnics(CCadObject* object, int type);
/// The same by type and sub-type. A sub-type of -1 is a number like any other.
QEVCOMMON_API CTechnics* PickOffTechnics(CCadObject* object, int type, int subType);

/// Has the technics that GetTechnics finds, or with a negative type every technics, refresh itself; `data` is
/// passed on. True when one of them says so.
QEVCOMMON_API bool RefreshCadObject(const CCadObject* object, int type, int subType, void* data);

} // namespace qev

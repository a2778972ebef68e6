/// \file
/// Collecting objects out of selections. What is found is appended to the output in drawing order; the
/// objects stay with their owners. Null lists act as empty; the output may be the selection itself. When
/// memory is refused, std::bad_alloc is thrown with the output as it was (CollectObject may have pushed
/// some).
#pragma once

#include <list>

#include <qev/export.h>
#include <qevdata/kinds.h>

namespace qev {

class CCadGroup;
class CCadObject;

/// Appends the objects of a selection that a mask of kind bits does not drop. With a mask that has any bit of
/// the group code 0x1900, as every kind code has, plain groups of the top level are dropped and everything
/// else is kept, whatever its kind: hosts rely on that. With another mask plain groups are searched for their
/// members, and every object whose kind code shares a bit with the mask is dropped.
QEVCOMMON_API void RemoveCadByType(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out,
                                   int mask);
/// Appends the objects of a selection whose kind is not listed. Plain groups are searched for their members
/// and never appended themselves; when the list holds their code 0x1900, they are dropped with all that they
/// hold.
QEVCOMMON_API void RemoveCadByType(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out,
                                   const std::list<cad_t>& kinds);

/// Appends every closed contour of a selection, of the members of its plain groups, and of the outlines of
/// its texts.
QEVCOMMON_API void CollectCloseCad(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out);
/// Appends every object of a selection and of its plain groups that is no plain group itself; texts, dots and
/// the kind 0x1300 are left out.
QEVCOMMON_API void CollectLeafNode(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out);
/// Pushes an object onto the back of a group; of a plain group instead every object that it holds at any
/// depth. The source groups keep their members, so that two groups hold them: the caller settles who owns
/// them. Nothing for null.
QEVCOMMON_API void CollectObject(CCadObject* object, CCadGroup* group);

} // namespace qev

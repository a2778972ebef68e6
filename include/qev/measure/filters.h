/// \file
/// Collecting objects out of selections. What is found is appended to the output in drawing order; the
/// objects stay with their owners. Null lists act as empty; the output may be the selection itself.
#pragma once

#include <list>

#include <qev/export.h>
#include <qevdata/kinds.h>

namespace qev {

class CCadGroup;
class CCadObject;

/// Appends what a mask lets through. A mask with a bit of 0x1900, so any kind code, only drops the plain
/// groups of the top level: kept so. Another mask searches plain groups and drops the kinds that share a bit
/// with it.
QEVCOMMON_API void RemoveCadByType(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out,
                                   int mask);
/// Appends the objects whose kind is not listed. Plain groups are searched, never appended; with 0x1900 in
/// the list they are dropped with what they hold.
QEVCOMMON_API void RemoveCadByType(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out,
                                   const std::list<cad_t>& kinds);

/// Appends every closed contour, searching plain groups and the outlines of texts.
QEVCOMMON_API void CollectCloseCad(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out);
/// Appends every leaf, searching plain groups; texts, dots and the kind 0x1300 are left out.
QEVCOMMON_API void CollectLeafNode(const std::list<CCadObject*>* selection, std::list<CCadObject*>* out);
/// Pushes an object, or the leaves of a plain group, onto the back of a group. The source groups keep their
/// members, so that two groups hold them: the caller settles who owns them.
QEVCOMMON_API void CollectObject(CCadObject* object, CCadGroup* group);

} // namespace qev

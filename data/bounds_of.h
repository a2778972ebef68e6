/// \file
/// The boxes of objects and of lists of them. Private to the data library.
#pragma once

#include <list>

#include <qevmath/bounds.h>

namespace qev {

class CCadObject;

/// The box of one object; empty without an outline.
math::Bounds BoxOf(const CCadObject& leaf);

/// Everything below a list of objects; objects without an outline add nothing.
math::Bounds BoundsOf(const std::list<CCadObject*>& objects);

} // namespace qev

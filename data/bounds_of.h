/// \file
/// The box round a list of objects. Private to the data library.
#pragma once

#include <list>

#include <qevmath/bounds.h>

namespace qev {

class CCadObject;

/// Everything below a list of objects; objects without an outline add nothing.
math::Bounds BoundsOf(const std::list<CCadObject*>& objects);

} // namespace qev

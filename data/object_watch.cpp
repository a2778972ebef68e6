// A pointer does not tell whether its object lives, so the object's destructor does: it strikes its address
// off the watches of its thread. They are a stack, nearly always an empty one, so that a destructor mostly
// looks at one pointer. The addresses are sorted when a watch is made, since a destructor may neither take
// memory nor time that grows with the objects watched. An address that is struck off stays so, also when
// another object is made there: who watches has not asked for that one.
//
// Rejected: to look whether the pointer is still on its list, which takes as many steps as the list is long
// each time, and does not see what has left a group on the list.

#include "object_watch.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace qev {
namespace {

thread_local ObjectWatch* t_pInnermost = nullptr;

} // namespace

ObjectWatch::ObjectWatch(std::vector<const void*> objects)
    : m_vecObjects(std::move(objects)), m_vecDestroyed(m_vecObjects.size()), m_pOuter(t_pInnermost) {
    std::sort(m_vecObjects.begin(), m_vecObjects.end(), std::less<>());
    t_pInnermost = this;
}

ObjectWatch::~ObjectWatch() {
    t_pInnermost = m_pOuter;
}

bool ObjectWatch::Lives(const void* object) const {
    const auto place = std::lower_bound(m_vecObjects.begin(), m_vecObjects.end(), object, std::less<>());
    return object && place != m_vecObjects.end() && *place == object
           && !m_vecDestroyed[place - m_vecObjects.begin()];
}

void ObjectWatch::Forget(const void* object) noexcept {
    for (ObjectWatch* watch = t_pInnermost; watch; watch = watch->m_pOuter) {
        const auto& all = watch->m_vecObjects;
        const auto place = std::lower_bound(all.begin(), all.end(), object, std::less<>());
        if (place != all.end() && *place == object) watch->m_vecDestroyed[place - all.begin()] = true;
    }
}

} // namespace qev

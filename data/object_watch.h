/// \file
/// Which objects and technics have been destroyed while foreign code ran. Not installed: for the library
/// itself, and for the technics of the common library.
#pragma once

#include <vector>

#include <qev/export.h>

namespace qev {

/// Tells which of some objects live while operators of plug-ins may delete any of them. The watches of a
/// thread end in the opposite order of their making, and see what this thread destroys.
class QEVDATA_API ObjectWatch {
public:
    /// Watches objects and technics that live now, in any order; null is passed over. Throws std::bad_alloc
    /// when memory is refused.
    explicit ObjectWatch(std::vector<const void*> objects);
    ~ObjectWatch();
    ObjectWatch(const ObjectWatch&) = delete;
    ObjectWatch& operator=(const ObjectWatch&) = delete;

    /// Whether an object is watched and has not been destroyed since. Takes the logarithm of their number.
    bool Lives(const void* object) const;

    /// Called by the destructors of CCadObject and CTechnics: the watches of this thread strike the object
    /// off. Needs no memory.
    static void Forget(const void* object) noexcept;

private:
    std::vector<const void*> m_vecObjects; // by address
    std::vector<bool> m_vecDestroyed;      // for each of them
    ObjectWatch* const m_pOuter;           // the watch that was there before
};

} // namespace qev

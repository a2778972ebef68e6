/// \file
/// The places of a drawing's objects, for who takes some out or puts others in.
#pragma once

#include <list>

#include <qevdata/qevdata.h>

namespace host {

/// Where an object stands: its group, and its place in the group's list.
struct LeafPlace {
    qev::CCadGroup* group = nullptr;              ///< belongs to the drawing
    std::list<qev::CCadObject*>::iterator object; ///< stays valid until the object is taken out

    /// The object itself, which belongs to its group.
    qev::CCadObject& Object() const { return **object; }

    /// Deletes the object and takes it out of its group.
    void Delete() const {
        delete *object;
        group->GetObjectsList().erase(object);
    }
};

/// Calls a function with the LeafPlace of each object that is no group, in drawing order, through the groups
/// in groups, which must not be nested deeper than inserts are (32). The function must not change a list.
template <class Visit>
void ForEachLeaf(qev::CCadGroup& root, const Visit& visit) {
    auto& objects = root.GetObjectsList();
    for (auto place = objects.begin(); place != objects.end(); ++place) {
        if (auto* inner = dynamic_cast<qev::CCadGroup*>(*place))
            ForEachLeaf(*inner, visit);
        else
            visit(LeafPlace{&root, place});
    }
}

} // namespace host

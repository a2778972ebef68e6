#include "drawing.h"

namespace host {

// A text counts as one object, although it holds a group of strokes: the walk is told that it has no members.
std::vector<const qev::CCadObject*> Drawing::Objects() const {
    const auto members = [](const qev::CCadObject& object) {
        return object.GetType() == qev::kCadText ? nullptr : object.GetMembers();
    };
    std::vector<const qev::CCadObject*> objects;
    qev::TreeWalk walk(&root, members);
    for (auto step = walk.Next(); step != qev::TreeWalk::Step::kEnd; step = walk.Next())
        if (step == qev::TreeWalk::Step::kLeaf) objects.push_back(walk.Object());
    return objects;
}

} // namespace host

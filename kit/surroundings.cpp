// Where the scrap is. A contour that lies in no other is a part, one in it a hole, one in that a part again:
// a point is in the material of some part when the number of contours that hold it is odd. This is asked for
// the point itself and not for the contour as a whole, so that it is right as well where contours cross and
// no nesting describes them.
//
// Of a drawing of n contours a question looks at those whose boxes meet the point or path, which the index
// finds in a logarithm.

#include <algorithm>

#include <qevtechnics/surroundings.h>

namespace qev::kit {
namespace {

constexpr double kOnOutline = 1e-9; // mm: what counts as on an outline, above the rounding of positions

} // namespace

std::vector<const CCadObject*> Surroundings::Others(const CadRect& box, double margin,
                                                    const CCadObject& object) const {
    if (!m_pDrawing) return {};
    if (!m_pIndex) m_pIndex = std::make_unique<CGroupIndex>(m_pDrawing);
    std::vector<CCadObject*> found;
    m_pIndex->Collect({box.x - margin, box.y - margin, box.width + 2 * margin, box.height + 2 * margin},
                      found);
    std::erase_if(found, [&](const CCadObject* each) {
        return each == &object || each->GetType() == kCadText || each->GetPieceCount() == 0;
    });
    return {found.begin(), found.end()};
}

bool Surroundings::IsScrap(const math::DPOINT2& p, const CCadObject& object) const {
    auto around = Others({p.x, p.y, 0, 0}, 0, object);
    around.push_back(&object);
    bool isScrap = true;
    for (const CCadObject* each : around) {
        const PointSide side = GetPointSide(each, p, kOnOutline);
        if (side == PointSide::kOn) return false;
        if (side == PointSide::kInside) isScrap = !isScrap;
    }
    return isScrap;
}

bool Surroundings::IsClear(const CCadObject& path, double clearance, const CCadObject& object) const {
    const auto near = Others(path.GetBoundRect(), clearance, object);
    return std::all_of(near.begin(), near.end(),
                       [&](const CCadObject* each) { return GetClearance(&path, each) >= clearance; });
}

} // namespace qev::kit

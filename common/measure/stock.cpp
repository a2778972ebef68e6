// Rectangular plate stock. A plate is its section, which is one rectangle about the origin, and its
// thickness, which is the stock's scalar parameter. Reading a plate back takes the two sides that leave the
// lower left corner; their lengths are those that it was made with up to the rounding of the corners.

#include <algorithm>
#include <cmath>
#include <memory>

#include <qev/measure/stock.h>
#include <qevdata/adobe.h>
#include <qevdata/group.h>
#include <qevdata/polyline.h>

namespace qev {
namespace {

constexpr double kSamePoint = 1e-6; // mm: outlines drawn twice differ by less
// Bulges this near are one arc: over a chord of 1 m they are 5e-7 mm apart.
constexpr double kSameBulge = 1e-9;

const CCadPolyline* OnlyPolyline(const CCadGroup& section) {
    return section.GetNumOfChild() == 1 ? dynamic_cast<const CCadPolyline*>(section.GetFront()) : nullptr;
}

bool IsSameSegment(const SEGMENT& a, const SEGMENT& b) {
    return a.nType == b.nType && math::D2GetDistance(a.ptStart, b.ptStart) <= kSamePoint
           && math::D2GetDistance(a.ptEnd, b.ptEnd) <= kSamePoint
           && std::abs(a.dBulge - b.dBulge) < kSameBulge;
}

bool IsSameContour(const CCadObject* a, const CCadObject* b) {
    if (!a || !b || a->GetType() != b->GetType() || a->GetSegmentCount() != b->GetSegmentCount())
        return false;
    for (int i = 0, count = a->GetSegmentCount(); i < count; ++i)
        if (!IsSameSegment(a->GetSegment(i), b->GetSegment(i))) return false;
    return true;
}

} // namespace

Adobe* Make_RectPlane(double width, double height, double thickness) {
    auto stock = std::make_unique<Adobe>(kRectPlaneStock);
    MakeSectionData_RectPlane(stock->GetSectionData(), width, height);
    stock->SetScalarParam(thickness);
    return stock.release();
}

void MakeSectionData_RectPlane(CCadGroup* section, double width, double height) {
    if (!section) return;
    auto rectangle = std::make_unique<CCadPolyline>(true);
    const math::DPOINT2 lower{-width / 2, -height / 2};
    const math::DPOINT2 upper{lower.x + width, lower.y + height};
    rectangle->SetStartPoint(lower);
    rectangle->AddLine({upper.x, lower.y});
    rectangle->AddLine(upper);
    rectangle->AddLine({upper.x - width, upper.y});
    rectangle->AddLine({upper.x - width, upper.y - height});
    section->PushBack(rectangle.get());
    (void)rectangle.release(); // not before the section has it
}

bool GetRectPlaneParam(const Adobe* stock, double& width, double& height, double& thickness) {
    if (!stock || stock->GetKind() != kRectPlaneStock) return false;
    const CCadPolyline* rectangle = OnlyPolyline(*stock->GetSectionData());
    if (!rectangle || rectangle->GetNodeCount() < 2) return false;
    width = rectangle->GetAt(0).x - rectangle->GetStartPoint().x;
    height = rectangle->GetAt(1).y - rectangle->GetAt(0).y;
    thickness = stock->GetScalarParam();
    return false;
}

bool CAdobeHelper::IsSameProjectContour(const CCadGroup* a, const CCadGroup* b) {
    if (!a || !b) return false;
    const auto& left = a->GetObjectsList();
    const auto& right = b->GetObjectsList();
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), IsSameContour);
}

} // namespace qev

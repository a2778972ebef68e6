// Sides, nesting and clearance against samples of the outlines.
#include <vector>

#include "input.h"

namespace {

using namespace qev;
using namespace fuzz;

// How often a closed outline goes round p, by the angles under which p sees its samples.
long SampledWinding(const CCadObject& object, const DPOINT2& p) {
    const int samples = 200 * object.GetPieceCount();
    double turned = 0;
    DPOINT2 from = Along(object, 0) - p;
    for (int i = 1; i <= samples; ++i) {
        const DPOINT2 to = Along(object, i / double(samples)) - p;
        turned += std::atan2(math::Cross(from, to), math::Dot(from, to));
        from = to;
    }
    return std::lround(turned / math::kTwoPi);
}

// Nearer to the outline than half a step of the samples they do not tell.
void ExpectSide(const CCadObject& object, const DPOINT2& p) {
    DPOINT2 nearest;
    const double distance = GetMinDistance(&object, p, nearest);
    if (distance > 0 && distance < 1e-3 + object.GetLength() / 200) return;
    const bool isInside = distance > 0 && object.IsClose() && SampledWinding(object, p) != 0;
    const PointSide side = isInside ? PointSide::kInside : PointSide::kOutside;
    for (int question = 0; question < 3; ++question) // the later ones by an index
        Expect(GetPointSide(&object, p, 0) == (distance == 0 && object.IsClose() ? PointSide::kOn : side),
               "the side is that of the winding number");
}

// The samples are those of one outline; the other one is measured from each exactly. So they are never nearer
// than the outlines are, and farther by half a step at most. Round the nearest one the least distance is
// searched.
void ExpectClearance(const CCadObject& a, const CCadObject& b) {
    constexpr int kSamples = 100;
    constexpr double kRounding = 1e-9; // mm
    DPOINT2 nearest;
    const auto distance = [&](double u) { return GetMinDistance(&b, Along(a, u), nearest); };
    double best = 0, step = 0;
    for (int i = 1; i <= kSamples; ++i) {
        const double u = i / double(kSamples), before = (i - 1) / double(kSamples);
        step = std::max(step, math::D2GetDistance(Along(a, before), Along(a, u)));
        if (distance(u) < distance(best)) best = u;
    }
    const double clearance = GetClearance(&a, &b);
    Expect(clearance >= distance(best) - step - kRounding, "outlines are farther apart");
    double from = std::max(0.0, best - 1.0 / kSamples), to = std::min(1.0, best + 1.0 / kSamples);
    for (int i = 0; i < 40; ++i) {
        const double third = (to - from) / 3;
        const bool isLower = distance(from + third) < distance(to - third);
        (isLower ? to : from) += isLower ? -third : third;
    }
    Expect(clearance <= std::min(distance(best), distance(from)) + 2e-6, "outlines are nearer");
    Expect(std::abs(GetClearance(&b, &a) - clearance) < 3e-6, "it is the same either way");
}

// The parent by the definition, over all pairs: the least contour that has a sample of the other one inside,
// unless areas are nearly the same or outlines cross by less than the samples tell.
void ExpectParent(const std::vector<ContourNesting>& nesting, const ContourNesting& own) {
    const auto area = [](const CCadObject* contour) {
        double twice = 0;
        for (int i = 0; i < 120; ++i)
            twice += math::Cross(Along(*contour, i / 120.0) - Along(*contour, 0),
                                 Along(*contour, (i + 1) / 120.0) - Along(*contour, 0));
        return std::abs(twice / 2);
    };
    constexpr double kOn = 1e-6; // mm; so near to an outline no sample tells
    const CCadObject* parent = nullptr;
    const double inner = area(own.pContour);
    for (const ContourNesting& other : nesting) {
        const double outer = area(other.pContour);
        const auto isAsLarge = [outer](double size) { return outer < 1.01 * size && size < 1.01 * outer; };
        if (other.pContour != own.pContour && isAsLarge(inner)) return;
        if (other.pContour == own.pContour || outer < inner) continue;
        bool isIn = false;
        for (int i = 0; i < 60 && !isIn; ++i)
            isIn = GetPointSide(other.pContour, Along(*own.pContour, i / 60.0), kOn) == PointSide::kInside;
        if (!isIn && GetClearance(other.pContour, own.pContour) < 1e-3) return;
        if (isIn && parent && isAsLarge(area(parent))) return;
        if (isIn && (!parent || outer < area(parent))) parent = other.pContour;
    }
    Expect(own.pParent == parent, "the parent is the least contour that has a part of it inside");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Input in(data, size);
    const DPOINT2 p = in.Point();
    std::vector<std::unique_ptr<CCadObject>> objects;
    std::list<CCadObject*> selection;
    for (int i = in.Int(2, 8); i > 0; --i) selection.push_back(objects.emplace_back(in.Object()).get());
    const int question = in.Int(0, 2);
    if (in.IsHostile()) {
        for (const auto& object : objects) GetPointSide(object.get(), p, in.Number());
        GetClearance(objects[0].get(), objects[1].get());
    } else if (question == 1) {
        ExpectSide(*objects[0], p);
    } else if (question == 2) {
        ExpectClearance(*objects[0], *objects[1]);
    }
    if (question > 0) return 0;
    std::vector<ContourNesting> nesting;
    GetNesting(&selection, nesting);
    const bool isSimple = std::all_of(nesting.begin(), nesting.end(), [](auto& own) {
        return own.pContour->GetPieceCount() == 1 || own.pContour->GetType() == kCadRectangle;
    });
    const int last = static_cast<int>(nesting.size()) - 1;
    if (isSimple && last >= 0 && !in.IsHostile()) ExpectParent(nesting, nesting[in.Int(0, last)]);
    return 0;
}

// The tool paths of an object say by their role what they are for (qevtechnics/paths.h). A contour without
// bridges is cut from where its lead-in meets it all the way round; one with bridges is cut in the pieces
// between them, of which a lead-in begins one in the middle, so that this one is cut in two.

#include "cutting_plan.h"

#include <algorithm>
#include <unordered_map>

#include <qev/qev.h>

#include <qevtechnics/paths.h>

#include "nearest_next.h"

namespace host {
namespace {

using qev::kit::HasRole;

// The tool paths of an object by what they are for.
struct Paths {
    explicit Paths(const qev::CCadObject& object) {
        for (const qev::CCadObject* path : object.GetToolPathList()) {
            if (HasRole(*path, qev::kit::kLeadInRole))
                in = path;
            else if (HasRole(*path, qev::kit::kLeadOutRole))
                out = path;
            else if (HasRole(*path, qev::kit::kOverlapRole))
                overlap = path;
            else
                pieces.push_back(path);
        }
    }

    const qev::CCadObject* in = nullptr;
    const qev::CCadObject* out = nullptr;
    const qev::CCadObject* overlap = nullptr;
    std::vector<const qev::CCadObject*> pieces; // of the contour, between the bridges
};

math::DPOINT2 StartOf(const qev::CCadObject& object, const Paths& paths) {
    if (paths.in) return paths.in->GetStartPoint();
    return paths.pieces.empty() ? object.GetStartPoint() : paths.pieces.front()->GetStartPoint();
}

math::DPOINT2 EndOf(const qev::CCadObject& object, const Paths& paths) {
    if (paths.out) return paths.out->GetEndPoint();
    if (paths.overlap) return paths.overlap->GetEndPoint();
    if (paths.in && object.IsClose()) return paths.in->GetEndPoint();
    return paths.pieces.empty() ? object.GetEndPoint() : paths.pieces.back()->GetEndPoint();
}

Cut CutOf(const qev::CCadObject& object, int number) {
    const Paths paths(object);
    double along = 0;
    for (const qev::CCadObject* piece : paths.pieces) along += piece->GetLength();
    const double whole = qev::GetCadLength(&object);
    const bool isWhole = paths.pieces.empty();
    Cut cut;
    cut.object = number;
    cut.start = StartOf(object, paths);
    cut.end = EndOf(object, paths);
    cut.length = isWhole ? whole : along;
    for (const qev::CCadObject* more : {paths.in, paths.out, paths.overlap})
        if (more) cut.length += more->GetLength();
    cut.rapid = isWhole ? 0 : std::max(0.0, whole - along);
    cut.pierces = isWhole ? 1 : static_cast<int>(paths.pieces.size());
    if (!isWhole && paths.in && object.IsClose()) ++cut.pierces;
    return cut;
}

bool IsCut(const qev::CCadObject& object) {
    const bool isContour = qev::GetCadSegments(&object) > 0;
    return isContour && (object.IsClose() || !object.GetToolPathList().empty());
}

// The cuts in drawing order, those of open objects apart.
struct Cuts {
    std::vector<Cut> open, closed;
    std::vector<Visit> openVisits, closedVisits;
};

Cuts CutsOf(const std::vector<const qev::CCadObject*>& objects, const Drawing& drawing) {
    Cuts cuts;
    std::unordered_map<const qev::CCadObject*, int> places; // among the closed ones
    for (std::size_t i = 0; i < objects.size(); ++i) {
        if (!IsCut(*objects[i])) continue;
        const bool isClosed = objects[i]->IsClose();
        const Cut cut = CutOf(*objects[i], static_cast<int>(i));
        if (isClosed) places[objects[i]] = static_cast<int>(cuts.closed.size());
        (isClosed ? cuts.closed : cuts.open).push_back(cut);
        (isClosed ? cuts.closedVisits : cuts.openVisits).push_back({cut.start, cut.end});
    }
    std::vector<qev::ContourNesting> nesting;
    qev::GetNesting(&drawing.root.GetObjectsList(), nesting);
    for (const qev::ContourNesting& each : nesting)
        if (const auto place = places.find(each.pContour), outer = places.find(each.pParent);
            place != places.end() && outer != places.end())
            cuts.closedVisits[place->second].outer = outer->second;
    return cuts;
}

// Appends cuts in the order of their visits, and sums up.
void Append(CuttingPlan& plan, const std::vector<Cut>& cuts, const std::vector<Visit>& visits,
            math::DPOINT2& at) {
    for (const int next : NearestNext(visits, at)) {
        Cut cut = cuts[next];
        cut.rapid += math::Norm(cut.start - at);
        cut.seconds = 60 * (cut.length / plan.speeds.feed + cut.rapid / plan.speeds.rapid)
                      + cut.pierces * plan.speeds.pierce;
        at = cut.end;
        plan.rapid += cut.rapid;
        plan.length += cut.length;
        plan.pierces += cut.pierces;
        plan.seconds += cut.seconds;
        cut.number = static_cast<int>(plan.cuts.size()) + 1;
        plan.cuts.push_back(cut);
    }
}

} // namespace

CuttingPlan PlanCuts(const Drawing& drawing, const Speeds& speeds) {
    const std::vector<const qev::CCadObject*> objects = drawing.Objects();
    const Cuts cuts = CutsOf(objects, drawing);
    CuttingPlan plan;
    plan.speeds = speeds;
    math::DPOINT2 at = qev::GetCornerPoint(&drawing.root.GetObjectsList(), "BL");
    Append(plan, cuts.open, cuts.openVisits, at);
    Append(plan, cuts.closed, cuts.closedVisits, at);
    plan.uncut = static_cast<int>(objects.size() - plan.cuts.size());
    return plan;
}

} // namespace host

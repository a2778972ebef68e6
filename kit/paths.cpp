// Tool paths tell by an attribute what they are for. Plug-ins do not know each other's classes, and need not:
// a bridge has to keep off the place where a lead-in ends, whoever made that, and a host that shows bridges
// has to find what no path cuts.
//
// A path that belongs to a contour begins and ends on it, so that its ends tell the positions.

#include <qevtechnics/paths.h>

namespace qev::kit {
namespace {

// Appends the range of a contour between two points on it.
void AddRange(std::vector<math::PosRange>& ranges, const CCadMultiSegments& contour,
              const math::DPOINT2& from, const math::DPOINT2& to) {
    math::PosRange range;
    if (CoorToPos(&contour, from, range.start) && CoorToPos(&contour, to, range.end)) ranges.push_back(range);
}

// The attribute of an object that holds why its technics of a name have no paths.
std::string LostKey(const char* technics) {
    return std::string("LostPaths.") + technics;
}

} // namespace

void SetLostPaths(CCadObject& object, const char* technics, const std::string& why) {
    if (!why.empty() || !WhyLostPaths(object, technics).empty())
        object.SetKey(LostKey(technics).c_str(), why.c_str());
}

std::string WhyLostPaths(const CCadObject& object, const char* technics) {
    return object.GetKey(LostKey(technics).c_str()).GetString();
}

void AddPath(Paths& paths, std::unique_ptr<CCadObject> path, const char* role) {
    if (!path) return;
    path->SetKey(kPathRole, role);
    paths.push_back(std::move(path));
}

bool HasRole(const CCadObject& path, const char* role) {
    return path.GetKey(kPathRole) == role;
}

std::vector<math::PosRange> FindEntries(const CCadObject& object, const CCadMultiSegments& contour) {
    std::vector<math::PosRange> entries;
    for (const CCadObject* path : object.GetToolPathList()) {
        const bool isIn = HasRole(*path, kLeadInRole), isOut = HasRole(*path, kLeadOutRole);
        if (!isIn && !isOut && !HasRole(*path, kOverlapRole)) continue;
        const math::DPOINT2 start = path->GetStartPoint(), end = path->GetEndPoint();
        AddRange(entries, contour, isIn ? end : start, isOut ? start : end);
    }
    return entries;
}

std::vector<Stretch> FindBridges(const CCadObject& object, const CCadMultiSegments& contour) {
    std::vector<math::PosRange> cuts;
    for (const CCadObject* path : object.GetToolPathList())
        if (HasRole(*path, kCutRole)) AddRange(cuts, contour, path->GetStartPoint(), path->GetEndPoint());
    return cuts.empty() ? std::vector<Stretch>() : StretchesBetween(contour, cuts);
}

} // namespace qev::kit

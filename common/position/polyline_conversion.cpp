// Conversion to polylines: the settings text and the segment map round the converter of the data library. The
// map of a curve is all zeros, because all segments come from its one piece; the others keep their segments,
// so that theirs counts up.

#include <iterator>
#include <memory>
#include <numeric>

#include <qev/position/polyline_conversion.h>
#include <qevdata/converter.h>
#include <qevdata/polyline.h>

#include "../kinds/cad_kinds.h"
#include "../kinds/conversion_settings.h"

namespace qev {
namespace {

CCadPolyline* Convert(const CCadObject* object, const char* segmentType, double error) {
    CCadPolyline* polyline = nullptr;
    CConvertCadObjectToCadPolyline(ConversionSettings(segmentType, error).c_str())(object, polyline);
    return polyline;
}

// Whether the object is one piece that a polyline divides: a line stays one segment.
bool IsCurve(const CCadObject* object) {
    return VisitCad(object, kSegmentContours,
                    Handle{[](const SinglePiece auto&) { return true; },
                           [](const CCadLine&) { return false; }, Others<CCadDot, Contour>(false)});
}

} // namespace

CCadPolyline* Convert2Polyline(const CCadObject* object, int nSegmentType, double dAbsoluteError) {
    constexpr const char* kSegmentTypes[] = {"Both", "Line", "Arc"};
    if (!object || nSegmentType < 0 || nSegmentType >= static_cast<int>(std::size(kSegmentTypes)))
        return nullptr;
    return Convert(object, kSegmentTypes[nSegmentType], dAbsoluteError);
}

CCadPolyline* Convert2Polyline(const CCadObject* object, double dAbsoluteError) {
    return Convert2Polyline(object, 0, dAbsoluteError);
}

CCadPolyline* Convert2Polyline(const CCadObject* object, std::vector<int>& segMap, double dAbsoluteError) {
    std::unique_ptr<CCadPolyline> polyline(Convert2Polyline(object, dAbsoluteError));
    if (!polyline) return nullptr;
    const auto count = static_cast<std::size_t>(polyline->GetSegmentCount());
    if (IsCurve(object)) {
        segMap.insert(segMap.begin(), count, 0);
    } else {
        segMap.resize(segMap.size() + count);
        std::iota(segMap.end() - static_cast<std::ptrdiff_t>(count), segMap.end(), 0);
    }
    return polyline.release();
}

} // namespace qev

// A contour is built, measured, converted and cut with the headers and libraries of the package; the exit
// code is the number of the first step that failed.
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include <qev/qev.h>
#include <qevdata/qevdata.h>

namespace {

std::string VersionOfHeaders() {
    return std::to_string(QEV_VERSION_MAJOR) + '.' + std::to_string(QEV_VERSION_MINOR) + '.'
           + std::to_string(QEV_VERSION_PATCH);
}

} // namespace

int main() {
    if (VersionOfHeaders() != QEV_VERSION_STRING) return 1;
    if (VersionOfHeaders() != qev::GetVersion()) return 2;

    qev::CCadPolyline slot;
    slot.SetStartPoint({0, 0});
    slot.AddLine({10, 0});
    slot.AddArc({10, 4}, 1);
    slot.AddLine({0, 4});
    slot.AddArc({0, 0}, 1);
    if (qev::GetCadSegments(&slot) != 4) return 3;
    if (!slot.IsClose()) return 4;
    const double area = qev::GetCadPolylineArea(&slot, false);
    if (std::abs(area - (40 + 4 * std::acos(-1.0))) > 1e-9) return 5;
    const std::unique_ptr<qev::CCadPolyline> chords(qev::Convert2Polyline(&slot, 1, 0.01));
    if (!chords) return 6;
    std::printf("QevCommon %s\n", qev::GetVersion());
}

// A contour is built, measured, converted and cut with the installed headers and libraries.
#include <cmath>
#include <memory>

#include <qev/qev.h>
#include <qevdata/qevdata.h>

int main() {
    qev::CCadPolyline slot;
    slot.SetStartPoint({0, 0});
    slot.AddLine({10, 0});
    slot.AddArc({10, 4}, 1);
    slot.AddLine({0, 4});
    slot.AddArc({0, 0}, 1);
    const std::unique_ptr<qev::CCadPolyline> chords(qev::Convert2Polyline(&slot, 1, 0.01));
    const double area = qev::GetCadPolylineArea(&slot, false);
    const bool works = qev::GetCadSegments(&slot) == 4 && slot.IsClose() && chords;
    return works && std::abs(area - (40 + 4 * std::acos(-1.0))) < 1e-9 ? 0 : 1;
}

// A contour is built, measured, converted and cut with the installed headers and libraries.
#include <cmath>
#include <cstdio>
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
    std::printf("%d segments, area %.3f, %d chords\n", qev::GetCadSegments(&slot), area,
                qev::GetCadSegments(chords.get()));
    return std::abs(area - (40 + 4 * std::acos(-1.0))) < 1e-9 && slot.IsClose() && chords ? 0 : 1;
}

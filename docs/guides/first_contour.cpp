// The guide "First contour": a slot is made, measured, walked along, cut and converted.
#include <cstdio>
#include <memory>

#include <qev/qev.h>

int main() {
    //! [make]
    qev::CCadPolyline slot; // 20 x 4 mm, run counter-clockwise from its lower left end
    slot.SetStartPoint({0, 0});
    slot.AddLine({20, 0});
    slot.AddArc({20, 4}, 1); // a bulge of 1: half a circle that turns left, outward here
    slot.AddLine({0, 4});
    slot.AddArc({0, 0}, 1); // back to the start, so that the contour is closed
    //! [make]

    //! [measure]
    std::printf("%d segments, %.3f mm, %.3f mm2, %s\n", qev::GetCadSegments(&slot), qev::GetCadLength(&slot),
                qev::GetCadPolylineArea(&slot, false), slot.IsClose() ? "closed" : "open");
    //! [measure]

    //! [position]
    math::POLYPOS pos{0, 0.25}; // a quarter of the way along segment 0
    math::DPOINT2 point;
    qev::PosToCoor(&slot, pos.nSegIndex, pos.dRatio, point);
    std::printf("a quarter along the first side: (%.3f, %.3f)\n", point.x, point.y);
    //! [position]

    //! [walk]
    math::POLYPOS end;
    const int laps = qev::GetPosByOffset(&slot, pos, 60, end); // 60 mm on: over the start point
    std::printf("60 mm on: segment %d, ratio %.4f, %d lap\n", end.nSegIndex, end.dRatio, laps);
    //! [walk]

    //! [cut]
    const math::PosRange range({2, 0.5}, {0, 0.5}); // from the upper side over the start point to the lower
    const std::unique_ptr<qev::CCadMultiSegments> cut(qev::GetMultiSementsByRange(&slot, range));
    std::printf("the stretch over the start point: %d segments, %.3f mm\n", cut->GetSegmentCount(),
                cut->GetLength());
    //! [cut]

    //! [convert]
    const std::unique_ptr<qev::CCadPolyline> chords(qev::Convert2Polyline(&slot, 1, 0.01)); // 1: lines only
    std::printf("as chords within 0.01 mm: %d lines, %.3f mm\n", chords->GetSegmentCount(),
                chords->GetLength());
    //! [convert]
}

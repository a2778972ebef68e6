// The guide "Picking in a view": what lies under the mouse, also among very many objects.
#include <cmath>
#include <cstdio>

#include <qev/qev.h>
#include <qevdata/qevdata.h>

namespace {

//! [view]
// A window onto the drawing. Picking asks in mm; a user aims in pixels, whatever the zoom is.
struct View {
    double left = 0, top = 0; // mm, the drawing's point in the window's corner
    double millimetresPerPixel = 1;

    math::DPOINT2 ToDrawing(int x, int y) const {
        return {left + x * millimetresPerPixel, top - y * millimetresPerPixel};
    }
    double Reach() const { return 5 * millimetresPerPixel; } // five pixels round the mouse
};
//! [view]

} // namespace

int main() {
    //! [drawing]
    qev::CCadGroup drawing; // owns what is added
    for (int i = 0; i < 100; ++i)
        for (int k = 0; k < 100; ++k) drawing.PushBack(new qev::CCadCircle({i * 10.0, k * 10.0}, 4));
    auto* const rule = new qev::CCadLine({0, -20}, {990, -20});
    drawing.PushBack(rule);
    qev::CGroupIndex index(&drawing); // built once; a pick then costs a logarithm
    //! [drawing]

    //! [pick]
    const View view{480, 520, 0.1};
    const math::DPOINT2 mouse = view.ToDrawing(229, 172);
    qev::CPosCalculator calculator;
    calculator.Init(index, &mouse, view.Reach());
    qev::PosInfo info;
    if (calculator.CalculatePosition(&info, false)) {
        math::DPOINT2 foot;
        qev::PosToCoor(info.pObject, info.nIndex, info.dRatio, foot);
        std::printf("ratio %.4f of a circle, %.3f mm from the mouse\n", info.dRatio,
                    math::D2GetDistance(mouse, foot));
    }
    //! [pick]

    //! [window]
    std::vector<qev::CCadObject*> seen;
    index.Collect({480, 480, 40, 40}, seen); // what a window shows: by boxes, in drawing order
    std::printf("%d of %d objects are in the window\n", static_cast<int>(seen.size()), index.GetCount());
    //! [window]

    //! [change]
    rule->SetEndPoint({490, 500}); // the index does not see a change by itself
    index.Update(rule);
    seen.clear();
    index.Collect({480, 480, 40, 40}, seen);
    std::printf("%d after the line was drawn into it\n", static_cast<int>(seen.size()));
    //! [change]
}

#include "support/refuse_memory.h"
#include "support/support.h"

using namespace qev;
using namespace test;

namespace {

// A group with a text, a polyline, attributes and a chain of inner objects, nested twice.
std::unique_ptr<CCadObject> Nested() {
    auto root = std::make_unique<CCadGroup>();
    Fill(*root, {TextOf(new CCadLine({0, 5}, {10, 5})), Object("0 0 L 2 0 B 0 1 2 1 2 0").release()});
    Fill(*AddGroup(*root), {TextOf(new CCadGroup), Object("ellipse 0 0 2 1 0").release()});
    root->SetKey("a name that is too long for the object itself", "and its value as well");
    root->SetInnerObject(Object("0 0 L 2 0 A 0 0 1").release());
    root->GetInnerObject()->SetInnerObject(new CCadGroup);
    root->GetInnerObject()->GetInnerObject()->SetInnerObject(new CCadDot({1, 2}));
    return root;
}

TEST(Refusal, ACloneLosesNothing) {
    const auto object = Nested();
    ExpectNothingLeaksWhenRefused([&] { return std::unique_ptr<CCadObject>(object->Clone(true)); });
}

TEST(Refusal, AConversionLosesNothing) {
    const auto object = Object("0 0 L 2 0 A 4 0 0.5 B 0 1 2 1 2 0");
    const CConvertCadObjectToCadPolyline convert("SegmentType=Line;AbsoluteError=0.01;");
    ExpectNothingLeaksWhenRefused([&] {
        CCadPolyline* out = nullptr;
        convert(object.get(), out);
        return std::unique_ptr<CCadPolyline>(out);
    });
}

TEST(Refusal, WhatWasHandedOverIsNotLost) {
    ExpectNothingLeaksWhenRefused([] { CCadDot({0, 0}).AddTechnics(new CTechnics); });
}

TEST(Refusal, AContourIsReversedOrAsBefore) {
    const auto contour = Polyline("0 0 L 2 0 A 4 0 0.5");
    for (const long blocks : {0, 1}) {
        try {
            const RefuseMemory refusal(blocks);
            contour->ReverseDir(true);
        } catch (const std::bad_alloc&) { // the contour shows
        }
        EXPECT_EQ(contour->IsNormalDir(), contour->GetStartPoint().x == 0) << blocks;
    }
    EXPECT_FALSE(contour->IsNormalDir());
}

} // namespace

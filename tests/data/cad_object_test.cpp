#include "support/support.h"

using namespace qev;
using namespace test;

class Own : public CCadObject {};

TEST(CadObject, DefaultsOfAHostsKind) {
    const Own own;
    EXPECT_EQ(own.GetType(), kCadNone);
    EXPECT_FALSE(own.IsClose());
    EXPECT_TRUE(math::IsNoPoint(own.GetStartPoint()));
    EXPECT_TRUE(math::IsNoPoint(own.GetEndPoint()));
    EXPECT_EQ(own.GetSegmentCount() + own.GetLength() + own.GetBoundRect().width, 0);
    EXPECT_EQ(own.Clone(true), nullptr);
}

TEST(CadObject, RefusesItselfAsInnerObjectAndNullAsKey) {
    Own own;
    own.SetInnerObject(&own);
    EXPECT_EQ(own.GetInnerObject(), nullptr);
    own.SetKey(nullptr, "x");
    EXPECT_TRUE(own.GetKey(nullptr).IsEmpty());
    own.SetKey("x", nullptr);
    EXPECT_TRUE(own.GetKey("x").IsEmpty());
}

TEST(CadObject, FreshIdsCountOnAndOthersAreZero) {
    const CCadDot first({0, 0}), unnumbered({0, 0}, false), second({0, 0});
    EXPECT_EQ(second.GetID(), first.GetID() + 1);
    EXPECT_EQ(unnumbered.GetID(), 0u);
}

#include "support/support.h"

using namespace qev;
using namespace test;

class Own : public CCadObject {};

TEST(CadObject, RefusesItselfAsInnerObjectAndNullAsKey) {
    Own own;
    own.SetInnerObject(&own);
    EXPECT_EQ(own.GetInnerObject(), nullptr);
    own.SetKey(nullptr, "x");
    EXPECT_TRUE(own.GetKey(nullptr).IsEmpty());
    own.SetKey("x", nullptr);
    EXPECT_TRUE(own.GetKey("x").IsEmpty());
}

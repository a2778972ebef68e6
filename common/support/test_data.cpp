#include <algorithm>
#include <memory>

#include <qev/support/test_data.h>
#include <qevdata/zone_manager.h>

#include "../kinds/cad_kinds.h"

namespace qev {
namespace {

constexpr char kTestName[] = "TestName";

// True when the ignore list is gone; of a type that can be read until the process is.
bool s_isOver = false;
struct AtUnload {
    ~AtUnload() { s_isOver = true; }
};

bool IsIgnored(const CString& test, const std::list<CString>& ignored) {
    return test.IsEmpty() || (!s_isOver && std::ranges::find(ignored, test) != ignored.end());
}

CCadGroup* GroupOfTest(const std::list<CCadObject*>& objects, const CString& test) {
    const auto isOfTest = [&](const CCadObject* object) {
        return object && IsPlainGroup(*object) && object->GetKey(kTestName) == test;
    };
    const auto found = std::ranges::find_if(objects, isOfTest);
    return found == objects.end() ? nullptr : static_cast<CCadGroup*>(*found);
}

} // namespace

std::list<CString> CTestDataHandle::ms_BlackList;
static const AtUnload s_atUnload; // in this order

void CTestDataHandle::SetIgnoreList(const std::list<CString>& names) {
    if (!s_isOver) ms_BlackList = names;
}

void CTestDataHandle::AddToZoneManager(CCadGroup* group, CZoneManager* zones) {
    CCadGroup* const target = zones ? zones->GetTargetGroup() : nullptr;
    if (!group || group == target) return;
    if (target && std::ranges::find(target->GetObjectsList(), group) != target->GetObjectsList().end())
        return;
    std::unique_ptr<CCadGroup> incoming(group);
    const CString test = group->GetKey(kTestName);
    if (!target || IsIgnored(test, ms_BlackList)) return;
    auto& objects = target->GetObjectsList();
    if (CCadGroup* const known = GroupOfTest(objects, test)) {
        group->GetObjectsList().remove(group); // it goes, even if it holds itself
        known->GetObjectsList().splice(known->GetObjectsList().begin(), group->GetObjectsList());
    } else {
        target->PushBack(group);
        static_cast<void>(incoming.release());
    }
}

} // namespace qev

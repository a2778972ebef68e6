// Sorts imported groups by the name of their test. The manager's target group holds one group for each test,
// found by a walk, as there are few; the objects of a group that comes later go in front of those that are
// there.
//
// The incoming group is owned from the first moment on that it is taken over, and every way out but one
// deletes it. Not taken over is what the zone already holds, which would be deleted twice.

#include <algorithm>
#include <memory>

#include <qev/support/test_data.h>
#include <qevdata/zone_manager.h>

#include "../kinds/cad_kinds.h"

namespace qev {
namespace {

constexpr char kTestName[] = "TestName";

// True from the end of the ignore list on. Plug-ins that unload late may still call, and a bool has no
// destructor, so that it may be read even then.
bool s_isUnloaded = false;
struct AtUnload {
    ~AtUnload() { s_isUnloaded = true; }
};

bool IsIgnored(const CString& test, const std::list<CString>& ignored) {
    return test.IsEmpty() || (!s_isUnloaded && std::ranges::find(ignored, test) != ignored.end());
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
static const AtUnload s_atUnload; // behind the list, and so destroyed before it

void CTestDataHandle::SetIgnoreList(const std::list<CString>& names) {
    if (!s_isUnloaded) ms_BlackList = std::list<CString>(names); // all of them or, without memory, none
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

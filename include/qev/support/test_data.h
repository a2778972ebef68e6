/// \file
/// Imported test data, sorted into the zones of a drawing.
#pragma once

#include <list>

#include <qev/export.h>
#include <qev/platform.h>

namespace qev {

class CCadGroup;
class CZoneManager;

/// Sorts imported groups into a zone by the name of their test, which stands under their key "TestName".
class QEVCOMMON_API CTestDataHandle {
public:
    /// The names of the tests to drop from now on; the list is copied and replaces the one before.
    /// Throws std::bad_alloc when memory is refused, and the list before stays.
    static void SetIgnoreList(const std::list<CString>& names);

    /// Takes a group over and puts it into the zone manager's target group: the objects of a group whose test
    /// is there already go in front of that group's, any other group is appended. A group without a test's
    /// name, one that is ignored, and one for which there is no zone manager or no target group, is deleted.
    /// Null is ignored, and so is a group that is the target group or stands in it already.
    /// Throws std::bad_alloc when memory is refused; the group is deleted then.
    static void AddToZoneManager(CCadGroup* group, CZoneManager* zones);

private:
    static std::list<CString> ms_BlackList;
};

} // namespace qev

/// \file
/// The zone manager.
#pragma once

#include <qev/export.h>

namespace qev {

class CCadGroup;
class CCadObject;

/// Knows the object that is being worked on and the group that receives results. It owns neither.
class QEVDATA_API CZoneManager {
public:
    /// Null until they are set.
    CCadObject* GetCurrentObject() const { return m_pCurrent; }
    CCadGroup* GetTargetGroup() const { return m_pTarget; }
    void SetCurrentObject(CCadObject* object) { m_pCurrent = object; }
    void SetTargetGroup(CCadGroup* group) { m_pTarget = group; }

private:
    CCadObject* m_pCurrent = nullptr;
    CCadGroup* m_pTarget = nullptr;
};

} // namespace qev

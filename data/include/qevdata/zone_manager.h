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
    /// The object being worked on; null until it is set.
    CCadObject* GetCurrentObject() const { return m_pCurrent; }
    /// The group that receives results; null until it is set.
    CCadGroup* GetTargetGroup() const { return m_pTarget; }
    /// Keeps the object's address only: it has to live as long, or be replaced by null before it goes.
    void SetCurrentObject(CCadObject* object) { m_pCurrent = object; }
    /// Keeps the group's address only: it has to live as long, or be replaced by null before it goes.
    void SetTargetGroup(CCadGroup* group) { m_pTarget = group; }

private:
    CCadObject* m_pCurrent = nullptr;
    CCadGroup* m_pTarget = nullptr;
};

} // namespace qev

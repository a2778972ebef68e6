/// \file
/// Machining processes ("technics") as the data library knows them.
#pragma once

#include <ostream>

#include <qev/export.h>

namespace qev {

class CCadObject;

/// A machining process attached to a CAD object, which owns it. Plug-ins derive their own.
class QEVDATA_API CTechnics {
public:
    int m_nType = 0;
    int m_nSubType = 0;

    /// Rebuilds what depends on the object's geometry; false, which is the default, when nothing was done.
    virtual bool Refresh(const CCadObject* object, void* data);
    /// Writes the technics' text form; nothing by default.
    virtual void Write(std::ostream& out) const;
    virtual ~CTechnics();
};

/// Who turns the technics text of an object into technics and back.
class QEVDATA_API CITechnicsSerialize {
public:
    virtual void LoadTechnics(CCadObject* object) = 0;
    virtual void SaveTechnics(CCadObject* object) = 0;
    virtual ~CITechnicsSerialize();
};

} // namespace qev

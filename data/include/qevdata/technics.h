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
    int m_nType = 0;    ///< which operator's technics it is
    int m_nSubType = 0; ///< the operator's own number; the type's number marks a type's default technics

    /// Rebuilds what depends on the object's geometry; false, which is the default, when nothing was done.
    virtual bool Refresh(const CCadObject* object, void* data);
    /// Writes the technics' entry of a technics text, `Name={...},`: the operator's name, the table of its
    /// parameters, and a comma behind it. Nothing by default.
    virtual void Write(std::ostream& out) const;
    virtual ~CTechnics();
};

/// Who turns the technics text of an object into technics and back.
class QEVDATA_API CITechnicsSerialize {
public:
    /// Makes the technics that the object's technics text describes and attaches them to the object.
    virtual void LoadTechnics(CCadObject* object) = 0;
    /// Sets the object's technics text to what its technics write.
    virtual void SaveTechnics(CCadObject* object) = 0;
    virtual ~CITechnicsSerialize();
};

} // namespace qev

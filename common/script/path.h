/// \file
/// The keys that a cursor has entered.
#pragma once

#include <qev/script/access.h>

namespace qev {

/// Opens levels of a cursor's path, and puts the path in front of error texts. Made for one operation.
class LuaPath {
public:
    /// Works on a cursor that must outlive it.
    explicit LuaPath(CLuaAccess& cursor) : m_rCursor(cursor) {}

    /// Whether one more level may be opened. Never after a Leave too many.
    bool HasRoom() const { return m_rCursor.m_nDepth >= 0 && m_rCursor.m_nDepth < CLuaAccess::kMaxDepth; }
    /// Opens a level under a name, of which 127 bytes are kept; null counts as the empty name. Throws when
    /// memory is refused.
    void Open(const char* name) const;
    /// Opens a level under an index, which is shown in brackets. Throws when memory is refused.
    void Open(int index) const;
    /// Writes the entered keys, a key, " = " and a value unless that is null, a blank and a message into the
    /// cursor's m_szError, and cuts what does not fit. A null key and a null message count as empty.
    void Compose(const char* key, const char* value, const char* message) const;

private:
    CLuaAccess::PathName& Own() const;

    CLuaAccess& m_rCursor;
};

} // namespace qev

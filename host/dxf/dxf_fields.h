/// \file
/// The values of one entity.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include <qevmath/point.h>

#include "dxf_groups.h"
#include "host/drawing/drawing_error.h"

namespace host {

inline constexpr int kPoint = 10;    ///< group code of the x of an entity's first point; its y is ten higher
inline constexpr int kNormalZ = 230; ///< group code of the z of an entity's normal

/// The groups of one entity by code. Of several with one code the first counts. It points to the groups,
/// which must outlive it.
class Fields {
public:
    /// The groups of an entity, at least its group 0.
    explicit Fields(std::span<const DxfGroup> groups) : m_head(groups.front()), m_groups(groups.subspan(1)) {}

    /// The entity's type, "LINE".
    std::string_view Type() const { return m_head.text; }

    /// The groups behind the group 0, in the order of the file.
    std::span<const DxfGroup> Groups() const { return m_groups; }

    /// The first group with a code; null when there is none. The vertices of a polyline are not looked at.
    const DxfGroup* Find(int code) const {
        for (const DxfGroup& group : m_groups) {
            if (group.code == 0) break; // the vertices of a polyline follow
            if (group.code == code) return &group;
        }
        return nullptr;
    }

    /// A number that may be missing. Throws a DrawingError for what is no number.
    double Number(int code, double otherwise) const {
        const DxfGroup* group = Find(code);
        return group ? group->AsNumber() : otherwise;
    }

    /// A number that the entity must have. Throws a DrawingError when it is missing or no number.
    double Number(int code) const { return Required(code).AsNumber(); }

    /// A whole number that may be missing. Throws a DrawingError for what is no whole number.
    int Integer(int code, int otherwise) const {
        const DxfGroup* group = Find(code);
        return group ? group->AsInteger() : otherwise;
    }

    /// A point that the entity must have, by the code of its x; that of its y is ten higher. Throws a
    /// DrawingError when it is missing or no point.
    math::DPOINT2 Point(int code) const { return {Number(code), Number(code + 10)}; }

    /// A text; empty when it is missing.
    std::string_view Text(int code) const {
        const DxfGroup* group = Find(code);
        return group ? group->text : std::string_view();
    }

    /// The message for what is wrong with the entity: where it stands, its type, and what.
    std::string Message(const std::string& what) const {
        return m_head.Where() + ": " + Printable(Type()) + " " + what;
    }

    /// Throws a DrawingError with the message for what is wrong with the entity.
    [[noreturn]] void Fail(const std::string& what) const { throw DrawingError(Message(what)); }

private:
    const DxfGroup& Required(int code) const {
        const DxfGroup* group = Find(code);
        if (!group) Fail("lacks its group " + std::to_string(code));
        return *group;
    }

    const DxfGroup& m_head;
    std::span<const DxfGroup> m_groups;
};

} // namespace host

/// \file
/// The parameters of a technics, declared once in a table: how each is called, what it may be and in which
/// member of a class it lies. The table reads them from the table in which a cursor stands, writes them as
/// the text that reads back equal, and refuses what is misspelt, of another type or out of range.
///
///     const kit::ParameterTable<Groove>& Groove::Parameters() {
///         static const kit::ParameterTable<Groove> table("Groove", {
///             {"Tool", &Groove::m_nTool, {"Ball", "Flat"}},
///             {"Depth", &Groove::m_dDepth, 0.1, 20, "mm"},
///             {"Passes", &Groove::m_nPasses, 1, 99},
///             {"Coolant", &Groove::m_bCoolant},
///             {"Remark", &Groove::m_strRemark, 80}});
///         return table;
///     }
#pragma once

#include <cstddef>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <qev/lua.h>

namespace qev::kit {

/// How a parameter is called and what it may be. Its texts are literals, which are not copied.
struct ParameterRule {
    const char* key;                  ///< compared exactly
    const char* kind;                 ///< as error texts begin: "a number", "a whole number", "one", ...
    double min = 0;                   ///< of a number, in its unit, of a choice 0; itself allowed
    double max = 0;                   ///< of a number, in its unit, of a choice its last; itself allowed
    const char* unit = "";            ///< of a number, as error texts show it
    std::vector<const char*> choices; ///< of a choice, the names of 0, 1, 2, ...; else empty
    std::size_t longest = 0;          ///< bytes of a text

    /// What is allowed, for an error text: "a number from 0.1 to 20 mm", "one of Ball, Flat".
    std::string Expected() const;
};

/// A parameter of one object: its rule, and the member that holds its value. Whole numbers and choices lie in
/// an int.
struct ParameterOf {
    const ParameterRule* rule;                              ///< outlives this
    std::variant<double*, int*, bool*, std::string*> value; ///< the object's
};

/// Reads the parameters that the table in which a cursor stands has, and leaves the others as they are. The
/// mouse's keys (MouseSegment, MouseRatio, StartX, StartY) are passed over. Throws, as `char*` and by way of
/// the cursor, for a key that no parameter has, with the one that it may be meant for, for a value of another
/// type and for one that is not allowed; the parameters before it in the order of the keys are read then.
void ReadParameters(CLuaAccess& cursor, const std::vector<ParameterOf>& parameters);

/// Writes `name={key=value,...},`, which a technics text may hold as it is and which reads back equal. A
/// number or choice that is not allowed stands for "not given" and is left out.
void WriteParameters(std::ostream& out, const char* name, const std::vector<ParameterOf>& parameters);

/// The shortest text that Lua reads as exactly this finite number, with a point whatever the locale.
std::string ShortestText(double value);

/// The parameters that lie in members of a class T, each with its default, which is what a new T holds.
template <class T>
class ParameterTable {
public:
    /// A row of the table: one parameter and its member.
    struct Row {
        /// A number from min to max in a unit, which error texts show.
        Row(const char* key, double T::*itsMember, double min, double max, const char* unit = "")
            : rule{key, "a number", min, max, unit, {}}, member(itsMember) {}
        /// A whole number from min to max.
        Row(const char* key, int T::*itsMember, int min, int max)
            : rule{key, "a whole number", static_cast<double>(min), static_cast<double>(max), "", {}},
              member(itsMember) {}
        /// One of some names, which the member counts from 0.
        Row(const char* key, int T::*itsMember, std::initializer_list<const char*> names)
            : rule{key, "one", 0, static_cast<double>(names.size()) - 1, "", names}, member(itsMember) {}
        /// A flag.
        Row(const char* key, bool T::*itsMember)
            : rule{key, "true or false", 0, 0, "", {}}, member(itsMember) {}
        /// A text of up to so many bytes.
        Row(const char* key, std::string T::*itsMember, std::size_t longest)
            : rule{key, "a text", 0, 0, "", {}, longest}, member(itsMember) {}

        ParameterRule rule;                                                      ///< how and what
        std::variant<double T::*, int T::*, bool T::*, std::string T::*> member; ///< where
    };

    /// A table of the technics of a name, a literal. The order of the rows is that in which they are written.
    ParameterTable(const char* name, std::initializer_list<Row> rows) : m_szName(name), m_vecRows(rows) {}

    /// Reads the object's parameters from the table in which a cursor stands; those that are not there stay.
    /// Throws, as `char*`, the error of a key that is misspelt or a value that is not allowed.
    void Read(CLuaAccess& cursor, T& object) const { ReadParameters(cursor, Bind(object)); }

    /// Writes the object's parameters as `name={key=value,...},`.
    void Write(std::ostream& out, T object) const { WriteParameters(out, m_szName, Bind(object)); }

private:
    std::vector<ParameterOf> Bind(T& object) const {
        std::vector<ParameterOf> bound;
        bound.reserve(m_vecRows.size());
        for (const Row& row : m_vecRows)
            std::visit([&](auto member) { bound.push_back({&row.rule, &(object.*member)}); }, row.member);
        return bound;
    }

    const char* m_szName;
    std::vector<Row> m_vecRows;
};

} // namespace qev::kit

/// \file
/// What technics plug-ins with tool paths have in common: a technics that hangs tool paths on its object, and
/// the operator that puts such technics on objects and takes them off. A plug-in derives from both and says
/// only how its parameters are read and written and which paths they make.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <qev/qev.h>

namespace kit {

/// A technics whose tool paths follow from its parameters and the contour of its object. The paths are made
/// anew when a drawing is loaded, so that the technics' text holds the parameters only.
class PathTechnics : public qev::CTechnics {
public:
    /// Tool paths that nobody owns yet.
    using Paths = std::vector<std::unique_ptr<qev::CCadObject>>;

    /// A technics of a type that no other plug-in of the host uses; its subtype is the type too.
    explicit PathTechnics(int type) { m_nType = m_nSubType = type; }

    /// Makes the tool paths along a contour and hands them to the object, in place of those that this
    /// technics made before. False when the contour takes none; this technics then has no paths on the
    /// object.
    bool RenewPaths(qev::CCadObject& object, const qev::CCadMultiSegments& contour);

    /// Deletes the tool paths that this technics made on the object. Those of other technics stay.
    void RemovePaths(qev::CCadObject& object);

protected:
    /// Makes the tool paths along a contour; none when they do not fit on it.
    virtual Paths MakePaths(const qev::CCadMultiSegments& contour) const = 0;

private:
    std::vector<const qev::CCadObject*> m_vecPaths; // the object's, which owns them
};

/// An operator of technics with tool paths. An object has one technics of each type: a new one takes the
/// place of the old one. A parameter that is out of bounds is thrown by the cursor as its text, and reaches
/// the host before the object has changed.
class PathOperator : public qev::CITechnicsOperator {
public:
    /// Objects that the host owns.
    using Objects = std::list<qev::CCadObject*>;

    /// The type that the operator's technics carry.
    int GetTechnicsType() override { return m_nType; }
    /// The key of the table in which the technics' parameters stand.
    const char* GetTechnicsName() override { return m_szName; }

    /// Puts a technics on each object, by the parameters in the cursor's table; the first object is the one
    /// that the mouse is on. Objects go to `changed`, or to `refused` when no path fits on them; both lists
    /// may be null. The message says how many took one. False when none did.
    bool AddTechnicsByLua(const Objects* objects, qev::CLuaAccess* cursor, Objects* changed, Objects* refused,
                          std::string& message) override;

    /// Makes the technics of an object that is being loaded, by the parameters in the cursor's table. The
    /// caller owns it; null when no path fits on the object.
    qev::CTechnics* CreateTechnics(qev::CCadObject* object, qev::CLuaAccess* cursor) override;

    /// Takes the operator's technics and their paths off the objects. Those that had one go to `changed`, the
    /// others to `refused`; both lists may be null. The message says how many had one. False when none had.
    bool RemoveTechnicsOf(const Objects* objects, int type, Objects* changed, Objects* refused,
                          std::string& message) override;

    /// Makes the tool paths of an object anew, after its contour has changed.
    void UpdateViewData(qev::CCadObject* object) override;

    /// Does nothing: an edited copy of an object brings its technics text along, which the host loads.
    void SingleModify(const qev::CCadObject*, qev::CCadObject*, const std::vector<int>&, int) override {}
    /// Does nothing: edited copies of objects bring their technics texts along, which the host loads.
    void MultipleModify(const Objects*, Objects*, int) override {}
    /// Does nothing; the place is kept for later.
    void Reserved6() override {}
    /// Does nothing; the place is kept for later.
    void Reserved12() override {}
    /// Does nothing; the place is kept for later.
    void Reserved13() override {}
    /// Does nothing; the place is kept for later.
    void Reserved14() override {}

protected:
    /// An operator of technics of a type. Both texts are literals, which are not copied: the key of the table
    /// with the parameters, and what messages call the technics, in the plural.
    PathOperator(int type, const char* name, const char* shown)
        : m_nType(type), m_szName(name), m_szShown(shown) {}
    ~PathOperator() = default;

    /// Reads a technics from the cursor's table, for an object and the contour that stands for it. Whether
    /// the object is picked says that the mouse's position in the table is a position on it. Never null.
    virtual std::unique_ptr<PathTechnics> Read(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                                               const qev::CCadMultiSegments& contour,
                                               bool isPicked) const = 0;

private:
    std::unique_ptr<PathTechnics> Make(qev::CCadObject& object, qev::CLuaAccess& cursor, bool isPicked) const;
    bool RemoveFrom(qev::CCadObject& object) const;
    std::string Summary(const char* done, std::size_t changed, std::size_t all) const;

    int m_nType;
    const char* m_szName;
    const char* m_szShown;
};

/// The shortest text that Lua reads as exactly this finite number, with a point whatever the locale.
std::string ShortestText(double value);

} // namespace kit

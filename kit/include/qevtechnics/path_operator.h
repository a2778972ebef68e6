/// \file
/// What technics plug-ins with tool paths have in common: a technics that hangs tool paths on its object, and
/// the operator that puts such technics on objects and takes them off. A plug-in derives from both and says
/// only what its parameters are and which paths they make.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <qev/qev.h>

#include <qevtechnics/parameters.h>
#include <qevtechnics/paths.h>
#include <qevtechnics/surroundings.h>

namespace qev::kit {

/// Thrown by a technics that does not fit on its object; the text says why, for whoever has drawn it. It does
/// not leave the plug-in.
class NoRoom : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An object on which a technics is put.
struct Site {
    const CCadObject& object;         ///< what was drawn; stays with its group
    const CCadMultiSegments& contour; ///< stands for the object (ContourOf), with a segment at least
    const Surroundings& around;       ///< of the manager's drawing
    bool isPicked = false;            ///< whether the mouse's position is one on this object
};

/// A technics whose tool paths follow from its parameters and the contour of its object. The paths are made
/// anew when a drawing is loaded, so that the technics' text holds the parameters only.
class PathTechnics : public CTechnics {
public:
    /// A technics of a type that no other plug-in of the host uses; its subtype is the type too.
    explicit PathTechnics(int type) { m_nType = m_nSubType = type; }

    /// Makes the tool paths along the contour that stands for an object and hands them to the object, in
    /// place of those that this technics made before. Throws a NoRoom, with all as it was, when none fits.
    void RenewPaths(CCadObject& object, const CCadMultiSegments& contour);

    /// Deletes the tool paths that this technics made on the object. Those of other technics stay.
    void RemovePaths(CCadObject& object);

protected:
    /// Makes the tool paths along the contour that stands for an object, whose other technics' paths may be
    /// looked at. Throws a NoRoom when none fits.
    virtual Paths MakePaths(const CCadObject& object, const CCadMultiSegments& contour) const = 0;

private:
    std::vector<const CCadObject*> m_vecPaths; // the object's, which owns them
};

/// An operator of technics with tool paths. An object has one technics of each type: a new one takes the
/// place of the old one. What is wrong with a parameter is thrown by the cursor as its text, and reaches the
/// host before the object has changed.
class PathOperator : public CITechnicsOperator {
public:
    /// Objects that the host owns.
    using Objects = std::list<CCadObject*>;

    /// The type that the operator's technics carry.
    int GetTechnicsType() override { return m_nType; }
    /// The key of the table in which the technics' parameters stand.
    const char* GetTechnicsName() override { return m_szName; }

    /// Puts a technics on each object, by the parameters in the cursor's table; the first object is the one
    /// that the mouse is on. Objects go to `changed`, or to `refused` when no path fits on them; both lists
    /// may be null. The message says how many took one and, for each that did not and in the order of
    /// `refused`, in a line that begins with a blank why. False when none did.
    bool AddTechnicsByLua(const Objects* objects, CLuaAccess* cursor, Objects* changed, Objects* refused,
                          std::string& message) override;

    /// Makes the technics of an object that is being loaded, by the parameters in the cursor's table. The
    /// caller owns it. Throws by way of the cursor, as `char*`, why no path fits on the object.
    CTechnics* CreateTechnics(CCadObject* object, CLuaAccess* cursor) override;

    /// Takes the operator's technics and their paths off the objects. Those that had one go to `changed`, the
    /// others to `refused`; both lists may be null. The message says how many had one. False when none had.
    bool RemoveTechnicsOf(const Objects* objects, int type, Objects* changed, Objects* refused,
                          std::string& message) override;

    /// Makes the tool paths of an object anew, after its contour or the paths of its other technics have
    /// changed. Where they do not fit any more, the technics is left without, and the object says why
    /// (WhyLostPaths).
    void UpdateViewData(CCadObject* object) override;

    /// Does nothing: an edited copy of an object brings its technics text along, which the host loads.
    void SingleModify(const CCadObject*, CCadObject*, const std::vector<int>&, int) override {}
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

    /// Reads a technics from the cursor's table, for an object on which it is put. Never null. Throws a
    /// NoRoom when it does not fit there, and by way of the cursor what is wrong with a parameter.
    virtual std::unique_ptr<PathTechnics> Read(CLuaAccess& cursor, const Site& site) const = 0;

private:
    std::unique_ptr<PathTechnics> Make(CCadObject& object, CLuaAccess& cursor, const Surroundings& around,
                                       bool isPicked) const;
    bool RemoveFrom(CCadObject& object) const;
    std::string Summary(const char* done, std::size_t changed, std::size_t all) const;

    int m_nType;
    const char* m_szName;
    const char* m_szShown;
};

} // namespace qev::kit

/// \file
/// What the example plug-ins have in common: technics that hang tool paths on their objects.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <qev/qev.h>

namespace plugins {

/// A technics whose tool paths follow from its parameters and the contour of its object. They are made anew
/// when it is loaded, so that its text holds the parameters only.
class PathTechnics : public qev::CTechnics {
public:
    using Paths = std::vector<std::unique_ptr<qev::CCadObject>>;

    explicit PathTechnics(int type) { m_nType = m_nSubType = type; }

    /// Gives the object tool paths in place of those that it has from here. False when its contour takes
    /// none; it has none from here then.
    bool RenewPaths(qev::CCadObject& object, const qev::CCadMultiSegments& contour);
    /// Takes them away again.
    void RemovePaths(qev::CCadObject& object);

protected:
    /// Tool paths along the contour; none when they do not fit on it.
    virtual Paths MakePaths(const qev::CCadMultiSegments& contour) const = 0;

private:
    std::vector<const qev::CCadObject*> m_paths; // the object's, which owns them
};

/// An operator of such technics. An object has one of each type: a new one takes the place of the old one. A
/// parameter that is out of bounds is thrown by the cursor, and reaches the host before anything has changed.
class PathOperator : public qev::CITechnicsOperator {
public:
    using Objects = std::list<qev::CCadObject*>;

    int GetTechnicsType() override { return m_type; }
    const char* GetTechnicsName() override { return m_name; }
    bool AddTechnicsByLua(const Objects* objects, qev::CLuaAccess* cursor, Objects* changed, Objects* refused,
                          std::string& message) override;
    qev::CTechnics* CreateTechnics(qev::CCadObject* object, qev::CLuaAccess* cursor) override;
    bool RemoveTechnicsOf(const Objects* objects, int type, Objects* changed, Objects* refused,
                          std::string& message) override;
    void UpdateViewData(qev::CCadObject* object) override;

    // An edited copy of an object brings its technics text along, which the host loads.
    void SingleModify(const qev::CCadObject*, qev::CCadObject*, const std::vector<int>&, int) override {}
    void MultipleModify(const Objects*, Objects*, int) override {}
    void Reserved6() override {}
    void Reserved12() override {}
    void Reserved13() override {}
    void Reserved14() override {}

protected:
    /// Both texts are literals: the key of the table, and what messages call the technics.
    PathOperator(int type, const char* name, const char* shown)
        : m_type(type), m_name(name), m_shown(shown) {}
    ~PathOperator() = default;

    /// The technics that the cursor's table describes, for an object and the contour that stands for it. The
    /// picked object is the one that the mouse is on.
    virtual std::unique_ptr<PathTechnics> Read(qev::CLuaAccess& cursor, const qev::CCadObject& object,
                                               const qev::CCadMultiSegments& contour,
                                               bool isPicked) const = 0;

private:
    std::unique_ptr<PathTechnics> Make(qev::CCadObject& object, qev::CLuaAccess& cursor, bool isPicked) const;
    bool RemoveFrom(qev::CCadObject& object) const;
    std::string Summary(const char* done, std::size_t changed, std::size_t all) const;

    int m_type;
    const char* m_name;
    const char* m_shown;
};

/// The shortest text that Lua reads as the same number.
std::string Number(double value);

} // namespace plugins

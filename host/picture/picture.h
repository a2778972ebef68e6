/// \file
/// What is to be seen of a drawing, however it is written down in the end.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/report/report.h"

namespace host {

/// Collects the objects of a drawing and what lies over them, in drawing coordinates (mm, y up). The names of
/// styles are those of the table in styles.h; any other one throws std::out_of_range.
class Picture {
public:
    /// An object of the drawing, which must stay as it is until the picture is written.
    struct Outline {
        const qev::CCadObject* object = nullptr;
        int style = 0;
        int layer = 0;      ///< place in Layers()
        std::string colour; ///< the drawing's own, "#rrggbb"; empty for that of the style
    };
    /// A curve that lies over the drawing.
    struct Curve {
        int style = 0;
        std::string path; ///< SVG path data
    };
    /// A mark at a point.
    struct Spot {
        int style = 0;
        math::DPOINT2 at;
        double radius = 0;   ///< mm
        math::DPOINT2 along; ///< direction of an arrow, of length 1; zero for other marks
    };

    /// One step of the order of cutting.
    struct Step {
        int object = 0;      ///< number in the table
        math::DPOINT2 start; ///< where the tool comes down
    };

    /// A picture of a box of the drawing. A box without extent, or of a drawing without objects, gets a size
    /// of its own. The title says what is drawn; it may be in any encoding, as names of files are.
    Picture(const std::string& title, const qev::CadRect& box);

    /// Draws an object of the drawing: of a text its strokes. Objects are drawn in the order of the table.
    void DrawObject(const ObjectReport& report);

    /// Draws the outline of any object over the drawing: of a group, those of its members; of a dot, a ring.
    /// The object is no longer needed afterwards.
    void Draw(const qev::CCadObject& object, const char* style);

    /// Marks a contour: its start, an arrow along its direction, each sharp corner. What is no contour gets
    /// no marks.
    void Mark(const ObjectReport& report);

    /// Marks a point, as large as the marks of a long contour.
    void MarkPoint(const math::DPOINT2& p, const char* style);

    /// Marks the start of every segment of a contour.
    void MarkJoints(const qev::CCadMultiSegments& contour, const char* style);

    /// Adds the next step of the order of cutting: the object of a number in the table, where the tool comes
    /// down for it and where it leaves. The rapid move from the step before is drawn.
    void AddStep(int object, const math::DPOINT2& start, const math::DPOINT2& end);

    /// What is drawn, in UTF-8.
    const std::string& Title() const { return m_strTitle; }
    /// The box of the drawing with a margin round it; it has an extent both ways.
    const qev::CadRect& Box() const { return m_box; }
    /// A thousandth of the diagonal of the drawing, mm: marks are sized by it, so that they are seen in a
    /// picture of any drawing.
    double Unit() const { return m_dUnit; }
    const std::vector<Outline>& Outlines() const { return m_vecOutlines; }
    /// The colours of the outlines, each once.
    std::set<std::string> Colours() const;
    /// The layers of the objects, in UTF-8, in the order in which they were met first.
    const std::vector<std::string>& Layers() const { return m_vecLayers; }
    const std::vector<Curve>& Curves() const { return m_vecCurves; }
    const std::vector<Spot>& Spots() const { return m_vecSpots; }
    /// The order of cutting; empty when there is none.
    const std::vector<Step>& Steps() const { return m_vecSteps; }

private:
    int LayerIndex(const std::string& name);

    std::string m_strTitle;
    qev::CadRect m_box;
    double m_dUnit;
    std::vector<Outline> m_vecOutlines;
    std::vector<std::string> m_vecLayers;
    std::map<std::string, int> m_mapLayers; // places by the drawing's own bytes
    std::vector<Curve> m_vecCurves;
    std::vector<Spot> m_vecSpots;
    std::vector<Step> m_vecSteps;
    math::DPOINT2 m_ptLeft; // where the last step's cut ends
};

/// The leaves of an object of a drawing: itself, or all that a group or a text holds.
std::vector<const qev::CCadObject*> LeavesOf(const qev::CCadObject& object);

} // namespace host

/// \file
/// What lies round an object of a drawing: where the scrap is, and how near the neighbours are.
#pragma once

#include <memory>

#include <qev/qev.h>

namespace qev::kit {

/// Answers questions about the contours of a drawing. It makes its index with the first question, so that one
/// that is not asked costs nothing. The drawing must outlive it and stay as it is.
class Surroundings {
public:
    /// The surroundings in a drawing; null for none, where every object stands alone.
    explicit Surroundings(const CCadGroup* drawing) : m_pDrawing(drawing) {}

    /// Whether a point lies in what is thrown away when an object is cut: in an even number of closed
    /// contours, as the sheet round the parts and the holes in them do. The object itself counts as one
    /// whether it stands in the drawing or not. False on the outline of a contour that counts.
    bool IsScrap(const math::DPOINT2& p, const CCadObject& object) const;

    /// Whether a path keeps at least so many mm (above 0) away from every contour of the drawing but the
    /// object's own. Texts and dots are no contours.
    bool IsClear(const CCadObject& path, double clearance, const CCadObject& object) const;

private:
    std::vector<const CCadObject*> Others(const CadRect& box, double margin, const CCadObject& object) const;

    const CCadGroup* m_pDrawing;
    mutable std::unique_ptr<CGroupIndex> m_pIndex; // null until it is asked
};

} // namespace qev::kit

/// \file
/// The peers, each behind a class without its headers, which take long to compile: each has a source of its
/// own.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <qev/qev.h>

namespace qev::bench {

/// Boost.Geometry: an R-tree of a contour's lines, packed.
class BoostLines {
public:
    explicit BoostLines(const std::vector<math::DPOINT2>& points);
    ~BoostLines();
    /// Index and ratio, added up, of the place on the lines that is nearest to p.
    double Nearest(const math::DPOINT2& p) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_pTree;
};

/// Boost.Geometry: a line string, and the point at a length of it.
class BoostLineString {
public:
    explicit BoostLineString(const std::vector<math::DPOINT2>& points);
    ~BoostLineString();
    /// The point after so many mm from the start.
    math::DPOINT2 PointAt(double length) const;

private:
    struct Line;
    std::unique_ptr<Line> m_pLine;
};

/// Boost.Geometry: an R-tree of boxes, packed.
class BoostBoxes {
public:
    explicit BoostBoxes(const std::vector<math::Bounds>& boxes);
    ~BoostBoxes();
    /// Replaces `found` by the indices of the boxes that meet a box.
    void Collect(const math::Bounds& box, std::vector<int>& found) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_pTree;
};

/// Boost.ICL: a set of intervals.
class IclZones {
public:
    IclZones();
    ~IclZones();
    IclZones(IclZones&&) noexcept;
    /// Adds an interval, its ends included.
    void Add(double first, double last);
    /// Whether a number lies in an interval.
    bool Holds(double number) const;
    /// Number of intervals, those that meet being one.
    int GetCount() const;

private:
    struct Set;
    std::unique_ptr<Set> m_pSet;
};

/// GEOS: an STR-tree of boxes.
class GeosBoxes {
public:
    explicit GeosBoxes(const std::vector<math::Bounds>& boxes);
    ~GeosBoxes();
    /// Replaces `found` by the indices of the boxes that meet a box.
    void Collect(const math::Bounds& box, std::vector<int>& found) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_pTree;
};

/// GEOS: the distance from a contour's lines, by its tree of facets.
class GeosLines {
public:
    explicit GeosLines(const std::vector<math::DPOINT2>& points);
    ~GeosLines();
    /// The distance in mm from p to the lines.
    double Distance(const math::DPOINT2& p) const;

private:
    struct Tree;
    std::unique_ptr<Tree> m_pTree;
};

/// CGAL: the convex hull with exact predicates.
class CgalCloud {
public:
    explicit CgalCloud(const std::vector<CConvexHelper::Point>& points);
    ~CgalCloud();
    /// Number of corners of the hull, which is computed anew.
    std::size_t CountCorners();

private:
    struct Points;
    std::unique_ptr<Points> m_pPoints;
};

/// How OCCT chooses points: GCPnts_TangentialDeflection, GCPnts_UniformDeflection,
/// GCPnts_QuasiUniformDeflection.
enum class OcctRule { kTangential, kUniform, kQuasiUniform };

/// OCCT: points along a curve that chords may join.
class OcctCurve {
public:
    /// An ellipse round the origin with its axes along x and y.
    OcctCurve(double semiAxisX, double semiAxisY);
    /// A Bezier curve of four poles.
    explicit OcctCurve(const math::CubicBezier& bezier);
    ~OcctCurve();
    /// Replaces `points` by points whose chords leave the curve by `error` mm at most.
    void Deflect(OcctRule rule, double error, std::vector<math::DPOINT2>& points) const;

private:
    struct Curve;
    std::unique_ptr<Curve> m_pCurve;
};

/// libsigc++: a signal for each topic, found by its text.
class SigcTopics {
public:
    SigcTopics();
    ~SigcTopics();
    /// Adds a subscriber to a topic.
    void Subscribe(const std::string& topic, MsgTopicCallback callback, void* user);
    /// Calls the subscribers of a topic; what the last one answers, 0 without one.
    int Publish(const char* topic, int value, const char* text) const;

private:
    struct Table;
    std::unique_ptr<Table> m_pTable;
};

} // namespace qev::bench

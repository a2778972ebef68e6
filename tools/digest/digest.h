/// \file
/// A digest of many results, for the proof that two systems answer the same bits.
///
/// Each subject hashes its results by itself, from its own seeded numbers, so that a difference shows which
/// subject it comes from. Nothing here may use what differs between C libraries.
#pragma once

#include <cstdint>
#include <memory>

#include <qevdata/qevdata.h>

namespace digest {

/// A hash over the bits of the numbers that are added, in their order (FNV-1a, 64 bits). All NaNs count as
/// one: their bits carry no answer. Zero and minus zero differ.
class Digest {
public:
    /// Adds a number; whole numbers and truth values go in as the doubles of their value.
    void Add(double value);
    /// Adds the two coordinates of a point.
    void Add(const math::DPOINT2& p);
    /// Adds the two corners of a box.
    void Add(const math::Bounds& box);
    /// Adds the points of a segment, control points included, and its bulge.
    void Add(const qev::SEGMENT& segment);

    /// How many numbers were added.
    int GetCount() const { return m_nCount; }
    /// The hash of all numbers so far.
    std::uint64_t GetHash() const { return m_nHash; }

private:
    std::uint64_t m_nHash = 0xcbf29ce484222325;
    int m_nCount = 0;
};

/// Seeded random numbers and objects (SplitMix64), equal on every system: the distributions of the C++
/// library are not. Draw one number a statement, as the arguments of a call have no order.
class Sequence {
public:
    /// A number in [low, high), evenly distributed.
    double Uniform(double low, double high);
    /// A whole number in [0, below).
    int Int(int below) { return static_cast<int>(Next() % static_cast<std::uint64_t>(below)); }
    /// A point in the square from (-100, -100) to (100, 100).
    math::DPOINT2 Point() { return {Uniform(-100, 100), Uniform(-100, 100)}; }
    /// A bulge of magnitude 2^-24 to 4, of either sign.
    double Bulge();
    /// A contour of lines and arcs; about every third one is closed.
    std::unique_ptr<qev::CCadPolyline> Polyline(int segments);
    /// A contour of lines, arcs and Bezier pieces; about every third one is closed.
    std::unique_ptr<qev::CCadPolylineEx> PolylineEx(int segments);
    /// A circle, arc, ellipse, elliptic arc, rectangle, line or contour, by turns.
    std::unique_ptr<qev::CCadObject> Object();

private:
    std::uint64_t Next();

    std::uint64_t m_nState = 20260101;
    int m_nObjects = 0;
};

/// One line of the digest: a family of results under a name.
struct Subject {
    const char* name;
    void (*add)(Sequence& random, Digest& results);
};

// The subjects, one for each family of functions. Each adds the results on what it draws from the sequence.

/// Adds results of the elementary functions, near and far from zero.
void AddElementary(Sequence& random, Digest& results);
/// Adds results of arcs in chord form and by their centres.
void AddArcs(Sequence& random, Digest& results);
/// Adds results of elliptic arcs.
void AddEllipses(Sequence& random, Digest& results);
/// Adds results of cubic Bezier curves.
void AddBeziers(Sequence& random, Digest& results);
/// Adds what objects answer about themselves and their segments.
void AddObjects(Sequence& random, Digest& results);
/// Adds results of the polylines that objects convert to.
void AddConversions(Sequence& random, Digest& results);
/// Adds results of hits and distances in a group of objects.
void AddPicks(Sequence& random, Digest& results);
/// Adds results of counts, lengths, directions and areas of contours.
void AddContourQueries(Sequence& random, Digest& results);
/// Adds results of stretches cut out of contours.
void AddCuts(Sequence& random, Digest& results);
/// Adds results of conversions between forms of arcs, and angles.
void AddArcMath(Sequence& random, Digest& results);
/// Adds results of vectors, tangents and corner angles.
void AddDirections(Sequence& random, Digest& results);
/// Adds results of positions, points and walks along contours.
void AddPositions(Sequence& random, Digest& results);
/// Adds results of convex hulls.
void AddHulls(Sequence& random, Digest& results);
/// Adds results of zones round the sharp corners of contours.
void AddZones(Sequence& random, Digest& results);
/// Adds results of topological polylines, turned and mirrored.
void AddTopology(Sequence& random, Digest& results);
/// Adds on which side of contours points lie, how far objects are apart and which of them lies in which.
void AddSides(Sequence& random, Digest& results);

} // namespace digest

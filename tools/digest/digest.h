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

/// FNV-1a over the bits of what is added. All NaNs count as one: their bits carry no answer.
class Digest {
public:
    void Add(double value);
    void Add(const math::DPOINT2& p);
    void Add(const math::Bounds& box);
    void Add(const qev::SEGMENT& segment);

    int GetCount() const { return m_count; }
    std::uint64_t GetHash() const { return m_hash; }

private:
    std::uint64_t m_hash = 0xcbf29ce484222325;
    int m_count = 0;
};

/// Seeded random numbers (SplitMix64).
class Sequence {
public:
    double Uniform(double low, double high);
    /// In [0, below).
    int Int(int below) { return static_cast<int>(Next() % static_cast<std::uint64_t>(below)); }
    math::DPOINT2 Point() { return {Uniform(-100, 100), Uniform(-100, 100)}; }
    /// Of magnitude 2^-24 to 4, of either sign.
    double Bulge();
    /// A contour of lines, arcs and, in the extended one, Bezier pieces; about every third one is closed.
    std::unique_ptr<qev::CCadPolyline> Polyline(int segments);
    std::unique_ptr<qev::CCadPolylineEx> PolylineEx(int segments);
    /// A circle, arc, ellipse, elliptic arc, rectangle, line or contour, by turns.
    std::unique_ptr<qev::CCadObject> Object();

private:
    std::uint64_t Next();

    std::uint64_t m_state = 20260101;
    int m_objects = 0;
};

/// One line of the digest.
struct Subject {
    const char* name;
    void (*add)(Sequence& random, Digest& results);
};

void AddElementary(Sequence& random, Digest& results);
void AddArcs(Sequence& random, Digest& results);
void AddEllipses(Sequence& random, Digest& results);
void AddBeziers(Sequence& random, Digest& results);
void AddObjects(Sequence& random, Digest& results);
void AddConversions(Sequence& random, Digest& results);
void AddPicks(Sequence& random, Digest& results);
void AddContourQueries(Sequence& random, Digest& results);
void AddCuts(Sequence& random, Digest& results);
void AddArcMath(Sequence& random, Digest& results);
void AddDirections(Sequence& random, Digest& results);
void AddPositions(Sequence& random, Digest& results);
void AddHulls(Sequence& random, Digest& results);
void AddZones(Sequence& random, Digest& results);
void AddTopology(Sequence& random, Digest& results);

} // namespace digest

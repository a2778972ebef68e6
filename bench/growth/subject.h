/// \file
/// The functions whose growth is measured, and what they are asked about.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "support/contours.h"

namespace qev::bench {

/// Ordinary input of size n: contours of n segments, groups and lists of n objects, n zones.
struct Input {
    explicit Input(int size);
    ~Input();
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    static constexpr int kQuestions = 64; ///< how many points, positions and lengths there are to ask for

    int n;
    CCadPolyline open{false};           ///< lines and arcs in turn along a wave
    CCadPolyline closed{false};         ///< its closed twin
    CCadPolylineEx beziers{false};      ///< n Bezier pieces along a wave
    CCadPolyline curve{false};          ///< short lines that turn gently, which regrouping takes as one curve
    CCadGroup group{false};             ///< n closed contours of four lines on a grid
    std::unique_ptr<CGroupIndex> index; ///< over the group
    CCadGroup outlines{false};          ///< a copy of the group
    std::list<CCadObject*> members;     ///< those of the group
    CCadGroup laden{false};             ///< carries n technics, and a text of n values
    std::vector<DPOINT2> near;          ///< points within 2 mm of the open contour
    std::vector<DPOINT2> on;            ///< points on it
    std::vector<DPOINT2> picks;         ///< points at outlines of the group
    std::vector<math::POLYPOS> positions; ///< on the contours
    std::vector<double> lengths;          ///< mm, up to that of the open contour
    std::unique_ptr<CCadPolyline> chords; ///< what the open contour is converted to
    std::vector<int> chordMap;            ///< and its segment map
    std::vector<math::PosRange> zones;    ///< disjoint, in the order of their starts
    std::vector<math::PosRange> gaps;     ///< between the zones
    std::vector<math::PosRange> shuffled; ///< the zones in no order
    std::vector<math::PosRange> paired;   ///< in no order, two of each start
    std::vector<CConvexHelper::Point> cloud;
};

/// What a function is asked. A call that goes over the whole input may take n log n; a single question, of
/// which n are asked, a logarithm.
enum class Kind { kWhole, kQuestion };

/// A function as the library exports it.
struct Subject {
    const char* name; ///< up to a blank the exported name
    Kind kind;
    double (*ask)(Input& input, int question); ///< asks question i once
};

/// An answer of any kind as what a question answers.
template <class Answer>
double Number(Answer answer) {
    return static_cast<double>(answer);
}

/// The functions about contours and ranges.
std::span<const Subject> ContourSubjects();
/// The functions about groups, lists and technics.
std::span<const Subject> GroupSubjects();

} // namespace qev::bench

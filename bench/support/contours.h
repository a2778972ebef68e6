/// \file
/// Seeded contours and fields of contours, as the library's objects and as bare arrays.
#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

#include <qev/qev.h>

#include "questions.h"

namespace qev::bench {

using math::DPOINT2;

/// Seeded numbers that are the same with every standard library.
class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    /// A number from [low, high).
    double Uniform(double low, double high) {
        return low + (high - low) * static_cast<double>(m_engine() >> 11) * 0x1p-53;
    }
    /// A point of the square from -extent to extent (mm) round the origin.
    DPOINT2 Point(double extent) {
        const double x = Uniform(-extent, extent);
        return {x, Uniform(-extent, extent)};
    }
    /// An index of so many.
    int Index(std::size_t count) { return static_cast<int>(Uniform(0, static_cast<double>(count))); }
    /// Brings a vector out of order.
    template <class T>
    void Shuffle(std::vector<T>& of) {
        for (std::size_t i = of.size(); i > 1; --i) std::swap(of[i - 1], of[Index(i)]);
    }

private:
    std::mt19937_64 m_engine;
};

/// What is made once for all rows and repetitions: T(n).
template <class T>
T& Kept(int n) {
    static std::map<int, T> kept;
    return kept.try_emplace(n, n).first->second;
}

/// Place i of a grid with so many mm between neighbours.
inline DPOINT2 OnGrid(int i, double spacing) {
    constexpr int kColumns = 1000;
    const int column = i % kColumns, row = i / kColumns;
    return {spacing * column, spacing * row};
}

/// A segment as raw code has it.
struct Node {
    DPOINT2 start, end;
    double bulge = 0;
};

/// Radius of the waves, mm.
inline constexpr double kWaveRadius = 100;

/// An open contour of n segments nearly round the origin, at seven waves of a tenth of the radius and with
/// some noise, as a traced outline is.
struct Wave {
    /// Arcs have bulges up to `bulge` on either side; 0 makes lines.
    Wave(int n, double bulge) {
        Random random(1);
        for (int i = 0; i <= n; ++i) {
            const double angle = 0.95 * math::kTwoPi * i / n;
            const double r = kWaveRadius * (1 + 0.1 * std::sin(7 * angle) + random.Uniform(-0.3, 0.3) / n);
            points.push_back({r * std::cos(angle), r * std::sin(angle)});
            if (i > 0) nodes.push_back({points[i - 1], points[i], random.Uniform(-bulge, bulge)});
        }
        contour.SetStartPoint(points[0]);
        for (const Node& node : nodes) contour.AddArc(node.end, node.bulge);
    }
    CCadPolyline contour{false};
    std::vector<Node> nodes;
    std::vector<DPOINT2> points;
};
struct LineWave : Wave {
    explicit LineWave(int n) : Wave(n, 0) {}
};
struct ArcWave : Wave {
    explicit ArcWave(int n) : Wave(n, 0.5) {}
};

/// An open contour of n Bezier pieces through the points of a wave, with the tangents of a smooth spline.
struct BezierWave {
    explicit BezierWave(int n) {
        const std::vector<DPOINT2>& p = Kept<LineWave>(n).points;
        const auto third = [&p](int i) { // a third of the way along the tangent at point i
            const int last = static_cast<int>(p.size()) - 1;
            return (p[std::min(i + 1, last)] - p[std::max(i - 1, 0)]) / 6;
        };
        contour.SetStartPoint(p[0]);
        for (int i = 0; i < n; ++i) contour.AddBezier(p[i] + third(i), p[i + 1] - third(i + 1), p[i + 1]);
    }
    CCadPolylineEx contour{false};
};

/// The points that are asked for round a wave: within 2 mm of its outline, as a click or a probe is.
inline const std::vector<DPOINT2>& NearQuestions() {
    static const std::vector<DPOINT2> points = [] {
        constexpr int kPoints = 10'000;
        Random random(2);
        std::vector<DPOINT2> drawn(kQuestions);
        for (DPOINT2& point : drawn) {
            const DPOINT2 beside = random.Point(2);
            point = Kept<LineWave>(kPoints).points[random.Index(kPoints)] + beside;
        }
        return drawn;
    }();
    return points;
}
/// Points anywhere in the square that holds a wave.
inline const std::vector<DPOINT2>& FarQuestions() {
    static const std::vector<DPOINT2> points = [] {
        Random random(3);
        std::vector<DPOINT2> drawn(kQuestions);
        for (DPOINT2& point : drawn) point = random.Point(1.2 * kWaveRadius);
        return drawn;
    }();
    return points;
}

/// A position as one number, index and ratio added up.
inline double At(const math::POLYPOS& pos) {
    return pos.nSegIndex + pos.dRatio;
}

/// Squared distance from p to a line, and its foot's ratio.
inline double SquareToLine(const DPOINT2& p, const Node& node, double& ratio) {
    const DPOINT2 along = node.end - node.start;
    ratio = std::clamp(math::Dot(p - node.start, along) / math::Dot(along, along), 0.0, 1.0);
    const DPOINT2 gap = p - (node.start + along * ratio);
    return math::Dot(gap, gap);
}

/// One number in which both coordinates show, mm.
inline double Blend(const DPOINT2& p) {
    return p.x + 2 * p.y;
}

} // namespace qev::bench

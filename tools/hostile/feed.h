/// \file
/// Numbers and objects for calls that tools/hostile/hostile_calls.py writes: hostile ones in chosen places.
#pragma once

#include <array>
#include <cfloat>
#include <climits>

#include "support/support.h"

namespace hostile {

/// Hands out numbers, ordinary ones but in the places that are to be hostile, and the objects made of them.
class Feed {
public:
    enum Places { kNone = -1, kAll = -2, kSome = -3 };
    /// The one hostile place or one of Places; which hostile number stands there, or what some places are
    /// drawn by; which kinds of objects, flags and texts are made.
    Feed(int place, int value, int variant) : m_nPlace(place), m_nValue(value), m_nVariant(variant) {}

    double Number(double ordinary) {
        const int value = NextValue();
        return value < 0 ? ordinary : kNumbers[value];
    }
    int Int(int ordinary) {
        const int value = NextValue();
        return value < 0 ? ordinary : kInts[value];
    }
    math::DPOINT2 Point(double x, double y) { return {Number(x), Number(y)}; }
    bool Flag() const { return m_nVariant % 2 == 1; }
    const char* Text() const {
        return std::array{"SegmentType=Both;AbsoluteError=0.01;", "SegmentType=Line;AbsoluteError=1e300;", "",
                          "SegmentType=Arc;AbsoluteError=-1e-320;", "TL"}[m_nVariant % 5];
    }
    /// An object of a kind that is a V, or null where it may be; it is the feed's.
    template <class V>
    V* Object(bool mayBeNull);
    /// The object is somebody else's from now on.
    template <class V>
    V* Release(V* object) {
        for (auto& owned : m_objects)
            if (owned.get() == object) (void)owned.release();
        return object;
    }

    int PlaceCount() const { return m_nPlaces; }     ///< that have been asked for
    int VariantCount() const { return m_nVariants; } ///< of the objects that have been asked for

    static constexpr int kValues = 16; ///< hostile numbers

private:
    static constexpr std::array<double, kValues> kNumbers{
        test::kNaN, test::kInf, -test::kInf, 0,  -0.0, 5e-324,           1e-300,  1e300,
        -1e300,     DBL_MAX,    1,           -1, 0.5,  9007199254740992, INT_MAX, 1e-9};
    static constexpr std::array<int, kValues> kInts{INT_MIN, INT_MAX, INT_MIN + 1, INT_MAX - 1, -1, -2,
                                                    0,       1,       2,           3,           7,  64,
                                                    1 << 16, 6145,    1 << 30,     -(1 << 20)};

    // Which hostile number stands in the next place; -1 where an ordinary one does.
    int NextValue() {
        const int place = m_nPlaces++;
        if (m_nPlace != kSome) return m_nPlace == kAll || m_nPlace == place ? m_nValue : -1;
        std::minstd_rand engine(m_nValue * 1009 + place * 31 + 1);
        engine.discard(3);
        const auto drawn = static_cast<int>(engine() >> 8);
        return drawn % 2 == 0 ? drawn / 2 % kValues : -1;
    }

    std::list<std::unique_ptr<qev::CCadObject>> m_objects;
    int m_nPlace, m_nValue, m_nVariant;
    int m_nPlaces = 0;
    int m_nVariants = 1;
};

/// What the script writes: the functions, and the kinds of objects.
struct Row {
    const char* name;
    void (*call)(Feed&);
};
const std::vector<Row>& Rows();
using Maker = qev::CCadObject* (*)(Feed&);
const std::vector<Maker>& Makers();

template <class V>
V* Feed::Object(bool mayBeNull) {
    static const std::vector<Maker> makers = [] {
        std::vector<Maker> fitting;
        for (const Maker make : Makers()) {
            Feed ordinary(kNone, 0, 0);
            const std::unique_ptr<qev::CCadObject> object(make(ordinary));
            if (dynamic_cast<V*>(object.get())) fitting.push_back(make);
        }
        return fitting;
    }();
    const std::size_t choices = makers.size() + mayBeNull, choice = m_nVariant / m_nVariants % choices;
    m_nVariants *= static_cast<int>(choices);
    if (choice == makers.size()) return nullptr;
    m_objects.emplace_back(makers[choice](*this));
    return dynamic_cast<V*>(m_objects.back().get());
}

/// A kind of a host's own: what is asked of it goes over its pieces.
class OwnKind : public qev::CCadMultiSegments {
public:
    explicit OwnKind(const qev::SEGMENT& segment) : m_segment(segment) {}
    qev::cad_t GetType() const override { return 0x4321; }
    int GetSegmentCount() const override { return 2; }
    qev::SEGMENT GetSegment(int index) const override {
        return index == 1 ? m_segment.Reversed() : m_segment;
    }

private:
    qev::SEGMENT m_segment;
};

/// A contour with a line, an arc, a Bezier piece if it can, and so many lines more, that has been asked
/// before: so a long one has an index.
template <class Contour>
qev::CCadObject* Drawn(Feed& f, int more) {
    auto* contour = new Contour;
    contour->SetStartPoint(f.Point(0, 0));
    contour->AddLine(f.Point(8, 0));
    contour->AddArc(f.Point(8, 6), f.Number(0.5));
    if constexpr (requires { contour->AddBezier({}, {}, {}); })
        contour->AddBezier(f.Point(7, 9), f.Point(1, 9), f.Point(0, 6));
    for (int i = 0; i <= more; ++i) contour->AddLine(math::Rotated({1.0 * i, 0}, 0.1 * i));
    for (int question = 0; question < 2; ++question) (void)contour->GetLength();
    return contour;
}

} // namespace hostile

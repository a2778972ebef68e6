// A file names its unit by a number, $INSUNITS. Most files of mechanical programs leave it at 0, "unitless",
// and are in mm; so that is what 0 and a missing number mean.
//
// $MEASUREMENT says besides whether a file is metric or imperial. It is set by the template that a drawing
// was begun with rather than by who drew, and stands at imperial in many drawings in mm. To scale by 25.4 on
// its word alone would spoil those, so that it is remarked and not followed.

#include "dxf_units.h"

#include <array>
#include <string>

namespace host {
namespace {

struct UnitRow {
    std::array<const char*, 3> names; // the last one is shown; null where there are fewer in use
    double millimetres;
};

// By the number of $INSUNITS. The inch is 25.4 mm by definition, the survey foot 1200/3937 m.
constexpr double kInch = 25.4;
constexpr double kSurveyFoot = 1200e3 / 3937;
constexpr std::array kUnits{
    UnitRow{{"unitless", nullptr, "mm"}, 1},
    UnitRow{{"inches", "inch", "in"}, kInch},
    UnitRow{{"feet", "foot", "ft"}, 12 * kInch},
    UnitRow{{"miles", "mile", "mi"}, 63360 * kInch},
    UnitRow{{"millimetres", "millimeters", "mm"}, 1},
    UnitRow{{"centimetres", "centimeters", "cm"}, 10},
    UnitRow{{"metres", "meters", "m"}, 1e3},
    UnitRow{{"kilometres", "kilometers", "km"}, 1e6},
    UnitRow{{"microinches", "microinch", "uin"}, 1e-6 * kInch},
    UnitRow{{"mils", "thou", "mil"}, 1e-3 * kInch},
    UnitRow{{"yards", "yard", "yd"}, 36 * kInch},
    UnitRow{{"angstroms", nullptr, "angstrom"}, 1e-7},
    UnitRow{{"nanometres", "nanometers", "nm"}, 1e-6},
    UnitRow{{"microns", "micrometres", "um"}, 1e-3},
    UnitRow{{"decimetres", "decimeters", "dm"}, 100},
    UnitRow{{"decametres", "decameters", "dam"}, 1e4},
    UnitRow{{"hectometres", "hectometers", "hm"}, 1e5},
    UnitRow{{"gigametres", "gigameters", "gigametre"}, 1e12},
    UnitRow{{"astronomical units", nullptr, "au"}, 1.495978707e14},
    UnitRow{{"light years", nullptr, "ly"}, 9.4607304725808e18},
    UnitRow{{"parsecs", "parsec", "pc"}, 3.0856775814914e19},
    UnitRow{{"survey feet", nullptr, "survey ft"}, kSurveyFoot},
    UnitRow{{"survey inches", nullptr, "survey in"}, kSurveyFoot / 12},
    UnitRow{{"survey yards", nullptr, "survey yd"}, 3 * kSurveyFoot},
    UnitRow{{"survey miles", nullptr, "survey mi"}, 5280 * kSurveyFoot},
};
constexpr double kLongest = 1e12; // mm; drawings of 1e9 such units still keep far from overflow

DrawingUnit Checked(const UnitRow& row, UnitSource source) {
    if (row.millimetres > kLongest)
        throw DrawingError(std::string("is in ") + row.names.front() + ", too large to be drawn in mm");
    return {row.names.back(), row.millimetres, source};
}

DrawingUnit UnitNamed(std::string_view name) {
    std::string known;
    for (const UnitRow& row : kUnits) {
        for (const char* each : row.names)
            if (each && IsSameName(name, each)) return Checked(row, UnitSource::kSettings);
        (known += known.empty() ? "" : ", ") += row.names.front();
    }
    throw DrawingError("there is no unit " + Quoted(name) + " but " + known);
}

int NumberOf(const DxfFile& file, std::string_view variable, int otherwise) {
    const DxfGroup* group = file.FindVariable(variable);
    return group ? group->AsInteger() : otherwise;
}

} // namespace

DrawingUnit UnitOf(const DxfFile& file, std::string_view name, ErrorLog& log) {
    if (!name.empty()) return UnitNamed(name);
    constexpr int kMetric = 1;
    constexpr int kNone = 0;
    const int number = NumberOf(file, "$INSUNITS", kNone);
    if (number > kNone && number < static_cast<int>(kUnits.size()))
        return Checked(kUnits[number], UnitSource::kFile);
    if (number != kNone)
        log.Remark("there is no unit of the number " + std::to_string(number) + "; it is read in mm");
    if (NumberOf(file, "$MEASUREMENT", kMetric) == kMetric) return {};
    log.Remark("names no unit, but says that it is imperial; it is read in mm nevertheless");
    return {"mm", 1, UnitSource::kHint};
}

} // namespace host

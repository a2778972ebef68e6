// The display unit. Stored values are always in mm; the unit only decides what dialogs show, which is why
// every conversion is a single division or multiplication at the moment of showing, and no value is ever
// converted in place, where it would lose digits with every change.

#include <new>

#include <qev/units/unit_system.h>

namespace {

constexpr double kMmPerInch = 25.4;      // exact by definition
constexpr double kRoundMmPerInch = 25.0; // for quantities that are given in round numbers in either unit

} // namespace

// In this order: the holder deletes the instance when the library is unloaded.
UnitSystem* UnitSystem::ms_pUnitSystem = new (std::nothrow) UnitSystem;
UnitSystem::AutoRelease UnitSystem::ms_auto;

UnitSystem::AutoRelease::~AutoRelease() {
    delete ms_pUnitSystem;
    ms_pUnitSystem = nullptr;
}

UnitSystem* UnitSystem::GetUnitSystem() {
    return ms_pUnitSystem;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts link to this signature
bool UnitSystem::Load(std::string name) {
    if (name == "Metric") return Load(UNIT_METRIC);
    return name == "Inch" && Load(UNIT_INCH);
}

bool UnitSystem::Load(unit_len_t unit) {
    if (m_bLoaded) return false;
    m_eUnit = unit;
    m_bLoaded = true;
    return true;
}

int UnitSystem::GetDefaultPrecision() const {
    return m_eUnit == UNIT_INCH ? 5 : 3;
}

double UnitSystem::MetricToUiUnit(double v, convert_type_t type) const {
    if (m_eUnit != UNIT_INCH) return v;
    if (type == CONVERT_LENGTH) return v / kMmPerInch;
    return type == CONVERT_ROUNDED ? v / kRoundMmPerInch : v;
}

double UnitSystem::UiUnitToMetric(double v) const {
    return m_eUnit == UNIT_INCH ? InchToMetric(v) : v;
}

// NOLINTBEGIN(readability-convert-member-functions-to-static): hosts may take them as members
double UnitSystem::InchToMetric(double v) const {
    return v * kMmPerInch;
}

double UnitSystem::MetricToInch(double v) const {
    return v / kMmPerInch;
}
// NOLINTEND(readability-convert-member-functions-to-static)

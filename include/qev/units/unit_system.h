/// \file
/// The display unit of the process.
#pragma once

#include <array>
#include <string>

#include <qev/export.h>

/// A unit of length.
enum unit_len_t : int {
    UNIT_METRIC = 0, ///< mm
    UNIT_INCH = 1    ///< 25.4 mm
};

/// How a quantity is converted for display. Any other value acts as CONVERT_NONE.
enum convert_type_t : int {
    CONVERT_LENGTH = 0,  ///< 25.4 mm to the inch
    CONVERT_ROUNDED = 1, ///< 25 mm to the inch: the round factor is meant
    CONVERT_NONE = 2     ///< the same in both units
};

/// The names of the kinds of quantities, by the number of the kind, for hosts that store them as texts.
inline constexpr std::array<const char*, 12> kQuantityKindNames{
    "QEV_EX_UTT_NONE",     "QEV_EX_UTT_LENGTH",       "QEV_EX_UTT_AREA",       "QEV_EX_UTT_VOLUME",
    "QEV_EX_UTT_TIME",     "QEV_EX_UTT_SPEED",        "QEV_EX_UTT_ANGLE",      "QEV_EX_UTT_ROTATE_SPEED",
    "QEV_EX_UTT_CURRENCY", "QEV_EX_UTT_PRICE_LENGTH", "QEV_EX_UTT_PRICE_AREA", "QEV_EX_UTT_PRICE_VOLUME"};

/// The display unit of the process: metric until it is set, which can be done once. The instance is made when
/// the library is loaded and deleted when it is unloaded.
class QEVCOMMON_API UnitSystem {
public:
    /// The instance, which stays the library's; null when it could not be made or is deleted already.
    static UnitSystem* GetUnitSystem();

    /// A copy is a value of its own: setting it leaves the process's instance as it is.
    UnitSystem(const UnitSystem&) = default;
    /// Takes over the unit and whether it was set.
    UnitSystem& operator=(const UnitSystem&) = default;
    ~UnitSystem() = default;

    /// Sets the unit by its name, "Metric" or "Inch" exactly. False, and nothing changes, for any other name
    /// and when a unit was set before.
    bool Load(std::string name);
    /// Sets the unit; a value that is no unit acts as metric. False when a unit was set before.
    bool Load(unit_len_t unit);
    /// The unit as Load took it, also when it is none; metric at first.
    unit_len_t GetUnitType() const { return m_eUnit; }
    /// Digits behind the point that dialogs show: 5 in inch, 3 otherwise.
    int GetDefaultPrecision() const;

    /// A stored value in the display unit.
    double MetricToUiUnit(double v, convert_type_t type) const;
    /// A displayed length in mm.
    double UiUnitToMetric(double v) const;
    /// Inches in mm, whatever the display unit is.
    double InchToMetric(double v) const;
    /// mm in inches, whatever the display unit is.
    double MetricToInch(double v) const;

private:
    struct AutoRelease {
        ~AutoRelease();
    };

    UnitSystem() = default;

    unit_len_t m_eUnit = UNIT_METRIC;
    bool m_bLoaded = false;

    static UnitSystem* ms_pUnitSystem;
    static AutoRelease ms_auto;
};

/// \file
/// Metric and inch: the display unit of the process, conversions, and numbers in dialogs.
///
/// Everything is stored in millimetres; only what the user sees is converted. Number texts have a point
/// whatever the locale. These names are global.
#pragma once

#include <qev/units/dialog_text.h>
#include <qev/units/unit_system.h>

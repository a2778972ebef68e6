/// \file
/// Everything that QevCommon exports.
#pragma once

#include <qev/contour.h>
#include <qev/geometry.h>
#include <qev/lua.h>
#include <qev/message.h>
#include <qev/ranges.h>
#include <qev/support.h>
#include <qev/technics.h>
#include <qev/types.h>
#include <qev/units.h>
#include <qev/version.h>

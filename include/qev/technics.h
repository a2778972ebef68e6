/// \file
/// Technics: machining processes on CAD objects, the plug-ins that make them, and the manager over both.
#pragma once

#include <qev/technics/load_library.h>
#include <qev/technics/manager.h>
#include <qev/technics/queries.h>
#include <qev/technics/technics_operator.h>
#include <qevdata/qevdata.h>

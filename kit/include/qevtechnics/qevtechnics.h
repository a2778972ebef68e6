/// \file
/// Everything that a technics plug-in needs besides <qev/qev.h>.
#pragma once

#include <qevtechnics/parameters.h>
#include <qevtechnics/path_operator.h>
#include <qevtechnics/paths.h>
#include <qevtechnics/plug_in.h>
#include <qevtechnics/stretches.h>
#include <qevtechnics/surroundings.h>

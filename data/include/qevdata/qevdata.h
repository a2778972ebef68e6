/// \file
/// The CAD data library: objects, contours, groups, stock, picking and conversion.
#pragma once

#include <qevdata/adobe.h>
#include <qevdata/arc.h>
#include <qevdata/cad_object.h>
#include <qevdata/converter.h>
#include <qevdata/direction.h>
#include <qevdata/ellipse.h>
#include <qevdata/group.h>
#include <qevdata/group_index.h>
#include <qevdata/kinds.h>
#include <qevdata/line.h>
#include <qevdata/multi_segments.h>
#include <qevdata/param.h>
#include <qevdata/picking.h>
#include <qevdata/polyline.h>
#include <qevdata/polyline_ex.h>
#include <qevdata/rectangle.h>
#include <qevdata/segment.h>
#include <qevdata/technics.h>
#include <qevdata/transform.h>
#include <qevdata/tree_walk.h>
#include <qevdata/zone_manager.h>

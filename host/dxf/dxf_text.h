/// \file
/// The texts of a DXF drawing.
#pragma once

#include <memory>

#include <qevdata/qevdata.h>

#include "dxf_fields.h"
#include "host/drawing/affine.h"

namespace host {

/// The text of a TEXT or MTEXT under an affine map, with the contours that draw it in its group; the contours
/// have no attributes. Throws a DrawingError when the entity lacks something or its text is longer than
/// 10,000 bytes.
std::unique_ptr<qev::CCadText> MakeText(const Fields& fields, const Affine& map);

} // namespace host

/// \file
/// The kind codes of CAD objects.
#pragma once

namespace qev {

/// The kind code that `CCadObject::GetType` answers. 0x11xx to 0x17xx are single-piece kinds, 0x18xx segment
/// contours, 0x19xx containers.
using cad_t = int;

inline constexpr cad_t kCadNone = 0;               ///< no kind
inline constexpr cad_t kCadDot = 0x1100;           ///< CCadDot
inline constexpr cad_t kCadLine = 0x1200;          ///< CCadLine
inline constexpr cad_t kCad1300 = 0x1300;          ///< a non-contour kind of the host
inline constexpr cad_t kCadCircle = 0x1400;        ///< CCadCircle
inline constexpr cad_t kCadArc = 0x1500;           ///< CCadArc
inline constexpr cad_t kCadEllipse = 0x1600;       ///< CCadEllipse
inline constexpr cad_t kCadEllipseArc = 0x1700;    ///< CCadEllipseArc
inline constexpr cad_t kCad1800 = 0x1800;          ///< a host's segment contour without a segment interface
inline constexpr cad_t kCadRectangle = 0x1810;     ///< CCadRectangle, and segment contours of the host
inline constexpr cad_t kCad1820 = 0x1820;          ///< segment contours of the host
inline constexpr cad_t kCad1830 = 0x1830;          ///< segment contours of the host
inline constexpr cad_t kCadPolyline = 0x1840;      ///< CCadPolyline
inline constexpr cad_t kCadCurve = 0x1850;         ///< a contour of the host that has only a total length
inline constexpr cad_t kCadPolylineEx = 0x1860;    ///< CCadPolylineEx
inline constexpr cad_t kCadGroup = 0x1900;         ///< CCadGroup
inline constexpr cad_t kCadGroupLike = 0x1910;     ///< containers of the host derived from CCadGroup
inline constexpr cad_t kCadRelationGroup = 0x1920; ///< CCadRelationGroup
inline constexpr cad_t kCadText = 0x1A00;          ///< CCadText
inline constexpr cad_t kCad1B00 = 0x1B00;          ///< a non-contour kind of the host
inline constexpr cad_t kCad1C00 = 0x1C00;          ///< a non-contour kind of the host

} // namespace qev

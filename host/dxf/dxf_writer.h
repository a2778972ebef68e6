/// \file
/// A DXF drawing that is written object by object.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include <qevdata/qevdata.h>

namespace host {

/// A layer of a drawing that is written.
struct DxfLayer {
    const char* name; ///< letters, digits and underscores
    int colour;       ///< of the 255 that DXF has by number: 1 red, 3 green, 5 blue, 7 black or white
};

/// Writes a drawing of DXF 2000, in mm, onto a stream: what stands before the objects when it is made, and
/// what stands behind them when it is ended.
class DxfWriter {
public:
    /// Writes the head of a drawing with these layers beside its layer 0. The stream must outlive the writer.
    DxfWriter(std::ostream& out, const std::vector<DxfLayer>& layers);

    /// Writes an object, or the members of a group or text, onto a layer: dots, lines, ellipses, circles and
    /// arcs as they are, all else as a polyline of lines and arcs that leaves it by 0.001 mm at most. Circles
    /// and arcs that run clockwise become such polylines too, because DXF has none. Throws a DrawingError for
    /// what cannot be converted.
    void Add(const qev::CCadObject& object, std::string_view layer);

    /// Writes what stands behind the objects. To be called once.
    void End();

private:
    void Group(int code, std::string_view value);
    void Group(int code, double value);
    void Point(int code, const math::DPOINT2& p);
    void Words(std::string_view words);
    void Layer(const DxfLayer& layer);
    void Begin(std::string_view type, std::string_view layer, std::string_view subclass);
    void AddLeaf(const qev::CCadObject& object, std::string_view layer);
    void AddRound(const math::DPOINT2& centre, double radius);
    void AddEllipse(const math::EllipticArc& outline, std::string_view layer);
    void AddPolyline(const qev::CCadPolyline& polyline, std::string_view layer);
    std::string NextHandle();

    std::ostream& m_out;
    unsigned m_nHandle;
};

} // namespace host

/// \file
/// The layers of a DXF file: which entities they show, and in which colour.
#pragma once

#include <set>
#include <string>
#include <utility>

#include "dxf_encoding.h"
#include "dxf_fields.h"
#include "dxf_file.h"
#include "dxf_objects.h"
#include "host/drawing/drawing.h"

namespace host {

/// Decides for each entity of a file whether it is taken, on which layer it lies and which colour it has. It
/// fills the drawing's layers, by their names in UTF-8, and counts what is left out.
class DxfLayers {
public:
    /// A layer of the drawing with its name.
    using Entry = std::pair<const std::string, Layer>;

    /// What an entity is drawn with.
    struct Look {
        Entry* layer = nullptr; ///< belongs to the drawing
        std::string colour;     ///< "#rrggbb"; empty for the colour of the paper's opposite
    };

    /// Reads the table of layers. The file, the settings and the drawing must outlive it; a damaged record
    /// goes to the log.
    DxfLayers(const DxfFile& file, const ReadSettings& settings, ErrorLog& log, Drawing& drawing);

    /// The layer and the colour of an entity. In a block, layer 0 and the colour "by block" are those of the
    /// insert that shows it; `insert` is null outside of blocks. A layer that the file does not list is made.
    /// Throws a DrawingError when there are too many layers.
    Look LookOf(const Fields& entity, const Look* insert);

    /// Whether an entity with a look is taken; if not, why is counted. An insert is taken for what it shows:
    /// only a frozen layer hides it.
    bool Takes(const Fields& entity, const Look& look);

    /// Throws a DrawingError when the settings ask for a layer that neither the file lists nor an entity has
    /// named.
    void CheckWanted() const;

private:
    Entry& Find(const Fields& fields, std::string_view bytes);
    static bool IsShown(const Fields& entity, const Layer& layer);

    const ReadSettings& m_settings;
    Drawing& m_drawing;
    const DxfEncoding m_encoding;
    std::set<std::string, NameLess> m_setWanted;
};

} // namespace host

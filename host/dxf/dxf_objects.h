/// \file
/// The objects of a DXF drawing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/drawing/drawing.h"

namespace host {

/// How a drawing is to be read. By default as its file says: its unit, its visible layers, the model alone.
struct ReadSettings {
    std::string drawingUnit{};             ///< unit of the file's numbers, as "inches"; empty: what it says
    bool takeAll = false;                  ///< takes hidden layers, invisible entities and paper space too
    std::vector<std::string> layers{};     ///< the layers that are taken, in any case of letters; none: all
    std::optional<double> joinTolerance{}; ///< mm between ends that are joined, 0: none; else it is chosen
    bool joinAcrossLayers = false;         ///< takes all layers as one when pieces join and duplicates go
};

/// Reads a DXF drawing, ASCII or binary, and adds its objects to a drawing, in mm and not yet joined. What
/// is wrong with an entity goes to the log: a strict log throws the first error, a lenient one leaves the
/// entity out. A file that cannot be loaded throws a DrawingError whatever the log. A drawing whose
/// inserts make its objects larger than 256 MB and eight times the file, or that has more than a hundred
/// thousand inserts, is read as far as that. A unit that there is not throws a DrawingError.
void ReadDxf(const std::string& path, ErrorLog& log, Drawing& drawing, const ReadSettings& settings = {});

/// Reads a DXF drawing from the bytes of a file and adds its objects to a drawing, in mm and not yet joined.
/// What is wrong goes to the log: a strict log throws the first error, a lenient one leaves the entity out.
/// More than 256 MB of bytes are refused, and a unit that there is not throws a DrawingError. No bytes make
/// it crash; the objects take at most 256 MB and eight times the bytes, and reading them no more than about a
/// gigabyte besides.
void ReadDxfBytes(std::string_view bytes, ErrorLog& log, Drawing& drawing, const ReadSettings& settings = {});

} // namespace host

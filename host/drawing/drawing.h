/// \file
/// A drawing as a tree of CAD objects, and what the reading of it found.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include <qevdata/qevdata.h>

#include "drawing_error.h"
#include "names.h"

namespace host {

/// Who said which unit a drawing's numbers have.
enum class UnitSource {
    kAssumed,  ///< nobody: they are taken as mm
    kHint,     ///< the file names none but says that it is imperial: mm nevertheless, with a remark
    kFile,     ///< the file names its unit
    kSettings, ///< the settings name it, whatever the file says
};

/// The unit of the numbers that a drawing's file holds. The objects themselves are in mm.
struct DrawingUnit {
    std::string name = "mm"; ///< its shortest name: "mm", "in", "ft", "m" ...
    double millimetres = 1;  ///< how long one unit is
    UnitSource source = UnitSource::kAssumed;
};

/// A layer of a drawing.
struct Layer {
    std::string colour;    ///< "#rrggbb"; empty for the colour of the paper's opposite, black on white
    bool isShown = true;   ///< neither switched off nor frozen
    bool isFrozen = false; ///< hides also what inserts on it show of other layers
    int entities = 0;      ///< how many lie on it, taken or not; those of a block once for each insert of it
};

/// How much of a file's geometry was left out or changed when it was read.
struct ReadCounts {
    int hidden = 0;      ///< entities left out because their layer is off or frozen
    int invisible = 0;   ///< entities left out because they are marked as invisible
    int paperSpace = 0;  ///< entities left out because they lie on a sheet beside the model
    int otherLayers = 0; ///< entities left out because only other layers were asked for
    int zeroLength = 0;  ///< segments and objects without length (repeated vertices) that were dropped
    int duplicates = 0;  ///< objects dropped because the layer holds the same one already
    int covered = 0;     ///< lines dropped because they lie on a longer side of another object of the layer
    int doubled = 0;     ///< objects kept although another layer holds the same one: both would be cut
    int sloped = 0;      ///< entities whose height changes along them, drawn as seen from above
    int elevated = 0;    ///< entities above or below the plane, or with a thickness, drawn in the plane
    int wide = 0;        ///< polylines with a width, drawn as their middle line
    int joined = 0;      ///< open pieces that were joined into contours
    int overlaps = 0;    ///< pairs of objects that share a straight stretch, which would be cut twice
};

/// A number of ReadCounts with the words that a summary and a table of data have for it.
struct ReadCountRow {
    int ReadCounts::*count; ///< the number
    const char* key;        ///< its name in data: letters and underscores
    const char* words;      ///< what a summary says behind the number, in a line of its own
};

/// The numbers of ReadCounts, in the order in which a summary names those that are not 0.
inline constexpr std::array kReadCounts{
    ReadCountRow{&ReadCounts::hidden, "hidden", "left out: on layers that are off or frozen"},
    ReadCountRow{&ReadCounts::invisible, "invisible", "left out: marked as invisible"},
    ReadCountRow{&ReadCounts::paperSpace, "paper_space", "left out: in paper space"},
    ReadCountRow{&ReadCounts::otherLayers, "other_layers", "left out: on layers that were not asked for"},
    ReadCountRow{&ReadCounts::zeroLength, "zero_length", "dropped: segments without length"},
    ReadCountRow{&ReadCounts::duplicates, "duplicates", "dropped: drawn twice"},
    ReadCountRow{&ReadCounts::covered, "covered", "dropped: lines drawn over longer ones"},
    ReadCountRow{&ReadCounts::doubled, "doubled", "warning: drawn on two layers, both kept"},
    ReadCountRow{&ReadCounts::sloped, "sloped", "warning: sloped in space, flattened"},
    ReadCountRow{&ReadCounts::elevated, "elevated", "warning: elevated or thick, flattened"},
    ReadCountRow{&ReadCounts::wide, "wide", "warning: with a width, drawn as their middle line"},
    ReadCountRow{&ReadCounts::joined, "joined", "joined: open pieces, into contours"},
    ReadCountRow{&ReadCounts::overlaps, "overlaps",
                 "warning: pairs of objects that share a stretch, cut twice"},
};

/// The objects of a drawing, in mm. An insert of a block is a group with the attribute "Block", a text holds
/// the strokes that draw it, everything else is a leaf. Every leaf and text carries the attribute "Layer",
/// and "Color" as "#rrggbb" unless it has the colour of the paper's opposite.
struct Drawing {
    qev::CCadGroup root;                ///< owns all objects
    DrawingUnit unit;                   ///< what the file's numbers were multiplied by
    std::map<std::string, int> skipped; ///< how many entities the host does not draw, by type
    ReadCounts counts;                  ///< what was left out, dropped or flattened

    /// The layers that the file lists or uses, by name in any case of letters.
    std::map<std::string, Layer, NameLess> layers;

    /// Leaves and texts in drawing order, through all groups. They belong to the drawing and stay valid until
    /// it changes.
    std::vector<const qev::CCadObject*> Objects() const;
};

} // namespace host

/// \file
/// Drawings from short texts, for tests of the host.
#pragma once

#include <string>
#include <vector>

#include "host/dxf/dxf_objects.h"
#include "support/shapes.h"

namespace test {

/// The length of an ellipse with half axes 2 and 1, by its series.
inline constexpr double kEllipseLength = 9.688448220547675;

/// Groups from a line of words, "0 LINE 8 0 10 1.5 ...": each word becomes a line. No value has blanks.
std::string Groups(const std::string& words);

/// An ASCII file with entities, and with blocks that they may insert; both are given as words.
std::string DxfFile(const std::string& entities, const std::string& blocks = "");

/// The groups of an ASCII file as a binary file.
std::string BinaryFile(const std::string& asciiFile);

/// A drawing that is read from the bytes of a file. A strict one throws at the first error.
struct DrawingOf {
    explicit DrawingOf(const std::string& bytes, bool lenient = false) : log(lenient) {
        host::ReadDxfBytes(bytes, log, drawing);
        objects = drawing.Objects();
    }
    host::ErrorLog log;
    host::Drawing drawing;
    std::vector<const qev::CCadObject*> objects;
};

} // namespace test

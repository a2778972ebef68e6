/// \file
/// Drawings from short texts, and runs of the host program in this process.
#pragma once

#include <string>
#include <vector>

#include "host/dxf/dxf_objects.h"
#include "support/shapes.h"
#include "support/temp_path.h"

namespace test {

/// The length of an ellipse with half axes 2 and 1, by its series.
inline constexpr double kEllipseLength = 9.688448220547675;

/// A square of side 10 with its corner at the origin, counter-clockwise, as the words of an entity.
inline const std::string kSquareWords = "0 LWPOLYLINE 70 1 10 0 20 0 10 10 20 0 10 10 20 10 10 0 20 10 ";

/// The options that load the plug-ins, in one order for all tests: the process keeps them.
inline const std::string kPlugIns = " --plugin '" LEADIN "' --plugin '" MICROJOINT "' ";

/// An ASCII file with entities, with blocks that they may insert, and with the variables and table records
/// that say how they are drawn. All are given as words, "0 LINE 8 0 10 1.5 ...", each of which becomes a
/// line; so no value has blanks.
std::string DxfFile(const std::string& entities, const std::string& blocks = "",
                    const std::string& variables = "", const std::string& records = "");

/// The groups of an ASCII file as a binary file.
std::string BinaryFile(const std::string& asciiFile);

/// A drawing that is read from the bytes of a file as far as it goes.
struct DrawingOf {
    explicit DrawingOf(const std::string& bytes, const host::ReadSettings& settings = {}) {
        host::ReadDxfBytes(bytes, log, drawing, settings);
        objects = drawing.Objects();
    }
    host::ErrorLog log{true};
    host::Drawing drawing;
    std::vector<const qev::CCadObject*> objects;
};

/// Expects every part in a text.
void ExpectContains(const std::string& text, const std::vector<std::string>& parts);

/// The bytes of a file; none when it cannot be read.
std::string BytesOf(const std::string& path);

/// What a run of the host program gave: its exit code and its two streams.
struct Ran {
    int code;
    std::string out, errors;
};

/// Runs the program with arguments from one line: words, or 'words with blanks'.
Ran RunHost(const std::string& line);

/// A run, what its output, its errors and its picture must hold, and the entity that is drawn for it, if any.
struct RunCase {
    std::string options;
    int code;
    std::vector<std::string> parts;
    std::string entity = "";
};

/// Runs on a drawing of the case's own, with paths for a picture and for saved technics. The files go at the
/// end.
struct HostRun : testing::Test {
    ~HostRun() override;
    void Write(const std::string& bytes) const { std::ofstream(drawing, std::ios::binary) << bytes; }
    void ExpectRuns(const std::vector<RunCase>& cases) const;

    const std::string drawing = TempPath("host.dxf"), picture = TempPath("host.svg"),
                      saved = TempPath("host.technics");
};

} // namespace test

/// \file
/// Runs of the host program in this process.
#pragma once

#include <string>
#include <vector>

#include "host/drawings.h"
#include "support/temp_path.h"

namespace test {

/// A square of side 10 with its corner at the origin, counter-clockwise, as the words of an entity.
inline const std::string kSquareWords = "0 LWPOLYLINE 70 1 10 0 20 0 10 10 20 0 10 10 20 10 10 0 20 10 ";

/// Expects every part in a text.
void ExpectContains(const std::string& text, const std::vector<std::string>& parts);

/// The bytes of a file; none when it cannot be read.
std::string BytesOf(const std::string& path);

/// What a run of the host program gave: its exit code and its two streams.
struct Ran {
    int code;
    std::string out, errors;
};

/// Runs the program with arguments from one line: words, or 'words with blanks'. Throws what ParseOptions
/// throws.
Ran RunHost(const std::string& line);

/// A run and what its output, its errors and its picture must hold.
struct RunCase {
    std::string options;
    int code;
    std::vector<std::string> parts;
};

/// A drawing of one entity and what is printed or drawn of it.
struct ShownCase {
    const char *name, *entity, *part;
};

/// Runs on a drawing of the case's own, with paths for a picture and for saved technics. The files go at the
/// end.
struct HostRun : testing::Test {
    ~HostRun() override;
    void Write(const std::string& bytes) const { std::ofstream(drawing, std::ios::binary) << bytes; }
    void ExpectShown(const std::vector<ShownCase>& cases) const;
    void ExpectRuns(const std::vector<RunCase>& cases) const;

    const std::string drawing = TempPath("host.dxf"), picture = TempPath("host.svg"),
                      saved = TempPath("host.technics");
};

} // namespace test

/// \file
/// DXF files from short texts.
#pragma once

#include <string>

namespace test {

/// "0 LINE 8 0 10 1.5 ..." as groups on lines of their own; the words of a text value are joined by '_'.
std::string Groups(const std::string& text);
/// A whole file of blocks and entities.
std::string DxfFile(const std::string& entities, const std::string& blocks = "");
/// The same groups as a binary file.
std::string BinaryFile(const std::string& asciiFile);

} // namespace test

/// \file
/// The encoding of a DXF file's texts and names.
#pragma once

#include <string>
#include <string_view>

#include "dxf_file.h"

namespace host {

/// Turns the texts of one file into UTF-8, as the file declares its encoding: UTF-8 since 2007, before that
/// the code page that $DWGCODEPAGE names. In a file that does not say, what is UTF-8 is taken for it.
class DxfEncoding {
public:
    /// Reads the header's variables; the file is not needed any more afterwards.
    explicit DxfEncoding(const DxfFile& file);

    /// A text in UTF-8, its codes as they are.
    std::string TextOf(std::string_view bytes) const;

    /// A name of a layer or block in UTF-8. The code "\U+0416", by which programs write letters that their
    /// code page lacks, becomes its letter.
    std::string NameOf(std::string_view bytes) const;

private:
    int m_nCodePage = 0;    // of what is not UTF-8
    bool m_bIsUtf8 = false; // whether texts are UTF-8 as far as they can be read so
};

} // namespace host

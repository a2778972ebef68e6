/// \file
/// The texts of a DXF drawing.
#pragma once

#include <map>
#include <memory>
#include <string>

#include <qevdata/qevdata.h>

#include "dxf_encoding.h"
#include "dxf_fields.h"
#include "dxf_file.h"
#include "host/drawing/affine.h"
#include "host/drawing/font.h"
#include "host/drawing/text_layout.h"

namespace host {

/// Makes the texts of one file, by its encoding and the styles that it declares.
class DxfTexts {
public:
    /// Nothing is read before the first text. The file and its encoding must outlive this.
    DxfTexts(const DxfFile& file, const DxfEncoding& encoding) : m_file(file), m_encoding(encoding) {}

    /// The text of a TEXT, MTEXT or ATTRIB under an affine map, in UTF-8 and without its codes, with the
    /// contours that draw it in its group; they have no attributes. Null when there is no font. Throws a
    /// DrawingError when the entity lacks something or its text is longer than 10,000 bytes.
    std::unique_ptr<qev::CCadText> Make(const Fields& fields, const Affine& map);

    /// How many letters the font did not have so far; each is drawn as a box.
    int LackingLetters() const { return m_nLacking; }

private:
    struct Style {
        double height = 0; ///< mm; 0 when each text has its own
        double width = 1;
        double slant = 0; ///< tangent of the angle by which its letters lean
    };

    bool Open();
    Style StyleOf(const Fields& fields) const;
    std::string TextOf(const Fields& fields) const;
    struct Text; // its items, its setting and its place
    Text LineOf(const Fields& fields) const;
    Text ParagraphsOf(const Fields& fields) const;
    double HeightOf(const Fields& fields) const;
    void Draw(const TextLayout& layout, const Affine& place, qev::CCadGroup& group);

    const DxfFile& m_file;
    const DxfEncoding& m_encoding;
    bool m_bOpen = false;
    std::unique_ptr<Font> m_pFont;
    int m_nLacking = 0;
    std::map<std::string, DxfEntity> m_mapStyles; // by their names in capitals
};

} // namespace host

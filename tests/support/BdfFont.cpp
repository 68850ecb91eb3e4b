#include <support/BdfFont.h>

#include <sstream>

namespace Vell::Testing {

namespace {

void addGlyph(std::ostream& file, const BdfGlyph& glyph) {
    constexpr const char* digits = "0123456789ABCDEF";
    file << "STARTCHAR c" << glyph.code << "\nENCODING " << glyph.code << "\nSWIDTH 500 0\nDWIDTH "
         << glyph.advance << " 0\nBBX " << glyph.width << ' ' << glyph.rows.size() << ' ' << glyph.left << ' '
         << glyph.bottom << "\nBITMAP\n";
    for (const Bytes& row : glyph.rows) {
        for (const unsigned char byte : row) {
            file << digits[byte >> 4] << digits[byte & 0xF];
        }
        file << '\n';
    }
    file << "ENDCHAR\n";
}

} // namespace

Bytes BdfFont::build() const {
    std::ostringstream file;
    file << "STARTFONT 2.1\nFONT -test-" << family << "-Medium-R-Normal--" << pixelSize << "-"
         << pixelSize * 10 << "-72-72-P-50-ISO10646-1\nSIZE " << pixelSize << " 72 72";
    if (bitsPerPixel != 1) {
        file << ' ' << bitsPerPixel;
    }
    file << "\nFONTBOUNDINGBOX " << pixelSize << ' ' << ascent + descent << " 0 " << -descent
         << "\nSTARTPROPERTIES 8\nFAMILY_NAME \"" << family << "\"\nWEIGHT_NAME \"Medium\"\nSLANT \"R\""
         << "\nPIXEL_SIZE " << pixelSize << "\nCHARSET_REGISTRY \"ISO10646\"\nCHARSET_ENCODING \"1\""
         << "\nFONT_ASCENT " << ascent << "\nFONT_DESCENT " << descent << "\nENDPROPERTIES\nCHARS "
         << glyphs.size() << '\n';
    for (const BdfGlyph& glyph : glyphs) {
        addGlyph(file, glyph);
    }
    file << "ENDFONT\n";
    const std::string text = file.str();
    return Bytes(text.begin(), text.end());
}

} // namespace Vell::Testing

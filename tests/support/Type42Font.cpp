#include <support/Type42Font.h>

#include <sstream>

namespace Vell::Testing {

namespace {

/// Writes strings of 32 bytes each: FreeType expects most of the font after the string with the directory.
void addStrings(std::ostream& file, const Bytes& bytes) {
    constexpr const char* digits = "0123456789abcdef";
    constexpr std::size_t bytesPerString = 32;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        file << (i % bytesPerString == 0 ? "<" : "") << digits[bytes[i] >> 4] << digits[bytes[i] & 0xF]
             << (i % bytesPerString == bytesPerString - 1 || i + 1 == bytes.size() ? ">\n" : "");
    }
}

void addCharStrings(std::ostream& file, const std::vector<std::string>& glyphNames) {
    file << "/CharStrings " << glyphNames.size() + 1 << " dict dup begin\n/.notdef 0 def\n";
    for (std::size_t i = 0; i < glyphNames.size(); ++i) {
        file << '/' << glyphNames[i] << ' ' << i + 1 << " def\n";
    }
    file << "end readonly def\n";
}

} // namespace

Bytes Type42Font::build() const {
    std::ostringstream file;
    file << "%!PS-TrueTypeFont-1.0-1.0\n11 dict begin\n/FontInfo 2 dict dup begin\n/FamilyName (" << family
         << ") readonly def\nend readonly def\n"
            "/FontName /TestTypeFortyTwo def\n/PaintType 0 def\n/FontType 42 def\n"
            "/FontMatrix [1 0 0 1 0 0] readonly def\n/FontBBox [0 -0.2 1 0.8] readonly def\n"
            "/Encoding 256 array\n0 1 255 {1 index exch /.notdef put} for\nreadonly def\n/sfnts [\n";
    addStrings(file, trueType);
    file << "] def\n";
    addCharStrings(file, glyphNames);
    file << "FontName currentdict end definefont pop\n";
    const std::string text = file.str();
    return Bytes(text.begin(), text.end());
}

} // namespace Vell::Testing

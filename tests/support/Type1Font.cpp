#include <support/Type1Font.h>

#include <cstdint>
#include <sstream>

namespace Vell::Testing {

namespace {

constexpr unsigned int programKey = 55665;
constexpr unsigned int charStringKey = 4330;

/// Encrypts with the cipher of Type 1 fonts, with four leading bytes that readers drop.
std::string encrypt(const std::string& plain, unsigned int key) {
    std::string cipher;
    for (const char c : std::string(4, 'x') + plain) {
        const unsigned int byte = (static_cast<unsigned char>(c) ^ (key >> 8)) & 0xFFU;
        key = ((byte + key) * 52845U + 22719U) & 0xFFFFU;
        cipher += static_cast<char>(byte);
    }
    return cipher;
}

enum Operator : unsigned char {
    lineTo = 5,
    curveTo = 8,
    closePath = 9,
    sideBearingAndWidth = 13,
    endChar = 14,
    moveTo = 21
};

void addNumber(std::string& charString, int value) {
    if (value >= -107 && value <= 107) {
        charString += static_cast<char>(value + 139);
        return;
    }
    charString += '\xFF';
    for (const unsigned int shift : {24U, 16U, 8U, 0U}) {
        charString += static_cast<char>(static_cast<std::uint32_t>(value) >> shift & 0xFFU);
    }
}

void addCommand(std::string& charString, int first, int second, Operator command) {
    addNumber(charString, first);
    addNumber(charString, second);
    charString += static_cast<char>(command);
}

std::string makeCharString(const FontGlyph& glyph) {
    std::string charString;
    addCommand(charString, 0, static_cast<int>(glyph.advance), sideBearingAndWidth);
    FontPoint pen{0, 0};
    for (const FontContour& contour : glyph.outline) {
        for (std::size_t i = 0; i < contour.size(); ++i) {
            for (; !contour[i].isOnCurve; ++i) { // control points precede the end of their curve
                addNumber(charString, contour[i].x - pen.x);
                addNumber(charString, contour[i].y - pen.y);
                pen = contour[i];
            }
            const Operator stroke = i >= 2 && !contour[i - 1].isOnCurve ? curveTo : lineTo;
            addCommand(charString, contour[i].x - pen.x, contour[i].y - pen.y, i == 0 ? moveTo : stroke);
            pen = contour[i];
        }
        charString += static_cast<char>(closePath);
    }
    charString += static_cast<char>(endChar);
    return encrypt(charString, charStringKey);
}

void addCharString(std::ostream& file, const std::string& name, const FontGlyph& glyph) {
    const std::string charString = makeCharString(glyph);
    file << '/' << name << ' ' << charString.size() << " RD " << charString << " ND\n";
}

std::string makePrivatePart(const Type1Font& font) {
    std::ostringstream file;
    file << "dup /Private 8 dict dup begin\n"
            "/RD {string currentfile exch readstring pop} executeonly def\n"
            "/ND {noaccess def} executeonly def\n/NP {noaccess put} executeonly def\n"
            "/BlueValues [] def\n/password 5839 def\n/MinFeature {16 16} def\n/lenIV 4 def\n"
            "2 index /CharStrings "
         << font.glyphs.size() + 1 << " dict dup begin\n";
    addCharString(file, ".notdef", {font.notdefAdvance, {}, {}});
    for (const Type1Glyph& glyph : font.glyphs) {
        addCharString(file, glyph.name, glyph.glyph);
    }
    file << "end\nend\nreadonly put\nnoaccess put\ndup /FontName get exch definefont pop\n"
            "mark currentfile closefile\n";
    return file.str();
}

void addPublicPart(std::ostream& file, const Type1Font& font) {
    file
        << "%!PS-AdobeFont-1.0: TestTypeOne 001.000\n11 dict begin\n/FontInfo 4 dict dup begin\n/FamilyName ("
        << font.family << ") readonly def\n/FullName (" << font.family
        << ") readonly def\n/Weight (Medium) readonly def\n/ItalicAngle 0 def\nend readonly def\n"
           "/FontName /TestTypeOne def\n/PaintType 0 def\n/FontType 1 def\n"
           "/FontMatrix [0.001 0 0 0.001 0 0] readonly def\n"
           "/Encoding 256 array\n0 1 255 {1 index exch /.notdef put} for\n";
    for (const Type1Glyph& glyph : font.glyphs) {
        if (glyph.code >= 0) {
            file << "dup " << glyph.code << " /" << glyph.name << " put\n";
        }
    }
    file << "readonly def\n/FontBBox {0 " << font.bottom << " 1000 " << font.top
         << "} readonly def\ncurrentdict end\ncurrentfile eexec\n";
}

void addHexadecimal(std::ostream& file, const std::string& bytes) {
    constexpr const char* digits = "0123456789abcdef";
    constexpr std::size_t bytesPerLine = 32;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        file << digits[byte >> 4] << digits[byte & 0xF] << (i % bytesPerLine == bytesPerLine - 1 ? "\n" : "");
    }
}

} // namespace

Bytes Type1Font::build() const {
    std::ostringstream file;
    addPublicPart(file, *this);
    addHexadecimal(file, encrypt(makePrivatePart(*this), programKey));
    file << '\n';
    for (int line = 0; line < 8; ++line) {
        file << std::string(64, '0') << '\n';
    }
    file << "cleartomark\n";
    const std::string text = file.str();
    return Bytes(text.begin(), text.end());
}

} // namespace Vell::Testing

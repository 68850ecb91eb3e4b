// Fonts from the application's memory, here read from files. The installed fonts are never looked at.
//
//     fonts-from-memory REGULAR.ttf BOLD.ttf [FILE.png]

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

using namespace Vell;

namespace {

using FontLoaders::FontBytes;
constexpr const char* family = "Own";

FontBytes readBytes(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    using Iterator = std::istreambuf_iterator<char>;
    auto bytes = std::make_shared<const std::vector<unsigned char>>(Iterator(stream), Iterator());
    if (const auto reason = FontLoaders::findReasonNotToServe(bytes)) {
        throw std::runtime_error("cannot use " + path + ": " + *reason);
    }
    return bytes;
}

/// One family in two styles. The factory synthesises the others from these: it slants italic text.
class MemoryLoader : public FontLoaders::FontLoader {
public:
    MemoryLoader(const std::string& regular, const std::string& bold)
        : _regular(readBytes(regular))
        , _bold(readBytes(bold)) {}

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& face) const override {
        return face->getName() == family ? loadDefaultFont(face->isBold(), face->isItalic()) : nullptr;
    }
    FontBytes loadDefaultFont(bool bold, bool italic) const override {
        return italic ? nullptr : bold ? _bold : _regular;
    }
    std::string getFamilyNameForRange(unsigned int) const override { return {}; } // no fallback fonts

private:
    FontBytes _regular, _bold;
};

void drawPicture(const NNPtr<const FontLoaders::FontLoader>& loader, const char* file) {
    const auto factory = FontEngine::FontFactory::create(loader, family);
    const auto surface = CairoAdapter::makeImageSurface(400, 160);
    CairoAdapter::CairoPainter painter(surface.get());
    CairoAdapter::CairoGlyphPainter glyphPainter(painter, painter.getColor());
    cairo_set_source_rgb(painter.getContext(), 1.0, 1.0, 1.0);
    cairo_paint(painter.getContext());
    for (const bool isBold : {false, true}) {
        const auto font = FontEngine::describeFont(family, 50.0F, FontEngine::FontStyle{}.setBold(isBold));
        painter.translate({isBold ? 0.0F : 10.0F, 60.0F});
        FontEngine::drawRasterText(*factory, "ABBA", font, {painter, glyphPainter, painter.getColor()});
    }
    CairoAdapter::throwIfFailed(cairo_surface_write_to_png(surface.get(), file));
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc < 3) {
            throw std::runtime_error("usage: fonts-from-memory REGULAR.ttf BOLD.ttf [FILE.png]");
        }
        drawPicture(makeNNPtr<MemoryLoader>(argv[1], argv[2]), argc > 3 ? argv[3] : "fonts-from-memory.png");
    } catch (const std::exception& error) {
        std::cerr << "fonts-from-memory: " << error.what() << '\n';
        return 1;
    }
}

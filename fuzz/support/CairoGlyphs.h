#pragma once

#include <fuzz/support/ByteReader.h>

#include <FontEngine/FE_BitmapGlyphPainter.h>

#include <memory>

namespace Vell::Fuzz {

/// A glyph image of a script. Its buffer has exactly the needed size: a sanitizer sees any read beyond it.
///
/// Its 6 bytes: pixel mode, width, rows, difference of the pitch from the length of a row, flags, content.
class ScriptedGlyph {
public:
    explicit ScriptedGlyph(ByteReader& reader);

    const FontEngine::BitmapGlyphImage& getImage() const { return _image; }
    /// Whether the painter must draw it, provided that the context works.
    bool isSound() const;
    /// Whether its colours, if any, are premultiplied, as those of FreeType and the engine are.
    bool hasValidColors() const { return _hasValidColors; }

private:
    void fill(unsigned int content);

    FontEngine::BitmapGlyphImage _image;
    std::unique_ptr<unsigned char[]> _buffer;
    std::size_t _size = 0;
    bool _hasValidColors;
};

} // namespace Vell::Fuzz

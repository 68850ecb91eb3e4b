#pragma once

#include <fuzz/support/ByteReader.h>

#include <FontEngine/FE_BitmapGlyphImage.h>

#include <memory>

namespace Vell::Fuzz {

/// A glyph image of a script, in a buffer of not one byte more than it needs: a sanitizer sees what is read
/// beyond it.
///
/// The 6 bytes: pixel mode, width, rows, how far the pitch is from the length of a row, flags, content.
class ScriptedGlyph {
public:
    explicit ScriptedGlyph(ByteReader& reader);

    const FontEngine::BitmapGlyphImage& getImage() const { return _image; }
    /// Whether the painter must draw it on a context that works.
    bool isSound() const;
    /// Whether its colours, if any, are such as FreeType and the engine make: premultiplied.
    bool hasTrueColors() const { return _hasTrueColors; }

private:
    void fill(unsigned int content);

    FontEngine::BitmapGlyphImage _image;
    std::unique_ptr<unsigned char[]> _buffer;
    std::size_t _size = 0;
    bool _hasTrueColors;
};

} // namespace Vell::Fuzz

#pragma once

#include <TextLayout/Private/ShapingScratch.h>
#include <TextLayout/Public/ShapedText.h>

#include <hb.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// Bytes of a text.
struct TextPart {
    std::uint32_t begin;
    std::uint32_t end;
};

/// A buffer of HarfBuzz for parts of one text. HarfBuzz sees the characters around a part as well: letters
/// join them.
class ShapingBuffer {
public:
    /// `isWellFormed` may be false for any text. `pool` must outlive the object.
    ShapingBuffer(std::string_view text, bool isWellFormed, ScratchPool& pool)
        : _text(text)
        , _isWellFormed(isWellFormed)
        , _pool(pool) {}
    ~ShapingBuffer() = default;
    ShapingBuffer(const ShapingBuffer&) = delete;
    ShapingBuffer& operator=(const ShapingBuffer&) = delete;

    /// Takes memory from the pool before the first part, and gives it back behind the last one. The owner of
    /// the pool serialises the calls.
    void open();
    void close() noexcept;

    /// Holds the characters of a part from now on, to be shaped. The clusters are byte offsets. Ill-formed
    /// UTF-8 counts as decodeUtf8 decodes it.
    hb_buffer_t* fill(const TextPart& part);

    /// Appends the glyphs that the part has become, in visual order.
    void appendTo(std::vector<ShapedGlyph>& glyphs) const;

private:
    void addDecoded(hb_buffer_t* buffer);
    void decode(const TextPart& part);

    std::string_view _text;
    bool _isWellFormed;
    TextPart _part{};
    ScratchPool& _pool;
    ShapingScratch _scratch; // taken for the first part
    bool _isOpen = false;
};

} // namespace Vell::TextLayout

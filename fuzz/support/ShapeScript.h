#pragma once

#include <fuzz/support/ByteReader.h>

#include <TextLayout/TextLayout.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Fuzz {

using Testing::Bytes;

/// A table of the font that the input brings.
struct FuzzedTable {
    std::string tag;
    Bytes content;
};

/// What an input of the shaping harness asks for:
///
///   1 byte    flags: 1 and 2 the direction, 4 own font for emoji, 8 justified, 16 with an ellipsis,
///             32 the other font is the fallback of nothing
///   2 bytes   the width of the paragraph, a measure
///   1 byte    the number of spans behind the first, at most 7, and for each of them
///     2 bytes   where it begins
///     2 bytes   its size, a measure
///     2 bytes   its letter spacing, a measure
///     1 byte    its language and whether it has features
///   1 byte    the length of the features, and they
///   1 byte    the number of tables, at most 5, and for each of them
///     1 byte    its tag
///     2 bytes   its length, and its content
///   the rest  the text
struct ShapeScript {
    explicit ShapeScript(const Bytes& input);

    struct Span {
        std::size_t begin;
        float size;
        float spacing;
        std::string language;
        bool hasFeatures;
    };

    TextLayout::ParagraphDirection direction;
    bool hasOwnEmoji;
    bool isJustified;
    bool hasEllipsis;
    bool hasFallback;
    float width;
    std::vector<Span> spans; ///< at least one; the first one begins at 0
    std::string features;
    std::vector<FuzzedTable> tables;
    std::string text;

    /// Throws TextLayoutException if the features are malformed.
    std::vector<TextLayout::TextSpan> makeSpans() const;

    /// The tags of tables, by the byte that chooses them.
    static const std::vector<std::string>& getTags();

private:
    static Span takeSpan(ByteReader& reader);
};

} // namespace Vell::Fuzz

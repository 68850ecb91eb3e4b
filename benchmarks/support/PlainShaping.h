#pragma once

#include "Workload.h"

#include <FontLoaders/Public/FontLoader.h>
#include <TextLayout/TextLayout.h>

#include <hb.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

/// HarfBuzz alone, as a program calls it that knows the runs of its text.
class PlainShaping {
public:
    /// Remembers the runs, but not the glyphs.
    PlainShaping(const FontLoaders::FontBytes& bytes,
                 const std::vector<NNPtr<const TextLayout::ShapedText>>& texts);

    /// Shapes the runs of all texts one after the other, in one buffer. Returns the number of glyphs.
    std::size_t shapeAll();

private:
    struct Run {
        std::size_t text;
        std::uint32_t begin;
        std::uint32_t end;
        hb_segment_properties_t properties;
    };
    struct End {
        void operator()(hb_font_t* font) const { hb_font_destroy(font); }
        void operator()(hb_buffer_t* buffer) const { hb_buffer_destroy(buffer); }
    };

    FontLoaders::FontBytes _bytes;
    std::vector<std::string> _texts;
    std::vector<Run> _runs;
    std::unique_ptr<hb_font_t, End> _font;
    std::unique_ptr<hb_buffer_t, End> _buffer;
};

} // namespace Vell::Benchmarks

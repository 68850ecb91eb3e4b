#include <Gfx/Public/BasicMetrics.h>

namespace Vell::Gfx {

BasicMetrics::BasicMetrics(FactoryAccessTag, float height, float ascender, float descender,
                           std::pair<float, float> capHeightAndStrikeOut, CharMap charMap)
    : _height(height)
    , _ascender(ascender)
    , _descender(descender)
    , _capHeight(capHeightAndStrikeOut.first)
    , _strikeOutPosition(capHeightAndStrikeOut.second)
    , _charMap(std::move(charMap)) {}

} // namespace Vell::Gfx

#include <TextLayout/Public/ShapedText.h>

#include <TextLayout/Private/BitmapFontLines.h>
#include <TextLayout/Private/ShapingService.h>
#include <TextLayout/Private/TextMeasures.h>

#include <memory>
#include <mutex>
#include <numeric>
#include <utility>

namespace Vell::TextLayout {

/// FreeType leaves it out of the face.
unsigned short RunFont::readUnitsPerEM() const {
    return readBitmapFontLines(*font.getFace()).unitsPerEM;
}

namespace {

float sumWidths(const ShapedRuns& runs) {
    return std::accumulate(runs.begin(), runs.end(), 0.0F,
                           [](float width, const ShapedRun& run) { return width + run.width; });
}

} // namespace

ShapedText::ShapedText(ShapedTextParts parts, std::shared_ptr<const ShapingService> service)
    : _parts(std::move(parts))
    , _look(std::make_shared<const TextLook>(TextLook{std::move(_parts.styles), std::move(_parts.fonts)}))
    , _service(std::move(service))
    , _width(sumWidths(_parts.runs)) {}

ShapedText::ShapedText(std::string_view text, std::shared_ptr<const ShapingService> service)
    : _parts{std::string(text)}
    , _service(std::move(service)) {}

ShapedText::~ShapedText() = default;

void ShapedText::complete(std::shared_ptr<const TextLook> look) {
    _look = std::move(look);
    _width = sumWidths(_parts.runs);
}

const TextMeasures& ShapedText::getMeasures() const {
    std::call_once(_measuresOnce, [this] { _measures = std::make_unique<const TextMeasures>(*this); });
    return *_measures;
}

} // namespace Vell::TextLayout

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

float sumWidths(const std::vector<ShapedRun>& runs) {
    return std::accumulate(runs.begin(), runs.end(), 0.0F,
                           [](float width, const ShapedRun& run) { return width + run.width; });
}

} // namespace

ShapedText::ShapedText(ShapedTextParts parts, std::shared_ptr<const ShapingService> service)
    : _parts(std::move(parts))
    , _look(std::make_shared<const TextLook>(TextLook{std::move(_parts.styles), std::move(_parts.fonts)}))
    , _service(std::move(service))
    , _width(sumWidths(_parts.runs)) {}

ShapedText::ShapedText(ShapedTextParts&& parts, std::shared_ptr<const TextLook> look,
                       std::shared_ptr<const ShapingService> service)
    : _parts(std::move(parts))
    , _look(std::move(look))
    , _service(std::move(service))
    , _width(sumWidths(_parts.runs)) {}

ShapedText::~ShapedText() = default;

const TextMeasures& ShapedText::getMeasures() const {
    std::call_once(_measuresOnce, [this] { _measures = std::make_unique<const TextMeasures>(*this); });
    return *_measures;
}

} // namespace Vell::TextLayout

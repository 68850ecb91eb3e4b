#include <TextLayout/Public/TextShaper.h>

#include <FontLoaders/Public/PlatformCoverageFallback.h>
#include <TextLayout/Private/RangeFallback.h>
#include <TextLayout/Private/TextShaping.h>

#include <mutex>
#include <utility>

namespace Vell::TextLayout {

namespace {

std::shared_ptr<const FontLoaders::CoverageFallback>
makeFallback(const NNPtr<const FontEngine::FontFactory>& factory) {
    auto platform = FontLoaders::createPlatformCoverageFallback(factory->getFontLoader());
    return platform ? std::move(platform) : std::make_shared<const RangeFallback>(factory);
}

} // namespace

TextShaper::TextShaper(NNPtr<const FontEngine::FontFactory> factory, std::uint64_t maxWordBytes)
    : TextShaper(factory, makeFallback(factory), maxWordBytes) {}

TextShaper::TextShaper(NNPtr<const FontEngine::FontFactory> factory,
                       std::shared_ptr<const FontLoaders::CoverageFallback> fallback,
                       std::uint64_t maxWordBytes)
    : _service(std::make_shared<const TextShaping>(std::move(factory), std::move(fallback), maxWordBytes)) {}

TextShaper::~TextShaper() = default;

NNPtr<const ShapedText> TextShaper::shape(std::string_view text, const TextStyle& style,
                                          ParagraphDirection direction) const {
    return _service->shape(text, style, direction);
}

NNPtr<const ShapedText> TextShaper::shape(std::string_view text, const std::vector<TextSpan>& spans,
                                          ParagraphDirection direction) const {
    return _service->shape(text, spans, direction);
}

FontEngine::CacheFigures TextShaper::getCacheFigures() const {
    return _service->getCaches().getFigures();
}

void TextShaper::flush() {
    _service->getCaches().clear();
}

} // namespace Vell::TextLayout

#include "drawing/TextDrawing.h"
#include "drawing/TextLines.h"
#include "fonts/FontSource.h"

namespace Vell::Tool {

namespace {

class PlainDrawing : public TextDrawing {
public:
    PlainDrawing(const FontRequest& request, const std::string& text)
        : _source(request)
        , _font(_source.makeFont(request))
        , _block(layOutBlock(_font, splitLines(text))) {}

    Box getBox(const Placement& placement) const override { return getPlacedBox(_block, placement); }

    void draw(CairoAdapter::CairoPainter& painter, const TextPaint& paint, const Placement& placement,
              const cinder::Vec2<float>& origin) const override {
        drawBlock(painter, _block, _font, paint, placement, origin);
    }

private:
    FontSource _source;
    TextFont _font;
    TextBlock _block;
};

} // namespace

std::unique_ptr<TextDrawing> makePlainDrawing(const RenderOptions& options, const std::string& text) {
    return std::make_unique<PlainDrawing>(options.font, text);
}

} // namespace Vell::Tool

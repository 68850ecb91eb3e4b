#pragma once

#include "demo/DemoPage.h"
#include "drawing/TextBlock.h"

#include <string_view>

namespace Vell::Tool {

/// Fills a demo page from top to bottom. All lengths are in units.
class DemoPageBuilder {
public:
    explicit DemoPageBuilder(const FactoryPtr& factory);

    /// The heading of the page.
    void addTitle(const std::string& title, const std::string& subtitle);
    /// A heading with a rule above it.
    void addSection(const std::string& caption);
    /// A small grey word above each column.
    void addColumnHeads(const std::string& left, const std::string& right);
    /// A small grey line.
    void addNote(const std::string& note);
    /// The text in both columns, wrapped if it is too long.
    void addText(const TextFont& font, std::string_view text, const Color& color = black);
    /// As much of the text as fits on one line, rising.
    void addRisingText(const TextFont& font, std::string_view text);
    /// The text in both columns, drawn by the raster painter with bitmaps for two device pixel ratios.
    void addRatios(const TextFont& font, std::string_view text, float leftRatio, float rightRatio);

    /// The drawing in both columns.
    void addDrawing(const DemoDrawing& drawing);

    /// How wide a drawing may be.
    static float getColumnWidth();
    const FactoryPtr& getFactory() const { return _factory; }
    TextFont makeFont(const FontRequest& request) const { return makeTextFont(_factory, request); }

    /// Adds the bottom margin and returns the page.
    DemoPage finish();

private:
    void addLine(const TextFont& font, const std::string& text, const Color& color);
    void addColumns(const TextFont& font, std::string_view text, const TextPaint& left,
                    const TextPaint& right);
    void place(const TextFont& font, const std::string& text, float x, float baseLine, const TextPaint& paint,
               float degrees = 0.0F);

    FactoryPtr _factory;
    DemoPage _page;
    float _y;
};

} // namespace Vell::Tool

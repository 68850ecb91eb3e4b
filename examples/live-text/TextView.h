#pragma once

#include "../TextEditor.h"

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <string>

/// The user's text, wrapped, zoomed and turned, and below it what the caches that it fills hold.
class TextView {
public:
    explicit TextView(const std::string& text);

    void draw(cairo_surface_t* surface);

    TextEditor& getEditor() { return _editor; }

    /// A point of the window, in the coordinates of the paragraph.
    cinder::Vec2<float> toParagraph(int x, int y) const;

    float zoom = 1.0F;
    float degrees = 0.0F; ///< clockwise
    float devicePixelRatio = 1.0F;
    bool isVector = false;

private:
    using FactoryPtr = Vell::NNPtr<Vell::FontEngine::FontFactory>;

    void drawText(Vell::CairoAdapter::CairoPainter& painter) const;

    FactoryPtr _factory;
    FactoryPtr _figuresFactory; ///< so that drawing the figures does not change them
    TextEditor _editor;
};

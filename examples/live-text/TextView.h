#pragma once

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <string>

/// A text as the user has set it, drawn with the figures of the caches that it fills.
class TextView {
public:
    TextView();

    void draw(cairo_surface_t* surface) const;

    std::string text;
    float zoom = 1.0F;
    float degrees = 0.0F; ///< clockwise
    float devicePixelRatio = 1.0F;
    bool isVector = false;

private:
    using FactoryPtr = Vell::NNPtr<Vell::FontEngine::FontFactory>;

    void drawText(Vell::CairoAdapter::CairoPainter& painter) const;
    void drawFigures(Vell::CairoAdapter::CairoPainter& painter, float bottom) const;

    FactoryPtr _factory;
    FactoryPtr _figuresFactory; ///< so that drawing the figures does not change them
};

#pragma once

#include <CairoAdapter/CairoAdapter.h>
#include <FontEngine/FontEngine.h>

#include <string>
#include <vector>

/// A text in a variable font whose weight goes up and down, and below it what the caches hold.
class AxisView {
public:
    /// The font is Inter. Throws std::runtime_error if it is not installed as a variable font.
    explicit AxisView(const std::string& text);

    void draw(cairo_surface_t* surface, float seconds);

    /// Each weight is an instance of its own; the least recently used ones leave the caches.
    std::vector<std::string> listFigures() const;

private:
    using FactoryPtr = Vell::NNPtr<Vell::FontEngine::FontFactory>;

    std::string _text;
    FactoryPtr _factory;
    FactoryPtr _figuresFactory;
};

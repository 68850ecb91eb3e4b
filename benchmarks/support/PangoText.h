#pragma once

#include "Workload.h"

#include <pango/pangocairo.h>

#include <string>

namespace Vell::Benchmarks {

/// Text by Pango on cairo, in the font of a workload, with its size multiplied by `ratio`.
class PangoText {
public:
    explicit PangoText(const Workload& workload, int ratio = 1, cairo_t* target = nullptr);
    ~PangoText();
    PangoText(const PangoText&) = delete;
    PangoText& operator=(const PangoText&) = delete;

    /// Sets the text each time, because Pango keeps the layout of an unchanged text.
    void layOut(const std::string& line);
    void draw(const std::string& line, double x, double y);
    /// Only divides the text into items and shapes them, without a layout.
    void shape(const std::string& line);

private:
    PangoContext* _context;
    PangoLayout* _layout;
    cairo_t* _target;
};

} // namespace Vell::Benchmarks

#pragma once

#include <CairoAdapter/Public/CairoHandles.h>

namespace Vell::Fuzz {

/// What a painter must leave of a client's context as it found it.
struct ContextSettings {
    explicit ContextSettings(cairo_t* context);

    bool operator==(const ContextSettings& other) const;

    cairo_matrix_t matrix;
    cairo_operator_t blending;
    cairo_antialias_t antialias;
    cairo_fill_rule_t fillRule;
    double lineWidth;
    double tolerance;
    CairoAdapter::PatternPtr source; ///< held, so that no other comes to lie where it was
    double clip[4];
};

/// Throws Finding unless the context works, has the settings and no current point.
void checkContext(cairo_t* context, const ContextSettings& settings);

} // namespace Vell::Fuzz

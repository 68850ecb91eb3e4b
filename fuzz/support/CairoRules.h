#pragma once

#include <CairoAdapter/Public/CairoHandles.h>

namespace Vell::Fuzz {

/// The state of a client's context that a painter must restore.
struct ContextSettings {
    explicit ContextSettings(cairo_t* context);

    bool operator==(const ContextSettings& other) const;

    cairo_matrix_t matrix;
    cairo_operator_t blending;
    cairo_antialias_t antialias;
    cairo_fill_rule_t fillRule;
    double lineWidth;
    double tolerance;
    CairoAdapter::PatternPtr source; ///< held, so that its address is not reused
    double clip[4];
};

/// Throws Finding unless the context works, has these settings and has no current point.
void checkContext(cairo_t* context, const ContextSettings& settings);

} // namespace Vell::Fuzz

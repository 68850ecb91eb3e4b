#include <fuzz/support/CairoRules.h>
#include <fuzz/support/Finding.h>

#include <gtest/gtest.h>

#include <functional>

namespace Vell::Fuzz {

namespace {

class ContextRule : public testing::Test {
protected:
    ContextRule() { cairo_set_source_rgb(context.get(), 1.0, 0.0, 0.0); }

    void expectCaught(const std::function<void(cairo_t*)>& change) {
        const ContextSettings settings(context.get());
        EXPECT_NO_THROW(checkContext(context.get(), settings));
        change(context.get());
        EXPECT_THROW(checkContext(context.get(), settings), Finding);
    }

    CairoAdapter::SurfacePtr surface = CairoAdapter::makeImageSurface(5, 3);
    CairoAdapter::ContextPtr context = CairoAdapter::makeContext(surface.get());
};

} // namespace

TEST_F(ContextRule, RequiresEverySettingToBeRestored) {
    expectCaught([](cairo_t* changed) { cairo_translate(changed, 1.0, 0.0); });
    expectCaught([](cairo_t* changed) { cairo_set_operator(changed, CAIRO_OPERATOR_ADD); });
    expectCaught([](cairo_t* changed) { cairo_set_antialias(changed, CAIRO_ANTIALIAS_NONE); });
    expectCaught([](cairo_t* changed) { cairo_set_fill_rule(changed, CAIRO_FILL_RULE_EVEN_ODD); });
    expectCaught([](cairo_t* changed) { cairo_set_line_width(changed, 7.0); });
    expectCaught([](cairo_t* changed) { cairo_set_tolerance(changed, 7.0); });
    expectCaught([](cairo_t* changed) { cairo_set_source_rgb(changed, 0.0, 0.0, 1.0); });
    expectCaught([](cairo_t* changed) {
        cairo_rectangle(changed, 0.0, 0.0, 1.0, 1.0);
        cairo_clip(changed);
    });
}

TEST_F(ContextRule, AllowsNoPathToBeLeft) {
    expectCaught([](cairo_t* changed) { cairo_move_to(changed, 1.0, 1.0); });
}

TEST_F(ContextRule, RequiresAWorkingContext) {
    expectCaught([](cairo_t* changed) { cairo_scale(changed, 0.0, 0.0); });
}

} // namespace Vell::Fuzz

#include <FontEngine/Private/FE_PathBuilder.h>

#include <FontEngine/Private/FE_GlyphChecks.h>
#include <FontLoaders/Public/FreeType.h>
#include <Utils/Public/Assert.h>

#include <exception>

namespace Vell::FontEngine::Internal {

namespace {

/// The state of the callbacks. An exception must not pass through FreeType's frames: the callback stores it
/// here and stops the walk, and the caller of FreeType rethrows it.
struct Walk {
    Gfx::Painter& painter;
    std::exception_ptr exception;
};

cinder::Vec2<float> toPainter(const FT_Vector& point) {
    // Negates the integer: negating the float would turn a zero on the base line into a negative zero.
    return {static_cast<float>(point.x), static_cast<float>(-point.y)};
}

template <class Draw>
int guard(void* user, const Draw& draw) {
    auto& walk = *static_cast<Walk*>(user);
    try {
        draw(walk.painter);
        return FT_Err_Ok;
    } catch (...) {
        walk.exception = std::current_exception();
        return FT_Err_Invalid_Outline;
    }
}

int moveTo(const FT_Vector* to, void* user) {
    return guard(user, [to](Gfx::Painter& painter) { painter.moveTo(toPainter(*to)); });
}

int lineTo(const FT_Vector* to, void* user) {
    return guard(user, [to](Gfx::Painter& painter) { painter.lineTo(toPainter(*to)); });
}

int conicTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    return guard(user, [=](Gfx::Painter& painter) { painter.quadTo(toPainter(*control), toPainter(*to)); });
}

int cubicTo(const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to, void* user) {
    return guard(user, [=](Gfx::Painter& painter) {
        painter.cubicTo(toPainter(*control1), toPainter(*control2), toPainter(*to));
    });
}

void decompose(const FT_Outline& outline, const GlyphInfo& info, Gfx::Painter& painter) {
    constexpr int shift = 0;
    constexpr FT_Pos delta = 0;
    static const FT_Outline_Funcs callbacks{moveTo, lineTo, conicTo, cubicTo, shift, delta};
    Walk walk{painter, nullptr};
    const int error = FT_Outline_Decompose(const_cast<FT_Outline*>(&outline), &callbacks, &walk);
    if (walk.exception) {
        std::rethrow_exception(walk.exception);
    }
    throwIfGlyphFailed("FT_Outline_Decompose() failed, error: {}, glyph index: {} ", error, info);
}

} // namespace

std::shared_ptr<const Gfx::Path> buildPath(const FT_Outline& outline, const GlyphInfo& info,
                                           Gfx::Painter& painter) {
    painter.beginPath();
    decompose(outline, info, painter);
    std::shared_ptr<const Gfx::Path> path = painter.takePath();
    if (!path) {
        doFailAssert("FontEngine/FE_FontFactory", 466, "path");
    }
    painter.beginPath();
    return path;
}

} // namespace Vell::FontEngine::Internal

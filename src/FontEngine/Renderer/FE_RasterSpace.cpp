#include <FontEngine/Renderer/FE_RasterSpace.h>

#include <Utils/Public/MatrixUtils.h>

#include <cmath>

namespace Vell::FontEngine {

namespace {

bool isRotated(float angle) {
    constexpr float negligible = 9.5367431640625e-07F; // 2^-20
    return !(std::fabs(angle) < negligible);
}

} // namespace

RasterSpace getRasterSpace(const Gfx::Painter& painter) {
    const cinder::MatrixAffine2<float> transform = painter.getTransform();
    return {{getScaleX(transform), getScaleY(transform)},
            {getTranslateX(transform), getTranslateY(transform)},
            getAngle(transform)};
}

void enterRasterSpace(Gfx::Painter& painter, const RasterSpace& space) {
    painter.resetTransform();
    painter.translate(space.origin);
    if (isRotated(space.angle)) {
        painter.rotate(space.angle);
    }
}

} // namespace Vell::FontEngine

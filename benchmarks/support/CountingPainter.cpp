#include "CountingPainter.h"

#include <vector>

namespace Vell::Benchmarks {

namespace {

using Transform = cinder::MatrixAffine2<float>;

class CountingPainter : public Gfx::Painter {
public:
    void beginPath() override {}
    void moveTo(const cinder::Vec2<float>&) override {}
    void lineTo(const cinder::Vec2<float>&) override {}
    void cubicTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&,
                 const cinder::Vec2<float>&) override {}
    void quadTo(const cinder::Vec2<float>&, const cinder::Vec2<float>&) override {}
    std::shared_ptr<const Gfx::Path> takePath() override { return std::make_shared<const Gfx::Path>(); }

    void drawPath(const Gfx::Path&, bool) override { ++pathCount; }

    void resetTransform() override { _transform = {}; }
    void translate(const cinder::Vec2<float>& offset) override {
        _transform = _transform * Transform(1.0F, 0.0F, 0.0F, 1.0F, offset.x, offset.y);
    }
    void scale(const cinder::Vec2<float>& factors) override {
        _transform = _transform * Transform(factors.x, 0.0F, 0.0F, factors.y, 0.0F, 0.0F);
    }
    Transform getTransform() const override { return _transform; }
    void rotate(float) override {}
    void pushTransform() override { _saved.push_back(_transform); }
    void popTransform() override {
        _transform = _saved.back();
        _saved.pop_back();
    }

    std::size_t pathCount = 0;

private:
    Transform _transform;
    std::vector<Transform> _saved;
};

} // namespace

std::unique_ptr<Gfx::Painter> makeCountingPainter() {
    return std::make_unique<CountingPainter>();
}

std::size_t getPathCount(const Gfx::Painter& painter) {
    return dynamic_cast<const CountingPainter&>(painter).pathCount;
}

} // namespace Vell::Benchmarks

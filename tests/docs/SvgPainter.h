#pragma once

#include <Gfx/Gfx.h>

#include <cmath>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Vell::Docs {

//! [path]
/// A path in the words of an SVG file.
class SvgPath : public Gfx::Path {
public:
    explicit SvgPath(std::string data)
        : _data(std::move(data)) {}

    const std::string& getData() const { return _data; }

private:
    std::string _data;
};
//! [path]

/// Writes what is drawn as the elements of an SVG file.
class SvgPainter : public Gfx::Painter {
public:
    std::string getElements() const { return _elements.str(); }

    //! [building]
    void beginPath() override { _segments.str({}); }
    void moveTo(const cinder::Vec2<float>& point) override { add('M', {point}); }
    void lineTo(const cinder::Vec2<float>& point) override { add('L', {point}); }
    void quadTo(const cinder::Vec2<float>& control, const cinder::Vec2<float>& end) override {
        add('Q', {control, end});
    }
    void cubicTo(const cinder::Vec2<float>& control1, const cinder::Vec2<float>& control2,
                 const cinder::Vec2<float>& end) override {
        add('C', {control1, control2, end});
    }
    std::shared_ptr<const Gfx::Path> takePath() override {
        auto path = std::make_shared<SvgPath>(_segments.str());
        beginPath();
        return path;
    }
    //! [building]

    //! [drawing]
    void drawPath(const Gfx::Path& path, bool isFilled) override {
        const auto* const own = dynamic_cast<const SvgPath*>(&path);
        if (own == nullptr) {
            throw std::invalid_argument("a path of another painter");
        }
        _elements << "<path transform='matrix(";
        for (const float number : _transform.m) {
            _elements << number << ' ';
        }
        _elements << ")' d='" << own->getData() << (isFilled ? "'/>\n" : "' fill='none' stroke='black'/>\n");
    }
    //! [drawing]

    //! [transforms]
    void resetTransform() override { _transform = {}; }
    void translate(const cinder::Vec2<float>& offset) override {
        _transform = _transform * cinder::MatrixAffine2<float>(1, 0, 0, 1, offset.x, offset.y);
    }
    void scale(const cinder::Vec2<float>& factors) override {
        _transform = _transform * cinder::MatrixAffine2<float>(factors.x, 0, 0, factors.y, 0, 0);
    }
    void rotate(float radians) override {
        const float c = std::cos(radians);
        const float s = std::sin(radians);
        _transform = _transform * cinder::MatrixAffine2<float>(c, s, -s, c, 0, 0);
    }
    cinder::MatrixAffine2<float> getTransform() const override { return _transform; }
    void pushTransform() override { _saved.push_back(_transform); }
    void popTransform() override {
        _transform = _saved.back();
        _saved.pop_back();
    }
    //! [transforms]

private:
    void add(char command, std::initializer_list<cinder::Vec2<float>> points) {
        _segments << command;
        for (const cinder::Vec2<float>& point : points) {
            _segments << ' ' << point.x << ' ' << point.y;
        }
    }

    std::ostringstream _elements;
    std::ostringstream _segments;
    cinder::MatrixAffine2<float> _transform;
    std::vector<cinder::MatrixAffine2<float>> _saved;
};

} // namespace Vell::Docs

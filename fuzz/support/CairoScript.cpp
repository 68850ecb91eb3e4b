#include <fuzz/support/CairoScript.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Vell::Fuzz {

namespace {

constexpr unsigned int hasPixelClip = 1;
constexpr unsigned int hasPartialClip = 2;
constexpr unsigned int hasRoundClip = 4;
constexpr unsigned int hasOperator = 8;
constexpr unsigned int hasDeviceScale = 16;
constexpr unsigned int hasDeviceOffset = 32;
constexpr unsigned int isAliased = 64;
constexpr unsigned int hasBase = 128;

constexpr cairo_format_t formats[] = {CAIRO_FORMAT_ARGB32, CAIRO_FORMAT_RGB24, CAIRO_FORMAT_A8,
                                      CAIRO_FORMAT_RGB16_565};
constexpr unsigned int operationCount = static_cast<unsigned int>(CairoOperation::ColorGlyph) + 1;

/// A number that surfaces and painters accept as a scale.
float takeScale(ByteReader& reader) {
    constexpr float least = 1.0F / 16;
    constexpr float most = 16.0F;
    const float factor = reader.takeFactor();
    return std::isfinite(factor) ? std::clamp(factor, least, most) : 1.0F;
}

float takeOffset(ByteReader& reader) {
    constexpr float most = 1000.0F;
    const float offset = reader.takeMeasure();
    return std::isfinite(offset) ? std::clamp(offset, -most, most) : 0.0F;
}

template <class Take>
cinder::Vec2<float> takePair(ByteReader& reader, const Take& take) {
    const float x = take(reader);
    return {x, take(reader)};
}

cinder::MatrixAffine2<float> takeBase(ByteReader& reader) {
    const float x = takeScale(reader);
    const float y = takeScale(reader);
    const float shear = takeScale(reader);
    return {x, 0.0F, shear, y, 0.0F, 0.0F};
}

} // namespace

CairoScene::CairoScene(ByteReader& reader)
    : width(static_cast<int>(reader.takeU8() % 49))
    , height(static_cast<int>(reader.takeU8() % 33))
    , format(formats[reader.takeU8() % std::size(formats)])
    , flags(reader.takeU8())
    , blending(static_cast<cairo_operator_t>(reader.takeU8() % (CAIRO_OPERATOR_HSL_LUMINOSITY + 1)))
    , deviceScale(takePair(reader, takeScale))
    , deviceOffset(takePair(reader, takeOffset))
    , base(takeBase(reader))
    , ratio(takeScale(reader))
    , color(takeColor(reader)) {
    deviceScale = (flags & hasDeviceScale) != 0 ? deviceScale : cinder::Vec2<float>(1.0F, 1.0F);
    deviceOffset = (flags & hasDeviceOffset) != 0 ? deviceOffset : cinder::Vec2<float>(0.0F, 0.0F);
    base = (flags & hasBase) != 0 ? base : cinder::MatrixAffine2<float>();
}

void CairoScene::prepare(cairo_t* context) const {
    if ((flags & hasPixelClip) != 0) {
        cairo_rectangle(context, 2.0, 3.0, 20.0, 12.0);
        cairo_clip(context);
    }
    if ((flags & hasPartialClip) != 0) {
        cairo_rectangle(context, 1.25, 0.5, 30.5, 20.75);
        cairo_clip(context);
    }
    if ((flags & hasRoundClip) != 0) {
        constexpr double fullTurn = 6.283185307179586;
        cairo_arc(context, 12.0, 10.0, 9.0, 0.0, fullTurn);
        cairo_clip(context);
    }
    cairo_set_operator(context, (flags & hasOperator) != 0 ? blending : CAIRO_OPERATOR_OVER);
    cairo_set_antialias(context, (flags & isAliased) != 0 ? CAIRO_ANTIALIAS_NONE : CAIRO_ANTIALIAS_DEFAULT);
}

cinder::ColorAT<unsigned char> takeColor(ByteReader& reader) {
    unsigned char channels[4];
    for (unsigned char& channel : channels) {
        channel = reader.takeU8();
    }
    return {channels[0], channels[1], channels[2], channels[3]};
}

CairoOperation takeCairoOperation(ByteReader& reader) {
    return static_cast<CairoOperation>(reader.takeU8() % operationCount);
}

bool takesOperand(CairoOperation operation) {
    return operation == CairoOperation::Translate || operation == CairoOperation::Scale ||
           operation == CairoOperation::Rotate;
}

void changeTransform(Gfx::Painter& painter, CairoOperation operation, const cinder::Vec2<float>& operand) {
    switch (operation) {
    case CairoOperation::Translate:
        return painter.translate(operand);
    case CairoOperation::Scale:
        return painter.scale(operand);
    case CairoOperation::Rotate:
        return painter.rotate(operand.x);
    case CairoOperation::Reset:
        return painter.resetTransform();
    case CairoOperation::Push:
        return painter.pushTransform();
    case CairoOperation::Pop:
        return painter.popTransform();
    default:
        break;
    }
}

} // namespace Vell::Fuzz

#include <FontEngine/Color/Private/FE_ColorPaintWalker.h>

#include <FontEngine/Color/Private/FE_GradientPaints.h>
#include <FontEngine/Color/Private/FE_PaintBounds.h>
#include <FontEngine/Color/Private/FE_PaintMatrices.h>
#include <FontEngine/Private/FE_GlyphChecks.h>

#include FT_COLOR_H

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace Vell::FontEngine::Internal {

namespace {

constexpr unsigned int maxDepth = 64;
constexpr std::size_t maxVisits = 65536;
constexpr std::size_t visitsOfClipBox = 64; // FreeType searches the clip boxes of a font one by one
constexpr FT_UShort foregroundEntry = 0xFFFF;
GradientExtend toExtend(FT_PaintExtend extend) {
    switch (extend) {
    case FT_COLR_PAINT_EXTEND_REPEAT:
        return GradientExtend::Repeat;
    case FT_COLR_PAINT_EXTEND_REFLECT:
        return GradientExtend::Reflect;
    default:
        return GradientExtend::Pad;
    }
}

/// Appends the drawing of a glyph. After a function has returned false, what it appended is of no use.
class PaintWalk {
public:
    PaintWalk(FT_Face face, const ResolvedPalette& palette, ColorPaintList& list)
        : _face(face)
        , _palette(palette)
        , _list(list) {}

    /// Version 1 from its root, with the glyph's clip box.
    bool addGlyph(unsigned int glyphIndex, const FT_OpaquePaint& root, unsigned int depth);
    /// Version 0. `layers` has given the first layer.
    bool addLayers(unsigned int glyphIndex, unsigned int layerGlyph, unsigned int layerColor,
                   FT_LayerIterator& layers);

private:
    bool count(std::size_t visits) {
        _visits += visits;
        return _visits <= maxVisits;
    }
    template <class Operation>
    void add(Operation operation) {
        _list.operations.emplace_back(std::move(operation));
    }

    bool addPaint(const FT_OpaquePaint& opaque, unsigned int depth);
    bool addPaint(const FT_COLR_Paint& paint, unsigned int depth);
    bool add(const FT_PaintColrLayers& paint, unsigned int depth);
    bool add(const FT_PaintGlyph& paint, unsigned int depth);
    bool add(const FT_PaintColrGlyph& paint, unsigned int depth);
    bool add(const FT_PaintComposite& paint, unsigned int depth);
    template <class Paint>
    bool addTransformed(const Paint& paint, unsigned int depth);
    bool addSolid(const FT_ColorIndex& color);
    template <class Gradient>
    bool addGradient(const FT_ColorLine& line, const Gradient& gradient);

    bool addGlyphClip(unsigned int glyphIndex);
    std::optional<PaintBox> findClipBox(unsigned int glyphIndex) const;
    std::optional<PaintColor> findColor(const FT_ColorIndex& index);
    bool readLine(const FT_ColorLine& line, FontColorLine& result);

    FT_Face _face;
    const ResolvedPalette& _palette;
    ColorPaintList& _list;
    std::size_t _visits = 0;
};

std::optional<PaintColor> PaintWalk::findColor(const FT_ColorIndex& index) {
    if (index.palette_index != foregroundEntry && index.palette_index >= _palette.colors.size()) {
        return std::nullopt;
    }
    _list.usesForeground = _list.usesForeground || index.palette_index == foregroundEntry;
    PaintColor color =
        index.palette_index == foregroundEntry ? _palette.foreground : _palette.colors[index.palette_index];
    const double alpha = std::clamp(static_cast<double>(index.alpha) / 0x4000, 0.0, 1.0);
    color.a = static_cast<unsigned char>(std::lround(color.a * alpha));
    return color;
}

bool PaintWalk::readLine(const FT_ColorLine& line, FontColorLine& result) {
    FT_ColorStopIterator iterator = line.color_stop_iterator;
    FT_ColorStop stop;
    if (!count(iterator.num_color_stops)) {
        return false;
    }
    while (FT_Get_Colorline_Stops(_face, &stop, &iterator) != 0) {
        const std::optional<PaintColor> color = findColor(stop.color);
        if (!color) {
            return false;
        }
        result.stops.push_back({static_cast<double>(stop.stop_offset) / 0x4000, *color});
    }
    result.extend = toExtend(line.extend);
    return result.stops.size() == line.color_stop_iterator.num_color_stops;
}

bool PaintWalk::addSolid(const FT_ColorIndex& index) {
    const std::optional<PaintColor> color = findColor(index);
    if (color) {
        add(*color);
    }
    return color.has_value();
}

template <class Gradient>
bool PaintWalk::addGradient(const FT_ColorLine& fontLine, const Gradient& gradient) {
    FontColorLine line{};
    if (!readLine(fontLine, line)) {
        return false;
    }
    appendGradient(_list.operations, gradient, std::move(line));
    return true;
}

bool PaintWalk::addGlyphClip(unsigned int glyphIndex) {
    if (!_list.outlines.load(_face, glyphIndex)) {
        return false;
    }
    add(PushGlyphClip{static_cast<unsigned short>(glyphIndex)});
    return true;
}

bool PaintWalk::add(const FT_PaintGlyph& paint, unsigned int depth) {
    if (!addGlyphClip(paint.glyphID) || !addPaint(paint.paint, depth)) {
        return false;
    }
    add(PopClip());
    return true;
}

bool PaintWalk::add(const FT_PaintColrLayers& paint, unsigned int depth) {
    FT_LayerIterator layers = paint.layer_iterator;
    for (FT_UInt i = 0; i < paint.layer_iterator.num_layers; ++i) {
        FT_OpaquePaint layer{nullptr, 0};
        if (FT_Get_Paint_Layers(_face, &layers, &layer) == 0 || !addPaint(layer, depth)) {
            return false;
        }
    }
    return true;
}

bool PaintWalk::add(const FT_PaintColrGlyph& paint, unsigned int depth) {
    FT_OpaquePaint root{nullptr, 0};
    return FT_Get_Color_Glyph_Paint(_face, paint.glyphID, FT_COLOR_NO_ROOT_TRANSFORM, &root) != 0 &&
           addGlyph(paint.glyphID, root, depth);
}

bool PaintWalk::add(const FT_PaintComposite& paint, unsigned int depth) {
    if (paint.composite_mode >= FT_COLR_COMPOSITE_MAX) {
        return false;
    }
    add(PushGroup());
    if (!addPaint(paint.backdrop_paint, depth)) {
        return false;
    }
    add(PushGroup());
    if (!addPaint(paint.source_paint, depth)) {
        return false;
    }
    add(PopGroup{static_cast<CompositeMode>(paint.composite_mode)});
    add(PopGroup{CompositeMode::SourceOver});
    return true;
}

template <class Paint>
bool PaintWalk::addTransformed(const Paint& paint, unsigned int depth) {
    add(PushTransform{toMatrix(paint)});
    if (!addPaint(paint.paint, depth)) {
        return false;
    }
    add(PopTransform());
    return true;
}

bool PaintWalk::addPaint(const FT_OpaquePaint& opaque, unsigned int depth) {
    FT_COLR_Paint paint;
    return depth < maxDepth && count(1) && FT_Get_Paint(_face, opaque, &paint) != 0 &&
           addPaint(paint, depth + 1);
}

bool PaintWalk::addPaint(const FT_COLR_Paint& paint, unsigned int depth) {
    switch (paint.format) {
    case FT_COLR_PAINTFORMAT_COLR_LAYERS:
        return add(paint.u.colr_layers, depth);
    case FT_COLR_PAINTFORMAT_SOLID:
        return addSolid(paint.u.solid.color);
    case FT_COLR_PAINTFORMAT_LINEAR_GRADIENT: {
        const FT_PaintLinearGradient& linear = paint.u.linear_gradient;
        return addGradient(linear.colorline,
                           FontLinear{toPoint(linear.p0), toPoint(linear.p1), toPoint(linear.p2)});
    }
    case FT_COLR_PAINTFORMAT_RADIAL_GRADIENT: {
        const FT_PaintRadialGradient& radial = paint.u.radial_gradient;
        return addGradient(radial.colorline, FontRadial{toPoint(radial.c0), fromFixed(radial.r0),
                                                        toPoint(radial.c1), fromFixed(radial.r1)});
    }
    case FT_COLR_PAINTFORMAT_SWEEP_GRADIENT: {
        const FT_PaintSweepGradient& sweep = paint.u.sweep_gradient;
        return addGradient(sweep.colorline,
                           FontSweep{toPoint(sweep.center), toRadians(sweep.start_angle + 0x10000),
                                     toRadians(sweep.end_angle + 0x10000)});
    }
    case FT_COLR_PAINTFORMAT_GLYPH:
        return add(paint.u.glyph, depth);
    case FT_COLR_PAINTFORMAT_COLR_GLYPH:
        return add(paint.u.colr_glyph, depth);
    case FT_COLR_PAINTFORMAT_TRANSFORM:
        return addTransformed(paint.u.transform, depth);
    case FT_COLR_PAINTFORMAT_TRANSLATE:
        return addTransformed(paint.u.translate, depth);
    case FT_COLR_PAINTFORMAT_SCALE:
        return addTransformed(paint.u.scale, depth);
    case FT_COLR_PAINTFORMAT_ROTATE:
        return addTransformed(paint.u.rotate, depth);
    case FT_COLR_PAINTFORMAT_SKEW:
        return addTransformed(paint.u.skew, depth);
    case FT_COLR_PAINTFORMAT_COMPOSITE:
        return add(paint.u.composite, depth);
    default:
        return false;
    }
}

/// Returns the clip box in font units, which FreeType scales to 26.6 pixels of the face's size: one pixel
/// per font unit, as prepareFace sets it.
std::optional<PaintBox> PaintWalk::findClipBox(unsigned int glyphIndex) const {
    FT_ClipBox box;
    if (FT_Get_Color_Glyph_ClipBox(_face, glyphIndex, &box) == 0) {
        return std::nullopt;
    }
    const auto toUnits = [](FT_Pos position) { return static_cast<float>(position) / 64.0F; };
    return PaintBox{toUnits(box.bottom_left.x), toUnits(box.bottom_left.y), toUnits(box.top_right.x),
                    toUnits(box.top_right.y)};
}

bool PaintWalk::addGlyph(unsigned int glyphIndex, const FT_OpaquePaint& root, unsigned int depth) {
    if (!count(visitsOfClipBox)) {
        return false;
    }
    const std::optional<PaintBox> clipBox = findClipBox(glyphIndex);
    if (clipBox) {
        add(PushBoxClip{*clipBox});
    }
    if (!addPaint(root, depth)) {
        return false;
    }
    if (clipBox) {
        add(PopClip());
    }
    return true;
}

bool PaintWalk::addLayers(unsigned int glyphIndex, unsigned int layerGlyph, unsigned int layerColor,
                          FT_LayerIterator& layers) {
    constexpr FT_F2Dot14 opaque = 0x4000;
    FT_UInt done = 0;
    do {
        if (!count(1) || !addGlyphClip(layerGlyph) ||
            !addSolid({static_cast<FT_UInt16>(layerColor), opaque})) {
            return false;
        }
        add(PopClip());
        ++done;
    } while (FT_Get_Color_Glyph_Layer(_face, glyphIndex, &layerGlyph, &layerColor, &layers) != 0);
    return done == layers.num_layers;
}

bool walk(FT_Face face, unsigned int glyphIndex, const ResolvedPalette& palette, ColorPaintList& list) {
    PaintWalk paintWalk(face, palette, list);
    FT_OpaquePaint root{nullptr, 0};
    if (FT_Get_Color_Glyph_Paint(face, glyphIndex, FT_COLOR_NO_ROOT_TRANSFORM, &root) != 0) {
        return paintWalk.addGlyph(glyphIndex, root, 0);
    }
    FT_LayerIterator layers{0, 0, nullptr};
    FT_UInt layerGlyph = 0;
    FT_UInt layerColor = 0;
    return FT_Get_Color_Glyph_Layer(face, glyphIndex, &layerGlyph, &layerColor, &layers) != 0 &&
           paintWalk.addLayers(glyphIndex, layerGlyph, layerColor, layers);
}

/// Makes one pixel of the face one font unit.
bool prepareFace(FT_Face face) {
    FT_Set_Transform(face, nullptr, nullptr);
    return FT_IS_SCALABLE(face) &&
           FT_Set_Pixel_Sizes(face, face->units_per_EM, face->units_per_EM) == FT_Err_Ok;
}

/// Puts the whole drawing into a box around its bounds, so that no fill is without a clip. The box is larger
/// by an em, so that its own edges are not seen.
void encloseBareFills(ColorPaintList& list, float em) {
    const PaintBox& bounds = list.bounds;
    list.operations.insert(list.operations.begin(), PushBoxClip{{bounds.left - em, bounds.bottom - em,
                                                                 bounds.right + em, bounds.top + em}});
    list.operations.emplace_back(PopClip());
}

/// Finds the bounds of the drawing. Returns false if they are infinite.
bool limit(ColorPaintList& list, float em) {
    const PaintExtent extent = measurePaint(list.operations, list.outlines);
    const PaintBox& box = extent.box;
    const bool isEmpty = !(box.left < box.right && box.bottom < box.top);
    list.bounds = isEmpty ? PaintBox{0, 0, 0, 0} : box;
    if (std::isinf(list.bounds.left)) {
        return false;
    }
    if (extent.hasBareFills) {
        encloseBareFills(list, em);
    }
    return true;
}

} // namespace

std::shared_ptr<const ColorPaintList> makeColorPaintList(FT_Face face, unsigned int glyphIndex,
                                                         const ResolvedPalette& palette) {
    auto list = std::make_shared<ColorPaintList>();
    list->usesForeground = false;
    const bool isDrawable = hasGlyph(*face, glyphIndex) && prepareFace(face) &&
                            walk(face, glyphIndex, palette, *list) && limit(*list, face->units_per_EM);
    return isDrawable ? list : nullptr;
}

bool paintColorGlyph(FT_Face face, unsigned int glyphIndex, const ResolvedPalette& palette,
                     ColorPaintTarget& target) {
    const std::shared_ptr<const ColorPaintList> list = makeColorPaintList(face, glyphIndex, palette);
    if (list) {
        list->paint(target);
    }
    return list != nullptr;
}

} // namespace Vell::FontEngine::Internal

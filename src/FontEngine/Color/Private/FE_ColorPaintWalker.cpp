#include <FontEngine/Color/Private/FE_ColorPaintWalker.h>

#include <FontEngine/Color/Private/FE_ColrTable.h>
#include <FontEngine/Color/Private/FE_GradientFields.h>
#include <FontEngine/Color/Private/FE_PaintBounds.h>
#include <FontEngine/Color/Private/FE_PaintTransforms.h>
#include <FontEngine/Private/FE_GlyphChecks.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace Vell::FontEngine::Internal {

namespace {

constexpr unsigned int maxDepth = 64;
constexpr std::size_t maxVisits = 65536;
constexpr unsigned int foregroundEntry = 0xFFFF;

/// The formats of paints, each without variations. The next odd number is the same format with variations;
/// their index stands behind the other fields.
namespace PaintFormat {
constexpr unsigned int layers = 1; // has no variations
constexpr unsigned int solid = 2;
constexpr unsigned int linear = 4;
constexpr unsigned int radial = 6;
constexpr unsigned int sweep = 8;
constexpr unsigned int glyph = 10;     // has no variations
constexpr unsigned int colrGlyph = 11; // has no variations
constexpr unsigned int transform = 12;
constexpr unsigned int composite = 32; // has no variations
} // namespace PaintFormat

/// A paint table.
struct Node {
    std::size_t offset;
    unsigned int format; ///< without variations
    bool isVariable;
    unsigned int depth;
};

Node makeNode(std::size_t offset, unsigned int format, unsigned int depth) {
    const bool isVariable =
        format > PaintFormat::layers && format % 2 == 1 && format != PaintFormat::colrGlyph;
    return {offset, isVariable ? format - 1 : format, isVariable, depth};
}

/// Appends the drawing of a glyph. After a function has returned false, what it appended is of no use.
class PaintWalk {
public:
    PaintWalk(FT_Face face, const ResolvedPalette& palette, ColorPaintList& list)
        : _face(face)
        , _colr(face)
        , _palette(palette)
        , _list(list) {}

    bool addGlyph(unsigned int glyphIndex);

private:
    bool count(std::size_t visits) {
        _visits += visits;
        return _visits <= maxVisits;
    }
    template <class Operation>
    void add(Operation operation) {
        _list.operations.emplace_back(std::move(operation));
    }
    std::optional<TableFields> read(std::size_t offset, std::size_t size) const {
        return _colr.getTable().read(offset, size);
    }

    bool addVersion0(const ColrTable::Layers& layers);
    bool addVersion1(unsigned int glyphIndex, std::size_t root, unsigned int depth);
    bool addPaint(std::size_t offset, unsigned int depth);
    bool addNode(const Node& node);
    bool addLinked(const Node& node, TableFields& fields);
    bool addLayers(const Node& node);
    bool addGlyphFill(const Node& node);
    bool addColrGlyph(const Node& node);
    bool addTransform(const Node& node);
    bool addPlacement(const Node& node);
    bool addTransformed(const cinder::MatrixAffine2<float>& matrix, const Node& node, TableFields& fields);
    bool addComposite(const Node& node);
    bool addSolid(const Node& node);
    template <class Gradient>
    bool addGradient(const Node& node, Gradient (*readGeometry)(TableFields&), std::size_t size);

    bool addGlyphClip(unsigned int glyphIndex);
    std::optional<PaintColor> findColor(unsigned int entry, double alpha);
    bool readLine(std::size_t offset, bool isVariable, FontColorLine& line);

    FT_Face _face;
    ColrTable _colr;
    const ResolvedPalette& _palette;
    ColorPaintList& _list;
    std::size_t _visits = 0;
};

std::optional<PaintColor> PaintWalk::findColor(unsigned int entry, double alpha) {
    const bool isForeground = entry == foregroundEntry;
    if (!isForeground && entry >= _palette.colors.size()) {
        return std::nullopt;
    }
    _list.usesForeground = _list.usesForeground || isForeground;
    PaintColor color = isForeground ? _palette.foreground : _palette.colors[entry];
    color.a = static_cast<unsigned char>(std::lround(color.a * std::clamp(alpha, 0.0, 1.0)));
    return color;
}

bool PaintWalk::readLine(std::size_t offset, bool isVariable, FontColorLine& line) {
    constexpr std::size_t headerSize = 3;
    const std::size_t stopSize = isVariable ? 10 : 6;
    std::optional<TableFields> header = read(offset, headerSize);
    if (!header) {
        return false;
    }
    line.extend = toExtend(header->u8());
    const std::size_t stopCount = header->u16();
    for (std::size_t i = 0; i < stopCount; ++i) {
        std::optional<TableFields> stop = read(offset + headerSize + i * stopSize, stopSize);
        if (!stop || !count(1)) {
            return false;
        }
        const double position = stop->f2dot14();
        const unsigned int entry = stop->u16();
        const std::optional<PaintColor> color = findColor(entry, stop->f2dot14());
        if (!color) {
            return false;
        }
        line.stops.push_back({position, *color});
    }
    return true;
}

bool PaintWalk::addSolid(const Node& node) {
    std::optional<TableFields> fields = read(node.offset + 1, 4);
    if (!fields) {
        return false;
    }
    const unsigned int entry = fields->u16();
    const std::optional<PaintColor> color = findColor(entry, fields->f2dot14());
    if (color) {
        add(*color);
    }
    return color.has_value();
}

template <class Gradient>
bool PaintWalk::addGradient(const Node& node, Gradient (*readGeometry)(TableFields&), std::size_t size) {
    constexpr std::size_t linkSize = 3;
    FontColorLine line{};
    std::optional<TableFields> fields = read(node.offset + 1, linkSize + size);
    if (!fields || !readLine(node.offset + fields->u24(), node.isVariable, line)) {
        return false;
    }
    appendGradient(_list.operations, readGeometry(*fields), std::move(line));
    return true;
}

bool PaintWalk::addGlyphClip(unsigned int glyphIndex) {
    if (!_list.outlines.load(_face, glyphIndex)) {
        return false;
    }
    add(PushGlyphClip{static_cast<unsigned short>(glyphIndex)});
    return true;
}

/// Adds the paint to which the next field leads.
bool PaintWalk::addLinked(const Node& node, TableFields& fields) {
    return addPaint(node.offset + fields.u24(), node.depth);
}

bool PaintWalk::addGlyphFill(const Node& node) {
    std::optional<TableFields> fields = read(node.offset + 1, 5);
    if (!fields) {
        return false;
    }
    TableFields fill = *fields;
    fields->u24();
    if (!addGlyphClip(fields->u16()) || !addLinked(node, fill)) {
        return false;
    }
    add(PopClip());
    return true;
}

bool PaintWalk::addLayers(const Node& node) {
    std::optional<TableFields> fields = read(node.offset + 1, 5);
    if (!fields) {
        return false;
    }
    const std::size_t layerCount = fields->u8();
    const std::size_t first = fields->u32();
    for (std::size_t i = 0; i < layerCount; ++i) {
        const std::optional<std::size_t> layer = _colr.findLayerPaint(first + i);
        if (!layer || !addPaint(*layer, node.depth)) {
            return false;
        }
    }
    return true;
}

bool PaintWalk::addColrGlyph(const Node& node) {
    std::optional<TableFields> fields = read(node.offset + 1, 2);
    if (!fields) {
        return false;
    }
    const unsigned int glyphIndex = fields->u16();
    const std::optional<std::size_t> root = _colr.findPaint(glyphIndex);
    return root && addVersion1(glyphIndex, *root, node.depth);
}

bool PaintWalk::addComposite(const Node& node) {
    constexpr unsigned int modeCount = 28;
    std::optional<TableFields> source = read(node.offset + 1, 7);
    if (!source) {
        return false;
    }
    TableFields backdrop = *source;
    backdrop.u24();
    const unsigned int mode = backdrop.u8();
    add(PushGroup());
    if (mode >= modeCount || !addLinked(node, backdrop)) {
        return false;
    }
    add(PushGroup());
    if (!addLinked(node, *source)) {
        return false;
    }
    add(PopGroup{static_cast<CompositeMode>(mode)});
    add(PopGroup{CompositeMode::SourceOver});
    return true;
}

bool PaintWalk::addTransformed(const cinder::MatrixAffine2<float>& matrix, const Node& node,
                               TableFields& fields) {
    add(PushTransform{matrix});
    if (!addLinked(node, fields)) {
        return false;
    }
    add(PopTransform());
    return true;
}

bool PaintWalk::addTransform(const Node& node) {
    std::optional<TableFields> fields = read(node.offset + 1, 6);
    if (!fields) {
        return false;
    }
    TableFields link = *fields;
    fields->u24();
    std::optional<TableFields> affine = read(node.offset + fields->u24(), affineSize);
    return affine && addTransformed(readAffine(*affine), node, link);
}

bool PaintWalk::addPlacement(const Node& node) {
    constexpr std::size_t linkSize = 3;
    std::optional<TableFields> fields = read(node.offset + 1, linkSize + getPlacementSize(node.format));
    if (!fields) {
        return false;
    }
    TableFields link = *fields;
    fields->u24();
    return addTransformed(readPlacement(node.format, *fields), node, link);
}

bool PaintWalk::addPaint(std::size_t offset, unsigned int depth) {
    if (depth >= maxDepth || !count(1)) {
        return false;
    }
    std::optional<TableFields> format = read(offset, 1);
    return format && addNode(makeNode(offset, format->u8(), depth + 1));
}

bool PaintWalk::addNode(const Node& node) {
    switch (node.format) {
    case PaintFormat::layers:
        return addLayers(node);
    case PaintFormat::solid:
        return addSolid(node);
    case PaintFormat::linear:
        return addGradient(node, readLinear, 12);
    case PaintFormat::radial:
        return addGradient(node, readRadial, 12);
    case PaintFormat::sweep:
        return addGradient(node, readSweep, 8);
    case PaintFormat::glyph:
        return addGlyphFill(node);
    case PaintFormat::colrGlyph:
        return addColrGlyph(node);
    case PaintFormat::transform:
        return addTransform(node);
    case PaintFormat::composite:
        return !node.isVariable && addComposite(node);
    default:
        return isPlacement(node.format) && addPlacement(node);
    }
}

bool PaintWalk::addVersion1(unsigned int glyphIndex, std::size_t root, unsigned int depth) {
    const std::optional<PaintBox> clipBox = _colr.findClipBox(glyphIndex);
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

bool PaintWalk::addVersion0(const ColrTable::Layers& layers) {
    for (std::size_t i = layers.first; i < layers.first + layers.count; ++i) {
        const std::optional<ColrTable::Layer> layer = _colr.readLayer(i);
        const std::optional<PaintColor> color = layer ? findColor(layer->entry, 1) : std::nullopt;
        if (!color || !count(1) || !addGlyphClip(layer->glyphIndex)) {
            return false;
        }
        add(*color);
        add(PopClip());
    }
    return true;
}

bool PaintWalk::addGlyph(unsigned int glyphIndex) {
    if (const std::optional<std::size_t> root = _colr.findPaint(glyphIndex)) {
        return addVersion1(glyphIndex, *root, 0);
    }
    const std::optional<ColrTable::Layers> layers = _colr.findLayers(glyphIndex);
    return layers && layers->count > 0 && addVersion0(*layers);
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
bool limitPaint(ColorPaintList& list, float em) {
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
    const bool isDrawable = hasGlyph(*face, glyphIndex) && FT_IS_SCALABLE(face) &&
                            PaintWalk(face, palette, *list).addGlyph(glyphIndex) &&
                            limitPaint(*list, face->units_per_EM);
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

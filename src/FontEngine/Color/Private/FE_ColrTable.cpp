#include <FontEngine/Color/Private/FE_ColrTable.h>

#include FT_TRUETYPE_TAGS_H

namespace Vell::FontEngine::Internal {

ColrTable::ColrTable(FT_Face face)
    : _table(face, FT_MAKE_TAG('C', 'O', 'L', 'R')) {
    constexpr std::size_t sizeOfVersion0 = 14;
    constexpr std::size_t sizeOfVersion1 = 34;
    std::optional<TableFields> header = _table.read(0, sizeOfVersion0);
    if (!header) {
        return;
    }
    const bool isVersion0 = header->u16() == 0;
    _layerGlyphs.count = header->u16();
    _layerGlyphs.offset = header->u32();
    _layers.offset = header->u32();
    _layers.count = header->u16();
    header = _table.read(sizeOfVersion0, sizeOfVersion1 - sizeOfVersion0);
    if (!isVersion0 && header) {
        _paintList = header->u32();
        _layerPaintList = header->u32();
        _clipList = header->u32();
    }
}

ColrTable::Records ColrTable::findList(std::size_t listOffset, std::size_t headerSize) const {
    std::optional<TableFields> count = _table.read(listOffset + headerSize - 4, 4);
    return listOffset != 0 && count ? Records{listOffset + headerSize, count->u32()} : Records();
}

std::optional<TableFields> ColrTable::search(const Records& records, std::size_t recordSize,
                                             unsigned int glyphIndex) const {
    std::size_t first = 0;
    std::size_t end = records.count;
    while (first < end) {
        const std::size_t middle = first + (end - first) / 2;
        std::optional<TableFields> record = _table.read(records.offset + middle * recordSize, 2);
        if (record && record->u16() <= glyphIndex) {
            first = middle + 1;
        } else {
            end = middle;
        }
    }
    return first == 0 ? std::nullopt : _table.read(records.offset + (first - 1) * recordSize, recordSize);
}

std::optional<ColrTable::Layers> ColrTable::findLayers(unsigned int glyphIndex) const {
    constexpr std::size_t recordSize = 6;
    std::optional<TableFields> record = search(_layerGlyphs, recordSize, glyphIndex);
    if (!record || record->u16() != glyphIndex) {
        return std::nullopt;
    }
    const std::size_t first = record->u16();
    return Layers{first, record->u16()};
}

std::optional<ColrTable::Layer> ColrTable::readLayer(std::size_t index) const {
    constexpr std::size_t recordSize = 4;
    if (index >= _layers.count) {
        return std::nullopt;
    }
    std::optional<TableFields> record = _table.read(_layers.offset + index * recordSize, recordSize);
    if (!record) {
        return std::nullopt;
    }
    const unsigned int glyphIndex = record->u16();
    return Layer{glyphIndex, record->u16()};
}

std::optional<std::size_t> ColrTable::findPaint(unsigned int glyphIndex) const {
    constexpr std::size_t recordSize = 6;
    std::optional<TableFields> record = search(findList(_paintList, 4), recordSize, glyphIndex);
    if (!record || record->u16() != glyphIndex) {
        return std::nullopt;
    }
    return _paintList + record->u32();
}

std::optional<std::size_t> ColrTable::findLayerPaint(std::size_t index) const {
    constexpr std::size_t recordSize = 4;
    const Records layers = findList(_layerPaintList, 4);
    if (index >= layers.count) {
        return std::nullopt;
    }
    std::optional<TableFields> offset = _table.read(layers.offset + index * recordSize, recordSize);
    return offset ? std::optional<std::size_t>(_layerPaintList + offset->u32()) : std::nullopt;
}

std::optional<PaintBox> ColrTable::findClipBox(unsigned int glyphIndex) const {
    constexpr std::size_t recordSize = 7;
    constexpr std::size_t boxSize = 9; // of both formats, without the variations of the second one
    std::optional<TableFields> record = search(findList(_clipList, 5), recordSize, glyphIndex);
    if (!record || record->u16() > glyphIndex || record->u16() < glyphIndex) {
        return std::nullopt;
    }
    std::optional<TableFields> box = _table.read(_clipList + record->u24(), boxSize);
    if (!box) {
        return std::nullopt;
    }
    box->u8(); // format
    const auto left = static_cast<float>(box->i16());
    const auto bottom = static_cast<float>(box->i16());
    const auto right = static_cast<float>(box->i16());
    return PaintBox{left, bottom, right, static_cast<float>(box->i16())};
}

} // namespace Vell::FontEngine::Internal

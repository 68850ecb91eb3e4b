#include <support/ColrTable.h>

namespace Vell::Testing::Colr {

namespace {

constexpr std::size_t headerSizeOfVersion0 = 14;
constexpr std::size_t headerSizeOfVersion1 = 34;

/// Writes paint tables, each followed by what it refers to.
class PaintPool {
public:
    explicit PaintPool(ByteWriter& writer)
        : _writer(writer) {}

    /// Returns where a table stands. Offsets lead only forwards, so each reference gets a copy.
    std::size_t place(const Paint& paint) {
        const std::size_t position = _writer.size();
        _writer.addBytes(paint->bytes.getBytes());
        for (const PaintTable::Link& link : paint->links) {
            setU24(position + link.position, place(link.target) - position);
        }
        return position;
    }

private:
    void setU24(std::size_t position, std::size_t value) {
        _writer.setU8(position, static_cast<unsigned int>(value >> 16));
        _writer.setU8(position + 1, static_cast<unsigned int>(value >> 8));
        _writer.setU8(position + 2, static_cast<unsigned int>(value));
    }

    ByteWriter& _writer;
};

void setOffset(ByteWriter& writer, std::size_t position, std::size_t offset) {
    writer.setU32(position, static_cast<std::uint32_t>(offset));
}

using GlyphLayers = std::map<unsigned int, std::vector<Layer>>;

void addVersion0(ByteWriter& writer, const GlyphLayers& glyphs) {
    constexpr std::size_t recordsOffset = 4;
    constexpr std::size_t layersOffset = 8;
    setOffset(writer, recordsOffset, writer.size());
    unsigned int first = 0;
    for (const auto& [glyphIndex, layers] : glyphs) {
        writer.addU16(glyphIndex);
        writer.addU16(first);
        writer.addU16(static_cast<unsigned int>(layers.size()));
        first += static_cast<unsigned int>(layers.size());
    }
    setOffset(writer, layersOffset, writer.size());
    for (const auto& [glyphIndex, layers] : glyphs) {
        for (const Layer& layer : layers) {
            writer.addU16(layer.glyphIndex);
            writer.addU16(layer.entry);
        }
    }
}

unsigned int countLayers(const GlyphLayers& glyphs) {
    std::size_t count = 0;
    for (const auto& [glyphIndex, layers] : glyphs) {
        count += layers.size();
    }
    return static_cast<unsigned int>(count);
}

void addClipBoxes(ByteWriter& writer, const std::map<unsigned int, ClipBox>& boxes) {
    constexpr std::size_t clipSize = 7;
    std::size_t offset = 5 + clipSize * boxes.size();
    writer.addU8(1); // format
    writer.addU32(static_cast<std::uint32_t>(boxes.size()));
    for (const auto& [glyphIndex, box] : boxes) {
        writer.addU16(glyphIndex);
        writer.addU16(glyphIndex);
        writer.addU8(static_cast<unsigned int>(offset >> 16));
        writer.addU16(static_cast<unsigned int>(offset));
        offset += 9;
    }
    for (const auto& [glyphIndex, box] : boxes) {
        writer.addU8(1); // format
        for (const int edge : {box.left, box.bottom, box.right, box.top}) {
            writer.addI16(edge);
        }
    }
}

} // namespace

ColrTable& ColrTable::addLayers(unsigned int glyphIndex, const std::vector<Layer>& layers) {
    _layers[glyphIndex] = layers;
    return *this;
}

ColrTable& ColrTable::addGlyph(unsigned int glyphIndex, Paint paint) {
    _glyphs[glyphIndex] = std::move(paint);
    return *this;
}

unsigned int ColrTable::addLayer(Paint paint) {
    _layerPaints.push_back(std::move(paint));
    return static_cast<unsigned int>(_layerPaints.size() - 1);
}

ColrTable& ColrTable::setClipBox(unsigned int glyphIndex, const ClipBox& box) {
    _clipBoxes[glyphIndex] = box;
    return *this;
}

Bytes ColrTable::build() const {
    ByteWriter writer;
    writer.addU16(isVersion1() ? 1 : 0);
    writer.addU16(static_cast<unsigned int>(_layers.size()));
    writer.addZeros(8);
    writer.addU16(countLayers(_layers));
    writer.addZeros(isVersion1() ? headerSizeOfVersion1 - headerSizeOfVersion0 : 0);
    addVersion0(writer, _layers);
    if (!isVersion1()) {
        return writer.getBytes();
    }

    if (!_clipBoxes.empty()) {
        setOffset(writer, 22, writer.size());
        addClipBoxes(writer, _clipBoxes);
    }
    const std::size_t glyphList = writer.size();
    setOffset(writer, 14, glyphList);
    writer.addU32(static_cast<std::uint32_t>(_glyphs.size()));
    for (const auto& [glyphIndex, paint] : _glyphs) {
        writer.addU16(glyphIndex);
        writer.addZeros(4);
    }
    const std::size_t layerList = writer.size();
    setOffset(writer, 18, layerList);
    writer.addU32(static_cast<std::uint32_t>(_layerPaints.size()));
    writer.addZeros(4 * _layerPaints.size());

    PaintPool pool(writer);
    std::size_t field = glyphList + 4 + 2;
    for (const auto& [glyphIndex, paint] : _glyphs) {
        setOffset(writer, field, pool.place(paint) - glyphList);
        field += 6;
    }
    field = layerList + 4;
    for (const Paint& paint : _layerPaints) {
        setOffset(writer, field, pool.place(paint) - layerList);
        field += 4;
    }
    return writer.getBytes();
}

Bytes makePalettes(const std::vector<std::vector<Color>>& palettes) {
    const std::size_t entries = palettes.empty() ? 0 : palettes.front().size();
    ByteWriter writer;
    writer.addU16(0); // version
    writer.addU16(static_cast<unsigned int>(entries));
    writer.addU16(static_cast<unsigned int>(palettes.size()));
    writer.addU16(static_cast<unsigned int>(palettes.size() * entries));
    writer.addU32(static_cast<std::uint32_t>(12 + 2 * palettes.size()));
    for (std::size_t i = 0; i < palettes.size(); ++i) {
        writer.addU16(static_cast<unsigned int>(i * entries));
    }
    for (const std::vector<Color>& palette : palettes) {
        for (const Color& color : palette) {
            for (const unsigned int channel : {color.b, color.g, color.r, color.a}) {
                writer.addU8(channel);
            }
        }
    }
    return writer.getBytes();
}

} // namespace Vell::Testing::Colr

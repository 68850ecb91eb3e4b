#pragma once

#include <support/ByteWriter.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Writes the tables COLR and CPAL. Numbers are in the units of a reader, not of the file: offsets along
/// gradients, alphas and scales as they are, angles in degrees.
namespace Vell::Testing::Colr {

constexpr unsigned int foreground = 0xFFFF;

struct Stop {
    double offset;
    unsigned int entry;
    double alpha = 1;
};

enum class Extend { Pad, Repeat, Reflect };

struct Line {
    std::vector<Stop> stops;
    Extend extend = Extend::Pad;
};

struct Point {
    double x = 0;
    double y = 0;
};

/// A paint table, with the tables that it refers to. Beside the bytes, it has what they mean, rounded as in
/// the file, for painters that do not read files.
struct PaintTable {
    struct Link {
        std::size_t position; ///< of the 24-bit offset
        std::shared_ptr<const PaintTable> target;
    };
    ByteWriter bytes;
    std::vector<Link> links; ///< in the order of the file; colour lines and matrices are links, too
    unsigned int format = 0;
    std::vector<double> numbers; ///< the other fields; of a matrix, its entries
    Line line;
};
using Paint = std::shared_ptr<const PaintTable>;

struct Affine {
    double xx = 1;
    double yx = 0;
    double xy = 0;
    double yy = 1;
    double dx = 0;
    double dy = 0;
};

Paint makeLayers(unsigned int count, unsigned int first);
Paint makeSolid(unsigned int entry, double alpha = 1);
Paint makeLinear(const Line& line, Point p0, Point p1, Point p2);
Paint makeRadial(const Line& line, Point center0, double radius0, Point center1, double radius1);
/// Angles from -180 up to 540 degrees.
Paint makeSweep(const Line& line, Point center, double startAngle, double endAngle);
Paint makeGlyph(unsigned int glyphIndex, const Paint& fill);
Paint makeColrGlyph(unsigned int glyphIndex);
Paint makeTransform(const Affine& affine, const Paint& paint);
Paint makeTranslate(double x, double y, const Paint& paint);
Paint makeScale(double x, double y, const Paint& paint);
Paint makeScaleAround(double x, double y, Point center, const Paint& paint);
Paint makeUniformScale(double factor, const Paint& paint);
Paint makeUniformScaleAround(double factor, Point center, const Paint& paint);
Paint makeRotate(double angle, const Paint& paint);
Paint makeRotateAround(double angle, Point center, const Paint& paint);
Paint makeSkew(double x, double y, const Paint& paint);
Paint makeSkewAround(double x, double y, Point center, const Paint& paint);
/// `mode` is the number in the file.
Paint makeComposite(const Paint& source, unsigned int mode, const Paint& backdrop);
/// Any bytes.
Paint makeRaw(const Bytes& bytes);

struct Layer {
    unsigned int glyphIndex;
    unsigned int entry;
};

struct ClipBox {
    int left;
    int bottom;
    int right;
    int top;
};

/// The table COLR: version 1 if anything of it is added, otherwise version 0.
class ColrTable {
public:
    /// Version 0.
    ColrTable& addLayers(unsigned int glyphIndex, const std::vector<Layer>& layers);
    ColrTable& addGlyph(unsigned int glyphIndex, Paint paint);
    /// Returns the index of the layer for makeLayers.
    unsigned int addLayer(Paint paint);
    ColrTable& setClipBox(unsigned int glyphIndex, const ClipBox& box);

    Bytes build() const;

    const std::map<unsigned int, Paint>& getGlyphs() const { return _glyphs; }
    const std::vector<Paint>& getLayers() const { return _layerPaints; }
    const std::map<unsigned int, ClipBox>& getClipBoxes() const { return _clipBoxes; }

private:
    bool isVersion1() const { return !_glyphs.empty() || !_layerPaints.empty() || !_clipBoxes.empty(); }

    std::map<unsigned int, std::vector<Layer>> _layers;
    std::map<unsigned int, Paint> _glyphs;
    std::vector<Paint> _layerPaints;
    std::map<unsigned int, ClipBox> _clipBoxes;
};

struct Color {
    unsigned int r;
    unsigned int g;
    unsigned int b;
    unsigned int a = 255;
};

/// The table CPAL; all palettes have the same size.
Bytes makePalettes(const std::vector<std::vector<Color>>& palettes);

} // namespace Vell::Testing::Colr

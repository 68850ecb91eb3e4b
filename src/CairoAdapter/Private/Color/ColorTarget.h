#pragma once

#include <CairoAdapter/Private/Color/DocumentPixels.h>
#include <CairoAdapter/Public/CairoHandles.h>
#include <FontEngine/Color/FE_ColorPaintTarget.h>
#include <Gfx/Public/Painter.h>

#include <cairo.h>

#include <functional>
#include <memory>
#include <vector>

namespace Vell::CairoAdapter::Internal {

/// Draws the operations of one colour glyph. Between construction and destruction, the context belongs to it;
/// its owner saves and restores the state around it.
///
///     ColorTarget target(context, matrix, findOutline);
///     paint(target);
///     target.finish();
///
/// A clip reaches cairo only when something other than a fill follows it. A glyph that is filled with a
/// colour or a gradient is thus one filled path, in documents as well.
class ColorTarget final : public FontEngine::ColorPaintTarget {
public:
    /// Returns the outline of a glyph, y pointing down; null if it has none.
    using FindOutline = std::function<std::shared_ptr<const Gfx::Path>(unsigned short glyphIndex)>;

    /// `matrix` leads from font units, y pointing up, to device units.
    ColorTarget(cairo_t* context, const cairo_matrix_t& matrix, FindOutline findOutline);
    ColorTarget(const ColorTarget&) = delete;
    ColorTarget& operator=(const ColorTarget&) = delete;
    /// Drops groups that are not finished.
    ~ColorTarget() override;

    /// Combines the glyph with the surface if the context's operator is not over.
    void finish();

    void pushTransform(const cinder::MatrixAffine2<float>& transform) override;
    void popTransform() override;

    void pushClip(unsigned short glyphIndex) override;
    void pushClip(const FontEngine::PaintBox& box) override;
    void popClip() override;

    void fill(const FontEngine::PaintColor& color) override;
    void fill(const FontEngine::LinearGradient& gradient) override;
    void fill(const FontEngine::RadialGradient& gradient) override;
    void fill(const FontEngine::SweepGradient& gradient) override;

    void pushGroup() override;
    void popGroup(FontEngine::CompositeMode mode) override;

    void drawImage(const FontEngine::BitmapGlyphImage& image, const FontEngine::PaintBox& box) override;

private:
    enum class Kind : unsigned char { Transform, Clip, Group };

    struct Scope {
        Kind kind;
        bool isApplied;                        ///< whether cairo has the clip
        cairo_matrix_t matrix;                 ///< before a transform; of the path of a clip
        std::shared_ptr<const Gfx::Path> path; ///< of a clip; null if it is empty
    };

    void popGroup(cairo_operator_t mode);
    void push(std::shared_ptr<const Gfx::Path> clip);
    const Scope& getTop(Kind kind) const;
    void pop();
    Scope* findPendingClip();
    void applyClip();
    void addPath(const Scope& clip);
    void setSource(cairo_pattern_t* pattern, const cairo_matrix_t& matrix);
    template <class Gradient>
    void fillWithGradient(const Gradient& gradient);
    DeviceBox getFillBox();
    /// Does nothing without a pattern, such as for an empty clip.
    void paintDevicePattern(const PatternPtr& pattern);
    void fillSource();
    bool isInGroup() const;

    cairo_t* _context;
    cairo_operator_t _operator; ///< for the glyph as a whole
    cairo_matrix_t _matrix;     ///< the product of all transforms
    FindOutline _findOutline;
    std::vector<Scope> _scopes;
    DeviceBox _groupBox{};     ///< what the groups cover
    bool _needsPixels = false; ///< whether they are combined in a way that the surface cannot express
};

} // namespace Vell::CairoAdapter::Internal

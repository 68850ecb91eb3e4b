#pragma once

#include <FontEngine/FE_BitmapGlyphPainter.h>

namespace Vell::FontEngine::Internal {

/// Notifies the run painter of a glyph painter, if there is one, when a run begins and ends.
class GlyphRunScope {
public:
    explicit GlyphRunScope(BitmapGlyphPainter& painter)
        : _painter(painter.getRunPainter()) {
        if (_painter != nullptr) {
            _painter->beginGlyphRun();
        }
    }
    GlyphRunScope(const GlyphRunScope&) = delete;
    GlyphRunScope& operator=(const GlyphRunScope&) = delete;
    ~GlyphRunScope() {
        if (_painter != nullptr) {
            _painter->endGlyphRun();
        }
    }

    /// Whether there is somebody to notify.
    bool hasRunPainter() const { return _painter != nullptr; }

private:
    BitmapGlyphRunPainter* _painter;
};

} // namespace Vell::FontEngine::Internal

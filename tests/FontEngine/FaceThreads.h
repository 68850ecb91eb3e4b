#pragma once

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/Threads.h>

#include <memory>

namespace Vell::FontEngine {

using GlyphPtr = std::shared_ptr<const FT_BitmapGlyphRec_>;

constexpr unsigned int threadCount = 4;

template <class Work>
void runOnThreads(const Work& work) {
    Testing::runOnThreads(threadCount, work);
}

inline GlyphPtr render(const FacePtr& face, unsigned int number) {
    return face->getBitmapGlyph(KeyFields().with(&KeyFields::offset, number).makeBitmap(), false);
}

inline GlyphPtr renderUnderscore(const FacePtr& face) {
    KeyFields fields;
    fields.glyph = TestGlyph::underscore;
    fields.unicode = '_';
    fields.mode = FT_RENDER_MODE_LCD;
    fields.isLast = false;
    fields.size = 40.0F;
    return face->getBitmapGlyph(fields.makeBitmap(), false);
}

} // namespace Vell::FontEngine

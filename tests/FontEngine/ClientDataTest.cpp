// FT_Face::generic belongs to the client.

#include <FontEngine/Engine.h>
#include <FontEngine/GlyphKeyFields.h>

#include <support/ErrorText.h>
#include <support/RecordingPainter.h>

#include <FontEngine/Private/FE_FreeTypeUtilsInternal.h>
#include <FontLoaders/Public/Exceptions.h>

#include <gtest/gtest.h>

#include <hb-ft.h>

#include <algorithm>

namespace Vell::FontEngine {
namespace {

using FontLoaders::FreeTypeException;
using FontLoaders::FTFacePtr;
using Testing::Bytes;
using Testing::getErrorText;

/// Counts calls of the finalizer, as a client's finalizer might.
void countEnd(void* face) {
    ++*static_cast<int*>(static_cast<FT_Face>(face)->generic.data);
}

Bytes getPixels(const FT_BitmapGlyphRec_& glyph) {
    const std::size_t size = static_cast<std::size_t>(glyph.bitmap.pitch) * glyph.bitmap.rows;
    return {glyph.bitmap.buffer, glyph.bitmap.buffer + size};
}

/// Requests a bitmap and a path.
Bytes useGlyphs(const Engine& engine, const FacePtr& face) {
    Testing::RecordingPainter painter;
    EXPECT_NE(face->getOutlineGlyphPath(KeyFields().makeOutline(), painter), nullptr);
    return getPixels(*engine.factory->getBitmapGlyph(KeyFields().makeBitmap(), face, false));
}

/// The pixels of the same glyph if no client interferes.
Bytes getExpectedPixels() {
    const Engine engine;
    return useGlyphs(engine, engine.getFace());
}

/// The test font and a chain of glyphs, each of which contains the previous one twice. The last one has
/// 262,143 parts. All of them are empty, so FreeType itself accepts it.
Bytes makeFontWithTree() {
    Testing::FontBuilder font = makeTestFont();
    unsigned int last = font.addGlyph(Testing::FontGlyph());
    for (int level = 0; level < 17; ++level) {
        last = font.addGlyph({500, {}, {}, {{last}, {last}}});
    }
    EXPECT_EQ(last, 22U);
    return font.build();
}

std::string getTreeError(const Engine& engine, const FacePtr& face) {
    const auto key = KeyFields().with(&KeyFields::glyph, 22).makeBitmap();
    return getErrorText<FreeTypeException>([&] { engine.factory->getBitmapGlyph(key, face, false); });
}

constexpr const char* refused = "FT_Load_Glyph() failed, error: 21, glyph index: 22 ";

TEST(ClientData, IsEmptyInANewFace) {
    const Engine engine;
    const FT_Generic& field = engine.getFace()->getHandle()->generic;
    EXPECT_EQ(field.data, nullptr);
    EXPECT_EQ(field.finalizer, nullptr);
}

TEST(ClientData, StaysUntouchedUntilItsFaceIsDestroyed) {
    int endCount = 0;
    {
        const Engine engine;
        const FacePtr face = engine.getFace();
        FT_Generic& field = face->getHandle()->generic;
        field = {&endCount, countEnd};
        EXPECT_EQ(useGlyphs(engine, face), getExpectedPixels());
        EXPECT_EQ(field.data, &endCount);
        EXPECT_EQ(field.finalizer, countEnd);
        EXPECT_EQ(endCount, 0);
    }
    EXPECT_EQ(endCount, 1);
}

TEST(ClientData, DoesNotDisableTheProtectionAgainstBoundlessGlyphs) {
    const Engine engine(makeFontWithTree());
    const FacePtr face = engine.getFace();
    Bytes data(256, 0);
    face->getHandle()->generic.data = data.data();
    EXPECT_EQ(getTreeError(engine, face), refused);
}

TEST(ClientData, MayBelongToHarfBuzz) {
    const Engine engine(makeFontWithTree());
    const FacePtr face = engine.getFace();
    hb_face_t* const shaper = hb_ft_face_create_cached(face->getHandle().get());
    EXPECT_EQ(useGlyphs(engine, face), getExpectedPixels());
    EXPECT_EQ(getTreeError(engine, face), refused);
    EXPECT_EQ(hb_ft_face_create_cached(face->getHandle().get()), shaper);
    EXPECT_EQ(hb_face_get_upem(shaper), 1000U);
    hb_face_destroy(shaper);
    hb_face_destroy(shaper);
}

/// A face that the client opened with its own FreeType library and to which it attached data.
class ForeignFace {
public:
    explicit ForeignFace(Bytes file)
        : _file(std::move(file)) {
        EXPECT_EQ(FT_Init_FreeType(&_library), 0);
        FT_Face face = nullptr;
        EXPECT_EQ(FT_New_Memory_Face(_library, _file.data(), static_cast<FT_Long>(_file.size()), 0, &face),
                  0);
        EXPECT_EQ(FT_Set_Char_Size(face, 640, 640, 72, 72), 0);
        face->generic.data = _data.data();
        _face.reset(face);
    }
    ~ForeignFace() {
        _face.reset();
        FT_Done_FreeType(_library);
    }
    ForeignFace(const ForeignFace&) = delete;
    ForeignFace& operator=(const ForeignFace&) = delete;

    const FTFacePtr& get() const { return _face; }
    bool hasItsData() const {
        return _face->generic.data == _data.data() &&
               std::all_of(_data.begin(), _data.end(), [](unsigned char byte) { return byte == 0xA5; });
    }

private:
    Bytes _file;
    Bytes _data = Bytes(256, 0xA5);
    FT_Library _library = nullptr;
    FTFacePtr _face{nullptr, [](FT_FaceRec_* face) { FT_Done_Face(face); }};
};

TEST(ClientData, MayBelongToAFaceThatTheClientOpened) {
    const ForeignFace foreign(makeTestFont().build());
    const auto glyph = Internal::createBitmapGlyph(KeyFields().makeBitmap(), foreign.get(), false);
    EXPECT_EQ(getPixels(*glyph), getExpectedPixels());
    EXPECT_TRUE(foreign.hasItsData());
}

} // namespace
} // namespace Vell::FontEngine

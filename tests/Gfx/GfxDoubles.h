#pragma once

#include <Gfx/Gfx.h>

#include <atomic>
#include <string>
#include <utility>

namespace Vell::FontEngine {

/// Stands in for the engine's factory, which these tests do without: the only class that may make metrics.
class FontFactory {
public:
    static Gfx::BasicMetrics makeMetrics(float height, float ascender, float descender,
                                         std::pair<float, float> capHeightAndStrikeOut,
                                         Gfx::CharMap charMap) {
        return Gfx::BasicMetrics(Gfx::FactoryAccessTag(), height, ascender, descender, capHeightAndStrikeOut,
                                 std::move(charMap));
    }
};

} // namespace Vell::FontEngine

namespace Vell::Gfx::Testing {

/// A face description that counts how often its name is asked for.
class FaceInfo : public FontFaceInfo {
public:
    FaceInfo(std::string name, bool bold, bool italic)
        : _name(std::move(name))
        , _bold(bold)
        , _italic(italic) {}
    FaceInfo(const FaceInfo& other)
        : FontFaceInfo(other)
        , _name(other._name)
        , _bold(other._bold)
        , _italic(other._italic) {}

    std::string getName() const override {
        ++nameCalls;
        return _name;
    }
    bool isBold() const override {
        ++boldCalls;
        return _bold;
    }
    bool isItalic() const override {
        ++italicCalls;
        return _italic;
    }

    mutable std::atomic<int> nameCalls{0};
    mutable std::atomic<int> boldCalls{0};
    mutable std::atomic<int> italicCalls{0};

private:
    std::string _name;
    bool _bold;
    bool _italic;
};

using FaceInfoPtr = CheckedPtrImpl<const FontFaceInfo, false>;

inline FaceInfoPtr makeFaceInfo(const std::string& name = "A", bool bold = false, bool italic = false) {
    return makeNNPtr<FaceInfo>(name, bold, italic);
}

class Info : public FontInfo {
public:
    Info(FaceInfoPtr face, float size, TextPositionType type)
        : _face(std::move(face))
        , _size(size)
        , _type(type) {}

    FaceInfoPtr getFontFaceInfo() const override { return _face; }
    float getSize() const override { return _size; }
    TextPositionType getTextPositionType() const override { return _type; }

private:
    FaceInfoPtr _face;
    float _size;
    TextPositionType _type;
};

using FontInfoPtr = CheckedPtrImpl<const FontInfo, false>;

inline FontInfoPtr makeFontInfo(float size, TextPositionType type = TextPositionType::Normal) {
    return makeNNPtr<Info>(makeFaceInfo(), size, type);
}

class ExtInfo : public ExtFontInfo {
public:
    ExtInfo(FontInfoPtr font, float letterSpacing)
        : _font(std::move(font))
        , _letterSpacing(letterSpacing) {}

    FontInfoPtr getFontInfo() const override { return _font; }
    float getLetterSpacing() const override { return _letterSpacing; }

private:
    FontInfoPtr _font;
    float _letterSpacing;
};

using ExtFontInfoPtr = CheckedPtrImpl<const ExtFontInfo, false>;

inline ExtFontInfoPtr makeExtFontInfo(float letterSpacing = 0.0F) {
    return makeNNPtr<ExtInfo>(makeFontInfo(10.0F), letterSpacing);
}

} // namespace Vell::Gfx::Testing

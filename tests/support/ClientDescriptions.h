#pragma once

#include <support/Descriptions.h>

#include <Utils/Public/Ptr/PtrUtils.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>

namespace Vell::Testing {

/// Descriptions with classes of a client, not of the library. A copy starts without recorded calls.
class ClientFaceInfo : public Gfx::FontFaceInfo {
public:
    ClientFaceInfo(std::string name, bool bold, bool italic)
        : _name(std::move(name))
        , _bold(bold)
        , _italic(italic) {}
    ClientFaceInfo(const ClientFaceInfo& other)
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

inline FaceInfoPtr makeClientFaceInfo(const std::string& name = "A", bool bold = false, bool italic = false) {
    return makeNNPtr<const ClientFaceInfo>(name, bold, italic);
}

/// Runs a function when its last owner releases it.
class EndingFaceInfo : public ClientFaceInfo {
public:
    explicit EndingFaceInfo(std::function<void()> end)
        : ClientFaceInfo("Test Sans", false, false)
        , _end(std::move(end)) {}
    ~EndingFaceInfo() override { _end(); }

private:
    std::function<void()> _end;
};

class ClientFontInfo : public Gfx::FontInfo {
public:
    ClientFontInfo(FaceInfoPtr face, float size, Gfx::TextPositionType type)
        : _face(std::move(face))
        , _size(size)
        , _type(type) {}

    FaceInfoPtr getFontFaceInfo() const override { return _face; }
    float getSize() const override { return _size; }
    Gfx::TextPositionType getTextPositionType() const override { return _type; }

private:
    FaceInfoPtr _face;
    float _size;
    Gfx::TextPositionType _type;
};

inline FontInfoPtr makeClientFontInfo(float size,
                                      Gfx::TextPositionType type = Gfx::TextPositionType::Normal) {
    return makeNNPtr<const ClientFontInfo>(makeClientFaceInfo(), size, type);
}

class ClientExtFontInfo : public Gfx::ExtFontInfo {
public:
    ClientExtFontInfo(FontInfoPtr font, float letterSpacing)
        : _font(std::move(font))
        , _letterSpacing(letterSpacing) {}

    FontInfoPtr getFontInfo() const override { return _font; }
    float getLetterSpacing() const override { return _letterSpacing; }

private:
    FontInfoPtr _font;
    float _letterSpacing;
};

inline ExtFontInfoPtr makeClientExtFontInfo(float letterSpacing = 0.0F) {
    return makeNNPtr<const ClientExtFontInfo>(makeClientFontInfo(10.0F), letterSpacing);
}

} // namespace Vell::Testing

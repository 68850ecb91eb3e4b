#pragma once

#include <TextLayout/Public/ShapedText.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Vell::TextLayout {

/// The fonts of one text: those of a look that it may share, as long as it needs no others.
class TextFonts {
public:
    /// `look` must outlive the object.
    explicit TextFonts(const TextLook& look)
        : _look(&look) {}

    const RunFont& operator[](std::size_t index) const {
        return isShared() ? _look->fonts[index] : _fonts[index];
    }

    /// Whether they are those of the look.
    bool isShared() const { return _fonts.empty(); }

    /// Returns the index of the new font.
    std::uint32_t add(RunFont font) {
        if (isShared()) {
            std::vector<RunFont> fonts = _look->fonts;
            fonts.push_back(std::move(font));
            _fonts = std::move(fonts);
        } else {
            _fonts.push_back(std::move(font));
        }
        return static_cast<std::uint32_t>(_fonts.size() - 1);
    }

    /// The fonts themselves, when they are not needed any more.
    std::vector<RunFont> take() {
        if (isShared()) {
            return _look->fonts;
        }
        return std::move(_fonts);
    }

private:
    const TextLook* _look;
    std::vector<RunFont> _fonts;
};

} // namespace Vell::TextLayout

#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <boost/utility/string_ref.hpp>

#include <cstddef>

namespace Vell::Gfx {

/// What a layout needs to know about a font. All lengths are in the units of the font size. Text is UTF-8.
///
/// Threads: any number may use one object at once.
class VELL_API FontMetrics {
public:
    virtual ~FontMetrics();

    /// The distance that the pen moves over `text`, including the letter spacing after every character.
    virtual float getTextWidth(boost::string_ref text, const NNPtr<const ExtFontInfo>& extFontInfo) const = 0;

    /// Counts the whole characters, starting at `begin`, that fit in `width` as getTextWidth measures them,
    /// and moves `begin` past the last of them. Counting stops at the first character that does not fit.
    virtual std::size_t countCharsForWidth(char const*& begin, char const* end, float width,
                                           const NNPtr<const ExtFontInfo>& extFontInfo) const = 0;

    /// The distance between two base lines.
    virtual float getHeight() const = 0;
    /// From the base line up.
    virtual float getAscent() const = 0;
    /// From the base line down, as a positive number.
    virtual float getDescent() const = 0;
    /// The height minus the ascent and the descent.
    virtual float getLeading() const = 0;
    virtual float getCapHeight() const = 0;
    /// The height of this font's base line above the base line of normal text. Negative if it lies below.
    virtual float getBaseLineShift() const = 0;
    /// From the base line up to the lower edge of the strike-out stroke.
    virtual float getStrikeOutPosition() const = 0;
};

/// The interface through which a graphics library gets its text metrics.
class VELL_API FontMetricsFactory {
public:
    virtual ~FontMetricsFactory();

    virtual NNPtr<const FontMetrics> getFontMetrics(const NNPtr<const FontInfo>& fontInfo) const = 0;
};

} // namespace Vell::Gfx

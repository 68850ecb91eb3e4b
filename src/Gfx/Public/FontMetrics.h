#pragma once

#include <Gfx/Public/ExtFontInfo.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <boost/utility/string_ref.hpp>

#include <cstddef>

namespace Vell::Gfx {

/// What a layout needs to know of a font. All lengths are in the units of the font size, text is UTF-8.
/// Threads: any number may use one object at once.
class VELL_API FontMetrics {
public:
    virtual ~FontMetrics();

    /// The distance that the pen travels over `text`, letter spacing after every character included.
    virtual float getTextWidth(boost::string_ref text, const NNPtr<const ExtFontInfo>& extFontInfo) const = 0;

    /// How many whole characters from `begin` on fit into `width`, as getTextWidth measures them; moves
    /// `begin` behind the last of them. Counting stops at the first character that does not fit.
    virtual std::size_t countCharsForWidth(char const*& begin, char const* end, float width,
                                           const NNPtr<const ExtFontInfo>& extFontInfo) const = 0;

    /// The distance between two base lines.
    virtual float getHeight() const = 0;
    /// From the base line up.
    virtual float getAscent() const = 0;
    /// From the base line down, as a positive number.
    virtual float getDescent() const = 0;
    /// The part of the height that neither ascent nor descent takes up.
    virtual float getLeading() const = 0;
    virtual float getCapHeight() const = 0;
    /// How far above the base line of normal text this font's base line lies; negative when below.
    virtual float getBaseLineShift() const = 0;
    /// From the base line up to the lower edge of the strike-out stroke.
    virtual float getStrikeOutPosition() const = 0;
};

} // namespace Vell::Gfx

#pragma once

#include <FontLoaders/Public/FontLoader.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <string>
#include <string_view>
#include <vector>

namespace Vell::FontLoaders {

/// Variable fonts: what their axes are, and how to make static font files of them. To serve such files by the
/// name of a family, see VariationLoader.h.
///
///     for (const FontAxis& axis : readVariations(bytes).axes) {
///         print(axis.tag, axis.minimum, axis.maximum);
///     }
///     const FontBytes semibold = makeFontInstance(bytes, parseVariations("wght=650,wdth=90"));
///
/// All functions are safe for any bytes and on any thread. In a collection, the first face counts.

/// An axis along which a variable font changes. Values are in the units of the axis.
struct FontAxis {
    std::string tag;  ///< "wght", without trailing spaces
    std::string name; ///< for people, in English if the font has that, UTF-8; may be empty
    float minimum;
    float defaultValue;
    float maximum;
    bool isHidden; ///< whether the font asks user interfaces not to show the axis
};

/// A combination of values that the font has a name for.
struct NamedInstance {
    std::string name;               ///< such as "SemiBold"; may be empty
    std::vector<float> coordinates; ///< one value for each axis, in the order of the axes
};

struct FontVariations {
    std::vector<FontAxis> axes; ///< empty for a static font
    std::vector<NamedInstance> instances;
};

/// The most axes that a variable font may have, the most named instances that are listed, and the most bytes
/// of a name. A font with more axes counts as static; of further instances and bytes, nothing is listed.
constexpr unsigned int maxAxes = 256;
constexpr unsigned int maxNamedInstances = 4096;
constexpr unsigned int maxVariationNameBytes = 255;

/// The axes and named instances of a font file. Both are empty for a static font, for bytes that are no font,
/// and if the table of the axes is damaged. Errors: std::bad_alloc.
VELL_API FontVariations readVariations(const NNPtr<const std::vector<unsigned char>>& bytes);

/// The value of one axis.
struct AxisSetting {
    std::string tag;
    float value;
};

/// Reads settings such as "wght=650,wdth=90". An empty text has none. Throws FontLoaderException, with the
/// setting in its text, unless each one is a tag of one to four printable characters of ASCII, an equals
/// sign, and a finite decimal number; one beyond the range of a float is its nearer end.
VELL_API std::vector<AxisSetting> parseVariations(std::string_view text);

/// A static font file: a variable font with every axis fixed. Axes without a setting have their default
/// value, values beyond the ends of an axis mean the nearer end, and of several settings for one axis the
/// last one counts. Without settings, a static font comes back as it is.
///
/// Glyphs keep their indices, names and characters, and the layout tables their features, for the values that
/// the axes have. Names and style flags are those of the variable font. Glyph programs stay, and the control
/// values that they read are those for the values of the axes, in whole font units. Both are left out if the
/// changes of the control values (the table cvar) are damaged.
///
/// Throws FontLoaderException if a value is NaN; if the font has no axis with a setting's tag (the text names
/// it and lists those that there are); if the font is not one with TrueType outlines, as one with CFF2
/// outlines; and if it is damaged, or its glyphs overlap in the file, have more than maxInstanceParts parts
/// together, or have parts whose points all lie on one line. Builds without FONTENGINE_BUILD_VARIABLE_FONTS
/// throw it for every variable font. FreeTypeException if FreeType cannot open it. Cost: a few dozen
/// milliseconds for a font of a few thousand glyphs.
VELL_API FontBytes makeFontInstance(const NNPtr<const std::vector<unsigned char>>& bytes,
                                    const std::vector<AxisSetting>& settings);

/// The most parts that all glyphs together may have, with the parts of parts.
constexpr unsigned int maxInstanceParts = 1'000'000;

} // namespace Vell::FontLoaders

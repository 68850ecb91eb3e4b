#include <fuzz/support/Harness.h>

#include <fuzz/support/ByteReader.h>
#include <fuzz/support/Finding.h>
#include <fuzz/support/Tolerate.h>

#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::Fuzz {

using FontLoaders::AxisSetting;
using FontLoaders::FontAxis;
using FontLoaders::FontBytes;
using FontLoaders::FontVariations;

namespace {

constexpr std::size_t maxSteeredAxes = 3;

/// A value from half of the axis below its minimum to half of it above its maximum.
AxisSetting chooseSetting(const FontAxis& axis, unsigned int steering) {
    const float share = static_cast<float>(steering) / 0x8000 - 0.5F;
    return {axis.tag, axis.minimum + (axis.maximum - axis.minimum) * share};
}

void checkVariations(const FontVariations& variations) {
    require(variations.axes.size() <= FontLoaders::maxAxes, "a font has at most so many axes");
    for (const FontAxis& axis : variations.axes) {
        require(axis.name.size() <= FontLoaders::maxVariationNameBytes, "the name of an axis is short");
    }
    require(variations.instances.size() <= FontLoaders::maxNamedInstances, "a font lists so many instances");
    for (const FontLoaders::NamedInstance& instance : variations.instances) {
        require(instance.coordinates.size() == variations.axes.size(),
                "an instance has a value for each axis");
    }
}

/// Null if the font is refused.
FontBytes tryInstance(const FontBytes& font, const std::vector<AxisSetting>& settings) {
    FontBytes instance;
    tolerate<FontLoaders::FontLoaderException>([&] {
        tolerate<FontLoaders::FreeTypeException>(
            [&] { instance = FontLoaders::makeFontInstance(font, settings); });
    });
    return instance;
}

void checkInstance(const FontBytes& instance) {
    require(FontLoaders::readVariations(instance).axes.empty(), "an instance has no axes");
    require(!FontLoaders::findReasonNotToServe(instance), "an instance may be served");
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    const FontLoaders::FTFacePtr face = FontLoaders::createFontFace(library, instance);
    FT_Set_Pixel_Sizes(face.get(), 0, 16);
    for (FT_UInt glyph = 0; glyph < 3; ++glyph) {
        FT_Load_Glyph(face.get(), glyph, FT_LOAD_DEFAULT); // may fail
    }
}

} // namespace

void runVary(const Bytes& input) {
    ByteReader reader(input);
    unsigned int steering[maxSteeredAxes];
    for (unsigned int& value : steering) {
        value = reader.takeU16();
    }
    const FontBytes font = std::make_shared<const Bytes>(reader.takeRest());
    const FontVariations variations = FontLoaders::readVariations(font);
    checkVariations(variations);
    std::vector<AxisSetting> settings;
    for (std::size_t i = 0; i < maxSteeredAxes && i < variations.axes.size(); ++i) {
        settings.push_back(chooseSetting(variations.axes[i], steering[i]));
    }
    const FontBytes instance = variations.axes.empty() ? nullptr : tryInstance(font, settings);
    if (instance) {
        checkInstance(instance);
        const FontBytes again = tryInstance(font, settings);
        require(again && *again == *instance, "an instance is the same when it is made again");
    }
}

} // namespace Vell::Fuzz

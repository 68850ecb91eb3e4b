#pragma once

#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <optional>
#include <string>

namespace Vell::Tool {

/// A face of a font file, as a user names it: FILE or FILE:INDEX. If there is a file of the whole name, that
/// is the file, and its first face is meant. Otherwise digits after the last colon are the index.
FontLoaders::FontFilePlace parseFontFileName(const std::string& name);

/// The bytes of a face, as a file of its own if the file is a collection and the face is not its first one.
/// Throws ToolError if it cannot be read.
FontLoaders::FontBytes readFontFace(const FontLoaders::FontFilePlace& place);

/// Serves one face of a font file, in the one style that the face has.
///
///     const auto installed = FontLoaders::createPlatformDefaultFontLoader("DejaVu Sans");
///     const auto loader = makeNNPtr<const FileFontLoader>("fonts/my.ttc:2", installed);
///     const auto factory = FontEngine::FontFactory::create(loader, "fonts/my.ttc:2");
///
/// Its family is the name that the user typed. The other loader answers for every other family, for the
/// default font and for ranges, so that characters which the file lacks come from there. Without another
/// loader the file has every name, and ranges have no families.
class FileFontLoader : public FontLoaders::FontLoader {
public:
    using OtherLoader = std::shared_ptr<const FontLoaders::FontLoader>;

    /// Reads the file, and makes the instance of a variable font that `variations` describes. Throws
    /// ToolError when the file cannot be read, has no such face or axis, or must not be served.
    explicit FileFontLoader(const std::string& name, OtherLoader others = nullptr,
                            const std::string& variations = {});

    FontLoaders::FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontLoaders::FontBytes loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

    /// Where bytes come from that this loader or the other one has handed out.
    std::optional<FontLoaders::FontFilePlace> findFile(const FontLoaders::FontBytes& bytes) const;

    /// May be null.
    const FontLoaders::FontLoader* getOthers() const { return _others.get(); }

    bool isBold() const { return _isBold; }
    bool isItalic() const { return _isItalic; }

private:
    FontLoaders::FontBytes serve(bool bold, bool italic) const;

    std::string _name;
    FontLoaders::FontFilePlace _place;
    OtherLoader _others;
    FontLoaders::FontBytes _bytes;
    bool _isBold = false;
    bool _isItalic = false;
};

} // namespace Vell::Tool

#pragma once

#include "fonts/RecordingFontLoader.h"
#include "fonts/TextFont.h"

#include <memory>
#include <string>

namespace Vell::Tool {

/// A font as a user names it, an installed family or a face of a font file, and the factory that makes it.
///
///     const FontSource source("DejaVu Serif");
///     const TextFont bold = source.makeFont(true, false, 12.0F);
///
/// The fonts refer to the source's factory weakly: the source must outlive their use.
class FontSource {
public:
    /// The font that FAMILY|FILE[:INDEX] names, by itself: a file has no fallback fonts here. A name with a
    /// slash is a file; any other name is a family unless a file of that name exists. The variations, as
    /// FontLoaders::parseVariations reads them, set the axes of a variable font. Throws UsageError if the name
    /// is empty, ToolError if there is no such family or the file cannot be used so.
    explicit FontSource(const std::string& familyOrFile, const std::string& variations = {});

    /// The font that --family or --font names, for drawing text: installed fonts draw the characters that it
    /// lacks. Throws ToolError if the file cannot be used. If the family is missing, makeFont throws it.
    explicit FontSource(const FontRequest& request);

    /// For colour glyphs of the fonts that are made from now on with the first makeFont.
    void setPalette(unsigned short palette) { _palette = palette; }

    bool isFile() const { return _isFile; }

    /// A font from a file has at least the style of the file: a bold file has no regular face to show.
    TextFont makeFont(bool isBold, bool isItalic, float size) const;
    /// Takes style, size and letter spacing from the request, and the font from the source.
    TextFont makeFont(const FontRequest& request) const;

    const FactoryPtr& getFactory() const { return _factory; }

    /// The font as it is in its file: the variable font, if this is an instance of one.
    FontBytes readWholeFont(const FontEngine::Font& font) const;

    /// Finds installed fonts for what the font lacks. Null for a file by itself.
    std::shared_ptr<const FontLoaders::CoverageFallback> makeCoverageFallback() const;

    /// Has recorded all questions so far.
    const NNPtr<const RecordingFontLoader>& getLoader() const { return _loader; }

private:
    enum class Fallback { None, Installed };

    FontSource(std::string name, bool isFile, const std::string& variations, Fallback fallback);

    RecordingFontLoader::LoaderPtr openFile(const std::string& variations, Fallback fallback);

    std::string _name; // the family, with its variations, or the file as the user typed it
    bool _isFile;
    bool _isAlwaysBold = false;
    bool _isAlwaysItalic = false;
    unsigned short _palette = 0;
    NNPtr<const RecordingFontLoader> _loader;
    FactoryPtr _factory;
};

} // namespace Vell::Tool

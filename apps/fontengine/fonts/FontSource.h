#pragma once

#include "fonts/RecordingFontLoader.h"
#include "fonts/TextFont.h"

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
    /// What FAMILY|FILE[:INDEX] names, for a look at that font alone: a file has no fallback fonts. A path is
    /// a file; a plain word is a family, unless there is a file of that name. Throws UsageError for an empty
    /// name, ToolError when there is no such family or the file cannot be used.
    explicit FontSource(const std::string& familyOrFile);

    /// What --family or --font names, for drawing text. Characters that the font lacks come from installed
    /// fonts. Throws ToolError when the file cannot be used; makeFont throws it for a missing family.
    explicit FontSource(const FontRequest& request);

    bool isFile() const { return _isFile; }

    /// Fonts have the file's own style at least: a bold file has no regular face to show.
    TextFont makeFont(bool isBold, bool isItalic, float size) const;
    /// The style, the size and the letter spacing are those of the request; the font is the source's.
    TextFont makeFont(const FontRequest& request) const;

    const FactoryPtr& getFactory() const { return _factory; }

    /// Knows what it was asked for so far.
    const NNPtr<const RecordingFontLoader>& getLoader() const { return _loader; }

private:
    enum class Fallback { None, Installed };

    FontSource(std::string name, bool isFile, Fallback fallback);

    RecordingFontLoader::LoaderPtr openFile(Fallback fallback);

    std::string _name; // of the family; for a file as the user typed it
    bool _isFile;
    bool _isAlwaysBold = false;
    bool _isAlwaysItalic = false;
    NNPtr<const RecordingFontLoader> _loader;
    FactoryPtr _factory;
};

} // namespace Vell::Tool

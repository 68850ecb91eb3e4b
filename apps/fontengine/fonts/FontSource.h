#pragma once

#include "fonts/RecordingFontLoader.h"
#include "fonts/TextFont.h"

#include <string>

namespace Vell::Tool {

/// A font as a user names it: an installed family or a font file. A path is a file; a plain word is a family,
/// unless there is a file of that name.
///
///     const FontSource source("DejaVu Serif");
///     const TextFont bold = source.makeFont(true, false, 12.0F);
///
/// The fonts refer to the source's factory weakly: the source must outlive their use.
class FontSource {
public:
    /// Throws UsageError for an empty name, ToolError when there is no such family or the file is no font.
    explicit FontSource(const std::string& familyOrFile);

    bool isFile() const { return _isFile; }

    /// In the file's own style at least: a bold file has no plain face to show.
    TextFont makeFont(bool isBold, bool isItalic, float size) const;

    /// Knows what was asked for so far.
    const NNPtr<const RecordingFontLoader>& getLoader() const { return _loader; }

private:
    RecordingFontLoader::LoaderPtr openFile();

    std::string _name;
    bool _isFile;
    bool _isAlwaysBold = false;
    bool _isAlwaysItalic = false;
    NNPtr<const RecordingFontLoader> _loader;
    FactoryPtr _factory;
};

} // namespace Vell::Tool

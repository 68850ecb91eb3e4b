#pragma once

#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <string>
#include <vector>

namespace Vell::Tool {

/// Serves one font file, under any family name, in the one style that the file has. Ranges have no families.
class FileFontLoader : public FontLoaders::FontLoader {
public:
    /// Reads the file; of a collection, the first face counts. Throws ToolError when it cannot be read, and
    /// with the reason not to serve it if there is one.
    explicit FileFontLoader(const std::string& path);

    FontLoaders::FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontLoaders::FontBytes loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

    const std::string& getPath() const { return _path; }
    bool isBold() const { return _isBold; }
    bool isItalic() const { return _isItalic; }

private:
    std::string _path;
    FontLoaders::FontBytes _bytes;
    bool _isBold = false;
    bool _isItalic = false;
};

} // namespace Vell::Tool

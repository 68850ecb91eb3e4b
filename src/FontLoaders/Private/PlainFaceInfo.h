#pragma once

#include <Gfx/Public/FontInfo.h>

#include <string>
#include <utility>

namespace Vell::FontLoaders::Internal {

/// A description of a face that the loaders make themselves.
class PlainFaceInfo final : public Gfx::FontFaceInfo {
public:
    PlainFaceInfo(std::string family, bool bold, bool italic)
        : _family(std::move(family))
        , _isBold(bold)
        , _isItalic(italic) {}

    std::string getName() const override { return _family; }
    bool isBold() const override { return _isBold; }
    bool isItalic() const override { return _isItalic; }

private:
    std::string _family;
    bool _isBold;
    bool _isItalic;
};

} // namespace Vell::FontLoaders::Internal

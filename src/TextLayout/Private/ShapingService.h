#pragma once

#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextStyle.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <string_view>

namespace Vell::TextLayout {

/// What a TextShaper shares with the texts that it has made.
class ShapingService : public std::enable_shared_from_this<ShapingService> {
public:
    virtual ~ShapingService();

    virtual NNPtr<const ShapedText> shape(std::string_view text, const TextStyle& style,
                                          ParagraphDirection direction) const = 0;
};

} // namespace Vell::TextLayout

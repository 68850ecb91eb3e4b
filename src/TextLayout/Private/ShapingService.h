#pragma once

#include <TextLayout/Public/BidiLine.h>
#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextStyle.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <string_view>
#include <vector>

namespace Vell::TextLayout {

/// What a TextShaper shares with its texts: they outlive it.
class ShapingService : public std::enable_shared_from_this<ShapingService> {
public:
    virtual ~ShapingService();

    /// The spans are in order and cover the text.
    virtual NNPtr<const ShapedText> shape(std::string_view text, const std::vector<TextSpan>& spans,
                                          ParagraphDirection direction) const = 0;
};

} // namespace Vell::TextLayout

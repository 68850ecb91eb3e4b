#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>

#include <cstddef>

namespace Vell::TextLayout {

/// The longest text that is analysed in one piece, in bytes. ICU computes sizes in bytes with 32 bits; within
/// this limit none of them overflows.
constexpr std::size_t maxTextBytes = std::size_t{32} << 20U;

/// A text is longer than maxTextBytes, or ICU reports an error (the text then names the call and the error).
class VELL_API TextLayoutException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    TextLayoutException(const TextLayoutException&) = default;
    TextLayoutException& operator=(const TextLayoutException&) = default;
    ~TextLayoutException() override;
};

} // namespace Vell::TextLayout

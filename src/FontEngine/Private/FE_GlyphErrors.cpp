#include <FontEngine/Private/FE_GlyphErrors.h>

#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeType.h>

#include <fmt/format.h>

#include <cstdint>

namespace Vell::FontEngine::Internal {

void throwIfGlyphFailed(const char* format, int error, const GlyphInfo& info) {
    if (!FontLoaders::isFTSucceeded(error)) {
        throw FontLoaders::FreeTypeException(fmt::format(fmt::runtime(format),
                                                         static_cast<std::uint32_t>(error),
                                                         static_cast<std::uint64_t>(info.getGlyphIndex())));
    }
}

} // namespace Vell::FontEngine::Internal

#pragma once

#include <Utils/Public/Export.h>

#include <string_view>

namespace Vell::FontLoaders {

/// How a grapheme cluster asks to be drawn (UTS #51).
enum class ClusterPresentation {
    Plain, ///< it does not ask: by the text's own font, and by text fonts before colour fonts
    Text,  ///< U+FE0E asks for text
    Emoji  ///< by default, by U+FE0F, or as a sequence: keycaps, flags, skin tones, joiners and tags
};

/// Returns the presentation of a cluster of code points. Characters that are ignorable by default do not
/// count before the first one that is not.
///
///     findPresentation(U"\u2764\uFE0F") == ClusterPresentation::Emoji
///
/// Threads: any number of threads may call it.
VELL_API ClusterPresentation findPresentation(std::u32string_view cluster);

} // namespace Vell::FontLoaders

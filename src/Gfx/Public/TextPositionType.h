#pragma once

namespace Vell::Gfx {

/// Where text stands on its line; UniversalFontMetrics says what each value does to size and base line.
enum class TextPositionType : unsigned char { Normal, Superscript, Subscript };

} // namespace Vell::Gfx

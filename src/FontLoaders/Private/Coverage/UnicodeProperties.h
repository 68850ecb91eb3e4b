#pragma once

/// Properties of code points, from the Unicode character database.
namespace Vell::FontLoaders::Internal {

/// Whether a code point can have emoji presentation, by default or by a selector.
bool isEmoji(char32_t code);
/// Whether an emoji has emoji presentation unless a selector asks for text.
bool hasEmojiPresentation(char32_t code);
/// Whether a code point is invisible where a font has no glyph for it: joiners, variation selectors, tags.
/// HarfBuzz decides: it shows Hangul fillers, for example, although Unicode ignores them by default.
bool isIgnorable(char32_t code);

} // namespace Vell::FontLoaders::Internal

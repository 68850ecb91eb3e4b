#pragma once

namespace Vell::Fuzz {

/// Runs `call` and says whether it came to its end; the one exception that the engine documents for it is
/// swallowed.
///
///     if (tolerate<FontLoaders::FreeTypeException>([&] { bitmap = face->getBitmapGlyph(info, false); })) ...
template <class Error, class Call>
bool tolerate(const Call& call) {
    try {
        call();
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace Vell::Fuzz

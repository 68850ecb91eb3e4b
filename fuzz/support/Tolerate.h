#pragma once

namespace Vell::Fuzz {

/// Runs `call` and returns whether it completed. Catches only `Error`, the exception that the engine
/// documents for the call.
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

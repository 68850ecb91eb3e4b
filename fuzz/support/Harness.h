#pragma once

#include <support/ByteWriter.h>

#include <string_view>

/// What is run on bytes that nobody vouches for. libFuzzer's targets and the replay call the same functions.
///
///     runHarness("font", bytes);
///
/// Each takes any bytes, keeps nothing between two calls, and returns when the engine kept its rules: it did
/// its work, or refused it with one of the errors that its headers name. Broken rules are Finding; every
/// other way out (another exception, a signal, a sanitizer's report) is a finding as well.
namespace Vell::Fuzz {

using Testing::Bytes;

/// Opens a font file and asks the services for its glyphs.
///
/// The input: 17 bytes that choose style, render mode, size, scale, ratio, offset, character, glyphs and
/// services (see FontScript), then the file.
void runFont(const Bytes& input);

/// Measures and draws a text with both painters.
///
/// The input: 19 bytes that choose size, letter spacing, ratio, width and transform (see TextScript), then
/// the text, which need not be UTF-8.
void runText(const Bytes& input);

/// Plays operations on an MRU cache and on a plain list, and compares the two after each.
///
/// The input: 3 bytes for the limits, then 3 bytes an operation (see CacheOperation).
void runCache(const Bytes& input);

/// Takes a face out of a collection and compares its tables with the collection's.
///
/// The input: 1 byte for the face's index, then the file.
void runSfnt(const Bytes& input);

/// Draws paths and glyph images with the painters over cairo, glyphs also by cairo alone, and compares the
/// two.
///
/// The input: 25 bytes for the surface and the client's settings (see CairoScene), then operations (see
/// CairoOperation).
void runCairo(const Bytes& input);

/// Runs the harness of that name: "font", "text", "cache", "sfnt" or "cairo". Throws std::invalid_argument
/// for another.
void runHarness(std::string_view name, const Bytes& input);

} // namespace Vell::Fuzz

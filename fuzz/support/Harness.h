#pragma once

#include <support/ByteWriter.h>

#include <string_view>

/// Harnesses that run the engine on untrusted bytes. libFuzzer's targets and the replay both call them.
///
///     runHarness("font", bytes);
///
/// Each takes any bytes, keeps no state between calls, and returns if the engine kept its rules: it did its
/// work, or refused it with an error that its headers document. For a broken rule, it throws Finding. Any
/// other exit (another exception, a signal, a report of a sanitizer) is a finding as well.
namespace Vell::Fuzz {

using Testing::Bytes;

/// Opens a font file and requests glyphs from the services.
///
/// Input: 17 bytes that choose style, render mode, size, scale, ratio, offset, character, glyphs and
/// services (see FontScript), then the file.
void runFont(const Bytes& input);

/// Measures a text and draws it with both painters.
///
/// Input: 19 bytes that choose size, letter spacing, ratio, width and transform (see TextScript), then
/// the text, which need not be UTF-8.
void runText(const Bytes& input);

/// Applies operations to an MRU cache and to a plain list, and compares the two after each operation.
///
/// Input: 3 bytes for the limits, then 3 bytes per operation (see CacheOperation).
void runCache(const Bytes& input);

/// Extracts a face from a collection and compares its tables with those in the collection.
///
/// Input: 1 byte for the index of the face, then the file.
void runSfnt(const Bytes& input);

/// Draws paths and glyph images with the painters for cairo. Also draws the glyphs through cairo alone, and
/// compares the results.
///
/// Input: 25 bytes for the surface and the client's settings (see CairoScene), then operations (see
/// CairoOperation).
void runCairo(const Bytes& input);

/// Shapes a text in spans with tables of a font, and breaks it into lines. Shapes it again, when its words
/// are cached, and compares the results.
///
/// Input: what ShapeScript describes, then the text, which need not be UTF-8.
void runShape(const Bytes& input);

/// Makes an instance of a variable font twice, opens it and loads glyphs of it.
///
/// Input: 2 bytes for the value of each of three axes, then the file.
void runVary(const Bytes& input);

/// Runs the harness with this name: "font", "text", "cache", "sfnt", "cairo", "shape" or "vary". Throws
/// std::invalid_argument for any other name.
void runHarness(std::string_view name, const Bytes& input);

} // namespace Vell::Fuzz

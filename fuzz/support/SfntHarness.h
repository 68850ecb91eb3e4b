#pragma once

#include <fuzz/support/Harness.h>

#include <cstdint>
#include <map>

namespace Vell::Fuzz {

/// A font file's tables by tag. Throws Finding for a file whose directory does not describe it: tables behind
/// the end, over each other or over the directory, tags out of order or twice.
std::map<std::uint32_t, Bytes> readSoundSfnt(const Bytes& file);

/// Throws Finding unless `face` is a sound font file with the tables that the collection's face has.
void checkExtractedFace(const Bytes& collection, unsigned int index, const Bytes& face);

} // namespace Vell::Fuzz

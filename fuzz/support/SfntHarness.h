#pragma once

#include <fuzz/support/Harness.h>

#include <cstdint>
#include <map>

namespace Vell::Fuzz {

/// Returns the tables of a font file by tag. Throws Finding if the directory is wrong: if tables lie beyond
/// the end of the file, overlap each other or the directory, or if tags are out of order or occur twice.
std::map<std::uint32_t, Bytes> readSoundSfnt(const Bytes& file);

/// Throws Finding unless `face` is a sound font file with the same tables as the face in the collection.
void checkExtractedFace(const Bytes& collection, unsigned int index, const Bytes& face);

} // namespace Vell::Fuzz

#pragma once

#include <support/ByteWriter.h>

#include <cstddef>
#include <vector>

/// The parts of tables with PostScript outlines.
namespace Vell::Testing::Cff {

enum class Version { One, Two };

/// A list of byte strings. Version 2 has a wider count.
Bytes makeIndex(Version version, const std::vector<Bytes>& items);

/// A number of a dictionary in five bytes, whatever its value.
void addNumber(ByteWriter& writer, std::size_t number);

} // namespace Vell::Testing::Cff

#pragma once

#include <support/ByteWriter.h>

#include <cstddef>
#include <vector>

/// What tables of PostScript outlines are made of.
namespace Vell::Testing::Cff {

enum class Version { One, Two };

/// A list of byte strings; version two has more room for their count.
Bytes makeIndex(Version version, const std::vector<Bytes>& items);

/// A number of a dictionary in five bytes, whatever its value.
void addNumber(ByteWriter& writer, std::size_t number);

} // namespace Vell::Testing::Cff

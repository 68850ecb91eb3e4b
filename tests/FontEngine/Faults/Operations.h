#pragma once

#include <FontEngine/Faults/Services.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <functional>
#include <string>
#include <vector>

namespace Vell::FontEngine {

/// An engine with everything that the operations use: the test font as "Test Sans", whose other styles are
/// synthetic, a default font, and a family for Basic Latin.
struct World : Engine {
    World();

    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
};

/// An operation of the library's clients: its preparation, and the operation itself, which describes its
/// result.
struct Operation {
    const char* name;
    std::function<void(World&)> prepare;
    std::function<std::string(World&)> perform;
    bool needsMemory = true; ///< false if it succeeds without the memory that it asks for
};

const std::vector<Operation>& getOperations();

/// The result of the operation if nothing fails.
std::string performWithoutFailure(const Operation& operation);

} // namespace Vell::FontEngine

#pragma once

#include <FontEngine/Faults/Services.h>

#include <support/RecordingGlyphPainter.h>
#include <support/RecordingPainter.h>

#include <functional>
#include <string>
#include <vector>

namespace Vell::FontEngine {

/// An engine with everything that the operations use: the test font as "Test Sans" in all styles but its own
/// synthetic ones, and a family for Basic Latin.
struct World : Engine {
    World();

    Testing::RecordingPainter painter;
    Testing::RecordingGlyphPainter glyphPainter;
};

/// An operation of the library's clients: what has to be there before it, and the operation itself, which
/// describes its result.
struct Operation {
    const char* name;
    std::function<void(World&)> prepare;
    std::function<std::string(World&)> perform;
    bool needsMemory = true; ///< otherwise it is done without what it would have allocated
};

const std::vector<Operation>& getOperations();

/// What an operation gives when nothing fails.
std::string performUndisturbed(const Operation& operation);

} // namespace Vell::FontEngine

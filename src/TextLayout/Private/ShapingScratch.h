#pragma once

#include <TextLayout/Private/HarfBuzzHandles.h>

#include <hb.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace Vell::TextLayout {

/// Memory that shaping needs for a moment.
struct ShapingScratch {
    HarfBuzzPtr<hb_buffer_t> buffer;       ///< null until it is needed
    std::vector<std::uint32_t> characters; ///< code points
    std::vector<std::uint32_t> offsets;    ///< of the characters, in bytes
};

/// Scratch memory that waits for the next text: allocating it would take longer than to shape a label. The
/// owner serialises all calls.
class ScratchPool {
public:
    /// Empty scratch memory if none waits.
    ShapingScratch take() { return _count != 0 ? std::move(_waiting[--_count]) : ShapingScratch(); }

    /// Releases the memory of long texts.
    void giveBack(ShapingScratch scratch) noexcept {
        if (_count != _waiting.size() && !isLarge(scratch)) {
            _waiting[_count++] = std::move(scratch);
        }
    }

private:
    static bool isLarge(const ShapingScratch& scratch) {
        constexpr std::size_t many = 16384;
        return scratch.characters.capacity() > many ||
               (scratch.buffer && hb_buffer_get_length(scratch.buffer.get()) > many);
    }

    std::array<ShapingScratch, 4> _waiting;
    std::size_t _count = 0;
};

} // namespace Vell::TextLayout

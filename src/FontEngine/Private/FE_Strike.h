#pragma once

#include <FontEngine/FE_GlyphInfo.h>
#include <Gfx/Public/FontInfo.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/Ptr/CheckedPtr.h>
#include <cinder/Vector.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Vell::FontEngine::Internal {

/// What the keys of the glyphs of one face at one size have in common: all fields of a key except those that
/// differ between the glyphs of a text. A field that a kind of key lacks keeps its default.
struct StrikeInfo {
    /// Only a description whose class is exactly Internal::FontFaceInfo has a strike, because others may
    /// change their answers. Not owned: the caller that looks for a strike keeps the description alive, and
    /// so does the strike. Null for a moved-from description.
    const Gfx::FontFaceInfo* faceInfo;
    float fontSize;
    GlyphTransform transform;
    cinder::Vec2<float> scale{1.0F, 1.0F};
    float devicePixelRatio = 1.0F;
    unsigned int color = 0;

    /// Whether a strike can find keys with these fields. That requires that two keys are equal exactly if
    /// their fields have the same bits, which rules out descriptions of client classes, NaN and negative
    /// zero.
    bool isPlain() const;

    bool operator==(const StrikeInfo& other) const;

    /// Whether the key of a bitmap has these fields, except for `color`, which it lacks. Compares the
    /// addresses of the descriptions, not their values, so callers must accept false for an equal key.
    bool matches(const BitmapGlyphInfo& info) const;
};

struct StrikeInfoHash {
    std::size_t operator()(const StrikeInfo& info) const;
};

/// Packs the fields that distinguish the bitmaps of one strike into a number, the slot of the bitmap. The
/// slot of an outline is its glyph index. Returns noSlot for a key that no text painter makes.
constexpr std::uint32_t noSlot = 0xFFFFFFFF;
inline std::uint32_t getBitmapSlot(unsigned long glyphIndex, FT_Render_Mode renderMode,
                                   unsigned char offsetInsidePixel, bool isLast) {
    constexpr unsigned long indexLimit = 1U << 16U; // a character map has indices of 16 bits
    constexpr unsigned int sixteenth = 4;           // of a pixel; the offset is in 1/64 pixel
    const bool isLcd = renderMode == FT_RENDER_MODE_LCD;
    if (glyphIndex >= indexLimit || offsetInsidePixel % sixteenth != 0 ||
        (!isLcd && renderMode != FT_RENDER_MODE_NORMAL)) {
        return noSlot;
    }
    const auto place = static_cast<std::uint32_t>(glyphIndex << 8U) | offsetInsidePixel;
    return place | (isLcd ? 2U : 0U) | (isLast ? 1U : 0U);
}

/// Gets a call before entries leave a strike, which mostly happens because they leave the cache.
class UnlinkObserver {
public:
    virtual ~UnlinkObserver() = default;
    virtual void beforeUnlink() noexcept = 0;
};

/// The cached glyphs of one face at one size, found by their slots. This saves the hash of a whole key. A
/// strike does not own its entries. The last member of a `Value` is a `Link link`, so an entry that leaves
/// its cache leaves its strike first.
///
/// Threads: the lock of the cache guards its strikes.
template <class Value>
class Strike {
public:
    using Node = MRUCacheNode<Value>;

    /// Links an entry to the strike that it is in, if any.
    class Link {
    public:
        Link() = default;
        /// Moves no link, because a value moves into its cache before it enters a strike.
        Link(Link&&) noexcept {}
        ~Link() { unlink(); }

        bool isLinked() const { return _strike != nullptr; }

    private:
        friend class Strike;

        void unlink() const {
            if (_strike != nullptr) {
                std::exchange(_strike, nullptr)->erase(_slot);
            }
        }

        mutable Strike* _strike = nullptr;
        mutable std::uint32_t _slot = noSlot;
    };

    /// `observer` may be null.
    explicit Strike(UnlinkObserver* observer = nullptr)
        : _observer(observer) {}
    ~Strike() { clear(); }
    Strike(const Strike&) = delete;
    Strike& operator=(const Strike&) = delete;

    bool isEmpty() const { return _count == 0; }

    /// Returns the entry in a slot, or null.
    const Node* find(std::uint32_t slot) const { return _cells.empty() ? nullptr : _cells[findCell(slot)]; }

    bool hasRoom() const { return (_count + 1) * 3 <= _cells.size() * 2; }

    void reserveOne() {
        if (!hasRoom()) {
            grow();
        }
    }

    /// Puts an entry into a slot. The slot must be empty or already hold this entry, and there must be room.
    void add(std::uint32_t slot, const Node& node) noexcept {
        const Link& link = node.getValue().link;
        link.unlink();
        link._strike = this;
        link._slot = slot;
        _cells[findCell(slot)] = &node;
        ++_count;
    }

    void clear() {
        notifyObserver();
        for (const Node* const node : _cells) {
            if (node != nullptr) {
                node->getValue().link._strike = nullptr;
            }
        }
        _cells.clear();
        _count = 0;
    }

private:
    void notifyObserver() const {
        if (_observer != nullptr && _count != 0) {
            _observer->beforeUnlink();
        }
    }

    static std::uint32_t getSlot(const Node& node) { return node.getValue().link._slot; }

    std::size_t getMask() const { return _cells.size() - 1; }

    /// Returns the preferred cell of a slot. The multiplication spreads slots that differ only in their upper
    /// bits.
    std::size_t getHome(std::uint32_t slot) const {
        constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U; // 2^64 divided by the golden ratio
        return static_cast<std::size_t>((slot * spread) >> 32U) & getMask();
    }

    /// Returns the cell that holds a slot, or the empty cell where it would go.
    std::size_t findCell(std::uint32_t slot) const {
        std::size_t cell = getHome(slot);
        while (_cells[cell] != nullptr && getSlot(*_cells[cell]) != slot) {
            cell = (cell + 1) & getMask();
        }
        return cell;
    }

    void grow() {
        constexpr std::size_t minCellCount = 16;
        std::vector<const Node*> old(std::max(minCellCount, 2 * _cells.size()), nullptr);
        old.swap(_cells);
        for (const Node* const node : old) {
            if (node != nullptr) {
                _cells[findCell(getSlot(*node))] = node;
            }
        }
    }

    void erase(std::uint32_t slot) {
        notifyObserver();
        std::size_t hole = findCell(slot);
        --_count;
        // Moves up the entries that were put behind the hole because their preferred cells were taken.
        for (std::size_t next = (hole + 1) & getMask(); _cells[next] != nullptr;
             next = (next + 1) & getMask()) {
            const std::size_t home = getHome(getSlot(*_cells[next]));
            if (((next - home) & getMask()) >= ((next - hole) & getMask())) {
                _cells[hole] = _cells[next];
                hole = next;
            }
        }
        _cells[hole] = nullptr;
    }

    std::vector<const Node*> _cells; // none or a power of two; at most two thirds are taken
    std::size_t _count = 0;
    UnlinkObserver* _observer;
};

/// The strikes of one cache. Empty strikes are removed from time to time.
template <class Value>
class Strikes {
public:
    using Strike = Internal::Strike<Value>;

    explicit Strikes(UnlinkObserver* observer = nullptr)
        : _observer(observer) {}

    /// Returns null if there is none. The pointer is valid as long as `getChanges` returns the same number.
    Strike* find(const StrikeInfo& info) {
        if (_last != nullptr && _last->first == info) {
            return &_last->second.strike;
        }
        const auto found = _strikes.find(info);
        if (found == _strikes.end()) {
            return nullptr;
        }
        _last = &*found;
        return &found->second.strike;
    }

    /// Like find, but adds a strike if there is none. An added strike shares the description.
    Strike& findOrAdd(StrikeInfo info, const NNPtr<const Gfx::FontFaceInfo>& faceInfo) {
        if (Strike* const found = find(info)) {
            return *found;
        }
        if (_strikes.size() >= _sweepThreshold) {
            sweep();
        }
        return _strikes.try_emplace(info, faceInfo, _observer).first->second.strike;
    }

    /// The number of times that strikes may have been destroyed.
    std::uint64_t getChanges() const { return _changes; }

    /// Destroys all strikes. Call it before the cache destroys its entries.
    void clear() {
        invalidate();
        _strikes.clear();
    }

private:
    struct OwnedStrike {
        OwnedStrike(const NNPtr<const Gfx::FontFaceInfo>& info, UnlinkObserver* observer)
            : faceInfo(info)
            , strike(observer) {}

        NNPtr<const Gfx::FontFaceInfo> faceInfo; // keeps the description in the key alive
        Strike strike;
    };
    using Map = std::unordered_map<StrikeInfo, OwnedStrike, StrikeInfoHash>;

    /// Removes the empty strikes. It runs each time that the number of strikes has doubled, so its cost per
    /// strike is small.
    void sweep() {
        invalidate();
        for (auto entry = _strikes.begin(); entry != _strikes.end();) {
            entry = entry->second.strike.isEmpty() ? _strikes.erase(entry) : std::next(entry);
        }
        _sweepThreshold = std::max(minSweepThreshold, 2 * _strikes.size());
    }

    void invalidate() {
        _last = nullptr;
        ++_changes;
    }

    static constexpr std::size_t minSweepThreshold = 16;

    Map _strikes;
    typename Map::value_type* _last = nullptr; // found last; texts often share a font
    std::size_t _sweepThreshold = minSweepThreshold;
    UnlinkObserver* _observer;
    std::uint64_t _changes = 0;
};

} // namespace Vell::FontEngine::Internal

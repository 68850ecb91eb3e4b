#pragma once

#include <FontEngine/FE_FontFace.h>
#include <TextLayout/Private/RunToShape.h>
#include <TextLayout/Private/ShapingFont.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Vell::TextLayout {

/// The plans of one selection of features, by face, script and direction. They live as long as the table. The
/// owner serialises all calls.
class PlanTable {
public:
    struct Entry {
        NNPtr<const FontEngine::FontFace> face; // keeps its address from another face
        ScriptCode script;
        bool isRightToLeft;
        std::shared_ptr<ShapingFont> font;
        ShapePlan* plan; ///< null if the font cannot be shaped
    };

    /// Null if there is none. Valid until the next call of add.
    const Entry* find(const RunToShape& run) const {
        for (const Entry& entry : _entries) {
            if (entry.face.get() == run.face.get() && entry.script == run.script &&
                entry.isRightToLeft == run.isRightToLeft && !entry.font->isSpoiled()) {
                return &entry;
            }
        }
        return nullptr;
    }

    bool isFull() const { return _entries.size() == maxEntries; }

    const Entry& add(Entry entry) { return _entries.emplace_back(std::move(entry)); }

    void clear() { _entries.clear(); }

private:
    static constexpr std::size_t maxEntries = 64; // texts with more of them look for each run in a new table

    std::vector<Entry> _entries;
};

} // namespace Vell::TextLayout

#include <TextLayout/Private/LookupClasses.h>

#include <TextLayout/Private/HarfBuzzHandles.h>

#include <hb-ot.h>

#include <cstddef>
#include <cstdint>

namespace Vell::TextLayout {

namespace {

/// Where a table ends before what it refers to.
struct TableIsCutOff {};

/// A part of a table of a font, from an offset to the end of the table. Numbers are big-endian.
class TablePart {
public:
    TablePart(const std::uint8_t* begin, const std::uint8_t* end)
        : _begin(begin)
        , _end(end) {}

    std::size_t readShort(std::size_t offset) const {
        if (getSize() < offset + 2) {
            throw TableIsCutOff();
        }
        return static_cast<std::size_t>(_begin[offset]) << 8U | _begin[offset + 1];
    }
    std::size_t readLong(std::size_t offset) const {
        return readShort(offset) << 16U | readShort(offset + 2);
    }
    TablePart follow(std::size_t offset) const {
        if (getSize() < offset) {
            throw TableIsCutOff();
        }
        return {_begin + offset, _end};
    }
    /// The part that the 16-bit offset at `position` refers to.
    TablePart followShort(std::size_t position) const { return follow(readShort(position)); }

private:
    std::size_t getSize() const { return static_cast<std::size_t>(_end - _begin); }

    const std::uint8_t* _begin;
    const std::uint8_t* _end;
};

/// Reads a list of classes: its length, less `implied` classes that are not in it, and then the classes.
/// Moves `offset` behind it.
bool hasClassZero(const TablePart& rule, std::size_t& offset, std::size_t implied) {
    const std::size_t length = rule.readShort(offset);
    offset += 2;
    bool isFound = false;
    for (std::size_t i = implied; i < length; ++i, offset += 2) {
        isFound |= rule.readShort(offset) == 0;
    }
    return isFound;
}

/// In a rule of a context: the number of classes and that of the actions stand before the classes.
bool contextRuleHasClassZero(const TablePart& rule) {
    const std::size_t length = rule.readShort(0);
    for (std::size_t i = 1; i < length; ++i) {
        if (rule.readShort(4 + 2 * (i - 1)) == 0) {
            return true;
        }
    }
    return false;
}

bool chainRuleHasClassZero(const TablePart& rule) {
    std::size_t offset = 0;
    const bool isInBacktrack = hasClassZero(rule, offset, 0);
    const bool isInInput = hasClassZero(rule, offset, 1);
    const bool isInLookahead = hasClassZero(rule, offset, 0);
    return isInBacktrack || isInInput || isInLookahead;
}

/// `countOffset` is where the subtable has the number of its rule sets.
template <class RuleHasClassZero>
bool anyRuleHasClassZero(const TablePart& subtable, std::size_t countOffset,
                         const RuleHasClassZero& ruleHasClassZero) {
    const std::size_t setCount = subtable.readShort(countOffset);
    for (std::size_t i = 0; i < setCount; ++i) {
        const std::size_t setOffset = subtable.readShort(countOffset + 2 + 2 * i);
        if (setOffset == 0) {
            continue;
        }
        const TablePart set = subtable.follow(setOffset);
        const std::size_t ruleCount = set.readShort(0);
        for (std::size_t rule = 0; rule < ruleCount; ++rule) {
            if (ruleHasClassZero(set.followShort(2 + 2 * rule))) {
                return true;
            }
        }
    }
    return false;
}

std::size_t countBits(std::size_t value) {
    std::size_t count = 0;
    for (; value != 0; value &= value - 1) {
        ++count;
    }
    return count;
}

/// Of pairs by classes: whether a record of second class 0 has a value other than 0.
bool pairMovesClassZero(const TablePart& subtable) {
    const std::size_t recordSize = 2 * (countBits(subtable.readShort(4)) + countBits(subtable.readShort(6)));
    const std::size_t firstClassCount = subtable.readShort(12);
    const std::size_t secondClassCount = subtable.readShort(14);
    constexpr std::size_t headerSize = 16;
    if (recordSize == 0 || secondClassCount == 0) {
        return false; // a hostile table of a few bytes could have 65535 times nothing
    }
    for (std::size_t i = 0; i < firstClassCount; ++i) {
        const std::size_t record = headerSize + i * secondClassCount * recordSize;
        for (std::size_t offset = 0; offset < recordSize; offset += 2) {
            if (subtable.readShort(record + offset) != 0) {
                return true;
            }
        }
    }
    return false;
}

/// The kinds of lookups that know classes. Their numbers differ between the tables.
enum class LookupKind { Pair, Context, Chain, Other };

LookupKind getKind(bool isPositioning, std::size_t type) {
    constexpr std::size_t pair = 2;
    const std::size_t context = isPositioning ? 7 : 5;
    if (isPositioning && type == pair) {
        return LookupKind::Pair;
    }
    if (type == context) {
        return LookupKind::Context;
    }
    return type == context + 1 ? LookupKind::Chain : LookupKind::Other;
}

bool subtableMatchesClassZero(const TablePart& subtable, LookupKind kind) {
    constexpr std::size_t byClasses = 2;
    if (kind == LookupKind::Other || subtable.readShort(0) != byClasses) {
        return false;
    }
    switch (kind) {
    case LookupKind::Pair:
        return pairMovesClassZero(subtable);
    case LookupKind::Context:
        return anyRuleHasClassZero(subtable, 6, contextRuleHasClassZero);
    case LookupKind::Chain:
        return anyRuleHasClassZero(subtable, 10, chainRuleHasClassZero);
    case LookupKind::Other:
        break;
    }
    return false;
}

bool lookupMatchesClassZero(const TablePart& table, bool isPositioning, std::size_t index) {
    constexpr std::size_t lookupListOffset = 8;
    const std::size_t extension = isPositioning ? 9 : 7;
    const TablePart lookup = table.followShort(lookupListOffset).followShort(2 + 2 * index);
    const std::size_t type = lookup.readShort(0);
    const std::size_t subtableCount = lookup.readShort(4);
    for (std::size_t i = 0; i < subtableCount; ++i) {
        const TablePart subtable = lookup.followShort(6 + 2 * i);
        const bool isExtension = type == extension;
        const LookupKind kind = getKind(isPositioning, isExtension ? subtable.readShort(2) : type);
        if (subtableMatchesClassZero(isExtension ? subtable.follow(subtable.readLong(4)) : subtable, kind)) {
            return true;
        }
    }
    return false;
}

} // namespace

bool mayMatchClassZero(hb_face_t* face, hb_tag_t table, unsigned int lookup) {
    const HarfBuzzPtr<hb_blob_t> blob(hb_face_reference_table(face, table));
    unsigned int size = 0;
    const auto* const data = reinterpret_cast<const std::uint8_t*>(hb_blob_get_data(blob.get(), &size));
    try {
        return lookupMatchesClassZero({data, data + size}, table == HB_OT_TAG_GPOS, lookup);
    } catch (const TableIsCutOff&) {
        return true;
    }
}

} // namespace Vell::TextLayout

#include "commands/CacheReport.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>

namespace Vell::Tool {

namespace {

using FontEngine::CacheFigures;
using FontEngine::FactoryCacheFigures;

struct CacheRow {
    const char* name;
    const char* key;
    CacheFigures FactoryCacheFigures::*figures;
    bool countsBytes;
};

constexpr CacheRow cacheRows[] = {
    {"font files", "fontFiles", &FactoryCacheFigures::fontFiles, false},
    {"faces", "faces", &FactoryCacheFigures::faces, false},
    {"bitmaps", "bitmaps", &FactoryCacheFigures::bitmaps, true},
    {"coloured images", "coloredImages", &FactoryCacheFigures::coloredImages, true},
    {"outlines", "outlines", &FactoryCacheFigures::outlines, false},
};

constexpr const char* tableRow = "{:<15} {:>8} {:>8} {:>11} {:>11} {:>10} {:>8} {:>9} {:>8}\n";

using Figure = std::optional<std::uint64_t>;

Figure getLimit(std::uint64_t limit) {
    return limit == 0 ? std::nullopt : Figure(limit);
}

Figure getBytes(const CacheRow& row, const CacheFigures& figures) {
    return row.countsBytes ? Figure(figures.bytes) : std::nullopt;
}

std::string print(const Figure& figure, const char* absent) {
    return figure ? fmt::format("{}", *figure) : absent;
}

std::string printHitShare(const CacheFigures& figures) {
    const double lookups = static_cast<double>(figures.hits) + static_cast<double>(figures.misses);
    return lookups == 0.0 ? "-" : fmt::format("{:.1f}%", 100.0 * static_cast<double>(figures.hits) / lookups);
}

std::string makeTableRow(const CacheRow& row, const CacheFigures& figures) {
    return fmt::format(tableRow, row.name, figures.entries, print(getLimit(figures.maxEntries), "-"),
                       print(getBytes(row, figures), "-"), print(getLimit(figures.maxBytes), "-"),
                       figures.hits, figures.misses, figures.evictions, printHitShare(figures));
}

std::string makeJsonMember(const CacheRow& row, const CacheFigures& figures) {
    return fmt::format(R"("{}": {{"entries": {}, "maxEntries": {}, "bytes": {}, "maxBytes": {}, )"
                       R"("hits": {}, "misses": {}, "evictions": {}}})",
                       row.key, figures.entries, print(getLimit(figures.maxEntries), "null"),
                       print(getBytes(row, figures), "null"), print(getLimit(figures.maxBytes), "null"),
                       figures.hits, figures.misses, figures.evictions);
}

} // namespace

std::string makeCacheTable(const FactoryCacheFigures& figures) {
    std::string table = fmt::format(tableRow, "cache", "entries", "limit", "bytes", "limit", "hits", "misses",
                                    "evictions", "hit rate");
    for (const CacheRow& row : cacheRows) {
        table += makeTableRow(row, figures.*row.figures);
    }
    return table;
}

std::string makeCacheJson(const DrawnText& text, const FactoryCacheFigures& figures) {
    std::string members;
    for (const CacheRow& row : cacheRows) {
        members += (members.empty() ? "    " : ",\n    ") + makeJsonMember(row, figures.*row.figures);
    }
    return fmt::format(R"({{
  "text": {{"bytes": {}, "lines": {}, "passes": {}}},
  "caches": {{
{}
  }}
}}
)",
                       text.bytes, text.lines, text.passes, members);
}

} // namespace Vell::Tool

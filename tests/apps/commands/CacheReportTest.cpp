#include "commands/CacheReport.h"

#include <gtest/gtest.h>

namespace Vell::Tool {

namespace {

FontEngine::FactoryCacheFigures makeFigures() {
    FontEngine::FactoryCacheFigures figures;
    figures.fontFiles = {2, 0, 0, 10, 2, 0, 0};
    figures.faces = {1, 0, 5, 1, 2, 16, 0};
    figures.bitmaps = {1234567, 98765432101, 7, 1, 1, 0, 99999999999};
    return figures;
}

TEST(CacheReport, SetsTheFiguresInColumns) {
    EXPECT_EQ(
        makeCacheTable(makeFigures()),
        "cache            entries    limit       bytes       limit       hits   misses evictions hit rate\n"
        "font files             2        -           -           -         10        2         0    83.3%\n"
        "faces                  1       16           -           -          1        2         5    33.3%\n"
        "bitmaps          1234567        - 98765432101 99999999999          1        1         7    50.0%\n"
        "coloured images        0        -           0           -          0        0         0        -\n"
        "outlines               0        -           -           -          0        0         0        -\n");
}

TEST(CacheReport, GivesProgramsTheSameFigures) {
    EXPECT_EQ(makeCacheJson({3967, 83, 2}, makeFigures()), R"({
  "text": {"bytes": 3967, "lines": 83, "passes": 2},
  "caches": {
    "fontFiles": {"entries": 2, "maxEntries": null, "bytes": null, "maxBytes": null, "hits": 10, "misses": 2, "evictions": 0},
    "faces": {"entries": 1, "maxEntries": 16, "bytes": null, "maxBytes": null, "hits": 1, "misses": 2, "evictions": 5},
    "bitmaps": {"entries": 1234567, "maxEntries": null, "bytes": 98765432101, "maxBytes": 99999999999, "hits": 1, "misses": 1, "evictions": 7},
    "coloredImages": {"entries": 0, "maxEntries": null, "bytes": 0, "maxBytes": null, "hits": 0, "misses": 0, "evictions": 0},
    "outlines": {"entries": 0, "maxEntries": null, "bytes": null, "maxBytes": null, "hits": 0, "misses": 0, "evictions": 0}
  }
}
)");
}

} // namespace

} // namespace Vell::Tool

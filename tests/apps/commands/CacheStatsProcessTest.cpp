#include <apps/PseudoTerminal.h>
#include <apps/ToolProcess.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>

namespace Vell::Testing {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

/// The figures of one run of the command.
class Stats {
public:
    explicit Stats(std::vector<std::string> arguments, const std::string& input = "") {
        arguments.insert(arguments.begin(), {"cache-stats", "--json"});
        const ProcessResult result = runTool(arguments, input);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(result.err, IsEmpty());
        _json = result.out;
    }

    /// Fails and returns -1 if there is no such number.
    long get(const std::string& object, const std::string& name) const {
        const std::size_t start = _json.find("\"" + object + "\": {");
        const std::string key = "\"" + name + "\": ";
        const std::size_t place = start == std::string::npos ? start : _json.find(key, start);
        if (place == std::string::npos || place > _json.find('}', start)) {
            ADD_FAILURE() << object << "." << name << " is not in " << _json;
            return -1;
        }
        const std::string value = _json.substr(place + key.size(), 20);
        EXPECT_THAT(value.front(), ::testing::AllOf(::testing::Ge('0'), ::testing::Le('9')))
            << object << name;
        return std::strtol(value.c_str(), nullptr, 10);
    }

    const std::string& getJson() const { return _json; }

private:
    std::string _json;
};

TEST(CacheStatsProcess, CountsWhatEachPainterAsksFor) {
    const Stats both({"aab_"});
    EXPECT_EQ(both.get("text", "bytes"), 4);
    EXPECT_EQ(both.get("fontFiles", "misses"), 1);
    EXPECT_EQ(both.get("faces", "entries"), 1);
    EXPECT_EQ(both.get("outlines", "entries"), 3);
    EXPECT_EQ(both.get("outlines", "misses"), 3);
    EXPECT_EQ(both.get("outlines", "hits"), 1);
    EXPECT_EQ(both.get("coloredImages", "entries"), 1);
    EXPECT_EQ(both.get("bitmaps", "hits") + both.get("bitmaps", "misses"), 4);
    EXPECT_GT(both.get("bitmaps", "bytes"), 0);

    EXPECT_EQ(Stats({"aab_", "--painter", "raster"}).get("outlines", "entries"), 0);
    EXPECT_EQ(Stats({"aab_", "--painter", "vector"}).get("bitmaps", "entries"), 0);
}

TEST(CacheStatsProcess, FindsInTheSecondPassWhatTheFirstOneMade) {
    const std::string text = "one line\nand another, \xCE\xB1\n";
    const Stats once({"-"}, text);
    const Stats twice({"-", "--passes", "2"}, text);
    EXPECT_EQ(twice.get("text", "lines"), 2);
    EXPECT_EQ(twice.get("text", "passes"), 2);
    for (const char* cache : {"fontFiles", "faces", "bitmaps", "coloredImages", "outlines"}) {
        EXPECT_EQ(twice.get(cache, "misses"), once.get(cache, "misses")) << cache;
        EXPECT_EQ(twice.get(cache, "entries"), once.get(cache, "entries")) << cache;
    }
    EXPECT_EQ(twice.get("outlines", "hits"),
              2 * once.get("outlines", "hits") + once.get("outlines", "misses"));
    EXPECT_EQ(twice.get("bitmaps", "hits"), 2 * once.get("bitmaps", "hits") + once.get("bitmaps", "misses"));
}

TEST(CacheStatsProcess, KeepsToTheLimits) {
    const Stats stats({"a\xE4\xB8\xAD\x62\xD7\x90", "--max-faces", "1", "--max-bitmap-bytes", "2000"});
    EXPECT_EQ(stats.get("faces", "maxEntries"), 1);
    EXPECT_EQ(stats.get("faces", "entries"), 1);
    EXPECT_GT(stats.get("faces", "evictions"), 0);
    EXPECT_EQ(stats.get("fontFiles", "entries"), 1);
    EXPECT_EQ(stats.get("bitmaps", "maxBytes"), 2000);
    EXPECT_LE(stats.get("bitmaps", "bytes"), 2000);
    EXPECT_GT(stats.get("bitmaps", "evictions"), 0);
    EXPECT_EQ(stats.get("coloredImages", "maxBytes"), 2000);
    EXPECT_THAT(stats.getJson(),
                HasSubstr(R"("outlines": {"entries": 4, "maxEntries": null, "bytes": null)"));
}

TEST(CacheStatsProcess, DrawsInTheFontThatWasAskedFor) {
    const Stats small({"text", "--painter", "raster"});
    const Stats large({"text", "--painter", "raster", "--size", "64", "--dpr", "2"});
    EXPECT_GT(large.get("bitmaps", "bytes"), 4 * small.get("bitmaps", "bytes"));
}

TEST(CacheStatsProcess, DrawsWithAFontFile) {
    const TemporaryFolder folder;
    writeCollection(folder.getPath("fonts.ttc"), {"First", "Second"});
    const Stats stats({"AAA", "--font", folder.getPath("fonts.ttc") + ":1"});
    EXPECT_EQ(stats.get("fontFiles", "entries"), 1);
    EXPECT_EQ(stats.get("faces", "entries"), 1);
    EXPECT_EQ(stats.get("outlines", "entries"), 1);
}

TEST(CacheStatsProcess, WritesJsonThatOtherProgramsRead) {
    const TemporaryFolder folder;
    writeBytes(folder.getPath("stats.json"), Stats({"text"}).getJson());
    EXPECT_EQ(runShell("python3 -c 'import json, sys; json.load(open(sys.argv[1]))[\"caches\"][\"faces\"]' " +
                       quote(folder.getPath("stats.json"))),
              0);
}

TEST(CacheStatsProcess, PrintsATableForPeople) {
    const ProcessResult result = runTool({"cache-stats", "text"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("cache  "));
    EXPECT_THAT(result.out, HasSubstr("\noutlines               3        -  "));
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 6);
}

TEST(CacheStatsProcess, ShowsItsProgressOnATerminalOnly) {
    PseudoTerminal terminal(60);
    const std::string command = quote(FONTENGINE_TOOL) + " cache-stats text >/dev/null";
    EXPECT_EQ(runShell(command + " 2>" + terminal.getPath()), 0);
    const std::string seen = terminal.take();
    EXPECT_THAT(seen, StartsWith("\rdrawing lines [......"));
    EXPECT_THAT(seen, MatchesRegex(".*\r +\r"));

    PseudoTerminal other(60);
    EXPECT_EQ(runShell("{ " + command + "; } 2>&1 | cat >" + other.getPath()), 0);
    EXPECT_THAT(other.take(), IsEmpty());
}

TEST(CacheStatsProcess, ReportsAFailureOnALineOfItsOwn) {
    PseudoTerminal terminal(60);
    EXPECT_EQ(
        runShell(quote(FONTENGINE_TOOL) + " cache-stats text --family 'No Such' 2>" + terminal.getPath()), 1);
    EXPECT_THAT(terminal.take(), EndsWith(" \rfontengine: the font family 'No Such' is not installed\n"));
}

TEST(CacheStatsProcess, RefusesWrongUse) {
    const std::vector<std::vector<std::string>> wrong = {{},
                                                         {"x", "--passes", "0"},
                                                         {"x", "--passes", "1000001"},
                                                         {"x", "--passes", "-1"},
                                                         {"x", "--max-faces", "-1"},
                                                         {"x", "--max-bitmap-bytes", "much"},
                                                         {"x", "--size", "0"},
                                                         {"x", "--painter", "both"},
                                                         {"x", "--dpr", "nan"}};
    for (std::vector<std::string> arguments : wrong) {
        arguments.insert(arguments.begin(), "cache-stats");
        const ProcessResult result = runTool(arguments);
        EXPECT_EQ(result.status, 2) << ::testing::PrintToString(arguments);
        EXPECT_THAT(result.err, MatchesRegex("fontengine: [^\n]+\n"));
        EXPECT_THAT(result.out, IsEmpty());
    }
}

} // namespace

} // namespace Vell::Testing

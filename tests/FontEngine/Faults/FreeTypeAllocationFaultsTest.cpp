// Makes every allocation of FreeType fail in turn, in every operation. The fonts are TrueType, because
// FreeType's Type 1 driver does not survive all these failures by itself.

#include <FontEngine/Faults/Operations.h>
#include <FontEngine/Faults/Outcome.h>

#include <support/spy/FreeTypeMemory.h>

#include <gtest/gtest.h>

#include <map>
#include <new>
#include <set>

namespace Vell::FontEngine {
namespace {

using Testing::FreeTypeMemory;

const std::set<std::string> textsWithoutMemory = {"FT_New_Library() failed: out of memory (error 64)",
                                                  "FT_Add_Default_Modules() failed: out of memory (error 64)",
                                                  "FT_Open_Face() failed: out of memory (error 64)",
                                                  "FT_Load_Glyph() failed, error: 64, glyph index: ",
                                                  "FT_Get_Glyph() failed, error: 64, glyph index: ",
                                                  "Failed to get bitmap for glyph, error: 64, glyph index: ",
                                                  "FT_Load_Glyph() failed: out of memory (error 64)",
                                                  "FT_Outline_Get_Bitmap() failed: out of memory (error 64)",
                                                  std::bad_alloc().what()};

/// Returns whether the outcome is one that FreeType can give when it lacks memory, or does not need it.
bool isPlausible(std::string outcome, const std::string& expected) {
    if (outcome == expected) {
        return true;
    }
    constexpr const char* marker = "glyph index: ";
    const std::size_t glyph = outcome.find(marker);
    if (glyph != std::string::npos) {
        outcome.resize(glyph + std::string(marker).size());
    }
    return textsWithoutMemory.count(outcome) != 0;
}

void expectSurvivesEveryFailureOfFreeType(const Operation& operation, FreeTypeMemory& memory) {
    const std::string expected = performWithoutFailure(operation);
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        SCOPED_TRACE(std::string(operation.name) + " without FreeType's allocation " +
                     std::to_string(number));
        {
            World world;
            operation.prepare(world);
            memory.failAt(number);
            const std::string outcome = getOutcome([&] { return operation.perform(world); });
            hasFailed = memory.hasFailed();
            memory.failAt(0);
            ASSERT_PRED2(isPlausible, outcome, expected);
            ASSERT_EQ(operation.perform(world), expected);
        }
        ASSERT_EQ(memory.countLibraryOwners(), 0);
    }
}

TEST(FreeTypeAllocationFaults, FailOnlyTheOperationInProgress) {
    FreeTypeMemory memory;
    for (const Operation& operation : getOperations()) {
        expectSurvivesEveryFailureOfFreeType(operation, memory);
    }
}

/// Counts the outcomes while every allocation fails in turn, and then none.
std::map<std::string, std::size_t> countOutcomes(const Operation& operation) {
    FreeTypeMemory memory;
    std::map<std::string, std::size_t> counts;
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        World world;
        memory.failAt(number);
        ++counts[getOutcome([&] { return operation.perform(world); })];
        hasFailed = memory.hasFailed();
        memory.failAt(0);
    }
    return counts;
}

TEST(FreeTypeAllocationFaults, NeverLeaveAFaceWithoutItsModulesOrTables) {
    const Operation& open = getOperations().at(3);
    ASSERT_STREQ(open.name, "getFace");
    auto counts = countOutcomes(open);
    EXPECT_EQ(counts[performWithoutFailure(open)], 1U) << "only if nothing failed";
    EXPECT_EQ(counts["FT_New_Library() failed: out of memory (error 64)"], 1U);
    EXPECT_GE(counts["FT_Add_Default_Modules() failed: out of memory (error 64)"], 10U);
    EXPECT_GE(counts["FT_Open_Face() failed: out of memory (error 64)"], 10U);
}

} // namespace
} // namespace Vell::FontEngine

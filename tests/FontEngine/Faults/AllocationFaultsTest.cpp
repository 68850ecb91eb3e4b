// Makes every allocation by operator new fail in turn, in every operation.

#include <FontEngine/Faults/Operations.h>

#include <support/FailingAllocations.h>
#include <support/spy/FreeTypeMemory.h>

#include <gmock/gmock.h>

#include <new>

namespace Vell::FontEngine {
namespace {

using Testing::FailingAllocations;
using Testing::FreeTypeMemory;

/// Performs the operation while its `number`-th allocation by operator new fails. Returns false if there was
/// no such allocation.
bool performWithout(std::size_t number, const Operation& operation, World& world) {
    const FailingAllocations failing(number);
    try {
        operation.perform(world);
        EXPECT_FALSE(failing.hasFailed() && operation.needsMemory) << "the failure was ignored";
    } catch (const std::bad_alloc&) {
        EXPECT_TRUE(failing.hasFailed() && operation.needsMemory);
    }
    EXPECT_TRUE(failing.hasFailed() || number > 1) << "every operation allocates";
    return failing.hasFailed();
}

void expectSurvivesEveryFailure(const Operation& operation) {
    const std::string expected = performWithoutFailure(operation);
    bool hasFailed = true;
    for (std::size_t number = 1; hasFailed; ++number) {
        SCOPED_TRACE(std::string(operation.name) + " without its allocation " + std::to_string(number));
        const Testing::LiveBytes live;
        {
            World world;
            operation.prepare(world);
            hasFailed = performWithout(number, operation, world);
            ASSERT_EQ(operation.perform(world), expected);
        }
        ASSERT_EQ(live.get(), 0U);
    }
}

TEST(AllocationFaults, FailOnlyTheOperationInProgress) {
    const FreeTypeMemory memory;
    for (const Operation& operation : getOperations()) {
        expectSurvivesEveryFailure(operation);
        EXPECT_EQ(memory.countLibraryOwners(), 0) << operation.name;
    }
}

} // namespace
} // namespace Vell::FontEngine

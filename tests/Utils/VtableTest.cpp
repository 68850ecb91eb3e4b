#include <Utils/Public/Vtable.h>

#include <gtest/gtest.h>

namespace Vell {
namespace {

struct Base {
    virtual ~Base() = default;
    virtual int answer() const = 0;
};

struct Own : Base {
    int answer() const override { return 1; }
    int held = 7;
};

struct Derived : Own {
    int answer() const override { return 2; }
};

/// Overrides nothing.
struct Idle : Own {};

struct Other : Base {
    int answer() const override { return 3; }
};

struct Unrelated {
    virtual ~Unrelated() = default;
    int number = 0;
};

/// Has the interface as its second base.
struct Second : Unrelated, Own {};

const void* getTable(const Base& object) {
    return getVtable(object);
}

TEST(Vtable, IsSharedByObjectsOfOneClass) {
    Own changed;
    changed.held = 8;
    EXPECT_NE(getTable(Own()), nullptr);
    EXPECT_EQ(getTable(Own()), getTable(changed));
    EXPECT_EQ(getTable(Own()), getVtable(Own())) << "through whichever of the two types";
}

TEST(Vtable, DiffersForEveryOtherClass) {
    EXPECT_NE(getTable(Own()), getTable(Other()));
    EXPECT_NE(getTable(Own()), getTable(Derived()));
    EXPECT_NE(getTable(Own()), getTable(Idle()));
    EXPECT_NE(getTable(Own()), getTable(Second()));
    EXPECT_EQ(getTable(Derived()), getTable(Derived()));
}

/// Reads the table in its constructor, before the part of a derived class exists.
struct Watcher : Base {
    Watcher()
        : duringConstruction(getVtable(*this)) {}
    int answer() const override { return 4; }
    const void* duringConstruction;
};

struct DerivedWatcher : Watcher {};

TEST(Vtable, IsTheOneOfTheBaseDuringItsConstructor) {
    EXPECT_EQ(DerivedWatcher().duringConstruction, getTable(Watcher()));
    EXPECT_NE(DerivedWatcher().duringConstruction, getTable(DerivedWatcher()));
}

} // namespace
} // namespace Vell

#pragma once

#include <Utils/Public/Assert.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell {

namespace ComparisonDetails {

template <class T>
void assertComparable(const NNPtr<T>& ptr) {
    if (!ptr) {
        doFailAssert(CheckedPtrLocation::file, CheckedPtrLocation::convert, "_ptr");
    }
}

/// Whether two pointers lead to equal objects. One shared object is equal to itself without being asked;
/// otherwise `*lhs == *rhs` decides. A moved-from pointer is a failed assertion.
template <class T, class U>
bool arePointersDeeplyEqual(const NNPtr<T>& lhs, const NNPtr<U>& rhs) {
    assertComparable(lhs);
    assertComparable(rhs);
    return lhs == rhs || *lhs == *rhs;
}

} // namespace ComparisonDetails

/// Equality of keys: plain values by their own `==`, pointers by what they point to.
struct AreDeeplyEqualComparator {
    template <class T>
    bool operator()(const T& lhs, const T& rhs) const {
        return lhs == rhs;
    }

    template <class T>
    bool operator()(const NNPtr<T>& lhs, const NNPtr<T>& rhs) const {
        return ComparisonDetails::arePointersDeeplyEqual(lhs, rhs);
    }
};

} // namespace Vell

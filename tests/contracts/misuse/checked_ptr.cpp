// A pointer that is never null cannot be made without an object, cannot be reset, and keeps its object const.

#include <Utils/Public/Ptr/PtrUtils.h>

#include <string>
#include <vector>

using Vell::CheckedPtrImpl;
using Vell::makeNNPtr;

struct Base {
    virtual ~Base() = default;
};
struct Derived : Base {};
struct Other {};

bool isSet(const CheckedPtrImpl<Base, false>& pointer) {
    return pointer ? true : false;
}

int main() {
    CheckedPtrImpl<int, false> pointer = makeNNPtr<int>(1);
    const CheckedPtrImpl<const int, false> toConst = pointer;
    const std::shared_ptr<const int> shared = toConst;
    const CheckedPtrImpl<Base, false> base = makeNNPtr<Derived>();
    const CheckedPtrImpl<std::vector<int>, false> vector = makeNNPtr<std::vector<int>>(3, 1);
    *pointer = 2;

#ifdef MISUSE_NULL_LITERAL // deleted
    const CheckedPtrImpl<int, false> null = nullptr;
#endif
#ifdef MISUSE_NULL_ARGUMENT // deleted
    isSet(nullptr);
#endif
#ifdef MISUSE_NULL_ASSIGNMENT // deleted|ambiguous
    pointer = nullptr;
#endif
#ifdef MISUSE_NO_OBJECT // no matching (function|constructor)
    const CheckedPtrImpl<int, false> nothing;
#endif
#ifdef MISUSE_PLAIN_POINTER // no matching (function|constructor)
    const CheckedPtrImpl<int, false> plain(new int(1));
#endif
#ifdef MISUSE_RESET // no member named
    pointer.reset();
#endif
#ifdef MISUSE_NULLABLE // incomplete type|implicit instantiation of undefined template
    const CheckedPtrImpl<int, true> nullable(shared);
#endif
#ifdef MISUSE_LOSING_CONST // conversion from|no viable conversion
    const CheckedPtrImpl<int, false> mutable1 = toConst;
#endif
#ifdef MISUSE_LOSING_CONST_IN_A_SHARED_POINTER // conversion from|no viable conversion
    const std::shared_ptr<int> mutable2 = toConst;
#endif
#ifdef MISUSE_SHARED_POINTER_TO_CONST // conversion from|no viable conversion
    const CheckedPtrImpl<int, false> mutable3 = shared;
#endif
#ifdef MISUSE_WRITING_THROUGH_CONST // read-only|cannot assign
    *toConst = 2;
#endif
#ifdef MISUSE_DOWNCAST // conversion from|no viable conversion
    const CheckedPtrImpl<Derived, false> derived = base;
#endif
#ifdef MISUSE_UNRELATED_TYPE // conversion from|no viable conversion
    const CheckedPtrImpl<Other, false> other = base;
#endif
#ifdef MISUSE_AS_A_NUMBER // cannot convert|no viable conversion
    const bool isThere = base;
#endif
#ifdef MISUSE_WRONG_ARGUMENTS // no matching (function|constructor)
    makeNNPtr<std::string>(Other());
#endif
    return isSet(base) && vector->size() == 3 ? 0 : 1;
}

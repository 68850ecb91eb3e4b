#pragma once

#include <Utils/Public/Assert.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace Vell {

/// How assertion reports name the checks below.
namespace CheckedPtrLocation {
constexpr const char* file = "Utils/Public/Ptr/CheckedPtr";
constexpr int compare = 139;
constexpr int dereference = 145;
constexpr int convert = 206;
} // namespace CheckedPtrLocation

template <class T, bool nullable = false>
class CheckedPtrImpl;

/// A shared pointer that is never null, for parameters, members and results that must exist. Its short name
/// is NNPtr<T>.
///
///     void draw(const NNPtr<const Face>& face); // needs no null check
///     draw(makeNNPtr<Face>(...));
///     draw(sharedFace);                         // asserts if sharedFace is null
///
/// It shares ownership like std::shared_ptr, costs the same, and has the same thread rule. It becomes null
/// only when it is moved from. A moved-from pointer may be copied, moved, assigned and compared; it asserts
/// when it is dereferenced.
template <class T>
class CheckedPtrImpl<T, false> {
    template <class U>
    using EnableIfConvertible = std::enable_if_t<std::is_convertible_v<U*, T*>>;
    struct NoSuchConversion;

public:
    using element_type = T;

    CheckedPtrImpl(std::nullptr_t) = delete;

    template <class U, class = EnableIfConvertible<U>>
    CheckedPtrImpl(const std::shared_ptr<U>& ptr)
        : _ptr(ptr) {
        assertConverted();
    }
    template <class U, class = EnableIfConvertible<U>>
    CheckedPtrImpl(std::shared_ptr<U>&& ptr)
        : _ptr(std::move(ptr)) {
        assertConverted();
    }
    template <class U, class = EnableIfConvertible<U>>
    CheckedPtrImpl(const CheckedPtrImpl<U, false>& other) noexcept
        : _ptr(other._ptr) {}
    template <class U, class = EnableIfConvertible<U>>
    CheckedPtrImpl(CheckedPtrImpl<U, false>&& other) noexcept
        : _ptr(std::move(other._ptr)) {}

    CheckedPtrImpl(const CheckedPtrImpl&) noexcept = default;
    CheckedPtrImpl(CheckedPtrImpl&&) noexcept = default;
    CheckedPtrImpl& operator=(const CheckedPtrImpl&) noexcept = default;
    CheckedPtrImpl& operator=(CheckedPtrImpl&&) noexcept = default;
    ~CheckedPtrImpl() = default;

    T* operator->() const { return &dereference(); }
    T& operator*() const { return dereference(); }

    /// False only if this pointer has been moved from.
    explicit operator bool() const noexcept { return _ptr != nullptr; }
    operator std::shared_ptr<T>() const noexcept { return _ptr; }
    operator std::shared_ptr<std::conditional_t<std::is_const_v<T>, NoSuchConversion, const T>>()
        const noexcept {
        return _ptr;
    }

    /// The plain address. Null only if this pointer has been moved from.
    T* get() const noexcept { return _ptr.get(); }

    /// Compares addresses. AreDeeplyEqualComparator compares the objects.
    template <class U>
    friend bool operator==(const CheckedPtrImpl& lhs, const CheckedPtrImpl<U, false>& rhs) noexcept {
        return lhs.get() == rhs.get();
    }
    template <class U>
    friend bool operator!=(const CheckedPtrImpl& lhs, const CheckedPtrImpl<U, false>& rhs) noexcept {
        return lhs.get() != rhs.get();
    }

private:
    template <class U, bool nullable>
    friend class CheckedPtrImpl;

    void assertConverted() const {
        if (!_ptr) {
            doFailAssert(CheckedPtrLocation::file, CheckedPtrLocation::convert, "_ptr");
        }
    }

    T& dereference() const {
        if (!_ptr) {
            doFailAssert(CheckedPtrLocation::file, CheckedPtrLocation::dereference, "_ptr");
        }
        return *_ptr;
    }

    std::shared_ptr<T> _ptr;
};

template <class T>
using NNPtr = CheckedPtrImpl<T, false>;

namespace ComparisonDetails {

template <class T>
void assertComparable(const NNPtr<T>& ptr) {
    if (!ptr) {
        doFailAssert(CheckedPtrLocation::file, CheckedPtrLocation::convert, "_ptr");
    }
}

/// Whether two pointers lead to equal objects. An object always equals itself; two different objects are
/// equal if `*lhs == *rhs`. Asserts that neither pointer has been moved from.
template <class T, class U>
bool arePointersDeeplyEqual(const NNPtr<T>& lhs, const NNPtr<U>& rhs) {
    assertComparable(lhs);
    assertComparable(rhs);
    return lhs == rhs || *lhs == *rhs;
}

} // namespace ComparisonDetails

/// Compares keys: plain values by their `==`, pointers by the objects that they point to.
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

/// Hashes the object, not the address: pointers to equal objects have equal hashes.
template <class T>
struct std::hash<Vell::CheckedPtrImpl<T, false>> {
    std::size_t operator()(const Vell::CheckedPtrImpl<T, false>& ptr) const {
        return std::hash<std::remove_cv_t<T>>()(*ptr);
    }
};

#pragma once

#include <Utils/Public/Assert.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <utility>

namespace Vell {

/// What `plainPtr` points to; asserts that it is not null. For pointers that may be null by their type and
/// must not be null at this place.
template <class T>
T& derefNN(T* plainPtr) {
    if (plainPtr == nullptr) {
        doFailAssert("Utils/Public/Ptr/PtrUtils", 254, "plainPtr");
    }
    return *plainPtr;
}

/// Makes a T in one allocation together with its reference count.
template <class T, class... Args>
NNPtr<T> makeNNPtr(Args&&... args) {
    auto made = std::make_shared<T>(std::forward<Args>(args)...);
    static_cast<void>(derefNN(made.get()));
    return NNPtr<T>(std::move(made));
}

} // namespace Vell

#pragma once

#include <Utils/Public/Assert.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <memory>
#include <utility>

namespace Vell {

/// The object that `plainPtr` points to. Asserts that the pointer is not null. For places where a pointer
/// must not be null although its type allows it.
template <class T>
T& derefNN(T* plainPtr) {
    if (plainPtr == nullptr) {
        doFailAssert("Utils/Public/Ptr/PtrUtils", 254, "plainPtr");
    }
    return *plainPtr;
}

/// Makes a T. The object and its reference count share one allocation.
template <class T, class... Args>
NNPtr<T> makeNNPtr(Args&&... args) {
    auto made = std::make_shared<T>(std::forward<Args>(args)...);
    static_cast<void>(derefNN(made.get()));
    return NNPtr<T>(std::move(made));
}

} // namespace Vell

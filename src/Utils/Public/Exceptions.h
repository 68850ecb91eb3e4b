#pragma once

#include <Utils/Public/Export.h>

#include <stdexcept>

namespace Vell {

/// The base class of every exception that these libraries define. Exceptions of the standard library, such as
/// std::bad_alloc, pass through unchanged.
class VELL_API BaseRuntimeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    BaseRuntimeError(const BaseRuntimeError&) = default;
    BaseRuntimeError& operator=(const BaseRuntimeError&) = default;
    ~BaseRuntimeError() override;
};

/// A number does not fit in the type that numCast converts it to.
class VELL_API BadNumCastError : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    BadNumCastError(const BadNumCastError&) = default;
    BadNumCastError& operator=(const BadNumCastError&) = default;
    ~BadNumCastError() override;
};

} // namespace Vell

#pragma once

#include <Utils/Public/Export.h>

#include <stdexcept>

namespace Vell {

/// The base of every exception that the libraries of the family throw themselves. (Exceptions of the standard
/// library, std::bad_alloc above all, pass through beside it.)
class VELL_API BaseRuntimeError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
    BaseRuntimeError(const BaseRuntimeError&) = default;
    BaseRuntimeError& operator=(const BaseRuntimeError&) = default;
    ~BaseRuntimeError() override;
};

/// A number does not fit the type that it is converted to; see numCast.
class VELL_API BadNumCastError : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    BadNumCastError(const BadNumCastError&) = default;
    BadNumCastError& operator=(const BadNumCastError&) = default;
    ~BadNumCastError() override;
};

} // namespace Vell

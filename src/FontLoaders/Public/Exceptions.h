#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>

namespace Vell::FontLoaders {

/// A font cannot be found or its file cannot be read.
class VELL_API FontLoaderException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    FontLoaderException(const FontLoaderException&) = default;
    FontLoaderException& operator=(const FontLoaderException&) = default;
    ~FontLoaderException() override;
};

/// FreeType has reported an error. The text names the call that failed and contains FreeType's error code.
class VELL_API FreeTypeException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    FreeTypeException(const FreeTypeException&) = default;
    FreeTypeException& operator=(const FreeTypeException&) = default;
    ~FreeTypeException() override;
};

} // namespace Vell::FontLoaders

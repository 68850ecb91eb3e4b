#pragma once

#include <Utils/Public/Exceptions.h>
#include <Utils/Public/Export.h>

namespace Vell::FontEngine {

/// The engine cannot fulfil a request although no library below it failed.
class VELL_API FontEngineException : public BaseRuntimeError {
public:
    using BaseRuntimeError::BaseRuntimeError;
    FontEngineException(const FontEngineException&) = default;
    FontEngineException& operator=(const FontEngineException&) = default;
    ~FontEngineException() override;
};

} // namespace Vell::FontEngine

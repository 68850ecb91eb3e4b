#pragma once

#include <FontLoaders/FontLoaders.h>

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace Vell::Tool {

/// Passes every question on to another fallback and records it with its answer. Any thread.
class RecordingCoverage : public FontLoaders::CoverageFallback {
public:
    using Answer = std::optional<FontLoaders::CoveringFace>;

    /// Without a fallback, nothing is found.
    explicit RecordingCoverage(std::shared_ptr<const FontLoaders::CoverageFallback> fallback)
        : _fallback(std::move(fallback)) {}

    Answer findFace(const FontLoaders::CoverageRequest& request) const override;

    /// The answer for a cluster that has been asked for; null for all others.
    const Answer* findAnswer(const std::u32string& cluster) const;

private:
    std::shared_ptr<const FontLoaders::CoverageFallback> _fallback;
    mutable std::mutex _mutex; // guards the answers
    mutable std::map<std::u32string, Answer> _answers;
};

} // namespace Vell::Tool

#pragma once

#include <FontLoaders/Public/CoverageFallback.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/MRUCache.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

namespace Vell::FontLoaders::Internal {

/// The answers of a coverage fallback that were used last. Any thread may use it.
class CoverageAnswers {
public:
    using Answer = std::optional<CoveringFace>;

    /// The memory that the answers may take, about.
    static constexpr std::uint64_t maxBytes = std::uint64_t(1) << 20U;
    /// Longer clusters, which no honest text has, are not remembered.
    static constexpr std::size_t maxCodePoints = 64;

    explicit CoverageAnswers(std::uint64_t maxSizeInBytes = maxBytes)
        : _answers(0, maxSizeInBytes) {}

    /// The remembered answer for an equal request, or else what `search` returns, which is called without a
    /// lock. Forgets all answers if `version` differs from that of the previous call. Several threads may
    /// search for the same answer. If `search` throws, nothing is remembered.
    Answer get(const CoverageRequest& request, std::uint64_t version, const CallableRef<Answer()>& search);

private:
    std::optional<Answer> find(const std::string& key, std::uint64_t version);
    void remember(const std::string& key, std::uint64_t version, const Answer& answer);

    std::mutex _mutex; // guards the rest
    MRUCache<std::string, Answer, std::hash<std::string>, std::equal_to<>> _answers;
    std::uint64_t _version = 0;
};

} // namespace Vell::FontLoaders::Internal

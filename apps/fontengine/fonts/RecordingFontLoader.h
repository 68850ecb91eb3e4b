#pragma once

#include <FontLoaders/FontLoaders.h>

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Vell::Tool {

using FontLoaders::FontBytes;

/// What a loader was asked for, and its answer.
struct FontQuestion {
    std::optional<std::string> family; ///< none: the default font
    bool isBold;
    bool isItalic;
    FontBytes answer; ///< null: there is no such font
};

/// Which family a Unicode range falls back to.
struct RangeQuestion {
    unsigned int rangeId;
    std::string answer; ///< empty: none
};

using LoaderQuestion = std::variant<FontQuestion, RangeQuestion>;

/// Passes every question on to another loader and records it with its answer. A repeated question, which has
/// the same answer, is recorded once, at its first place; one that ends in an exception is not recorded.
/// Holds the bytes of all answers. Any thread.
class RecordingFontLoader : public FontLoaders::FontLoader {
public:
    using LoaderPtr = NNPtr<const FontLoaders::FontLoader>;

    explicit RecordingFontLoader(LoaderPtr loader);

    FontBytes loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    FontBytes loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

    const FontLoaders::FontLoader& getLoader() const { return *_loader; }
    std::vector<LoaderQuestion> getQuestions() const;

private:
    void record(LoaderQuestion question) const;

    LoaderPtr _loader;
    mutable std::mutex _mutex; // guards the questions
    mutable std::vector<LoaderQuestion> _questions;
};

} // namespace Vell::Tool

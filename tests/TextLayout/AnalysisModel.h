#pragma once

#include <TextLayout/Private/TextAnalysis.h>

#include <string>
#include <string_view>
#include <vector>

namespace Vell::Testing {

/// The answers that analyse() must give, put together from those of ICU. Readable, so that
/// tests compare and print them.
struct AnalysisModel {
    std::vector<std::string> paragraphs; ///< "begin end level"
    std::vector<std::string> items;      ///< "begin end level script"
    std::vector<std::size_t> clusterStarts;
    bool isPlain;
};

bool operator==(const AnalysisModel& lhs, const AnalysisModel& rhs);
std::ostream& operator<<(std::ostream& stream, const AnalysisModel& model);

/// Asks ICU for the levels of each paragraph and for all boundaries.
AnalysisModel analyseByIcu(std::string_view text, TextLayout::ParagraphDirection direction);

AnalysisModel describe(const TextLayout::TextAnalysis& analysis, std::size_t textSize);

} // namespace Vell::Testing

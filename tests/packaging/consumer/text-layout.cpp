// A client of the text layout alone.

#include <TextLayout/TextLayout.h>

#include <cstdio>

using namespace Vell;

int main() {
    const char* const text = "a \xD7\xA9\xD7\x91";
    const TextLayout::BidiLine line(text);
    const auto runs = TextLayout::findScriptRuns(text);
    const auto clusters = TextLayout::findGraphemeBoundaries(text);
    const auto breaks = TextLayout::findLineBreaks(text);
    std::printf("order of %zu, %zu scripts, %zu boundaries, %zu breaks\n", line.getVisualOrder().size(),
                runs.size(), clusters.size(), breaks.size());
    const bool isReordered = line.getVisualOrder()[2] == 3;
    return isReordered && runs.size() == 2 && clusters.size() == 5 && breaks.size() == 2 ? 0 : 1;
}

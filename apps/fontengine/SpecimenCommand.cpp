#include "Commands.h"
#include "FontSource.h"
#include "OutputFile.h"
#include "OutputFolder.h"
#include "Progress.h"
#include "WebPage.h"

#include <filesystem>
#include <optional>

namespace Vell::Tool {

void makeSpecimen(const SpecimenOptions& options) {
    const FontSource source(options.familyOrFile);
    std::optional<Progress> bar; // begins when it is known how much there is to draw
    std::size_t shown = 0;
    const auto showProgress = [&](std::size_t done, std::size_t total) {
        if (!bar) {
            bar.emplace("glyphs", total);
        }
        bar->advance(done - shown);
        shown = done;
    };
    makeFolder(options.folder);
    const std::string page = makeWebPage(source, showProgress);
    writeFile((std::filesystem::path(options.folder) / "index.html").string(), page);
}

} // namespace Vell::Tool

#include "commands/Commands.h"
#include "fonts/FontSource.h"
#include "output/OutputFile.h"
#include "output/Progress.h"
#include "specimen/SpecimenPage.h"

#include <optional>

namespace Vell::Tool {

void writeSpecimen(const SpecimenOptions& options) {
    FontSource source(options.familyOrFile, options.variations);
    source.setPalette(options.palette);
    std::optional<Progress> bar; // appears once the number of glyphs is known
    std::size_t shown = 0;
    const auto showProgress = [&](std::size_t done, std::size_t total) {
        if (!bar) {
            bar.emplace("glyphs", total);
        }
        bar->advance(done - shown);
        shown = done;
    };
    const std::string page = makeSpecimenPage(source, showProgress, options.variations);
    writeFiles(options.folder, {{"index.html", page}});
}

} // namespace Vell::Tool

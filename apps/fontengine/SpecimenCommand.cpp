#include "Commands.h"
#include "FontSource.h"
#include "OutputFile.h"
#include "OutputFolder.h"
#include "WebPage.h"

#include <filesystem>

namespace Vell::Tool {

void makeSpecimen(const SpecimenOptions& options) {
    const FontSource source(options.familyOrFile);
    const auto ignoreProgress = [](std::size_t, std::size_t) {};
    makeFolder(options.folder);
    const std::string page = makeWebPage(source, ignoreProgress);
    writeFile((std::filesystem::path(options.folder) / "index.html").string(), page);
}

} // namespace Vell::Tool

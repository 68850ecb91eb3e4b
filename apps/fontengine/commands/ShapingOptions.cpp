#include "commands/ShapingOptions.h"

#include "Errors.h"
#include "fonts/FontShaper.h"

#include <CLI/CLI.hpp>

namespace Vell::Tool {

void addDirection(CLI::App& app, std::string& direction) {
    app.add_option("--direction", direction,
                   "the paragraph's; auto, the first strong character's, if not given")
        ->type_name("auto|ltr|rtl");
}

void addLanguage(CLI::App& app, std::string& language) {
    app.add_option("--language", language, "the language of the text, such as ja or zh-Hant")
        ->type_name("TAG");
}

void addShaping(CLI::App& app, ShapingRequest& request) {
    app.add_option("--features", request.features,
                   "OpenType features to switch, such as -liga,kern=0,ss01,aalt[3:5]=2; ranges are in bytes")
        ->type_name("LIST");
    addLanguage(app, request.language);
    addDirection(app, request.direction);
}

void checkLanguage(const CLI::App& app, const std::string& language) {
    if (app.count("--language") > 0 && language.empty()) {
        throw UsageError("--language is empty");
    }
}

void checkShaping(const CLI::App& app, const ShapingRequest& request) {
    checkLanguage(app, request.language);
    parseFeatures(request.features);
    parseDirection(request.direction);
}

} // namespace Vell::Tool

#include "fonts/FontOrigin.h"

#include "fonts/FaceFacts.h"
#include "fonts/FileFontLoader.h"
#include "output/Printing.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <ostream>

namespace Vell::Tool {

namespace {

using FontLoaders::FTFacePtr;
using FontLoaders::UnicodeRangeMap;

std::string describeStyle(bool isBold, bool isItalic) {
    if (isBold && isItalic) {
        return "bold italic";
    }
    return isBold ? "bold" : isItalic ? "italic" : "regular";
}

std::string describeFile(const RecordingFontLoader& loader, const FontBytes& bytes) {
    const auto place = findPlace(loader, bytes);
    return place ? fmt::format("{} (face {})", place->file, place->index) : "no file";
}

/// The questions about one family, or about the default font.
std::vector<FontQuestion> selectQuestions(const RecordingFontLoader& loader,
                                          const std::optional<std::string>& family) {
    std::vector<FontQuestion> selected;
    for (const LoaderQuestion& question : loader.getQuestions()) {
        const auto* font = std::get_if<FontQuestion>(&question);
        if (font != nullptr && font->family == family) {
            selected.push_back(*font);
        }
    }
    return selected;
}

bool hasAnswer(const std::vector<FontQuestion>& questions, const FontBytes& bytes) {
    return std::any_of(questions.begin(), questions.end(),
                       [&bytes](const FontQuestion& question) { return question.answer == bytes; });
}

/// The questions that led to the bytes. The default font replaces a missing family.
std::vector<FontQuestion> findQuestions(const RecordingFontLoader& loader, const std::string& family,
                                        const FontBytes& bytes) {
    std::vector<FontQuestion> questions;
    if (!family.empty()) {
        questions = selectQuestions(loader, family);
    }
    if (!hasAnswer(questions, bytes)) {
        const auto forDefault = selectQuestions(loader, std::nullopt);
        questions.insert(questions.end(), forDefault.begin(), forDefault.end());
    }
    return questions;
}

std::string describeWanted(const FontQuestion& question) {
    const std::string style = describeStyle(question.isBold, question.isItalic);
    return question.family ? style : "default font, " + style;
}

std::string describeReason(const std::vector<FontQuestion>& questions, const FontBytes& served,
                           FontEngine::GlyphTransform transform) {
    std::string reason;
    std::string serving = "another font";
    for (const FontQuestion& question : questions) {
        reason += fmt::format("{}{}: {}", reason.empty() ? "" : ", ", describeWanted(question),
                              question.answer ? "found" : "none");
        if (question.answer == served) {
            serving = describeWanted(question);
        }
    }
    return fmt::format("{} -> {} serves, synthesised: {}", reason, serving, describeSynthesis(transform));
}

std::string describe(const FontQuestion& question, const RecordingFontLoader& loader) {
    return fmt::format("{}{}: {}", question.family ? fmt::format("\"{}\" ", *question.family) : "",
                       describeWanted(question),
                       question.answer ? describeFile(loader, question.answer) : "none");
}

std::string describe(const RangeQuestion& question, const std::vector<unsigned int>& codePoints) {
    const auto sample = std::find_if(codePoints.begin(), codePoints.end(), [&question](unsigned int code) {
        return UnicodeRangeMap::find(code) == question.rangeId;
    });
    const std::string block = sample == codePoints.end() ? fmt::format("block {}", question.rangeId)
                                                         : "the block of " + formatCodePoint(*sample);
    return fmt::format("family for {}: {}", block,
                       question.answer.empty() ? "none" : fmt::format("\"{}\"", question.answer));
}

/// Opens the file itself and none of its faces; null if it cannot be read.
FTFacePtr openFile(const FontLoaders::FTLibraryPtr& library, const std::string& path) {
    constexpr FT_Long noFace = -1;
    FT_Face file = nullptr;
    const bool isOpen = FontLoaders::isFTSucceeded(FT_New_Face(library.get(), path.c_str(), noFace, &file));
    return {isOpen ? file : nullptr, [](FT_Face face) { FT_Done_Face(face); }};
}

} // namespace

std::optional<FontLoaders::FontFilePlace> findPlace(const RecordingFontLoader& loader,
                                                    const FontBytes& bytes) {
    const auto* const file = dynamic_cast<const FileFontLoader*>(&loader.getLoader());
    return file != nullptr ? file->findFile(bytes) : FontLoaders::findFontFile(loader.getLoader(), bytes);
}

FontOrigin findOrigin(const FontEngine::Font& font, const RecordingFontLoader& loader) {
    const FontEngine::FaceData data = font.getFace()->getFaceData();
    const FontBytes served = data.bytes; // nullable, to compare it with answers
    const auto wanted = font.getFontInfo()->getFontFaceInfo();
    return {describeFile(loader, served),
            fmt::format(
                "asked for {}; {}", describeStyle(wanted->isBold(), wanted->isItalic()),
                describeReason(findQuestions(loader, wanted->getName(), served), served, data.transform))};
}

void printOrigin(const FontEngine::Font& font, const RecordingFontLoader& loader, std::ostream& out) {
    const FontOrigin origin = findOrigin(font, loader);
    printProperty(out, "file", origin.file);
    printProperty(out, "why", origin.reason);
}

void printQuestions(const RecordingFontLoader& loader, const std::vector<unsigned int>& codePoints,
                    std::ostream& out) {
    out << "loader asked:\n";
    for (const LoaderQuestion& question : loader.getQuestions()) {
        const auto* font = std::get_if<FontQuestion>(&question);
        fmt::print(out, "  {}\n",
                   font != nullptr ? describe(*font, loader)
                                   : describe(std::get<RangeQuestion>(question), codePoints));
    }
}

long countFaces(const FontEngine::Font& font, const RecordingFontLoader& loader) {
    const FontEngine::FontFace& face = *font.getFace();
    const FontBytes served = face.getFaceData().bytes;
    if (const auto place = findPlace(loader, served)) {
        const auto library = FontLoaders::createFreeTypeLibrary();
        if (const FTFacePtr file = openFile(library, place->file)) {
            return file->num_faces;
        }
    }
    return face.getHandle()->num_faces;
}

} // namespace Vell::Tool

#include <FontLoaders/Private/Installed/InstalledFonts.h>

#include <FontLoaders/Private/Installed/Fontconfig.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FontVariations.h>

#include <algorithm>
#include <utility>

namespace Vell::FontLoaders::Internal {

namespace {

/// If the configuration cannot be loaded, returns one without fonts.
FontconfigPtr<FcConfig> loadConfig() {
    FontconfigPtr<FcConfig> config(FcInitLoadConfigAndFonts());
    return config ? std::move(config) : FontconfigPtr<FcConfig>(FcConfigCreate());
}

/// The values of a named instance that differ from the default ones. `instance` counts from 1.
std::vector<AxisSetting> listSettings(const FontVariations& variations, unsigned int instance) {
    std::vector<AxisSetting> settings;
    if (instance == 0 || instance > variations.instances.size()) {
        return settings;
    }
    const std::vector<float>& coordinates = variations.instances[instance - 1].coordinates;
    for (std::size_t i = 0; i < variations.axes.size(); ++i) {
        if (coordinates[i] != variations.axes[i].defaultValue) {
            settings.push_back({variations.axes[i].tag, coordinates[i]});
        }
    }
    return settings;
}

} // namespace

InstalledFonts::InstalledFonts(std::string defaultFaceName, FontFileCache& files)
    : _defaultFaceName(std::move(defaultFaceName))
    , _files(files)
    , _config(loadConfig())
    , _catalog(_config.get()) {}

FontBytes InstalledFonts::load(const std::string& name, bool bold, bool italic) {
    FontBytes bytes = loadFirst([&] { return find(name); },
                                [=](const Faces& faces) { return selectFace(faces, bold, italic); });
    if (bytes) {
        return bytes;
    }
    const Faces* const faces = find(name);
    return faces != nullptr ? loadVariedStyle(faces, bold, italic) : loadNamedInstance(name, bold, italic);
}

FontBytes InstalledFonts::loadVariable(const std::string& name, const RequestedStyle& style,
                                       const std::vector<AxisSetting>& settings) {
    const Faces* const faces = find(name);
    std::set<std::pair<std::string, unsigned int>> places;
    for (const InstalledFace* face : faces != nullptr ? *faces : Faces()) {
        if (face->isVariable && face->isBold() == style.bold && face->isItalic() == style.italic) {
            places.emplace(face->file, face->index);
        }
    }
    FontBytes best;
    std::size_t bestCount = 0;
    for (const auto& [file, index] : places) {
        const FontBytes font = _files.load(file, index);
        const std::size_t count = font ? countAxes(font, settings) : 0;
        if (count > bestCount) {
            best = font;
            bestCount = count;
        }
    }
    return best;
}

FontBytes InstalledFonts::loadDefault(bool bold, bool italic) {
    const bool isPlain = !bold && !italic;
    FontBytes bytes = loadFirst([this] { return findDefault(); },
                                [=](const Faces& faces) {
                                    return isPlain ? selectPlainFace(faces) : selectFace(faces, bold, italic);
                                });
    return bytes ? bytes : loadVariedStyle(findDefault(), bold, italic);
}

/// The style that the axes of a variable face of the family give. Null if there is none, or if the font
/// cannot be instanced: then it counts as having no axes. `faces` may be null.
FontBytes InstalledFonts::loadVariedStyle(const Faces* faces, bool bold, bool italic) {
    for (const RequestedStyle& style : listServingStyles({bold, italic})) {
        const InstalledFace* const face =
            faces == nullptr ? nullptr : selectFace(*faces, style.bold, style.italic);
        if (face == nullptr || !face->isVariable) {
            continue;
        }
        try {
            const FontBytes source = _files.load(face->file, face->index);
            const MissingStyle missing{bold && !style.bold, italic && !style.italic};
            const auto settings =
                source ? addStyle(FontLoaders::readVariations(source).axes, {}, missing) : std::nullopt;
            if (settings) {
                return _files.loadInstance(face->file, face->index, *settings);
            }
        } catch (const FontLoaderException&) {
            continue;
        } catch (const FreeTypeException&) {
            continue;
        }
    }
    return nullptr;
}

/// The instance that a name means. A bold request is null unless the instance is bold. An italic one takes an
/// instance that is italic, or an axis for it.
FontBytes InstalledFonts::loadNamedInstance(const std::string& name, bool bold, bool italic) {
    const bool isName = name.find('\0') == std::string::npos;
    const InstancePlace* const place = isName ? _catalog.findInstance(name) : nullptr;
    if (place == nullptr || (bold && !place->isBold)) {
        return nullptr;
    }
    FontBytes source = _files.load(place->file, place->index);
    if (!source || (place->instance == 0 && italic == place->isItalic)) {
        return source;
    }
    const FontVariations variations = FontLoaders::readVariations(source);
    const auto settings = addStyle(variations.axes, listSettings(variations, place->instance),
                                   {false, italic && !place->isItalic});
    return settings ? _files.loadInstance(place->file, place->index, *settings) : nullptr;
}

std::string InstalledFonts::getFamilyForRange(unsigned int rangeId) {
    const auto kept = _familiesForRanges.find(rangeId);
    if (kept != _familiesForRanges.end()) {
        return kept->second;
    }
    return _familiesForRanges.emplace(rangeId, findFamilyForRange(rangeId)).first->second;
}

const Faces* InstalledFonts::find(const std::string& name) const {
    // fontconfig would stop at the first zero byte and look for a different name.
    if (name.find('\0') != std::string::npos) {
        return nullptr;
    }
    if (const Faces* faces = _catalog.find(name)) {
        return faces;
    }
    return isGenericFamily(name) ? findBestMatch(name) : findSameFamily(name);
}

const Faces* InstalledFonts::findSameFamily(const std::string& name) const {
    for (const std::string& same : getSameFamilies(_config.get(), name)) {
        if (const Faces* faces = _catalog.find(same)) {
            return faces;
        }
    }
    return nullptr;
}

const Faces* InstalledFonts::findBestMatch(const std::string& name) const {
    return _catalog.find(getBestMatchingFamily(_config.get(), _catalog.getPatterns(), name));
}

const Faces* InstalledFonts::findDefault() const {
    const Faces* faces = find(_defaultFaceName);
    return faces != nullptr ? faces : findBestMatch(_defaultFaceName);
}

/// Starts again whenever a face turns out to have no usable charmap.
FontBytes InstalledFonts::loadFirst(FindFaces findFaces, SelectFace select) {
    while (const Faces* faces = findFaces()) {
        const InstalledFace* face = select(*faces);
        if (face == nullptr && confirmOrRemove(*faces)) {
            return nullptr;
        }
        if (FontBytes bytes = face == nullptr ? nullptr : loadOrRemove(*face)) {
            _confirmed = nullptr;
            return bytes;
        }
    }
    return nullptr;
}

FontBytes InstalledFonts::loadOrRemove(const InstalledFace& face) {
    FontBytes bytes = _files.load(face.file, face.index);
    if (!bytes) {
        _ranges.reset();
        _familiesForRanges.clear();
        _orders.reset();
        ++_removalCount;
        _catalog.remove(face);
    }
    return bytes;
}

/// Whether at least one of the faces has a usable charmap. If none is known to have one, this reads a face
/// and removes it if it has none either.
bool InstalledFonts::confirmOrRemove(const Faces& faces) {
    const auto isKnown = [this](const InstalledFace* face) {
        return _files.isKnownToHaveCharmap(face->file, face->index);
    };
    return std::any_of(faces.begin(), faces.end(), isKnown) || confirmOrRemove(*selectPlainFace(faces));
}

/// True for a face that cannot be read, so that whoever asks for it learns the reason.
bool InstalledFonts::confirmOrRemove(const InstalledFace& face) {
    if (_files.isKnownToHaveCharmap(face.file, face.index)) {
        return true;
    }
    try {
        _confirmed = loadOrRemove(face);
        return _confirmed != nullptr;
    } catch (const FontLoaderException&) {
        return true;
    }
}

/// Starts again whenever a face turns out not to be servable.
std::optional<CoveringFamily> InstalledFonts::findCovering(const CoverageQuery& query) {
    for (;;) {
        auto found = findCandidate(query);
        if (!found || isServable(*found->face.face)) {
            return found;
        }
    }
}

std::optional<CoveringFamily> InstalledFonts::findCandidate(const CoverageQuery& query) {
    const bool isEmoji = query.cluster.presentation == ClusterPresentation::Emoji;
    SortRequest request{query.family, query.language, query.style.bold, query.style.italic};
    if (isEmoji) {
        request.family = emojiFamily;
        request.language = emojiLanguage;
    }
    if (!_orders) {
        _orders.emplace();
    }
    const FamilyOrder others = _orders->get(_config.get(), _catalog, request);
    return findCoveringFamily(query.cluster, {listPreferred(query), *others, _unservable});
}

/// The text's own family, or the default one if it is not installed, then those of the client.
std::vector<StyledFamily> InstalledFonts::listPreferred(const CoverageQuery& query) const {
    std::vector<StyledFamily> families;
    addFamily(query.family, query.style, families);
    const Faces* const byDefault = families.empty() ? findDefault() : nullptr;
    if (byDefault != nullptr) {
        families.push_back(makeStyledFamily(byDefault->front()->families.front(), *byDefault, query.style));
    }
    for (const std::string& name : query.families) {
        addFamily(name, query.style, families);
    }
    return families;
}

void InstalledFonts::addFamily(const std::string& name, const FaceStyle& style,
                               std::vector<StyledFamily>& families) const {
    if (const Faces* const faces = find(name)) {
        families.push_back(makeStyledFamily(name, *faces, style));
    }
}

/// Whether a face can be read and opened and has a usable charmap. Remembers the faces that are not
/// servable.
bool InstalledFonts::isServable(const InstalledFace& face) {
    if (_files.isKnownToHaveCharmap(face.file, face.index)) {
        return true;
    }
    try {
        _confirmed = loadOrRemove(face);
    } catch (const FontLoaderException&) {
        _confirmed = nullptr;
    }
    const bool isNowKnown = _files.isKnownToHaveCharmap(face.file, face.index);
    if (!isNowKnown) {
        _unservable.insert(&face);
    }
    return isNowKnown;
}

std::string InstalledFonts::findFamilyForRange(unsigned int rangeId) {
    for (;;) {
        if (!_ranges) {
            _ranges.emplace(_config.get(), _catalog, _defaultFaceName);
        }
        std::string family = _ranges->find(rangeId);
        if (family.empty() || confirmOrRemove(*selectPlainFace(*_catalog.find(family)))) {
            return family;
        }
    }
}

} // namespace Vell::FontLoaders::Internal

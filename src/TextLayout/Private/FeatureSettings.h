#pragma once

#include <TextLayout/Private/ShapingBuffer.h>
#include <TextLayout/Public/TextFeatures.h>

#include <hb.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Vell::TextLayout {

/// The settings of features for one part of a text.
struct SelectedFeatures {
    std::vector<hb_feature_t> settings;
    bool holdForAll = true; ///< none of them ends within the part
    /// Differs from that of other selections of the same FeatureSettings.
    std::uint32_t version = 0;
};

/// The settings of features of one style, to be selected for parts of a text.
///
/// Cost: selecting takes time only if the part crosses the begin or the end of a setting that the part before
/// it did not cross.
class FeatureSettings {
public:
    /// `features` must outlive the object.
    explicit FeatureSettings(const std::vector<TextFeature>& features)
        : _features(features) {}

    /// The settings for the bytes of a part; those that hold for all of it hold for any text. Valid until the
    /// next call.
    const SelectedFeatures& select(const TextPart& part);

private:
    void selectAnew(const TextPart& part);
    void add(const TextFeature& feature, const TextPart& part);
    void omitOverridden();

    const std::vector<TextFeature>& _features;
    SelectedFeatures _selected;
    std::size_t _validBegin = 1; ///< no setting begins or ends between these bytes; at first, there are none
    std::size_t _validEnd = 0;
};

} // namespace Vell::TextLayout

#pragma once

#include <support/ByteWriter.h>

#include <FontLoaders/Public/FontLoader.h>

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>
#include <vector>

namespace Vell::Testing {

/// A font loader that serves the test's fonts and records its calls:
///
///     loadFont "Test Sans" bold italic
///     loadDefaultFont regular
///     getFamilyNameForRange 42
///
/// Unknown fonts are null, unknown ranges have no family. Any thread may call the loader's operations. Call
/// the set functions before them.
class CountingLoader : public FontLoaders::FontLoader {
public:
    using FontBytes = std::shared_ptr<const Bytes>;

    ~CountingLoader() override;

    void setFont(const std::string& name, bool bold, bool italic, Bytes bytes);
    void setFont(const std::string& name, bool bold, bool italic, FontBytes bytes);
    void setDefaultFont(bool bold, bool italic, Bytes bytes);
    void setDefaultFont(bool bold, bool italic, FontBytes bytes);
    void setRangeFamily(unsigned int rangeId, std::string family);
    /// Throws InjectedError from every call whose line starts with `prefix`. The empty string, which is the
    /// initial state, means from none.
    void throwFrom(std::string prefix);

    std::vector<std::string> getCalls() const;
    std::size_t countCalls(const std::string& prefix = "") const;
    void clearCalls();

    std::shared_ptr<const Bytes> loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const override;
    std::shared_ptr<const Bytes> loadDefaultFont(bool bold, bool italic) const override;
    std::string getFamilyNameForRange(unsigned int rangeId) const override;

private:
    void record(std::string call) const;

    std::map<std::tuple<std::string, bool, bool>, FontBytes> _fonts;
    std::map<std::tuple<bool, bool>, FontBytes> _defaultFonts;
    std::map<unsigned int, std::string> _rangeFamilies;
    std::string _throwingPrefix;
    mutable std::mutex _mutex; // guards the calls
    mutable std::vector<std::string> _calls;
};

} // namespace Vell::Testing

#include "LayoutTables.h"

namespace Vell::Testing {

namespace {

void addNumbers(ByteWriter& writer, std::initializer_list<unsigned int> numbers) {
    for (const unsigned int number : numbers) {
        writer.addU16(number);
    }
}

Bytes makeLookup(const LayoutLookup& lookup) {
    ByteWriter writer;
    const auto count = static_cast<unsigned int>(lookup.repeats);
    addNumbers(writer, {lookup.type, 0, count});
    for (unsigned int i = 0; i < count; ++i) {
        writer.addU16(6 + 2 * count);
    }
    writer.addBytes(lookup.subtable);
    return writer.getBytes();
}

Bytes makeLookupList(const std::vector<LayoutLookup>& lookups) {
    ByteWriter offsets;
    ByteWriter content;
    offsets.addU16(static_cast<unsigned int>(lookups.size()));
    for (const LayoutLookup& lookup : lookups) {
        offsets.addU16(static_cast<unsigned int>(2 + 2 * lookups.size() + content.size()));
        content.addBytes(makeLookup(lookup));
    }
    offsets.addBytes(content.getBytes());
    return offsets.getBytes();
}

} // namespace

Bytes makeLayoutTable(const std::string& feature, const std::vector<LayoutLookup>& lookups) {
    const auto count = static_cast<unsigned int>(lookups.size());
    const unsigned int scripts = 10;
    const unsigned int features = scripts + 20;
    ByteWriter writer;
    addNumbers(writer, {1, 0, scripts, features, features + 12 + 2 * count});
    writer.addU16(1); // scripts
    writer.addText("DFLT");
    addNumbers(writer, {8, 4, 0, 0, 0xFFFF, 1, 0}); // the default language has feature 0
    writer.addU16(1);                               // features
    writer.addText(feature);
    addNumbers(writer, {8, 0, count});
    for (unsigned int i = 0; i < count; ++i) {
        writer.addU16(i);
    }
    writer.addBytes(makeLookupList(lookups));
    return writer.getBytes();
}

Bytes makeMultipleSubst(unsigned int glyph, unsigned int substitute, unsigned int count) {
    ByteWriter writer;
    addNumbers(writer, {1, 8, 1, 14, /* coverage */ 1, 1, glyph, /* sequence */ count});
    for (unsigned int i = 0; i < count; ++i) {
        writer.addU16(substitute);
    }
    return writer.getBytes();
}

Bytes makeEmptyPairs(unsigned int glyph, unsigned int firstClassCount, unsigned int secondClassCount) {
    ByteWriter writer;
    addNumbers(writer, {2, 16, 0, 0, 22, 22, firstClassCount, secondClassCount, /* coverage */ 1, 1, glyph,
                        /* classes */ 1, glyph, 0});
    return writer.getBytes();
}

} // namespace Vell::Testing

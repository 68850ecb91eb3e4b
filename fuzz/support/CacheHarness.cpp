#include <fuzz/support/CacheHarness.h>

#include <fuzz/support/Harness.h>

namespace Vell::Fuzz {

CacheOperation takeCacheOperation(ByteReader& reader) {
    // Clear and Limit empty the cache. They are rare, since otherwise it would never hold much.
    constexpr CacheOperation::Kind kinds[] = {CacheOperation::Kind::Get, CacheOperation::Kind::Put,
                                              CacheOperation::Kind::GetOrPut};
    const unsigned int choice = reader.takeU8();
    const unsigned int key = reader.takeU8() % 32;
    const unsigned int number = reader.takeU8();
    switch (choice) {
    case 0xFF:
        return {CacheOperation::Kind::Clear, key, number};
    case 0xFE:
        return {CacheOperation::Kind::Limit, key, number};
    case 0xFD:
        return {CacheOperation::Kind::FailedGetOrPut, key, number};
    default:
        return {kinds[choice % 3], key, number};
    }
}

std::uint64_t toWeight(unsigned int number) {
    constexpr unsigned int firstPower = 216;
    return number < firstPower ? number : std::uint64_t(1) << (number - firstPower) % 41;
}

void runCache(const Bytes& input) {
    ByteReader reader(input);
    CacheDuel<FuzzedCache>(reader).run();
}

} // namespace Vell::Fuzz

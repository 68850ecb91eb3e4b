#include <FontEngine/Private/FE_StrikeCache.h>

#include <support/ClientDescriptions.h>
#include <support/Descriptions.h>

#include <FontEngine/GlyphKeyFields.h>
#include <Utils/Public/Ptr/PtrUtils.h>

#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace Vell::FontEngine::Internal {
namespace {

using Number = StrikeEntry<int>;
using Numbers = Strike<Number>;
using NumberStrikes = Strikes<Number>;
using NodePtr = std::unique_ptr<const Numbers::Node>;

NodePtr makeNode(int number) {
    return std::make_unique<const Numbers::Node>(Number(number), 0);
}

void add(Numbers& strike, std::uint32_t slot, const NodePtr& node) {
    strike.reserveOne();
    strike.add(slot, *node);
}

TEST(Strike, IsEmptyAtFirst) {
    const Numbers strike;
    EXPECT_TRUE(strike.isEmpty());
    EXPECT_EQ(strike.find(0), nullptr);
    EXPECT_FALSE(strike.hasRoom());
}

TEST(Strike, FindsEntriesByTheirSlots) {
    Numbers strike;
    const NodePtr nodes[] = {makeNode(10), makeNode(11), makeNode(12)};
    const std::uint32_t slots[] = {0, 1, noSlot - 1};
    for (int i = 0; i < 3; ++i) {
        add(strike, slots[i], nodes[i]);
    }
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(strike.find(slots[i]), nodes[i].get());
    }
    EXPECT_EQ(strike.find(2), nullptr);
    EXPECT_EQ(strike.find(noSlot), nullptr);
    EXPECT_FALSE(strike.isEmpty());
}

TEST(Strike, ForgetsADestroyedEntry) {
    Numbers strike;
    NodePtr ending = makeNode(1);
    const NodePtr staying = makeNode(2);
    add(strike, 7, ending);
    add(strike, 8, staying);
    ending.reset();
    EXPECT_EQ(strike.find(7), nullptr);
    EXPECT_EQ(strike.find(8), staying.get());
    EXPECT_FALSE(strike.isEmpty());
}

TEST(Strike, IsEmptyAgainAfterTheLastEntry) {
    Numbers strike;
    NodePtr node = makeNode(1);
    add(strike, 7, node);
    node.reset();
    EXPECT_TRUE(strike.isEmpty());
    EXPECT_TRUE(strike.hasRoom());
}

TEST(Strike, HoldsAnEntryInOneSlotAtATime) {
    Numbers strike;
    const NodePtr node = makeNode(1);
    add(strike, 7, node);
    add(strike, 8, node);
    EXPECT_EQ(strike.find(7), nullptr);
    EXPECT_EQ(strike.find(8), node.get());
    add(strike, 8, node);
    EXPECT_EQ(strike.find(8), node.get());
}

TEST(Strike, LetsAnEntryMoveToAnotherStrike) {
    Numbers first;
    Numbers second;
    const NodePtr node = makeNode(1);
    add(first, 7, node);
    add(second, 7, node);
    EXPECT_TRUE(first.isEmpty());
    EXPECT_EQ(first.find(7), nullptr);
    EXPECT_EQ(second.find(7), node.get());
}

TEST(Strike, ReleasesAllEntriesWhenItIsCleared) {
    Numbers strike;
    std::vector<NodePtr> nodes;
    for (int i = 0; i < 40; ++i) {
        nodes.push_back(makeNode(i));
        add(strike, static_cast<std::uint32_t>(i) * 256, nodes.back());
    }
    strike.clear();
    EXPECT_TRUE(strike.isEmpty());
    EXPECT_EQ(strike.find(256), nullptr);
    add(strike, 3, nodes[1]);
    nodes.erase(nodes.begin(), nodes.begin() + 1);
    nodes.erase(nodes.begin() + 1, nodes.end());
    EXPECT_EQ(strike.find(3), nodes[0].get()) << "destroying the others emptied no slot";
}

TEST(Strike, ReleasesItsEntriesWhenItIsDestroyed) {
    const NodePtr node = makeNode(1);
    {
        Numbers strike;
        add(strike, 7, node);
    }
    Numbers other;
    add(other, 9, node);
    EXPECT_EQ(other.find(9), node.get());
}

TEST(Strike, AcceptsAnEntryThatWasMovedTo) {
    Numbers strike;
    Number value(1);
    value.data = 2;
    const auto node = std::make_unique<const Numbers::Node>(std::move(value), 0);
    add(strike, 7, node);
    EXPECT_EQ(strike.find(7)->getValue().data, 2);
}

/// Slots of one kind: adjacent, like those of one glyph, or of glyphs far apart.
std::uint32_t makeSlot(std::mt19937& random, std::uint32_t kind) {
    constexpr std::uint32_t distances[] = {1, 2, 256, 1U << 20U, 0x10001};
    return static_cast<std::uint32_t>(random() % 300) * distances[kind];
}

using NodesBySlot = std::map<std::uint32_t, NodePtr>;

void expectSame(const Numbers& strike, const NodesBySlot& model, std::uint32_t kind) {
    std::mt19937 random;
    for (const auto& [slot, node] : model) {
        ASSERT_EQ(strike.find(slot), node.get()) << slot;
    }
    for (int i = 0; i < 50; ++i) {
        const std::uint32_t slot = makeSlot(random, kind);
        ASSERT_EQ(strike.find(slot) != nullptr, model.count(slot) != 0) << slot;
    }
    ASSERT_EQ(strike.isEmpty(), model.empty());
}

/// Grows to about `goal` entries and keeps that size while entries come and go.
void comeAndGo(std::mt19937& random, std::uint32_t kind, std::size_t goal) {
    Numbers strike;
    NodesBySlot model;
    for (int step = 0; step < 3000; ++step) {
        const std::uint32_t slot = makeSlot(random, kind);
        const auto found = model.find(slot);
        if (random() % 16 == 0 && found == model.end() && !model.empty()) {
            auto moved = model.extract(std::next(model.begin(), static_cast<int>(random() % model.size())));
            moved.key() = slot; // an entry that moves to another slot
            add(strike, slot, moved.mapped());
            model.insert(std::move(moved));
        } else if (found == model.end() && model.size() < goal) {
            add(strike, slot, model[slot] = makeNode(step));
        } else if (found != model.end()) {
            model.erase(found);
        }
        if (step % 10 == 0) {
            expectSame(strike, model, kind);
        }
        if (random() % 1000 == 0) {
            strike.clear();
            model.clear();
        }
    }
}

TEST(Strike, BehavesLikeAMapWhileEntriesComeAndGo) {
    std::mt19937 random(7);
    for (std::uint32_t kind = 0; kind < 5; ++kind) {
        for (const std::size_t goal : {3U, 10U, 40U, 200U}) {
            SCOPED_TRACE(testing::Message() << "kind " << kind << ", " << goal << " entries");
            comeAndGo(random, kind, goal);
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
}

StrikeInfo makeInfo(const Testing::FaceInfoPtr& face, float size = 10.0F) {
    return {face.get(), size, GlyphTransform::None};
}

TEST(StrikeInfo, IsPlainForOwnDescriptionsAndOrdinaryNumbers) {
    const auto own = Testing::makeFaceInfo();
    const auto clients = Testing::makeClientFaceInfo();
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(makeInfo(own).isPlain());
    EXPECT_TRUE(makeInfo(own, 0.0F).isPlain());
    EXPECT_TRUE(makeInfo(own, infinity).isPlain());
    EXPECT_FALSE(makeInfo(clients).isPlain());
    for (const float unusual : {notANumber, -0.0F}) {
        for (float StrikeInfo::*const field : {&StrikeInfo::fontSize, &StrikeInfo::devicePixelRatio}) {
            StrikeInfo info = makeInfo(own);
            info.*field = unusual;
            EXPECT_FALSE(info.isPlain());
        }
        for (const cinder::Vec2<float> scale : {cinder::Vec2<float>(unusual, 1), {1, unusual}}) {
            StrikeInfo info = makeInfo(own);
            info.scale = scale;
            EXPECT_FALSE(info.isPlain());
        }
    }
}

TEST(StrikeInfo, DiffersInEachField) {
    const auto face = Testing::makeFaceInfo();
    const auto equal = Testing::makeFaceInfo();
    const StrikeInfo info = makeInfo(face);
    EXPECT_EQ(info, makeInfo(equal));
    EXPECT_EQ(StrikeInfoHash()(info), StrikeInfoHash()(makeInfo(equal)));
    std::vector<StrikeInfo> others(7, info);
    const auto bold = Testing::makeFaceInfo("Test Sans", true);
    others[0].faceInfo = bold.get();
    others[1].fontSize = 11.0F;
    others[2].transform = GlyphTransform::Embolden;
    others[3].scale.x = 2.0F;
    others[4].scale.y = 2.0F;
    others[5].devicePixelRatio = 2.0F;
    others[6].color = 1;
    for (const StrikeInfo& other : others) {
        EXPECT_FALSE(info == other);
        EXPECT_NE(StrikeInfoHash()(info), StrikeInfoHash()(other));
    }
}

TEST(StrikeInfo, MatchesTheKeysWithItsFields) {
    const KeyFields fields;
    const StrikeInfo info = makeInfo(fields.face, fields.size);
    EXPECT_TRUE(info.matches(fields.makeBitmap()));
    EXPECT_TRUE(
        info.matches(fields.with(&KeyFields::glyph, 9U).with(&KeyFields::isLast, false).makeBitmap()));
    EXPECT_FALSE(info.matches(fields.with(&KeyFields::face, Testing::makeFaceInfo("B")).makeBitmap()));
    EXPECT_FALSE(info.matches(fields.with(&KeyFields::size, 11.0F).makeBitmap()));
    EXPECT_FALSE(info.matches(fields.with(&KeyFields::transform, GlyphTransform::Slant).makeBitmap()));
    EXPECT_FALSE(info.matches(fields.with(&KeyFields::ratio, 2.0F).makeBitmap()));
    EXPECT_FALSE(info.matches(fields.with(&KeyFields::scale, cinder::Vec2<float>(2, 1)).makeBitmap()));
    EXPECT_FALSE(info.matches(fields.with(&KeyFields::scale, cinder::Vec2<float>(1, 2)).makeBitmap()));
}

TEST(StrikeSlot, DiffersInEachFieldOfAPaintersKey) {
    std::map<std::uint32_t, int> slots;
    int count = 0;
    for (const unsigned long glyph : {0UL, 1UL, 2UL, 255UL, 256UL, 65535UL}) {
        for (const FT_Render_Mode mode : {FT_RENDER_MODE_NORMAL, FT_RENDER_MODE_LCD}) {
            for (unsigned int offset = 0; offset <= 60; offset += 4) {
                for (const bool isLast : {false, true}) {
                    ++slots[getBitmapSlot(glyph, mode, static_cast<unsigned char>(offset), isLast)];
                    ++count;
                }
            }
        }
    }
    EXPECT_EQ(slots.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(slots.count(noSlot), 0U);
}

TEST(StrikeSlot, DoesNotExistForKeysThatNoPainterMakes) {
    EXPECT_EQ(getBitmapSlot(65536, FT_RENDER_MODE_NORMAL, 0, false), noSlot);
    EXPECT_EQ(getBitmapSlot(~0UL, FT_RENDER_MODE_NORMAL, 0, false), noSlot);
    EXPECT_EQ(getBitmapSlot(1, FT_RENDER_MODE_MONO, 0, false), noSlot);
    EXPECT_EQ(getBitmapSlot(1, FT_RENDER_MODE_LCD_V, 0, false), noSlot);
    for (const int offset : {1, 2, 3, 5, 63, 255}) {
        EXPECT_EQ(getBitmapSlot(1, FT_RENDER_MODE_NORMAL, static_cast<unsigned char>(offset), false), noSlot);
    }
}

TEST(StrikeMap, AreFoundByValue) {
    NumberStrikes strikes;
    const auto face = Testing::makeFaceInfo();
    const auto equal = Testing::makeFaceInfo();
    EXPECT_EQ(strikes.find(makeInfo(face)), nullptr);
    NumberStrikes::Strike& strike = strikes.findOrAdd(makeInfo(face), face);
    EXPECT_EQ(strikes.find(makeInfo(equal)), &strike);
    EXPECT_EQ(&strikes.findOrAdd(makeInfo(equal), equal), &strike);
    EXPECT_EQ(strikes.find(makeInfo(face, 11.0F)), nullptr);
    EXPECT_NE(&strikes.findOrAdd(makeInfo(face, 11.0F), face), &strike);
    EXPECT_EQ(strikes.find(makeInfo(equal)), &strike);
}

TEST(StrikeMap, KeepTheDescriptionsOfTheirKeys) {
    NumberStrikes strikes;
    auto face = std::optional(Testing::makeFaceInfo());
    NumberStrikes::Strike& strike = strikes.findOrAdd(makeInfo(*face), *face);
    face.reset();
    strikes.findOrAdd(makeInfo(Testing::makeFaceInfo("Other")), Testing::makeFaceInfo("Other"));
    EXPECT_EQ(strikes.find(makeInfo(Testing::makeFaceInfo())), &strike);
}

TEST(StrikeMap, AreSweptWhileTheyAreEmpty) {
    NumberStrikes strikes;
    const NodePtr node = makeNode(1);
    const auto kept = Testing::makeFaceInfo("Kept");
    NumberStrikes::Strike& used = strikes.findOrAdd(makeInfo(kept), kept);
    add(used, 5, node);
    const std::shared_ptr<const Gfx::FontFaceInfo> face = Testing::makeFaceInfo();
    const std::uint64_t changes = strikes.getChanges();
    for (int size = 1; size <= 1000; ++size) {
        strikes.findOrAdd(makeInfo(face, static_cast<float>(size)), face);
    }
    EXPECT_LT(face.use_count(), 40) << "each strike shares its description";
    EXPECT_GT(strikes.getChanges(), changes);
    ASSERT_EQ(strikes.find(makeInfo(kept)), &used);
    EXPECT_EQ(used.find(5), node.get());
}

TEST(StrikeMap, AreSeldomSweptWhileAllAreInUse) {
    NumberStrikes strikes;
    const auto face = Testing::makeFaceInfo();
    std::vector<NodePtr> nodes;
    for (int size = 1; size <= 1000; ++size) {
        nodes.push_back(makeNode(size));
        add(strikes.findOrAdd(makeInfo(face, static_cast<float>(size)), face), 1, nodes.back());
    }
    EXPECT_LT(strikes.getChanges(), 12U) << "at each doubling";
    for (int size = 1; size <= 1000; ++size) {
        const auto* const strike = strikes.find(makeInfo(face, static_cast<float>(size)));
        ASSERT_NE(strike, nullptr);
        EXPECT_EQ(strike->find(1), nodes[static_cast<std::size_t>(size) - 1].get());
    }
}

TEST(StrikeMap, ReleaseAllEntriesWhenTheyAreCleared) {
    NumberStrikes strikes;
    const auto face = Testing::makeFaceInfo();
    NodePtr nodes[] = {makeNode(1), makeNode(2)};
    add(strikes.findOrAdd(makeInfo(face), face), 1, nodes[0]);
    add(strikes.findOrAdd(makeInfo(face, 11.0F), face), 1, nodes[1]);
    const std::uint64_t changes = strikes.getChanges();
    strikes.clear();
    EXPECT_NE(strikes.getChanges(), changes);
    EXPECT_EQ(strikes.find(makeInfo(face)), nullptr);
    NumberStrikes::Strike& strike = strikes.findOrAdd(makeInfo(face), face);
    EXPECT_EQ(strike.find(1), nullptr);
    add(strike, 1, nodes[1]);
    nodes[0].reset();
    EXPECT_EQ(strike.find(1), nodes[1].get());
}

} // namespace
} // namespace Vell::FontEngine::Internal

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "module/queries/CountedSequence.h"

namespace {

// Tiny nodes, so that a few thousand operations split and empty leaves and inner nodes on
// several levels.
using Small = kelaz::CountedSequence<int, 4, 4>;

std::vector<int> Contents(const Small& seq) {
    std::vector<int> out;
    seq.forEach([&out](int v) { out.push_back(v); });
    return out;
}

}  // namespace

TEST(CountedSequence, FollowsAVectorThroughInsertsAndErasesAndTracksWhereEachElementIs) {
    std::mt19937 rng(7);
    Small seq;
    std::vector<int> expected;
    // Where the sequence said each value (all distinct) was put, as it moved between leaves.
    std::vector<Small::NodeId> leafOf;
    int next = 0;
    const auto track = [&leafOf](int v, Small::NodeId leaf) {
        leafOf[static_cast<std::size_t>(v)] = leaf;
    };
    for (int round = 0; round < 6000; ++round) {
        // Grow most of the time, then shrink to nothing, twice over.
        const bool grow = (round / 1500) % 2 == 0 ? rng() % 4 != 0 : rng() % 4 == 0;
        if (grow || expected.empty()) {
            const std::size_t at = rng() % (expected.size() + 1);
            leafOf.push_back(Small::kNone);
            seq.insert(at, next, track);
            expected.insert(expected.begin() + static_cast<long>(at), next);
            ++next;
        } else if (rng() % 2 == 0) {
            const std::size_t at = rng() % expected.size();
            seq.erase(at);
            expected.erase(expected.begin() + static_cast<long>(at));
        } else {
            // Through the leaf the element was last put in, as its owner would.
            const std::size_t at = rng() % expected.size();
            const int v = expected[at];
            const Small::NodeId leaf = leafOf[static_cast<std::size_t>(v)];
            const auto items = seq.leafItems(leaf);
            std::size_t offset = 0;
            while (offset < items.size() && items[offset] != v) ++offset;
            ASSERT_LT(offset, items.size()) << "value " << v << " is not in the leaf reported";
            ASSERT_EQ(seq.indexOf(leaf, offset), at);
            seq.eraseAt(leaf, offset);
            expected.erase(expected.begin() + static_cast<long>(at));
        }
        ASSERT_EQ(seq.size(), expected.size());
        if (round % 97 == 0) {
            ASSERT_EQ(Contents(seq), expected) << "after round " << round;
            for (std::size_t i = 0; i < expected.size(); i += 1 + rng() % 5) {
                ASSERT_EQ(seq[i], expected[i]) << "index " << i;
            }
        }
    }
    EXPECT_EQ(Contents(seq), expected);

    // Reads in a scattered order, with the remembered leaf in play.
    for (int k = 0; k < 2000 && !expected.empty(); ++k) {
        const std::size_t i = rng() % expected.size();
        ASSERT_EQ(seq[i], expected[i]);
    }
    const Small copy = seq;
    seq.clear();
    EXPECT_TRUE(seq.empty());
    EXPECT_EQ(Contents(copy), expected) << "a copy keeps its own nodes";
    seq.push_back(5);
    EXPECT_EQ(Contents(seq), std::vector<int>{5});
}

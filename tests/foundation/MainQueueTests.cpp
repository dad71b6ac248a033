#include "platform/foundation/MainQueue.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace corvane {
namespace {

using namespace std::chrono_literals;

TEST(MainQueue, RunsBlocksInTheOrderOfTheirTimes) {
    MainQueue queue;
    std::string ran;
    queue.advance(0s);
    queue.after(2s, [&] { ran += 'c'; });
    queue.after(1s, [&] { ran += 'a'; });
    queue.after(1s, [&] { ran += 'b'; });
    EXPECT_EQ(queue.timeUntilNextBlock(), TimeInterval(1s));
    EXPECT_EQ(queue.runDueBlocks(), 0);
    queue.advance(1s);
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(queue.timeUntilNextBlock(), TimeInterval(1s));
    queue.advance(1s);
    EXPECT_EQ(ran, "abc");
    EXPECT_EQ(queue.timeUntilNextBlock(), std::nullopt);
}

TEST(MainQueue, AdvancesThroughTheMomentsOfItsBlocks) {
    MainQueue queue;
    std::string ran;
    queue.advance(0s);
    queue.after(1s, [&] { queue.after(1s, [&] { ran += "inner "; }); });
    queue.after(2500ms, [&] { ran += "later "; });
    queue.advance(1900ms);
    EXPECT_EQ(ran, "");
    queue.advance(TimeInterval(0.1));  // all but exactly there, in binary
    EXPECT_EQ(ran, "inner ");
    for (int step = 0; step < 5; ++step) queue.advance(TimeInterval(0.1));
    EXPECT_EQ(ran, "inner later ");
}

TEST(MainQueue, DrainsWhatBlocksAdd) {
    MainQueue queue;
    std::string ran;
    queue.after(10h, [&] { ran += 'c'; });
    queue.after(1h, [&] {
        ran += 'a';
        queue.after(0s, [&] { ran += 'b'; });
    });
    queue.drain();
    EXPECT_EQ(ran, "abc");
}

TEST(MainQueue, EndsWhenABlockKeepsAddingItself) {
    MainQueue queue;
    std::function<void()> again = [&] { queue.after(0s, again); };
    again();
    queue.drain();
    EXPECT_GT(queue.runDueBlocks(), 1);
    queue.advance(1s);
    EXPECT_TRUE(queue.timeUntilNextBlock());
}

TEST(MainQueue, TellsItsHostOfEveryBlockWithABoundedWait) {
    MainQueue queue;
    int added = 0;
    queue.onBlockAdded = [&] { ++added; };
    queue.advance(0s);
    queue.after(TimeInterval(std::numeric_limits<double>::infinity()), [] {});
    EXPECT_LT(queue.timeUntilNextBlock(), TimeInterval(2'000'000));
    queue.after(TimeInterval(std::numeric_limits<double>::quiet_NaN()), [] {});
    EXPECT_EQ(queue.timeUntilNextBlock(), TimeInterval(0));
    queue.after(-5s, [] {});
    EXPECT_EQ(queue.runDueBlocks(), 2);
    EXPECT_EQ(added, 3);
}

}  // namespace
}  // namespace corvane

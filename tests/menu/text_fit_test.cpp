#include <gtest/gtest.h>

#include "menu/text_fit.h"

TEST(TextFit, LongTextIsCutWithAnEllipsisAndShortTextKept) {
    EXPECT_EQ(FitEnd("Grand Finale", 20), "Grand Finale");
    EXPECT_EQ(FitEnd("Grand Finale", 12), "Grand Finale");
    EXPECT_EQ(FitEnd("Grand Finale", 9), "Grand...");  // no blank before the dots
    EXPECT_EQ(FitEnd("Grand Finale", 2), "..");
    EXPECT_EQ(FitEnd("Grand Finale", 0), "");
    EXPECT_EQ(FitStart("/home/player/Media/levels", 12), "...ia/levels");
    EXPECT_EQ(FitStart("/levels", 12), "/levels");
}

TEST(TextFit, WrappingBreaksAtBlanksAndMarksWhatDidNotFit) {
    const auto lines = WrapWords("Turn the level over to bring the balls up into the goal.", 20, 5);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "Turn the level over");
    EXPECT_EQ(lines[2], "up into the goal.");
    for (const auto& line : lines) EXPECT_LE(line.size(), 20u);

    const auto cut = WrapWords("one two three four five six seven", 9, 2);
    ASSERT_EQ(cut.size(), 2u);
    EXPECT_EQ(cut[1], "three...");
    EXPECT_EQ(WrapWords("Supercalifragilistic", 8, 2), std::vector<std::string>{"Super..."});
    EXPECT_TRUE(WrapWords("   ", 8, 2).empty());
}

TEST(TextFit, TheCountOfCharactersFollowsTheirSize) {
    EXPECT_EQ(CharsThatFit(kNarrowAdvance * 0.03f * 10, 0.03f), 10);
    EXPECT_EQ(CharsThatFit(kNarrowAdvance * 0.03f * 10 - 0.001f, 0.03f), 9);
    EXPECT_EQ(CharsThatFit(0.5f, 0), 0);
}

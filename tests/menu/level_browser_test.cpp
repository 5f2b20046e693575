// The level browser driven frame by frame with made-up input, as the game's loop drives it.
#include <gtest/gtest.h>

#include "menu/level_browser.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;
using namespace browser_layout;

namespace {

// Appends step by step: GCC 12 warns wrongly about a + b + c on strings at -O3.
std::string LevelName(const char* stem, int number) {
    std::string name = stem;
    name += std::to_string(number);
    name += ".lvl";
    return name;
}

class LevelBrowserTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"a.lvl", "b.lvl", "c.lvl", "notes.txt", "pack/p1.lvl", "pack/p2.lvl"})
            WriteText(media / name, "<VelloranLevel/>");
    }
    LevelBrowser Open(const fs::path& folder) {
        return LevelBrowser(folder, [](const fs::path& file) { return LevelSummary{file.stem().string(), ""}; });
    }
    // One frame: the keys and button given are held; everything else is up.
    LevelBrowser::Outcome Frame(LevelBrowser& browser, BrowserInput in = {}) {
        now += 1.0 / 60;
        in.now = now;
        if (in.cursorX < 0) in.cursorX = cursorX, in.cursorY = cursorY;
        return browser.Step(in);
    }
    LevelBrowser::Outcome Key(LevelBrowser& browser, bool BrowserInput::*key) {
        BrowserInput in;
        in.*key = true;
        const auto held = Frame(browser, in);
        return held != LevelBrowser::Outcome::Open ? held : Frame(browser);
    }
    // A press and a release with the cursor at (x, y).
    LevelBrowser::Outcome Click(LevelBrowser& browser, float x, float y) {
        cursorX = x, cursorY = y;
        BrowserInput in;
        in.leftDown = true;
        Frame(browser, in);
        return Frame(browser);
    }
    static float RowY(int visibleRow) { return kListY + (float(visibleRow) + 0.5f) * kRowHeight; }
    std::string SelectedName(const LevelBrowser& browser) const {
        return browser.Listing().entries[size_t(browser.Selected())].fileName;
    }

    TempDir folder;
    fs::path media = folder.File("Media");
    double now = 0;
    float cursorX = 0.5f, cursorY = 0.02f;  // above the panel's parts
};

TEST_F(LevelBrowserTest, KeyboardWalksFoldersAndChoosesAFile) {
    LevelBrowser browser = Open(media);
    EXPECT_EQ(browser.Filter(), FileFilter::Levels);
    EXPECT_EQ(SelectedName(browser), "a.lvl") << "the first level is ready to open";
    EXPECT_EQ(Key(browser, &BrowserInput::up), LevelBrowser::Outcome::Open);
    EXPECT_EQ(SelectedName(browser), "pack");
    Key(browser, &BrowserInput::enter);
    EXPECT_EQ(browser.Listing().folder, media / "pack");
    EXPECT_EQ(SelectedName(browser), "p1.lvl");
    Key(browser, &BrowserInput::backspace);
    EXPECT_EQ(browser.Listing().folder, media);
    EXPECT_EQ(SelectedName(browser), "pack") << "coming back up keeps the folder just left";

    Key(browser, &BrowserInput::end);
    EXPECT_EQ(Key(browser, &BrowserInput::enter), LevelBrowser::Outcome::Chosen);
    EXPECT_EQ(browser.Chosen(), media / "c.lvl");
    EXPECT_TRUE(browser.Chosen().is_absolute());
}

TEST_F(LevelBrowserTest, HeldArrowRepeatsAfterAPauseAndTabShowsEveryFile) {
    for (int i = 0; i < 20; ++i) WriteText(media / LevelName("more", i), "");
    LevelBrowser browser = Open(media);
    const int first = browser.Selected();
    BrowserInput held;
    held.down = true;
    for (int frame = 0; frame < 20; ++frame) Frame(browser, held);  // a third of a second
    EXPECT_EQ(browser.Selected(), first + 1) << "no repeat before the pause";
    for (int frame = 0; frame < 30; ++frame) Frame(browser, held);
    EXPECT_GT(browser.Selected(), first + 5);
    EXPECT_GE(browser.Selected(), browser.Top());
    EXPECT_LT(browser.Selected(), browser.Top() + kVisibleRows) << "the list scrolls to keep the choice in view";

    EXPECT_EQ(Key(browser, &BrowserInput::pageDown), LevelBrowser::Outcome::Open);
    Key(browser, &BrowserInput::tab);
    EXPECT_EQ(browser.Filter(), FileFilter::All);
    bool notes = false;
    for (const FolderEntry& entry : browser.Listing().entries) notes |= entry.fileName == "notes.txt";
    EXPECT_TRUE(notes);
    EXPECT_EQ(Key(browser, &BrowserInput::escape), LevelBrowser::Outcome::Cancelled);
}

TEST_F(LevelBrowserTest, MouseSelectsWithAClickAndOpensWithADoubleClickOrTheButton) {
    LevelBrowser browser = Open(media);
    // The click that opened the browser is released over it: that is no click of its own.
    cursorX = kListX + 0.1f, cursorY = RowY(3);
    BrowserInput held;
    held.leftDown = true;
    browser.Step(held);
    EXPECT_EQ(Frame(browser), LevelBrowser::Outcome::Open);
    EXPECT_EQ(SelectedName(browser), "a.lvl");

    EXPECT_EQ(Click(browser, kListX + 0.1f, RowY(3)), LevelBrowser::Outcome::Open);  // "..", pack, a, b
    EXPECT_EQ(SelectedName(browser), "b.lvl");
    now += 1.0;  // too slow for a double click
    EXPECT_EQ(Click(browser, kListX + 0.1f, RowY(3)), LevelBrowser::Outcome::Open);
    EXPECT_EQ(Click(browser, kListX + 0.1f, RowY(3)), LevelBrowser::Outcome::Chosen);
    EXPECT_EQ(browser.Chosen(), media / "b.lvl");

    LevelBrowser again = Open(media);
    Frame(again);  // opened from the keyboard: the button is up from the start
    Click(again, kListX + 0.1f, RowY(4));
    EXPECT_EQ(Click(again, kOpenX + 0.01f, kButtonY + 0.01f), LevelBrowser::Outcome::Chosen);
    EXPECT_EQ(again.Chosen(), media / "c.lvl");

    LevelBrowser cancelled = Open(media);
    Frame(cancelled);
    EXPECT_EQ(Click(cancelled, kCancelX + kButtonWidth, kButtonY + kButtonHeight), LevelBrowser::Outcome::Cancelled)
        << "edges count";
}

TEST_F(LevelBrowserTest, WheelAndScrollBarMoveTheListAndTabsSwitchTheFilter) {
    for (int i = 0; i < 30; ++i) WriteText(media / LevelName("z", i), "");
    LevelBrowser browser = Open(media);
    BrowserInput wheel;
    wheel.wheel = -2;
    Frame(browser, wheel);
    EXPECT_EQ(browser.Top(), 6);
    wheel.wheel = 100;
    Frame(browser, wheel);
    EXPECT_EQ(browser.Top(), 0);

    // Dragging the bar's thumb to its foot shows the last rows.
    cursorX = kScrollX + kScrollWidth / 2, cursorY = kListY + 0.01f;
    BrowserInput drag;
    drag.leftDown = true;
    Frame(browser);
    Frame(browser, drag);
    drag.cursorX = cursorX, drag.cursorY = kListY + kRowHeight * kVisibleRows;
    Frame(browser, drag);
    EXPECT_EQ(browser.Top(), browser.RowCount() - kVisibleRows);
    Frame(browser);

    Click(browser, kAllTabX + 0.01f, kTabY + 0.01f);
    EXPECT_EQ(browser.Filter(), FileFilter::All);
    EXPECT_EQ(browser.Top(), 0);
    Click(browser, kLevelTabX + 0.01f, kTabY + 0.01f);
    EXPECT_EQ(browser.Filter(), FileFilter::Levels);
}

TEST_F(LevelBrowserTest, OnlyAFileThatStillExistsIsGiven) {
    LevelBrowser browser = Open(media);
    fs::remove(media / "a.lvl");
    EXPECT_EQ(Key(browser, &BrowserInput::enter), LevelBrowser::Outcome::Open);
    EXPECT_NE(browser.Message().find("a.lvl"), std::string::npos) << browser.Message();
    EXPECT_EQ(SelectedName(browser), "b.lvl") << "the list is read again";

    LevelBrowser missing = Open(media / "gone" / "deeper");
    EXPECT_EQ(missing.Listing().folder, media) << "a missing folder opens its nearest parent";
    EXPECT_NE(missing.Message().find("gone"), std::string::npos) << missing.Message();
}

}  // namespace

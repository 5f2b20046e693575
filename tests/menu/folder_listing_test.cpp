#include <gtest/gtest.h>

#include <set>

#include "menu/folder_listing.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

std::vector<std::string> Names(const FolderListing& listing) {
    std::vector<std::string> names;
    for (const FolderEntry& entry : listing.entries) names.push_back(entry.fileName);
    return names;
}

class FolderListingTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* name : {"b.lvl", "a10.lvl", "a2.lvl", "Z.LVL", "readme.txt", ".hidden.lvl", "Sub/x.lvl",
                                 "another/y.txt", "level.lvl.bak"})
            WriteText(root / name, "<VelloranLevel/>");
    }
    // Names the levels it is asked about, and remembers which those were.
    LevelDescriber Describer() {
        return [this](const fs::path& file) -> LevelSummary {
            described.insert(file.filename().string());
            if (file.filename() == "b.lvl") return {"Bumpers", "Past the bumpers."};
            return {"", ""};
        };
    }

    TempDir folder;
    fs::path root = folder.File("Media");
    std::set<std::string> described;
};

TEST_F(FolderListingTest, LevelsFilterShowsParentFoldersAndLevelsInNaturalOrder) {
    const FolderListing listing = ListFolder(root, FileFilter::Levels, Describer());
    EXPECT_TRUE(listing.error.empty()) << listing.error;
    EXPECT_EQ(Names(listing),
              (std::vector<std::string>{"..", "another", "Sub", "a2.lvl", "a10.lvl", "b.lvl", "Z.LVL"}));
    EXPECT_EQ(listing.entries[1].kind, FolderEntry::Folder);
    EXPECT_EQ(listing.entries[1].title, "another/");
    EXPECT_EQ(listing.entries[5].title, "Bumpers");
    EXPECT_EQ(listing.entries[5].description, "Past the bumpers.");
    EXPECT_EQ(listing.entries[3].title, "a2.lvl") << "a level without a name shows its file name";
    EXPECT_EQ(described, (std::set<std::string>{"a2.lvl", "a10.lvl", "b.lvl", "Z.LVL"}));
}

TEST_F(FolderListingTest, AllFilterAddsEveryFileButDescribesOnlyLevels) {
    const FolderListing listing = ListFolder(root / "." / "Sub" / "..", FileFilter::All, Describer());
    EXPECT_EQ(listing.folder, fs::path(root)) << "the folder is shown in its plain form";
    EXPECT_EQ(Names(listing), (std::vector<std::string>{"..", "another", "Sub", "a2.lvl", "a10.lvl", "b.lvl",
                                                        "level.lvl.bak", "readme.txt", "Z.LVL"}));
    EXPECT_EQ(described.count("readme.txt"), 0u);
}

TEST_F(FolderListingTest, AFolderThatCannotBeReadSaysSoAndStillOffersTheWayUp) {
    for (const fs::path& bad : {root / "missing", root / "readme.txt"}) {
        const FolderListing listing = ListFolder(bad, FileFilter::Levels, Describer());
        EXPECT_NE(listing.error.find("Cannot read the folder"), std::string::npos) << listing.error;
        EXPECT_NE(listing.error.find(bad.filename().string()), std::string::npos) << listing.error;
        EXPECT_EQ(Names(listing), std::vector<std::string>{".."});
    }
    EXPECT_EQ(ListFolder("/", FileFilter::Levels, nullptr).entries.front().kind, FolderEntry::Folder)
        << "the root has no parent";
}

TEST(NaturalOrder, NumbersCompareByValueAndLettersIgnoreCase) {
    EXPECT_TRUE(NaturalLess("level2", "Level10"));
    EXPECT_FALSE(NaturalLess("level10", "level2"));
    EXPECT_TRUE(NaturalLess("a", "B"));
    EXPECT_TRUE(NaturalLess("x007", "x8"));
    EXPECT_TRUE(NaturalLess("x", "x1"));
    EXPECT_NE(NaturalLess("Intro", "intro"), NaturalLess("intro", "Intro")) << "a fixed order for names equal but for case";
    EXPECT_TRUE(IsLevelFileName("a.LvL"));
    EXPECT_FALSE(IsLevelFileName("lvl"));
    EXPECT_FALSE(IsLevelFileName("a.lvl.bak"));
}

}  // namespace

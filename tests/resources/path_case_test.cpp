#include "resources/path_case.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

void Touch(const fs::path& path) { WriteText(path, "x"); }

class PathCaseTest : public ::testing::Test {
protected:
    std::string At(const fs::path& relative) const { return (base / relative).string(); }

    TempDir dir;
    fs::path base = fs::path(dir.File("")).parent_path();
};

TEST_F(PathCaseTest, WrongCaseComponentsResolveToTheNamesOnDisk) {
    Touch(base / "Media" / "x.tga");
    Touch(base / "Levels" / "Set One" / "Start.LVL");
    EXPECT_EQ(ResolvePathCase(At("Media/x.tga")), At("Media/x.tga"));
    EXPECT_EQ(ResolvePathCase(At("Media")), At("Media"));
    // How level files and the media folder list name things.
    EXPECT_EQ(ResolvePathCase(At("media/x.tga")), At("Media/x.tga"));
    EXPECT_EQ(ResolvePathCase(At("MEDIA/X.TGA")), At("Media/x.tga"));
    // Every level of nesting, a folder as well as a file.
    EXPECT_EQ(ResolvePathCase(At("levels/SET ONE/start.lvl")), At("Levels/Set One/Start.LVL"));
    EXPECT_EQ(ResolvePathCase(At("LEVELS/set one")), At("Levels/Set One"));
}

TEST_F(PathCaseTest, NothingMatchingGivesAnEmptyPath) {
    Touch(base / "Levels" / "a.lvl");
    EXPECT_EQ(ResolvePathCase(At("levels/b.lvl")), "");
    EXPECT_EQ(ResolvePathCase(At("lev/a.lvl")), "") << "a prefix is not a match";
    EXPECT_EQ(ResolvePathCase(At("levelsx/a.lvl")), "");
    EXPECT_EQ(ResolvePathCase(At("levels/a.lvl/more")), "");
    EXPECT_EQ(ResolvePathCase(""), "");
}

TEST_F(PathCaseTest, ExactNameWinsOverCaseMatchesThenFirstInNameOrder) {
    Touch(base / "media" / "x");
    Touch(base / "Media" / "x");
    Touch(base / "MEDIA" / "x");
    EXPECT_EQ(ResolvePathCase(At("Media/x")), At("Media/x"));
    EXPECT_EQ(ResolvePathCase(At("mEdia/x")), At("MEDIA/x"));
}

TEST_F(PathCaseTest, RelativePathsResolveFromTheCurrentDirectory) {
    Touch(base / "Media" / "x.tga");
    const fs::path previous = fs::current_path();
    fs::current_path(base);
    const std::string resolved = ResolvePathCase("media/x.tga");
    const std::string dotted = ResolvePathCase("./media/x.tga");
    fs::current_path(previous);

    EXPECT_EQ(resolved, "Media/x.tga");
    EXPECT_EQ(dotted, "./Media/x.tga");
}

}  // namespace

#include "resources/resource_manager.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

// How the fakes of one test behave; shared so a test can change it between loads.
struct FakeSettings {
    int32_t size = 100;
    bool fail = false;
    int created = 0;
};

class FakeResource final : public Resource {
public:
    FakeResource(const std::string& path, const std::string& name, ILoadListener* listener, FakeSettings& settings)
        : Resource(path, name, listener), settings(settings) {}

    int32_t Load(const std::string&) override {
        ++loads;
        return settings.fail ? -1 : settings.size;
    }
    void Unload() override { ++unloads; }

    FakeSettings& settings;
    int loads = 0;
    int unloads = 0;
};

class ResourceManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (ResourceType type : {ResourceTexture2D, ResourceTextureCube, ResourceSound, ResourceSound3D})
            manager.SetFactory(type, [this](const std::string& path, const std::string& name, ILoadListener* listener) {
                ++settings.created;
                return std::make_unique<FakeResource>(path, name, listener, settings);
            });
        manager.SetClock([this] { return now; });
    }

    std::string Touch(const std::string& relative) {
        WriteText(Base() / relative, "x");
        return (Base() / relative).string();
    }
    FakeResource* Get(ResourceType type, const std::string& name) {
        return static_cast<FakeResource*>(manager.Get(type, name));
    }
    fs::path Base() const { return fs::path(dir.File("")).parent_path(); }

    TempDir dir;
    FakeSettings settings;
    ResourceManager manager{dir.File("")};
    double now = 1.0;
};

TEST_F(ResourceManagerTest, SameNameGivesTheSameObjectSearchedAndLoadedOnce) {
    Touch("media/ball.tga");
    FakeResource* first = Get(ResourceTexture2D, "ball");
    ASSERT_NE(first, nullptr);
    // Once known, a name is not looked for on disk again.
    fs::remove(Base() / "media" / "ball.tga");
    EXPECT_EQ(Get(ResourceTexture2D, "ball"), first);
    EXPECT_EQ(settings.created, 1);
    EXPECT_EQ(first->loads, 1);
    EXPECT_TRUE(first->IsLoaded());
    EXPECT_EQ(manager.Used(), 100);
}

TEST_F(ResourceManagerTest, NothingIsKeptForAMissingFileOrAFactoryThatMakesNothing) {
    EXPECT_EQ(Get(ResourceTexture2D, "late"), nullptr);
    EXPECT_EQ(settings.created, 0);
    Touch("media/late.tga");
    ASSERT_NE(Get(ResourceTexture2D, "late"), nullptr) << "a file may appear later";

    ResourceManager bare{Base().string()};
    EXPECT_EQ(bare.Get(ResourceSound, "late"), nullptr) << "a type without a factory finds nothing";
    Touch("media/rock.tga");
    manager.SetFactory(ResourceTexture2D, [](auto&&...) { return std::unique_ptr<Resource>(); });
    EXPECT_EQ(Get(ResourceTexture2D, "rock"), nullptr);
}

TEST_F(ResourceManagerTest, FilesAreFoundByTypeInTheMediaFolderWhateverItsCaseAndInAddedFolders) {
    EXPECT_EQ(Get(ResourceTextureCube, "sky"), nullptr);
    Touch("Media/sky.tga");
    const std::string posx = Touch("Media/sky_posx.tga");
    ASSERT_NE(Get(ResourceTextureCube, "sky"), nullptr);
    EXPECT_EQ(Get(ResourceTextureCube, "sky")->Path(), posx) << "a cube is found by its +x face";
    EXPECT_EQ(manager.FindFile(ResourceTexture2D, "SKY"), (Base() / "Media" / "sky.tga").string());

    const std::string a = Touch("extra/a.tga"), b = Touch("more/b.tga"), c = Touch("c.tga");
    manager.AddFolder(ResourceTexture2D, "extra");
    manager.AddFolder(ResourceTexture2D, "more/");
    manager.AddFolder(ResourceTexture2D, "");
    EXPECT_EQ(manager.FindFile(ResourceTexture2D, "a"), a);
    EXPECT_EQ(manager.FindFile(ResourceTexture2D, "b"), b);
    EXPECT_EQ(fs::path(manager.FindFile(ResourceTexture2D, "c")), fs::path(c)) << "an empty folder is the base";
    EXPECT_EQ(manager.FindFile(ResourceTextureCube, "a"), "") << "folders are per type";
}

TEST_F(ResourceManagerTest, SoundsAreWavFilesKeptApartPerTypeButUnderOneBudget) {
    const std::string wav = Touch("media/bang.wav"), tga = Touch("media/bang.tga");
    manager.SetBudget(1000);
    settings.size = 600;
    FakeResource* flat = Get(ResourceSound, "bang");
    ASSERT_NE(flat, nullptr);
    EXPECT_EQ(flat->Path(), wav);
    now += 1;
    FakeResource* placed = Get(ResourceSound3D, "bang");
    ASSERT_NE(placed, nullptr);
    EXPECT_NE(placed, flat);
    EXPECT_FALSE(flat->IsLoaded());

    // A texture evicts the older sound, whatever the type.
    now += 1;
    EXPECT_EQ(Get(ResourceTexture2D, "bang")->Path(), tga);
    EXPECT_FALSE(placed->IsLoaded());
    EXPECT_EQ(manager.Used(), 600);
}

TEST_F(ResourceManagerTest, FailedLoadIsKeptUnloadedAndRetriedOnEveryUse) {
    Touch("media/broken.tga");
    settings.fail = true;
    FakeResource* broken = Get(ResourceTexture2D, "broken");
    ASSERT_NE(broken, nullptr);
    EXPECT_FALSE(broken->IsLoaded());
    broken->MarkUsed();
    broken->MarkUsed();
    EXPECT_EQ(broken->loads, 3);
    EXPECT_EQ(manager.Used(), 0);
    EXPECT_EQ(Get(ResourceTexture2D, "broken"), broken);

    settings.fail = false;
    broken->MarkUsed();
    broken->MarkUsed();
    EXPECT_TRUE(broken->IsLoaded());
    EXPECT_EQ(broken->loads, 4);
    EXPECT_EQ(manager.Used(), 100);
}

TEST_F(ResourceManagerTest, OverBudgetTheLeastRecentlyUsedIsUnloaded) {
    for (const char* name : {"a", "b", "c"}) Touch(std::string("media/") + name + ".tga");
    manager.SetBudget(1000);
    settings.size = 600;
    FakeResource* a = Get(ResourceTexture2D, "a");
    now += 1;
    FakeResource* b = Get(ResourceTexture2D, "b");
    EXPECT_FALSE(a->IsLoaded());
    EXPECT_EQ(a->unloads, 1);
    now += 1;
    FakeResource* c = Get(ResourceTexture2D, "c");
    EXPECT_FALSE(b->IsLoaded());
    EXPECT_TRUE(c->IsLoaded());

    now += 1;
    a->MarkUsed();
    EXPECT_TRUE(a->IsLoaded());
    EXPECT_EQ(a->loads, 2);
    EXPECT_FALSE(c->IsLoaded());
    EXPECT_EQ(b->unloads + c->unloads, 2);
    EXPECT_EQ(manager.Used(), 600);
}

TEST_F(ResourceManagerTest, AResourceLargerThanTheWholeBudgetPushesOutEverythingItselfLast) {
    Touch("media/small.tga");
    Touch("media/huge.tga");
    manager.SetBudget(1000);
    FakeResource* small = Get(ResourceTexture2D, "small");
    now += 1;
    settings.size = 5000;
    FakeResource* huge = Get(ResourceTexture2D, "huge");
    ASSERT_NE(huge, nullptr);
    EXPECT_EQ(small->unloads, 1);
    EXPECT_FALSE(huge->IsLoaded()) << "nothing stays over the budget, not even the newest";
    EXPECT_EQ(huge->unloads, 1);
    EXPECT_EQ(manager.Used(), 0);

    // Every use reads it again, and lets it go again.
    now += 1;
    huge->MarkUsed();
    EXPECT_EQ(huge->loads, 2);
    EXPECT_EQ(huge->unloads, 2);
    EXPECT_EQ(manager.Used(), 0);
    EXPECT_EQ(small->loads, 1);
}

}  // namespace

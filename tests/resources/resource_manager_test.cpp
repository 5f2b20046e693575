#include "resources/resource_manager.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "tests/support/tga_bytes.h"

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

FakeResource* AsFake(Resource* resource) { return static_cast<FakeResource*>(resource); }

void Touch(const fs::path& path) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << "x";
}

class ResourceManagerTest : public ::testing::Test {
protected:
    void SetUp() override {
        for (ResourceType type : {ResourceTexture2D, ResourceTextureCube, ResourceSound, ResourceSound3D})
            manager.SetFactory(type, [this](const std::string& path, const std::string& name, ILoadListener* listener) {
                ++settings.created;
                return std::make_unique<FakeResource>(path, name, listener, settings);
            });
    }

    fs::path Base() const { return fs::path(dir.File("")).parent_path(); }

    TempDir dir;
    FakeSettings settings;
    ResourceManager manager{dir.File("")};
};

TEST_F(ResourceManagerTest, SameNameGivesTheSameObjectSearchedAndLoadedOnce) {
    Touch(Base() / "media" / "ball.tga");
    Resource* first = manager.Get(ResourceTexture2D, "ball");
    ASSERT_NE(first, nullptr);
    // Once known, a name is not looked for on disk again.
    fs::remove(Base() / "media" / "ball.tga");
    EXPECT_EQ(manager.Get(ResourceTexture2D, "ball"), first);
    EXPECT_EQ(settings.created, 1);
    EXPECT_EQ(AsFake(first)->loads, 1);
    EXPECT_TRUE(first->IsLoaded());
    EXPECT_EQ(first->Name(), "ball");
    EXPECT_EQ(manager.Used(), 100);
}

TEST_F(ResourceManagerTest, MissingFileIsNotCachedSoItCanAppearLater) {
    EXPECT_EQ(manager.Get(ResourceTexture2D, "late"), nullptr);
    EXPECT_EQ(settings.created, 0);

    Touch(Base() / "media" / "late.tga");
    Resource* found = manager.Get(ResourceTexture2D, "late");
    ASSERT_NE(found, nullptr);
    EXPECT_TRUE(found->IsLoaded());

    ResourceManager bare{Base().string()};
    EXPECT_EQ(bare.Get(ResourceSound, "late"), nullptr) << "a type without a factory finds nothing";
}

TEST_F(ResourceManagerTest, CubeTexturesAreFoundByTheirPositiveXFace) {
    Touch(Base() / "media" / "sky_posx.tga");
    Touch(Base() / "media" / "sky.tga");
    Resource* sky = manager.Get(ResourceTextureCube, "sky");
    ASSERT_NE(sky, nullptr);
    EXPECT_EQ(sky->Path(), (Base() / "media" / "sky_posx.tga").string());
}

TEST_F(ResourceManagerTest, SoundsAreWavFilesKeptApartPerTypeButUnderOneBudget) {
    double now = 1.0;
    manager.SetClock([&now] { return now; });
    Touch(Base() / "media" / "bang.wav");
    Touch(Base() / "media" / "bang.tga");
    manager.SetBudget(1000);
    settings.size = 600;

    Resource* flat = manager.Get(ResourceSound, "bang");
    ASSERT_NE(flat, nullptr);
    EXPECT_EQ(flat->Path(), (Base() / "media" / "bang.wav").string());
    now += 1;
    Resource* placed = manager.Get(ResourceSound3D, "bang");
    ASSERT_NE(placed, nullptr);
    EXPECT_NE(placed, flat);
    EXPECT_FALSE(flat->IsLoaded());

    // A texture evicts the older sound, whatever the type.
    now += 1;
    Resource* texture = manager.Get(ResourceTexture2D, "bang");
    ASSERT_NE(texture, nullptr);
    EXPECT_EQ(texture->Path(), (Base() / "media" / "bang.tga").string());
    EXPECT_FALSE(placed->IsLoaded());
    EXPECT_EQ(manager.Used(), 600);
}

TEST_F(ResourceManagerTest, MediaFolderIsFoundWhateverItsCase) {
    Touch(Base() / "Media" / "rock.tga");
    Resource* rock = manager.Get(ResourceTexture2D, "rock");
    ASSERT_NE(rock, nullptr);
    EXPECT_EQ(rock->Path(), (Base() / "Media" / "rock.tga").string());
    EXPECT_EQ(manager.FindFile(ResourceTexture2D, "ROCK"), (Base() / "Media" / "rock.tga").string());
}

TEST_F(ResourceManagerTest, AddedFoldersGetOneTrailingSlash) {
    Touch(Base() / "extra" / "a.tga");
    Touch(Base() / "more" / "b.tga");
    manager.AddFolder(ResourceTexture2D, "extra");
    manager.AddFolder(ResourceTexture2D, "more/");
    EXPECT_EQ(manager.FindFile(ResourceTexture2D, "a"), (Base() / "extra" / "a.tga").string());
    EXPECT_EQ(manager.FindFile(ResourceTexture2D, "b"), (Base() / "more" / "b.tga").string());
    EXPECT_EQ(manager.FindFile(ResourceTextureCube, "a"), "") << "folders are per type";

    Touch(Base() / "c.tga");
    manager.AddFolder(ResourceTexture2D, "");
    EXPECT_EQ(fs::path(manager.FindFile(ResourceTexture2D, "c")), Base() / "c.tga")
        << "an empty folder is the base directory, not the root";
}

TEST_F(ResourceManagerTest, AFactoryThatMakesNothingGivesNothing) {
    Touch(Base() / "media" / "rock.tga");
    manager.SetFactory(ResourceTexture2D, [](const std::string&, const std::string&, ILoadListener*) {
        return std::unique_ptr<Resource>();
    });
    EXPECT_EQ(manager.Get(ResourceTexture2D, "rock"), nullptr);
}

TEST_F(ResourceManagerTest, FailedLoadIsKeptUnloadedAndRetriedOnEveryUse) {
    Touch(Base() / "media" / "broken.tga");
    settings.fail = true;
    Resource* broken = manager.Get(ResourceTexture2D, "broken");
    ASSERT_NE(broken, nullptr);
    EXPECT_FALSE(broken->IsLoaded());
    EXPECT_EQ(AsFake(broken)->loads, 1);

    broken->MarkUsed();
    broken->MarkUsed();
    EXPECT_EQ(AsFake(broken)->loads, 3);
    EXPECT_EQ(manager.Used(), 0);
    EXPECT_EQ(manager.Get(ResourceTexture2D, "broken"), broken);

    settings.fail = false;
    broken->MarkUsed();
    EXPECT_TRUE(broken->IsLoaded());
    EXPECT_EQ(manager.Used(), 100);
    broken->MarkUsed();
    EXPECT_EQ(AsFake(broken)->loads, 4);
}

TEST_F(ResourceManagerTest, OverBudgetTheLeastRecentlyUsedIsUnloaded) {
    double now = 1.0;
    manager.SetClock([&now] { return now; });
    for (const char* name : {"a", "b", "c"}) Touch(Base() / "media" / (std::string(name) + ".tga"));
    manager.SetBudget(1000);
    settings.size = 600;

    FakeResource* a = AsFake(manager.Get(ResourceTexture2D, "a"));
    EXPECT_EQ(manager.Used(), 600);
    now += 1;
    FakeResource* b = AsFake(manager.Get(ResourceTexture2D, "b"));
    EXPECT_FALSE(a->IsLoaded());
    EXPECT_TRUE(b->IsLoaded());
    EXPECT_EQ(a->unloads, 1);
    EXPECT_EQ(manager.Used(), 600);
    now += 1;
    FakeResource* c = AsFake(manager.Get(ResourceTexture2D, "c"));
    EXPECT_FALSE(b->IsLoaded());
    EXPECT_TRUE(c->IsLoaded());
    EXPECT_EQ(manager.Used(), 600);

    now += 1;
    a->MarkUsed();
    EXPECT_TRUE(a->IsLoaded());
    EXPECT_EQ(a->loads, 2);
    EXPECT_FALSE(c->IsLoaded());
    EXPECT_EQ(c->unloads, 1);
    EXPECT_EQ(b->unloads, 1);
    EXPECT_EQ(manager.Used(), 600);
}

}  // namespace

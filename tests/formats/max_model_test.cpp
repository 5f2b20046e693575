#include "formats/max_model.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tools/mediagen/max_writer.h"

using mediagen::MaxChunkBytes;
using mediagen::MaxObject;
using mediagen::WriteMaxFile;

namespace {

void ExpectNear(const Vector3& actual, const Vector3& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-6f);
    EXPECT_NEAR(actual.y, expected.y, 1e-6f);
    EXPECT_NEAR(actual.z, expected.z, 1e-6f);
}

// A unit square in z = 0, counter-clockwise seen from +z.
MaxObject Square(const std::string& name, bool textured) {
    MaxObject square{.name = name,
                     .vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}},
                     .faces = {{0, 1, 2}, {0, 2, 3}}};
    if (textured) square.texCoords = {{0, 0}, {1, 0}, {1, 0.25f}, {0, 0.25f}};
    return square;
}

MaxObject Triangle3(const std::string& name) {
    return {.name = name, .vertices = {{0, 0, 5}, {0, 2, 5}, {0, 0, 7}}, .faces = {{0, 1, 2}}};
}

// Where WriteMaxFile puts the chunks of a file whose first object is `first`.
struct Layout {
    explicit Layout(const MaxObject& first)
        : mesh(32 + 6 + first.name.size() + 1), vertexList(mesh + 6),
          faceList(vertexList + 8 + 12 * first.vertices.size()) {}
    size_t mesh, vertexList, faceList;
};

void PutLength(std::vector<uint8_t>& bytes, size_t chunk, uint32_t length) {
    for (int i = 0; i < 4; ++i) bytes[chunk + 2 + i] = uint8_t(length >> (8 * i));
}

uint32_t LengthAt(const std::vector<uint8_t>& bytes, size_t chunk) {
    return bytes[chunk + 2] | bytes[chunk + 3] << 8 | bytes[chunk + 4] << 16 | uint32_t(bytes[chunk + 5]) << 24;
}

std::vector<uint8_t> Join(std::vector<uint8_t> a, const std::vector<uint8_t>& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

class MaxModelTest : public ::testing::Test {
protected:
    std::string Write(const std::vector<uint8_t>& bytes, const std::string& name = "model.3DS") {
        const std::string path = dir.File(name);
        WriteBytes(path, bytes);
        return path;
    }
    TempDir dir;
};

TEST_F(MaxModelTest, ReadsATexturedMeshAsItIsStored) {
    MaxModel model;
    ASSERT_TRUE(model.Load(Write(WriteMaxFile({Square("Floor", true)})))) << model.LoadError();
    EXPECT_EQ(model.LoadError(), "");
    ASSERT_EQ(model.GetSubModelCount(), 1u);
    const SubModel& sub = model.GetSubModel(0);
    EXPECT_EQ(sub.renderMode, 2) << "drawn textured";
    ASSERT_EQ(sub.vertices.size(), 4u);
    ExpectNear(sub.vertices[2], {1, 1, 0});
    ASSERT_EQ(sub.triangles.size(), 2u);
    EXPECT_TRUE(sub.triangles[1].a == 0 && sub.triangles[1].b == 2 && sub.triangles[1].c == 3);
    ASSERT_EQ(sub.texCoords.size(), 4u);
    EXPECT_EQ(sub.texCoords[2].u, 1.0f);
    EXPECT_EQ(sub.texCoords[2].v, 0.25f) << "v is not flipped";
    ASSERT_EQ(sub.normals.size(), 4u);
    for (const Vector3& normal : sub.normals) ExpectNear(normal, {0, 0, 1});
}

TEST_F(MaxModelTest, ObjectsBecomeSubModelsThatIndexTheirOwnVertices) {
    // A light first, an untextured mesh whose trailing chunk must be read past, and a textured
    // one whose trailing chunk is skipped with the rest of the mesh.
    MaxObject first = Triangle3("Wedge");
    first.meshChunks = {{0x4160, std::vector<uint8_t>(48, 0)}};
    MaxObject second = Square("Floor", true);
    second.meshChunks = {{0x4165, {1}}};
    std::vector<uint8_t> bytes = WriteMaxFile({mediagen::MaxLight("Sun", {0, 10, 0}), first, second});
    // Keyframe data after the editor data is not looked into, even when it holds a mesh.
    const std::vector<uint8_t> ghostFile = WriteMaxFile({Triangle3("Ghost")});
    const std::vector<uint8_t> ghost(ghostFile.begin() + 32, ghostFile.end());
    bytes = Join(bytes, MaxChunkBytes(0xB000, ghost));
    PutLength(bytes, 0, uint32_t(bytes.size()));

    MaxModel model;
    ASSERT_TRUE(model.Load(Write(bytes))) << model.LoadError();
    ASSERT_EQ(model.GetSubModelCount(), 2u);
    const SubModel& wedge = model.GetSubModel(0);
    EXPECT_EQ(wedge.vertices.size(), 3u);
    EXPECT_EQ(wedge.texCoords.size(), 3u);
    for (const TexCoord& t : wedge.texCoords) EXPECT_TRUE(t.u == 0 && t.v == 0);
    ExpectNear(wedge.normals[0], {1, 0, 0});
    const SubModel& floor = model.GetSubModel(1);
    EXPECT_EQ(floor.vertices.size(), 4u);
    EXPECT_EQ(floor.triangles[0].a, 0u) << "indices are not offset by the earlier object's vertices";
    EXPECT_EQ(floor.texCoords[1].u, 1.0f);

    MaxModel empty;
    EXPECT_TRUE(empty.Load(Write(WriteMaxFile({mediagen::MaxLight("Sun", {0, 0, 0})}), "light.3DS")));
    EXPECT_EQ(empty.GetSubModelCount(), 0u);
}

struct BadFile {
    const char* label;
    std::vector<uint8_t> bytes;
    std::string reason;
};

TEST_F(MaxModelTest, RejectsBrokenFilesAndSaysWhy) {
    const MaxObject triangle = Triangle3("Wedge");
    const std::vector<uint8_t> good = WriteMaxFile({triangle});
    const Layout at(triangle);
    const uint32_t vertexListLength = LengthAt(good, at.vertexList);  // 8 + 36

    auto patched = [&](size_t chunk, uint32_t length) {
        std::vector<uint8_t> bytes = good;
        PutLength(bytes, chunk, length);
        return bytes;
    };
    std::vector<uint8_t> tooManyVertices = good;
    tooManyVertices[at.vertexList + 6] = 4;
    MaxObject badIndex = Square("Floor", false);
    badIndex.faces[1] = {0, 3, 9};

    const std::vector<uint8_t> version = MaxChunkBytes(0x0002, {3, 0, 0, 0});
    std::vector<uint8_t> oneVertex(14, 0);
    oneVertex[0] = 1;
    const std::vector<uint8_t> vertexOnly = MaxChunkBytes(0x4110, oneVertex);
    const auto inEditor = [](const std::vector<uint8_t>& object) {
        return MaxChunkBytes(0x4D4D, MaxChunkBytes(0x3D3D, MaxChunkBytes(0x4000, object)));
    };

    const std::vector<BadFile> cases = {
        {"empty", {}, "does not start with a main chunk (0x4D4D)"},
        {"no editor data", MaxChunkBytes(0x4D4D, version), "no editor data chunk (0x3D3D)"},
        // Stepping back over it would find the editor data, or loop for ever.
        {"zero-length chunk before the editor data",
         MaxChunkBytes(0x4D4D, Join({2, 0, 0, 0, 0, 0}, MaxChunkBytes(0x3D3D, {}))), "no editor data chunk"},
        {"unterminated name", inEditor({'W', 'e', 'd', 'g', 'e'}), "name of object 1 has no terminating zero"},
        {"face out of range", WriteMaxFile({triangle, badIndex}),
         "object 2: face 1 uses vertex 9 but the mesh has 4 vertices"},
        {"vertex count beyond its chunk", tooManyVertices, "vertex list of 4 entries does not fit its 44-byte chunk"},
        {"vertex list beyond the mesh", patched(at.vertexList, vertexListLength + 100),
         "the chunks of a triangle mesh take 144 bytes but the mesh has 70"},
        {"zero-length face list", patched(at.faceList, 0), "chunk 0x4120 in a triangle mesh claims 0 bytes"},
        {"no face list", inEditor(Join({'V', 0}, MaxChunkBytes(0x4100, vertexOnly))),
         "object 1: the triangle mesh has no face list"},
    };
    for (const BadFile& bad : cases) {
        SCOPED_TRACE(bad.label);
        const std::string path = Write(bad.bytes, std::string(bad.label) + ".3DS");
        MaxModel model;
        EXPECT_FALSE(model.Load(path));
        EXPECT_EQ(model.LoadError().rfind(path + ": ", 0), 0u) << model.LoadError();
        EXPECT_NE(model.LoadError().find(bad.reason), std::string::npos) << model.LoadError();
    }

    MaxModel missing;
    EXPECT_FALSE(missing.Load(dir.File("missing.3DS")));
    EXPECT_EQ(missing.LoadError(), dir.File("missing.3DS") + ": cannot open file");
    MaxModel folder;
    EXPECT_FALSE(folder.Load(dir.File("")));
    EXPECT_NE(folder.LoadError().find("cannot read file"), std::string::npos) << folder.LoadError();
}

TEST_F(MaxModelTest, TruncatedFilesNeverReadPastTheEnd) {
    MaxObject wedge = Triangle3("Wedge");
    wedge.meshChunks = {{0x4160, std::vector<uint8_t>(48, 0)}};
    const std::vector<uint8_t> full = WriteMaxFile({wedge, Square("Floor", true)});
    const std::string path = dir.File("cut.3DS");
    int loaded = 0;
    for (size_t size = 0; size < full.size(); ++size) {
        SCOPED_TRACE(size);
        WriteBytes(path, std::vector<uint8_t>(full.begin(), full.begin() + std::ptrdiff_t(size)));
        MaxModel model;
        if (!model.Load(path)) {
            EXPECT_EQ(model.LoadError().rfind(path + ": ", 0), 0u) << model.LoadError();
            continue;
        }
        // A cut between objects, or after a mesh's last list, loses only what is missing.
        ++loaded;
        ASSERT_LE(model.GetSubModelCount(), 2u);
        for (const SubModel& sub : model.subModels) {
            EXPECT_EQ(sub.normals.size(), sub.vertices.size());
            EXPECT_EQ(sub.texCoords.size(), sub.vertices.size());
            EXPECT_FALSE(sub.triangles.empty());
        }
    }
    EXPECT_GT(loaded, 0);
    WriteBytes(path, full);
    MaxModel whole;
    EXPECT_TRUE(whole.Load(path)) << whole.LoadError();
    EXPECT_EQ(whole.GetSubModelCount(), 2u);
}

TEST(ModelTest, NormalsAverageFaceDirectionsWhateverTheirArea) {
    Model model;
    SubModel& sub = model.AddSubModel();
    // A large face facing +z and a small one facing +x share vertex 0; a degenerate face on
    // its own vertices leaves them without a normal.
    sub.AddVertex(0, 0, 0);
    sub.AddVertex(10, 0, 0);
    sub.AddVertex(0, 10, 0);
    sub.AddVertex(0, 0.1f, 0);
    sub.AddVertex(0, 0, 0.1f);
    sub.AddVertex(1, 1, 1);
    sub.AddVertex(2, 2, 2);
    sub.AddTriangle(0, 1, 2);
    sub.AddTriangle(0, 3, 4);
    sub.AddTriangle(5, 6, 5);
    sub.AddNormal(9, 9, 9);  // stale normals are replaced
    model.ComputeNormals();

    ASSERT_EQ(sub.normals.size(), 7u);
    const float half = std::sqrt(0.5f);
    ExpectNear(sub.normals[0], {half, 0, half});
    ExpectNear(sub.normals[1], {0, 0, 1});
    ExpectNear(sub.normals[4], {1, 0, 0});
    ExpectNear(sub.normals[5], {0, 0, 0});
}

}  // namespace

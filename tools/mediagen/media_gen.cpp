#include "tools/mediagen/media_gen.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "tools/mediagen/class_models.h"
#include "tools/mediagen/dialogues.h"
#include "tools/mediagen/font_sheet.h"
#include "tools/mediagen/level_files.h"
#include "tools/mediagen/level_textures.h"
#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"
#include "tools/mediagen/track_source.h"

namespace mediagen {

namespace fs = std::filesystem;

namespace {

std::string Shown(const fs::path& outDir, const std::string& name) { return (outDir.filename() / name).string(); }

void Write(const fs::path& outDir, const std::string& name, const Picture& picture, std::ostream& progress) {
    WriteTga(outDir / name, picture);
    progress << "mediagen: wrote " << Shown(outDir, name) << " (" << picture.width << "x" << picture.height << ", "
             << picture.Depth() << "-bit)\n";
}

// Through a temporary file, like the textures, so a failed run never leaves half a file.
void WriteFile(const fs::path& path, const void* data, size_t size) {
    fs::path partial = path;
    partial += ".partial";
    {
        std::ofstream file(partial, std::ios::binary | std::ios::trunc);
        file.write(static_cast<const char*>(data), std::streamsize(size));
        if (!file) throw MediaError(path.string() + ": cannot write file");
    }
    std::error_code error;
    fs::rename(partial, path, error);
    if (error) throw MediaError(path.string() + ": cannot write file (" + error.message() + ")");
}

void Write(const fs::path& outDir, const std::string& name, const std::vector<MaxObject>& objects,
           std::ostream& progress) {
    const std::vector<uint8_t> bytes = WriteMaxFile(objects);
    WriteFile(outDir / name, bytes.data(), bytes.size());
    size_t vertices = 0, faces = 0;
    for (const MaxObject& object : objects) {
        vertices += object.vertices.size();
        faces += object.faces.size();
    }
    progress << "mediagen: wrote " << Shown(outDir, name) << " (" << objects.size()
             << (objects.size() == 1 ? " object, " : " objects, ") << vertices << " vertices, " << faces << " faces)\n";
}

// The files of one source folder with the given extension, sorted so the output is always
// made in the same order.
std::vector<fs::path> Sources(const fs::path& assetsDir, const std::string& folder, const std::string& extension) {
    const fs::path dir = assetsDir / folder;
    if (!fs::is_directory(dir)) throw MediaError(dir.string() + ": source folder not found");
    std::vector<fs::path> sources;
    for (const fs::directory_entry& entry : fs::directory_iterator(dir)) {
        if (entry.is_regular_file() && entry.path().extension() == extension) sources.push_back(entry.path());
    }
    std::sort(sources.begin(), sources.end());
    return sources;
}

struct Track {
    std::string file;  // in Media/
    MaxObject mesh;
};

struct Dialogue {
    std::string file;
    std::string source;
    SplashSource text;
};

struct LevelCopy {
    std::string file;
    std::string bytes;
};

}  // namespace

FontSet SystemFonts() {
    const fs::path dir = "/usr/share/fonts/truetype/dejavu";
    return {dir / "DejaVuSansMono-Bold.ttf", dir / "DejaVuSans.ttf", dir / "DejaVuSans-Bold.ttf"};
}

void GenerateMedia(const fs::path& assetsDir, const fs::path& outDir, const FontSet& fonts, std::ostream& progress) {
    // Read every source first, so a wrong assets folder or a bad source fails before anything
    // is written.
    const std::vector<fs::path> splashSources = Sources(assetsDir, "splashes", ".txt");
    std::vector<Track> tracks;
    for (const fs::path& source : Sources(assetsDir, "tracks", ".track")) {
        try {
            tracks.push_back({source.stem().string() + ".3DS", BuildTrack(ReadTrack(source), source.stem().string())});
        } catch (const MediaError& e) {
            const std::string what = e.what();
            if (what.rfind(source.string(), 0) == 0) throw;
            throw MediaError(source.string() + ": " + what);
        }
    }
    std::vector<Dialogue> dialogues;
    for (const fs::path& source : Sources(assetsDir, "dialogues", ".txt")) {
        dialogues.push_back({source.stem().string() + ".tga", source.string(), ReadDialogue(source)});
    }
    std::vector<LevelCopy> levels;
    for (const fs::path& source : Sources(assetsDir, "levels", ".lvl")) {
        levels.push_back({source.filename().string(), ReadLevelSource(source)});
    }

    std::error_code error;
    fs::create_directories(outDir, error);
    if (error) throw MediaError(outDir.string() + ": cannot create folder (" + error.message() + ")");

    Write(outDir, "font.tga", MakeFontSheet(fonts.mono), progress);
    const SplashFonts textFonts{fonts.sans, fonts.sansBold};
    for (const fs::path& source : splashSources) {
        const Picture splash = RenderSplash(ReadSplash(source), textFonts, source.string());
        Write(outDir, "UI_" + source.stem().string() + "_splash.tga", splash, progress);
    }
    for (const Dialogue& dialogue : dialogues) {
        Write(outDir, dialogue.file, RenderDialogue(dialogue.text, textFonts, dialogue.source), progress);
    }

    for (const ModelFile& model : ClassModels()) Write(outDir, model.file, model.objects, progress);
    for (const Track& track : tracks) Write(outDir, track.file, {track.mesh}, progress);

    for (size_t face = 0; face < kSkyFaces.size(); ++face) {
        Write(outDir, std::string("sky_") + kSkyFaces[face] + ".tga", MakeSkyFace(int(face)), progress);
    }
    Write(outDir, "intro_t.tga", MakeTrackTexture(), progress);
    Write(outDir, "smoke.tga", MakeSmokeAtlas(), progress);

    for (const LevelCopy& level : levels) {
        WriteFile(outDir / level.file, level.bytes.data(), level.bytes.size());
        progress << "mediagen: wrote " << Shown(outDir, level.file) << " (level, " << level.bytes.size() << " bytes)\n";
    }
}

}  // namespace mediagen

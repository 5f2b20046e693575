#include "tools/mediagen/media_gen.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <system_error>
#include <vector>

#include "tools/mediagen/class_models.h"
#include "tools/mediagen/dialogues.h"
#include "tools/mediagen/font_sheet.h"
#include "tools/mediagen/level_files.h"
#include "tools/mediagen/level_textures.h"
#include "tools/mediagen/max_writer.h"
#include "tools/mediagen/media_file.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/sound_synth.h"
#include "tools/mediagen/menu_art.h"
#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"
#include "tools/mediagen/track_source.h"
#include "tools/mediagen/wav_writer.h"

namespace mediagen {

namespace fs = std::filesystem;

namespace {

std::string Shown(const fs::path& outDir, const std::string& name) { return (outDir.filename() / name).string(); }

// Writes the files of Media/, one progress line for each that changed.
class MediaWriter {
public:
    MediaWriter(fs::path outDir, std::ostream& progress) : outDir(std::move(outDir)), progress(progress) {}

    void Write(const std::string& name, const Picture& picture) {
        std::vector<uint8_t> bytes;
        try {
            bytes = EncodeTga(picture);
        } catch (const MediaError& e) {
            throw MediaError((outDir / name).string() + ": " + e.what());
        }
        Write(name, bytes.data(), bytes.size(), std::to_string(picture.width) + "x" + std::to_string(picture.height) +
                                                    ", " + std::to_string(picture.Depth()) + "-bit");
    }

    void Write(const std::string& name, const std::vector<MaxObject>& objects) {
        const std::vector<uint8_t> bytes = WriteMaxFile(objects);
        size_t vertices = 0, faces = 0;
        for (const MaxObject& object : objects) {
            vertices += object.vertices.size();
            faces += object.faces.size();
        }
        Write(name, bytes.data(), bytes.size(),
              std::to_string(objects.size()) + (objects.size() == 1 ? " object, " : " objects, ") +
                  std::to_string(vertices) + " vertices, " + std::to_string(faces) + " faces");
    }

    void Write(const std::string& name, const Sound& sound) {
        std::vector<uint8_t> bytes;
        try {
            bytes = EncodeWav(sound);
        } catch (const MediaError& e) {
            throw MediaError((outDir / name).string() + ": " + e.what());
        }
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%.2f s", sound.Seconds());
        Write(name, bytes.data(), bytes.size(),
              std::string(sound.channels == 1 ? "mono, " : "stereo, ") + std::to_string(sound.rate) + " Hz, " + seconds);
    }

    void Write(const std::string& name, const void* data, size_t size, const std::string& what) {
        if (WriteMediaFile(outDir / name, data, size))
            progress << "mediagen: wrote " << Shown(outDir, name) << " (" << what << ")\n";
        else
            ++unchanged;
    }

    void Finish() {
        if (unchanged > 0) progress << "mediagen: " << unchanged << " files already up to date\n";
    }

private:
    fs::path outDir;
    std::ostream& progress;
    int unchanged = 0;
};

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

struct SoundFile {
    std::string file;
    SoundSource source;
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
    // Benchmark levels go to a folder of their own, out of the way of the levels players pick.
    for (const fs::path& source : Sources(assetsDir, "benchmarks", ".lvl")) {
        levels.push_back({kBenchmarkFolder + "/" + source.filename().string(), ReadLevelSource(source)});
    }

    const fs::path menuSource = assetsDir / "menu" / "menu.txt";
    const MenuSource menu = ReadMenu(menuSource);

    std::vector<SoundFile> sounds;
    for (const fs::path& source : Sources(assetsDir, "sounds", ".sound")) {
        sounds.push_back({source.stem().string() + ".wav", ReadSound(source)});
    }

    std::error_code error;
    fs::create_directories(outDir / kBenchmarkFolder, error);
    if (error) throw MediaError((outDir / kBenchmarkFolder).string() + ": cannot create folder (" + error.message() + ")");

    MediaWriter media(outDir, progress);
    media.Write("font.tga", MakeFontSheet(fonts.mono));
    const SplashFonts textFonts{fonts.sans, fonts.sansBold};
    for (const fs::path& source : splashSources) {
        const Picture splash = RenderSplash(ReadSplash(source), textFonts, source.string());
        media.Write("UI_" + source.stem().string() + "_splash.tga", splash);
    }
    for (const Dialogue& dialogue : dialogues) {
        media.Write(dialogue.file, RenderDialogue(dialogue.text, textFonts, dialogue.source));
    }
    media.Write("UI_back.tga", RenderMenuBack(menu, textFonts, menuSource.string()));
    media.Write("UI_bg_rings.tga", RenderMenuRings());
    for (const NamedPicture& button : RenderMenuButtons(menu, textFonts, menuSource.string()))
        media.Write(button.name + ".tga", button.picture);

    for (const ModelFile& model : ClassModels()) media.Write(model.file, model.objects);
    for (const Track& track : tracks) media.Write(track.file, {track.mesh});

    for (size_t face = 0; face < kSkyFaces.size(); ++face) {
        media.Write(std::string("sky_") + kSkyFaces[face] + ".tga", MakeSkyFace(int(face)));
    }
    media.Write("intro_t.tga", MakeTrackTexture());
    media.Write("smoke.tga", MakeSmokeAtlas());

    for (const SoundFile& sound : sounds) media.Write(sound.file, SynthesizeSound(sound.source));

    for (const LevelCopy& level : levels) {
        media.Write(level.file, level.bytes.data(), level.bytes.size(),
                    "level, " + std::to_string(level.bytes.size()) + " bytes");
    }
    media.Finish();
}

}  // namespace mediagen

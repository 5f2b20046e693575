#include "tools/mediagen/media_gen.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "tools/mediagen/font_sheet.h"
#include "tools/mediagen/media_error.h"
#include "tools/mediagen/splash_screens.h"
#include "tools/mediagen/tga_writer.h"

namespace mediagen {

namespace fs = std::filesystem;

namespace {

void Write(const fs::path& outDir, const std::string& name, const Picture& picture, std::ostream& progress) {
    WriteTga(outDir / name, picture);
    progress << "mediagen: wrote " << (outDir.filename() / name).string() << " (" << picture.width << "x"
             << picture.height << ", " << picture.Depth() << "-bit)\n";
}

// Sorted, so the files are always made in the same order.
std::vector<fs::path> SplashSources(const fs::path& assetsDir) {
    const fs::path dir = assetsDir / "splashes";
    if (!fs::is_directory(dir)) throw MediaError(dir.string() + ": splash source folder not found");
    std::vector<fs::path> sources;
    for (const fs::directory_entry& entry : fs::directory_iterator(dir)) {
        if (entry.is_regular_file() && entry.path().extension() == ".txt") sources.push_back(entry.path());
    }
    std::sort(sources.begin(), sources.end());
    return sources;
}

}  // namespace

FontSet SystemFonts() {
    const fs::path dir = "/usr/share/fonts/truetype/dejavu";
    return {dir / "DejaVuSansMono-Bold.ttf", dir / "DejaVuSans.ttf", dir / "DejaVuSans-Bold.ttf"};
}

void GenerateMedia(const fs::path& assetsDir, const fs::path& outDir, const FontSet& fonts, std::ostream& progress) {
    // Look for the sources first, so a wrong assets folder fails before anything is written.
    const std::vector<fs::path> splashSources = SplashSources(assetsDir);
    std::error_code error;
    fs::create_directories(outDir, error);
    if (error) throw MediaError(outDir.string() + ": cannot create folder (" + error.message() + ")");

    Write(outDir, "font.tga", MakeFontSheet(fonts.mono), progress);

    const SplashFonts splashFonts{fonts.sans, fonts.sansBold};
    for (const fs::path& source : splashSources) {
        const Picture splash = RenderSplash(ReadSplash(source), splashFonts, source.string());
        Write(outDir, "UI_" + source.stem().string() + "_splash.tga", splash, progress);
    }
}

}  // namespace mediagen

#include "tools/mediagen/track_source.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_file.h"
#include "tools/mediagen/mesh_builder.h"
#include "tools/mediagen/piece_thickness.h"
#include "tools/mediagen/source_lines.h"

namespace mediagen {

namespace {

// Reads numbers and commas off a line, locale-free.
class Cursor {
public:
    explicit Cursor(std::string_view text) : text_(text) {}

    bool AtEnd() {
        SkipSpace();
        return pos_ >= text_.size();
    }

    // False when no number stands here, or one runs straight into other text ("1.5m").
    bool Number(double& value) {
        SkipSpace();
        const char* begin = text_.data() + pos_;
        const char* end = text_.data() + text_.size();
        if (begin < end && *begin == '+') ++begin;  // from_chars takes no plus sign
        const auto [stop, error] = std::from_chars(begin, end, value);
        if (error != std::errc() || !std::isfinite(value) || (stop < end && !IsSeparator(*stop))) return false;
        pos_ = size_t(stop - text_.data());
        return true;
    }

    bool Comma() {
        SkipSpace();
        if (pos_ >= text_.size() || text_[pos_] != ',') return false;
        ++pos_;
        return true;
    }

    // The word at the cursor, for error messages.
    std::string Here() {
        SkipSpace();
        const size_t end = text_.find_first_of(" \t", pos_);
        return std::string(text_.substr(pos_, end == std::string_view::npos ? end : end - pos_));
    }

private:
    static bool IsSeparator(char c) { return c == ' ' || c == '\t' || c == ','; }
    void SkipSpace() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
    }

    std::string_view text_;
    size_t pos_ = 0;
};

double ReadDepth(std::string_view value, const std::string& name, int line) {
    Cursor cursor(value);
    double depth = 0;
    if (!cursor.Number(depth) || !cursor.AtEnd()) FailAt(name, line, "depth must be one number, not '" + std::string(value) + "'");
    if (depth <= 0) FailAt(name, line, "depth must be more than 0");
    return depth;
}

constexpr size_t kMaxPiecePoints = 2000;

std::vector<Point2> ReadPiece(std::string_view value, const std::string& name, int line) {
    Cursor cursor(value);
    std::vector<Point2> outline;
    while (!cursor.AtEnd()) {
        const std::string point = "point " + std::to_string(outline.size() + 1);
        Point2 p;
        if (!cursor.Number(p.x)) FailAt(name, line, point + ": expected x,y but found '" + cursor.Here() + "'");
        if (!cursor.Comma()) FailAt(name, line, point + ": expected a comma after x, found '" + cursor.Here() + "'");
        if (!cursor.Number(p.y)) FailAt(name, line, point + ": expected y after the comma, found '" + cursor.Here() + "'");
        outline.push_back(p);
        // The checks below compare every edge with every other: keep them quick.
        if (outline.size() > kMaxPiecePoints)
            FailAt(name, line, "piece: more than " + std::to_string(kMaxPiecePoints) + " points; split it into smaller pieces");
    }
    const std::string problem = OutlineProblem(outline);
    if (!problem.empty()) FailAt(name, line, "piece: " + problem);
    if (SignedArea2(outline) < 0) std::reverse(outline.begin(), outline.end());
    if (Triangulate(SplitEdges(outline, kTrackMaxSide)).triangles.empty()) {
        FailAt(name, line, "piece: the outline is too thin to fill");
    }
    const std::string thin = ThinPart(outline, kMinPieceThickness);
    if (!thin.empty()) FailAt(name, line, "piece: " + thin);
    return outline;
}

}  // namespace

TrackSource ParseTrack(std::string_view text, const std::string& name) {
    TrackSource source;
    int depthLine = 0;
    const int lines = ForEachKeyValue(text, name, [&](std::string_view key, std::string_view value, int number) {
        if (key == "depth") {
            if (depthLine != 0) FailAt(name, number, "depth is already given on line " + std::to_string(depthLine));
            source.depth = ReadDepth(value, name, number);
            depthLine = number;
        } else if (key == "piece") {
            source.pieces.push_back(ReadPiece(value, name, number));
        } else {
            FailAt(name, number, "unknown key '" + std::string(key) + "' (depth, piece)");
        }
    });
    if (depthLine == 0) FailAt(name, lines, "no 'depth:' line");
    if (source.pieces.empty()) FailAt(name, lines, "no 'piece:' line");
    return source;
}

TrackSource ReadTrack(const std::filesystem::path& path) {
    return ParseTrack(ReadSourceText(path, "track source"), path.string());
}

MaxObject BuildTrack(const TrackSource& source, const std::string& objectName) {
    MeshBuilder mesh(objectName);
    const float half = float(source.depth / 2);
    for (const std::vector<Point2>& piece : source.pieces) {
        mesh.Prism(piece, -half, half, float(kTrackTile), kTrackMaxSide);
    }
    return mesh.Take();
}

}  // namespace mediagen

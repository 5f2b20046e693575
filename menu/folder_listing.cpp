#include "menu/folder_listing.h"

#include <algorithm>
#include <cctype>
#include <system_error>

namespace fs = std::filesystem;

namespace {

int Lower(char c) { return std::tolower(static_cast<unsigned char>(c)); }
bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

// A name as the list can print it: the font has only the 7-bit characters.
std::string Printable(const std::string& name) {
    std::string out;
    out.reserve(name.size());
    for (size_t i = 0; i < name.size(); ++i) {
        const auto c = static_cast<unsigned char>(name[i]);
        if (c < 0x80) {
            out += c < 0x20 ? '?' : char(c);
        } else if ((c & 0xC0) != 0x80) {
            out += '?';  // one mark for each multi-byte character, none for its continuation bytes
        }
    }
    return out;
}

}  // namespace

bool IsLevelFileName(const std::string& name) {
    if (name.size() < 4) return false;
    const std::string tail = name.substr(name.size() - 4);
    return tail[0] == '.' && Lower(tail[1]) == 'l' && Lower(tail[2]) == 'v' && Lower(tail[3]) == 'l';
}

bool NaturalLess(const std::string& a, const std::string& b) {
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (IsDigit(a[i]) && IsDigit(b[j])) {
            size_t ei = i, ej = j;
            while (ei < a.size() && IsDigit(a[ei])) ++ei;
            while (ej < b.size() && IsDigit(b[ej])) ++ej;
            // Compare the runs as numbers without converting: skip leading zeros, then length.
            size_t si = i, sj = j;
            while (si + 1 < ei && a[si] == '0') ++si;
            while (sj + 1 < ej && b[sj] == '0') ++sj;
            if (ei - si != ej - sj) return ei - si < ej - sj;
            const int order = a.compare(si, ei - si, b, sj, ej - sj);
            if (order != 0) return order < 0;
            i = ei, j = ej;
            continue;
        }
        if (Lower(a[i]) != Lower(b[j])) return Lower(a[i]) < Lower(b[j]);
        ++i, ++j;
    }
    if (a.size() - i != b.size() - j) return a.size() - i < b.size() - j;
    return a < b;  // names equal but for case keep one fixed order
}

FolderListing ListFolder(const fs::path& folder, FileFilter filter, const LevelDescriber& describe) {
    FolderListing listing;
    std::error_code ec;
    listing.folder = fs::absolute(folder, ec).lexically_normal();
    if (ec) listing.folder = folder.lexically_normal();
    if (listing.folder.has_relative_path() && listing.folder.filename().empty())
        listing.folder = listing.folder.parent_path();  // "a/b/" and "a/b" are one folder

    if (listing.folder != listing.folder.root_path())
        listing.entries.push_back({FolderEntry::Parent, "..", "..", "Up one folder"});

    std::vector<FolderEntry> folders, files;
    fs::directory_iterator it(listing.folder, fs::directory_options::skip_permission_denied, ec);
    if (ec) {
        listing.error = "Cannot read the folder " + listing.folder.string() + ": " + ec.message();
        return listing;
    }
    size_t seen = 0;
    for (; it != fs::directory_iterator(); it.increment(ec)) {
        if (ec) {
            listing.error = "Cannot read all of the folder " + listing.folder.string() + ": " + ec.message();
            break;
        }
        if (++seen > kMaxListedEntries) {
            listing.error = "Only the first " + std::to_string(kMaxListedEntries) + " names of this folder are listed.";
            break;
        }
        const std::string name = it->path().filename().string();
        if (name.empty() || name[0] == '.') continue;
        std::error_code typeError;
        if (it->is_directory(typeError)) {
            folders.push_back({FolderEntry::Folder, name, Printable(name) + "/", ""});
        } else if (filter == FileFilter::All || IsLevelFileName(name)) {
            files.push_back({FolderEntry::File, name, Printable(name), ""});
        }
    }
    const auto byName = [](const FolderEntry& a, const FolderEntry& b) { return NaturalLess(a.fileName, b.fileName); };
    std::sort(folders.begin(), folders.end(), byName);
    std::sort(files.begin(), files.end(), byName);
    for (FolderEntry& file : files) {
        if (!describe || !IsLevelFileName(file.fileName)) continue;
        LevelSummary summary = describe(listing.folder / file.fileName);
        if (!summary.title.empty()) file.title = Printable(summary.title);
        file.description = Printable(summary.description);
    }
    listing.entries.insert(listing.entries.end(), folders.begin(), folders.end());
    listing.entries.insert(listing.entries.end(), files.begin(), files.end());
    return listing;
}

#include "menu/level_browser.h"

#include <algorithm>
#include <system_error>

namespace fs = std::filesystem;
using namespace browser_layout;

namespace {

constexpr double kRepeatDelay = 0.4, kRepeatEvery = 0.06;
constexpr double kDoubleClick = 0.45;
constexpr int kWheelRows = 3;

enum Key { KeyUp, KeyDown, KeyPageUp, KeyPageDown, KeyHome, KeyEnd, KeyEnter, KeyEscape, KeyBackspace, KeyTab };

bool Inside(float x, float y, float left, float top, float width, float height) {
    return x >= left && x <= left + width && y >= top && y <= top + height;
}

// The nearest folder that exists, so a missing start folder still opens somewhere useful.
fs::path ExistingFolder(fs::path folder) {
    std::error_code ec;
    folder = fs::absolute(folder, ec).lexically_normal();
    while (!fs::is_directory(folder, ec) && folder.has_relative_path()) folder = folder.parent_path();
    return folder;
}

}  // namespace

LevelBrowser::LevelBrowser(const fs::path& startFolder, LevelDescriber describer) : describe(std::move(describer)) {
    const fs::path wanted = fs::absolute(startFolder).lexically_normal();
    const fs::path folder = ExistingFolder(wanted);
    ShowFolder(folder);
    std::error_code ec;
    if (!fs::is_directory(wanted, ec)) message = "The folder " + wanted.string() + " is missing.";
}

void LevelBrowser::ShowFolder(const fs::path& folder, const std::string& selectName) {
    listing = ListFolder(folder, filter, describe);
    message = listing.error;
    top = 0;
    selected = listing.entries.empty() ? -1 : 0;
    // Coming back up, the folder just left stays selected; entering one, its first file (what the
    // player came for), else its first entry past "..".
    if (!selectName.empty()) {
        for (size_t i = 0; i < listing.entries.size(); ++i)
            if (listing.entries[i].kind == FolderEntry::Folder && listing.entries[i].fileName == selectName)
                selected = int(i);
    } else {
        int firstFile = -1, firstOther = -1;
        for (size_t i = 0; i < listing.entries.size(); ++i) {
            const FolderEntry::Kind kind = listing.entries[i].kind;
            if (kind == FolderEntry::File && firstFile < 0) firstFile = int(i);
            if (kind != FolderEntry::Parent && firstOther < 0) firstOther = int(i);
        }
        if (firstFile >= 0) selected = firstFile;
        else if (firstOther >= 0) selected = firstOther;
    }
    Select(selected);
}

int LevelBrowser::MaxTop() const { return std::max(0, RowCount() - kVisibleRows); }

void LevelBrowser::Select(int row) {
    if (RowCount() == 0) {
        selected = -1;
        top = 0;
        return;
    }
    selected = std::clamp(row, 0, RowCount() - 1);
    if (selected < top) top = selected;
    if (selected >= top + kVisibleRows) top = selected - kVisibleRows + 1;
    top = std::clamp(top, 0, MaxTop());
}

void LevelBrowser::ScrollBy(int rows) { top = std::clamp(top + rows, 0, MaxTop()); }

// The thumb follows the cursor along the bar.
void LevelBrowser::ScrollTo(float cursorY) {
    const float barHeight = kRowHeight * kVisibleRows;
    const float share = std::clamp((cursorY - kListY) / barHeight, 0.0f, 1.0f);
    top = std::clamp(int(share * float(MaxTop()) + 0.5f), 0, MaxTop());
}

LevelBrowser::Region LevelBrowser::HitTest(float x, float y, int& row) const {
    row = -1;
    if (Inside(x, y, kListX, kListY, kListWidth, kRowHeight * kVisibleRows)) {
        const int candidate = top + int((y - kListY) / kRowHeight);
        if (candidate < RowCount() && y < kListY + kRowHeight * kVisibleRows) {
            row = candidate;
            return Region::Row;
        }
        return Region::None;
    }
    if (MaxTop() > 0 && Inside(x, y, kScrollX, kListY, kScrollWidth, kRowHeight * kVisibleRows))
        return Region::Scrollbar;
    if (Inside(x, y, kLevelTabX, kTabY, kTabWidth, kTabHeight)) return Region::LevelTab;
    if (Inside(x, y, kAllTabX, kTabY, kTabWidth, kTabHeight)) return Region::AllTab;
    if (Inside(x, y, kOpenX, kButtonY, kButtonWidth, kButtonHeight)) return Region::OpenButton;
    if (Inside(x, y, kCancelX, kButtonY, kButtonWidth, kButtonHeight)) return Region::CancelButton;
    return Region::None;
}

bool LevelBrowser::Fires(bool down, int key, double now) {
    const bool repeats = key <= KeyPageDown;
    bool fire = false;
    if (down && !wasDown[key]) {
        fire = true;
        downSince[key] = lastFired[key] = now;
    } else if (down && repeats && now - downSince[key] >= kRepeatDelay && now - lastFired[key] >= kRepeatEvery) {
        fire = true;
        lastFired[key] = now;
    }
    wasDown[key] = down;
    return fire;
}

LevelBrowser::Outcome LevelBrowser::Activate() {
    if (selected < 0 || selected >= RowCount()) return Outcome::Open;
    const FolderEntry entry = listing.entries[size_t(selected)];
    std::error_code ec;
    switch (entry.kind) {
    case FolderEntry::Parent: {
        const std::string left = listing.folder.filename().string();
        ShowFolder(listing.folder.parent_path(), left);
        return Outcome::Open;
    }
    case FolderEntry::Folder:
        ShowFolder(listing.folder / entry.fileName);
        return Outcome::Open;
    case FolderEntry::File: {
        const fs::path file = listing.folder / entry.fileName;
        if (!fs::is_regular_file(file, ec)) {
            const std::string name = entry.fileName;
            ShowFolder(listing.folder);
            message = "The file " + name + " is gone.";
            return Outcome::Open;
        }
        chosen = file;
        return Outcome::Chosen;
    }
    }
    return Outcome::Open;
}

LevelBrowser::Outcome LevelBrowser::Step(const BrowserInput& in) {
    const double now = in.now;
    const bool keys[kRepeatKeys] = {in.up,    in.down,   in.pageUp, in.pageDown,  in.home,
                                    in.end,   in.enter,  in.escape, in.backspace, in.tab};
    bool fired[kRepeatKeys];
    for (int key = 0; key < kRepeatKeys; ++key) fired[key] = Fires(keys[key], key, now);

    if (fired[KeyEscape]) return Outcome::Cancelled;
    if (fired[KeyEnter]) {
        if (Activate() == Outcome::Chosen) return Outcome::Chosen;
    }
    if (fired[KeyBackspace] && RowCount() > 0 && listing.entries[0].kind == FolderEntry::Parent) {
        Select(0);
        Activate();
    }
    if (fired[KeyTab]) {
        filter = filter == FileFilter::Levels ? FileFilter::All : FileFilter::Levels;
        ShowFolder(listing.folder);
    }
    if (fired[KeyUp]) Select(selected - 1);
    if (fired[KeyDown]) Select(selected + 1);
    if (fired[KeyPageUp]) Select(selected - (kVisibleRows - 1));
    if (fired[KeyPageDown]) Select(selected + (kVisibleRows - 1));
    if (fired[KeyHome]) Select(0);
    if (fired[KeyEnd]) Select(RowCount() - 1);
    if (in.wheel != 0) ScrollBy(-in.wheel * kWheelRows);

    hovered = HitTest(in.cursorX, in.cursorY, hoveredRow);
    const bool pressed = in.leftDown && !wasLeftDown;
    const bool released = !in.leftDown && wasLeftDown;
    wasLeftDown = in.leftDown;

    if (pressed) {
        pressedOn = hovered;
        pressedRow = hoveredRow;
        if (hovered == Region::Row) Select(hoveredRow);
    }
    if (in.leftDown && pressedOn == Region::Scrollbar) ScrollTo(in.cursorY);
    if (!released) return Outcome::Open;

    // Buttons and tabs act on release over the spot that was pressed, as buttons do.
    const Region pressRegion = pressedOn;
    const int pressRow = pressedRow;
    pressedOn = Region::None;
    pressedRow = -1;
    if (pressRegion == Region::None || pressRegion != hovered) return Outcome::Open;
    switch (pressRegion) {
    case Region::Row:
        if (hoveredRow != pressRow) break;
        if (lastClickRow == pressRow && now - lastClickAt <= kDoubleClick) {
            lastClickRow = -1;
            return Activate();
        }
        lastClickRow = pressRow;
        lastClickAt = now;
        break;
    case Region::LevelTab:
    case Region::AllTab: {
        const FileFilter wanted = pressRegion == Region::LevelTab ? FileFilter::Levels : FileFilter::All;
        if (wanted != filter) {
            filter = wanted;
            ShowFolder(listing.folder);
        }
        break;
    }
    case Region::OpenButton:
        return Activate();
    case Region::CancelButton:
        return Outcome::Cancelled;
    default:
        break;
    }
    return Outcome::Open;
}

#pragma once
#include <filesystem>
#include <string>

#include "menu/folder_listing.h"

// What the browser reads of one frame. The cursor is in 2D screen units of the drawing area.
struct BrowserInput {
    double now = 0;
    float cursorX = -1, cursorY = -1;
    bool leftDown = false;
    int wheel = 0;  // steps, positive scrolls up
    bool up = false, down = false, pageUp = false, pageDown = false, home = false, end = false;
    bool enter = false, escape = false, backspace = false, tab = false;
};

// Where the panel's parts lie, in screen units; the drawing and the hit tests share these.
namespace browser_layout {
inline constexpr float kPanelX = 0.08f, kPanelY = 0.06f, kPanelWidth = 0.84f, kPanelHeight = 0.88f;
inline constexpr float kListX = 0.1f, kListY = 0.225f, kListWidth = 0.77f;
inline constexpr float kRowHeight = 0.062f;
inline constexpr int kVisibleRows = 8;
inline constexpr float kScrollX = 0.875f, kScrollWidth = 0.025f;
inline constexpr float kTabY = 0.158f, kTabWidth = 0.09f, kTabHeight = 0.05f;
inline constexpr float kLevelTabX = 0.71f, kAllTabX = 0.81f;
inline constexpr float kDetailY = 0.735f;
inline constexpr float kButtonY = 0.85f, kButtonWidth = 0.14f, kButtonHeight = 0.06f;
inline constexpr float kOpenX = 0.6f, kCancelX = 0.76f;
}  // namespace browser_layout

// The in-game dialog that picks a level file. It starts in a folder with the "Level" filter
// and lets the player move through folders, switch to "All" files, scroll, and open a file or
// cancel, by mouse (click, double-click, wheel, the scroll bar) or by keyboard (arrows, Page
// Up/Down, Home/End, Enter, Backspace for the parent folder, Tab for the filter, Escape). It
// never changes the working directory.
class LevelBrowser {
public:
    enum class Outcome { Open, Chosen, Cancelled };
    enum class Region { None, Row, Scrollbar, LevelTab, AllTab, OpenButton, CancelButton };

    LevelBrowser(const std::filesystem::path& startFolder, LevelDescriber describe);

    Outcome Step(const BrowserInput& input);
    // The chosen file, absolute; only once Step gave Chosen.
    const std::filesystem::path& Chosen() const { return chosen; }

    const FolderListing& Listing() const { return listing; }
    FileFilter Filter() const { return filter; }
    int Selected() const { return selected; }  // -1 when the list is empty
    int Top() const { return top; }           // the first row shown
    int RowCount() const { return int(listing.entries.size()); }
    // A line for the status bar: a folder that cannot be read, a file that went away.
    const std::string& Message() const { return message; }
    Region Hovered() const { return hovered; }
    int HoveredRow() const { return hoveredRow; }

    // What lies under a point, and the row there when it is a row.
    Region HitTest(float x, float y, int& row) const;

private:
    void ShowFolder(const std::filesystem::path& folder, const std::string& selectName = "");
    void Select(int row);
    void ScrollBy(int rows);
    void ScrollTo(float cursorY);
    int MaxTop() const;
    // Opens the selected entry: enters a folder, leaves for the parent, or chooses a file.
    Outcome Activate();
    bool Fires(bool down, int key, double now);

    LevelDescriber describe;
    FolderListing listing;
    FileFilter filter = FileFilter::Levels;
    int selected = -1;
    int top = 0;
    std::string message;
    std::filesystem::path chosen;

    Region hovered = Region::None;
    int hoveredRow = -1;
    // The mouse: where the last press landed, and the last click's row and time for doubles.
    Region pressedOn = Region::None;
    int pressedRow = -1;
    bool wasLeftDown = true;  // the click that opened the browser is still held
    int lastClickRow = -1;
    double lastClickAt = -10;
    // The keys that repeat while held: when each went down and when it last fired.
    static constexpr int kRepeatKeys = 10;
    bool wasDown[kRepeatKeys] = {};
    double downSince[kRepeatKeys] = {};
    double lastFired[kRepeatKeys] = {};
};

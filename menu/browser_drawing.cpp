#include "menu/browser_drawing.h"

#include <GL/glew.h>

#include <algorithm>
#include <string>

#include "graphics/graphics_system.h"
#include "menu/level_browser.h"
#include "menu/text_fit.h"

using namespace browser_layout;

namespace {

struct Colour {
    float r, g, b, a = 1;
};
// The game's palette: night blue panels, teal lines and highlights, gold titles, off-white text.
constexpr Colour kPanel{0.035f, 0.045f, 0.11f, 0.97f};
constexpr Colour kTeal{0.16f, 0.72f, 0.70f};
constexpr Colour kTealDim{0.10f, 0.36f, 0.40f, 0.55f};
constexpr Colour kHoverRow{0.30f, 0.34f, 0.55f, 0.30f};
constexpr Colour kStripe{1, 1, 1, 0.035f};
constexpr Colour kGold{0.98f, 0.78f, 0.32f};
constexpr Colour kText{0.93f, 0.92f, 0.88f};
constexpr Colour kDim{0.62f, 0.66f, 0.76f};
constexpr Colour kWarning{1.0f, 0.55f, 0.35f};

constexpr float kTitleSize = 0.05f, kPathSize = 0.024f, kRowSize = 0.03f, kRowDetailSize = 0.021f;
constexpr float kDetailSize = 0.025f, kButtonSize = 0.03f, kHintSize = 0.019f;

// A rectangle filled, or outlined with a line loop, in a colour that may be see-through.
void Rect(float x, float y, float w, float h, Colour c, GLenum mode) {
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(c.r, c.g, c.b, c.a);
    glLineWidth(1.5f);
    glBegin(mode);
    glVertex3f(x, y, 0);
    glVertex3f(x, y + h, 0);
    glVertex3f(x + w, y + h, 0);
    glVertex3f(x + w, y, 0);
    glEnd();
}

void Fill(float x, float y, float w, float h, Colour c) { Rect(x, y, w, h, c, GL_QUADS); }
void Frame(float x, float y, float w, float h, Colour c) { Rect(x, y, w, h, c, GL_LINE_LOOP); }

// Text in narrowed glyphs (see text_fit.h), standing on the line y.
void Label(GraphicsSystem& graphics, float x, float y, float size, Colour c, const std::string& text) {
    glPushMatrix();
    glTranslatef(x, y, 0);
    glScalef(kNarrowScale, 1, 1);
    graphics.PrintPlain(0, 0, c.r, c.g, c.b, size, kNarrowSpacing, text.c_str());
    glPopMatrix();
}

float TextWidth(const std::string& text, float size) { return float(text.size()) * kNarrowAdvance * size; }

void Button(GraphicsSystem& graphics, float x, float y, float w, float h, const std::string& text, bool lit,
            bool active) {
    Fill(x, y, w, h, active ? Colour{kTeal.r, kTeal.g, kTeal.b, 0.45f}
                            : lit ? Colour{kTeal.r, kTeal.g, kTeal.b, 0.25f} : kTealDim);
    Frame(x, y, w, h, lit || active ? kGold : kTeal);
    const float textX = x + (w - TextWidth(text, kButtonSize)) / 2;
    Label(graphics, textX, y + h / 2 + kButtonSize * 0.42f, kButtonSize, lit ? kGold : kText, text);
}

void DrawRows(const LevelBrowser& browser, GraphicsSystem& graphics) {
    const auto& entries = browser.Listing().entries;
    const float textWidth = kListWidth - 0.03f;
    for (int i = 0; i < kVisibleRows; ++i) {
        const int row = browser.Top() + i;
        if (row >= int(entries.size())) break;
        const FolderEntry& entry = entries[size_t(row)];
        const float y = kListY + float(i) * kRowHeight;
        if (row % 2 == 1) Fill(kListX, y, kListWidth, kRowHeight, kStripe);
        if (row == browser.Selected()) {
            Fill(kListX, y, kListWidth, kRowHeight, {kTeal.r, kTeal.g, kTeal.b, 0.35f});
            Frame(kListX, y, kListWidth, kRowHeight, kTeal);
        } else if (browser.Hovered() == LevelBrowser::Region::Row && browser.HoveredRow() == row) {
            Fill(kListX, y, kListWidth, kRowHeight, kHoverRow);
        }

        // A level shows its own name with the file's name on the right, and its description under.
        const bool level = entry.kind == FolderEntry::File && entry.title != entry.fileName;
        float nameWidth = textWidth;
        if (level) {
            const std::string file = FitStart(entry.fileName, CharsThatFit(textWidth * 0.4f, kRowDetailSize));
            const float fileWidth = TextWidth(file, kRowDetailSize);
            Label(graphics, kListX + 0.015f + textWidth - fileWidth, y + 0.03f, kRowDetailSize, kDim, file);
            nameWidth = textWidth - fileWidth - 0.02f;
        }
        const Colour nameColour = entry.kind == FolderEntry::File ? kText : kGold;
        const std::string name = FitEnd(entry.title, CharsThatFit(nameWidth, kRowSize));
        const bool oneLine = entry.description.empty();
        Label(graphics, kListX + 0.015f, y + (oneLine ? 0.043f : 0.032f), kRowSize, nameColour, name);
        if (!oneLine)
            Label(graphics, kListX + 0.015f, y + 0.055f, kRowDetailSize, kDim,
                  FitEnd(entry.description, CharsThatFit(textWidth, kRowDetailSize)));
    }
}

void DrawScrollbar(const LevelBrowser& browser) {
    const int rows = browser.RowCount();
    const float barHeight = kRowHeight * kVisibleRows;
    Fill(kScrollX, kListY, kScrollWidth, barHeight, {1, 1, 1, 0.06f});
    if (rows <= kVisibleRows) return;
    const float share = float(kVisibleRows) / float(rows);
    const float thumbHeight = std::max(barHeight * share, 0.03f);
    const float place = float(browser.Top()) / float(rows - kVisibleRows);
    const float thumbY = kListY + (barHeight - thumbHeight) * place;
    const bool lit = browser.Hovered() == LevelBrowser::Region::Scrollbar;
    Fill(kScrollX + 0.003f, thumbY, kScrollWidth - 0.006f, thumbHeight,
         {kTeal.r, kTeal.g, kTeal.b, lit ? 0.95f : 0.7f});
}

void DrawDetail(const LevelBrowser& browser, GraphicsSystem& graphics) {
    const float width = kPanelWidth - 0.06f;
    float y = kDetailY + 0.03f;
    if (!browser.Message().empty()) {
        for (const std::string& line : WrapWords(browser.Message(), CharsThatFit(width, kDetailSize), 2)) {
            Label(graphics, kListX, y, kDetailSize, kWarning, line);
            y += kDetailSize * 1.25f;
        }
        return;
    }
    const int selected = browser.Selected();
    if (selected < 0) {
        Label(graphics, kListX, y, kDetailSize, kDim,
              browser.Filter() == FileFilter::Levels ? "No levels here." : "This folder is empty.");
        return;
    }
    const FolderEntry& entry = browser.Listing().entries[size_t(selected)];
    if (entry.description.empty()) return;
    for (const std::string& line : WrapWords(entry.description, CharsThatFit(width, kDetailSize), 3)) {
        Label(graphics, kListX, y, kDetailSize, kText, line);
        y += kDetailSize * 1.25f;
    }
}

}  // namespace

void DrawLevelBrowser(const LevelBrowser& browser, GraphicsSystem& graphics) {
    graphics.Begin2D();
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    Fill(0, 0, 1, 1, {0, 0, 0.02f, 0.45f});  // dims the menu behind
    Fill(kPanelX, kPanelY, kPanelWidth, kPanelHeight, kPanel);
    Frame(kPanelX, kPanelY, kPanelWidth, kPanelHeight, kTeal);
    Frame(kPanelX + 0.006f, kPanelY + 0.008f, kPanelWidth - 0.012f, kPanelHeight - 0.016f, kTealDim);

    Label(graphics, kListX, kPanelY + 0.064f, kTitleSize, kGold, "Choose a level");
    Fill(kListX, kPanelY + 0.08f, kPanelWidth - 0.04f, 0.003f, kTeal);
    const std::string folder = browser.Listing().folder.string();
    Label(graphics, kListX, kListY - 0.02f, kPathSize, kDim,
          FitStart(folder, CharsThatFit(kLevelTabX - kListX - 0.02f, kPathSize)));

    const LevelBrowser::Region hovered = browser.Hovered();
    const bool levels = browser.Filter() == FileFilter::Levels;
    Button(graphics, kLevelTabX, kTabY, kTabWidth, kTabHeight, "Level", hovered == LevelBrowser::Region::LevelTab,
           levels);
    Button(graphics, kAllTabX, kTabY, kTabWidth, kTabHeight, "All", hovered == LevelBrowser::Region::AllTab, !levels);

    Fill(kListX, kListY, kListWidth, kRowHeight * kVisibleRows, {0, 0, 0, 0.25f});
    DrawRows(browser, graphics);
    DrawScrollbar(browser);
    Fill(kListX, kDetailY, kPanelWidth - 0.04f, 0.002f, kTealDim);
    DrawDetail(browser, graphics);

    Button(graphics, kOpenX, kButtonY, kButtonWidth, kButtonHeight, "Open",
           hovered == LevelBrowser::Region::OpenButton, false);
    Button(graphics, kCancelX, kButtonY, kButtonWidth, kButtonHeight, "Cancel",
           hovered == LevelBrowser::Region::CancelButton, false);
    Label(graphics, kListX, kButtonY + 0.028f, kHintSize, kDim, "Enter: open   Backspace: up a folder");
    Label(graphics, kListX, kButtonY + 0.056f, kHintSize, kDim, "Tab: Level / All   Esc: cancel");

    glColor4f(1, 1, 1, 1);
    glDisable(GL_BLEND);
}

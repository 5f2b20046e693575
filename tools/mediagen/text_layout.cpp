#include "tools/mediagen/text_layout.h"

namespace mediagen {

namespace {

std::vector<Word> SplitWords(const std::string& line) {
    std::vector<Word> words(1);
    bool bold = false;
    for (char c : line) {
        if (c == '*') {
            bold = !bold;
        } else if (c == ' ') {
            if (!words.back().empty()) words.emplace_back();
        } else {
            Word& word = words.back();
            if (word.empty() || word.back().bold != bold) word.push_back({bold, ""});
            word.back().text += c;
        }
    }
    if (words.back().empty()) words.pop_back();
    return words;
}

int WordWidth(const Faces& faces, const Word& word) {
    int width = 0;
    for (const Span& span : word) width += faces.Of(span.bold).Advance(span.text);
    return width;
}

}  // namespace

std::vector<TextLine> WrapLine(const Faces& faces, const std::string& paragraph, int maxWidth) {
    std::vector<TextLine> lines;
    const int space = faces.regular.Advance(" ");
    int width = 0;
    for (Word& word : SplitWords(paragraph)) {
        const int wordWidth = WordWidth(faces, word);
        if (lines.empty() || width + space + wordWidth > maxWidth) {
            lines.emplace_back();
            width = wordWidth;
        } else {
            width += space + wordWidth;
        }
        lines.back().push_back(std::move(word));
    }
    return lines;
}

int LineWidth(const Faces& faces, const TextLine& line) {
    int width = 0;
    for (const Word& word : line) width += WordWidth(faces, word);
    return width + faces.regular.Advance(" ") * int(line.empty() ? 0 : line.size() - 1);
}

void DrawLine(const Faces& faces, const TextLine& line, int penX, int baseline, Coverage& regular, Coverage& bold) {
    const int space = faces.regular.Advance(" ");
    for (const Word& word : line) {
        for (const Span& span : word) {
            faces.Of(span.bold).Draw(span.bold ? bold : regular, penX, baseline, span.text);
            penX += faces.Of(span.bold).Advance(span.text);
        }
        penX += space;
    }
}

void Blend(Picture& picture, const Coverage& ink, const Colour& colour) {
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const int alpha = ink.At(x, y);
            if (alpha == 0) continue;
            uint8_t* pixel = picture.Pixel(x, y);
            if (picture.channels == 3) {
                for (int c = 0; c < 3; ++c) pixel[c] = uint8_t((pixel[c] * (255 - alpha) + colour[c] * alpha + 127) / 255);
                continue;
            }
            // "Over" with straight alpha: the ink covers `alpha` of what is behind it.
            const int behind = pixel[3] * (255 - alpha);  // in 255ths of 255ths
            const int total = alpha * 255 + behind;
            for (int c = 0; c < 3; ++c) pixel[c] = uint8_t((colour[c] * alpha * 255 + pixel[c] * behind + total / 2) / total);
            pixel[3] = uint8_t((total + 127) / 255);
        }
    }
}

void BlendLayers(Picture& picture, const TextLayers& layers, const TextColours& colours) {
    Blend(picture, layers.title, colours.title);
    Blend(picture, layers.body, colours.body);
    Blend(picture, layers.bold, colours.bold);
    Blend(picture, layers.footer, colours.footer);
}

}  // namespace mediagen

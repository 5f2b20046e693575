#include "menu/text_fit.h"

#include <cmath>
#include <sstream>

int CharsThatFit(float width, float size) {
    if (size <= 0 || width <= 0) return 0;
    return int(std::floor(width / (kNarrowAdvance * size) + 1e-4f));
}

std::string FitEnd(const std::string& text, int maxChars) {
    if (maxChars <= 0) return "";
    if (int(text.size()) <= maxChars) return text;
    if (maxChars <= 3) return std::string(size_t(maxChars), '.');
    std::string cut = text.substr(0, size_t(maxChars - 3));
    while (!cut.empty() && cut.back() == ' ') cut.pop_back();
    return cut + "...";
}

std::string FitStart(const std::string& text, int maxChars) {
    if (maxChars <= 0) return "";
    if (int(text.size()) <= maxChars) return text;
    if (maxChars <= 3) return std::string(size_t(maxChars), '.');
    return "..." + text.substr(text.size() - size_t(maxChars - 3));
}

std::vector<std::string> WrapWords(const std::string& text, int maxChars, int maxLines) {
    std::vector<std::string> lines;
    if (maxChars <= 0 || maxLines <= 0) return lines;
    std::istringstream words(text);
    std::string word, line;
    bool cut = false;
    while (words >> word) {
        if (int(word.size()) > maxChars) word = FitEnd(word, maxChars);
        if (line.empty()) {
            line = word;
        } else if (int(line.size() + 1 + word.size()) <= maxChars) {
            line += ' ' + word;
        } else {
            lines.push_back(line);
            line = word;
            if (int(lines.size()) == maxLines) {
                cut = true;
                break;
            }
        }
    }
    if (!cut && !line.empty()) lines.push_back(line);
    if (cut) {
        std::string& last = lines.back();
        last = FitEnd(last + "...", maxChars);
    }
    return lines;
}

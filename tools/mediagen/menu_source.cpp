#include <cstdlib>
#include <sstream>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_file.h"
#include "tools/mediagen/menu_art.h"
#include "tools/mediagen/source_lines.h"

namespace mediagen {

namespace {

bool IsName(std::string_view text) {
    if (text.empty()) return false;
    for (char c : text)
        if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_')) return false;
    return true;
}

MenuButtonSource ParseButton(std::string_view value, const std::string& name, int line) {
    std::istringstream words{std::string(value)};
    MenuButtonSource button;
    std::string width;
    if (!(words >> button.name >> width)) FailAt(name, line, "expected 'button: NAME WIDTH LABEL'");
    if (!IsName(button.name)) FailAt(name, line, "'" + button.name + "' is not a texture name (letters, digits, _)");
    char* end = nullptr;
    button.width = std::strtod(width.c_str(), &end);
    if (*end != '\0' || !(button.width >= 0.1 && button.width <= 1.0))
        FailAt(name, line, "width '" + width + "' must be a number from 0.1 to 1");
    std::string rest;
    std::getline(words, rest);
    button.label = std::string(TrimSpace(rest));
    if (button.label.empty()) FailAt(name, line, "the button " + button.name + " has no label");
    return button;
}

}  // namespace

MenuSource ParseMenu(std::string_view text, const std::string& name) {
    MenuSource source;
    const int lines = ForEachKeyValue(text, name, [&](std::string_view key, std::string_view value, int line) {
        if (key == "title") {
            source.title = std::string(value);
        } else if (key == "button") {
            source.buttons.push_back(ParseButton(value, name, line));
            for (size_t i = 0; i + 1 < source.buttons.size(); ++i)
                if (source.buttons[i].name == source.buttons.back().name)
                    FailAt(name, line, "the button " + source.buttons.back().name + " is made twice");
        } else {
            FailAt(name, line, "unknown key '" + std::string(key) + "' (title, button)");
        }
    });
    if (source.title.empty()) FailAt(name, lines, "no 'title:' line");
    if (source.buttons.empty()) FailAt(name, lines, "no 'button:' line");
    return source;
}

MenuSource ReadMenu(const std::filesystem::path& path) {
    return ParseMenu(ReadSourceText(path, "menu source"), path.string());
}

}  // namespace mediagen

#include "tools/mediagen/level_files.h"

#include <tinyxml2.h>

#include <algorithm>

#include "tools/mediagen/media_error.h"
#include "tools/mediagen/media_file.h"

namespace mediagen {

void CheckLevelText(std::string_view text, const std::string& name) {
    tinyxml2::XMLDocument document;
    if (document.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) {
        // tinyxml2's own text repeats the line; its error name is enough beside ours.
        throw MediaError(name + ":" + std::to_string(std::max(1, document.ErrorLineNum())) + ": not well-formed XML (" +
                         document.ErrorName() + ")");
    }
    const tinyxml2::XMLElement* root = document.RootElement();
    if (!root) throw MediaError(name + ":1: holds no element; a level starts with <VelloranLevel>");
    if (std::string_view(root->Name()) != "VelloranLevel") {
        throw MediaError(name + ":" + std::to_string(root->GetLineNum()) + ": the first element is <" + root->Name() +
                         ">, not <VelloranLevel>");
    }
}

std::string ReadLevelSource(const std::filesystem::path& path) {
    std::string text = ReadSourceText(path, "level source");
    CheckLevelText(text, path.string());
    return text;
}

}  // namespace mediagen

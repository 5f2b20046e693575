#include "level/level_file.h"

#include <tinyxml2.h>

#include <istream>
#include <locale>
#include <sstream>

#include "core/file_read.h"
#include "level/level_limits.h"
#include "level/object_kinds.h"

using tinyxml2::XMLElement;

namespace {

template <class T>
bool ReadWithStream(const char* text, T& value, bool* trailing) {
    std::istringstream in(text ? text : "");
    in.imbue(std::locale::classic());
    T read{};
    in >> read;
    if (trailing) *trailing = false;
    if (in.fail()) {
        value = 0;
        return false;
    }
    value = read;
    // White space after the number is harmless; anything else is text the number ignores.
    if (trailing) *trailing = !(in >> std::ws).eof();
    return true;
}

// Reads the attributes of one element, recording what is missing or unreadable.
class AttributeReader {
public:
    AttributeReader(const XMLElement& element, std::vector<AttributeProblem>& problems)
        : element_(element), problems_(problems) {}

    std::string Text(const char* name) {
        const char* value = element_.Attribute(name);
        if (!value) {
            problems_.push_back({name, AttributeProblem::Missing});
            return {};
        }
        return value;
    }

    float Number(const char* name) {
        float value = 0;
        Read(name, [&](const char* text, bool* trailing) { return ReadNumber(text, value, trailing); });
        return value;
    }

    int32_t WholeNumber(const char* name) {
        int32_t value = 0;
        Read(name, [&](const char* text, bool* trailing) { return ReadWholeNumber(text, value, trailing); });
        return value;
    }

private:
    template <class Parse>
    void Read(const char* name, Parse parse) {
        const char* text = element_.Attribute(name);
        if (!text) {
            problems_.push_back({name, AttributeProblem::Missing});
            return;
        }
        bool trailing = false;
        if (!parse(text, &trailing)) {
            problems_.push_back({name, AttributeProblem::NotANumber});
        } else if (trailing) {
            problems_.push_back({name, AttributeProblem::TrailingText});
        }
    }

    const XMLElement& element_;
    std::vector<AttributeProblem>& problems_;
};

// Where each kind's own number attribute lands; "count" is the one whole number.
float* NumberField(LevelObject& object, const std::string& attribute) {
    if (attribute == "mass") return &object.mass;
    if (attribute == "health") return &object.health;
    if (attribute == "force") return &object.force;
    if (attribute == "speed") return &object.speed;
    if (attribute == "initialAngle") return &object.initialAngle;
    if (attribute == "quota") return &object.quota;
    return nullptr;
}

LevelTrack ReadTrack(const XMLElement& element) {
    LevelTrack track;
    track.line = element.GetLineNum();
    AttributeReader read(element, track.problems);
    track.name = read.Text("name");
    track.x = read.Number("x");
    track.y = read.Number("y");
    track.collisionModel = read.Text("collisionModel");
    track.renderModel = read.Text("renderModel");
    return track;
}

LevelRule ReadRule(const XMLElement& element) {
    LevelRule rule;
    rule.line = element.GetLineNum();
    AttributeReader read(element, rule.problems);
    rule.event = read.Text("event");
    rule.target = read.Text("target");
    rule.content = read.Text("content");
    return rule;
}

LevelObject ReadObject(const XMLElement& element) {
    LevelObject object;
    object.kind = element.Name();
    object.line = element.GetLineNum();
    AttributeReader read(element, object.problems);
    object.name = read.Text("name");
    object.x = read.Number("x");
    object.y = read.Number("y");
    object.radius = read.Number("radius");

    const ObjectKind* kind = FindObjectKind(object.kind);
    object.known = kind != nullptr;
    if (kind) {
        for (const char* attribute : kind->attributes) {
            if (float* field = NumberField(object, attribute)) {
                *field = read.Number(attribute);
            } else if (std::string(attribute) == "count") {
                object.count = read.WholeNumber(attribute);
            }
        }
    }

    if (object.kind == "TeleportEntrance") {
        if (const XMLElement* exits = element.FirstChildElement("Exits")) {
            for (const XMLElement* exit = exits->FirstChildElement("Exit"); exit;
                 exit = exit->NextSiblingElement("Exit")) {
                const char* name = exit->Attribute("name");
                if (!name) {
                    object.problems.push_back({"Exit.name", AttributeProblem::Missing});
                } else if (*name) {
                    object.exits.push_back(name);
                }
            }
        }
    }

    // Kept for every kind, so the linter can point out the messages the game drops.
    if (const XMLElement* messages = element.FirstChildElement("Messages")) {
        for (const XMLElement* message = messages->FirstChildElement("Message"); message;
             message = message->NextSiblingElement("Message")) {
            object.rules.push_back(ReadRule(*message));
        }
    }
    return object;
}

}  // namespace

bool ReadNumber(const char* text, float& value, bool* trailing) { return ReadWithStream(text, value, trailing); }

bool ReadWholeNumber(const char* text, int32_t& value, bool* trailing) {
    return ReadWithStream(text, value, trailing);
}

bool ReadLevelFile(const std::string& path, LevelFile& file, std::string& error) {
    file = LevelFile{};
    error.clear();

    std::vector<uint8_t> bytes;
    std::string reason;
    if (!ReadWholeFile(path, level_limits::kMaxFileBytes, bytes, reason)) {
        error = path + ": " + reason;
        if (bytes.size() > level_limits::kMaxFileBytes) error += ", too large for a level";
        return false;
    }
    tinyxml2::XMLDocument document;
    if (document.Parse(reinterpret_cast<const char*>(bytes.data()), bytes.size()) != tinyxml2::XML_SUCCESS) {
        // tinyxml2's text names the error and its line.
        file.errorLine = document.ErrorLineNum();
        error = path + ": " + document.ErrorStr();
        return false;
    }
    file.wellFormed = true;
    const XMLElement* root = document.RootElement();
    if (!root) {
        error = path + ": holds no element; a level file starts with <VelloranLevel>";
        return false;
    }
    file.rootName = root->Name();
    if (file.rootName != "VelloranLevel") {
        file.errorLine = root->GetLineNum();
        error = path + ": line " + std::to_string(file.errorLine) + ": the first element is <" + file.rootName +
                ">, not <VelloranLevel>";
        return false;
    }

    if (const XMLElement* info = root->FirstChildElement("LevelInfo")) {
        if (const char* name = info->Attribute("name")) file.name = name;
        if (const char* description = info->Attribute("description")) file.description = description;
    }
    if (const XMLElement* tracks = root->FirstChildElement("Tracks")) {
        for (const XMLElement* track = tracks->FirstChildElement("Track"); track;
             track = track->NextSiblingElement("Track")) {
            file.tracks.push_back(ReadTrack(*track));
        }
    }
    if (const XMLElement* objects = root->FirstChildElement("Objects")) {
        for (const XMLElement* object = objects->FirstChildElement(); object; object = object->NextSiblingElement()) {
            file.objects.push_back(ReadObject(*object));
        }
    }
    if (const size_t count = file.tracks.size() + file.objects.size(); count > level_limits::kMaxElements) {
        error = path + ": holds " + std::to_string(count) + " tracks and objects; a level may hold at most " +
                std::to_string(level_limits::kMaxElements);
        return false;
    }
    return true;
}

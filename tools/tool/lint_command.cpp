// velloran-tool lint LEVEL [--root DIR]: reads a level file the way the game does and reports
// what would go wrong or surprise when it is played, with the line of each problem.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "formats/max_model.h"
#include "level/level_file.h"
#include "level/level_limits.h"
#include "level/object_kinds.h"
#include "tools/tool/commands.h"
#include "tools/tool/json_output.h"
#include "tools/tool/lint_numbers.h"
#include "tools/tool/lint_placement.h"
#include "tools/tool/lint_problem.h"
#include "tools/tool/tool_args.h"

namespace {

using lint::Describe;
using lint::Number;
using lint::Problem;
using lint::Quote;
using lint::ReadWell;

const char* kLintUsage =
    "usage: velloran-tool lint LEVEL [--root DIR]\n"
    "\n"
    "Changes into DIR (default: the current directory, which holds Media/), reads the level\n"
    "file LEVEL there with the game's reader, loads the models it uses, and prints:\n"
    "  {\"ok\": true|false, \"problems\": [{\"severity\": \"error\"|\"warning\", \"line\": N,\n"
    "   \"element\": \"...\", \"message\": \"...\"}, ...]}\n"
    "Errors break the level; warnings point at things that probably do not do what was meant.\n"
    "Exits 1 when there is any error, 0 otherwise.\n";

int UsageError(const std::string& problem) { return ToolUsageError("lint", problem, kLintUsage); }

// Radii may be off by this fraction of the model's size before the linter says so.
constexpr double kRadiusTolerance = 0.02;

struct ModelFacts {
    bool loaded = false;
    std::string error;
    size_t subModels = 0;
    double radius = 0;  // the largest distance of a vertex from the z axis
    SubModel first;     // what a track made of it collides with
};

bool Has(const std::vector<const char*>& list, const std::string& item) {
    return std::any_of(list.begin(), list.end(), [&](const char* entry) { return item == entry; });
}

// "SetSpeed" is followed by the new speed; every other content must match exactly.
bool Understands(const ObjectKind& kind, const std::string& content) {
    if (Has(kind.contents, content) && content != "SetSpeed") return true;
    if (!Has(kind.contents, "SetSpeed")) return false;
    std::istringstream in(content);
    std::string word;
    in >> word;
    std::string rest;
    std::getline(in, rest, '\0');
    float speed = 0;
    return word == "SetSpeed" && ReadNumber(rest.c_str(), speed);
}

class Linter {
public:
    explicit Linter(const LevelFile& file) : file_(file) {}

    std::vector<Problem> Run() {
        IndexObjects();
        CheckElementCount();
        std::vector<lint::TrackMesh> meshes;
        for (const LevelTrack& track : file_.tracks) {
            ReportAttributes(track.problems, track.line, "Track", Describe(track));
            lint::CheckTrackNumbers(track, problems_);
            if (const SubModel* mesh = CheckTrackModels(track)) meshes.push_back({&track, mesh});
        }
        for (const LevelObject& object : file_.objects) CheckObject(object);
        CheckGoals();
        lint::CheckPlacement(file_, meshes, problems_);
        std::stable_sort(problems_.begin(), problems_.end(),
                         [](const Problem& a, const Problem& b) { return a.line < b.line; });
        return problems_;
    }

private:
    void Add(bool error, int line, const std::string& element, const std::string& message) {
        problems_.push_back({error, line, element, message});
    }

    void IndexObjects() {
        for (const LevelObject& object : file_.objects) {
            if (!object.known) continue;  // the game skips unknown kinds, so their names name nothing
            byName_[object.name].push_back(&object);
            if (object.kind == "TeleportEntrance") exitNames_.insert(object.exits.begin(), object.exits.end());
        }
    }

    // Counted as the reader counts them, unknown kinds included; reported on the first element
    // past the limit.
    void CheckElementCount() {
        const size_t count = file_.tracks.size() + file_.objects.size();
        if (count <= level_limits::kManyElements) return;
        const bool refused = count > level_limits::kMaxElements;
        const size_t limit = refused ? level_limits::kMaxElements : level_limits::kManyElements;
        std::vector<std::pair<int, std::string>> elements;
        for (const LevelTrack& track : file_.tracks) elements.emplace_back(track.line, "Track");
        for (const LevelObject& object : file_.objects) elements.emplace_back(object.line, object.kind);
        std::nth_element(elements.begin(), elements.begin() + long(limit), elements.end());
        const auto& [line, element] = elements[limit];
        const std::string counted = std::to_string(count) + " tracks and objects";
        if (refused) {
            Add(true, line, element,
                counted + ": the game refuses to load a level with more than " + std::to_string(limit));
        } else {
            Add(false, line, element,
                counted + ", more than " + std::to_string(limit) +
                    ": every one costs time in every frame (piles of balls the square of their number), so "
                    "every frame slows down");
        }
    }

    void ReportAttributes(const std::vector<AttributeProblem>& problems, int line, const std::string& element,
                          const std::string& who) {
        for (const AttributeProblem& problem : problems) {
            const std::string attribute = Quote(problem.attribute);
            switch (problem.kind) {
                case AttributeProblem::Missing:
                    Add(true, line, element, who + ": missing attribute " + attribute);
                    break;
                case AttributeProblem::NotANumber:
                    Add(true, line, element, who + ": attribute " + attribute + " holds no number (read as 0)");
                    break;
                case AttributeProblem::TrailingText:
                    Add(false, line, element,
                        who + ": attribute " + attribute + " has text after its number, which is ignored");
                    break;
            }
        }
    }

    const ModelFacts& Model(const std::string& path) {
        auto found = models_.find(path);
        if (found != models_.end()) return found->second;
        ModelFacts& facts = models_[path];
        MaxModel model;
        facts.loaded = model.Load(path);
        facts.error = model.LoadError();
        facts.subModels = model.subModels.size();
        for (const SubModel& sub : model.subModels) {
            for (const Vector3& v : sub.vertices) {
                facts.radius = std::max(facts.radius, std::sqrt(double(v.x) * v.x + double(v.y) * v.y));
            }
        }
        if (facts.loaded && !model.subModels.empty()) facts.first = std::move(model.subModels.front());
        return facts;
    }

    // Returns the mesh balls collide with, when there is one.
    const SubModel* CheckTrackModels(const LevelTrack& track) {
        const std::string who = Describe(track);
        const SubModel* mesh = nullptr;
        if (ReadWell(track.problems, "collisionModel")) {
            const ModelFacts& collision = Model("Media/" + track.collisionModel);
            if (!collision.loaded) {
                Add(true, track.line, "Track", who + ": collision model does not load: " + collision.error);
            } else if (collision.subModels == 0) {
                Add(true, track.line, "Track",
                    who + ": collision model " + Quote(track.collisionModel) + " holds no sub-model to collide with");
            } else {
                mesh = &collision.first;
            }
        }
        if (ReadWell(track.problems, "renderModel")) {
            const ModelFacts& render = Model("Media/" + track.renderModel);
            if (!render.loaded) Add(true, track.line, "Track", who + ": render model does not load: " + render.error);
        }
        return mesh;
    }

    void CheckObject(const LevelObject& object) {
        const std::string who = Describe(object);
        ReportAttributes(object.problems, object.line, object.kind, who);
        const ObjectKind* kind = FindObjectKind(object.kind);
        if (!kind) {
            std::string message = "unknown object kind " + Quote(object.kind) + ": the game skips it";
            if (!object.rules.empty()) {
                message += " and drops its " + std::to_string(object.rules.size()) + " message(s)";
            }
            Add(false, object.line, object.kind, message);
            for (const LevelRule& rule : object.rules) {
                ReportAttributes(rule.problems, rule.line, "Message", "Message of " + who);
            }
            return;
        }
        if (kind->usesRadius && ReadWell(object.problems, "radius") && object.radius <= 0) {
            Add(false, object.line, object.kind, who + ": radius " + Number(object.radius) + " is not above 0");
        }
        lint::CheckObjectNumbers(object, *kind, problems_);
        CheckClassModel(object, *kind);
        if (Has(kind->attributes, "mass") && ReadWell(object.problems, "mass") && object.mass <= 0) {
            Add(true, object.line, object.kind,
                who + ": mass " + Number(object.mass) + " is not above 0, so the object gets no body");
        }
        if (object.kind == "TeleportEntrance") CheckExits(object);
        if (object.kind == "Goal") goals_.push_back(&object);
        for (const LevelRule& rule : object.rules) CheckRule(object, *kind, rule);
    }

    void CheckClassModel(const LevelObject& object, const ObjectKind& kind) {
        const std::string file = std::string("Media/") + kind.model;
        const ModelFacts& model = Model(file);
        if (!model.loaded) {
            if (reportedModels_.insert(file).second) {
                Add(true, object.line, object.kind,
                    std::string("the ") + kind.className + " model does not load: " + model.error);
            }
            return;
        }
        if (!kind.usesRadius || !ReadWell(object.problems, "radius") || object.radius <= 0) return;
        if (model.radius > 0 && std::fabs(object.radius - model.radius) > kRadiusTolerance * model.radius) {
            Add(false, object.line, object.kind,
                Describe(object) + ": radius " + Number(object.radius) + " differs from the size of its model " +
                    Quote(file) + ", " + Number(model.radius));
        }
    }

    void CheckExits(const LevelObject& entrance) {
        const std::string who = Describe(entrance);
        if (entrance.exits.empty()) {
            Add(false, entrance.line, entrance.kind, who + ": has no exits, so nothing that enters comes out");
            return;
        }
        std::vector<std::string> dangling;
        for (const std::string& exit : entrance.exits) {
            if (!byName_.count(exit)) dangling.push_back(exit);
        }
        if (dangling.size() == entrance.exits.size()) {
            std::string names;
            for (const std::string& exit : dangling) names += (names.empty() ? "" : ", ") + Quote(exit);
            Add(true, entrance.line, entrance.kind, who + ": none of its exits names an object (" + names + ")");
            return;
        }
        for (const std::string& exit : dangling) {
            Add(false, entrance.line, entrance.kind, who + ": exit " + Quote(exit) + " names no object");
        }
    }

    void CheckRule(const LevelObject& object, const ObjectKind& kind, const LevelRule& rule) {
        const std::string who = "Message of " + Describe(object);
        ReportAttributes(rule.problems, rule.line, "Message", who);
        if (ReadWell(rule.problems, "event") && !Has(kind.events, rule.event)) {
            // Whatever an entrance sends out raises Exit as it arrives.
            if (rule.event != "Exit") {
                Add(false, rule.line, "Message",
                    who + ": " + kind.className + " never raises " + Quote(rule.event) + ", so it is never sent");
            } else if (!exitNames_.count(object.name)) {
                Add(false, rule.line, "Message",
                    who + ": " + Quote("Exit") + " is never raised: no TeleportEntrance lists " + Quote(object.name) +
                        " as an exit");
            }
        }
        if (!ReadWell(rule.problems, "target")) return;
        auto targets = byName_.find(rule.target);
        if (targets == byName_.end()) {
            Add(false, rule.line, "Message", who + ": target " + Quote(rule.target) + " names no object");
            return;
        }
        if (!ReadWell(rule.problems, "content")) return;
        const std::vector<const LevelObject*>& named = targets->second;
        const bool understood = std::any_of(named.begin(), named.end(), [&](const LevelObject* target) {
            return Understands(*FindObjectKind(target->kind), rule.content);
        });
        if (!understood) {
            Add(false, rule.line, "Message",
                who + ": no object named " + Quote(rule.target) + " understands " + Quote(rule.content));
        }
    }

    void CheckGoals() {
        if (goals_.size() < 2) return;
        const LevelObject& last = *goals_.back();
        for (size_t i = 0; i + 1 < goals_.size(); ++i) {
            Add(false, goals_[i]->line, goals_[i]->kind,
                Describe(*goals_[i]) + ": one of " + std::to_string(goals_.size()) +
                    " Goals; only the last one, on line " + std::to_string(last.line) + ", sets the quota");
        }
    }

    const LevelFile& file_;
    std::vector<Problem> problems_;
    std::map<std::string, ModelFacts> models_;
    std::set<std::string> reportedModels_;
    std::map<std::string, std::vector<const LevelObject*>> byName_;
    std::set<std::string> exitNames_;
    std::vector<const LevelObject*> goals_;
};

// File names need not be UTF-8; the JSON must be.
int Print(const std::vector<Problem>& problems) {
    const bool ok = std::none_of(problems.begin(), problems.end(), [](const Problem& p) { return p.error; });
    Json list = Json::array();
    for (const Problem& problem : problems) {
        list.push_back({{"severity", problem.error ? "error" : "warning"},
                        {"line", problem.line},
                        {"element", problem.element},
                        {"message", problem.message}});
    }
    const Json result = {{"ok", ok}, {"problems", list}};
    PrintJson(result);
    return ok ? ToolOk : ToolBadInput;
}

}  // namespace

int RunLint(const std::vector<std::string>& args) {
    ToolArgs parsed;
    std::string problem;
    if (!ParseToolArgs(args, {"--root"}, {}, parsed, problem)) return UsageError(problem);
    if (parsed.help) {
        std::fputs(kLintUsage, stdout);
        return ToolOk;
    }
    const std::vector<std::string>& levels = parsed.positional;
    const bool rootGiven = parsed.Has("--root");
    const std::string root = rootGiven ? parsed.Value("--root") : std::string();
    if (levels.size() != 1) return UsageError(levels.empty() ? "no LEVEL given" : "expected exactly one LEVEL");

    // LEVEL is found as simulate and render find it: from inside DIR, where Media/ is.
    if (rootGiven) {
        std::error_code failure;
        std::filesystem::current_path(root, failure);
        if (failure) return Print({{true, 0, "", "cannot change into " + root + ": " + failure.message()}});
    }
    LevelFile file;
    std::string error;
    if (!ReadLevelFile(levels[0], file, error)) {
        // A file refused for holding too many elements is still read whole: the linter says how
        // many along with everything else.
        const bool tooMany = file.tracks.size() + file.objects.size() > level_limits::kMaxElements;
        if (!tooMany) return Print({{true, file.errorLine, file.rootName, error}});
    }
    const std::vector<Problem> problems = Linter(file).Run();
    return Print(problems);
}

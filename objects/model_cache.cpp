#include "objects/model_cache.h"

#include <utility>

#include "formats/max_model.h"

ModelCache::ModelCache(std::string folder) : folder(std::move(folder)) {}

ModelCache::~ModelCache() = default;

Model* ModelCache::Get(const std::string& file) {
    if (auto it = models.find(file); it != models.end()) return it->second.get();
    auto loaded = std::make_unique<MaxModel>();
    if (!loaded->Load(folder + "/" + file)) return nullptr;
    return models.emplace(file, std::move(loaded)).first->second.get();
}

#pragma once
#include <map>
#include <memory>
#include <string>

class Model;

// The models shared by every object of a class, each loaded from its 3DS file in the media
// folder on first use and kept until the cache goes. A file that fails to load gives null and
// is tried again on the next use.
class ModelCache {
public:
    explicit ModelCache(std::string folder);
    ~ModelCache();
    ModelCache(const ModelCache&) = delete;
    ModelCache& operator=(const ModelCache&) = delete;

    Model* Get(const std::string& file);

private:
    std::string folder;
    std::map<std::string, std::unique_ptr<Model>> models;
};

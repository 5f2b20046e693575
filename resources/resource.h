#pragma once
#include <cstdint>
#include <string>

class Resource;

// Told by a resource when its data comes or goes, so the owner can keep its byte count.
class ILoadListener {
public:
    virtual void OnLoaded(Resource& resource) = 0;
    virtual void OnUnloaded(Resource& resource) = 0;
    // The stamp of a use happening now, for least-recently-used eviction.
    virtual int32_t UseStamp() = 0;

protected:
    ~ILoadListener() = default;
};

// Base of every managed object (textures, sounds). The object lives for the whole run;
// only its data is loaded and unloaded, on demand and under the manager's budget.
class Resource {
public:
    Resource(std::string path, std::string name, ILoadListener* listener);
    virtual ~Resource() = default;

    // Reads the file and makes the data ready; the byte count, or negative on failure.
    virtual int32_t Load(const std::string& path) = 0;
    virtual void Unload() = 0;

    bool EnsureLoaded();
    // Stamps the use and loads the data back if it was evicted. Every use calls this first.
    void MarkUsed();
    void Discard();

    const std::string& Name() const { return name; }
    const std::string& Path() const { return path; }
    int32_t Size() const { return size; }
    bool IsLoaded() const { return loaded; }
    int32_t LastUse() const { return lastUse; }

private:
    std::string name;
    std::string path;
    int32_t size = 0;
    bool loaded = false;
    int32_t lastUse = -1;
    ILoadListener* listener;
};

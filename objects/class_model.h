#pragma once

class Model;

// The model shared by every object of a class, loaded from its 3DS file on the class's first
// construction and kept for the rest of the program. A file that fails to load leaves the
// class without a model; the next construction tries again.
class ClassModel {
public:
    explicit ClassModel(const char* file) : file(file) {}
    Model* Get();

private:
    const char* file;
    Model* model = nullptr;
};

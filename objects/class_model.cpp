#include "objects/class_model.h"

#include "graphics/max_model.h"

Model* ClassModel::Get() {
    if (!model) {
        auto* loaded = new MaxModel();
        if (loaded->Load(file))
            model = loaded;
        else
            delete loaded;
    }
    return model;
}

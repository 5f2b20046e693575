#include "graphics/model_drawing.h"

#include <GL/glew.h>

#include "formats/model.h"
#include "graphics/gl_context.h"
#include "graphics/material.h"
#include "graphics/texture.h"

namespace {

// A sub-model's arrays on the graphics card; 0 for an array it does not have.
class SubModelBuffers : public SubModelDrawData {
public:
    ~SubModelBuffers() override {
        // Without a context the buffers went with it.
        if (!GlContextAvailable()) return;
        const GLuint names[] = {vertices, normals, texCoords, tangents, indices};
        for (GLuint name : names)
            if (name) glDeleteBuffersARB(1, &name);
    }

    GLuint vertices = 0, normals = 0, texCoords = 0, tangents = 0, indices = 0;
};

template <class T>
bool Present(const std::vector<T>& array, const SubModel& sub) {
    return !array.empty() && array.size() == sub.vertices.size();
}

template <class T>
GLuint Upload(GLenum target, const std::vector<T>& array) {
    GLuint name = 0;
    glGenBuffersARB(1, &name);
    glBindBufferARB(target, name);
    glBufferDataARB(target, GLsizeiptrARB(array.size() * sizeof(T)), array.data(), GL_STATIC_DRAW_ARB);
    return name;
}

SubModelBuffers* BuildBuffers(SubModel& sub) {
    if (!GLEW_ARB_vertex_buffer_object) return nullptr;
    auto buffers = std::make_shared<SubModelBuffers>();
    buffers->vertices = Upload(GL_ARRAY_BUFFER_ARB, sub.vertices);
    if (Present(sub.normals, sub)) buffers->normals = Upload(GL_ARRAY_BUFFER_ARB, sub.normals);
    if (Present(sub.texCoords, sub)) buffers->texCoords = Upload(GL_ARRAY_BUFFER_ARB, sub.texCoords);
    if (Present(sub.tangents, sub)) buffers->tangents = Upload(GL_ARRAY_BUFFER_ARB, sub.tangents);
    buffers->indices = Upload(GL_ELEMENT_ARRAY_BUFFER_ARB, sub.triangles);
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
    sub.drawData = buffers;
    return buffers.get();
}

// Indices that point past the vertices would read outside the arrays; such a sub-model is
// not drawn at all.
bool IndicesInRange(const SubModel& sub) {
    const size_t count = sub.vertices.size();
    for (const Triangle& t : sub.triangles)
        if (t.a >= count || t.b >= count || t.c >= count) return false;
    return true;
}

void DrawImmediate(SubModel& sub) {
    const size_t count = sub.vertices.size();
    sub.normals.resize(count, Vector3(0, 0, 1));
    sub.texCoords.resize(count, TexCoord{0, 0});
    sub.tangents.resize(count, Vector3(0, 0, 1));
    glBegin(GL_TRIANGLES);
    for (const Triangle& t : sub.triangles) {
        for (uint32_t i : {t.a, t.b, t.c}) {
            glMultiTexCoord2fvARB(GL_TEXTURE0_ARB, &sub.texCoords[i].u);
            glMultiTexCoord3fvARB(GL_TEXTURE1_ARB, &sub.tangents[i].x);
            glNormal3fv(&sub.normals[i].x);
            glVertex3fv(&sub.vertices[i].x);
        }
    }
    glEnd();
}

// Arrays from memory, or from the buffers when given: then every pointer is an offset of 0.
void DrawArrays(const SubModel& sub, const SubModelBuffers* buffers) {
    const auto source = [buffers](GLuint name, const void* memory) -> const void* {
        if (!buffers) return memory;
        glBindBufferARB(GL_ARRAY_BUFFER_ARB, name);
        return nullptr;
    };
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, source(buffers ? buffers->vertices : 0, sub.vertices.data()));
    const bool normals = buffers ? buffers->normals != 0 : Present(sub.normals, sub);
    const bool texCoords = buffers ? buffers->texCoords != 0 : Present(sub.texCoords, sub);
    const bool tangents = buffers ? buffers->tangents != 0 : Present(sub.tangents, sub);
    if (normals) {
        glEnableClientState(GL_NORMAL_ARRAY);
        glNormalPointer(GL_FLOAT, 0, source(buffers ? buffers->normals : 0, sub.normals.data()));
    }
    if (texCoords) {
        glClientActiveTextureARB(GL_TEXTURE0_ARB);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(2, GL_FLOAT, 0, source(buffers ? buffers->texCoords : 0, sub.texCoords.data()));
    }
    if (tangents) {
        glClientActiveTextureARB(GL_TEXTURE1_ARB);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(3, GL_FLOAT, 0, source(buffers ? buffers->tangents : 0, sub.tangents.data()));
    }
    const void* indices = sub.triangles.data();
    if (buffers) {
        glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, buffers->indices);
        indices = nullptr;
    }
    glDrawElements(GL_TRIANGLES, GLsizei(sub.triangles.size() * 3), GL_UNSIGNED_INT, indices);
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glClientActiveTextureARB(GL_TEXTURE1_ARB);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    glClientActiveTextureARB(GL_TEXTURE0_ARB);
    glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    if (buffers) {
        glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
        glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0);
    }
}

}  // namespace

void DrawSubModel(SubModel& sub, Material* material, Texture* texture) {
    if (!GlContextAvailable() || sub.triangles.empty()) return;
    // Checked once for buffers, which keep what they were built from.
    const bool built = sub.renderMode == 2 && sub.drawData;
    if (!built && !IndicesInRange(sub)) return;
    if (texture)
        texture->Bind();
    else
        glBindTexture(GL_TEXTURE_2D, 0);
    if (material) material->Bind();
    switch (sub.renderMode) {
        case 0:
            DrawImmediate(sub);
            break;
        case 2: {
            auto* buffers = dynamic_cast<SubModelBuffers*>(sub.drawData.get());
            if (!buffers) buffers = BuildBuffers(sub);
            if (buffers)
                DrawArrays(sub, buffers);
            else
                sub.renderMode = 1;  // no buffer objects here: from arrays from the next draw on
            break;
        }
        default:
            DrawArrays(sub, nullptr);
            break;
    }
    if (material) material->Unbind();
    if (texture) texture->Unbind();
}

void DrawModel(Model& model, Material* material, Texture* texture) {
    for (SubModel& sub : model.subModels) DrawSubModel(sub, material, texture);
}

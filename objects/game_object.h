#pragma once
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "core/vector3.h"
#include "objects/message.h"

class Level;
class Model;
class PhysicsSystem;
namespace phys {
class Actor;
class Joint;
}  // namespace phys

// Everything a level holds. An object has a name from the level file, at most one physics
// actor and one joint of its own, a model shared with its class, event rules that send texts
// to other objects by name, and a queue of texts sent to it, handled in its next Update.
class GameObject {
public:
    GameObject(Level& level, std::string name);
    // Releases the joint, then the trigger (triggered objects), then the actor.
    virtual ~GameObject();
    GameObject(const GameObject&) = delete;
    GameObject& operator=(const GameObject&) = delete;

    virtual void HandleMessage(const QueuedMessage& message);
    virtual Vector3 GetPosition() const;
    virtual Vector3 GetVelocity() const;
    // Per-frame logic; the base delivers every queued message.
    virtual void Update();
    virtual bool IsBall() const { return false; }
    // The object's class, as level tools report it ("Ball", "TeleporterEntrance", ...).
    virtual const char* KindName() const = 0;
    // The actor is about to be destroyed: drop it from any list that holds it.
    virtual void ForgetActor(const phys::Actor*) {}

    // Takes over a rule from the level file.
    void AddMessage(std::unique_ptr<Message> message);
    const std::string& GetName() const { return name; }
    // Sends the content of every rule for this event to every object named by its target.
    void RaiseEvent(const std::string& event);

    phys::Actor* GetActor() const { return actor; }
    Model* GetModel() const { return model; }
    size_t GetQueuedCount() const { return queue.size(); }
    const std::vector<std::unique_ptr<Message>>& GetMessages() const { return messages; }

protected:
    PhysicsSystem* Physics() const;
    // Hands every queued message to HandleMessage, oldest first, including any queued meanwhile.
    void DeliverMessages();
    void Receive(GameObject* sender, const std::string& content);

    Level& level;
    phys::Actor* actor = nullptr;
    phys::Joint* joint = nullptr;
    Model* model = nullptr;

private:
    std::vector<std::unique_ptr<Message>> messages;
    std::string name;
    std::deque<QueuedMessage> queue;
};

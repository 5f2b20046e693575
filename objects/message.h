#pragma once
#include <cstddef>
#include <string>

class GameObject;

// An event rule from a level file: when the owner raises `event`, every object named `target`
// is sent `content`.
struct Message {
    std::string event;
    std::string target;
    std::string content;
};

// A content waiting in its target's queue.
struct QueuedMessage {
    GameObject* sender;  // never read by a handler; may be gone by delivery
    std::string content;
};

// More queued messages than this are dropped, silently.
constexpr size_t MessageQueueLimit = 20;

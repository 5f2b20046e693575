#pragma once
#include "physics/trigger_listener.h"

// An object that owns a trigger sphere. The physics step calls it with every actor that
// entered, stayed in or left the sphere; the object records them and acts in its own update.
class ITriggerObject : public phys::TriggerListener {};

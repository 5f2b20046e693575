#pragma once
#include <cstdint>

#include "core/vector3.h"

// The sound a ball makes when it starts touching something, chosen by what it struck.
struct ContactSound {
    const char* name = nullptr;  // none for groups that make no sound
    int32_t volume = 0;          // hundredths of a decibel
};

// Louder the harder the impact: the row's constant divided by the force's length. Weak
// impacts whose formula falls below -10000 (and impacts without force) play at -10000, the
// quietest a sound can be.
ContactSound ChooseContactSound(uint16_t otherGroup, const Vector3& sumNormalForce);

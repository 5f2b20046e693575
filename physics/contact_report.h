#pragma once
#include <cstdint>

#include "engine/vector3.h"
#include "physics/scene.h"

class ContactSoundPlayer;

// Told of every reported contact of a ball, before its sound is chosen.
class ContactListener {
public:
    virtual ~ContactListener() = default;
    virtual void OnBallContact(phys::Actor* ball, phys::Actor* other) = 0;
};

// The sound a ball makes when it starts touching something, chosen by what it struck.
struct ContactSound {
    const char* name = nullptr;  // none for groups that make no sound
    int32_t volume = 0;          // hundredths of a decibel
};

// Plays the collision sound of every reported contact. Only pairs with a ball are reported.
class ContactReport : public phys::UserContactReport {
public:
    void SetSoundPlayer(ContactSoundPlayer* player) { sounds = player; }
    void SetListener(ContactListener* value) { listener = value; }
    void OnContactNotify(const phys::ContactPair& pair, uint32_t events) override;

    // Louder the harder the impact: the row's constant divided by the force's length. Weak
    // impacts whose formula falls below -10000 (and impacts without force) play at -10000,
    // the quietest a sound can be.
    static ContactSound Choose(uint16_t otherGroup, const Vector3& sumNormalForce);

private:
    ContactSoundPlayer* sounds = nullptr;
    ContactListener* listener = nullptr;
};

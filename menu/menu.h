#pragma once

enum MenuChoice {
    ChoiceNothing = 0,
    ChoiceNewGame = 1,
    ChoiceLevelSelect = 3,
    ChoiceOptions = 4,
    ChoiceCredits = 5,
    ChoiceQuit = 6,
};

// The front screen. Update draws it and gives the player's choice of this frame.
class Menu {
public:
    virtual ~Menu() = default;
    virtual MenuChoice Update();
};

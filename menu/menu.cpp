#include "menu/menu.h"

// The buttons and their pictures arrive with the front-end work; until then the menu offers
// no choice and the screen shows the clear colour.
MenuChoice Menu::Update() { return ChoiceNothing; }

#include "engine/command_line.h"
#include "engine/game_engine.h"

int main(int argc, char** argv) {
    CommandLine() = JoinArguments(argc, argv);
    return GameEngine::GetInstance()->Run();
}

#pragma once

// Keeps every shared library loaded now in memory until the program ends, whoever unloads
// it. Call it once the GL context exists, so EGL's vendor library and Mesa's driver are among
// them.
void KeepLoadedModulesUntilExit();

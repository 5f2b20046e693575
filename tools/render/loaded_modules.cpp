// SDL unloads EGL, and with it Mesa's driver, when its video system quits. The one-time state
// those libraries keep in their globals is then unreachable, and LeakSanitizer (scripts/
// sanitize.sh) reports it as lost without being able to name the code that made it. A program
// about to end gains nothing by unloading them, so they stay.
#include "tools/render/loaded_modules.h"

#include <dlfcn.h>
#include <link.h>

void KeepLoadedModulesUntilExit() {
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void*) {
            // The program itself has an empty name and cannot be unloaded anyway.
            if (info->dlpi_name && info->dlpi_name[0]) dlopen(info->dlpi_name, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
            return 0;
        },
        nullptr);
}

#pragma once
#include <string>

namespace platform {

// A plain message box (text only, no title, OK). The text always goes to standard error too.
// With no display, or with VELLORAN_MESSAGES_TO_STDERR set (tests, tools), standard error is
// the only place it goes, so nothing can wait on a click.
void ShowMessage(const std::string& text);

}  // namespace platform

// The table `Sailfish`: keys on the screen, for platforms that have them.

#include "host/binding.h"
#include "host/index.h"
#include "host/registration.h"

namespace {

Variable registerSailfishButton(const Arguments& arguments) {
    const int keyCode = arguments.integer(0, "keyCode");
    const std::string displayText = arguments.text(1, "displayText");
    const int x = arguments.integer(2, "x");
    const int y = arguments.integer(3, "y");
    wm_sailfish_register_key(keyCode, displayText.c_str(), x, y);
    return {};
}

Variable sailfishOrientation(const Arguments&) { return wm_sailfish_left_orientation(); }

} // namespace

void registerSailfishTable() {
    constexpr ModuleEntry entries[] = {
        {"key", registerSailfishButton},
        {"orientation", sailfishOrientation},
    };
    engine.pushVariable("Sailfish", makeModule("Sailfish", entries));
}

// The table `Ostrel`: the host itself. Globals by name, the two clocks, clickable rectangles, whole files.

#include "host/binding.h"
#include "host/checksum.h"
#include "host/index.h"
#include "host/registration.h"
#include "host/whole_file.h"

#include <cstdio>

namespace {

/// What `Ostrel.setVar` makes of a value; the numbers are the constants OSTREL_INT to OSTREL_STRING.
enum class Coercion { Integer = 0, Float = 1, Boolean = 2, String = 3 };

using Clock = std::chrono::system_clock;

int wholeMilliseconds(Clock::duration duration) {
    return static_cast<int>(std::chrono::duration_cast<std::chrono::milliseconds>(duration).count());
}

Variable runOstrelScript(const Arguments& arguments) {
    engine.runScript(arguments.text(0, "scriptText"));
    return {};
}

Variable getOstrelVariable(const Arguments& arguments) { return engine.pullVariable(arguments.text(0, "name")); }

/// The value of `Ostrel.setVar` after its datatype.
Variable coercedValue(const Arguments& arguments) {
    constexpr std::size_t valuePosition = 1;
    constexpr std::size_t datatypePosition = 2;
    if (arguments.count() <= valuePosition) return {};
    const Variable& value = arguments.at(valuePosition);
    if (arguments.count() <= datatypePosition || !arguments.at(datatypePosition).isNumeric()) return value;
    switch (static_cast<Coercion>(arguments.integer(datatypePosition, "datatype"))) {
    case Coercion::Integer: return arguments.integer(valuePosition, "value");
    case Coercion::Float: return static_cast<float>(arguments.number(valuePosition, "value"));
    case Coercion::Boolean: return value.isNumeric() ? toDouble(value) != 0.0 : engine.isTruthy(value);
    case Coercion::String: return arguments.text(valuePosition, "value");
    default: return value; // functions, pointers, and what is no datatype
    }
}

Variable setOstrelVariable(const Arguments& arguments) {
    const std::string name = arguments.text(0, "name");
    engine.pushVariable(name, coercedValue(arguments));
    return {};
}

Variable getGlobalClock(const Arguments&) { return wholeMilliseconds(Clock::now() - gtime); }

Variable getFrameClock(const Arguments&) {
    const Clock::time_point now = Clock::now();
    const int sinceLast = wholeMilliseconds(now - wtime);
    wtime = now;
    return sinceLast;
}

Variable sleepForMs(const Arguments& arguments) {
    wm_sleep_ms(arguments.integer(0, "milliseconds"));
    return {};
}

Variable checkBoundsBinding(const Arguments& arguments) {
    const double x = arguments.number(0, "x");
    const double y = arguments.number(1, "y");
    return checkButtons(buttons, x, y);
}

Variable pushButtonBinding(const Arguments& arguments) {
    ButtonRectangle button;
    button.x1 = arguments.integer(0, "x1");
    button.x2 = arguments.integer(1, "x2");
    button.y1 = arguments.integer(2, "y1");
    button.y2 = arguments.integer(3, "y2");
    button.result = arguments.integer(4, "result");
    buttons.push_back(button);
    return {};
}

Variable clearButtonsBinding(const Arguments&) {
    buttons.clear();
    return {};
}

Variable checksumBinding(const Arguments& arguments) {
    return static_cast<int>(textChecksum(arguments.text(0, "text")));
}

Variable getRuntimePath(const Arguments&) { return path; }

Variable hostLog(const Arguments& arguments) {
    const std::string message = arguments.text(0, "message") + "\n";
    std::fwrite(message.data(), 1, message.size(), stderr);
    return {};
}

Variable readFileBinding(const Arguments& arguments) {
    const std::string filePath = engine.resolvePath(arguments.text(0, "path"));
    std::optional<std::string> bytes = readWholeFile(filePath);
    if (!bytes) arguments.fail("failed to read file: " + filePath);
    return *std::move(bytes);
}

} // namespace

void registerOstrelTable() {
    constexpr std::size_t setVarValue = 1; // takes any value, a multi value too
    constexpr ModuleEntry entries[] = {
        {"runScript", runOstrelScript},
        {"getVar", getOstrelVariable},
        {"setVar", setOstrelVariable, setVarValue},
        {"getGlobalTime", getGlobalClock},
        {"getClock", getFrameClock},
        {"sleep", sleepForMs},
        {"checkButton", checkBoundsBinding},
        {"pushButton", pushButtonBinding},
        {"clearButtons", clearButtonsBinding},
        {"checksum", checksumBinding},
        {"getPath", getRuntimePath},
        {"hostLog", hostLog},
        {"readFile", readFileBinding},
    };
    engine.pushVariable("Ostrel", makeModule("Ostrel", entries));
}

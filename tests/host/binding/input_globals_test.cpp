// The input globals while there is no window.

#include "host/index.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::string> keyNames() {
    std::vector<std::string> names = {"RETURN", "UP", "DOWN", "LEFT", "RIGHT"};
    for (char letter = 'A'; letter <= 'Z'; ++letter) names.emplace_back(1, letter);
    for (char digit = '1'; digit <= '9'; ++digit) names.emplace_back(1, digit);
    names.insert(names.end(), {"0", "BACK", "DELETE", "SPACE"});
    return names;
}

void expectReleased(const std::string& name) {
    const Variable value = engine.pullVariable(name);
    ASSERT_EQ(value.type, VarType::Boolean) << name;
    EXPECT_FALSE(value.asBool()) << name;
}

TEST(InputGlobals, WithoutAWindowTheMouseIsNowhereAndAllIsReleased) {
    ASSERT_EQ(win, nullptr);
    engine.pushVariable("OSTREL_MOUSE_X", 5);
    engine.pushVariable("OSTREL_MOUSE_Y", 5);
    engine.pushVariable("OSTREL_MOUSE_1", true);
    engine.pushVariable("OSTREL_KEY_A", true);
    publishInputGlobals();
    for (const char* name : {"OSTREL_MOUSE_X", "OSTREL_MOUSE_Y"}) {
        const Variable value = engine.pullVariable(name);
        ASSERT_EQ(value.type, VarType::Integer) << name;
        EXPECT_EQ(value.asInt(), -1) << name;
    }
    for (int button = 1; button <= 3; ++button) expectReleased("OSTREL_MOUSE_" + std::to_string(button));
    for (int button = 1; button <= 4; ++button) expectReleased("OSTREL_TOUCHBAR_" + std::to_string(button));
    const std::vector<std::string> names = keyNames();
    EXPECT_EQ(names.size(), 44U);
    for (const std::string& name : names) expectReleased("OSTREL_KEY_" + name);
}

} // namespace

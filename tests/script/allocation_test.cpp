// Computing with numbers costs no allocation, however often it is done.
//
// The whole program's `operator new` counts. A loop that runs ten times and one that runs a thousand times make
// the same number of allocations if a round makes none; what a text costs to be read and what the first rounds reserve
// drops out.

#include "allocation_count.h"
#include "script/ostrel_script.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* setting = R"(i = 3
f = 0.5
b = true
list = [4, 5, 6]
map = {key = 7}
name = "key"
function plus(x, y)
return x + y
end
function guarded(x)
if x < 0
error("negative")
end
return x * 2
end)";

std::size_t allocationsOf(const std::string& statement, int rounds) {
    OstrelScript engine;
    engine.runScript(setting);
    const std::string text = "for round = 1, limit\n" + statement + "\nend";
    engine.pushVariable("limit", 5);
    engine.runScript(text); // reserves what any number of rounds needs
    engine.pushVariable("limit", rounds);
    const std::size_t before = allocationCount();
    engine.runScript(text);
    return allocationCount() - before;
}

} // namespace

TEST(ScalarEvaluation, AllocatesNothing) {
    for (const char* statement : {"x = i * 2 + round",
                                  "x = f / 3 - -i",
                                  "x = i \\ 2 % 5",
                                  "x = round ^ 2",
                                  "x = 2 <- 2",
                                  "x = b + b",
                                  "x = i < f and b or not b",
                                  "x = i == 3 and !b",
                                  "x = list[2] + list[i - 2]",
                                  "x = map[\"key\"] + map[name]",
                                  "x = #list + #name",
                                  "x = plus(i, f)",
                                  "x = plus(plus(1, 2), round)",
                                  "x = guarded(round)",
                                  "x = math[\"floor\"](f) + math[\"max\"](1, i, f)",
                                  "x = len(list)",
                                  "i += 1\ni -= 1\ni *= 1\nf /= 1\ni \\= 1",
                                  "x = nobody",
                                  "list[1] = round",
                                  "plus(i, f)",
                                  "if i > 2\nx = 1\nelse\nx = 2\nend",
                                  "while i < 3\nend\nrepeat\nuntil i == 3",
                                  "for k = 1, 3\nx = k\nend"})
        EXPECT_EQ(allocationsOf(statement, 1000), allocationsOf(statement, 10)) << statement;
}

TEST(ScalarEvaluation, IsWatchedByACounterThatSeesAllocations) {
    EXPECT_GT(allocationsOf("x = [round]", 1000), allocationsOf("x = [round]", 10) + 900);
}

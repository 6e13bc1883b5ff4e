// Computing with numbers costs no allocation, however often it is done.
//
// The whole program's `operator new` counts here. A loop that runs ten times and one that runs a thousand times make
// the same number of allocations if a round makes none; what a text costs to be read and what the first rounds reserve
// drops out.

#include "script/ostrel_script.h"

#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <new>

namespace {

std::atomic<std::size_t> allocations{0};

} // namespace

void* operator new(std::size_t size) {
    ++allocations;
    void* const memory = std::malloc(size > 0 ? size : 1);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    ++allocations;
    return std::malloc(size > 0 ? size : 1);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

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
    const std::size_t before = allocations;
    engine.runScript(text);
    return allocations - before;
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

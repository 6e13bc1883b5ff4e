// The pattern engine beside std::regex and Lua's matcher, on the same subject in one run. Before anything is timed, the
// numbers of matches are compared, so that nobody wins by finding less.

#include "lua_peer.h"
#include "pattern/match_iterator.h"
#include "pattern_cases.h"
#include "ratio_table.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <regex>

namespace pattern::bench {

namespace {

std::size_t countOurs(const Pattern& compiled, const std::string& text, Match& match) {
    std::size_t count = 0;
    for (MatchIterator matches(compiled, text, match); matches.next();) ++count;
    return count;
}

std::size_t countStandard(const std::regex& compiled, const std::string& text) {
    const std::sregex_iterator begin(text.begin(), text.end(), compiled);
    return static_cast<std::size_t>(std::distance(begin, std::sregex_iterator()));
}

/// Every match replaced by "-", as a script's gsub does it.
std::size_t replaceOurs(const Pattern& compiled, const std::string& text, Match& match) {
    std::string result;
    std::size_t copied = 0;
    std::size_t count = 0;
    for (MatchIterator matches(compiled, text, match); matches.next(); ++count) {
        result.append(text, copied, match[0].begin - copied);
        result += '-';
        copied = match[0].end;
    }
    result.append(text, copied);
    benchmark::DoNotOptimize(result.data());
    return count;
}

std::size_t replaceStandard(const std::regex& compiled, const std::string& text) {
    const std::string result = std::regex_replace(text, compiled, "-");
    benchmark::DoNotOptimize(result.data());
    return result.size();
}

std::regex standardPattern(const Case& sample) {
    return std::regex(sample.source,
                      sample.ignoreCase ? std::regex::ECMAScript | std::regex::icase : std::regex::ECMAScript);
}

void add(const std::string& name, std::function<std::size_t()> work) {
    benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(work());
    })->Unit(benchmark::kMicrosecond);
}

void checkCounts(const Case& sample, const std::string& text) {
    Match match;
    const std::size_t ours = countOurs(Pattern::compile(sample.source, {sample.ignoreCase, false}), text, match);
    const std::size_t standard = countStandard(standardPattern(sample), text);
    const bool hasLua = LuaPeer::exists() && sample.lua != nullptr;
    const std::size_t lua = hasLua ? LuaPeer(LuaTask::CountMatches, sample.lua, text).run() : ours;
    // Lua drops an empty match behind another match, std::regex doesn't.
    const bool countsEmpty = std::string_view(sample.source) == "z*";
    if (ours == standard && (ours == lua || countsEmpty)) return;
    std::fprintf(stderr, "%s: %zu matches, std::regex %zu, Lua %zu\n", sample.name, ours, standard, lua);
    std::exit(1);
}

void registerTask(const char* task, const Case& sample, const std::string& text, LuaTask luaTask) {
    const std::string name = std::string(task) + "/" + sample.name + "/";
    const Pattern ours = Pattern::compile(sample.source, {sample.ignoreCase, false});
    const std::regex standard = standardPattern(sample);
    const auto match = std::make_shared<Match>();
    const bool replaces = luaTask == LuaTask::Replace;
    add(name + "ours",
        [=, &text] { return replaces ? replaceOurs(ours, text, *match) : countOurs(ours, text, *match); });
    add(name + "std",
        [=, &text] { return replaces ? replaceStandard(standard, text) : countStandard(standard, text); });
    if (!LuaPeer::exists() || sample.lua == nullptr) return;
    const auto lua = std::make_shared<LuaPeer>(luaTask, sample.lua, text);
    add(name + "lua", [lua] { return lua->run(); });
}

} // namespace

} // namespace pattern::bench

int main(int argc, char** argv) {
    using namespace pattern::bench;
    benchmark::Initialize(&argc, argv);
    static const std::string line = "    lantern_garden = 4711  -- shown at 2024-02-29, \"quoted\"";
    for (const Case& sample : cases()) checkCounts(sample, subject());
    for (const Case& sample : cases()) registerTask("all matches in 64 KiB", sample, subject(), LuaTask::CountMatches);
    for (const Case& sample : cases()) registerTask("replacing in 64 KiB", sample, subject(), LuaTask::Replace);
    for (const Case& sample : cases()) registerTask("all matches in one line", sample, line, LuaTask::CountMatches);
    RatioTable table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}

// Lua's own matcher at the same work, as the peer of the benchmark.

#pragma once

#include <memory>
#include <string>

namespace pattern::bench {

/// What Lua's string library does with a pattern.
enum class LuaTask {
    CountMatches, // steps through all matches by string.find
    Replace,      // string.gsub with the replacement "-"
};

class LuaPeer {
public:
    /// Whether Lua was there when this was built.
    static bool exists();

    LuaPeer(LuaTask task, const std::string& pattern, const std::string& subject);
    ~LuaPeer();
    LuaPeer(const LuaPeer&) = delete;
    LuaPeer& operator=(const LuaPeer&) = delete;

    /// Does the work once and gives the number of matches.
    std::size_t run();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace pattern::bench

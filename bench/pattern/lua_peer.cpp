// Lua runs as a library in this process. A call from C into Lua costs well under a microsecond, once per pass over the
// subject; the loop over the matches is written in Lua, as a script would have it.

#include "lua_peer.h"

#include <lua.hpp>

#include <cstdio>
#include <cstdlib>

namespace pattern::bench {

namespace {

constexpr const char* countMatches = R"(
    local subject, pattern = ...
    local find = string.find
    return function()
        local count, from, last = 0, 1, nil
        while true do
            local first, stop = find(subject, pattern, from)
            if not first then return count end
            if stop < first and last == first then
                -- behind a match, an empty one at its end doesn't count, as in gmatch
                from = first + 1
                last = nil
            else
                count = count + 1
                from = stop < first and first + 1 or stop + 1
                last = stop >= first and from or nil
            end
        end
    end
)";

constexpr const char* replace = R"(
    local subject, pattern = ...
    local gsub = string.gsub
    return function()
        local text, count = gsub(subject, pattern, "-")
        return count
    end
)";

} // namespace

struct LuaPeer::State {
    lua_State* lua = luaL_newstate();

    void check(int status) {
        if (status == LUA_OK) return;
        std::fprintf(stderr, "lua: %s\n", lua_tostring(lua, -1));
        std::exit(1);
    }
};

bool LuaPeer::exists() { return true; }

LuaPeer::LuaPeer(LuaTask task, const std::string& pattern, const std::string& subject)
    : state_(std::make_unique<State>()) {
    lua_State* const lua = state_->lua;
    luaL_openlibs(lua);
    state_->check(luaL_loadstring(lua, task == LuaTask::Replace ? replace : countMatches));
    lua_pushlstring(lua, subject.data(), subject.size());
    lua_pushlstring(lua, pattern.data(), pattern.size());
    state_->check(lua_pcall(lua, 2, 1, 0));
}

LuaPeer::~LuaPeer() { lua_close(state_->lua); }

std::size_t LuaPeer::run() {
    lua_State* const lua = state_->lua;
    lua_pushvalue(lua, -1);
    state_->check(lua_pcall(lua, 0, 1, 0));
    const lua_Integer count = lua_tointeger(lua, -1);
    lua_pop(lua, 1);
    return static_cast<std::size_t>(count);
}

} // namespace pattern::bench

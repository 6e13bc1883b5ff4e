// Stands in for the peer where Lua isn't installed.

#include "lua_peer.h"

namespace pattern::bench {

struct LuaPeer::State {};

bool LuaPeer::exists() { return false; }

LuaPeer::LuaPeer(LuaTask, const std::string&, const std::string&) {}

LuaPeer::~LuaPeer() = default;

std::size_t LuaPeer::run() { return 0; }

} // namespace pattern::bench

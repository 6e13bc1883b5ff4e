// The start of the process on a POSIX system.
//
// The main thread's stack grows on demand up to a limit that the process may raise itself, as far as the hard limit
// lets it. The system keeps at least 128 MiB of addresses free below the stack, so 64 MiB are safe to ask for at run
// time.

#include "host/entry.h"

#include <algorithm>

#include <sys/resource.h>

namespace {

constexpr rlim_t wantedStack = rlim_t{64} << 20;  // bytes
constexpr rlim_t smallestStack = rlim_t{1} << 20; // bytes; what is assumed if the limit can't be read
constexpr rlim_t usedAtStart = rlim_t{256} << 10; // bytes; arguments and environment lie on the same stack

} // namespace

std::size_t prepareProcess() {
    rlimit limit{};
    if (getrlimit(RLIMIT_STACK, &limit) != 0) return static_cast<std::size_t>(smallestStack - usedAtStart);
    const rlim_t allowed = limit.rlim_max == RLIM_INFINITY ? wantedStack : std::min(wantedStack, limit.rlim_max);
    if (limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur < allowed) {
        const rlimit raised{allowed, limit.rlim_max};
        if (setrlimit(RLIMIT_STACK, &raised) == 0) limit.rlim_cur = allowed;
    }
    const rlim_t usable = limit.rlim_cur == RLIM_INFINITY ? wantedStack : std::min(wantedStack, limit.rlim_cur);
    return static_cast<std::size_t>(std::max(usable, smallestStack) - usedAtStart);
}

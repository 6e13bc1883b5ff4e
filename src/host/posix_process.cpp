// What the engine asks of a POSIX system beyond the window: five texts about it, the executable's directory, and a
// pipe to a shell command.
//
// The words are those that scripts know from the other platforms ("Linux x86_64"). A command's exit code is one
// number here as there, so the end by a signal, which has no code, becomes 128 plus the signal, as shells count it.
// Unlike the C library's own pipe streams, a child gets the null device for the standard handle that is not piped:
// a command that reads its input does not take the game's terminal away. The process is spawned, not forked, since
// copying the page tables of a large game only to throw them away would cost a frame.

#include "host/query_text.h"
#include "host/wm.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <mutex>
#include <new>
#include <string>
#include <unordered_map>
#include <utility>

#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

constexpr std::size_t passwordEntrySize = 16384;  // bytes
constexpr std::size_t executablePathSize = 32768; // bytes
constexpr int signalExitBase = 128;

/// A file descriptor that closes itself.
class OwnedDescriptor {
public:
    explicit OwnedDescriptor(int owned) : descriptor(owned) {}
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() {
        if (descriptor != -1) ::close(descriptor);
    }

    int get() const { return descriptor; }
    int release() { return std::exchange(descriptor, -1); }

private:
    int descriptor;
};

/// What a child is to do between its birth and its program.
class SpawnPlan {
public:
    SpawnPlan() : usable(posix_spawn_file_actions_init(&actions) == 0) {
        if (usable && posix_spawnattr_init(&attributes) != 0) {
            posix_spawn_file_actions_destroy(&actions);
            usable = false;
        }
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        if (!usable) return;
        posix_spawn_file_actions_destroy(&actions);
        posix_spawnattr_destroy(&attributes);
    }

    bool usePipe(int descriptor, int standard) {
        return usable && posix_spawn_file_actions_adddup2(&actions, descriptor, standard) == 0;
    }
    bool useNullDevice(int standard) {
        return usable && posix_spawn_file_actions_addopen(&actions, standard, "/dev/null", O_RDWR, 0) == 0;
    }
    /// The engine ignores broken pipes; its children die of them as programs do.
    bool restoreBrokenPipeSignal() {
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGPIPE);
        return usable && posix_spawnattr_setsigdefault(&attributes, &signals) == 0 &&
               posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF) == 0;
    }

    /// The child's process number, or -1.
    pid_t startShell(const char* command) {
        std::array<char, 3> shell{"sh"};
        std::array<char, 3> option{"-c"};
        std::string text(command);
        std::array<char*, 4> arguments{shell.data(), option.data(), text.data(), nullptr};
        pid_t child = -1;
        return posix_spawn(&child, "/bin/sh", &actions, &attributes, arguments.data(), environ) == 0 ? child : -1;
    }

private:
    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
    bool usable;
};

std::mutex childrenMutex; // guards the map alone; nobody waits for a child under it
std::unordered_map<std::FILE*, pid_t> children;

/// Waits for a child; its exit code, or -1 if that can't be told.
int exitCodeOf(pid_t child) {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended == -1 && errno == EINTR);
    if (ended != child) return -1;
    if (WIFSIGNALED(status)) return signalExitBase + WTERMSIG(status);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Writing to a command that has ended is an error of the write, not the end of the game. Only the first write pipe
/// needs this; a handler that somebody set stays.
void surviveBrokenPipes() {
    struct sigaction current {};
    if (sigaction(SIGPIPE, nullptr, &current) == 0 && current.sa_handler == SIG_DFL) {
        std::signal(SIGPIPE, SIG_IGN);
    }
}

/// A process may be started with the end of its children ignored, and would then never learn an exit code. A handler
/// that somebody set stays.
void keepExitCodes() {
    struct sigaction current {};
    if (sigaction(SIGCHLD, nullptr, &current) == 0 && current.sa_handler == SIG_IGN) std::signal(SIGCHLD, SIG_DFL);
}

std::FILE* openProcess(const char* command, bool writing) {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return nullptr;
    OwnedDescriptor readEnd(ends[0]);
    OwnedDescriptor writeEnd(ends[1]);

    // The pipe is put in place before the null device is opened, so that a pipe end that happens to have the number
    // of a closed standard handle is not written over.
    SpawnPlan plan;
    const bool planned = plan.restoreBrokenPipeSignal() &&
                         (writing ? plan.usePipe(readEnd.get(), STDIN_FILENO) && plan.useNullDevice(STDOUT_FILENO)
                                  : plan.usePipe(writeEnd.get(), STDOUT_FILENO) && plan.useNullDevice(STDIN_FILENO));
    if (!planned) return nullptr;
    const bool haveStandardError = fcntl(STDERR_FILENO, F_GETFD) != -1;
    if (!haveStandardError && !plan.useNullDevice(STDERR_FILENO)) return nullptr;
    if (writing) surviveBrokenPipes();
    keepExitCodes();
    const pid_t child = plan.startShell(command);
    if (child == -1) return nullptr;

    OwnedDescriptor& ours = writing ? writeEnd : readEnd;
    std::FILE* stream = fdopen(ours.get(), writing ? "wb" : "rb");
    if (stream) {
        ours.release();
        try {
            const std::lock_guard<std::mutex> lock(childrenMutex);
            children[stream] = child;
            return stream;
        } catch (const std::bad_alloc&) {
            std::fclose(stream);
        }
    }
    kill(child, SIGKILL);
    exitCodeOf(child);
    return nullptr;
}

utsname systemNames() {
    utsname names{};
    if (uname(&names) != 0) names = utsname{};
    return names;
}

const char* architectureName() {
    const utsname names = systemNames();
    const std::string machine = names.machine;
    if (machine == "x86_64") return "x86_64";
    if (machine == "aarch64" || machine == "arm64") return "arm64";
    const bool i386ToI686 = machine.size() == 4 && machine[0] == 'i' && machine.compare(2, 2, "86") == 0;
    return i386ToI686 ? "x86" : "Unknown";
}

/// The processor's brand as the kernel lists it; empty where the kernel knows none.
std::string listedProcessorName() {
    std::ifstream list("/proc/cpuinfo");
    std::string line;
    while (std::getline(list, line)) {
        const std::size_t colon = line.find(':');
        if (colon != std::string::npos && trimmed(line.substr(0, colon)) == "model name") {
            return trimmed(line.substr(colon + 1));
        }
    }
    return {};
}

} // namespace

int wm_user_name(char* buffer, unsigned size) {
    std::array<char, passwordEntrySize> storage{};
    passwd entry{};
    passwd* found = nullptr;
    const bool known = getpwuid_r(geteuid(), &entry, storage.data(), storage.size(), &found) == 0 && found;
    return writeText(known && entry.pw_name ? trimmed(entry.pw_name) : std::string(), buffer, size);
}

int wm_platform_name(char* buffer, unsigned size) {
    return writeText(trimmed(std::string(systemNames().sysname) + " " + architectureName()), buffer, size);
}

int wm_version_string(char* buffer, unsigned size) {
    const std::string release = trimmed(systemNames().release);
    const int written = writeText(release, buffer, size);
    return release.empty() ? 0 : written;
}

int wm_processor_name(char* buffer, unsigned size) {
    const std::string name = listedProcessorName();
    return writeText(name.empty() ? std::string("Unknown ") + architectureName() : name, buffer, size);
}

int wm_temp_directory(char* buffer, unsigned size) {
    const char* chosen = std::getenv("TMPDIR");
    std::string path = trimmed(chosen ? chosen : "");
    if (path.empty()) path = "/tmp/";
    if (path.back() != '/') path += '/';
    return writeText(path, buffer, size);
}

int wm_executable_directory(char* buffer, unsigned size) {
    std::string path(executablePathSize, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    const bool whole = length > 0 && static_cast<std::size_t>(length) < path.size();
    path.resize(whole ? static_cast<std::size_t>(length) : 0);
    const std::size_t separator = path.rfind('/');
    if (separator == std::string::npos) {
        writeText("", buffer, size);
        return 0;
    }
    return writeText(path.substr(0, separator + 1), buffer, size);
}

std::FILE* wm_windows_popen(const char* command, const char* mode) {
    if (!command) return nullptr;
    const bool writing = mode && std::strchr(mode, 'w');
    try {
        return openProcess(command, writing);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int wm_windows_pclose(std::FILE* stream) {
    if (!stream) return -1;
    pid_t child = -1;
    {
        const std::lock_guard<std::mutex> lock(childrenMutex);
        const auto found = children.find(stream);
        if (found != children.end()) {
            child = found->second;
            children.erase(found);
        }
    }
    std::fclose(stream); // first, or a child that reads to the end of its input would never end
    return child == -1 ? -1 : exitCodeOf(child);
}

// What the engine asks of Windows beyond the window: five texts about the system, the executable's directory, and a
// pipe to a shell command.
//
// A pipe is a C stream, because that is what the script library reads and writes; the process behind it is found
// again, when the stream is closed, in a map from stream to process handle. The child gets exactly three handles that
// matter: its end of the pipe, the null device in place of the standard handle that is not piped, and our standard
// error, so that what a command complains about is seen where the engine's own messages are.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "host/query_text.h"
#include "host/wm.h"

#include <array>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <mutex>
#include <new>
#include <string>
#include <unordered_map>
#include <utility>

namespace {

constexpr DWORD userNameSize = 256;         // bytes
constexpr DWORD tempPathSize = 261;         // bytes
constexpr DWORD shellPathSize = 260;        // bytes
constexpr DWORD processorNameSize = 512;    // bytes
constexpr DWORD executablePathSize = 32768; // bytes; the longest path Windows knows
constexpr DWORD noConsoleWindow = 0x08000000;
constexpr UINT killedExitCode = 1;

/// A handle that closes itself.
class OwnedHandle {
public:
    OwnedHandle() = default;
    explicit OwnedHandle(HANDLE owned) : handle(owned == INVALID_HANDLE_VALUE ? nullptr : owned) {}
    OwnedHandle(OwnedHandle&& other) noexcept : handle(other.release()) {}
    OwnedHandle& operator=(OwnedHandle&& other) noexcept {
        std::swap(handle, other.handle);
        return *this;
    }
    ~OwnedHandle() { close(); }

    HANDLE get() const { return handle; }
    HANDLE release() { return std::exchange(handle, nullptr); }
    void close() {
        if (handle) CloseHandle(handle);
        handle = nullptr;
    }
    explicit operator bool() const { return handle != nullptr; }

private:
    HANDLE handle = nullptr;
};

std::mutex childrenMutex; // guards the map alone; nobody waits for a child under it
std::unordered_map<std::FILE*, HANDLE> children;

const char* architectureName() {
    SYSTEM_INFO system{};
    GetNativeSystemInfo(&system);
    switch (system.wProcessorArchitecture) {
    case PROCESSOR_ARCHITECTURE_AMD64: return "x86_64";
    case PROCESSOR_ARCHITECTURE_INTEL: return "x86";
    case PROCESSOR_ARCHITECTURE_ARM64: return "arm64";
    default: return "Unknown";
    }
}

SECURITY_ATTRIBUTES inheritable() {
    SECURITY_ATTRIBUTES attributes{};
    attributes.nLength = sizeof attributes;
    attributes.bInheritHandle = TRUE;
    return attributes;
}

OwnedHandle openNullDevice() {
    SECURITY_ATTRIBUTES attributes = inheritable();
    return OwnedHandle(CreateFileA("NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &attributes,
                                   OPEN_EXISTING, 0, nullptr));
}

/// Our standard error in a form that a child can inherit; none if we have none.
OwnedHandle inheritableStandardError() {
    const HANDLE own = GetStdHandle(STD_ERROR_HANDLE);
    HANDLE copy = nullptr;
    if (!own || own == INVALID_HANDLE_VALUE) return OwnedHandle();
    if (!DuplicateHandle(GetCurrentProcess(), own, GetCurrentProcess(), &copy, 0, TRUE, DUPLICATE_SAME_ACCESS)) {
        return OwnedHandle();
    }
    return OwnedHandle(copy);
}

std::string shellCommandLine(const char* command) {
    std::array<char, shellPathSize> shell{};
    const DWORD length = GetEnvironmentVariableA("COMSPEC", shell.data(), shellPathSize);
    const bool known = length > 0 && length < shellPathSize;
    std::string line = known ? std::string(1, '"').append(shell.data()).append(1, '"') : std::string("cmd.exe");
    return line.append(" /c ").append(command);
}

/// Starts the command with these standard handles; the process, or none.
OwnedHandle startShell(const char* command, HANDLE input, HANDLE output, HANDLE error) {
    std::string commandLine = shellCommandLine(command);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = error;
    PROCESS_INFORMATION process{};
    if (!CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, noConsoleWindow, nullptr, nullptr,
                        &startup, &process)) {
        return OwnedHandle();
    }
    CloseHandle(process.hThread);
    return OwnedHandle(process.hProcess);
}

/// Wraps the parent's end of the pipe in a C stream, which owns it from then on; null leaves nothing open.
std::FILE* openStream(OwnedHandle pipe, bool writing) {
    const int descriptor =
        _open_osfhandle(reinterpret_cast<intptr_t>(pipe.get()), (writing ? _O_WRONLY : _O_RDONLY) | _O_BINARY);
    if (descriptor == -1) return nullptr;
    pipe.release();
    std::FILE* stream = _fdopen(descriptor, writing ? "wb" : "rb");
    if (!stream) _close(descriptor);
    return stream;
}

std::FILE* openProcess(const char* command, bool writing) {
    SECURITY_ATTRIBUTES attributes = inheritable();
    HANDLE readEnd = nullptr;
    HANDLE writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &attributes, 0)) return nullptr;
    OwnedHandle ours(writing ? writeEnd : readEnd);
    OwnedHandle theirs(writing ? readEnd : writeEnd);
    if (!SetHandleInformation(ours.get(), HANDLE_FLAG_INHERIT, 0)) return nullptr;
    OwnedHandle nullDevice = openNullDevice();
    if (!nullDevice) return nullptr;
    OwnedHandle standardError = inheritableStandardError();

    OwnedHandle process =
        startShell(command, writing ? theirs.get() : nullDevice.get(), writing ? nullDevice.get() : theirs.get(),
                   standardError ? standardError.get() : nullDevice.get());
    theirs.close();
    nullDevice.close();
    standardError.close();
    if (!process) return nullptr;

    std::FILE* stream = openStream(std::move(ours), writing);
    if (stream) {
        try {
            const std::lock_guard<std::mutex> lock(childrenMutex);
            children[stream] = process.get();
            process.release();
            return stream;
        } catch (const std::bad_alloc&) {
            std::fclose(stream);
        }
    }
    TerminateProcess(process.get(), killedExitCode);
    return nullptr;
}

} // namespace

int windows_user_name(char* buffer, unsigned size) {
    std::array<char, userNameSize> name{};
    DWORD length = userNameSize;
    if (!GetUserNameA(name.data(), &length)) name[0] = '\0';
    return writeText(trimmed(name.data()), buffer, size);
}

int windows_platform_name(char* buffer, unsigned size) {
    return writeText(std::string("Windows ") + architectureName(), buffer, size);
}

int windows_version_string(char* buffer, unsigned size) {
    // The documented query answers with the version that the executable claims to be made for; this one tells the
    // truth.
    using GetVersion = LONG(WINAPI*)(RTL_OSVERSIONINFOW*);
    const HMODULE library = GetModuleHandleW(L"ntdll.dll");
    const auto getVersion =
        library ? reinterpret_cast<GetVersion>(reinterpret_cast<void*>(GetProcAddress(library, "RtlGetVersion")))
                : nullptr;
    RTL_OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!getVersion || getVersion(&version) != 0) {
        writeText("", buffer, size);
        return 0;
    }
    return writeText(std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
                         std::to_string(version.dwBuildNumber),
                     buffer, size);
}

int windows_processor_name(char* buffer, unsigned size) {
    std::array<char, processorNameSize> name{};
    DWORD length = processorNameSize;
    const LSTATUS status = RegGetValueA(HKEY_LOCAL_MACHINE, "HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
                                        "ProcessorNameString", RRF_RT_REG_SZ, nullptr, name.data(), &length);
    const std::string text = status == ERROR_SUCCESS ? trimmed(name.data()) : std::string();
    return writeText(text.empty() ? std::string("Unknown ") + architectureName() : text, buffer, size);
}

int windows_temp_directory(char* buffer, unsigned size) {
    std::array<char, tempPathSize> path{};
    const DWORD length = GetTempPathA(tempPathSize, path.data());
    if (length == 0 || length >= tempPathSize) {
        writeText("", buffer, size);
        return 0;
    }
    std::string text = trimmed(path.data());
    for (char& letter : text) {
        if (letter == '\\') letter = '/';
    }
    if (text.empty() || text.back() != '/') text += '/';
    return writeText(text, buffer, size);
}

int windows_executable_directory(char* buffer, unsigned size) {
    std::string path(executablePathSize, '\0');
    const DWORD length = GetModuleFileNameA(nullptr, path.data(), executablePathSize);
    path.resize(length < executablePathSize ? length : 0);
    const std::size_t separator = path.find_last_of("\\/");
    if (separator == std::string::npos) {
        writeText("", buffer, size);
        return 0;
    }
    return writeText(path.substr(0, separator + 1), buffer, size);
}

int wm_user_name(char* buffer, unsigned size) { return windows_user_name(buffer, size); }
int wm_platform_name(char* buffer, unsigned size) { return windows_platform_name(buffer, size); }
int wm_version_string(char* buffer, unsigned size) { return windows_version_string(buffer, size); }
int wm_processor_name(char* buffer, unsigned size) { return windows_processor_name(buffer, size); }
int wm_temp_directory(char* buffer, unsigned size) { return windows_temp_directory(buffer, size); }
int wm_executable_directory(char* buffer, unsigned size) { return windows_executable_directory(buffer, size); }

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
    OwnedHandle process;
    {
        const std::lock_guard<std::mutex> lock(childrenMutex);
        const auto found = children.find(stream);
        if (found != children.end()) {
            process = OwnedHandle(found->second);
            children.erase(found);
        }
    }
    std::fclose(stream); // first, or a child that reads to the end of its input would never end
    if (!process) return -1;
    WaitForSingleObject(process.get(), INFINITE);
    DWORD exitCode = 0;
    return GetExitCodeProcess(process.get(), &exitCode) ? static_cast<int>(exitCode) : -1;
}

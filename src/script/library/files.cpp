// The table `io`: files and process pipes; and `readScript`, which reads a whole file at once.
//
// What a script holds is a plain table of three functions. They share one handle, which lives as long as any of them:
// dropping the table closes the file, and so does `close`, after which the functions stay callable and find nothing.
// The functions may be called with the table as their first argument or without it; the handle is their own in any
// case. Files are opened in binary whatever the mode says, so positions and bytes are the same on every platform.

#include "script/library/library.h"

#include "script/library/functions.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>

namespace {

constexpr const char* readName = "file['read']";
constexpr const char* wholeFormat = "*a";
constexpr const char* lineFormat = "*l";
constexpr std::size_t chunkSize = 4096; // bytes; a line from a process comes in pieces of one byte less at most

struct ProcessCloser {
    int (*close)(std::FILE* stream) = nullptr;
    void operator()(std::FILE* stream) const { close(stream); }
};

/// An open file or process. Both pointers are null once it is closed.
struct FileHandle {
    std::unique_ptr<std::fstream> stream;
    std::unique_ptr<std::FILE, ProcessCloser> process;
    bool isProcess = false;
    bool canRead = false;
    bool canWrite = false;
};

enum class HandleKind { File, Process };

bool holds(const std::string& mode, char letter) { return mode.find(letter) != std::string::npos; }

/// A directory opens like a file on some platforms and then can't be read.
bool isDirectory(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

bool openFile(FileHandle& handle, const std::string& path, const std::string& mode) {
    const std::ios::openmode both = holds(mode, '+') ? std::ios::in | std::ios::out : std::ios::openmode{};
    std::ios::openmode flags = std::ios::binary | both;
    if (holds(mode, 'w'))
        flags |= std::ios::out | std::ios::trunc;
    else if (holds(mode, 'a'))
        flags |= std::ios::out | std::ios::app;
    else if (holds(mode, 'r'))
        flags |= std::ios::in;
    else
        flags = std::ios::binary | std::ios::in;
    handle.canRead = (flags & std::ios::in) != 0;
    handle.canWrite = (flags & std::ios::out) != 0;
    if (isDirectory(path)) return false;
    handle.stream = std::make_unique<std::fstream>(path, flags);
    return handle.stream->is_open();
}

bool openProcess(FileHandle& handle, const OstrelScript::ProcessPipes& pipes, const std::string& command,
                 const std::string& mode) {
    handle.isProcess = true;
    handle.canWrite = holds(mode, 'w');
    handle.canRead = !handle.canWrite;
    if (pipes.open == nullptr || pipes.close == nullptr) return false;
    std::FILE* const stream = pipes.open(command.c_str(), mode.c_str());
    handle.process = std::unique_ptr<std::FILE, ProcessCloser>(stream, ProcessCloser{pipes.close});
    return stream != nullptr;
}

// ---------------------------------------------------------------------------------------------------------------------
// Reading
// ---------------------------------------------------------------------------------------------------------------------

void appendBytes(std::string& text, const char* bytes, std::size_t size, const char* function) {
    requireResultSize(text.size() + size, function);
    text.append(bytes, size);
}

Variable readWhole(std::istream& stream, const char* function) {
    std::string text;
    std::array<char, chunkSize> chunk;
    do {
        stream.read(chunk.data(), chunk.size());
        appendBytes(text, chunk.data(), static_cast<std::size_t>(stream.gcount()), function);
    } while (stream);
    return text;
}

Variable readLine(std::istream& stream) {
    std::string text;
    std::array<char, chunkSize> chunk;
    for (;;) {
        stream.getline(chunk.data(), chunk.size());
        const auto taken = static_cast<std::size_t>(stream.gcount());
        if (stream.good()) { // the newline was taken, too, but isn't in the chunk
            appendBytes(text, chunk.data(), taken - 1, readName);
            return text;
        }
        appendBytes(text, chunk.data(), taken, readName);
        if (stream.eof() || stream.bad() || taken == 0) break;
        stream.clear(); // the chunk is full and the line goes on
    }
    return text.empty() ? Variable() : Variable(std::move(text));
}

Variable readWhole(std::FILE* process) {
    std::string text;
    std::array<char, chunkSize> chunk;
    while (const std::size_t taken = std::fread(chunk.data(), 1, chunk.size(), process))
        appendBytes(text, chunk.data(), taken, readName);
    return text;
}

Variable readLine(std::FILE* process) {
    std::string text;
    while (text.size() < chunkSize - 1) {
        const int byte = std::getc(process);
        if (byte == EOF && text.empty()) return {};
        if (byte == EOF || byte == '\n') break;
        text += static_cast<char>(byte);
    }
    return text;
}

// ---------------------------------------------------------------------------------------------------------------------
// The three functions of a file; their first argument is the handle
// ---------------------------------------------------------------------------------------------------------------------

FileHandle* handleOf(const std::vector<Variable>& arguments) {
    if (arguments.empty() || arguments[0].type != VarType::Pointer) return nullptr;
    return static_cast<FileHandle*>(arguments[0].asPointer());
}

Variable fileReadFunction(const std::vector<Variable>& arguments) {
    FileHandle* const handle = handleOf(arguments);
    if (handle == nullptr) fail("file['read'] requires a valid file handle");
    const std::string format = arguments.size() > 1 && arguments[1].isString() ? arguments[1].asString() : lineFormat;
    if (!handle->canRead) return {};
    if (handle->process)
        return format == wholeFormat ? readWhole(handle->process.get()) : readLine(handle->process.get());
    if (!handle->stream) return {};
    handle->stream->clear(); // the end that an earlier read met may have moved
    return format == wholeFormat ? readWhole(*handle->stream, readName) : readLine(*handle->stream);
}

Variable fileWriteFunction(const std::vector<Variable>& arguments) {
    FileHandle* const handle = handleOf(arguments);
    if (handle == nullptr || arguments.size() < 2)
        fail("file['write'] requires a valid file handle and at least one value");
    if (!handle->canWrite) fail("file['write'] requires a writable file handle");
    if (!handle->process && !handle->stream) return {};
    std::string text;
    for (std::size_t i = 1; i < arguments.size(); ++i) arguments[i].appendTo(text);
    if (handle->process) {
        std::fwrite(text.data(), 1, text.size(), handle->process.get());
        std::fflush(handle->process.get());
    } else {
        handle->stream->clear();
        handle->stream->write(text.data(), static_cast<std::streamsize>(text.size()));
        handle->stream->flush();
    }
    return true;
}

Variable fileCloseFunction(const std::vector<Variable>& arguments) {
    FileHandle* const handle = handleOf(arguments);
    if (handle == nullptr) fail("file['close'] requires a valid file handle");
    const bool wasOpen = handle->stream || handle->process;
    handle->stream.reset();
    handle->process.reset();
    return wasOpen;
}

Variable makeFileFunction(OstrelScript& engine, std::shared_ptr<FileHandle> handle, std::string name,
                          Variable (*function)(const std::vector<Variable>&)) {
    const auto call = [handle = std::move(handle), function](const std::vector<Variable>& arguments) {
        const std::ptrdiff_t ownTable = !arguments.empty() && arguments[0].isTable() ? 1 : 0;
        std::vector<Variable> withHandle;
        withHandle.reserve(arguments.size() + 1);
        withHandle.emplace_back(static_cast<void*>(handle.get()));
        withHandle.insert(withHandle.end(), arguments.begin() + ownTable, arguments.end());
        return function(withHandle);
    };
    return engine.makeNativeCallable(call, std::move(name));
}

Variable openFileFunction(OstrelScript& engine, const Variable* arguments, std::size_t count, HandleKind kind) {
    const bool isProcess = kind == HandleKind::Process;
    if (count == 0 || !arguments[0].isString())
        fail(isProcess ? "io['popen'](path[, mode]) requires a path string"
                       : "io['open'](path[, mode]) requires a path string");
    const std::string mode = count > 1 && arguments[1].isString() ? arguments[1].asString() : "r";
    const auto handle = std::make_shared<FileHandle>();
    const bool isOpen = isProcess ? openProcess(*handle, engine.processPipes(), arguments[0].asString(), mode)
                                  : openFile(*handle, engine.resolvePath(arguments[0].asString()), mode);
    if (!isOpen) return {};
    auto file = makeRef<Table>();
    file->set("read", makeFileFunction(engine, handle, "file.read", fileReadFunction));
    file->set("write", makeFileFunction(engine, handle, "file.write", fileWriteFunction));
    file->set("close", makeFileFunction(engine, handle, "file.close", fileCloseFunction));
    return file;
}

Variable openFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    return openFileFunction(engine, arguments, count, HandleKind::File);
}

Variable popenFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    return openFileFunction(engine, arguments, count, HandleKind::Process);
}

Variable readScriptFile(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count == 0 || !arguments[0].isString()) fail("Expected a script path string");
    const std::string path = engine.resolvePath(arguments[0].asString());
    std::ifstream stream(path, std::ios::binary);
    if (!stream || isDirectory(path)) fail("Failed to open script file: " + path);
    return readWhole(stream, "readScript");
}

} // namespace

void registerFileLibrary(OstrelScript& engine) {
    registerLibraryTable(engine, "io", {{"open", openFunction}, {"popen", popenFunction}});
    registerOsTable(engine);
    engine.pushFunction("readScript", readScriptFile);
}

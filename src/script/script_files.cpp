// From the name that a script gives to a file, and from a file or a text to a function.

#include "script/ostrel_script.h"
#include "script/position_guard.h"
#include "script/scope_guard.h"
#include "script/script_paths.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace {

constexpr std::string_view bytecodeMagic = "OSBC";
constexpr const char* openFault = "Failed to open script file: "; // and the path
constexpr std::string_view resourcesName = "/Resources";
constexpr std::string_view oldScriptsName = "ast/scripts/"; // where scripts lay before they had a home of their own

std::string withSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

bool isAbsolute(const std::string& path) {
    return path[0] == '/' ||
           (path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0])) != 0);
}

/// The part of a path up to and including the game's Resources directory, or nothing.
std::string resourcesRoot(const std::string& base) {
    for (std::size_t at = base.find(resourcesName); at != std::string::npos; at = base.find(resourcesName, at + 1)) {
        const std::size_t end = at + resourcesName.size();
        if (end == base.size() || base[end] == '/' || base[end] == '>') return base.substr(0, end);
    }
    return {};
}

bool readFile(const std::string& path, std::string& bytes) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || (status.st_mode & S_IFMT) == S_IFDIR) return false;
    std::ifstream file(path, std::ios::binary);
    if (!file) return false;
    bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return !file.bad();
}

} // namespace

bool pathExists(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

std::string pathDirectory(const std::string& path) {
    const std::string normal = withSlashes(path);
    const std::size_t slash = normal.rfind('/');
    return slash == std::string::npos ? std::string() : normal.substr(0, slash);
}

std::string joinPath(const std::string& left, const std::string& right) {
    std::string path = withSlashes(left);
    const std::string tail = withSlashes(right);
    if (path.empty()) return tail;
    if (tail.empty()) return path;
    if (path.back() != '/') path += '/';
    return path + tail;
}

std::string OstrelScript::normalisePath(const std::string& path) const { return withSlashes(path); }

std::string OstrelScript::resolvePath(const std::string& name) const {
    const std::string path = withSlashes(name);
    if (path.empty() || isAbsolute(path) || pathExists(path)) return path;

    std::string base = currentSourceDirectory();
    if (base.empty()) base = pathDirectory(currentSourcePath());
    if (base.empty()) return path;
    const std::string beside = joinPath(base, path);
    if (pathExists(beside)) return beside;

    const std::string root = resourcesRoot(base);
    if (!root.empty()) {
        const std::string below = joinPath(root, path);
        if (pathExists(below)) return below;
        const std::size_t old = path.find(oldScriptsName);
        if (old != std::string::npos) {
            const std::string moved = joinPath(joinPath(root, "scripts"), path.substr(old + oldScriptsName.size()));
            if (pathExists(moved)) return moved;
        }
    }
    return beside; // the likeliest place, for the caller's message
}

const std::string& OstrelScript::currentSourcePath() const {
    static const std::string none;
    return sourcePath_ == nullptr ? none : *sourcePath_;
}

const std::string& OstrelScript::currentSourceDirectory() const {
    static const std::string none;
    return sourceDirectory_ == nullptr ? none : *sourceDirectory_;
}

// ---------------------------------------------------------------------------------------------------------------------
// Files
// ---------------------------------------------------------------------------------------------------------------------

std::string OstrelScript::readScriptFile(const std::string& name) const {
    const std::string path = resolvePath(name);
    std::string bytes;
    if (!readFile(path, bytes)) throw std::runtime_error(openFault + path);
    return bytes;
}

Ref<ScriptCallable> OstrelScript::makeChunkCallable(std::shared_ptr<BytecodeProgram> program) const {
    auto callable = makeRef<ScriptCallable>();
    callable->isLoadedChunk = true;
    callable->nativeScopeIndex = blockDepth_;
    callable->sourcePath = program->sourcePath;
    callable->sourceDirectory = program->sourceDirectory;
    callable->program = std::move(program);
    return callable;
}

Variable OstrelScript::loadScriptFile(const std::string& name) {
    try {
        const std::string path = resolvePath(name);
        struct stat status {};
        const bool exists = stat(path.c_str(), &status) == 0;
        ScriptFileCacheEntry& entry = scriptFiles_[path];
        const auto size = static_cast<std::uintmax_t>(status.st_size);
        const auto modified = static_cast<std::int64_t>(status.st_mtime);
        if (exists && entry.callable && !entry.dirty && entry.size == size && entry.modified == modified)
            return Variable(entry.callable);

        std::string bytes;
        if (!readFile(path, bytes)) throw std::runtime_error(openFault + path);
        const std::string directory = pathDirectory(path);
        const SourceGuard source(*this, path, directory);
        auto program = std::make_shared<BytecodeProgram>();
        if (bytes.compare(0, bytecodeMagic.size(), bytecodeMagic) == 0)
            *program = deserialiseBytecode({bytes.begin(), bytes.end()}, path);
        else
            *program = compileToBytecodeInternal(bytes);
        entry.program = program;
        entry.callable = makeChunkCallable(std::move(program));
        entry.callable->sourcePath = path; // a compiled file may remember another place
        entry.callable->sourceDirectory = directory;
        entry.size = size;
        entry.modified = modified;
        entry.dirty = false;
        return Variable(entry.callable);
    } catch (const std::exception& error) {
        return makeMulti({Variable(), Variable(error.what())});
    }
}

Variable OstrelScript::runScriptFilePath(const std::string& path) {
    const Variable loaded = loadScriptFile(path);
    if (loaded.isMulti()) {
        const std::vector<Variable>& values = loaded.asMulti()->values;
        const bool hasMessage = values.size() > 1 && values[1].isString();
        throw std::runtime_error(hasMessage ? values[1].asString() : "Failed to load script file");
    }
    return invokeCallableFast(loaded, nullptr, 0);
}

// ---------------------------------------------------------------------------------------------------------------------
// Texts
// ---------------------------------------------------------------------------------------------------------------------

Variable OstrelScript::loadScriptChunk(const std::string& text, const std::string& chunkName) {
    try {
        const SourceGuard source(*this, chunkName, {});
        auto program = std::make_shared<BytecodeProgram>(compileToBytecodeInternal(text));
        return Variable(makeChunkCallable(std::move(program)));
    } catch (const std::exception& error) {
        return makeMulti({Variable(), Variable(error.what())});
    }
}

Variable OstrelScript::runScript(const std::string& text) {
    std::shared_ptr<BytecodeProgram> program;
    try {
        program = std::make_shared<BytecodeProgram>(compileToBytecodeInternal(text));
    } catch (const std::exception&) {
        const std::string path = sourcePath_ == nullptr ? "script" : "";
        const SourceGuard source(*this, path, {});
        rethrowWithPosition();
    }
    return runBytecodeProgram(program);
}

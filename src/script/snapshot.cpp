// Snapshots: the globals of a script world as one block of bytes, and back.
//
// Every global that can be stored is written in the order in which the globals were made, with the random generator in
// front. A function is written with its whole program, so it can be called in a world that never loaded its script.
// What can't be stored (pointers, native functions, decay functions, containers that hold themselves or anything of
// these) is left out whole and without a word. All numbers are little-endian.

#include "script/binary_file.h"
#include "script/byte_reader.h"
#include "script/byte_writer.h"
#include "script/native_stack.h"
#include "script/ostrel_script.h"
#include "script/result_size.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <locale>
#include <sstream>
#include <unordered_map>

namespace {

constexpr std::string_view stateMagic = "OSST";
constexpr std::uint32_t stateVersion = 2;        // written
constexpr std::uint32_t firstWithBlockDepth = 2; // functions of older images have none
constexpr unsigned deepestContainer = 256;

/// The one-byte tags of values; nil to boolean have the numbers of VarType.
enum class StateTag : std::uint8_t {
    Nil = 0,
    Integer = 1,
    Float = 2,
    String = 3,
    Raw = 4,
    Boolean = 5,
    Array = 6,
    Multi = 7,
    Table = 8,
    Function = 9,
};

bool isExportableFunction(const ScriptCallable& callable) {
    return !callable.isNative && !callable.isCoroutine && callable.program != nullptr &&
           callable.chunkIndex < callable.program->chunks.size();
}

/// Whether values can be stored. What it finds out about a container holds wherever the container stands, because one
/// that holds itself can't be stored anywhere; so each is looked at once, however many others hold it.
class ExportCheck {
public:
    bool passes(const Variable& value) {
        switch (value.type) {
        case VarType::Nil:
        case VarType::Integer:
        case VarType::Float:
        case VarType::String:
        case VarType::Raw:
        case VarType::Boolean: return true;
        case VarType::Array: return passesAll(value.asArray().get(), *value.asArray(), std::identity());
        case VarType::Multi: return passesAll(value.asMulti().get(), value.asMulti()->values, std::identity());
        case VarType::Table: {
            const Table& table = *value.asTable();
            return passesAll(&table, table.entries(),
                             [](const Table::Entry& entry) -> const Variable& { return entry.value; });
        }
        case VarType::Function: return isExportableFunction(*value.asFunction());
        default: return false;
        }
    }

private:
    template <typename Entries, typename ValueOf>
    bool passesAll(const void* container, const Entries& entries, const ValueOf& valueOf) {
        checkNativeStack();
        const auto [place, isNew] = passed_.emplace(container, false);
        if (!isNew) return place->second;
        bool& passed = place->second; // false while the walk stands in it
        passed = std::all_of(entries.begin(), entries.end(),
                             [this, &valueOf](const auto& entry) { return passes(valueOf(entry)); });
        return passed;
    }

    std::unordered_map<const void*, bool> passed_;
};

class StateWriter {
public:
    explicit StateWriter(const OstrelScript& engine) : engine_(engine) {}

    ScriptByteWriter out;

    void value(const Variable& value) {
        switch (value.type) {
        case VarType::Nil: tag(StateTag::Nil); break;
        case VarType::Integer:
            tag(StateTag::Integer);
            out.u32(static_cast<std::uint32_t>(value.asInt()));
            break;
        case VarType::Float:
            tag(StateTag::Float);
            out.u32(std::bit_cast<std::uint32_t>(value.asFloat()));
            break;
        case VarType::String:
            tag(StateTag::String);
            out.text(value.asString());
            break;
        case VarType::Raw:
            tag(StateTag::Raw);
            out.text({value.asRaw().data(), value.asRaw().size()});
            break;
        case VarType::Boolean:
            tag(StateTag::Boolean);
            out.boolean(value.asBool());
            break;
        case VarType::Array:
            tag(StateTag::Array);
            list(*value.asArray());
            break;
        case VarType::Multi:
            tag(StateTag::Multi);
            list(value.asMulti()->values);
            break;
        case VarType::Table:
            tag(StateTag::Table);
            table(*value.asTable());
            break;
        case VarType::Function:
            tag(StateTag::Function);
            function(*value.asFunction());
            break;
        default: throw std::runtime_error("Internal error: non-serializable value reached state writer");
        }
        requireResultSize(out.size(), "exportState"); // shared containers are written out wherever they stand
    }

private:
    void tag(StateTag tag) { out.u8(static_cast<std::uint8_t>(tag)); }

    void list(const std::vector<Variable>& elements) {
        out.count(elements.size());
        for (const Variable& element : elements) value(element);
    }

    /// Keys in byte order, so that equal tables give equal bytes.
    void table(const Table& table) {
        out.count(table.size());
        for (const std::string& key : table.sortedKeys()) {
            out.text(key);
            value(*table.find(std::string_view(key)));
        }
    }

    void function(const ScriptCallable& callable) {
        out.boolean(callable.isVariadic);
        out.u8(callable.isGlobalDeclared);
        out.u32(callable.chunkIndex);
        out.text(callable.sourceDirectory);
        out.text(callable.sourcePath);
        const auto depth = static_cast<std::uint64_t>(callable.nativeScopeIndex);
        out.u32(static_cast<std::uint32_t>(depth));
        out.u32(static_cast<std::uint32_t>(depth >> 32U));
        out.count(callable.parameters.size());
        for (const Name* parameter : callable.parameters) out.text(parameter->text);
        const std::vector<unsigned char> program = engine_.serialiseBytecode(*callable.program);
        out.text({reinterpret_cast<const char*>(program.data()), program.size()});
    }

    const OstrelScript& engine_;
};

} // namespace

class StateReader {
public:
    StateReader(OstrelScript& engine, std::span<const unsigned char> bytes, const std::string& label)
        : engine_(engine), in_(bytes), label_(label) {}

    void read() {
        if (in_.remaining() < stateMagic.size()) fault("truncated");
        if (in_.bytes(stateMagic.size()) != stateMagic) fault("bad magic");
        version_ = in_.u32();
        check();
        if (version_ == 0 || version_ > stateVersion)
            throw std::runtime_error("Unsupported state version: " + std::to_string(version_));
        const std::string random = in_.text();
        check();
        if (!random.empty() && !restoreRandom(random)) fault("bad random generator state");
        const std::uint32_t entries = in_.u32(); // nothing is sized by it: entries are stored one by one
        check();
        for (std::uint32_t i = 0; i < entries; ++i) {
            const std::string name = in_.text();
            check();
            Variable variable = value(0);
            engine_.pushVariable(name, std::move(variable));
        }
        if (in_.remaining() > 0) fault("trailing data");
    }

private:
    [[noreturn]] void fault(const char* what) const {
        throw std::runtime_error(std::string("Invalid state file (") + what + "): " + label_);
    }

    void check() const {
        if (in_.failed()) fault("truncated");
    }

    /// The generator's own stream form: its words and the position behind them. The library takes any position on
    /// trust, so the numbers are checked first.
    bool restoreRandom(const std::string& text) {
        constexpr std::size_t words = std::mt19937::state_size;
        std::istringstream numbers(text);
        numbers.imbue(std::locale::classic());
        std::uint64_t number = 0;
        std::size_t count = 0;
        while (numbers >> number) {
            const bool isPosition = count == words;
            if (count > words || number > (isPosition ? words : 0xFFFFFFFFU)) return false;
            ++count;
        }
        if (count != words + 1 || !numbers.eof()) return false;
        std::istringstream stream(text);
        stream.imbue(std::locale::classic());
        std::mt19937 generator;
        if (!(stream >> generator)) return false;
        engine_.randomGenerator() = generator;
        return true;
    }

    Variable value(unsigned depth) {
        if (depth > deepestContainer) fault("container nesting too deep");
        const std::uint8_t tag = in_.u8();
        check();
        if (tag > static_cast<std::uint8_t>(StateTag::Function)) fault("unknown value tag");
        Variable result = body(static_cast<StateTag>(tag), depth);
        check();
        return result;
    }

    Variable body(StateTag tag, unsigned depth) {
        switch (tag) {
        case StateTag::Nil: return {};
        case StateTag::Integer: return static_cast<int>(in_.u32());
        case StateTag::Float: return std::bit_cast<float>(in_.u32());
        case StateTag::String: return in_.text();
        case StateTag::Raw: {
            const std::string bytes = in_.text();
            return std::vector<char>(bytes.begin(), bytes.end());
        }
        case StateTag::Boolean: return in_.boolean();
        case StateTag::Array: return makeArray(list(depth));
        case StateTag::Multi: return makeMulti(list(depth));
        case StateTag::Table: return table(depth);
        case StateTag::Function: return function();
        }
        return {};
    }

    std::vector<Variable> list(unsigned depth) {
        const std::uint32_t count = in_.count(1);
        std::vector<Variable> elements;
        for (std::uint32_t i = 0; i < count; ++i) elements.push_back(value(depth + 1));
        return elements;
    }

    Variable table(unsigned depth) {
        constexpr std::size_t smallestPair = 5;
        const std::uint32_t count = in_.count(smallestPair);
        auto table = makeRef<Table>();
        table->reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::string key = in_.text();
            table->set(key, value(depth + 1));
        }
        return Variable(std::move(table));
    }

    Variable function() {
        auto callable = makeRef<ScriptCallable>();
        callable->isVariadic = in_.boolean();
        callable->isGlobalDeclared = in_.u8();
        callable->chunkIndex = in_.u32();
        callable->sourceDirectory = in_.text();
        callable->sourcePath = in_.text();
        if (version_ >= firstWithBlockDepth) {
            const std::uint64_t low = in_.u32();
            callable->nativeScopeIndex = readDepth(low | std::uint64_t{in_.u32()} << 32U);
        }
        constexpr std::size_t smallestName = 4;
        const std::uint32_t parameters = in_.count(smallestName);
        for (std::uint32_t i = 0; i < parameters; ++i) callable->parameters.push_back(engine_.internName(in_.text()));
        const std::string program = in_.text();
        check();
        callable->program = std::make_shared<BytecodeProgram>(
            engine_.deserialiseBytecode({program.begin(), program.end()}, label_ + ":function"));
        if (callable->chunkIndex >= callable->program->chunks.size()) fault("function chunk out of range");
        return Variable(std::move(callable));
    }

    /// A depth counts the blocks around a declaration, and native scopes are made for it. One that no program reaches
    /// must not make the engine reserve scopes without end.
    static std::size_t readDepth(std::uint64_t depth) {
        constexpr std::uint64_t deepest = 1U << 16U;
        return static_cast<std::size_t>(std::min(depth, deepest));
    }

    OstrelScript& engine_;
    ScriptByteReader in_;
    const std::string& label_;
    std::uint32_t version_ = 0;
};

std::vector<unsigned char> OstrelScript::exportState() const {
    std::vector<const Global*> entries;
    ExportCheck check;
    for (const Global& global : globals_)
        if (check.passes(global.value)) entries.push_back(&global);

    std::ostringstream random;
    random.imbue(std::locale::classic());
    random << randomGenerator_;

    StateWriter writer(*this);
    writer.out.bytes(stateMagic);
    writer.out.u32(stateVersion);
    writer.out.text(random.str());
    writer.out.count(entries.size());
    for (const Global* entry : entries) {
        writer.out.text(entry->name->text);
        writer.value(entry->value);
    }
    return writer.out.take();
}

void OstrelScript::importState(std::span<const unsigned char> bytes, const std::string& sourceLabel) {
    StateReader(*this, bytes, sourceLabel).read();
}

void OstrelScript::saveState(const std::string& path) const { writeBinaryFile(path, "state", exportState()); }

void OstrelScript::loadState(const std::string& path) { importState(readBinaryFile(path, "state"), path); }

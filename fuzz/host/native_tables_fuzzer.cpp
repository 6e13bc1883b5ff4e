// Any arguments for any entry of the native tables: each call must end in a result or in a message under the entry's
// own name.
//
// The input is text, so that seeds can be read and written: a line is a call, its first word names the entry, and each
// further word is an argument. A number is a number; `nil`, `true`, `array`, `raw` and their kin are values of their
// types; `$2` is the result of the third line, be it an image, a killed one or several values; `many` puts the word
// behind it into a multi value. Every other word is a string, and a first word that names no entry picks one by its
// hash, so that hardly any mutation is wasted.
//
// What would wait, open a window or leave the process is not called. Files are few and lie in a directory of their own:
// an entry that takes a path gets one of a handful of names, and so does one that takes a variable's name. Scripts that
// are run find the language and nothing else.

#include "sandbox.h"

#include "host/index.h"
#include "plush/registry.h"
#include "plush/rows.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t mostCalls = 24;        // of one input
constexpr std::size_t mostArguments = 16;    // of one call
constexpr int mostThreads = 16;              // starting more only slows the search down
constexpr int somewhere = 1 << 20;           // not the address of any image
constexpr std::size_t longTextSize = 100000; // bytes

constexpr std::array<const char*, 10> tableNames = {"Metal", "Sailfish", "Ostrel", "Ruby", "Lua",
                                                    "Audio", "AI",       "Font",   "Jade", "Plush"};
constexpr std::array<const char*, 4> helperNames = {"add", "dFeet", "dMetres", "calcHeight"};
const std::set<std::string> notCalled = {"Ostrel.sleep", "Metal.spawnWindow"};
const std::set<std::string> takingPaths = {"Plush.saveImage", "Plush.loadPNG", "Plush.savePlushImage",
                                           "Plush.loadPlushImage", "Ostrel.readFile"};
const std::set<std::string> takingVariables = {"Ostrel.setVar", "Ostrel.getVar"};
constexpr std::array<const char*, 5> fileNames = {"one.png", "two.pmg", "three", "", "missing/four.png"};
std::vector<std::string> paths = {"", "."}; // and the files above
const std::vector<std::string> variableNames = {"a", "b", "", "no name"};

struct Entry {
    std::string name;
    Variable function;
};

std::vector<Entry> entries;

[[noreturn]] void give(const std::string& complaint) {
    std::fprintf(stderr, "%s\n", complaint.c_str());
    std::abort();
}

/// Takes the entries out of the engine, so that no script finds them.
void takeEntries() {
    for (const char* tableName : tableNames) {
        const Variable table = engine.pullVariable(tableName);
        if (!table.isTable()) give(std::string("no table ") + tableName);
        for (const std::string& key : table.asTable()->sortedKeys()) {
            std::string name = std::string(tableName) + "." + key;
            if (!notCalled.contains(name)) entries.push_back({std::move(name), *table.asTable()->find(key)});
        }
        engine.pushVariable(tableName, Variable());
    }
    for (const char* name : helperNames) entries.push_back({name, engine.pullVariable(name)});
}

const Entry& entryOf(const std::string& word) {
    for (const Entry& entry : entries) {
        if (entry.name == word) return entry;
    }
    return entries[std::hash<std::string>()(word) % entries.size()];
}

std::optional<Variable> numberOf(const std::string& word) {
    int whole = 0;
    const char* end = word.data() + word.size();
    if (const auto read = std::from_chars(word.data(), end, whole); read.ec == std::errc() && read.ptr == end) {
        return whole;
    }
    float number = 0;
    if (const auto read = std::from_chars(word.data(), end, number); read.ec == std::errc() && read.ptr == end) {
        return number; // "nan" and "-inf" too
    }
    return std::nullopt;
}

using Values = std::vector<Variable>;

/// The words of one call, and what they mean.
class CallReader {
public:
    CallReader(const std::string& line, const Values& results) : words(line), earlier(results) {}

    std::string entryName() {
        std::string word;
        words >> word;
        return word;
    }

    Values arguments() {
        Values values;
        std::string word;
        while (values.size() < mostArguments && words >> word) values.push_back(valueOf(word));
        return values;
    }

private:
    Variable valueOf(const std::string& word) {
        if (word == "nil") return {};
        if (word == "true" || word == "false") return word == "true";
        if (word == "raw") return std::vector<char>{'r', '\0', '\x7F'};
        if (word == "array") return makeArray({1, "two", 3.5F});
        if (word == "table") {
            Variable table = makeTable();
            table.asTable()->set("x", 1);
            table.asTable()->set(1, "one");
            return table;
        }
        if (word == "wild") return reinterpret_cast<void*>(static_cast<std::uintptr_t>(somewhere));
        if (word == "long") return std::string(longTextSize, 'l');
        if (word == "function") {
            return engine.makeNativeCallable([](const Values&) { return Variable(1); }, "given");
        }
        if (word == "many") return manyOf();
        if (word.size() > 1 && word[0] == '$') return earlierResult(word.substr(1));
        if (const std::optional<Variable> number = numberOf(word)) return *number;
        return word;
    }

    Variable manyOf() {
        std::string word;
        Values values;
        while (values.size() < 3 && words >> word) {
            if (word == "many") break; // no deep nesting; this is about arguments
            values.push_back(valueOf(word));
        }
        return makeMulti(std::move(values));
    }

    Variable earlierResult(const std::string& place) const {
        const std::optional<Variable> number = numberOf(place);
        if (!number || number->type != VarType::Integer || number->asInt() < 0) return {};
        const auto index = static_cast<std::size_t>(number->asInt());
        return index < earlier.size() ? earlier[index] : Variable();
    }

    std::istringstream words;
    const Values& earlier;
};

/// The strings that an entry may get; null if any.
const std::vector<std::string>* textsFor(const std::string& name) {
    if (takingPaths.contains(name)) return &paths;
    return takingVariables.contains(name) ? &variableNames : nullptr;
}

/// Puts strings of a list in the place of those among the values, also within several values.
void replaceTexts(Values& values, const std::vector<std::string>& texts) {
    for (Variable& value : values) {
        if (value.isString()) {
            value = texts[std::hash<std::string>()(value.asString()) % texts.size()];
        } else if (value.isMulti() && value.asMulti()) {
            Values inner = value.asMulti()->values;
            replaceTexts(inner, texts);
            value = makeMulti(std::move(inner));
        }
    }
}

/// Makes a call and looks at how it ends.
Variable outcomeOf(const Entry& entry, const Values& arguments) {
    try {
        return engine.callCallable(entry.function, arguments);
    } catch (const std::bad_alloc&) {
        return {}; // the budget, as a machine whose memory is used up
    } catch (const std::exception& failure) {
        const std::string_view message = failure.what();
        const bool named = message.starts_with(entry.name) || entry.name == "Ostrel.runScript";
        if (!named) give("a message without the name " + entry.name + ": " + failure.what());
    }
    return {};
}

/// Leaves the next input a world without images, buttons and habits.
void cleanUp() {
    while (!livePlushImages.empty()) killImage(*livePlushImages.begin());
    buttons.clear();
    windowTitle.clear();
    AllowedThreads = 1;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    silenceOutput();
    registerFunctions();
    takeEntries();
    std::string directory = (std::filesystem::temp_directory_path() / "velmaris-fuzz-XXXXXX").string();
    if (!mkdtemp(directory.data())) give("no directory for files");
    for (const char* name : fileNames) paths.push_back(directory + "/" + name);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryBudget budget;
    confine(engine); // with its steps anew
    try {
        std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
        Values results;
        std::string line;
        while (results.size() < mostCalls && std::getline(lines, line)) {
            CallReader reader(line, results);
            const Entry& entry = entryOf(reader.entryName());
            Values arguments = reader.arguments();
            if (const std::vector<std::string>* texts = textsFor(entry.name)) replaceTexts(arguments, *texts);
            results.push_back(outcomeOf(entry, arguments));
            if (AllowedThreads > mostThreads) AllowedThreads = mostThreads;
        }
    } catch (const std::bad_alloc&) {
        // the input itself is larger than the budget
    }
    cleanUp();
    return 0;
}

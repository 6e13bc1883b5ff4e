#include "entries.h"

#include "host/index.h"
#include "plush/registry.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <functional>
#include <optional>
#include <regex>
#include <set>
#include <utility>

namespace {

constexpr std::array<const char*, 10> tableNames = {"Metal", "Sailfish", "Ostrel", "Ruby", "Lua",
                                                    "Audio", "AI",       "Font",   "Jade", "Plush"};
constexpr std::array<const char*, 4> helperNames = {"add", "dFeet", "dMetres", "calcHeight"};

const std::set<std::string> takingPaths = {"Plush.saveImage", "Plush.loadPNG", "Plush.savePlushImage",
                                           "Plush.loadPlushImage", "Ostrel.readFile"};
const std::set<std::string> takingVariables = {"Ostrel.setVar", "Ostrel.getVar"};
constexpr std::array<const char*, 5> fileNames = {"one.png", "two.pmg", "three", "", "missing/four.png"};
std::vector<std::string> paths = {"", "."}; // and the files above
const std::vector<std::string> variableNames = {"a", "b", "", "no name"};

constexpr std::size_t mostParameters = 16;
constexpr float longestSleep = 1;          // milliseconds
constexpr float widestWindow = 64;         // pixels
constexpr std::size_t longestScript = 200; // bytes; long ones are for the script fuzzers

std::string failureOf(const Variable& function, const std::vector<Variable>& arguments) {
    try {
        engine.callCallable(function, arguments);
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return {};
}

/// What a failure says that the parameter it is about wants; none if it isn't about a value's type.
std::optional<Want> wantOf(const std::string& failure) {
    if (failure.ends_with(" must be numeric")) return Want::Number;
    if (failure.ends_with(" must be a string")) return Want::Text;
    if (failure.ends_with(" must be a pointer")) return Want::Image;
    return std::nullopt;
}

Variable suiting(Want want) {
    switch (want) {
    case Want::Number: return 0;
    case Want::Text: return "";
    case Want::Image: return createSolidColourImage(2, 2, 0, 0, 0, 0);
    case Want::Anything: break;
    }
    return makeTable();
}

/// The names in a failure like "expected 3 arguments (target, x, y)"; none if it is another.
std::vector<std::string> countedParameters(const std::string& failure) {
    static const std::regex form(R"(expected \d+ arguments? \((.*)\)$)");
    static const std::regex word(R"(\w+)");
    std::smatch parts;
    if (!std::regex_search(failure, parts, form)) return {};
    const std::string names = parts[1];
    return {std::sregex_token_iterator(names.begin(), names.end(), word), std::sregex_token_iterator()};
}

/// Of an entry that counts its arguments first and names them.
std::vector<Want> wantsByName(const Variable& function, const std::vector<std::string>& names) {
    std::vector<Want> wants(names.size(), Want::Anything);
    std::vector<Variable> arguments(names.size(), suiting(Want::Anything));
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::string failure = failureOf(function, arguments);
        const std::optional<Want> want = wantOf(failure);
        if (!want) break;
        for (std::size_t place = 0; place < names.size(); ++place) {
            if (failure.find(": " + names[place] + " must be ") == std::string::npos) continue;
            wants[place] = *want;
            arguments[place] = suiting(*want);
        }
    }
    return wants;
}

std::vector<Want> wantsOf(const Variable& function) {
    std::vector<Want> wants;
    std::vector<Variable> arguments;
    while (wants.size() < mostParameters) {
        const std::string failure = failureOf(function, arguments);
        if (const std::vector<std::string> names = countedParameters(failure); !names.empty()) {
            return wantsByName(function, names);
        }
        const bool more = failure.ends_with("missing argument " + std::to_string(wants.size() + 1)) ||
                          (failure.find("requires exactly") != std::string::npos && wants.size() < 2);
        if (!more && !wantOf(failure)) break;
        if (more) {
            wants.push_back(Want::Anything);
            arguments.push_back(suiting(Want::Anything));
        } else {
            if (wants.empty() || wants.back() != Want::Anything) break; // asks again, or for what it was not given
            wants.back() = *wantOf(failure);
            arguments.back() = suiting(wants.back());
        }
    }
    return wants;
}

void replaceTexts(std::vector<Variable>& values, const std::vector<std::string>& texts) {
    for (Variable& value : values) {
        if (value.isString()) value = texts[std::hash<std::string>()(value.asString()) % texts.size()];
    }
}

void holdTexts(std::vector<Variable>& values, std::size_t most) {
    for (Variable& value : values) {
        if (value.isString() && value.asString().size() > most) value = value.asString().substr(0, most);
    }
}

void holdNumbers(std::vector<Variable>& values, float most) {
    for (Variable& value : values) {
        if (value.isNumeric() && toDouble(value) > static_cast<double>(most)) value = most;
    }
}

/// Applies something to the values, and to those within several values.
template <typename Change> void changeDeeply(std::vector<Variable>& values, const Change& change) {
    change(values);
    for (Variable& value : values) {
        if (!value.isMulti() || !value.asMulti()) continue;
        std::vector<Variable> inner = value.asMulti()->values;
        changeDeeply(inner, change);
        value = makeMulti(std::move(inner));
    }
}

} // namespace

void give(const std::string& complaint) {
    std::fprintf(stderr, "%s\n", complaint.c_str());
    std::abort();
}

std::vector<Entry> takeEntries() {
    std::vector<Entry> entries;
    for (const char* tableName : tableNames) {
        const Variable table = engine.pullVariable(tableName);
        if (!table.isTable()) give(std::string("no table ") + tableName);
        for (const std::string& key : table.asTable()->sortedKeys()) {
            const Variable function = *table.asTable()->find(key);
            entries.push_back({std::string(tableName) + "." + key, function, wantsOf(function)});
        }
        engine.pushVariable(tableName, Variable());
    }
    for (const char* name : helperNames) {
        const Variable function = engine.pullVariable(name);
        entries.push_back({name, function, wantsOf(function)});
    }
    return entries;
}

void tame(const Entry& entry, std::vector<Variable>& arguments) {
    if (takingPaths.contains(entry.name)) {
        changeDeeply(arguments, [](std::vector<Variable>& values) { replaceTexts(values, paths); });
    }
    if (takingVariables.contains(entry.name)) {
        changeDeeply(arguments, [](std::vector<Variable>& values) { replaceTexts(values, variableNames); });
    }
    if (entry.name == "Ostrel.sleep") {
        changeDeeply(arguments, [](std::vector<Variable>& values) { holdNumbers(values, longestSleep); });
    }
    if (entry.name.ends_with(".runScript")) {
        changeDeeply(arguments, [](std::vector<Variable>& values) { holdTexts(values, longestScript); });
    }
    if (entry.name == "Metal.spawnWindow") {
        changeDeeply(arguments, [](std::vector<Variable>& values) { holdNumbers(values, widestWindow); });
    }
}

void makeDirectory() {
    std::string directory = (std::filesystem::temp_directory_path() / "velmaris-fuzz-XXXXXX").string();
    if (!mkdtemp(directory.data())) give("no directory for files");
    for (const char* name : fileNames) paths.push_back(directory + "/" + name);
}

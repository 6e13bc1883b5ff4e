// The parameters of the native entries: those that the document names are those that the entries read, in that order.
//
// Each entry is called with a value that suits nothing in every place. It fails and names the first parameter; that one
// gets a value that suits, and so on until the call goes through. The names that were told have to be those of the
// heading in docs/native-tables.md, but for flags, which take any value and are never named.

#include "host/index.h"
#include "plush/registry.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Heading {
    std::string name; // "Table.key"
    Variable function;
    std::vector<std::string> parameters; // without the brackets of optional ones
    std::size_t required = 0;
};

/// Waits for a player, or for time to pass, once its arguments are right.
const std::set<std::string> notCalled = {"Metal.spawnWindow"};

const std::set<std::string> flags = {"blend", "horizontal", "pixelate"};
const std::set<std::string> anyValue = {"value", "datatype"};

std::vector<std::string> wordsOf(const std::string& text) {
    static const std::regex word(R"(\w+)");
    return {std::sregex_token_iterator(text.begin(), text.end(), word), std::sregex_token_iterator()};
}

/// The entries that have a heading of their own.
std::vector<Heading> headings() {
    std::ifstream file(VELMARIS_NATIVE_TABLES_DOCUMENT);
    static const std::regex form(R"form(^### `(\w+)\["(\w+)"\]\(([^\[)]*)(.*)\)`$)form");
    std::vector<Heading> found;
    std::string line;
    std::smatch parts;
    while (std::getline(file, line)) {
        if (!std::regex_match(line, parts, form)) continue;
        Heading heading;
        heading.name = parts[1].str() + "." + parts[2].str();
        const Variable table = engine.pullVariable(parts[1].str());
        const Variable* function = table.isTable() ? table.asTable()->find(parts[2].str()) : nullptr;
        if (function) heading.function = *function;
        heading.required = wordsOf(parts[3].str()).size();
        heading.parameters = wordsOf(parts[3].str() + " " + parts[4].str());
        found.push_back(heading);
    }
    return found;
}

std::string failureOf(const Heading& entry, const std::vector<Variable>& arguments) {
    try {
        engine.callCallable(entry.function, arguments);
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return {};
}

class DocumentedParameters : public testing::Test {
protected:
    static void SetUpTestSuite() { registerFunctions(); }

    void TearDown() override {
        while (!livePlushImages.empty()) killImage(*livePlushImages.begin());
        buttons.clear();
    }

    /// A value that suits what a failure asks for, or nil if it asks for nothing of this parameter.
    static Variable suiting(const std::string& failure, const std::string& told) {
        if (failure == told + " must be numeric") return 0;
        if (failure == told + " must be a string") return "/velmaris/no/such/file";
        if (failure == told + " must be a pointer") return createSolidColourImage(2, 2, 0, 0, 0, 0);
        return {};
    }
};

TEST_F(DocumentedParameters, AreThoseThatAreReadInTheirOrder) {
    const std::vector<Heading> all = headings();
    ASSERT_GT(all.size(), 30U);
    for (const Heading& entry : all) {
        ASSERT_TRUE(entry.function.isFunction()) << entry.name;
        std::vector<Variable> arguments(entry.parameters.size(), makeTable());
        for (std::size_t place = 0; place < entry.parameters.size(); ++place) {
            const std::string& parameter = entry.parameters[place];
            if (flags.contains(parameter) || anyValue.contains(parameter)) continue;
            const std::string failure = failureOf(entry, arguments);
            arguments[place] = suiting(failure, entry.name + ": " + parameter);
            EXPECT_FALSE(arguments[place].isNil()) << entry.name << ", " << parameter << ": " << failure;
        }
        if (notCalled.contains(entry.name)) continue;
        const std::string failure = failureOf(entry, arguments);
        EXPECT_EQ(failure.find(" must be "), std::string::npos) << failure;
    }
}

TEST_F(DocumentedParameters, AreRequiredUnlessTheyStandInBrackets) {
    for (const Heading& entry : headings()) {
        // Values that suit, found as above; flags may be missing and are not asked for.
        std::vector<Variable> arguments(entry.parameters.size(), makeTable());
        for (std::size_t place = 0; place < entry.parameters.size(); ++place) {
            const Variable value = suiting(failureOf(entry, arguments), entry.name + ": " + entry.parameters[place]);
            if (!value.isNil()) arguments[place] = value;
        }
        for (std::size_t count = 0; count < entry.required; ++count) {
            if (flags.contains(entry.parameters[count])) continue;
            const std::string failure =
                failureOf(entry, {arguments.begin(), arguments.begin() + static_cast<long>(count)});
            const bool countsFirst = failure.starts_with(entry.name + ": expected ");
            if (!countsFirst) {
                EXPECT_EQ(failure, entry.name + ": missing argument " + std::to_string(count + 1));
            }
        }
        if (notCalled.contains(entry.name)) continue;
        arguments.resize(entry.required);
        const std::string failure = failureOf(entry, arguments);
        EXPECT_EQ(failure.find("missing argument"), std::string::npos) << failure;
    }
}

} // namespace

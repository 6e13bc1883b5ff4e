// ostrelc: compiles a script to a bytecode file, and shows what such a file holds.
//
// Its only own work is reading the command line; compiling, storing and loading are the engine's. The build runs it to
// compile the startup library that is carried in the executable.

#include "bytecode_dump.h"
#include "script/ostrel_script.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

enum ExitStatus : int { success = 0, failure = 1, wrongUsage = 2 };

constexpr const char* usage = "usage: ostrelc INPUT.os OUTPUT.osb [--source NAME]\n"
                              "       ostrelc --dump FILE.osb\n"
                              "       ostrelc --help\n";

constexpr const char* help =
    "\n"
    "Compiles the script INPUT.os and stores it as the bytecode file OUTPUT.osb, which the\n"
    "engine runs like the script itself, without its source.\n"
    "\n"
    "  --source NAME  the name under which error reports show the script, and whose directory\n"
    "                 its relative paths start from; without it, INPUT.os as given\n"
    "  --dump FILE    prints what a bytecode file holds: its header, the script's lines with\n"
    "                 their tokens, the instructions of every chunk, and all side tables\n"
    "  --help         prints this text\n"
    "\n"
    "Exit status: 0 if all went well, 1 if a file is at fault, 2 for a wrong command line.\n";

struct CommandLine {
    enum class Task { Compile, Dump, Help };

    Task task = Task::Compile;
    std::vector<std::string> files;
    std::optional<std::string> sourceName;
};

/// The command line taken apart, or nothing and the reason in `fault`.
std::optional<CommandLine> readCommandLine(const std::vector<std::string>& arguments, std::string& fault) {
    CommandLine command;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help") {
            command.task = CommandLine::Task::Help;
            return command;
        }
        if (argument == "--dump") {
            command.task = CommandLine::Task::Dump;
        } else if (argument == "--source") {
            if (++i == arguments.size()) {
                fault = "--source needs a name";
                return std::nullopt;
            }
            command.sourceName = arguments[i];
        } else if (argument.size() > 1 && argument[0] == '-') {
            fault = "unknown option " + argument;
            return std::nullopt;
        } else {
            command.files.push_back(argument);
        }
    }
    const bool dumps = command.task == CommandLine::Task::Dump;
    if (command.files.size() != (dumps ? 1U : 2U))
        fault = dumps ? "--dump takes one file" : "an input and an output file are needed";
    else if (dumps && command.sourceName)
        fault = "--source does not go with --dump";
    else
        return command;
    return std::nullopt;
}

std::string readSource(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!in.is_open() || in.bad()) throw std::runtime_error("Failed to open script file: " + path);
    return text;
}

/// A fault without a position gets the name of the script in front.
std::string located(const std::string& script, const std::string& message) {
    return message.starts_with("OstrelScript error: ") ? message : script + ": " + message;
}

void compile(const CommandLine& command) {
    OstrelScript engine;
    const std::string source = readSource(command.files[0]);
    const std::string name = command.sourceName.value_or(command.files[0]);
    BytecodeProgram program;
    try {
        program = engine.compileToBytecode(source, name);
    } catch (const std::exception& error) {
        throw std::runtime_error(located(name, error.what()));
    }
    engine.saveBytecode(program, command.files[1]);
}

void dump(const CommandLine& command) {
    OstrelScript engine;
    const std::string text = dumpBytecode(engine.loadBytecode(command.files[0]));
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0)
        throw std::runtime_error("the dump could not be written");
}

} // namespace

int main(int argc, char** argv) {
    std::string fault;
    const auto command = readCommandLine(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc), fault);
    if (!command) {
        std::fprintf(stderr, "ostrelc: %s\n%s", fault.c_str(), usage);
        return wrongUsage;
    }
    try {
        switch (command->task) {
        case CommandLine::Task::Compile: compile(*command); break;
        case CommandLine::Task::Dump: dump(*command); break;
        case CommandLine::Task::Help: std::printf("%s%s", usage, help); break;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "ostrelc: %s\n", error.what());
        return failure;
    }
    return success;
}

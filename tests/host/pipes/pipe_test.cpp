// Pipes to child processes, on every platform that the engine is built for.
//
// The shells of the platforms share hardly a command, so the children are this program itself: with a first argument it
// plays the part that this names, without one it runs the tests. It needs no test library and so builds where there is
// none. A line "ok NAME" or "not ok NAME" is written for each test, and the exit status is 1 if one failed.

#include "binary_streams.h"
#include "host/wm.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace {

constexpr std::size_t manyBytes = 8U << 20;
constexpr int codeOfCount = 5;        // of a child that was given exactly `manyBytes` of the right bytes
constexpr int codeOfWrongBytes = 6;   // of one that was not
constexpr int codeOfLeaving = 4;      // of one that goes without reading
constexpr int codeOfNoInput = 7;      // of one whose input is empty
constexpr const char* quietly = "ok"; // what a child says

std::string self; // the path of this program
int failures = 0;

/// The bytes that go through a pipe: all values, line ends and control bytes among them, in no simple period.
char byteAt(std::size_t place) { return static_cast<char>((place * 7 + place / 251) & 0xFF); }

void report(const char* name, bool passed) {
    std::printf("%s %s\n", passed ? "ok" : "not ok", name);
    if (!passed) ++failures;
}

// --- The parts of a child ---

int emitMany() {
    std::string block(manyBytes, '\0');
    for (std::size_t place = 0; place < manyBytes; ++place) block[place] = byteAt(place);
    return std::fwrite(block.data(), 1, block.size(), stdout) == manyBytes ? 0 : 1;
}

int countMany() {
    std::size_t place = 0;
    bool right = true;
    for (int byte = std::getchar(); byte != EOF; byte = std::getchar()) {
        right = right && static_cast<char>(byte) == byteAt(place++);
    }
    return right && place == manyBytes ? codeOfCount : codeOfWrongBytes;
}

int play(std::string_view part, const char* argument) {
    if (part == "emit") return emitMany();
    if (part == "count") return countMany();
    if (part == "say") return std::fputs(quietly, stdout) == EOF ? 1 : 0;
    if (part == "leave") return codeOfLeaving;
    if (part == "input") return std::getchar() == EOF ? codeOfNoInput : 0;
    if (part == "exit") return std::atoi(argument);
    return 1;
}

// --- The tests ---

std::FILE* start(const std::string& part, const char* mode) {
    return wm_windows_popen(('"' + self + "\" " + part).c_str(), mode);
}

std::string readAll(std::FILE* stream) {
    std::string text;
    std::array<char, 65536> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), stream)) > 0) text.append(block.data(), count);
    return text;
}

bool exitCodesComeThrough() {
    for (const int code : {0, 1, 3, 100, 255}) {
        for (const char* mode : {"r", "w"}) {
            std::FILE* stream = start("exit " + std::to_string(code), mode);
            if (!stream || wm_windows_pclose(stream) != code) return false;
        }
    }
    return true;
}

bool aReadPipeGivesTheOutput() {
    for (const char* mode : {"r", "rb", "a", "", static_cast<const char*>(nullptr)}) {
        std::FILE* stream = start("say", mode);
        if (!stream || readAll(stream) != quietly || wm_windows_pclose(stream) != 0) return false;
    }
    return true;
}

bool eightMegabytesAreReadUnchanged() {
    std::FILE* stream = start("emit", "r");
    if (!stream) return false;
    const std::string text = readAll(stream);
    bool right = text.size() == manyBytes;
    for (std::size_t place = 0; right && place < manyBytes; ++place) right = text[place] == byteAt(place);
    return wm_windows_pclose(stream) == 0 && right;
}

bool eightMegabytesAreWrittenUnchanged() {
    std::string block(manyBytes, '\0');
    for (std::size_t place = 0; place < manyBytes; ++place) block[place] = byteAt(place);
    for (const char* mode : {"w", "wb", "rw"}) {
        std::FILE* stream = start("count", mode);
        if (!stream) return false;
        const bool written = std::fwrite(block.data(), 1, block.size(), stream) == manyBytes;
        if (wm_windows_pclose(stream) != codeOfCount || !written) return false;
    }
    return true;
}

bool aChildThatLeavesEarlyIsAFailedWriteAndNothingWorse() {
    std::FILE* stream = start("leave", "w");
    if (!stream) return false;
    const std::string block(manyBytes, 'z');
    const bool written = std::fwrite(block.data(), 1, block.size(), stream) == manyBytes;
    return wm_windows_pclose(stream) == codeOfLeaving && !written;
}

bool aReaderThatLeavesEarlyEndsTheChild() {
    std::FILE* stream = start("emit", "r");
    if (!stream || std::fgetc(stream) == EOF) return false;
    return wm_windows_pclose(stream) != 0; // its own error, or its end by a signal
}

bool theInputOfAChildThatIsReadIsEmpty() {
    std::FILE* stream = start("input", "r");
    return stream && readAll(stream).empty() && wm_windows_pclose(stream) == codeOfNoInput;
}

bool theOutputOfAChildThatIsWrittenToGoesNowhere() {
    std::FILE* stream = start("emit", "w"); // with nobody to read it, it would wait for ever
    return stream && wm_windows_pclose(stream) == 0;
}

bool severalAreOpenAtOnce() {
    std::array<std::FILE*, 8> streams{};
    for (std::size_t i = 0; i < streams.size(); ++i) {
        streams[i] = start("exit " + std::to_string(i), i % 2 == 0 ? "r" : "w");
        if (!streams[i]) return false;
    }
    bool right = true;
    for (std::size_t i = streams.size(); i-- > 0;) {
        right = wm_windows_pclose(streams[i]) == static_cast<int>(i) && right;
    }
    return right;
}

bool aChildInheritsNoOtherPipe() {
    std::FILE* held = start("input", "w");
    std::FILE* other = start("count", "w"); // would keep the first one's pipe open if it had it
    if (!held || !other) return false;
    const int first = wm_windows_pclose(held);
    const int second = wm_windows_pclose(other);
    return first == codeOfNoInput && second == codeOfWrongBytes;
}

bool whatIsNoPipeGivesMinusOne() {
    if (wm_windows_popen(nullptr, "r") || wm_windows_popen(nullptr, nullptr)) return false;
    if (wm_windows_pclose(nullptr) != -1) return false;
    std::FILE* file = std::fopen(self.c_str(), "rb");
    return file && wm_windows_pclose(file) == -1;
}

bool aCommandThatDoesNotExistHasTheShellsExitCode() {
    std::FILE* stream = wm_windows_popen("velmaris-no-such-command", "r");
    return stream && readAll(stream).empty() && wm_windows_pclose(stream) > 0;
}

using Query = int (*)(char* buffer, unsigned size);
constexpr std::array<Query, 5> queries = {wm_user_name, wm_platform_name, wm_version_string, wm_processor_name,
                                          wm_temp_directory};

bool queriesAnswerWithinTheBuffer() {
    for (const Query query : queries) {
        std::array<char, 512> buffer{};
        if (query(buffer.data(), static_cast<unsigned>(buffer.size())) == 0) return false;
        const std::string text = buffer.data();
        const auto size = static_cast<unsigned>(text.size());
        if (query(buffer.data(), size + 1) == 0 || text != buffer.data()) return false;
        if (size > 0 && (query(buffer.data(), size) != 0 || buffer[0] != '\0')) return false;
        if (query(buffer.data(), 0) != 0 || query(nullptr, size) != 0) return false;
        constexpr const char* whiteSpace = " \t\r\n\v\f";
        if (!text.empty() && (std::strchr(whiteSpace, text.front()) || std::strchr(whiteSpace, text.back()))) {
            return false;
        }
    }
    return true;
}

bool theTemporaryDirectoryIsOneAndEndsWithASlash() {
    std::array<char, 512> buffer{};
    wm_temp_directory(buffer.data(), static_cast<unsigned>(buffer.size()));
    const std::string directory = buffer.data();
    std::error_code ignored;
    return !directory.empty() && directory.back() == '/' && directory.find('\\') == std::string::npos &&
           std::filesystem::is_directory(directory, ignored);
}

int runTests() {
    report("exit codes come through", exitCodesComeThrough());
    report("a read pipe gives the output", aReadPipeGivesTheOutput());
    report("8 MB are read unchanged", eightMegabytesAreReadUnchanged());
    report("8 MB are written unchanged", eightMegabytesAreWrittenUnchanged());
    report("a child that leaves early is a failed write", aChildThatLeavesEarlyIsAFailedWriteAndNothingWorse());
    report("a reader that leaves early ends the child", aReaderThatLeavesEarlyEndsTheChild());
    report("the input of a child that is read is empty", theInputOfAChildThatIsReadIsEmpty());
    report("the output of a child that is written to goes nowhere", theOutputOfAChildThatIsWrittenToGoesNowhere());
    report("several are open at once", severalAreOpenAtOnce());
    report("a child inherits no other pipe", aChildInheritsNoOtherPipe());
    report("what is no pipe gives -1", whatIsNoPipeGivesMinusOne());
    report("a command that does not exist has the shell's exit code", aCommandThatDoesNotExistHasTheShellsExitCode());
    report("queries answer within the buffer", queriesAnswerWithinTheBuffer());
    report("the temporary directory is one and ends with a slash", theTemporaryDirectoryIsOneAndEndsWithASlash());
    return failures == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        binaryStandardStreams();
        if (argc > 1) return play(argv[1], argc > 2 ? argv[2] : "");
        self = std::filesystem::absolute(argv[0]).string();
        return runTests();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}

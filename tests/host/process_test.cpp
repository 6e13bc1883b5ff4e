// Pipes to shell commands, and the texts about the system.
//
// Most commands here mean the same to every platform's shell.

#include "host/query_text.h"
#include "host/wm.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace {

std::string readAll(std::FILE* stream) {
    std::string text;
    std::array<char, 65536> block{};
    std::size_t count = 0;
    while ((count = std::fread(block.data(), 1, block.size(), stream)) > 0) text.append(block.data(), count);
    return text;
}

struct Outcome {
    std::string output;
    int code = -2;
};

Outcome run(const std::string& command, const char* mode = "r") {
    std::FILE* stream = wm_windows_popen(command.c_str(), mode);
    if (!stream) return {};
    Outcome outcome;
    outcome.output = readAll(stream);
    outcome.code = wm_windows_pclose(stream);
    return outcome;
}

/// A file name that is free, and free again afterwards.
class ScratchFile {
public:
    ScratchFile() {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        path = std::filesystem::temp_directory_path() / ("velmaris-process-test-" + std::to_string(stamp));
    }
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    std::string name() const { return path.string(); }
    std::string content() const {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path path;
};

using Query = int (*)(char*, unsigned);
constexpr std::array<Query, 6> queries = {wm_user_name,      wm_platform_name,  wm_version_string,
                                          wm_processor_name, wm_temp_directory, wm_executable_directory};

std::string answer(Query query) {
    std::array<char, 4096> buffer{};
    EXPECT_NE(query(buffer.data(), static_cast<unsigned>(buffer.size())), 0);
    return buffer.data();
}

constexpr std::size_t manyBytes = 8U << 20;

} // namespace

TEST(ReadPipe, GivesTheOutputAndTheExitCode) {
    const Outcome outcome = run("echo hi");
    EXPECT_EQ(trimmed(outcome.output), "hi");
    EXPECT_EQ(outcome.code, 0);
}

TEST(ReadPipe, ExitCodesComeThrough) {
    EXPECT_EQ(run("exit 0").code, 0);
    EXPECT_EQ(run("exit 1").code, 1);
    EXPECT_EQ(run("exit 3").code, 3);
    EXPECT_EQ(run("exit 255").code, 255);
}

TEST(ReadPipe, ANullModeReads) {
    std::FILE* stream = wm_windows_popen("echo hi", nullptr);
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(trimmed(readAll(stream)), "hi");
    EXPECT_EQ(wm_windows_pclose(stream), 0);
}

TEST(ReadPipe, AModeWithoutWReads) { EXPECT_EQ(trimmed(run("echo hi", "a+b").output), "hi"); }

TEST(ReadPipe, TheChildsInputIsEmpty) {
    const Outcome outcome = run("cat");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.code, 0);
}

TEST(ReadPipe, BytesComeThroughUnchanged) {
    EXPECT_EQ(run("printf 'a\\r\\nb\\032\\000c\\n'").output, std::string("a\r\nb\032\0c\n", 8));
}

TEST(ReadPipe, EightMegabytesComeThrough) {
    const Outcome outcome = run("head -c 8388608 /dev/zero | tr '\\000' x");
    EXPECT_EQ(outcome.output.size(), manyBytes);
    EXPECT_EQ(outcome.output.find_first_not_of('x'), std::string::npos);
    EXPECT_EQ(outcome.code, 0);
}

TEST(ReadPipe, ACommandThatDoesNotExistEndsWithTheShellsCode) {
    EXPECT_EQ(run("velmaris-no-such-command 2>/dev/null").code, 127);
}

TEST(ReadPipe, AChildKilledByASignalHasACodeOfItsOwn) {
    EXPECT_EQ(run("kill -9 $$").code, 128 + 9);
    EXPECT_EQ(run("kill -15 $$").code, 128 + 15);
}

TEST(ReadPipe, HasItsExitCodeAlsoWhenTheEndsOfChildrenWereIgnored) {
    const auto before = std::signal(SIGCHLD, SIG_IGN); // as whoever starts us may leave it
    EXPECT_EQ(run("exit 3").code, 3);
    std::signal(SIGCHLD, before);
}

TEST(ReadPipe, ClosingBeforeTheEndWaitsForTheChild) {
    std::FILE* stream = wm_windows_popen("echo first; sleep 0.2; exit 7", "r");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::fgetc(stream), 'f');
    EXPECT_EQ(wm_windows_pclose(stream), 7);
}

TEST(ReadPipe, AChildWhoseReaderLeftDiesOfTheBrokenPipe) {
    std::FILE* stream = wm_windows_popen("exec yes", "r");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(std::fgetc(stream), 'y');
    EXPECT_EQ(wm_windows_pclose(stream), 128 + 13);
}

TEST(ReadPipe, SeveralAreOpenAtOnce) {
    std::vector<std::FILE*> streams;
    for (int i = 0; i < 20; ++i) {
        streams.push_back(wm_windows_popen(("echo " + std::to_string(i) + "; exit " + std::to_string(i)).c_str(), "r"));
        ASSERT_NE(streams.back(), nullptr);
    }
    for (int i = 19; i >= 0; --i) {
        EXPECT_EQ(trimmed(readAll(streams[static_cast<std::size_t>(i)])), std::to_string(i));
        EXPECT_EQ(wm_windows_pclose(streams[static_cast<std::size_t>(i)]), i);
    }
}

TEST(ReadPipe, ThreadsOpenAndCloseTheirOwn) {
    std::vector<std::thread> threads;
    std::array<int, 4> wrong{};
    for (std::size_t t = 0; t < wrong.size(); ++t) {
        threads.emplace_back([&wrong, t] {
            for (int i = 0; i < 20; ++i) {
                if (run("exit " + std::to_string(i)).code != i) ++wrong[t];
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, (std::array<int, 4>{}));
}

TEST(WritePipe, TheChildReadsWhatIsWritten) {
    const ScratchFile file;
    std::FILE* stream = wm_windows_popen(("cat > '" + file.name() + "'; exit 5").c_str(), "w");
    ASSERT_NE(stream, nullptr);
    const std::string text("one\r\ntwo\n\032\0three", 16);
    EXPECT_EQ(std::fwrite(text.data(), 1, text.size(), stream), text.size());
    EXPECT_EQ(wm_windows_pclose(stream), 5);
    EXPECT_EQ(file.content(), text);
}

TEST(WritePipe, AnyModeWithAWWrites) {
    const ScratchFile file;
    std::FILE* stream = wm_windows_popen(("cat > '" + file.name() + "'").c_str(), "rw");
    ASSERT_NE(stream, nullptr);
    EXPECT_NE(std::fputs("text", stream), EOF);
    EXPECT_EQ(wm_windows_pclose(stream), 0);
    EXPECT_EQ(file.content(), "text");
}

TEST(WritePipe, EightMegabytesComeThrough) {
    const ScratchFile file;
    std::FILE* stream = wm_windows_popen(("wc -c > '" + file.name() + "'").c_str(), "w");
    ASSERT_NE(stream, nullptr);
    const std::string block(manyBytes, 'y');
    EXPECT_EQ(std::fwrite(block.data(), 1, block.size(), stream), manyBytes);
    EXPECT_EQ(wm_windows_pclose(stream), 0);
    EXPECT_EQ(trimmed(file.content()), std::to_string(manyBytes));
}

TEST(WritePipe, TheChildsOutputGoesNowhere) {
    ::testing::internal::CaptureStdout();
    std::FILE* stream = wm_windows_popen("echo lost", "w");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(wm_windows_pclose(stream), 0);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST(WritePipe, AChildThatEndsEarlyIsAFailedWriteAndNothingWorse) {
    std::FILE* stream = wm_windows_popen("exec 0<&-; exit 4", "w");
    ASSERT_NE(stream, nullptr);
    const std::string block(manyBytes, 'z');
    EXPECT_LT(std::fwrite(block.data(), 1, block.size(), stream), manyBytes);
    EXPECT_EQ(wm_windows_pclose(stream), 4);
}

TEST(WritePipe, StandardErrorIsOurs) {
    ::testing::internal::CaptureStderr();
    std::FILE* stream = wm_windows_popen("echo heard 1>&2", "w");
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(wm_windows_pclose(stream), 0);
    EXPECT_EQ(trimmed(::testing::internal::GetCapturedStderr()), "heard");
}

TEST(Pipes, ANullCommandIsNoPipe) {
    EXPECT_EQ(wm_windows_popen(nullptr, "r"), nullptr);
    EXPECT_EQ(wm_windows_popen(nullptr, nullptr), nullptr);
}

TEST(Pipes, ClosingNothingFails) { EXPECT_EQ(wm_windows_pclose(nullptr), -1); }

TEST(Pipes, AStreamOfAnotherKindIsClosedAndFails) {
    std::FILE* stream = std::tmpfile();
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(wm_windows_pclose(stream), -1);
}

TEST(Pipes, AClosedStreamIsForgotten) {
    // The C library reuses a record of a closed stream at once, so the second stream usually has the first's address.
    std::FILE* first = wm_windows_popen("exit 9", "r");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(wm_windows_pclose(first), 9);
    std::FILE* second = std::tmpfile();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(wm_windows_pclose(second), -1);
}

TEST(Pipes, NoDescriptorLeaks) {
    const auto openDescriptors = [] {
        std::size_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
        return count;
    };
    const std::size_t before = openDescriptors();
    for (int i = 0; i < 50; ++i) run("exit 0");
    EXPECT_EQ(openDescriptors(), before);
}

TEST(Pipes, ChildrenInheritNoOtherPipe) {
    std::FILE* held = wm_windows_popen("cat > /dev/null", "w");
    ASSERT_NE(held, nullptr);
    // Were the write end inherited by a second child that lives on, the first would never see the end of its input.
    std::FILE* other = wm_windows_popen("sleep 1", "r");
    ASSERT_NE(other, nullptr);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(wm_windows_pclose(held), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(700));
    EXPECT_EQ(wm_windows_pclose(other), 0);
}

TEST(Queries, ANullOrEmptyBufferGivesZero) {
    for (const Query query : queries) {
        char untouched = 'u';
        EXPECT_EQ(query(nullptr, 512), 0);
        EXPECT_EQ(query(nullptr, 0), 0);
        EXPECT_EQ(query(&untouched, 0), 0);
        EXPECT_EQ(untouched, 'u');
    }
}

TEST(Queries, ATextThatDoesNotFitGivesAnEmptyTextAndZero) {
    for (const Query query : queries) {
        const std::string text = answer(query);
        ASSERT_GT(text.size(), 0U);
        std::vector<char> buffer(text.size() + 1, 'u');
        EXPECT_NE(query(buffer.data(), static_cast<unsigned>(text.size() + 1)), 0) << "fits exactly";
        EXPECT_EQ(buffer.data(), text);
        buffer.assign(text.size() + 1, 'u');
        EXPECT_EQ(query(buffer.data(), static_cast<unsigned>(text.size())), 0) << "one byte too small: " << text;
        EXPECT_EQ(buffer[0], '\0');
        EXPECT_EQ(query(buffer.data(), 1), 0);
    }
}

TEST(Queries, AreTrimmed) {
    for (const Query query : queries) EXPECT_EQ(answer(query), trimmed(answer(query)));
}

TEST(Queries, TheUserIsTheOneWhoRunsUs) { EXPECT_EQ(answer(wm_user_name), trimmed(run("id -un").output)); }

TEST(Queries, ThePlatformIsSystemAndArchitecture) {
    const std::string platform = answer(wm_platform_name);
    const std::string machine = trimmed(run("uname -m").output);
    EXPECT_EQ(platform.substr(0, platform.find(' ')), trimmed(run("uname -s").output));
    const std::map<std::string, std::string> words = {{"x86_64", "x86_64"}, {"aarch64", "arm64"}, {"i686", "x86"}};
    const auto word = words.find(machine);
    EXPECT_EQ(platform.substr(platform.find(' ') + 1), word == words.end() ? "Unknown" : word->second);
}

TEST(Queries, TheVersionIsTheKernels) { EXPECT_EQ(answer(wm_version_string), trimmed(run("uname -r").output)); }

TEST(Queries, TheProcessorHasTheNameThatTheKernelLists) {
    const std::string listed = trimmed(run("sed -n 's/^model name[^:]*: *//p' /proc/cpuinfo | head -n 1").output);
    const std::string name = answer(wm_processor_name);
    if (listed.empty()) {
        EXPECT_EQ(name.substr(0, 8), "Unknown ");
    } else {
        EXPECT_EQ(name, listed);
    }
}

TEST(Queries, TheTemporaryDirectoryEndsWithASlash) {
    const char* before = std::getenv("TMPDIR");
    const std::string kept = before ? before : "";
    setenv("TMPDIR", "/var/tmp", 1);
    EXPECT_EQ(answer(wm_temp_directory), "/var/tmp/");
    setenv("TMPDIR", "/var/tmp/", 1);
    EXPECT_EQ(answer(wm_temp_directory), "/var/tmp/");
    setenv("TMPDIR", "  ", 1);
    EXPECT_EQ(answer(wm_temp_directory), "/tmp/");
    unsetenv("TMPDIR");
    EXPECT_EQ(answer(wm_temp_directory), "/tmp/");
    if (before) setenv("TMPDIR", kept.c_str(), 1);
}

TEST(Queries, TheExecutablesDirectoryHoldsThisTest) {
    const std::string directory = answer(wm_executable_directory);
    EXPECT_EQ(directory.back(), '/');
    EXPECT_EQ(directory, std::filesystem::read_symlink("/proc/self/exe").parent_path().string() + "/");
}

TEST(Trimming, TakesWhiteSpaceFromBothEnds) {
    EXPECT_EQ(trimmed(" \t a b\r\n\v\f"), "a b");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed(" \n"), "");
}

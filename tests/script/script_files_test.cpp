// Files and paths: the rule by which a name becomes a file, and when a file is read again.

#include "probe.h"
#include "script/script_paths.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

/// A directory of the test's own as the working directory; both are put back.
class ScriptFiles : public testing::Test {
protected:
    ScriptFiles() : before_(fs::current_path()) {
        static int count = 0;
        root_ =
            fs::temp_directory_path() / ("velmaris-script-files-" + std::to_string(++count) + "-" +
                                         std::to_string(std::chrono::steady_clock::now().time_since_epoch().count()));
        fs::create_directories(root_);
        fs::current_path(root_);
    }
    ~ScriptFiles() override {
        fs::current_path(before_);
        fs::remove_all(root_);
    }

    static void write(const std::string& name, const std::string& bytes) {
        if (fs::path(name).has_parent_path()) fs::create_directories(fs::path(name).parent_path());
        std::ofstream(name, std::ios::binary) << bytes;
    }
    static void setTime(const std::string& name, int secondsAgo) {
        fs::last_write_time(name, fs::file_time_type::clock::now() - std::chrono::seconds(secondsAgo));
    }

    /// What a name resolves to for a program of that source.
    std::string resolveFrom(const std::string& source, const std::string& directory, const std::string& name) {
        Probe probe;
        std::string result;
        probe.addFunction("resolve", [&](const std::vector<Variable>&) {
            result = probe.engine.resolvePath(name);
            return Variable();
        });
        BytecodeProgram program = probe.engine.compileToBytecode("resolve()");
        program.sourcePath = source;
        program.sourceDirectory = directory;
        probe.engine.runBytecode(program);
        return result;
    }

    fs::path root_;

private:
    fs::path before_;
};

} // namespace

// ---------------------------------------------------------------------------------------------------------------------
// Paths
// ---------------------------------------------------------------------------------------------------------------------

TEST(Paths, BackslashesBecomeSlashesAndNothingElseChanges) {
    const OstrelScript engine;
    EXPECT_EQ(engine.normalisePath("a\\b/c\\..\\.\\D//e"), "a/b/c/.././D//e");
    EXPECT_EQ(engine.normalisePath(""), "");
}

TEST(Paths, TheDirectoryIsWhatStandsBeforeTheLastSlash) {
    EXPECT_EQ(pathDirectory("a/b/c.os"), "a/b");
    EXPECT_EQ(pathDirectory("a\\b\\c.os"), "a/b");
    EXPECT_EQ(pathDirectory("a\\b/c"), "a/b");
    EXPECT_EQ(pathDirectory("a/"), "a");
    EXPECT_EQ(pathDirectory("/a"), "");
    EXPECT_EQ(pathDirectory("a"), "");
    EXPECT_EQ(pathDirectory(""), "");
}

TEST(Paths, JoiningPutsOneSlashBetween) {
    EXPECT_EQ(joinPath("a", "b"), "a/b");
    EXPECT_EQ(joinPath("a/", "b"), "a/b");
    EXPECT_EQ(joinPath("a\\", "b"), "a/b");
    EXPECT_EQ(joinPath("a\\b", "c\\d"), "a/b/c/d");
    EXPECT_EQ(joinPath("a", "/b"), "a//b");
    EXPECT_EQ(joinPath("", "b\\c"), "b/c");
    EXPECT_EQ(joinPath("a\\b", ""), "a/b");
    EXPECT_EQ(joinPath("", ""), "");
}

TEST_F(ScriptFiles, ExistingMeansFilesAndDirectories) {
    write("dir/file", "x");
    EXPECT_TRUE(pathExists("dir/file"));
    EXPECT_TRUE(pathExists("dir"));
    EXPECT_FALSE(pathExists("dir/none"));
    EXPECT_FALSE(pathExists(""));
}

TEST_F(ScriptFiles, AnEmptyOrAbsoluteNameStaysAsItIs) {
    EXPECT_EQ(resolveFrom("base/x.os", "base", ""), "");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "/no/such"), "/no/such");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "\\no\\such"), "/no/such");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "C:\\no\\such"), "C:/no/such");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "z:"), "z:");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "1:x"), "base/1:x"); // no letter
    EXPECT_EQ(resolveFrom("base/x.os", "base", ":x"), "base/:x");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "c"), "base/c");
}

TEST_F(ScriptFiles, TheWorkingDirectoryComesFirst) {
    write("a.os", "");
    write("base/a.os", "");
    EXPECT_EQ(resolveFrom("base/x.os", "base", "a.os"), "a.os");
    EXPECT_EQ(resolveFrom("base/x.os", "base", ".\\a.os"), "./a.os");
    EXPECT_EQ(resolveFrom("", "", "a.os"), "a.os");
}

TEST_F(ScriptFiles, ThenTheDirectoryOfTheRunningSource) {
    write("base/sub/b.os", "");
    write("other/sub/b.os", "");
    EXPECT_EQ(resolveFrom("other/x.os", "base", "sub\\b.os"), "base/sub/b.os");
    EXPECT_EQ(resolveFrom("other/x.os", "", "sub/b.os"), "other/sub/b.os");
    EXPECT_EQ(resolveFrom("", "base/", "sub/b.os"), "base/sub/b.os");
    EXPECT_EQ(resolveFrom("x.os", "", "sub/b.os"), "sub/b.os"); // a path without a directory is no base
    EXPECT_EQ(resolveFrom("", "", "sub\\b.os"), "sub/b.os");
}

TEST_F(ScriptFiles, ThenTheResourcesAboveIt) {
    write("X/Resources/scripts/y.os", "");
    write("X/Resources/top.os", "");
    fs::create_directories("X/Resources/package/deep");
    EXPECT_EQ(resolveFrom("", "X/Resources/package", "scripts/y.os"), "X/Resources/scripts/y.os");
    EXPECT_EQ(resolveFrom("", "X/Resources/package/deep", "top.os"), "X/Resources/top.os");
    EXPECT_EQ(resolveFrom("", "X/Resources", "top.os"), "X/Resources/top.os");
    EXPECT_EQ(resolveFrom("X/Resources/package/a.os", "", "top.os"), "X/Resources/top.os");
}

TEST_F(ScriptFiles, ResourcesIsAWholeNameAndTheFirstOneCounts) {
    write("X/ResourcesOld/Resources/in.os", "");
    write("Y/Resources/in.os", "");
    fs::create_directories("Y/Resources/a/Resources/b");
    write("Y/Resources/a/Resources/inner.os", "");
    EXPECT_EQ(resolveFrom("", "X/ResourcesOld/Resources/package", "in.os"), "X/ResourcesOld/Resources/in.os");
    EXPECT_EQ(resolveFrom("", "Y/Resources/a/Resources/b", "in.os"), "Y/Resources/in.os");
    EXPECT_EQ(resolveFrom("", "Y/Resources/a/Resources/b", "inner.os"), "Y/Resources/a/Resources/b/inner.os");
    EXPECT_EQ(resolveFrom("", "Resources/a", "in.os"), "Resources/a/in.os"); // it needs a slash before it
    write("Z/Resources>/in.os", "");
    EXPECT_EQ(resolveFrom("", "Z/Resources>/a", "in.os"),
              "Z/Resources>/a/in.os"); // root is "Z/Resources", which has none
    write("Z/Resources/in.os", "");
    EXPECT_EQ(resolveFrom("", "Z/Resources>/a", "in.os"), "Z/Resources/in.os");
}

TEST_F(ScriptFiles, OldPlacesOfScriptsAreFoundWhereTheyAreNow) {
    write("X/Resources/scripts/a.os", "");
    write("X/Resources/scripts/sub/b.os", "");
    const std::string base = "X/Resources/package";
    EXPECT_EQ(resolveFrom("", base, "ast/scripts/a.os"), "X/Resources/scripts/a.os");
    EXPECT_EQ(resolveFrom("", base, "C/old/ast/scripts/sub/b.os"), "X/Resources/scripts/sub/b.os");
    EXPECT_EQ(resolveFrom("", base, "past\\scripts\\a.os"), "X/Resources/scripts/a.os");
    EXPECT_EQ(resolveFrom("", base, "ast/scripts/none.os"), "X/Resources/package/ast/scripts/none.os");
    EXPECT_EQ(resolveFrom("", "elsewhere", "ast/scripts/a.os"), "elsewhere/ast/scripts/a.os");
    write("X/Resources/ast/scripts/a.os", "");
    EXPECT_EQ(resolveFrom("", base, "ast/scripts/a.os"), "X/Resources/ast/scripts/a.os"); // as named comes first
}

TEST_F(ScriptFiles, WhatIsFoundNowhereIsNamedBesideTheSource) {
    EXPECT_EQ(resolveFrom("", "X/Resources/package", "none.os"), "X/Resources/package/none.os");
    EXPECT_EQ(resolveFrom("dir/x.os", "", "none.os"), "dir/none.os");
    EXPECT_EQ(resolveFrom("", "", "none.os"), "none.os");
}

// ---------------------------------------------------------------------------------------------------------------------
// Loading
// ---------------------------------------------------------------------------------------------------------------------

TEST_F(ScriptFiles, AnUnchangedFileIsTheSameFunction) {
    OstrelScript engine;
    write("a.os", "return 1");
    setTime("a.os", 100);
    const Variable first = engine.loadScriptFile("a.os");
    EXPECT_TRUE(engine.variablesEqual(first, engine.loadScriptFile("a.os")));
    EXPECT_EQ(engine.runScriptFilePath("a.os").toString(), "1");
}

TEST_F(ScriptFiles, SizeOrTimeTellThatAFileHasChanged) {
    OstrelScript engine;
    write("a.os", "return 1");
    setTime("a.os", 100);
    const Variable first = engine.loadScriptFile("a.os");
    write("a.os", "return 2"); // as long as before
    setTime("a.os", 50);
    EXPECT_EQ(engine.runScriptFilePath("a.os").toString(), "2");
    write("a.os", "return 30");
    setTime("a.os", 50);
    EXPECT_EQ(engine.runScriptFilePath("a.os").toString(), "30");
    EXPECT_EQ(engine.invokeCallable(first, {}).toString(), "1"); // who holds the old function keeps it
}

TEST_F(ScriptFiles, SameSizeAndTimeMeanThatItIsNotReadAgain) {
    OstrelScript engine;
    write("a.os", "return 1");
    const fs::file_time_type time = fs::last_write_time("a.os");
    engine.loadScriptFile("a.os");
    write("a.os", "return 2");
    fs::last_write_time("a.os", time);
    EXPECT_EQ(engine.runScriptFilePath("a.os").toString(), "1");
}

TEST_F(ScriptFiles, AFaultyVersionInBetweenIsForgotten) {
    OstrelScript engine;
    write("a.os", "return 1");
    setTime("a.os", 100);
    engine.loadScriptFile("a.os");
    write("a.os", "if true");
    setTime("a.os", 90);
    EXPECT_TRUE(engine.loadScriptFile("a.os").isMulti());
    EXPECT_TRUE(engine.loadScriptFile("a.os").isMulti());
    write("a.os", "return 3");
    setTime("a.os", 80);
    EXPECT_EQ(engine.runScriptFilePath("a.os").toString(), "3");
}

TEST_F(ScriptFiles, EveryFaultIsNilAndItsMessage) {
    OstrelScript engine;
    const auto messageOf = [&engine](const char* name) {
        const Variable loaded = engine.loadScriptFile(name);
        if (!loaded.isMulti()) return std::string("loaded");
        EXPECT_EQ(loaded.asMulti()->values.size(), 2U);
        EXPECT_TRUE(loaded.asMulti()->values.at(0).isNil());
        return firstLine(loaded.asMulti()->values.at(1).asString());
    };
    write("block.os", "while true");
    write("string.os", "x = 'open");
    write("short.os", "OSBC");
    write("version.os", std::string("OSBC\x09\0", 6));
    fs::create_directories("folder.os");
    EXPECT_EQ(messageOf("none.os"), "Failed to open script file: none.os");
    EXPECT_EQ(messageOf("dir\\none.os"), "Failed to open script file: dir/none.os");
    EXPECT_EQ(messageOf("folder.os"), "Failed to open script file: folder.os");
    EXPECT_EQ(messageOf(""), "Failed to open script file: ");
    EXPECT_EQ(messageOf("block.os"), "Missing 'end' for while block");
    EXPECT_EQ(messageOf("string.os"), "OstrelScript error: Unterminated string literal");
    EXPECT_EQ(messageOf("short.os"), "Invalid bytecode file (truncated): short.os");
    EXPECT_EQ(messageOf("version.os"), "Unsupported bytecode version: 9");
    EXPECT_EQ(faultOf([&] { engine.runScriptFilePath("none.os"); }), "Failed to open script file: none.os");
    EXPECT_EQ(faultOf([&] { engine.runScriptFilePath("block.os"); }), "Missing 'end' for while block");
    EXPECT_EQ(faultOf([&] { engine.readScriptFile("none.os"); }), "Failed to open script file: none.os");
}

TEST_F(ScriptFiles, ATextThatBeginsLikeBytecodeAndIsTooShortIsText) {
    OstrelScript engine;
    write("a.os", "OSB");
    EXPECT_TRUE(engine.loadScriptFile("a.os").isFunction());
}

TEST_F(ScriptFiles, BytesComeBackAsTheyAre) {
    OstrelScript engine;
    const std::string bytes("a\r\n\0b\xFF\x1A"
                            "c",
                            8);
    write("dir/data.bin", bytes);
    EXPECT_EQ(engine.readScriptFile("dir/data.bin"), bytes);
    EXPECT_EQ(engine.readScriptFile("dir\\data.bin"), bytes);
    write("empty", "");
    EXPECT_EQ(engine.readScriptFile("empty"), "");
}

TEST_F(ScriptFiles, CompiledFilesLoadThroughTheSameCall) {
    Probe probe;
    OstrelScript compiler;
    write("dir/beside.os", "return \"beside\"");
    compiler.saveBytecode(
        compiler.compileToBytecode(
            "say(runFile(\"beside.os\"))\nfunction later()\nlocal x = 1\nreturn x - \"a\"\nend\nreturn 5",
            "elsewhere/source.os"),
        "dir/compiled.os");
    EXPECT_EQ(probe.engine.runScriptFilePath("dir/compiled.os").toString(), "5");
    EXPECT_EQ(probe.said, "beside "); // names resolve beside the file that was loaded
    const std::string report = faultOf([&] { probe.engine.runScript("later()"); });
    EXPECT_NE(report.find("\n  at elsewhere/source.os:4, near token"), std::string::npos) << report;
    EXPECT_TRUE(probe.engine.variablesEqual(probe.engine.loadScriptFile("dir/compiled.os"),
                                            probe.engine.loadScriptFile("dir/compiled.os")));
}

TEST_F(ScriptFiles, ARunningFileIsTheSource) {
    Probe probe;
    write("dir/a.os", "\nx = 1 - not");
    const std::string report = faultOf([&] { probe.engine.runScriptFilePath("dir\\a.os"); });
    EXPECT_NE(report.find("\n  at dir/a.os:2, near token 'not'\n"), std::string::npos) << report;
    write("dir/b.os", "function f()\nlocal q = runFile(\"c.os\")\nreturn q\nend");
    write("dir/c.os", "return \"c\"");
    probe.engine.runScriptFilePath("dir/b.os");
    EXPECT_EQ(probe.run("return f()"), "c"); // a function stays where it was declared
    EXPECT_EQ(firstLine(probe.run("return runFile(\"c.os\")")), "OstrelScript error: Failed to open script file: c.os");
}

// ---------------------------------------------------------------------------------------------------------------------
// Texts
// ---------------------------------------------------------------------------------------------------------------------

TEST(LoadedText, IsAFunctionOrNilAndTheMessage) {
    OstrelScript engine;
    EXPECT_TRUE(engine.loadScriptChunk("return 1", "").isFunction());
    EXPECT_TRUE(engine.loadScriptChunk("", "").isFunction());
    const Variable faulty = engine.loadScriptChunk("if true", "");
    ASSERT_TRUE(faulty.isMulti());
    EXPECT_TRUE(faulty.asMulti()->values.at(0).isNil());
    EXPECT_EQ(faulty.asMulti()->values.at(1).toString(), "Missing 'end' for if block");
}

TEST(LoadedText, KeepsTheNameThatItWasGiven) {
    OstrelScript engine;
    const Variable chunk = engine.loadScriptChunk("\nx = 1 - not", "a\\name.os");
    const std::string report = faultOf([&] { engine.invokeCallable(chunk, {}); });
    EXPECT_NE(report.find("\n  at a\\name.os:2, near token 'not'\n"), std::string::npos) << report; // as it was given
    const Variable faulty = engine.loadScriptChunk("x = 'open", "given");
    EXPECT_NE(faulty.asMulti()->values.at(1).asString().find("\n  at given:1, "), std::string::npos);
    const Variable unnamed = engine.loadScriptChunk("x = 'open", "");
    EXPECT_NE(unnamed.asMulti()->values.at(1).asString().find("\n  at line 1, "), std::string::npos);
}

TEST(LoadedText, BelongsToTheNativeScopeInWhichItRunsFirst) {
    Probe probe;
    probe.run("function sets()\nnative n = \"of the functions\"\nend\nsets()\nnative n = \"of the text\"\n"
              "function runs(f)\nlocal x = f()\nreturn x\nend");
    EXPECT_EQ(probe.hear("f = load(\"return n\")\nsay(runs(f), f())"), "of the functions of the functions ");
    EXPECT_EQ(probe.hear("f = load(\"return n\")\nsay(f(), runs(f))"), "of the text of the text ");
}

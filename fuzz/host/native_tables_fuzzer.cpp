// Any arguments for any entry of the native tables: each call must end in a result or in a message under the entry's
// own name, and leave every image whole.
//
// An input describes calls in one of two forms. In words it is text, so that seeds can be read and written: a line is a
// call, its first word names the entry, and each further word is an argument; a first word that names no entry picks
// one by its hash. An input that begins with a zero byte is the other form, where each byte picks an entry or a value,
// so that hardly any mutation is wasted. Two images and a freed one are there from the start.
//
// Every entry is called. The window is one that SDL keeps in memory; waiting takes no longer than a millisecond; files
// are few and lie in a directory of their own. Scripts that are run find the language and nothing else.
//
// With VELMARIS_FUZZ_CALLS set to a file's name, a run that ends regularly writes there how often each entry was called
// and how often that gave a result.

#include "call_forms.h"
#include "entries.h"
#include "sandbox.h"

#include "host/index.h"
#include "plush/registry.h"
#include "plush/rows.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t mostCalls = 24; // of one input
constexpr int mostThreads = 16;       // starting more only slows the search down
constexpr std::uint8_t byteForm = 0;  // the first byte of an input that is not words

struct Tally {
    std::uint64_t calls = 0;
    std::uint64_t results = 0; // calls that did not fail
};

std::vector<Entry> entries;
std::vector<Tally> tallies;         // of the entries, in their order
volatile PixelByte touchedByte = 0; // what `touchImages` reads goes here, or it would not be read

void writeTallies() {
    const char* fileName = std::getenv("VELMARIS_FUZZ_CALLS");
    std::FILE* file = fileName ? std::fopen(fileName, "w") : nullptr;
    if (!file) return;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        std::fprintf(file, "%s %llu %llu\n", entries[i].name.c_str(), static_cast<unsigned long long>(tallies[i].calls),
                     static_cast<unsigned long long>(tallies[i].results));
    }
    std::fclose(file);
}

const Entry& entryOf(const std::string& word) {
    for (const Entry& entry : entries) {
        if (entry.name == word) return entry;
    }
    return entries[std::hash<std::string>()(word) % entries.size()];
}

void touch(const PixelByte* pixels, int width, int height) {
    if (width < 1 || height < 1 || !pixels) return;
    const std::size_t size = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * bytesPerPixel;
    touchedByte = static_cast<PixelByte>(pixels[0] + pixels[size - 1]);
}

/// Looks whether every image has the pixels that its size promises.
void touchImages() {
    for (const PlushImage* image : livePlushImages) {
        const bool empty = image->width == 0 && image->height == 0;
        if (!empty && (image->width < 1 || image->height < 1 || !image->pixels)) give("an image without its pixels");
        touch(image->pixels, image->width, image->height);
        touch(image->reflectPixels, image->reflectWidth, image->reflectHeight);
    }
}

/// Makes a call and looks at how it ends.
Variable outcomeOf(const Entry& entry, const std::vector<Variable>& arguments) {
    Tally& tally = tallies[static_cast<std::size_t>(&entry - entries.data())];
    ++tally.calls;
    Variable result;
    try {
        result = engine.callCallable(entry.function, arguments);
        ++tally.results;
    } catch (const std::bad_alloc&) {
        // the budget, as a machine whose memory is used up
    } catch (const std::exception& failure) {
        const std::string_view message = failure.what();
        const bool named = message.starts_with(entry.name) || entry.name == "Ostrel.runScript";
        if (!named) give("a message without the name " + entry.name + ": " + failure.what());
    }
    if (AllowedThreads > mostThreads) AllowedThreads = mostThreads;
    touchImages();
    return result;
}

void callByWords(const std::string& text) {
    std::istringstream lines(text);
    std::vector<Variable> results;
    std::string line;
    while (results.size() < mostCalls && std::getline(lines, line)) {
        WordCall call(line, results);
        const Entry& entry = entryOf(call.entryName());
        std::vector<Variable> arguments = call.arguments();
        tame(entry, arguments);
        results.push_back(outcomeOf(entry, arguments));
    }
}

/// Keeps the image handles among the results.
void keepImages(const Variable& result, std::vector<Variable>& images) {
    if (result.type == VarType::Pointer) images.push_back(result);
    if (!result.isMulti() || !result.asMulti()) return;
    for (const Variable& value : result.asMulti()->values) keepImages(value, images);
}

void callByBytes(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    PlushImage* freed = createSolidColourImage(3, 3, 0, 0, 0, 0);
    std::vector<Variable> images = {createSolidColourImage(9, 7, 10, 200, 30, 128),
                                    createSolidColourImage(20, 20, 250, 20, 90, 255), freed};
    killImage(freed);
    ByteCalls calls(bytes, images);
    for (std::size_t count = 0; count < mostCalls && calls.more(); ++count) {
        const Entry& entry = calls.entry(entries);
        std::vector<Variable> arguments = calls.arguments(entry);
        tame(entry, arguments);
        keepImages(outcomeOf(entry, arguments), images);
    }
}

/// Leaves the next input a world without images, buttons, windows and habits.
void cleanUp() {
    wm_destroyWindow(win);
    win = nullptr;
    while (!livePlushImages.empty()) killImage(*livePlushImages.begin());
    buttons.clear();
    windowTitle.clear();
    AllowedThreads = 1;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    silenceOutput();
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    registerFunctions();
    makeDirectory();
    entries = takeEntries();
    tallies.resize(entries.size());
    cleanUp();
    std::atexit(writeTallies);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryBudget budget;
    confine(engine); // with its steps anew
    try {
        if (size > 0 && data[0] == byteForm) {
            callByBytes(data + 1, size - 1);
        } else {
            callByWords(std::string(reinterpret_cast<const char*>(data), size));
        }
    } catch (const std::bad_alloc&) {
        // the input itself is larger than the budget
    }
    cleanUp();
    return 0;
}

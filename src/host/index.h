#pragma once

// The host's state for the whole process, and the steps of its start.
//
// There is one engine, one window and one set of everything a script can reach, so they are plain global objects,
// made before `main` in the order in which they stand here and destroyed in the reverse order. All of them belong to
// the script's thread.

#include "host/buttons.h"
#include "host/wm.h"
#include "script/ostrel_script.h"

#include <chrono>
#include <string>
#include <vector>

extern OstrelScript engine;                         // the interpreter; everything that talks to a script goes here
extern std::string path;                            // the executable's directory, ends in a separator once main set it
extern std::vector<ButtonRectangle> buttons;        // what Ostrel.pushButton declared, in that order
extern std::chrono::system_clock::time_point wtime; // the last Ostrel.getClock, or the start
extern std::chrono::system_clock::time_point gtime; // the start
extern std::string windowTitle;                     // as last set by a script, window or not
extern WmWindow* win;                               // the one window; null while there is none

/// Publishes the native tables, the global functions, the constants and the input globals.
void registerFunctions();

/// Writes the state of mouse and keyboard into the script's input globals. Without a window the mouse is at -1, -1
/// and everything counts as released.
void publishInputGlobals();

/// The path of the executable, normalised; may be empty.
/// @param directory   where it lies, with the trailing separator, as the platform tells it; null if it can't
/// @param argc, argv  the command line, whose first word is the path where the platform is silent
std::string executablePath(const char* directory, int argc, const char* const* argv);

/// The directory that `path` becomes for an executable: everything up to its last separator, that included, or "./"
/// if it has none.
std::string runtimeDirectory(const std::string& executablePath);

/// Where the startup library counts as standing, in reports and for relative files.
std::string startupSourcePath();

/// Everything before the last slash or backslash, without it; empty if there is none.
std::string sourceDirectoryForPath(const std::string& filePath);

/// Runs the startup library that the executable carries; it runs the game. Fails as the script fails.
void runEmbeddedStartupScript(const std::string& sourcePath);

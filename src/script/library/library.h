#pragma once

// The language's own library. One source file per table; each gives its functions to the engine in the order in which
// scripts are promised them.

class OstrelScript;

/// The global functions and constants.
void registerCoreLibrary(OstrelScript& engine);
void registerStringLibrary(OstrelScript& engine);
void registerTableLibrary(OstrelScript& engine);
void registerMathLibrary(OstrelScript& engine);
void registerUtf8Library(OstrelScript& engine);
void registerFileLibrary(OstrelScript& engine);
